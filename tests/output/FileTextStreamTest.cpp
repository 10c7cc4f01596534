// FileTextStreamTest.cpp - file output equal to the memory stream's encoded bytes.
#include "support/Fixtures.h"

using namespace KvXmlTest;
using namespace KvXmlLib10;

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
        EXPECT_EQ(stream.GetEncoding(), encoding);
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

TEST(FileTextStreamErrors, UnwritablePathFailsOnOpenWithTheFileName) {
    CFileTextStream stream("/nonexistent-dir/x.xml", Encoding_UTF16);
    EXPECT_KV_THROW(stream.Open(), CKvException, "Failed to write data to the file [/nonexistent-dir/x.xml]");
    stream.Append("<a/>");
    EXPECT_KV_THROW(stream.Flush(), CKvException, "Failed to write data to the file");
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

TEST(FileTextStreamErrors, NoEncodingRefusesToFlush) {
    TempFile file;
    CFileTextStream stream(file.Path(), Encoding_None);
    stream.Open();
    stream.Append("<a/>");
    EXPECT_KV_THROW(stream.Flush(), CKvException, kUnknownEncoding);
    EXPECT_EQ(stream.GetText(), "<a/>");  // nothing was consumed
}
