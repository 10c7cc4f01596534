// TextStreamTest.cpp - CTextStream text, lifecycle and encoded bytes.
#include "kvxml/output/TextStream.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "kvxml/foundation/KvException.h"
#include "kvxml/output/Encoder.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

std::string Bytes(const CBinaryData& data) {
    return data.GetLength() ? std::string(reinterpret_cast<const char*>(data.GetData()), data.GetLength())
                            : std::string();
}

std::wstring Wide(const CBinaryData& data) {
    std::wstring text(data.GetLength() / sizeof(wchar_t), L'\0');
    if (!text.empty()) std::memcpy(&text[0], data.GetData(), text.size() * sizeof(wchar_t));
    return text;
}

}  // namespace

TEST(TextStreamText, AppendsAndReportsLengthAndEncoding) {
    CTextStream stream;
    EXPECT_EQ(stream.GetEncoding(), Encoding_None);
    stream.Append('<');
    stream.Append("ab");
    stream.Append(std::string("c\0d", 3));
    stream.Append("xyz", 2);
    EXPECT_EQ(stream.GetLength(), 8u);
    EXPECT_EQ(stream.GetText(), std::string("<abc\0dxy", 8));

    CTextStream initial(std::string("start"), Encoding_Wide);
    EXPECT_EQ(initial.GetText(), "start");
    EXPECT_EQ(initial.GetEncoding(), Encoding_Wide);
    EXPECT_EQ(CTextStream(Encoding_UTF16).GetEncoding(), Encoding_UTF16);
}

TEST(TextStreamLifecycle, OpenEmptiesCloseAndFlushKeep) {
    CTextStream stream(std::string("old"), Encoding_UTF8);
    stream.Flush();
    stream.Close();
    EXPECT_EQ(stream.GetText(), "old");
    stream.Open();
    EXPECT_EQ(stream.GetLength(), 0u);
    stream.Append("new");
    stream.Flush();
    EXPECT_EQ(stream.GetText(), "new");
}

TEST(TextStreamEncoded, DeliversUtf8AndFourByteUnits) {
    ASCIIOnly(false);
    CTextStream utf8(std::string("<a>x</a>"), Encoding_UTF8);
    EXPECT_EQ(Bytes(utf8.GetEncodedStream()), "<a>x</a>");

    for (XmlEncoding encoding : {Encoding_UTF16, Encoding_Wide}) {
        CTextStream wide(std::string("<a/>"), encoding);
        CBinaryData bytes = wide.GetEncodedStream();
        EXPECT_EQ(bytes.GetLength(), 16u);  // no byte-order mark, no terminator
        EXPECT_EQ(Wide(bytes), L"<a/>");
    }
    CTextStream empty(Encoding_UTF8);
    EXPECT_EQ(empty.GetEncodedStream().GetLength(), 0u);
}

TEST(TextStreamEncoded, RefusesUnknownEncodingPointingToSupport) {
    for (int value : {0, 4, -1}) {
        CTextStream stream(std::string("<a/>"), static_cast<XmlEncoding>(value));
        bool thrown = false;
        try {
            stream.GetEncodedStream();
        } catch (const CKvException& error) {
            thrown = true;
            EXPECT_EQ(typeid(error), typeid(CKvException));
            const std::string message = error.GetMessage();
            EXPECT_EQ(message.rfind("Unknown Encoding, select UTF-8 (", 0), 0u) << message;
            EXPECT_EQ(message.back(), ')') << message;
            EXPECT_EQ(message.find("http"), std::string::npos) << message;
            EXPECT_EQ(message.find('@'), std::string::npos) << message;
        }
        EXPECT_TRUE(thrown) << value;
    }
}
