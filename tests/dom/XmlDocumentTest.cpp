// XmlDocumentTest.cpp - the document: loading and decompression, the tree, lookups, callbacks, reuse, destruction.
#include <stdexcept>

#include "support/Fixtures.h"

using namespace KvXmlTest;
using namespace KvXmlLib10;

namespace {

// A document large and repetitive enough for deflate to shrink it.
std::string CompressibleXml() {
    std::string text = "<?xml version='1.0'?>\n<orders xmlns='urn:o'>";
    for (int i = 0; i < 200; ++i) text += "<order id='" + std::to_string(i) + "'>widget</order>";
    return text + "</orders>";
}

// Element callbacks; this one records what it sees.
std::vector<std::string> g_seen;

bool RecordAndDropNamedX(CXmlElement* element) {
    g_seen.push_back(element->GetLocalName() + "[" + element->GetText() + "|" + ChildNames(element) + "]");
    return element->GetLocalName() == "x";
}

bool DropAll(CXmlElement*) { return true; }

bool ThrowOnB(CXmlElement* element) {
    if (element->GetLocalName() == "b") throw CKvValidationException("stop at b");
    return false;
}

bool ThrowForeign(CXmlElement*) { throw std::runtime_error("foreign"); }

}  // namespace

TEST(XmlDocumentLoad, RejectsEmptyInputAfterCleaningUp) {
    CXmlDocument document;
    document.LoadXml("<a/>");
    EXPECT_KV_THROW(document.LoadXml(""), CKvException, "XML String is empty!");
    EXPECT_EQ(document.GetDocumentElement(), nullptr);
    EXPECT_KV_THROW(document.LoadXml(static_cast<const char*>(nullptr)), CKvException, "XML String is empty!");
    EXPECT_KV_THROW(document.LoadXml(L""), CKvException, "XML String is empty!");
    unsigned char byte = '<';
    EXPECT_KV_THROW(document.LoadXmlStream(&byte, 0), CKvException, "XML Stream is empty!");
    EXPECT_KV_THROW(document.LoadXmlStream(nullptr, 5), CKvException, "XML Stream is empty!");
}

TEST(XmlDocumentLoad, LoadsAFileAndNamesItInFailures) {
    TempFile file("<?xml version='1.0' encoding='UTF-8'?>\r\n<a xmlns='urn:f'>\r\n<b k='v'>t</b></a>\r\n");
    CXmlDocument document;
    document.Load(file.Path());
    const CXmlElement* root = document.GetDocumentElement();
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->GetNamespaceURI(), "urn:f");
    EXPECT_EQ(root->GetText(), "\n");
    EXPECT_EQ(root->GetFirstElement()->GetAttribute("k", ""), "v");

    EXPECT_KV_THROW(document.Load("/nonexistent/x.xml"), CKvException, "Failed to open the file [/nonexistent/x.xml]");
    EXPECT_EQ(document.GetDocumentElement(), nullptr);
    EXPECT_KV_THROW(document.Load(nullptr), CKvException, "Failed to open the file []");
    // An empty file is a read that returns nothing; "%n" shows the stream's error indicator as a number.
    TempFile empty("");
    EXPECT_KV_THROW(document.Load(empty.Path()), CKvException,
                    std::string("Failed to read the contents of the file [") + empty.Path() + "] Error [0]");
    // A directory opens but has no size.
    const std::string directory = ::testing::TempDir();
    EXPECT_KV_THROW(document.Load(directory.c_str()), CKvException,
                    "Failed to get the size of the file [" + directory + "] Error [0]");
}

