// Tests for wildcard namespace restrictions, name matching and xsi:type parts.

#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

TEST(NamespaceRestriction, KeywordsAdmitTheirNamespaces) {
    struct Case {
        const char* ns;
        const char* restriction;
        bool admitted;
    } cases[] = {
        {"", "##any", true},          {"urn:z", "##any", true},
        {"urn:b", "##other", true},   {"", "##other", true},          {"urn:a", "##other", false},
        {"", "##local", true},        {"urn:a", "##local", false},
        {"urn:a", "##targetNamespace", true}, {"", "##targetNamespace", false},
        {"", "##local ##targetNamespace", true}, {"urn:a", "##local ##targetNamespace", true},
        {"urn:b", "##local ##targetNamespace", false},
        {"urn:x", "urn:x urn:y", true}, {"urn:y", "urn:x urn:y", true}, {"urn:z", "urn:x urn:y", false},
        {"", "urn:x urn:y", false},
        // Keywords are case-sensitive; an unknown keyword is a literal URI.
        {"urn:z", "##ANY", false},    {"##ANY", "##ANY", true},
        // An empty restriction, or two spaces, is an empty token: only "no namespace".
        {"", "", true},               {"urn:a", "", false},
        {"", "urn:x  urn:y", true},   {"urn:q", "urn:x  urn:y", false},
        {"", "urn:x ", false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(CXmlObjectHelper::IsNamespaceValid(c.ns, c.restriction, "urn:a"), c.admitted)
            << "[" << c.ns << "] against [" << c.restriction << "]";
    }
}

TEST(ElementNameMatch, NamespacesCountUnlessIgnored) {
    CXmlDocument document;
    document.LoadXml("<Item xmlns='urn:a'/>");
    const CXmlElement* item = document.GetDocumentElement();
    ASSERT_NE(item, nullptr);

    CXmlSerializationContext context;
    EXPECT_TRUE(CXmlObjectHelper::DoesElementNameMatch(context, item, "Item", "urn:a"));
    EXPECT_FALSE(CXmlObjectHelper::DoesElementNameMatch(context, item, "Item", "urn:b"));
    EXPECT_FALSE(CXmlObjectHelper::DoesElementNameMatch(context, item, "item", "urn:a"));
    EXPECT_FALSE(CXmlObjectHelper::DoesElementNameMatch(context, item, "Item", ""));

    context.SetIgnoreNamespaces(true);
    EXPECT_TRUE(CXmlObjectHelper::DoesElementNameMatch(context, item, "Item", "urn:b"));
    EXPECT_FALSE(CXmlObjectHelper::DoesElementNameMatch(context, item, "item", "urn:b"));

    CXmlSerializationContext noNamespaces;
    noNamespaces.SetSchemaType(SchemaType_NoNamespaces);
    EXPECT_TRUE(CXmlObjectHelper::DoesElementNameMatch(noNamespaces, item, "Item", "urn:b"));
    EXPECT_FALSE(CXmlObjectHelper::DoesElementNameMatch(noNamespaces, item, "item", "urn:a"));
}

TEST(ClassFactoryXsiType, SplitsThePrefixedTypeName) {
    CXmlDocument document;
    document.LoadXml(
        "<garage xmlns='urn:a' xmlns:tns='urn:cars' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'>"
        "<v xsi:type='tns:Car'/><v xsi:type='Car'/><v xsi:type='nope:Car'/><v/>"
        "<v xsi:type='tns:a:b'/></garage>");
    // Prefixed; no prefix (the element's own namespace, no default lookup); an
    // unbound prefix (not an error); no attribute; split at the first colon only.
    const struct {
        const char* type;
        const char* ns;
    } expected[] = {{"Car", "urn:cars"}, {"Car", "urn:a"}, {"Car", "urn:a"}, {"", "urn:a"}, {"a:b", "urn:cars"}};
    CXmlElement* v = document.GetDocumentElement()->GetFirstElement();
    for (const auto& row : expected) {
        ASSERT_NE(v, nullptr);
        EXPECT_EQ(CClassfactoryBase::GetElementType(v), row.type);
        EXPECT_EQ(CClassfactoryBase::GetElementTypeNamespaceUri(v), row.ns);
        v = v->GetNextSiblingElement();
    }
}
