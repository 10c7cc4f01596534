// OutputTestFiles.h - shared helpers of the output tests: temporary files and byte views.
#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "kvxml/values/BinaryData.h"
#include "support/ProcessScopes.h"
#include "support/TempFile.h"

namespace kvxml_test {

using KvXmlTest::ScopedAsciiOnly;
using KvXmlTest::ScopedLocale;
using KvXmlTest::TempFile;

using Bytes = std::vector<unsigned char>;

inline Bytes ToBytes(const std::string& text) { return Bytes(text.begin(), text.end()); }
inline Bytes Contents(const KvXmlLib10::CBinaryData& data) {
    return data.GetLength() ? Bytes(data.GetData(), data.GetData() + data.GetLength()) : Bytes();
}
inline std::string AsString(const KvXmlLib10::CBinaryData& data) {
    const Bytes bytes = Contents(data);
    return std::string(bytes.begin(), bytes.end());
}
/// The 32-bit units of wide output, read in machine order.
inline std::wstring Wide(const KvXmlLib10::CBinaryData& data) {
    EXPECT_EQ(data.GetLength() % sizeof(wchar_t), 0u);
    std::wstring text(data.GetLength() / sizeof(wchar_t), L'\0');
    if (!text.empty()) std::memcpy(&text[0], data.GetData(), text.size() * sizeof(wchar_t));
    return text;
}

/// The refusal of an encoding other than UTF-8, UTF-16 and wide; the
/// support pointer in it names no real address.
inline const char* const kUnknownEncoding =
    "Unknown Encoding, select UTF-8 (for other encodings contact your kvxml support provider)";

/// A document of about `size` characters with line ends, tabs and escapes.
inline std::string SampleXml(size_t size) {
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<list>\n";
    for (int i = 0; text.size() < size; ++i)
        text += "\t<entry n=\"" + std::to_string(i) + "\">a &amp; b &lt; c</entry>\n";
    return text + "</list>\n";
}

}  // namespace kvxml_test