TEST(XmlDocumentLoad, InflatesGzipAndZlibStreamsButNotStrings) {
    const std::string text = CompressibleXml();
    for (CompressionType type : {Compression_GZip, Compression_Zlib}) {
        Bytes packed = Compressed(ToBytes(text), type);
        ASSERT_LT(packed.size(), text.size());
        const std::vector<unsigned char> before = packed;
        CXmlDocument document;
        document.LoadXmlStream(packed.data(), static_cast<uint32_t>(packed.size()));
        EXPECT_EQ(packed, before) << "the caller's bytes are left alone";
        EXPECT_EQ(document.GetDocumentElement()->GetLocalName(), "orders");
        EXPECT_EQ(CountElements(document.GetDocumentElement()), 201u);
        TempFile file(std::string(packed.begin(), packed.end()));
        document.Load(file.Path());
        EXPECT_EQ(CountElements(document.GetDocumentElement()), 201u);
        // String input is never taken for compressed data.
        packed.push_back(0);
        EXPECT_KV_THROW(document.LoadXml(reinterpret_cast<const char*>(packed.data())), CKvException,
                        "not well-formed (invalid token) at line 1");
    }

    std::string plain = "<a>plain</a>";
    CXmlDocument document;
    document.LoadXmlStream(reinterpret_cast<unsigned char*>(plain.data()), static_cast<uint32_t>(plain.size()));
    EXPECT_EQ(document.GetDocumentElement()->GetText(), "plain");
}

TEST(XmlDocumentLoad, ReadsWideStringsAndByteOrderMarkedStreamsAsUtf16) {
    ScopedLocale locale("C.UTF-8");
    ASSERT_TRUE(locale.Active());
    CXmlDocument document;
    document.LoadXml(L"<?xml version='1.0'?><a n='\u00e9'>\u20ac \u00fc<b/></a>");
    const CXmlElement* root = document.GetDocumentElement();
    EXPECT_EQ(root->GetText(), "\xE2\x82\xAC \xC3\xBC");
    EXPECT_EQ(root->GetAttribute("n", ""), "\xC3\xA9");
    EXPECT_EQ(ChildNames(root), "b");
    // Beyond the 16-bit range only the low 16 bits are kept: U+1F600 becomes
    // U+F600, a private-use character, and U+1D800 a lone surrogate, which the parser refuses.
    document.LoadXml(L"<a>\U0001F600</a>");
    EXPECT_EQ(document.GetDocumentElement()->GetText(), "\xEF\x98\x80");
    EXPECT_KV_THROW(document.LoadXml(L"<a>\U0001D800</a>"), CKvException, "not well-formed (invalid token) at line 1");

    // "<a>€</a>" after a little- or a big-endian byte order mark.
    const unsigned char littleEndian[] = {0xFF, 0xFE, '<', 0, 'a', 0, '>', 0, 0xAC, 0x20,
                                          '<',  0,    '/', 0, 'a', 0, '>', 0};
    const unsigned char bigEndian[] = {0xFE, 0xFF, 0, '<', 0, 'a', 0, '>', 0x20, 0xAC, 0, '<', 0, '/', 0, 'a', 0, '>'};
    for (const auto* bytes : {littleEndian, bigEndian}) {
        std::vector<unsigned char> copy(bytes, bytes + sizeof littleEndian);
        document.LoadXmlStream(copy.data(), static_cast<uint32_t>(copy.size()));
        EXPECT_EQ(document.GetDocumentElement()->GetText(), "\xE2\x82\xAC");
    }
}

TEST(XmlDocumentTree, MergesMixedContentIntoOneTextWithoutCarriageReturns) {
    CXmlDocument document;
    document.LoadXml("<r>a<b>inner</b>c<d/>e</r>");
    CXmlElement* root = document.GetDocumentElement();
    EXPECT_EQ(root->GetText(), "ace");
    EXPECT_EQ(ChildNames(root), "b,d");
    EXPECT_EQ(root->GetFirstElement()->GetText(), "inner");
    // The parser turns a literal CR LF into LF itself; a character reference is how a CR reaches the document.
    document.LoadXml("<a>x&#13;\ny&#13;&#13;z<b>1&#13;2</b></a>");
    EXPECT_EQ(document.GetDocumentElement()->GetText(), "x\nyz");
    EXPECT_EQ(document.GetDocumentElement()->GetFirstElement()->GetText(), "12");
}

