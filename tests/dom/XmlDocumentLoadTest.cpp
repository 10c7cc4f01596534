// XmlDocumentLoadTest.cpp - the load entry points: strings, wide strings, byte streams, files, compression.
#include "kvxml/dom/XmlDocument.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "dom/DomTestSupport.h"
#include "kvxml/output/KvZip.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using namespace KvXmlTest;

namespace {

// A document large and repetitive enough for deflate to shrink it.
std::string CompressibleXml() {
    std::string text = "<?xml version='1.0'?>\n<orders xmlns='urn:o'>";
    for (int i = 0; i < 200; ++i) text += "<order id='" + std::to_string(i) + "'>widget</order>";
    return text + "</orders>";
}

std::vector<unsigned char> Compress(const std::string& text, CompressionType type) {
    uint32_t length = static_cast<uint32_t>(text.size());
    unsigned char* data = new unsigned char[length];
    std::memcpy(data, text.data(), length);
    CKvZip::Compress(&data, &length, type);
    std::vector<unsigned char> out(data, data + length);
    delete[] data;
    return out;
}

}  // namespace

TEST(XmlDocumentLoad, RejectsEmptyInput) {
    CXmlDocument document;
    EXPECT_KV_THROW(document.LoadXml(""), CKvException, "XML String is empty!");
    EXPECT_KV_THROW(document.LoadXml(static_cast<const char*>(nullptr)), CKvException, "XML String is empty!");
    EXPECT_KV_THROW(document.LoadXml(L""), CKvException, "XML String is empty!");
    unsigned char byte = '<';
    EXPECT_KV_THROW(document.LoadXmlStream(&byte, 0), CKvException, "XML Stream is empty!");
    EXPECT_KV_THROW(document.LoadXmlStream(nullptr, 5), CKvException, "XML Stream is empty!");
}

TEST(XmlDocumentLoad, CleansUpBeforeEveryLoadEvenAFailingOne) {
    CXmlDocument document;
    document.LoadXml("<a/>");
    EXPECT_KV_THROW(document.LoadXml(""), CKvException, "XML String is empty!");
    EXPECT_EQ(document.GetDocumentElement(), nullptr);
    document.LoadXml("<b/>");
    EXPECT_KV_THROW(document.Load("/nonexistent/dir/file.xml"), CKvException,
                    "Failed to open the file [/nonexistent/dir/file.xml]");
    EXPECT_EQ(document.GetDocumentElement(), nullptr);
}

TEST(XmlDocumentLoad, LoadsAFile) {
    TempFile file("<?xml version='1.0' encoding='UTF-8'?>\r\n<a xmlns='urn:f'>\r\n<b k='v'>t</b></a>\r\n");
    CXmlDocument document;
    document.Load(file.Path());
    const CXmlElement* root = document.GetDocumentElement();
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->GetNamespaceURI(), "urn:f");
    EXPECT_EQ(root->GetText(), "\n");
    EXPECT_EQ(root->GetFirstElement()->GetAttribute("k", ""), "v");
}

TEST(XmlDocumentLoad, ReportsFileFailuresWithTheFileName) {
    CXmlDocument document;
    EXPECT_KV_THROW(document.Load("/nonexistent/x.xml"), CKvException, "Failed to open the file [/nonexistent/x.xml]");
    EXPECT_KV_THROW(document.Load(nullptr), CKvException, "Failed to open the file []");

    // An empty file is a read that returns nothing; "%n" shows the stream's
    // error indicator as a number.
    TempFile empty("");
    EXPECT_KV_THROW(document.Load(empty.Path()), CKvException,
                    std::string("Failed to read the contents of the file [") + empty.Path() + "] Error [0]");

    // A directory opens but has no size.
    const std::string directory = ::testing::TempDir();
    EXPECT_KV_THROW(document.Load(directory.c_str()), CKvException,
                    "Failed to get the size of the file [" + directory + "] Error [0]");
}

