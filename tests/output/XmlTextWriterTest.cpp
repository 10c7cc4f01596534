// XmlTextWriterTest.cpp - the exact text the XML text writer produces.
#include "kvxml/output/XmlTextWriter.h"

#include <gtest/gtest.h>

#include <string>

#include "kvxml/foundation/InstanceMonitor.h"
#include "kvxml/foundation/KvException.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

const std::string kXsi = "http://www.w3.org/2001/XMLSchema-instance";
const std::string kXml = "http://www.w3.org/XML/1998/namespace";

// A writer over a memory stream, formatting off unless asked.
struct Doc {
    explicit Doc(bool format = false, XmlEncoding encoding = Encoding_None) : stream(encoding), writer(stream) {
        writer.SetFormat(format);
        writer.Open();
    }
    std::string Text() const { return stream.GetText(); }

    CTextStream stream;
    CXmlTextWriter writer;
};

// Records lifecycle calls and, like a file stream, drains on Flush.
class RecordingStream : public CTextStream {
public:
    void Close() override { ++closes; }
    void Flush() override {
        ++flushes;
        drained += GetText();
        m_buffer.Empty();
    }
    int closes = 0;
    int flushes = 0;
    std::string drained;
};

void WriteWorkedExample(CXmlTextWriter& writer) {
    writer.WriteStartDocument();
    writer.WriteStartElement("a", "");
    writer.WriteStartElement("b", "");
    writer.WriteString("x", ItemType::string);
    writer.WriteEndElement();
    writer.WriteStartElement("c", "");
    writer.WriteEndElement();
    writer.WriteEndElement();
    writer.Close();
}

}  // namespace