TEST(XmlDocumentTree, KeepsAttributesInOrderAndFindsThemByNamespace) {
    CXmlDocument document;
    document.LoadXml("<a xmlns:p='urn:p' xmlns:q='urn:q' p:id='1' q:id='2' id='3' other='4'/>");
    const CXmlElement* root = document.GetDocumentElement();
    EXPECT_EQ(AttributeList(root), "{urn:p}id=1 {urn:q}id=2 id=3 other=4");
    EXPECT_EQ(root->GetAttribute("id", "urn:p"), "1");
    EXPECT_EQ(root->GetAttribute("id", "urn:q"), "2");
    EXPECT_EQ(root->GetAttribute("id", ""), "3");
    // A miss is one shared empty string, never a dangling reference.
    const std::string& missing = root->GetAttribute("id", "urn:other");
    EXPECT_EQ(missing, "");
    EXPECT_EQ(&missing, &root->GetAttribute("nothing", ""));
    EXPECT_EQ(root->GetOwnerDocument(), &document);
}

TEST(XmlAttributeKind, RecognisesNilAndNamespaceAttributes) {
    const std::string xsi = "http://www.w3.org/2001/XMLSchema-instance", xmlns = "http://www.w3.org/2000/xmlns/";
    struct Case { std::string uri; const char* name; bool nil; bool namespaceAttribute; };
    const Case cases[] = {
        {xsi, "nil", true, true},         {xmlns, "nil", true, true},        {xsi, "type", false, true},
        {xsi, "schemaLocation", false, true}, {xsi, "noNamespaceSchemaLocation", false, true},
        {xmlns, "xmlns", false, true},    {xsi, "xmlns", false, true},       {"", "nil", false, false},
        {"urn:x", "nil", false, false},   {"urn:x", "type", false, false},   {xsi, "Nil", false, false},
        {xsi, "other", false, false},
    };
    CXmlDocument document;
    CXmlElement* element = document.AddDocElement("", "e");
    for (const Case& c : cases) element->AddAttribute(c.name, "v", c.uri);
    for (size_t i = 0; i < std::size(cases); ++i) {
        EXPECT_EQ(element->GetAttributes()[i]->IsNilAttribute(), cases[i].nil) << cases[i].uri << cases[i].name;
        EXPECT_EQ(element->GetAttributes()[i]->IsNamespaceAttribute(), cases[i].namespaceAttribute)
            << cases[i].uri << " " << cases[i].name;
    }
}

TEST(XmlElementEdit, CreatesAndRemovesLastChildren) {
    CXmlDocument document;
    CXmlElement* root = document.AddDocElement("urn:r", "root");
    EXPECT_EQ(root->RemoveLastChildElement(), nullptr);
    for (const char* name : {"a", "b", "c"}) {
        CXmlElement* child = root->CreateNewChildElement();
        EXPECT_EQ(child->GetLocalName() + child->GetNamespaceURI(), "");
        child->SetElementName(name);
        child->SetNamespace("urn:child");
    }
    EXPECT_EQ(ChildNames(root), "a,b,c");
    EXPECT_EQ(root->GetFirstElement()->GetNamespaceURI(), "urn:child");

    std::unique_ptr<CXmlElement> last(root->RemoveLastChildElement());
    EXPECT_EQ(last->GetLocalName(), "c");
    EXPECT_EQ(last->GetNextSiblingElement(), nullptr);
    // Appending after a removal links behind the new last child.
    root->CreateNewChildElement()->SetElementName("d");
    EXPECT_EQ(ChildNames(root), "a,b,d");
    delete root->RemoveLastChildElement();
    delete root->RemoveLastChildElement();
    last.reset(root->RemoveLastChildElement());
    EXPECT_EQ(last->GetLocalName(), "a");
    EXPECT_EQ(root->GetFirstElement(), nullptr);
    EXPECT_EQ(root->RemoveLastChildElement(), nullptr);
    root->CreateNewChildElement()->SetElementName("e");
    EXPECT_EQ(ChildNames(root), "e");
}

