// Tests for the reading entry points of the object base.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "kvxml/kvxml.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

// Reads <greeting xmlns="urn:g"><text>..</text></greeting>, the way a
// generated class checks its root and consumes its children.
class Greeting : public CXmlObjectBase {
public:
    Greeting() { SetElementName("greeting"); }
    CXmlObjectBase* GetBase() override { return this; }
    std::string GetTargetNamespace() const override { return "urn:g"; }
    std::string GetNamespace() const override { return "urn:g"; }

    std::string text;
    int reads = 0;

protected:
    void ToXml_Int(CXmlWriter* writer, bool, const char* ns, const CXmlSerializationContext&, bool) const override {
        writer->WriteStartElement("greeting", ns);
        writer->WriteStartElement("text", ns);
        writer->WriteString(text, KvXmlLib10::string);
        writer->WriteEndElement();
        writer->WriteEndElement();
    }
    CXmlElement* FromXml_Int(CXmlElement* element, CXmlElement* child, const CXmlSerializationContext& context,
                             bool) override {
        ++reads;
        if (!DoesElementNameMatch(context, element, "greeting", "urn:g"))
            throw CKvValidationException("Expected element [greeting]");
        if (!child || !DoesElementNameMatch(context, child, "text", "urn:g"))
            throw CKvValidationException("Expected element [text]");
        text = child->GetText();
        return child->GetNextSiblingElement();
    }
};

const char kDocument[] = "<?xml version=\"1.0\"?><greeting xmlns=\"urn:g\"><text>hi &amp; bye</text></greeting>";

}  // namespace

TEST(XmlObjectBaseFromXml, ReadsNarrowAndWideText) {
    Greeting g;
    g.FromXml(kDocument);
    EXPECT_EQ(g.text, "hi & bye");

    Greeting w;
    w.FromXml(L"<greeting xmlns=\"urn:g\"><text>wide</text></greeting>");
    EXPECT_EQ(w.text, "wide");
}

TEST(XmlObjectBaseFromXml, ReportsEmptyInputAndParseErrors) {
    Greeting g;
    EXPECT_KV_THROW(g.FromXml(""), CKvException, "XML String is empty!");
    EXPECT_KV_THROW(g.FromXml(static_cast<const char*>(nullptr)), CKvException, "XML String is empty!");
    EXPECT_THROW(g.FromXml("<greeting xmlns=\"urn:g\"><text>"), CKvException);
    EXPECT_EQ(g.reads, 0);
    // The object decides whether the root is its element.
    EXPECT_KV_THROW(g.FromXml("<other/>"), CKvValidationException, "Expected element [greeting]");
}

TEST(XmlObjectBaseFromXmlStream, ReadsPlainAndCompressedBytes) {
    Greeting source;
    source.text = std::string(3000, 'q');
    CBinaryData plain = source.ToXmlStream(true, false, Encoding_UTF8, EOL_LF);
    CBinaryData gzip = source.ToXmlStream(true, false, Encoding_UTF8, EOL_LF,
                                          CXmlSerializationContext::m_defaultContext, Compression_GZip);
    CBinaryData zlib = source.ToXmlStream(true, false, Encoding_UTF8, EOL_LF,
                                          CXmlSerializationContext::m_defaultContext, Compression_Zlib);
    for (const CBinaryData* bytes : {&plain, &gzip, &zlib}) {
        CBinaryData before = *bytes;
        Greeting g;
        g.FromXmlStream(*bytes);
        EXPECT_EQ(g.text, source.text);
        // The caller's bytes are not touched by inflating them.
        EXPECT_EQ(*bytes, before);
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes->GetData()), 2),
                  std::string(reinterpret_cast<const char*>(before.GetData()), 2));
    }
    Greeting empty;
    EXPECT_KV_THROW(empty.FromXmlStream(CBinaryData()), CKvException, "XML Stream is empty!");
}

TEST(XmlObjectBaseFromXmlFile, ReadsWhatToXmlFileWrote) {
    Greeting source;
    source.text = "from a file";
    std::string path = testing::TempDir() + "kvxml_read_greeting.xml";
    source.ToXmlFile(path.c_str());
    Greeting g;
    g.FromXmlFile(path.c_str());
    EXPECT_EQ(g.text, "from a file");
    std::remove(path.c_str());

    EXPECT_KV_THROW(g.FromXmlFile("/nonexistent-kvxml-dir/in.xml"), CKvException,
                    "Failed to open the file [/nonexistent-kvxml-dir/in.xml]");
}

TEST(XmlObjectBaseFromXmlElement, ReadsAnElementOfALoadedDocument) {
    CXmlDocument document;
    document.LoadXml("<list><greeting xmlns=\"urn:g\"><text>inner</text></greeting></list>");
    Greeting g;
    g.FromXmlElement(document.GetDocumentElement()->GetFirstElement());
    EXPECT_EQ(g.text, "inner");
    EXPECT_EQ(g.reads, 1);
}
