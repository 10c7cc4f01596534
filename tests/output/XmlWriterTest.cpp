// XmlWriterTest.cpp - namespace scopes, copy on write, invented prefixes and the context chain.
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

using Context = CXmlWriter::CXmlWriterContext;
using NamespaceMap = CXmlWriter::NamespaceMap;
const std::string kXmlUri = "http://www.w3.org/XML/1998/namespace";

// The base writer with its element stack reachable; output calls do nothing.
class ProbeWriter : public CXmlWriter {
public:
    ProbeWriter() : CXmlWriter("ProbeWriter") {}
    void WriteComment(const std::string&) override {}
    void WritePI(const std::string&) override {}
    void WriteInlineSchema(const std::string&) override {}
    void WriteStartElement(const std::string& name, const std::string& uri) override { PushContext(name, uri); }
    void WriteString(const std::string&, ItemType) override {}
    void WriteEndElement() override { PopContext(); }
    void WriteAttributeString(const std::string&, const std::string&, const std::string&, ItemType) override {}
    void WriteAttributeType(const std::string&, const std::string&, ItemType) override {}
    void WriteAttributeNil() override {}

    Context* Current() const { return GetCurrentContext(); }
    const NamespaceMap& Pending() const { return GetPendingNamespaces(); }
    const std::string& DocumentDefault() const { return GetDocumentDefaultNamespace(); }
};

}  // namespace

TEST(XmlWriterPrefix, NsIntToStringCountsInTwoLetters) {
    const std::pair<int32_t, const char*> cases[] = {{0, "AA"},   {1, "AB"},   {25, "AZ"},  {26, "BA"},
                                                     {27, "BB"},  {675, "ZZ"}, {676, "[A"}, {701, "[Z"}};
    for (const auto& [n, prefix] : cases) EXPECT_EQ(CXmlWriter::NsIntToString(n), prefix) << n;
}

TEST(XmlWriterPrefix, GetUniquePrefixSkipsPrefixesInUse) {
    EXPECT_EQ(CXmlWriter::GetUniquePrefix({}), "AA");
    EXPECT_EQ(CXmlWriter::GetUniquePrefix({{"urn:a", "AA"}}), "AB");
    EXPECT_EQ(CXmlWriter::GetUniquePrefix({{"urn:a", "AA"}, {"urn:c", "AC"}}), "AB");
    EXPECT_EQ(CXmlWriter::GetUniquePrefix({{"urn:a", "AB"}, {"urn:b", "AA"}}), "AC");
    // Only exact prefixes count, not URIs or other spellings.
    EXPECT_EQ(CXmlWriter::GetUniquePrefix({{"AA", "aa"}, {"urn:b", "AAA"}}), "AA");

    // A large scope: all of AA..BZ taken plus unrelated prefixes.
    NamespaceMap large;
    for (int32_t n = 0; n < 52; ++n) large["urn:" + std::to_string(n)] = CXmlWriter::NsIntToString(n);
    for (int32_t n = 0; n < 20; ++n) large["urn:x" + std::to_string(n)] = "p" + std::to_string(n);
    EXPECT_EQ(CXmlWriter::GetUniquePrefix(large), "CA");
    large.erase("urn:30");
    EXPECT_EQ(CXmlWriter::GetUniquePrefix(large), "BE");
}

