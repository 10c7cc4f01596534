// BinaryStreamTest.cpp - the byte accumulator and its file writer.
#include "support/Fixtures.h"

using namespace KvXmlTest;
using namespace KvXmlLib10;

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

TEST(BinaryStreamConstruct, CountsInstancesUnderTheGivenClassName) {
    CInstanceMonitor::SetCounting(true);
    {
        CBinaryStream plain;
        CFileBinaryStream file("unused.xml", Encoding_UTF8);
        CBinaryStream named("CBinaryStreamTestName");
        EXPECT_EQ(CInstanceMonitor::GetLiveCount("CFileBinaryStream"), 1u);
        EXPECT_EQ(CInstanceMonitor::GetLiveCount("CBinaryStreamTestName"), 1u);
        EXPECT_GE(CInstanceMonitor::GetLiveCount("CBinaryStream"), 1u);
    }
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("CFileBinaryStream"), 0u);
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("CBinaryStreamTestName"), 0u);
    CInstanceMonitor::SetCounting(false);
}

TEST(FileBinaryStreamToFile, WritesByteOrderMarkOnlyForWideEncodings) {
    const struct {
        XmlEncoding encoding;
        Bytes expected;  // text mode must not translate the line feeds
    } cases[] = {{Encoding_None, ToBytes("<a>\n</a>\n")},
                 {Encoding_UTF8, ToBytes("<a>\n</a>\n")},
                 {Encoding_UTF16, ToBytes("\xFF\xFE<a>\n</a>\n")},
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
