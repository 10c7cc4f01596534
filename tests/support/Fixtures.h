// Fixtures.h - temporary files, process-wide switches, byte views and tree views shared by the suites.
#pragma once

#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <fstream>
#include <iterator>

#include "support/KvTestSupport.h"

namespace KvXmlTest {

using Bytes = std::vector<unsigned char>;

/// A file under the test temp dir, removed when the test is done with it.
class TempFile {
public:
    /// A fresh path that does not exist yet.
    TempFile() {
        static std::atomic<int> counter{0};
        const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
        m_path = ::testing::TempDir() + "kvxml_" + std::to_string(::getpid()) + "_" +
                 (info ? info->name() : "test") + "_" + std::to_string(counter++) + ".xml";
        std::remove(m_path.c_str());
    }
    /// A file holding `contents`.
    explicit TempFile(const std::string& contents) : TempFile() {
        if (std::FILE* file = std::fopen(m_path.c_str(), "wb")) {
            std::fwrite(contents.data(), 1, contents.size(), file);
            std::fclose(file);
        }
    }
    ~TempFile() { std::remove(m_path.c_str()); }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    const char* Path() const { return m_path.c_str(); }
    /// The whole file, or nothing when it does not exist.
    Bytes Read() const {
        std::ifstream in(m_path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    bool Exists() const { return std::ifstream(m_path).good(); }

private:
    std::string m_path;
};

/// Switches the C locale for one scope and restores the previous one.
class ScopedLocale {
public:
    explicit ScopedLocale(const char* name) : m_saved(std::setlocale(LC_ALL, nullptr)) {
        m_active = std::setlocale(LC_ALL, name) != nullptr;
    }
    ~ScopedLocale() { std::setlocale(LC_ALL, m_saved.c_str()); }
    bool Active() const { return m_active; }

private:
    std::string m_saved;
    bool m_active = false;
};

/// Turns the process-wide ASCIIOnly switch on for one scope.
struct ScopedAsciiOnly {
    ScopedAsciiOnly() { KvXmlLib10::ASCIIOnly(true); }
    ~ScopedAsciiOnly() { KvXmlLib10::ASCIIOnly(false); }
};

inline Bytes ToBytes(const std::string& text) { return Bytes(text.begin(), text.end()); }
inline Bytes Contents(const KvXmlLib10::CBinaryData& data) {
    return data.GetLength() ? Bytes(data.GetData(), data.GetData() + data.GetLength()) : Bytes();
}
inline std::string AsString(const KvXmlLib10::CBinaryData& data) {
    return std::string(reinterpret_cast<const char*>(data.GetData()), data.GetLength());
}
/// The 32-bit units of wide output, read in machine order.
inline std::wstring Wide(const KvXmlLib10::CBinaryData& data) {
    EXPECT_EQ(data.GetLength() % sizeof(wchar_t), 0u);
    std::wstring text(data.GetLength() / sizeof(wchar_t), L'\0');
    if (!text.empty()) std::memcpy(&text[0], data.GetData(), text.size() * sizeof(wchar_t));
    return text;
}

/// `plain` packed by the library's compressor (which throws when it cannot shrink it).
inline Bytes Compressed(const Bytes& plain, KvXmlLib10::CompressionType type) {
    uint32_t length = static_cast<uint32_t>(plain.size());
    unsigned char* data = new unsigned char[length + 1];
    std::copy(plain.begin(), plain.end(), data);
    KvXmlLib10::CKvZip::Compress(&data, &length, type);
    Bytes out(data, data + length);
    delete[] data;
    return out;
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

/// Local names of the children, joined by commas.
inline std::string ChildNames(const KvXmlLib10::CXmlElement* element) {
    std::string names;
    for (auto* child = element->GetFirstElement(); child; child = child->GetNextSiblingElement())
        names += (names.empty() ? "" : ",") + child->GetLocalName();
    return names;
}

/// The attributes as "{uri}name=value" (no braces without a URI), joined by spaces.
inline std::string AttributeList(const KvXmlLib10::CXmlElement* element) {
    std::string list;
    for (const auto* attribute : element->GetAttributes()) {
        const std::string& uri = attribute->GetNamespaceURI();
        list += (list.empty() ? "" : " ") + (uri.empty() ? "" : "{" + uri + "}") + attribute->GetLocalName() + "=" +
                attribute->GetValue();
    }
    return list;
}

/// Number of elements in a (small) subtree.
inline size_t CountElements(const KvXmlLib10::CXmlElement* root) {
    size_t count = 1;
    for (auto* child = root->GetFirstElement(); child; child = child->GetNextSiblingElement())
        count += CountElements(child);
    return count;
}

}  // namespace KvXmlTest