TEST(XmlDocumentBuild, BuildsTreeThroughReaderOperationsAndAppends) {
    CXmlDocument document;
    CXmlElement* root = document.AddDocElement("urn:a", "root");
    EXPECT_EQ(document.GetDocumentElement(), root);
    CXmlElement* child = document.AddChildElement("urn:a", "child");
    document.AddElementAttribute(child, "n", "1", "");
    document.AppendTextExcludingCR(child, "x\r\ny");
    document.AppendTextExcludingCR(child, "12\r34", 4);
    document.AppendTextExcludingCR(child, std::string("ab\0cd", 5).c_str(), 5);  // stops at the NUL
    document.AppendTextExcludingCR(nullptr, "ignored");
    document.EndElement();
    document.AddChildElement("urn:a", "second");
    for (int i = 0; i < 3; ++i) document.EndElement();  // the last with nothing left open: no effect
    EXPECT_EQ(ChildNames(root), "child,second");
    EXPECT_EQ(child->GetText(), "x\ny123ab");
    EXPECT_EQ(child->GetAttribute("n", ""), "1");
    // A second top-level element cannot come from well-formed input; it
    // joins the tree instead of replacing the first one.
    document.AddDocElement("", "stray");
    EXPECT_EQ(document.GetDocumentElement(), root);
    EXPECT_EQ(ChildNames(root), "child,second,stray");

    CXmlElement* element = document.AddDocElement(nullptr, "e");
    for (const auto& [text, length] : {std::pair<const char*, int>{"ab", -1}, {"cdef", 2}, {"zz", 0}, {"zz", -5},
                                       {nullptr, -1}, {nullptr, 3}, {"x\ry", -1}})
        length == -1 ? element->AppendText(text) : element->AppendText(text, length);
    EXPECT_EQ(element->GetText(), "abcdx\ry");  // only the document's building call drops CRs
    element->AddAttribute("k", "v", "urn:k");
    EXPECT_EQ(element->GetAttribute("k", "urn:k"), "v");
    element->SetNamespace(nullptr);
    element->SetElementName(nullptr);
    EXPECT_EQ(element->GetNamespaceURI() + element->GetLocalName(), "");
}

TEST(XmlDocumentCallback, SeesEachElementWhenCompleteAndMayDropIt) {
    g_seen.clear();
    CXmlDocument document(RecordAndDropNamedX);
    document.LoadXml("<r><x/><a>t<x>y</x>u</a><x/><x/><b><x/><c/><x/></b><x/></r>");
    const std::vector<std::string> expected = {"x[|]", "x[y|]", "a[tu|]", "x[|]", "x[|]", "x[|]",
                                               "c[|]", "x[|]", "b[|c]", "x[|]", "r[|a,b]"};
    EXPECT_EQ(g_seen, expected);
    const CXmlElement* root = document.GetDocumentElement();
    EXPECT_EQ(ChildNames(root), "a,b");
    // Appending after drops still links correctly.
    CXmlElement* b = root->GetFirstElement()->GetNextSiblingElement();
    b->CreateNewChildElement()->SetElementName("d");
    EXPECT_EQ(ChildNames(b), "c,d");

    CXmlDocument dropAll(DropAll);
    dropAll.LoadXml("<r>1<a><b/><c/></a>2<d>t</d>3</r>");
    root = dropAll.GetDocumentElement();
    EXPECT_EQ(root->GetLocalName(), "r");  // returning true for the root keeps it
    EXPECT_EQ(root->GetFirstElement(), nullptr);
    EXPECT_EQ(root->GetText(), "123");

    // Exceptions from the callback pass through; the document is usable again afterwards.
    CXmlDocument throwing(ThrowOnB);
    EXPECT_KV_THROW(throwing.LoadXml("<a><b/></a>"), CKvValidationException, "stop at b");
    throwing.LoadXml("<a><c/></a>");
    EXPECT_EQ(ChildNames(throwing.GetDocumentElement()), "c");
    CXmlDocument foreign(ThrowForeign);
    EXPECT_THROW(foreign.LoadXml("<a/>"), std::runtime_error);
}