TEST(XmlWriterNamespaces, AnnouncementsBeforeTheRootArePending) {
    ProbeWriter writer;
    EXPECT_EQ(writer.Pending(), (NamespaceMap{{"http://www.w3.org/XML/1998/namespace", "xml"}}));
    writer.AddNamespace("p", "urn:a");
    writer.AddNamespace("q", "urn:a");  // replaces
    writer.AddNamespace("q", "urn:b");  // a prefix may be given twice
    writer.SetDefaultNamespace("urn:d");
    EXPECT_EQ(writer.Pending().at("urn:a"), "q");
    EXPECT_EQ(writer.Pending().at("urn:b"), "q");
    EXPECT_EQ(writer.DocumentDefault(), "urn:d");

    writer.WriteStartElement("root", "urn:a");
    Context* root = writer.Current();
    EXPECT_EQ(root->GetDepth(), 0u);
    EXPECT_EQ(root->GetParent(), nullptr);
    EXPECT_TRUE(root->OwnsMap());
    EXPECT_FALSE(root->InheritsFromParent());
    EXPECT_EQ(root->GetDefaultNamespace(), "urn:d");
    EXPECT_EQ(root->GetNamespaceMap().size(), 3u);

    // Inside an element announcements change the scope, not the pending map.
    writer.AddNamespace("r", "urn:c");
    writer.SetDefaultNamespace("urn:e");
    EXPECT_EQ(root->GetNamespaceMapValue("urn:c"), "r");
    EXPECT_EQ(root->GetDefaultNamespace(), "urn:e");
    EXPECT_EQ(writer.Pending().count("urn:c"), 0u);
    EXPECT_EQ(writer.DocumentDefault(), "urn:d");
}

TEST(XmlWriterContext, ChildrenShareTheScopeUntilTheyChangeIt) {
    ProbeWriter writer;
    writer.AddNamespace("a", "urn:a");
    writer.WriteStartElement("root", "");
    Context* root = writer.Current();
    writer.WriteStartElement("child", "urn:a");
    Context* child = writer.Current();
    EXPECT_EQ(child->GetDepth(), 1u);
    EXPECT_EQ(child->GetParent(), root);
    EXPECT_TRUE(child->IsStartTagOpen());
    EXPECT_TRUE(child->InheritsFromParent());
    EXPECT_FALSE(child->OwnsMap());

    writer.AddNamespace("b", "urn:b");
    writer.AddNamespace("b2", "urn:a");  // shadows the root's binding
    EXPECT_FALSE(child->InheritsFromParent());
    EXPECT_TRUE(child->OwnsMap());
    EXPECT_EQ(child->GetNamespaceMapValue("urn:a"), "b2");
    EXPECT_EQ(child->GetNamespaceMapValue("urn:b"), "b");

    writer.WriteStartElement("grandchild", "");
    EXPECT_EQ(writer.Current()->GetDepth(), 2u);
    EXPECT_EQ(writer.Current()->InventPrefix("urn:c"), "AA");
    EXPECT_EQ(writer.Current()->GetNamespaceMapValue("urn:b"), "b");
    writer.WriteEndElement();
    EXPECT_EQ(child->GetNamespaceMap().count("urn:c"), 0u);
    writer.WriteEndElement();

    // The child's bindings ended with it; the root's came back.
    writer.WriteStartElement("sibling", "");
    EXPECT_EQ(writer.Current()->GetNamespaceMap(), (NamespaceMap{{kXmlUri, "xml"}, {"urn:a", "a"}}));
    EXPECT_EQ(writer.Current()->InventPrefix("urn:c"), "AA");  // free again
}

TEST(XmlWriterContext, InventedPrefixesFollowTheScope) {
    ProbeWriter writer;
    writer.AddNamespace("AB", "urn:taken");
    writer.WriteStartElement("root", "");
    // Nested: each element takes the next free prefix, past the two-letter forms.
    const int depth = 7000;
    for (int i = 0; i < depth; ++i) {
        writer.WriteStartElement("e", "");
        const bool check = i % 499 == 0;
        const std::string expected = check ? CXmlWriter::GetUniquePrefix(writer.Current()->GetNamespaceMap()) : "";
        const std::string& invented = writer.Current()->InventPrefix("urn:" + std::to_string(i));
        if (check) {
            ASSERT_EQ(invented, expected) << i;
        }
    }
    EXPECT_EQ(writer.Current()->GetNamespaceMapValue("urn:6998"), "NF1");  // numbered once AA..\xFFZ are taken
    EXPECT_EQ(writer.Current()->GetNamespaceMapValue("urn:6999"), "NG1");
    // Ending an element frees its prefix for the next sibling only.
    writer.WriteEndElement();
    writer.WriteStartElement("e", "");
    EXPECT_EQ(writer.Current()->InventPrefix("urn:again"), "NG1");
    for (int i = 0; i < depth; ++i) writer.WriteEndElement();
    writer.WriteStartElement("e", "");
    EXPECT_EQ(writer.Current()->InventPrefix("urn:x"), "AA");
    writer.Current()->SetNamespaceMapValue("urn:x", "AC");  // rebinding frees AA
    EXPECT_EQ(writer.Current()->InventPrefix("urn:y"), "AA");
    EXPECT_EQ(writer.Current()->InventPrefix("urn:z"), "AD");
}

