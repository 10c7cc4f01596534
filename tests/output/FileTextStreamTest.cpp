// FileTextStreamTest.cpp - file output equal to the memory stream's encoded bytes.
#include "kvxml/output/FileTextStream.h"

#include <gtest/gtest.h>

#include <clocale>
#include <fstream>
#include <string>
#include <vector>

#include "output/OutputTestFiles.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using kvxml_test::TempFile;

namespace {
using Bytes = std::vector<unsigned char>;

Bytes Contents(const CBinaryData& data) {
    return Bytes(data.GetData(), data.GetData() + data.GetLength());
}

// What a memory stream of the same encoding delivers, after the mark a file gets.
Bytes ExpectedFile(const std::string& text, XmlEncoding encoding) {
    Bytes expected;
    if (encoding == Encoding_UTF16 || encoding == Encoding_Wide) expected = {0xFF, 0xFE};
    const Bytes body = Contents(CTextStream(text, encoding).GetEncodedStream());
    expected.insert(expected.end(), body.begin(), body.end());
    return expected;
}

// A document of about `size` characters with line ends, tabs and escapes.
std::string LargeDocument(size_t size) {
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<list>\n";
    for (int i = 0; text.size() < size; ++i)
        text += "\t<entry n=\"" + std::to_string(i) + "\">a &amp; b &lt; c</entry>\n";
    return text + "</list>\n";
}

// Appends in pieces of `step` characters and flushes as the text writer
// does, whenever 4096 or more characters are buffered.
void WriteInPieces(CFileTextStream& stream, const std::string& text, size_t step, int* flushes) {
    stream.Open();
    for (size_t at = 0; at < text.size(); at += step) {
        stream.Append(text.substr(at, step));
        if (stream.GetLength() >= 4096) {
            stream.Flush();
            ++*flushes;
        }
    }
    stream.Close();
}

// Switches the C locale for one test and restores it.
class ScopedLocale {
public:
    explicit ScopedLocale(const char* name) {
        const char* current = std::setlocale(LC_ALL, nullptr);
        m_previous = current ? current : "C";
        m_active = std::setlocale(LC_ALL, name) != nullptr;
    }
    ~ScopedLocale() { std::setlocale(LC_ALL, m_previous.c_str()); }
    bool Active() const { return m_active; }

private:
    std::string m_previous;
    bool m_active;
};

std::string MessageOf(CFileTextStream& stream) {
    try {
        stream.Flush();
    } catch (const CKvException& error) {
        return error.GetMessage();
    }
    return "(no exception)";
}
}  // namespace

TEST(FileTextStreamWrite, FileEqualsEncodedMemoryStreamAcrossFlushes) {
    const std::string text = LargeDocument(30000);
    for (XmlEncoding encoding : {Encoding_UTF8, Encoding_UTF16, Encoding_Wide}) {
        TempFile file;
        CFileTextStream stream(file.Path(), encoding);
        EXPECT_EQ(stream.GetEncoding(), encoding);
        int flushes = 0;
        WriteInPieces(stream, text, 700, &flushes);
        EXPECT_GE(flushes, 5) << encoding;
        EXPECT_EQ(stream.GetLength(), 0u);
        EXPECT_EQ(file.Read(), ExpectedFile(text, encoding)) << "encoding " << encoding;
    }
}

TEST(FileTextStreamWrite, ByteOrderMarkOnlyForWideEncodings) {
    struct Case {
        XmlEncoding encoding;
        Bytes expected;
    };
    const Case cases[] = {
        {Encoding_UTF8, {'<', 'a', '/', '>'}},
        {Encoding_UTF16, {0xFF, 0xFE, '<', 0, 0, 0, 'a', 0, 0, 0, '/', 0, 0, 0, '>', 0, 0, 0}},
        {Encoding_Wide, {0xFF, 0xFE, '<', 0, 0, 0, 'a', 0, 0, 0, '/', 0, 0, 0, '>', 0, 0, 0}},
    };
    for (const Case& c : cases) {
        TempFile file;
        CFileTextStream stream(file.Path(), c.encoding);
        stream.Open();
        stream.Append("<a/>");
        stream.Close();
        EXPECT_EQ(file.Read(), c.expected) << "encoding " << c.encoding;
    }
}

TEST(FileTextStreamWrite, FlushOfEmptyBufferWritesNothing) {
    TempFile file;
    CFileTextStream stream(file.Path(), Encoding_UTF16);
    stream.Flush();  // not even open: nothing to do
    stream.Open();
    stream.Flush();
    stream.Flush();
    stream.Close();
    EXPECT_EQ(file.Read(), (Bytes{0xFF, 0xFE}));

    TempFile plain;
    CFileTextStream utf8(plain.Path(), Encoding_UTF8);
    utf8.Open();
    utf8.Close();
    EXPECT_TRUE(plain.Exists());
    EXPECT_EQ(plain.Read(), Bytes());
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
    EXPECT_EQ(file.Read(), (Bytes{'s', 'e', 'c', 'o', 'n', 'd'}));
    stream.Close();  // a second close has nothing left to do
    EXPECT_EQ(file.Read(), (Bytes{'s', 'e', 'c', 'o', 'n', 'd'}));
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
    for (XmlEncoding encoding : {Encoding_UTF8, Encoding_UTF16}) {
        CFileTextStream stream("/nonexistent-dir/x.xml", encoding);
        EXPECT_KV_THROW(stream.Open(), CKvException,
                        "Failed to write data to the file [/nonexistent-dir/x.xml]");
        stream.Append("<a/>");
        EXPECT_KV_THROW(stream.Flush(), CKvException, "Failed to write data to the file");
    }
}

TEST(FileTextStreamErrors, FullDeviceFailsOnFlushOrClose) {
    if (!std::ifstream("/dev/full").good()) GTEST_SKIP() << "no /dev/full";

    // Larger than stdio's buffer: the write itself fails; the file is closed.
    CFileTextStream big("/dev/full", Encoding_UTF8);
    big.Open();
    big.Append(LargeDocument(70000));
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
    EXPECT_EQ(MessageOf(stream).rfind("Unknown Encoding, select UTF-8", 0), 0u);
    EXPECT_EQ(stream.GetText(), "<a/>");  // nothing was consumed
}
