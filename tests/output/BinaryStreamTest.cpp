// BinaryStreamTest.cpp - the byte accumulator and its file writer.
#include "kvxml/output/BinaryStream.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kvxml/foundation/InstanceMonitor.h"
#include "output/OutputTestFiles.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using kvxml_test::TempFile;

namespace {
using Bytes = std::vector<unsigned char>;

Bytes Contents(const CBinaryData& data) {
    return Bytes(data.GetData(), data.GetData() + data.GetLength());
}
Bytes ToBytes(const std::string& text) { return Bytes(text.begin(), text.end()); }
}  // namespace

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
    EXPECT_EQ(Contents(stream.GetBinaryStream()), ToBytes("abcd"));
    EXPECT_EQ(Contents(initial), ToBytes("abc!"));

    CBinaryStream named("CSomeWriter", CBinaryData("q"));
    EXPECT_EQ(Contents(named.GetBinaryStream()), ToBytes("q"));
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
    const CBinaryData content("<a>\n</a>\n");
    struct Case {
        XmlEncoding encoding;
        bool mark;
    };
    const Case cases[] = {{Encoding_None, false}, {Encoding_UTF8, false}, {Encoding_UTF16, true},
                          {Encoding_Wide, true}};
    for (const Case& c : cases) {
        TempFile file;
        CFileBinaryStream stream(file.Path(), c.encoding, content);
        stream.ToFile();
        Bytes expected = c.mark ? Bytes{0xFF, 0xFE} : Bytes{};
        const Bytes body = Contents(content);
        expected.insert(expected.end(), body.begin(), body.end());
        // Text mode must not translate line feeds.
        EXPECT_EQ(file.Read(), expected) << "encoding " << c.encoding;
    }
}

TEST(FileBinaryStreamToFile, TruncatesAnExistingFileAndWritesAppendedBytes) {
    TempFile file;
    CFileBinaryStream longer(file.Path(), Encoding_UTF8, CBinaryData("a much longer first content"));
    longer.ToFile();
    CFileBinaryStream stream(file.Path(), Encoding_UTF8);
    stream.Append(CBinaryData("short"));
    stream.ToFile();
    EXPECT_EQ(file.Read(), ToBytes("short"));

    CFileBinaryStream empty(file.Path(), Encoding_UTF8);
    empty.ToFile();
    EXPECT_TRUE(file.Exists());
    EXPECT_EQ(file.Read(), Bytes());
}

TEST(FileBinaryStreamToFile, UnwritablePathThrowsWithTheFileName) {
    CFileBinaryStream missingDir("/nonexistent-dir/x.xml", Encoding_UTF8, CBinaryData("<a/>"));
    EXPECT_KV_THROW(missingDir.ToFile(), CKvException,
                    "Failed to write data to the file [/nonexistent-dir/x.xml]");

    CFileBinaryStream wide("/nonexistent-dir/x.xml", Encoding_UTF16, CBinaryData("<a/>"));
    EXPECT_KV_THROW(wide.ToFile(), CKvException,
                    "Failed to write data to the file [/nonexistent-dir/x.xml]");

    CFileBinaryStream noName(nullptr, Encoding_UTF8, CBinaryData("<a/>"));
    EXPECT_KV_THROW(noName.ToFile(), CKvException, "Failed to write data to the file []");
}

TEST(FileBinaryStreamToFile, FullDeviceThrowsWithTheFileName) {
    if (!std::ifstream("/dev/full").good()) GTEST_SKIP() << "no /dev/full";
    CFileBinaryStream stream("/dev/full", Encoding_UTF16, CBinaryData("<a/>"));
    EXPECT_KV_THROW(stream.ToFile(), CKvException, "Failed to write data to the file [/dev/full]");
}
