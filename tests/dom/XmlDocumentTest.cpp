// XmlDocumentTest.cpp - the document tree: building, lookups, callbacks, reuse and destruction.
#include "kvxml/dom/XmlDocument.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "dom/DomTestSupport.h"
#include "kvxml/foundation/InstanceMonitor.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using namespace KvXmlTest;

namespace {

const char kXsi[] = "http://www.w3.org/2001/XMLSchema-instance";
const char kXmlns[] = "http://www.w3.org/2000/xmlns/";

}  // namespace

TEST(XmlDocumentTree, MergesMixedContentIntoOneText) {
    CXmlDocument document;
    document.LoadXml("<r>a<b>inner</b>c<d/>e</r>");
    CXmlElement* root = document.GetDocumentElement();
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->GetText(), "ace");
    EXPECT_EQ(ChildNames(root), "b,d");
    EXPECT_EQ(root->GetFirstElement()->GetText(), "inner");
    EXPECT_EQ(root->GetFirstElement()->GetNextSiblingElement()->GetNextSiblingElement(), nullptr);
}

TEST(XmlDocumentTree, RemovesCarriageReturnsFromText) {
    CXmlDocument document;
    // The parser turns a literal CR LF into LF itself; a character reference
    // is how a CR reaches the document.
    document.LoadXml("<a>x&#13;\ny&#13;&#13;z<b>1&#13;2</b></a>");
    EXPECT_EQ(document.GetDocumentElement()->GetText(), "x\nyz");
    EXPECT_EQ(document.GetDocumentElement()->GetFirstElement()->GetText(), "12");
}

TEST(XmlDocumentTree, KeepsAttributesInOrderAndFindsThemByNamespace) {
    CXmlDocument document;
    document.LoadXml("<a xmlns:p='urn:p' xmlns:q='urn:q' p:id='1' q:id='2' id='3' other='4'/>");
    const CXmlElement* root = document.GetDocumentElement();
    const auto& attributes = root->GetAttributes();
    ASSERT_EQ(attributes.size(), 4u);
    const char* const expected[][3] = {{"id", "urn:p", "1"}, {"id", "urn:q", "2"}, {"id", "", "3"}, {"other", "", "4"}};
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(attributes[i]->GetLocalName(), expected[i][0]);
        EXPECT_EQ(attributes[i]->GetNamespaceURI(), expected[i][1]);
        EXPECT_EQ(attributes[i]->GetValue(), expected[i][2]);
    }
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
    struct Case {
        const char* uri;
        const char* name;
        bool nil;
        bool namespaceAttribute;
    };
    const Case cases[] = {
        {kXsi, "nil", true, true},
        {kXmlns, "nil", true, true},
        {kXsi, "type", false, true},
        {kXsi, "schemaLocation", false, true},
        {kXsi, "noNamespaceSchemaLocation", false, true},
        {kXmlns, "xmlns", false, true},
        {kXsi, "xmlns", false, true},
        {"", "nil", false, false},
        {"urn:x", "nil", false, false},
        {"urn:x", "type", false, false},
        {kXsi, "Nil", false, false},
        {kXsi, "other", false, false},
    };
    CXmlDocument document;
    CXmlElement* element = document.AddDocElement("", "e");
    for (const Case& c : cases) element->AddAttribute(c.name, "v", c.uri);
    const auto& attributes = element->GetAttributes();
    ASSERT_EQ(attributes.size(), std::size(cases));
    for (size_t i = 0; i < std::size(cases); ++i) {
        EXPECT_EQ(attributes[i]->IsNilAttribute(), cases[i].nil) << cases[i].uri << " " << cases[i].name;
        EXPECT_EQ(attributes[i]->IsNamespaceAttribute(), cases[i].namespaceAttribute)
            << cases[i].uri << " " << cases[i].name;
    }
}

