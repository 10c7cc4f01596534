// TextStreamTest.cpp - CTextStream text, lifecycle and encoded bytes.
#include "support/Fixtures.h"

using namespace KvXmlTest;
using namespace KvXmlLib10;

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
    EXPECT_EQ(AsString(CTextStream(std::string("<a>x</a>"), Encoding_UTF8).GetEncodedStream()), "<a>x</a>");
    for (XmlEncoding encoding : {Encoding_UTF16, Encoding_Wide}) {
        const CBinaryData bytes = CTextStream(std::string("<a/>"), encoding).GetEncodedStream();
        EXPECT_EQ(bytes.GetLength(), 16u);  // no byte-order mark, no terminator
        EXPECT_EQ(Wide(bytes), L"<a/>");
    }
    EXPECT_EQ(CTextStream(Encoding_UTF8).GetEncodedStream().GetLength(), 0u);
}

// Text longer than one block, with characters (and broken ones) falling
// across every block boundary offset: the bytes are those of the joined text.
TEST(TextStreamEncoded, Utf8FromBlocksMatchesJoinedText) {
    const KvXmlTest::ScopedLocale utf8("C.UTF-8");
    for (const char* piece : {"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80" "a", "\xE2\x82<\xC3", "\xF0\x9F\x98"}) {
        for (size_t lead = 0; lead < 5; ++lead) {
            CTextStream stream(std::string(lead, 'x'), Encoding_UTF8);
            for (int i = 0; i < 30000; ++i) stream.Append(piece);
            const CBinaryData blocks = stream.GetEncodedStream();
            EXPECT_EQ(AsString(blocks), AsString(CEncoder::LocalCodePageToUtf8Binary(stream.GetText())));
        }
    }
}

TEST(TextStreamEncoded, RefusesUnknownEncodingPointingToSupport) {
    for (int value : {0, 4, -1})
        EXPECT_KV_THROW(CTextStream(std::string("<a/>"), static_cast<XmlEncoding>(value)).GetEncodedStream(),
                        CKvException, kUnknownEncoding);
}