TEST(XmlTextWriterLayout, WorkedExampleFormattedAndFlat) {
    Doc formatted(true, Encoding_UTF8);
    WriteWorkedExample(formatted.writer);
    EXPECT_EQ(formatted.Text(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>\n\t<b>x</b>\n\t<c/>\n</a>\n");

    Doc flat(false, Encoding_UTF8);
    WriteWorkedExample(flat.writer);
    EXPECT_EQ(flat.Text(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a><b>x</b><c/></a>");

    Doc crlf(true, Encoding_UTF8);
    crlf.writer.SetEOLType(EOL_CRLF);
    EXPECT_EQ(crlf.writer.GetEOLType(), EOL_CRLF);
    WriteWorkedExample(crlf.writer);
    EXPECT_EQ(crlf.Text(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<a>\r\n\t<b>x</b>\r\n\t<c/>\r\n</a>\r\n");
}

TEST(XmlTextWriterLayout, DefaultsAndDeclarationPerEncoding) {
    CTextStream stream;
    CXmlTextWriter writer(stream);
    EXPECT_TRUE(writer.GetFormat());
    EXPECT_EQ(writer.GetEOLType(), EOL_LF);

    const struct {
        XmlEncoding encoding;
        const char* declaration;
    } cases[] = {{Encoding_None, "<?xml version=\"1.0\"?>\n"},
                 {Encoding_UTF8, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"},
                 {Encoding_UTF16, "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n"},
                 {Encoding_Wide, "<?xml version=\"1.0\"?>\n"}};
    for (const auto& c : cases) {
        Doc doc(false, c.encoding);  // the line end follows even without formatting
        doc.writer.WriteStartDocument();
        EXPECT_EQ(doc.Text(), c.declaration) << c.encoding;
    }
}

TEST(XmlTextWriterLayout, NestingIndentsWithTabsAndTextStaysOnOneLine) {
    Doc doc(true);
    doc.writer.WriteStartElement("r", "");
    doc.writer.WriteStartElement("a", "");
    doc.writer.WriteAttributeString("k", "", "v", ItemType::string);
    doc.writer.WriteStartElement("b", "");
    doc.writer.WriteString("text", ItemType::string);
    doc.writer.WriteEndElement();
    doc.writer.WriteStartElement("c", "");
    doc.writer.WriteString("", ItemType::string);  // leaves it empty
    doc.writer.WriteEndElement();
    doc.writer.WriteEndElement();
    doc.writer.WriteEndElement();
    EXPECT_EQ(doc.Text(), "<r>\n\t<a k=\"v\">\n\t\t<b>text</b>\n\t\t<c/>\n\t</a>\n</r>\n");
}

TEST(XmlTextWriterEscape, TextModeRows) {
    const struct {
        const char* in;
        const char* lf;
        const char* crlf;
    } cases[] = {
        {"a\nb", "a\nb", "a\r\nb"},
        {"a\r\nb", "a\nb", "a\r\nb"},
        {"a\rb\r", "ab", "ab"},
        {"say \"hi\"", "say \"hi\"", "say \"hi\""},
        {"a&b", "a&amp;b", "a&amp;b"},
        {"<x>", "&lt;x&gt;", "&lt;x&gt;"},
        {"tab\there 'q'", "tab\there 'q'", "tab\there 'q'"},
        {"\x01\x7F\x80\xE9\xFF", "\x01\x7F\x80\xE9\xFF", "\x01\x7F\x80\xE9\xFF"},
        {"]]>", "]]&gt;", "]]&gt;"},
    };
    for (const auto& c : cases) {
        for (EOLType eol : {EOL_LF, EOL_CRLF}) {
            CTextStream stream;
            CXmlTextWriter writer(stream);
            writer.SetEOLType(eol);
            writer.PadAndAppend(c.in, false);
            EXPECT_EQ(stream.GetText(), eol == EOL_LF ? c.lf : c.crlf) << c.in;
        }
    }
}

TEST(XmlTextWriterEscape, AttributeModeRows) {
    const struct {
        const char* in;
        const char* out;
    } cases[] = {
        {"a\nb", "a&#xA;b"},
        {"a\r\nb", "a&#xA;b"},
        {"a\rb", "ab"},
        {"say \"hi\"", "say &quot;hi&quot;"},
        {"a&b<c>d", "a&amp;b&lt;c&gt;d"},
        {"tab\t'q'", "tab\t'q'"},
        {"\x80\xE9\xFF", "\x80\xE9\xFF"},
        {"", ""},
    };
    for (const auto& c : cases) {
        for (EOLType eol : {EOL_LF, EOL_CRLF}) {
            CTextStream stream;
            CXmlTextWriter writer(stream);
            writer.SetEOLType(eol);
            writer.PadAndAppend(c.in, true);
            EXPECT_EQ(stream.GetText(), c.out) << c.in;
        }
    }
}

TEST(XmlTextWriterEscape, ThroughElementsAttributesAndComments) {
    Doc doc;
    doc.writer.SetEOLType(EOL_CRLF);
    doc.writer.WriteComment("a<b\r\nc");
    doc.writer.WriteStartElement("r", "");
    doc.writer.WriteAttributeString("v", "", "1 < \"2\"\n", ItemType::string);
    doc.writer.WriteString("x & y\nz", ItemType::string);
    doc.writer.WriteEndElement();
    EXPECT_EQ(doc.Text(), "<!--a&lt;b\r\nc-->\r\n<r v=\"1 &lt; &quot;2&quot;&#xA;\">x &amp; y\r\nz</r>");
}

TEST(XmlTextWriterText, CdataPassesThroughUnescaped) {
    Doc doc;
    doc.writer.WriteStartElement("r", "");
    doc.writer.WriteString("<![CDATA[a<b & ]]>]]> tail <", ItemType::string);
    doc.writer.WriteEndElement();
    doc.writer.WriteStartElement("s", "");
    doc.writer.WriteString("<![CDATA", ItemType::string);  // not a section start
    doc.writer.WriteEndElement();
    EXPECT_EQ(doc.Text(), "<r><![CDATA[a<b & ]]>]]> tail <</r><s>&lt;![CDATA</s>");
}

TEST(XmlTextWriterText, EmptyElementForms) {
    Doc doc(true);
    doc.writer.WriteStartElement("r", "");
    doc.writer.WriteAttributeString("a", "", "1", ItemType::i4);
    doc.writer.WriteAttributeString("b", "", "", ItemType::string);
    doc.writer.WriteString("", ItemType::string);
    doc.writer.WriteAttributeNil();  // still allowed: the tag is open
    doc.writer.WriteEndElement();
    EXPECT_EQ(doc.Text(), "<r a=\"1\" b=\"\" xmlns:AA=\"" + kXsi + "\" AA:nil=\"true\"/>\n");
}

TEST(XmlTextWriterDirectives, CommentsPisInlineSchemaAndRawElements) {
    Doc doc(true);
    doc.writer.WriteHeaderDirective("<!DOCTYPE r>");
    doc.writer.WritePI("<?pi data?>");
    doc.writer.WriteComment("note");
    doc.writer.WriteStartElement("r", "");
    doc.writer.WriteInlineSchema("<xs:schema/>");
    doc.writer.CloseParentElm();
    doc.writer.WriteRawElement("<raw a='1'>&</raw>");
    doc.writer.WriteEndElement();
    EXPECT_EQ(doc.Text(),
              "<!DOCTYPE r>\n<?pi data?>\n\n<!--note-->\n<r \n<xs:schema/>\n>\n<raw a='1'>&</raw>\n</r>\n");

    Doc flat;
    flat.writer.WriteStartElement("r", "");
    flat.writer.CloseParentElm();
    flat.writer.WriteRawElement("<x/>");
    flat.writer.WriteEndElement();
    EXPECT_EQ(flat.Text(), "<r><x/></r>");
}

TEST(XmlTextWriterNamespaces, InventsPrefixesFromAA) {
    Doc doc;
    doc.writer.WriteStartElement("r", "urn:a");
    doc.writer.WriteStartElement("c", "urn:a");  // bound in scope: no declaration
    doc.writer.WriteEndElement();
    doc.writer.WriteStartElement("d", "urn:b");
    doc.writer.WriteEndElement();
    doc.writer.WriteEndElement();
    EXPECT_EQ(doc.Text(), "<AA:r xmlns:AA=\"urn:a\"><AA:c/><AB:d xmlns:AB=\"urn:b\"/></AA:r>");

    Doc taken;
    taken.writer.AddNamespace("AA", "urn:x");
    taken.writer.WriteStartElement("r", "urn:a");
    taken.writer.WriteEndElement();
    EXPECT_EQ(taken.Text(), "<AB:r xmlns:AB=\"urn:a\" xmlns:AA=\"urn:x\"/>");
}

TEST(XmlTextWriterNamespaces, SiblingsDeclareTheirOwnPrefixes) {
    Doc doc;
    doc.writer.WriteStartElement("r", "");
    doc.writer.WriteStartElement("c", "urn:s");
    doc.writer.WriteStartElement("g", "urn:s");  // inherits the child's binding
    doc.writer.WriteEndElement();
    doc.writer.WriteEndElement();
    doc.writer.WriteStartElement("c", "urn:s");  // the binding died with the first child
    doc.writer.WriteEndElement();
    doc.writer.WriteStartElement("e", "urn:t");
    doc.writer.WriteEndElement();
    doc.writer.WriteEndElement();
    EXPECT_EQ(doc.Text(),
              "<r><AA:c xmlns:AA=\"urn:s\"><AA:g/></AA:c><AA:c xmlns:AA=\"urn:s\"/>"
              "<AA:e xmlns:AA=\"urn:t\"/></r>");
}

TEST(XmlTextWriterNamespaces, RootDeclaresInventedThenDefaultThenSortedPending) {
    Doc doc;
    doc.writer.SetDefaultNamespace("urn:d");
    doc.writer.AddNamespace("z", "urn:b");
    doc.writer.AddNamespace("a", "urn:c");
    doc.writer.AddNamespace("m", "urn:a");
    doc.writer.AddNamespace("up", "urn:B");      // 'B' sorts before 'a'
    doc.writer.AddNamespace("hi", "urn:\xC3\xA9");  // high bytes sort last
    doc.writer.AddNamespace("p", "urn:once");
    doc.writer.AddNamespace("q", "urn:once");  // the later prefix wins
    doc.writer.WriteStartElement("r", "urn:e");
    doc.writer.WriteStartElement("in", "urn:d");
    doc.writer.WriteEndElement();
    doc.writer.WriteStartElement("none", "");
    doc.writer.WriteEndElement();
    doc.writer.WriteStartElement("m", "urn:a");
    doc.writer.WriteEndElement();
    doc.writer.WriteEndElement();
    EXPECT_EQ(doc.Text(),
              "<AA:r xmlns:AA=\"urn:e\" xmlns=\"urn:d\" xmlns:up=\"urn:B\" xmlns:m=\"urn:a\" "
              "xmlns:z=\"urn:b\" xmlns:a=\"urn:c\" xmlns:q=\"urn:once\" xmlns:hi=\"urn:\xC3\xA9\">"
              "<in/><none/><m:m/></AA:r>");
}

TEST(XmlTextWriterNamespaces, XmlPrefixIsNeverDeclared) {
    Doc doc;
    doc.writer.AddNamespace("xml", kXml);
    doc.writer.WriteStartElement("r", "");
    doc.writer.WriteAttributeString("lang", kXml, "en", ItemType::string);
    doc.writer.WriteStartElement("e", kXml);
    doc.writer.WriteEndElement();
    doc.writer.WriteEndElement();
    EXPECT_EQ(doc.Text(), "<r xml:lang=\"en\"><xml:e/></r>");
}

TEST(XmlTextWriterNamespaces, AttributesAlwaysUseAPrefix) {
    Doc doc;
    doc.writer.SetDefaultNamespace("urn:d");
    doc.writer.WriteStartElement("r", "urn:d");
    doc.writer.WriteAttributeString("at", "urn:d", "1", ItemType::string);
    doc.writer.WriteAttributeString("bt", "urn:d", "2", ItemType::string);
    doc.writer.WriteAttributeString("plain", "", "3", ItemType::string);
    doc.writer.WriteStartElement("c", "urn:d");
    doc.writer.WriteEndElement();
    doc.writer.WriteEndElement();
    EXPECT_EQ(doc.Text(),
              "<r xmlns=\"urn:d\" xmlns:AA=\"urn:d\" AA:at=\"1\" AA:bt=\"2\" plain=\"3\"><c/></r>");
}

TEST(XmlTextWriterNamespaces, AddNamespaceInsideAnElementOnlyChangesLaterNames) {
    Doc doc;
    doc.writer.WriteStartElement("r", "");
    doc.writer.AddNamespace("p", "urn:p");  // not declared by the writer
    doc.writer.WriteStartElement("c", "urn:p");
    doc.writer.WriteEndElement();
    doc.writer.WriteEndElement();
    EXPECT_EQ(doc.Text(), "<r><p:c/></r>");
}

TEST(XmlTextWriterNamespaces, SecondRootGetsThePendingDeclarationsAgain) {
    Doc doc;
    doc.writer.AddNamespace("p", "urn:p");
    for (int i = 0; i < 2; ++i) {
        doc.writer.WriteStartElement("r", "urn:p");
        doc.writer.WriteEndElement();
    }
    EXPECT_EQ(doc.Text(), "<p:r xmlns:p=\"urn:p\"/><p:r xmlns:p=\"urn:p\"/>");
}

TEST(XmlTextWriterXsi, TypeAttributeForms) {
    // Both namespaces unbound: two declarations, the second after two spaces.
    Doc unbound;
    unbound.writer.WriteStartElement("r", "");
    unbound.writer.WriteAttributeType("urn:t", "T", ItemType::string);
    unbound.writer.WriteEndElement();
    EXPECT_EQ(unbound.Text(), "<r xmlns:AA=\"urn:t\"  xmlns:AB=\"" + kXsi + "\" AB:type=\"AA:T\"/>");

    Doc announced;
    announced.writer.AddNamespace("xsi", kXsi);
    announced.writer.AddNamespace("t", "urn:t");
    announced.writer.WriteStartElement("r", "");
    announced.writer.WriteAttributeType("urn:t", "T", ItemType::string);
    announced.writer.WriteEndElement();
    // Sorted by URI: "http://www.w3.org/2001/..." before "urn:t".
    EXPECT_EQ(announced.Text(), "<r xmlns:xsi=\"" + kXsi + "\" xmlns:t=\"urn:t\" xsi:type=\"t:T\"/>");

    Doc bare;
    bare.writer.AddNamespace("xsi", kXsi);
    bare.writer.SetDefaultNamespace("urn:d");
    bare.writer.WriteStartElement("r", "urn:d");
    bare.writer.WriteAttributeType("urn:d", "InDefault", ItemType::string);
    bare.writer.WriteStartElement("c", "urn:d");
    bare.writer.WriteAttributeType("", "NoNamespace", ItemType::string);
    bare.writer.WriteEndElement();
    bare.writer.WriteEndElement();
    EXPECT_EQ(bare.Text(), "<r xmlns=\"urn:d\" xmlns:xsi=\"" + kXsi +
                               "\" xsi:type=\"InDefault\"><c xsi:type=\"NoNamespace\"/></r>");
}

TEST(XmlTextWriterXsi, NilAttribute) {
    Doc announced;
    announced.writer.AddNamespace("xsi", kXsi);
    announced.writer.WriteStartElement("r", "");
    announced.writer.WriteAttributeNil();
    announced.writer.WriteEndElement();
    EXPECT_EQ(announced.Text(), "<r xmlns:xsi=\"" + kXsi + "\" xsi:nil=\"true\"/>");

    Doc unbound;
    unbound.writer.WriteStartElement("r", "");
    unbound.writer.WriteStartElement("c", "");
    unbound.writer.WriteAttributeNil();
    unbound.writer.WriteEndElement();
    unbound.writer.WriteStartElement("c", "");  // the binding was the sibling's only
    unbound.writer.WriteAttributeNil();
    unbound.writer.WriteEndElement();
    unbound.writer.WriteEndElement();
    EXPECT_EQ(unbound.Text(), "<r><c xmlns:AA=\"" + kXsi + "\" AA:nil=\"true\"/><c xmlns:AA=\"" + kXsi +
                                  "\" AA:nil=\"true\"/></r>");
}

TEST(XmlTextWriterErrors, AttributesAfterContentAreRefused) {
    Doc doc;
    doc.writer.WriteStartElement("r", "");
    doc.writer.WriteString("text", ItemType::string);
    EXPECT_KV_THROW(doc.writer.WriteAttributeString("a", "", "1", ItemType::string), CKvException,
                    "Attributes must be added before elements");
    EXPECT_KV_THROW(doc.writer.WriteAttributeType("urn:t", "T", ItemType::string), CKvException,
                    "Attributes must be added before elements");
    EXPECT_KV_THROW(doc.writer.WriteAttributeNil(), CKvException, "Attributes must be added before elements");
    doc.writer.WriteStartElement("c", "");
    doc.writer.WriteEndElement();
    EXPECT_KV_THROW(doc.writer.WriteAttributeString("a", "", "1", ItemType::string), CKvException,
                    "Attributes must be added before elements");
    doc.writer.WriteEndElement();
    EXPECT_EQ(doc.Text(), "<r>text<c/></r>");  // nothing leaked into the output
}

TEST(XmlTextWriterErrors, HeaderDirectiveAfterTheRootStarts) {
    Doc doc;
    doc.writer.WriteHeaderDirective("<!-- first -->");
    doc.writer.WriteStartElement("r", "");
    EXPECT_KV_THROW(doc.writer.WriteHeaderDirective("<!DOCTYPE r>"), CKvException,
                    "Headed directives must appear before an Element has been added.");
    doc.writer.WriteEndElement();
    doc.writer.WriteHeaderDirective("<!-- after -->");  // allowed again once closed
    EXPECT_EQ(doc.Text(), "<!-- first -->\n<r/><!-- after -->\n");
}

TEST(XmlTextWriterErrors, InvalidEolTypeKeepsThePreviousSetting) {
    Doc doc(true);
    doc.writer.SetEOLType(EOL_CRLF);
    EXPECT_KV_THROW(doc.writer.SetEOLType(static_cast<EOLType>(2)), CKvException, "Invalid EOL type.");
    EXPECT_KV_THROW(doc.writer.SetEOLType(static_cast<EOLType>(-1)), CKvException, "Invalid EOL type.");
    EXPECT_EQ(doc.writer.GetEOLType(), EOL_CRLF);
    doc.writer.WriteStartElement("r", "");
    doc.writer.WriteString("a\nb", ItemType::string);
    doc.writer.WriteEndElement();
    EXPECT_EQ(doc.Text(), "<r>a\r\nb</r>\r\n");
}

TEST(XmlTextWriterErrors, CloseFlushesTheStreamBeforeRefusing) {
    RecordingStream stream;
    CXmlTextWriter writer(stream);
    writer.Open();
    writer.WriteStartElement("r", "");
    EXPECT_KV_THROW(writer.Close(), CKvException, "An Element has not been closed.");
    EXPECT_EQ(stream.closes, 1);
    writer.WriteEndElement();
    writer.Close();
    EXPECT_EQ(stream.closes, 2);
}

TEST(XmlTextWriterStream, FlushesOnceFourKilobytesAreHeld) {
    RecordingStream stream;
    CXmlTextWriter writer(stream);
    writer.SetFormat(false);
    writer.Open();
    writer.WriteStartElement("r", "");
    writer.WriteString(std::string(4000, 'x'), ItemType::string);
    EXPECT_EQ(stream.flushes, 0);  // 4003 characters held
    writer.WriteStartElement("c", "");
    writer.WriteAttributeString("a", "", std::string(100, 'y'), ItemType::string);
    EXPECT_EQ(stream.flushes, 1);
    EXPECT_EQ(stream.GetLength(), 0u);
    writer.WriteEndElement();
    writer.WriteEndElement();
    writer.Close();
    EXPECT_EQ(stream.drained + stream.GetText(),
              "<r>" + std::string(4000, 'x') + "<c a=\"" + std::string(100, 'y') + "\"/></r>");
}

TEST(XmlTextWriterStream, DeepNestingWritesAndUnwinds) {
    Doc doc;
    const int depth = 100000;
    for (int i = 0; i < depth; ++i) doc.writer.WriteStartElement("e", "urn:n");
    for (int i = 0; i < depth; ++i) doc.writer.WriteEndElement();
    doc.writer.Close();
    const std::string text = doc.Text();
    std::string expected = "<AA:e xmlns:AA=\"urn:n\">";
    for (int i = 2; i < depth; ++i) expected += "<AA:e>";
    expected += "<AA:e/>";
    for (int i = 1; i < depth; ++i) expected += "</AA:e>";
    EXPECT_TRUE(text == expected) << "length " << text.size() << " vs " << expected.size();

    CTextStream stream;
    auto* writer = new CXmlTextWriter(stream);
    writer->SetFormat(false);  // indentation would be quadratic in the depth
    for (int i = 0; i < depth; ++i) writer->WriteStartElement("e", "");
    delete writer;  // destroys every open context without deep recursion
}

TEST(XmlTextWriterLifecycle, OpenEmptiesTheStreamAndInstancesAreCountedByName) {
    CInstanceMonitor::SetCounting(true);
    {
        CTextStream stream(std::string("stale"), Encoding_UTF8);
        CXmlTextWriter writer(stream);
        EXPECT_EQ(CInstanceMonitor::GetLiveCount("CXmlTextWriter"), 1u);
        EXPECT_EQ(CInstanceMonitor::GetLiveCount("CTextStream"), 1u);
        EXPECT_EQ(CInstanceMonitor::GetLiveCount("CStringBuffer"), 1u);
        writer.Open();
        EXPECT_EQ(stream.GetLength(), 0u);
        writer.WriteStartElement("r", "");
        writer.WriteStartElement("c", "");
        EXPECT_EQ(CInstanceMonitor::GetLiveCount("CXmlWriterContext"), 2u);
    }
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("CXmlTextWriter"), 0u);
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("CXmlWriterContext"), 0u);
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("CTextStream"), 0u);
    CInstanceMonitor::SetCounting(false);
}