TEST(XmlWriterContext, DefaultNamespaceIsCopiedOnWrite) {
    ProbeWriter writer;
    writer.SetDefaultNamespace("urn:d");
    writer.WriteStartElement("root", "urn:d");
    writer.WriteStartElement("child", "");
    Context* child = writer.Current();
    EXPECT_EQ(child->GetDefaultNamespace(), "urn:d");
    child->SetNamespaceMapValue("urn:x", "x");  // copies the default namespace too
    EXPECT_EQ(child->GetDefaultNamespace(), "urn:d");
    child->SetDefaultNamespace("urn:other");
    EXPECT_EQ(child->GetDefaultNamespace(), "urn:other");
    EXPECT_EQ(child->GetParent()->GetDefaultNamespace(), "urn:d");

    writer.WriteStartElement("grandchild", "");
    writer.Current()->SetDefaultNamespace("");  // copies the map as well
    EXPECT_TRUE(writer.Current()->OwnsMap());
    EXPECT_EQ(writer.Current()->GetNamespaceMapValue("urn:x"), "x");
    EXPECT_EQ(writer.Current()->GetDefaultNamespace(), "");
}

TEST(XmlWriterContext, LookupOfUnknownUriInsertsIntoTheSharedScope) {
    ProbeWriter writer;
    writer.WriteStartElement("root", "");
    Context* root = writer.Current();
    writer.WriteStartElement("child", "");
    std::string& prefix = writer.Current()->GetNamespaceMapValue(std::string("urn:new"));
    EXPECT_EQ(prefix, "");
    EXPECT_TRUE(writer.Current()->InheritsFromParent());  // no copy on write
    EXPECT_EQ(root->GetNamespaceMap().count("urn:new"), 1u);
    prefix = "n";
    EXPECT_EQ(root->GetNamespaceMapValue("urn:new"), "n");
}

TEST(XmlWriterContext, DeepChainsAreFreedWithoutRecursion) {
    CInstanceMonitor::SetCounting(true);
    {
        ProbeWriter writer;
        for (int i = 0; i < 200000; ++i) writer.WriteStartElement("e", "");
        EXPECT_EQ(writer.Current()->GetDepth(), 199999u);
        EXPECT_EQ(CInstanceMonitor::GetLiveCount("CXmlWriterContext"), 200000u);
        EXPECT_EQ(CInstanceMonitor::GetLiveCount("ProbeWriter"), 1u);
        for (int i = 0; i < 1000; ++i) writer.WriteEndElement();
        EXPECT_EQ(CInstanceMonitor::GetLiveCount("CXmlWriterContext"), 199000u);
    }  // the writer deletes the remaining chain
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("CXmlWriterContext"), 0u);
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("ProbeWriter"), 0u);

    // A context deletes the chain above it.
    auto* root = new Context("r", "", "", nullptr, nullptr);
    Context* inner = root;
    for (int i = 0; i < 100000; ++i) inner = new Context("e", "", inner);
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("CXmlWriterContext"), 100001u);
    delete inner;
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("CXmlWriterContext"), 0u);
    CInstanceMonitor::SetCounting(false);
}