TEST(XmlDocumentReuse, ReplacesTreeButAccumulatesPrefixes) {
    CXmlDocument document;
    document.LoadXml("<p:a xmlns:p='urn:one' xmlns='urn:default'><p:b/></p:a>");
    document.LoadXml("<q:c xmlns:q='urn:two'/>");
    EXPECT_EQ(document.GetDocumentElement()->GetLocalName(), "c");
    EXPECT_EQ(document.GetDocumentElement()->GetFirstElement(), nullptr);
    EXPECT_EQ(document.LookupNamespaceFromAlias("p"), "urn:one");
    EXPECT_EQ(document.LookupNamespaceFromAlias(""), "urn:default");
    EXPECT_EQ(document.LookupNamespaceFromAlias(nullptr), "urn:default");
    EXPECT_EQ(document.LookupNamespaceFromAlias("none"), "");
    document.Cleanup();
    EXPECT_EQ(document.GetDocumentElement(), nullptr);
    EXPECT_EQ(document.LookupNamespaceFromAlias("q"), "urn:two");

    // A parse error leaves the partial tree, the text of elements still open included.
    EXPECT_KV_THROW(document.LoadXml("<a>x<b>text</b>y<c>z&#13;"), CKvException, "no element found at line 1");
    const CXmlElement* partial = document.GetDocumentElement();
    EXPECT_EQ(ChildNames(partial), "b,c");
    EXPECT_EQ(partial->GetText(), "xy");
    EXPECT_EQ(partial->GetFirstElement()->GetText(), "text");
    EXPECT_EQ(partial->GetFirstElement()->GetNextSiblingElement()->GetText(), "z");
}

TEST(XmlDocumentLifetime, FreesEveryNode) {
    CInstanceMonitor::SetCounting(true);
    const size_t elementsBefore = CInstanceMonitor::GetLiveCount("CXmlElement");
    const size_t attributesBefore = CInstanceMonitor::GetLiveCount("CXmlAttribute");
    CXmlElement* detached = nullptr;
    {
        CXmlDocument document(RecordAndDropNamedX);
        document.LoadXml("<r a='1'><x b='2'><y/></x><s c='3' d='4'><t/></s></r>");
        EXPECT_EQ(CInstanceMonitor::GetLiveCount("CXmlElement") - elementsBefore, 3u);
        EXPECT_EQ(CInstanceMonitor::GetLiveCount("CXmlAttribute") - attributesBefore, 3u);
        EXPECT_EQ(CInstanceMonitor::GetLiveCount("CXmlDocument"), 1u);
        detached = document.GetDocumentElement()->RemoveLastChildElement();
    }
    // A detached element may still be deleted after its document is gone.
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("CXmlElement") - elementsBefore, 2u);
    delete detached;
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("CXmlElement"), elementsBefore);
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("CXmlAttribute"), attributesBefore);
    CInstanceMonitor::SetCounting(false);
}

TEST(XmlDocumentLifetime, BuildsAndDestroysAMillionLevelsWithoutRecursion) {
    constexpr size_t kDepth = 1000000;
    std::string text;
    text.reserve(kDepth * 7 + 8);
    for (size_t i = 0; i < kDepth; ++i) text += "<a>";
    text += "deep";
    for (size_t i = 0; i < kDepth; ++i) text += "</a>";
    auto document = std::make_unique<CXmlDocument>();
    document->LoadXml(text.c_str());
    size_t depth = 0;
    const CXmlElement* innermost = nullptr;
    for (const CXmlElement* e = document->GetDocumentElement(); e; e = e->GetFirstElement(), ++depth) innermost = e;
    EXPECT_EQ(depth, kDepth);
    ASSERT_NE(innermost, nullptr);
    EXPECT_EQ(innermost->GetText(), "deep");
    document.reset();  // would overflow the stack if destruction recursed per level
}
