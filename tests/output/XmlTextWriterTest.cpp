// XmlTextWriterTest.cpp - the exact text the XML text writer produces.
#include <cstdlib>
#include <initializer_list>
#include <new>

#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

// Allocations made by this test program, for the scaling test below.
static std::atomic<uint64_t> g_allocations{0};

void* operator new(std::size_t size) {
    ++g_allocations;
    if (void* p = std::malloc(size ? size : 1)) return p;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++g_allocations;
    return std::malloc(size ? size : 1);
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { std::free(p); }

namespace {

const std::string kXsi = "http://www.w3.org/2001/XMLSchema-instance";
const std::string kXml = "http://www.w3.org/XML/1998/namespace";

// A writer over a memory stream, formatting off unless asked, with chainable calls.
struct Doc {
    using Str = const std::string&;
    explicit Doc(bool format = false, XmlEncoding encoding = Encoding_None) : stream(encoding), writer(stream) {
        writer.SetFormat(format);
        writer.Open();
    }
    Doc& Start(Str name, Str uri = "") { writer.WriteStartElement(name, uri); return *this; }
    Doc& End() { writer.WriteEndElement(); return *this; }
    Doc& Text(Str text) { writer.WriteString(text, ItemType::string); return *this; }
    Doc& Attr(Str name, Str uri, Str v) { writer.WriteAttributeString(name, uri, v, ItemType::string); return *this; }
    Doc& Type(Str uri, Str name) { writer.WriteAttributeType(uri, name, ItemType::string); return *this; }
    Doc& Nil() { writer.WriteAttributeNil(); return *this; }
    Doc& Ns(Str prefix, Str uri) { writer.AddNamespace(prefix, uri); return *this; }
    Doc& Default(Str uri) { writer.SetDefaultNamespace(uri); return *this; }
    std::string Out() const { return stream.GetText(); }

    CTextStream stream;
    CXmlTextWriter writer;
};

// Calls made on a fresh flat document, and the exact text they give.
struct Scenario { const char* behaviour; void (*build)(Doc&); std::string expected; };

void ExpectScenarios(std::initializer_list<Scenario> scenarios) {
    for (const Scenario& s : scenarios) {
        Doc doc;
        s.build(doc);
        EXPECT_EQ(doc.Out(), s.expected) << s.behaviour;
    }
}

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

}  // namespace

TEST(XmlTextWriterLayout, FormattingIndentsWithTabsAndEndsLinesByTheChosenType) {
    const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
    Doc formatted(true, Encoding_UTF8), flat(false, Encoding_UTF8), crlf(true, Encoding_UTF8);
    crlf.writer.SetEOLType(EOL_CRLF);
    for (Doc* doc : {&formatted, &flat, &crlf}) {
        doc->writer.WriteStartDocument();
        doc->Start("a").Start("b").Attr("k", "", "v").Start("c").Text("x").End().Start("d").Text("").End().End();
        doc->End().writer.Close();  // empty text leaves d empty
    }
    EXPECT_EQ(formatted.Out(), declaration + "\n<a>\n\t<b k=\"v\">\n\t\t<c>x</c>\n\t\t<d/>\n\t</b>\n</a>\n");
    EXPECT_EQ(flat.Out(), declaration + "\n<a><b k=\"v\"><c>x</c><d/></b></a>");
    EXPECT_EQ(crlf.Out(), declaration + "\r\n<a>\r\n\t<b k=\"v\">\r\n\t\t<c>x</c>\r\n\t\t<d/>\r\n\t</b>\r\n</a>\r\n");
}

TEST(XmlTextWriterLayout, DefaultsAndDeclarationPerEncoding) {
    CTextStream stream;
    CXmlTextWriter writer(stream);
    EXPECT_TRUE(writer.GetFormat());
    EXPECT_EQ(writer.GetEOLType(), EOL_LF);
    const std::pair<XmlEncoding, const char*> cases[] = {
        {Encoding_None, "<?xml version=\"1.0\"?>\n"}, {Encoding_UTF8, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"},
        {Encoding_UTF16, "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n"}, {Encoding_Wide, "<?xml version=\"1.0\"?>\n"}};
    for (const auto& [encoding, declaration] : cases) {
        Doc doc(false, encoding);  // the line end follows even without formatting
        doc.writer.WriteStartDocument();
        EXPECT_EQ(doc.Out(), declaration) << encoding;
    }
}

TEST(XmlTextWriterEscape, TextAndAttributeModeRows) {
    const struct {
        const char* in;
        const char* textLf;
        const char* textCrlf;
        const char* attribute;  // the same for both line end types
    } cases[] = {
        {"a\nb", "a\nb", "a\r\nb", "a&#xA;b"}, {"a\r\nb", "a\nb", "a\r\nb", "a&#xA;b"}, {"a\rb\r", "ab", "ab", "ab"},
        {"say \"hi\"", "say \"hi\"", "say \"hi\"", "say &quot;hi&quot;"},
        {"a&b<c>d", "a&amp;b&lt;c&gt;d", "a&amp;b&lt;c&gt;d", "a&amp;b&lt;c&gt;d"},
        {"tab\there 'q'", "tab\there 'q'", "tab\there 'q'", "tab\there 'q'"},
        {"\x7F\x80\xE9\xFF", "\x7F\x80\xE9\xFF", "\x7F\x80\xE9\xFF", "\x7F\x80\xE9\xFF"},
        {"]]>", "]]&gt;", "]]&gt;", "]]&gt;"}, {"", "", "", ""},
    };
    for (const auto& c : cases) {
        for (EOLType eol : {EOL_LF, EOL_CRLF}) {
            for (bool isAttribute : {false, true}) {
                CTextStream stream;
                CXmlTextWriter writer(stream);
                writer.SetEOLType(eol);
                writer.PadAndAppend(c.in, isAttribute);
                EXPECT_EQ(stream.GetText(), isAttribute ? c.attribute : eol == EOL_LF ? c.textLf : c.textCrlf)
                    << c.in << " eol " << eol << " attribute " << isAttribute;
            }
        }
    }
}

TEST(XmlTextWriterEscape, ThroughElementsAttributesAndComments) {
    Doc doc;
    doc.writer.SetEOLType(EOL_CRLF);
    doc.writer.WriteComment("a<b\r\nc");
    doc.Start("r").Attr("v", "", "1 < \"2\"\n").Text("x & y\nz").End();
    EXPECT_EQ(doc.Out(), "<!--a&lt;b\r\nc-->\r\n<r v=\"1 &lt; &quot;2&quot;&#xA;\">x &amp; y\r\nz</r>");
}

TEST(XmlTextWriterText, CompleteCdataSectionsPassTheRestIsEscaped) {
    const std::pair<const char*, const char*> cases[] = {
        {"<![CDATA[a<b & ]]>", "<![CDATA[a<b & ]]>"}, {"<![CDATA[x<y]]>&]]>z", "<![CDATA[x<y]]>&amp;]]&gt;z"},
        // A value closing its element and opening another stays text.
        {"<![CDATA[x]]></price><price>0.01</price><![CDATA[",
         "<![CDATA[x]]>&lt;/price&gt;&lt;price&gt;0.01&lt;/price&gt;&lt;![CDATA["},
        {"<![CDATA[a]]>-<![CDATA[<b>]]>", "<![CDATA[a]]>-<![CDATA[<b>]]>"},
        {"<![CDATA[open <", "&lt;![CDATA[open &lt;"},
        {"<![CDATA", "&lt;![CDATA"},  // not a section start
    };
    for (const auto& [in, out] : cases) {
        Doc doc;
        doc.Start("r").Text(in).End();
        EXPECT_EQ(doc.Out(), std::string("<r>") + out + "</r>") << in;
    }
}

TEST(XmlTextWriterErrors, UnwritableCharactersAndNamesThrowBeforeWriting) {
    const struct { void (*write)(Doc&); const char* message; } cases[] = {
        {[](Doc& d) { d.Text("a&b\x01"); }, "Invalid character [0x01] in the text of the element [r]"},
        {[](Doc& d) { d.Text("<![CDATA[\x0B]]>"); }, "Invalid character [0x0B] in the text of the element [r]"},
        {[](Doc& d) { d.Text("<![CDATA[]]><\x1F"); }, "Invalid character [0x1F] in the text of the element [r]"},
        {[](Doc& d) { d.Attr("code", "urn:a", "<\x0C"); }, "Invalid character [0x0C] in the attribute [code]"},
        {[](Doc& d) { d.writer.WriteComment("\x08"); }, "Invalid character [0x08] in a comment"},
        {[](Doc& d) { d.Start("a b"); }, "The element name [a b] is not a valid XML name"},
        {[](Doc& d) { d.Start("a><x"); }, "The element name [a><x] is not a valid XML name"},
        {[](Doc& d) { d.Start("1a"); }, "The element name [1a] is not a valid XML name"},
        {[](Doc& d) { d.Start(""); }, "The element name [] is not a valid XML name"},
        {[](Doc& d) { d.Attr("x=\"1\" y", "", "v"); }, "The attribute name [x=\"1\" y] is not a valid XML name"},
        {[](Doc& d) { d.Attr("", "", "v"); }, "The attribute name [] is not a valid XML name"},
    };
    for (const auto& c : cases) {
        Doc doc;
        doc.Start("r");
        const std::string before = doc.Out();
        EXPECT_KV_THROW(c.write(doc), CKvException, c.message);
        EXPECT_EQ(doc.Out(), before) << c.message;
    }
    Doc fine;  // what does pass: TAB, LF, CR, DEL, high bytes, names of all kinds
    fine.Start("_a-1.b").Attr("x\xE9:y", "", "\t\x7F").Text("\t\r\n\xFF").End();
    EXPECT_EQ(fine.Out(), "<_a-1.b x\xE9:y=\"\t\x7F\">\t\n\xFF</_a-1.b>");
}

TEST(XmlTextWriterText, EmptyElementForms) {
    Doc doc(true);
    doc.Start("r");
    doc.writer.WriteAttributeString("a", "", "1", ItemType::i4);
    doc.Attr("b", "", "").Text("").Nil().End();  // still open after empty text: nil is allowed
    EXPECT_EQ(doc.Out(), "<r a=\"1\" b=\"\" xmlns:AA=\"" + kXsi + "\" AA:nil=\"true\"/>\n");
}

TEST(XmlTextWriterDirectives, CommentsPisInlineSchemaAndRawElements) {
    Doc doc(true);
    doc.writer.WriteHeaderDirective("<!DOCTYPE r>");
    doc.writer.WritePI("<?pi data?>");
    doc.writer.WriteComment("note");
    doc.Start("r");
    doc.writer.WriteInlineSchema("<xs:schema/>");
    doc.writer.CloseParentElm();
    doc.writer.WriteRawElement("<raw a='1'>&</raw>");
    doc.End();
    EXPECT_EQ(doc.Out(), "<!DOCTYPE r>\n<?pi data?>\n\n<!--note-->\n<r \n<xs:schema/>\n>\n<raw a='1'>&</raw>\n</r>\n");

    Doc flat;
    flat.Start("r");
    flat.writer.CloseParentElm();
    flat.writer.WriteRawElement("<x/>");
    flat.End();
    EXPECT_EQ(flat.Out(), "<r><x/></r>");
}

TEST(XmlTextWriterNamespaces, DeclaresWhereAPrefixIsFirstNeeded) {
    ExpectScenarios({
        {"invents prefixes from AA; a bound one is not declared again",
         [](Doc& d) { d.Start("r", "urn:a").Start("c", "urn:a").End().Start("d", "urn:b").End().End(); },
         "<AA:r xmlns:AA=\"urn:a\"><AA:c/><AB:d xmlns:AB=\"urn:b\"/></AA:r>"},
        {"skips an invented name announced for another URI",
         [](Doc& d) { d.Ns("AA", "urn:x").Start("r", "urn:a").End(); },
         "<AB:r xmlns:AB=\"urn:a\" xmlns:AA=\"urn:x\"/>"},
        {"a binding dies with its element: siblings declare again, children inherit",
         [](Doc& d) {
             d.Start("r").Start("c", "urn:s").Start("g", "urn:s").End().End();
             d.Start("c", "urn:s").End().Start("e", "urn:t").End().End();
         },
         "<r><AA:c xmlns:AA=\"urn:s\"><AA:g/></AA:c><AA:c xmlns:AA=\"urn:s\"/><AA:e xmlns:AA=\"urn:t\"/></r>"},
        {"the xml prefix is never declared",
         [](Doc& d) { d.Ns("xml", kXml).Start("r").Attr("lang", kXml, "en").Start("e", kXml).End().End(); },
         "<r xml:lang=\"en\"><xml:e/></r>"},
        {"attributes always use a prefix, even for the default namespace",
         [](Doc& d) {
             d.Default("urn:d").Start("r", "urn:d").Attr("at", "urn:d", "1").Attr("bt", "urn:d", "2");
             d.Attr("plain", "", "3").Start("c", "urn:d").End().End();
         },
         "<r xmlns=\"urn:d\" xmlns:AA=\"urn:d\" AA:at=\"1\" AA:bt=\"2\" plain=\"3\"><c/></r>"},
        {"a namespace added inside an element only prefixes later names",
         [](Doc& d) { d.Start("r").Ns("p", "urn:p").Start("c", "urn:p").End().End(); }, "<r><p:c/></r>"},
        {"names and end tags follow a rebinding made inside an element, and its end",
         [](Doc& d) {
             d.Start("r", "urn:a").Start("c", "urn:a").Ns("q", "urn:a").Start("g", "urn:a").End().End();
             d.Start("d", "urn:a").End().End();
         },
         "<AA:r xmlns:AA=\"urn:a\"><AA:c><q:g/></q:c><AA:d/></AA:r>"},
        {"a second root gets the pending declarations again",
         [](Doc& d) { d.Ns("p", "urn:p").Start("r", "urn:p").End().Start("r", "urn:p").End(); },
         "<p:r xmlns:p=\"urn:p\"/><p:r xmlns:p=\"urn:p\"/>"},
    });
}

TEST(XmlTextWriterNamespaces, RootDeclaresInventedThenDefaultThenSortedPending) {
    Doc doc;
    doc.Default("urn:d").Ns("z", "urn:b").Ns("a", "urn:c").Ns("m", "urn:a");
    doc.Ns("up", "urn:B");                        // 'B' sorts before 'a'
    doc.Ns("hi", "urn:\xC3\xA9");                 // high bytes sort last
    doc.Ns("p", "urn:once").Ns("q", "urn:once");  // the later prefix wins
    doc.Start("r", "urn:e").Start("in", "urn:d").End().Start("none").End().Start("m", "urn:a").End().End();
    EXPECT_EQ(doc.Out(),
              "<AA:r xmlns:AA=\"urn:e\" xmlns=\"urn:d\" xmlns:up=\"urn:B\" xmlns:m=\"urn:a\" "
              "xmlns:z=\"urn:b\" xmlns:a=\"urn:c\" xmlns:q=\"urn:once\" xmlns:hi=\"urn:\xC3\xA9\">"
              "<in/><none/><m:m/></AA:r>");
}

TEST(XmlTextWriterNamespaces, UndeclaringTheDefaultNamespaceForElementsWithoutOne) {
    // Off, <none/> would read back in urn:d; on, it undeclares urn:d, and
    // urn:d elements inside it need a prefix.
    for (bool undeclare : {false, true}) {
        Doc doc;
        doc.writer.SetUndeclareDefaultNamespace(undeclare);
        doc.Default("urn:d").Start("r", "urn:d").Start("none").Start("in", "urn:d").End().End();
        doc.Start("in", "urn:d").End().End();
        EXPECT_EQ(doc.Out(), undeclare ? "<r xmlns=\"urn:d\"><none xmlns=\"\"><AA:in xmlns:AA=\"urn:d\"/></none><in/></r>"
                                       : "<r xmlns=\"urn:d\"><none><in/></none><in/></r>");
        // A root without a namespace: there is nothing to undeclare, so the
        // document's default namespace is left out.
        Doc root;
        root.writer.SetUndeclareDefaultNamespace(undeclare);
        root.Default("urn:d").Ns("p", "urn:p").Start("r").Start("in", "urn:d").End().End();
        EXPECT_EQ(root.Out(), undeclare ? "<r xmlns:p=\"urn:p\"><AA:in xmlns:AA=\"urn:d\"/></r>"
                                        : "<r xmlns=\"urn:d\" xmlns:p=\"urn:p\"><in/></r>");
    }
}

TEST(XmlTextWriterXsi, TypeAndNilAttributes) {
    const std::string nilChild = "<c xmlns:AA=\"" + kXsi + "\" AA:nil=\"true\"/>";
    ExpectScenarios({
        {"type with both namespaces unbound: two declarations, the second after two spaces",
         [](Doc& d) { d.Start("r").Type("urn:t", "T").End(); },
         "<r xmlns:AA=\"urn:t\"  xmlns:AB=\"" + kXsi + "\" AB:type=\"AA:T\"/>"},
        {"type with announced namespaces, declared sorted by URI",
         [](Doc& d) { d.Ns("xsi", kXsi).Ns("t", "urn:t").Start("r").Type("urn:t", "T").End(); },
         "<r xmlns:xsi=\"" + kXsi + "\" xmlns:t=\"urn:t\" xsi:type=\"t:T\"/>"},
        {"type in the default or no namespace is a bare name",
         [](Doc& d) {
             d.Ns("xsi", kXsi).Default("urn:d").Start("r", "urn:d").Type("urn:d", "InDefault");
             d.Start("c", "urn:d").Type("", "NoNamespace").End().End();
         },
         "<r xmlns=\"urn:d\" xmlns:xsi=\"" + kXsi + "\" xsi:type=\"InDefault\"><c xsi:type=\"NoNamespace\"/></r>"},
        {"nil with xsi announced", [](Doc& d) { d.Ns("xsi", kXsi).Start("r").Nil().End(); },
         "<r xmlns:xsi=\"" + kXsi + "\" xsi:nil=\"true\"/>"},
        {"nil binds xsi for each sibling of its own",
         [](Doc& d) { d.Start("r").Start("c").Nil().End().Start("c").Nil().End().End(); },
         "<r>" + nilChild + nilChild + "</r>"},
    });
}

TEST(XmlTextWriterErrors, AttributesAfterContentAndDirectivesInsideTheRootAreRefused) {
    Doc doc;
    doc.writer.WriteHeaderDirective("<!-- first -->");
    doc.Start("r").Text("text");
    EXPECT_KV_THROW(doc.Attr("a", "", "1"), CKvException, "Attributes must be added before elements");
    EXPECT_KV_THROW(doc.Type("urn:t", "T"), CKvException, "Attributes must be added before elements");
    EXPECT_KV_THROW(doc.Nil(), CKvException, "Attributes must be added before elements");
    EXPECT_KV_THROW(doc.writer.WriteHeaderDirective("<!DOCTYPE r>"), CKvException,
                    "Headed directives must appear before an Element has been added.");
    doc.Start("c").End();
    EXPECT_KV_THROW(doc.Attr("a", "", "1"), CKvException, "Attributes must be added before elements");
    doc.End();
    doc.writer.WriteHeaderDirective("<!-- after -->");  // allowed again once closed
    EXPECT_EQ(doc.Out(), "<!-- first -->\n<r>text<c/></r><!-- after -->\n");  // nothing leaked into the output
}

TEST(XmlTextWriterErrors, InvalidEolTypeKeepsThePreviousSetting) {
    Doc doc(true);
    doc.writer.SetEOLType(EOL_CRLF);
    for (int bad : {2, -1})
        EXPECT_KV_THROW(doc.writer.SetEOLType(static_cast<EOLType>(bad)), CKvException, "Invalid EOL type.");
    EXPECT_EQ(doc.writer.GetEOLType(), EOL_CRLF);
    doc.Start("r").Text("a\nb").End();
    EXPECT_EQ(doc.Out(), "<r>a\r\nb</r>\r\n");
}

TEST(XmlTextWriterStream, FlushesOnceFourKilobytesAreHeldAndCloseClosesTheStreamBeforeRefusing) {
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
    EXPECT_KV_THROW(writer.Close(), CKvException, "An Element has not been closed.");
    EXPECT_EQ(stream.closes, 1);
    writer.WriteEndElement();
    writer.Close();
    EXPECT_EQ(stream.closes, 2);
    EXPECT_EQ(stream.drained + stream.GetText(),
              "<r>" + std::string(4000, 'x') + "<c a=\"" + std::string(100, 'y') + "\"/></r>");
}

TEST(XmlTextWriterStream, DeepNestingWritesAndUnwinds) {
    Doc doc;
    const int depth = 100000;
    for (int i = 0; i < depth; ++i) doc.Start("e", "urn:n");
    for (int i = 0; i < depth; ++i) doc.End();
    std::string expected = "<AA:e xmlns:AA=\"urn:n\">";
    for (int i = 2; i < depth; ++i) expected += "<AA:e>";
    expected += "<AA:e/>";
    for (int i = 1; i < depth; ++i) expected += "</AA:e>";
    EXPECT_TRUE(doc.Out() == expected) << "length " << doc.Out().size() << " vs " << expected.size();
}

TEST(XmlTextWriterLifecycle, OpenEmptiesTheStreamAndWritersAndStreamsAreCountedByClassName) {
    CInstanceMonitor::SetCounting(true);
    {
        CTextStream stream(std::string("stale"), Encoding_UTF8);
        CXmlTextWriter writer(stream);
        CBinaryStream plain, named("CBinaryStreamTestName");
        CFileBinaryStream file("unused.xml", Encoding_UTF8);
        EXPECT_EQ(CInstanceMonitor::GetLiveCount("CFileBinaryStream"), 1u);
        EXPECT_EQ(CInstanceMonitor::GetLiveCount("CBinaryStreamTestName"), 1u);
        EXPECT_GE(CInstanceMonitor::GetLiveCount("CBinaryStream"), 1u);
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
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("CFileBinaryStream"), 0u);
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("CBinaryStreamTestName"), 0u);
    CInstanceMonitor::SetCounting(false);
}

TEST(XmlTextWriterNamespaces, DeclaringManyNamespacesScalesLinearly) {
    // Every element of a deep chain, and every sibling, declares a namespace
    // of its own. Twice the elements must take about twice the allocations
    // (four times, and millions, if each declaration copied the scope).
    auto allocations = [](int count, bool nested) {
        const uint64_t before = g_allocations.load();
        Doc doc;
        doc.Start("r");
        for (int i = 0; i < count; ++i) {
            doc.Start("e", "urn:" + std::to_string(i));
            if (!nested) doc.End();
        }
        for (int i = 0; i < count && nested; ++i) doc.End();
        doc.End();
        EXPECT_NE(doc.Out().find(nested ? "<AC:e xmlns:AC=\"urn:2\">" : "<AA:e xmlns:AA=\"urn:2\"/>"),
                  std::string::npos);
        return g_allocations.load() - before;
    };
    for (bool nested : {true, false}) {
        const uint64_t small = allocations(10000, nested);
        const uint64_t large = allocations(20000, nested);
        EXPECT_LT(large, small * 5 / 2) << (nested ? "nested" : "siblings");
        EXPECT_LT(large, 20000u * 16) << (nested ? "nested" : "siblings");
    }
}