TEST(XmlDocumentLoad, LoadsGzipAndZlibCompressedStreams) {
    const std::string text = CompressibleXml();
    for (CompressionType type : {Compression_GZip, Compression_Zlib}) {
        std::vector<unsigned char> packed = Compress(text, type);
        ASSERT_LT(packed.size(), text.size());
        const std::vector<unsigned char> before = packed;
        CXmlDocument document;
        document.LoadXmlStream(packed.data(), static_cast<uint32_t>(packed.size()));
        EXPECT_EQ(packed, before) << "the caller's bytes are left alone";
        ASSERT_NE(document.GetDocumentElement(), nullptr);
        EXPECT_EQ(document.GetDocumentElement()->GetLocalName(), "orders");
        EXPECT_EQ(CountElements(document.GetDocumentElement()), 201u);

        TempFile file(std::string(packed.begin(), packed.end()));
        CXmlDocument fromFile;
        fromFile.Load(file.Path());
        EXPECT_EQ(CountElements(fromFile.GetDocumentElement()), 201u);
    }
}

TEST(XmlDocumentLoad, PassesPlainAndBrokenCompressedBytesToTheParser) {
    std::string plain = "<a>plain</a>";
    CXmlDocument document;
    document.LoadXmlStream(reinterpret_cast<unsigned char*>(plain.data()), static_cast<uint32_t>(plain.size()));
    EXPECT_EQ(document.GetDocumentElement()->GetText(), "plain");

    // A truncated gzip stream is not inflated; its bytes reach the parser.
    std::vector<unsigned char> packed = Compress(CompressibleXml(), Compression_GZip);
    packed.resize(packed.size() / 2);
    EXPECT_KV_THROW(document.LoadXmlStream(packed.data(), static_cast<uint32_t>(packed.size())), CKvException,
                    "not well-formed (invalid token) at line 1");

    // String input is never taken for compressed data.
    std::vector<unsigned char> zlib = Compress(CompressibleXml(), Compression_Zlib);
    zlib.push_back(0);
    EXPECT_THROW(document.LoadXml(reinterpret_cast<const char*>(zlib.data())), CKvException);
}

TEST(XmlDocumentLoad, ParsesWideStringsAsUtf16) {
    ScopedLocale locale("C.UTF-8");
    ASSERT_TRUE(locale.Active());
    CXmlDocument document;
    document.LoadXml(L"<?xml version='1.0'?><a n='\u00e9'>\u20ac \u00fc<b/></a>");
    const CXmlElement* root = document.GetDocumentElement();
    EXPECT_EQ(root->GetText(), "\xE2\x82\xAC \xC3\xBC");
    EXPECT_EQ(root->GetAttribute("n", ""), "\xC3\xA9");
    EXPECT_EQ(ChildNames(root), "b");

    // Beyond the 16-bit range only the low 16 bits are kept: U+1F600 becomes
    // U+F600, a private-use character.
    document.LoadXml(L"<a>\U0001F600</a>");
    EXPECT_EQ(document.GetDocumentElement()->GetText(), "\xEF\x98\x80");
    // ... and U+1D800 a lone surrogate, which the parser refuses.
    EXPECT_THROW(document.LoadXml(L"<a>\U0001D800</a>"), CKvException);
}

TEST(XmlDocumentLoad, DetectsUtf16StreamsByByteOrderMark) {
    ScopedLocale locale("C.UTF-8");
    ASSERT_TRUE(locale.Active());
    const unsigned char littleEndian[] = {0xFF, 0xFE, '<', 0, 'a', 0, '>', 0, 0xAC, 0x20, '<', 0, '/', 0, 'a', 0, '>', 0};
    const unsigned char bigEndian[] = {0xFE, 0xFF, 0, '<', 0, 'a', 0, '>', 0x20, 0xAC, 0, '<', 0, '/', 0, 'a', 0, '>'};
    for (const auto* bytes : {littleEndian, bigEndian}) {
        std::vector<unsigned char> copy(bytes, bytes + sizeof littleEndian);
        CXmlDocument document;
        document.LoadXmlStream(copy.data(), static_cast<uint32_t>(copy.size()));
        EXPECT_EQ(document.GetDocumentElement()->GetText(), "\xE2\x82\xAC");
    }
}
