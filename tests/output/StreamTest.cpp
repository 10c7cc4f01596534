// StreamTest.cpp - the output streams: CTextStream's text and encoded bytes, the file text stream (equal to the
// memory stream's encoded bytes) and the byte accumulator with its file writer.
#include "support/Fixtures.h"

using namespace KvXmlTest;
using namespace KvXmlLib10;

TEST(TextStreamText, AppendsAndReportsLengthOpenEmptiesCloseAndFlushKeep) {
    CTextStream stream;
    EXPECT_EQ(stream.GetEncoding(), Encoding_None);
    stream.Append('<');
    stream.Append("ab");
    stream.Append(std::string("c\0d", 3));
    stream.Append("xyz", 2);
    EXPECT_EQ(stream.GetLength(), 8u);
    EXPECT_EQ(stream.GetText(), std::string("<abc\0dxy", 8));

    CTextStream initial(std::string("old"), Encoding_Wide);
    initial.Flush();
    initial.Close();
    EXPECT_EQ(initial.GetText(), "old");
    initial.Open();
    EXPECT_EQ(initial.GetLength(), 0u);
    initial.Append("new");
    initial.Flush();
    EXPECT_EQ(initial.GetText(), "new");
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

namespace {
// What a memory stream of the same encoding delivers, after the mark a file gets.
Bytes ExpectedFile(const std::string& text, XmlEncoding encoding) {
    Bytes expected;
    if (encoding == Encoding_UTF16 || encoding == Encoding_Wide) expected = {0xFF, 0xFE};
    const Bytes body = Contents(CTextStream(text, encoding).GetEncodedStream());
    expected.insert(expected.end(), body.begin(), body.end());
    return expected;
}
}  // namespace

TEST(FileTextStreamWrite, FileEqualsEncodedMemoryStreamAcrossFlushes) {
    const std::string text = SampleXml(30000);
    for (XmlEncoding encoding : {Encoding_UTF8, Encoding_UTF16, Encoding_Wide}) {
        TempFile file;
        CFileTextStream stream(file.Path(), encoding);
        // Flush as the text writer does, whenever 4096 or more characters are held.
        int flushes = 0;
        stream.Open();
        for (size_t at = 0; at < text.size(); at += 700) {
            stream.Append(text.substr(at, 700));
            if (stream.GetLength() >= 4096) {
                stream.Flush();
                ++flushes;
            }
        }
        stream.Close();
        EXPECT_GE(flushes, 5) << encoding;
        EXPECT_EQ(stream.GetLength(), 0u);
        EXPECT_EQ(file.Read(), ExpectedFile(text, encoding)) << "encoding " << encoding;
    }
}

TEST(FileTextStreamWrite, EmptyDocumentHoldsOnlyTheByteOrderMarkOfWideEncodings) {
    const std::pair<XmlEncoding, Bytes> cases[] = {
        {Encoding_UTF8, {}}, {Encoding_UTF16, {0xFF, 0xFE}}, {Encoding_Wide, {0xFF, 0xFE}}};
    for (const auto& [encoding, mark] : cases) {
        TempFile file;
        CFileTextStream stream(file.Path(), encoding);
        stream.Flush();  // not even open: nothing to do
        stream.Open();
        stream.Flush();
        stream.Close();
        EXPECT_TRUE(file.Exists());
        EXPECT_EQ(file.Read(), mark) << "encoding " << encoding;
    }
}

TEST(FileTextStreamWrite, OpenStartsOverAndDropsUnflushedText) {
    TempFile file;
    CFileTextStream stream(file.Path(), Encoding_UTF8);
    stream.Append("before open");
    stream.Open();
    EXPECT_EQ(stream.GetLength(), 0u);
    stream.Append("first");
    stream.Flush();
    stream.Open();  // truncates again
    stream.Append("second");
    stream.Close();
    EXPECT_EQ(file.Read(), ToBytes("second"));
    stream.Close();  // a second close has nothing left to do
    EXPECT_EQ(file.Read(), ToBytes("second"));
}

TEST(FileTextStreamWrite, MultibyteCharactersCutByFlushesStayWhole) {
    ScopedLocale locale("C.UTF-8");
    if (!locale.Active()) GTEST_SKIP() << "no C.UTF-8 locale";
    // "é" is C3 A9 and "€" E2 82 AC: pieces of 5 bytes cut many of them.
    std::string text;
    for (int i = 0; i < 3000; ++i) text += (i % 3 == 0) ? "\xE2\x82\xAC" : "x\xC3\xA9";
    text += "\xC3";  // a last character that never completes
    for (XmlEncoding encoding : {Encoding_UTF8, Encoding_Wide}) {
        TempFile file;
        CFileTextStream stream(file.Path(), encoding);
        stream.Open();
        for (size_t at = 0; at < text.size(); at += 5) {
            stream.Append(text.substr(at, 5));
            stream.Flush();
        }
        stream.Close();
        EXPECT_EQ(file.Read(), ExpectedFile(text, encoding)) << "encoding " << encoding;
    }
}

TEST(FileTextStreamErrors, UnwritablePathFailsOnOpenWithTheFileNameAndNoEncodingRefusesToFlush) {
    CFileTextStream stream("/nonexistent-dir/x.xml", Encoding_UTF16);
    EXPECT_KV_THROW(stream.Open(), CKvException, "Failed to write data to the file [/nonexistent-dir/x.xml]");
    stream.Append("<a/>");
    EXPECT_KV_THROW(stream.Flush(), CKvException, "Failed to write data to the file");
    TempFile file;
    CFileTextStream noEncoding(file.Path(), Encoding_None);
    noEncoding.Open();
    noEncoding.Append("<a/>");
    EXPECT_KV_THROW(noEncoding.Flush(), CKvException, kUnknownEncoding);
    EXPECT_EQ(noEncoding.GetText(), "<a/>");  // nothing was consumed
}

TEST(FileTextStreamErrors, FullDeviceFailsOnFlushOrClose) {
    if (!std::ifstream("/dev/full").good()) GTEST_SKIP() << "no /dev/full";
    // Larger than stdio's buffer: the write itself fails; the file is closed.
    CFileTextStream big("/dev/full", Encoding_UTF8);
    big.Open();
    big.Append(SampleXml(70000));
    EXPECT_KV_THROW(big.Flush(), CKvException, "Failed to write data to the file");
    EXPECT_KV_THROW(big.Close(), CKvException, "Failed to write data to the file");
    // Small enough to sit in stdio's buffer until the file is closed.
    CFileTextStream small("/dev/full", Encoding_UTF8);
    small.Open();
    small.Append("<a/>");
    small.Flush();
    EXPECT_KV_THROW(small.Close(), CKvException, "Failed to write data to the file");
}

TEST(BinaryStreamAppend, AllFormsAccumulateInOrder) {
    CBinaryStream stream;
    EXPECT_EQ(stream.GetBinaryStream().GetLength(), 0u);
    stream.Append(static_cast<unsigned char>(0xE0));
    const unsigned char raw[] = {0x00, 0x01, 0xFF};
    stream.Append(raw, 3);
    stream.Append(raw, 0);
    stream.Append(CBinaryData("xyz"));
    stream.Append(CBinaryData());
    EXPECT_EQ(Contents(stream.GetBinaryStream()), (Bytes{0xE0, 0x00, 0x01, 0xFF, 'x', 'y', 'z'}));
}

TEST(BinaryStreamConstruct, InitialBytesAreCopiedNotShared) {
    CBinaryData initial("abc");
    CBinaryStream stream(initial);
    stream.Append(static_cast<unsigned char>('d'));
    initial.Append("!");
    EXPECT_EQ(AsString(stream.GetBinaryStream()), "abcd");
    EXPECT_EQ(AsString(initial), "abc!");
    EXPECT_EQ(AsString(CBinaryStream("CSomeWriter", CBinaryData("q")).GetBinaryStream()), "q");
}

TEST(FileBinaryStreamToFile, WritesByteOrderMarkOnlyForWideEncodings) {
    const struct {
        XmlEncoding encoding;
        Bytes expected;  // text mode must not translate the line feeds
    } cases[] = {{Encoding_None, ToBytes("<a>\n</a>\n")},
                 {Encoding_UTF8, ToBytes("<a>\n</a>\n")}, {Encoding_UTF16, ToBytes("\xFF\xFE<a>\n</a>\n")},
                 {Encoding_Wide, ToBytes("\xFF\xFE<a>\n</a>\n")}};
    for (const auto& c : cases) {
        TempFile file;
        CFileBinaryStream(file.Path(), c.encoding, CBinaryData("<a>\n</a>\n")).ToFile();
        EXPECT_EQ(file.Read(), c.expected) << "encoding " << c.encoding;
    }
}

TEST(FileBinaryStreamToFile, TruncatesAnExistingFileAndWritesAppendedBytes) {
    TempFile file;
    CFileBinaryStream(file.Path(), Encoding_UTF8, CBinaryData("a much longer first content")).ToFile();
    CFileBinaryStream stream(file.Path(), Encoding_UTF8);
    stream.Append(CBinaryData("short"));
    stream.ToFile();
    EXPECT_EQ(file.Read(), ToBytes("short"));

    CFileBinaryStream(file.Path(), Encoding_UTF8).ToFile();
    EXPECT_TRUE(file.Exists());
    EXPECT_EQ(file.Read(), Bytes());
}

TEST(FileBinaryStreamToFile, UnwritableOrFullTargetThrowsWithTheFileName) {
    CFileBinaryStream missingDir("/nonexistent-dir/x.xml", Encoding_UTF16, CBinaryData("<a/>"));
    EXPECT_KV_THROW(missingDir.ToFile(), CKvException, "Failed to write data to the file [/nonexistent-dir/x.xml]");
    CFileBinaryStream noName(nullptr, Encoding_UTF8, CBinaryData("<a/>"));
    EXPECT_KV_THROW(noName.ToFile(), CKvException, "Failed to write data to the file []");

    if (!std::ifstream("/dev/full").good()) GTEST_SKIP() << "no /dev/full";
    CFileBinaryStream full("/dev/full", Encoding_UTF16, CBinaryData("<a/>"));
    EXPECT_KV_THROW(full.ToFile(), CKvException, "Failed to write data to the file [/dev/full]");
}