TEST(XmlElementEdit, CreatesAndRemovesLastChildren) {
    CXmlDocument document;
    CXmlElement* root = document.AddDocElement("urn:r", "root");
    EXPECT_EQ(root->RemoveLastChildElement(), nullptr);

    for (const char* name : {"a", "b", "c"}) {
        CXmlElement* child = root->CreateNewChildElement();
        EXPECT_EQ(child->GetLocalName(), "");
        EXPECT_EQ(child->GetNamespaceURI(), "");
        child->SetElementName(name);
        child->SetNamespace("urn:child");
    }
    EXPECT_EQ(ChildNames(root), "a,b,c");
    EXPECT_EQ(root->GetFirstElement()->GetNamespaceURI(), "urn:child");

    CXmlElement* last = root->RemoveLastChildElement();
    ASSERT_NE(last, nullptr);
    EXPECT_EQ(last->GetLocalName(), "c");
    EXPECT_EQ(last->GetNextSiblingElement(), nullptr);
    delete last;
    EXPECT_EQ(ChildNames(root), "a,b");

    // Appending after a removal links behind the new last child.
    root->CreateNewChildElement()->SetElementName("d");
    EXPECT_EQ(ChildNames(root), "a,b,d");

    delete root->RemoveLastChildElement();
    delete root->RemoveLastChildElement();
    CXmlElement* only = root->RemoveLastChildElement();
    EXPECT_EQ(only->GetLocalName(), "a");
    delete only;
    EXPECT_EQ(root->GetFirstElement(), nullptr);
    EXPECT_EQ(root->RemoveLastChildElement(), nullptr);
    root->CreateNewChildElement()->SetElementName("e");
    EXPECT_EQ(ChildNames(root), "e");
}

TEST(XmlElementEdit, AppendsTextAndAttributes) {
    CXmlDocument document;
    CXmlElement* element = document.AddDocElement(nullptr, "e");
    element->AppendText("ab");
    element->AppendText("cdef", 2);
    element->AppendText("zz", 0);
    element->AppendText("zz", -5);
    element->AppendText(nullptr);
    element->AppendText(nullptr, 3);
    element->AppendText("x\ry");  // only the document's building call drops CRs
    EXPECT_EQ(element->GetText(), "abcdx\ry");
    element->AddAttribute("k", "v", "urn:k");
    EXPECT_EQ(element->GetAttribute("k", "urn:k"), "v");
    element->SetNamespace(nullptr);
    element->SetElementName(nullptr);
    EXPECT_EQ(element->GetNamespaceURI(), "");
    EXPECT_EQ(element->GetLocalName(), "");
}

TEST(XmlDocumentBuild, BuildsTreeThroughReaderOperations) {
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
    document.EndElement();
    document.EndElement();
    document.EndElement();  // nothing left open: no effect

    EXPECT_EQ(ChildNames(root), "child,second");
    EXPECT_EQ(child->GetText(), "x\ny123ab");
    EXPECT_EQ(child->GetAttribute("n", ""), "1");

    // A second top-level element cannot come from well-formed input; it
    // joins the tree instead of replacing the first one.
    CXmlElement* stray = document.AddDocElement("", "stray");
    EXPECT_EQ(document.GetDocumentElement(), root);
    EXPECT_EQ(root->GetFirstElement()->GetNextSiblingElement()->GetNextSiblingElement(), stray);
}

// ---- element callback ----

namespace {

std::vector<std::string> g_seen;
int g_callbackCalls = 0;

bool DropAll(CXmlElement*) {
    ++g_callbackCalls;
    return true;
}

bool RecordAndKeep(CXmlElement* element) {
    g_seen.push_back(element->GetLocalName() + "[" + element->GetText() + "|" + ChildNames(element) + "]");
    return false;
}

bool DropNamedX(CXmlElement* element) { return element->GetLocalName() == "x"; }

bool ThrowOnB(CXmlElement* element) {
    if (element->GetLocalName() == "b") throw CKvValidationException("stop at b");
    return false;
}

bool ThrowForeign(CXmlElement*) { throw std::runtime_error("foreign"); }

}  // namespace

TEST(XmlDocumentCallback, DroppingEveryElementKeepsOnlyTheRoot) {
    g_callbackCalls = 0;
    CXmlDocument document(DropAll);
    document.LoadXml("<r>1<a><b/><c/></a>2<d>t</d>3</r>");
    const CXmlElement* root = document.GetDocumentElement();
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->GetLocalName(), "r");  // returning true for the root keeps it
    EXPECT_EQ(root->GetFirstElement(), nullptr);
    EXPECT_EQ(root->GetText(), "123");
    EXPECT_EQ(g_callbackCalls, 5);
}

TEST(XmlDocumentCallback, SeesEachElementWhenComplete) {
    g_seen.clear();
    CXmlDocument document(RecordAndKeep);
    document.LoadXml("<r><a>x<b>y</b>z</a><c/></r>");
    const std::vector<std::string> expected = {"b[y|]", "a[xz|b]", "c[|]", "r[|a,c]"};
    EXPECT_EQ(g_seen, expected);
    EXPECT_EQ(CountElements(document.GetDocumentElement()), 4u);
}

TEST(XmlDocumentCallback, DropsSomeSiblingsAndKeepsTheRestInOrder) {
    CXmlDocument document(DropNamedX);
    document.LoadXml("<r><x/><a/><x/><x/><b><x/><c/><x/></b><x/></r>");
    const CXmlElement* root = document.GetDocumentElement();
    EXPECT_EQ(ChildNames(root), "a,b");
    EXPECT_EQ(ChildNames(root->GetFirstElement()->GetNextSiblingElement()), "c");
    // Appending after drops still links correctly.
    CXmlElement* b = root->GetFirstElement()->GetNextSiblingElement();
    b->CreateNewChildElement()->SetElementName("d");
    EXPECT_EQ(ChildNames(b), "c,d");
}

TEST(XmlDocumentCallback, ExceptionsFromTheCallbackPassThrough) {
    CXmlDocument document(ThrowOnB);
    EXPECT_KV_THROW(document.LoadXml("<a><b/></a>"), CKvValidationException, "stop at b");
    // The document is usable again afterwards.
    EXPECT_NO_THROW(document.LoadXml("<a><c/></a>"));
    EXPECT_EQ(ChildNames(document.GetDocumentElement()), "c");

    CXmlDocument foreign(ThrowForeign);
    EXPECT_THROW(foreign.LoadXml("<a/>"), std::runtime_error);
}

// ---- reuse and lifetime ----

TEST(XmlDocumentReuse, ReplacesTreeButAccumulatesPrefixes) {
    CXmlDocument document;
    document.LoadXml("<p:a xmlns:p='urn:one' xmlns='urn:default'><p:b/></p:a>");
    EXPECT_EQ(document.GetDocumentElement()->GetLocalName(), "a");
    document.LoadXml("<q:c xmlns:q='urn:two'/>");
    EXPECT_EQ(document.GetDocumentElement()->GetLocalName(), "c");
    EXPECT_EQ(document.GetDocumentElement()->GetFirstElement(), nullptr);
    EXPECT_EQ(document.LookupNamespaceFromAlias("p"), "urn:one");
    EXPECT_EQ(document.LookupNamespaceFromAlias("q"), "urn:two");
    EXPECT_EQ(document.LookupNamespaceFromAlias(""), "urn:default");
    EXPECT_EQ(document.LookupNamespaceFromAlias(nullptr), "urn:default");
    EXPECT_EQ(document.LookupNamespaceFromAlias("none"), "");

    document.Cleanup();
    EXPECT_EQ(document.GetDocumentElement(), nullptr);
    EXPECT_EQ(document.LookupNamespaceFromAlias("q"), "urn:two");
}

TEST(XmlDocumentReuse, KeepsPartialTreeAfterParseError) {
    CXmlDocument document;
    EXPECT_KV_THROW(document.LoadXml("<a><b>text</b><c>"), CKvException, "no element found at line 1");
    const CXmlElement* root = document.GetDocumentElement();
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(ChildNames(root), "b,c");
    EXPECT_EQ(root->GetFirstElement()->GetText(), "text");
}

TEST(XmlDocumentLifetime, FreesEveryNode) {
    CInstanceMonitor::SetCounting(true);
    const size_t elementsBefore = CInstanceMonitor::GetLiveCount("CXmlElement");
    const size_t attributesBefore = CInstanceMonitor::GetLiveCount("CXmlAttribute");
    CXmlElement* detached = nullptr;
    {
        CXmlDocument document(DropNamedX);
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
    for (const CXmlElement* e = document->GetDocumentElement(); e; e = e->GetFirstElement()) {
        innermost = e;
        ++depth;
    }
    EXPECT_EQ(depth, kDepth);
    ASSERT_NE(innermost, nullptr);
    EXPECT_EQ(innermost->GetText(), "deep");
    document.reset();  // would overflow the stack if destruction recursed per level
}
