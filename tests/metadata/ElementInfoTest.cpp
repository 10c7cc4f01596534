// ElementInfoTest.cpp - the element descriptor base: construction, matching, facet dispatch, group bases, wildcard namespaces, child forwarding.
#include "metadata/GeneratedTestClasses.h"

using namespace kvtest;
using namespace KvXmlLib10;
using namespace KvXmlLib10Data;

namespace {

TEST(ElementInfoConstruction, CopiesStringsAndFacets) {
    char name[] = "item";
    char uri[] = "urn:a";
    CProbeInfo plain(name, uri, 4);
    CProbeInfo nillable(name, nullptr, 5, true);
    CPrimitiveRestrictions facets;
    facets.maxLength = 3;
    CProbeInfo primitive(name, uri, 6, true, r8, nullptr, kCollapse, facets);
    std::strcpy(name, "gone");
    std::strcpy(uri, "urn:z");
    facets.maxLength = 9;

    EXPECT_EQ(plain.GetElementName() + " " + plain.GetNamespaceURI() + " " + nillable.GetNamespaceURI(), "item urn:a ");
    EXPECT_EQ(primitive.GetNumberFormat(), "");
    EXPECT_EQ(primitive.GetRestrictions().maxLength, 3);
}

TEST(ElementInfoMatch, ComparesLocalNameExactlyAndNamespaceUnlessIgnored) {
    ParsedDocument doc("<r xmlns:a='urn:a'><item/><Item/><a:item/></r>");
    CXmlElement* plain = doc.First();
    CXmlElement* capital = plain->GetNextSiblingElement();
    CXmlElement* qualified = capital->GetNextSiblingElement();
    CProbeInfo local("item", "", 1);
    CProbeInfo inA("item", "urn:a", 1);
    CProbeInfo inB("item", "urn:b", 1);

    CXmlSerializationContext strict, loose, noNamespaces;
    EXPECT_TRUE(local.IsThisElement(strict, plain));
    EXPECT_FALSE(local.IsThisElement(strict, capital));
    EXPECT_FALSE(local.IsThisElement(strict, qualified));
    EXPECT_TRUE(inA.IsThisElement(strict, qualified));
    EXPECT_FALSE(inA.IsThisElement(strict, plain));
    EXPECT_FALSE(inB.IsThisElement(strict, qualified));
    EXPECT_FALSE(local.IsThisElement(strict, nullptr));

    loose.SetIgnoreNamespaces(true);
    EXPECT_TRUE(inB.IsThisElement(loose, plain));
    EXPECT_TRUE(inB.IsThisElement(loose, qualified));
    EXPECT_FALSE(inB.IsThisElement(loose, capital));
    noNamespaces.SetSchemaType(SchemaType_NoNamespaces);
    EXPECT_TRUE(inB.IsThisElement(noNamespaces, qualified));
}

TEST(ElementInfoCheckRestriction, NeedsPrimitiveInfoAndDelegatesFacets) {
    KvVariant value;
    value.SetI4(-1);
    CElementInfoSeqEnumOpt enumeration("shade", "", 1, false, ColorToString, ColorFromString);
    EXPECT_KV_THROW(enumeration.CheckRestriction(value), CKvException, "Cannot CheckRestriction for type: i4");
    const CPrimitiveRestrictions ages(nullptr, -1, -1, "0", nullptr, nullptr, nullptr, -1);
    CElementInfoSeqPrimOpt age("age", "", 2, false, i4, nullptr, kCollapse, ages);
    EXPECT_KV_THROW(age.CheckRestriction(value), CKvException, "Invalid Value for age [-1]");
    value.SetI4(0);
    EXPECT_NO_THROW(age.CheckRestriction(value));
}

TEST(ElementInfoAnyNamespace, ChoosesByRestrictionKeyword) {
    // restriction, first namespace, second namespace, expected
    const char* const cases[][4] = {
        {"##any", "urn:f", "urn:s", "urn:f"},          {"##other", "", "urn:s", "DefaultNamespace"},
        {"##other", "urn:f", "urn:s", ""},             {"##local", "urn:f", "urn:s", ""},
        {"##targetNamespace", "urn:f", "urn:s", "urn:s"}, {"##other urn:x", "", "urn:s", "DefaultNamespace"},
        {"##any urn:x urn:y", "urn:f", "urn:s", "urn:f"}, {"##targetNamespace ##local", "urn:f", "urn:s", "urn:s"},
        {"urn:x urn:y", "urn:f", "urn:s", ""},         {"urn:x", "urn:f", "urn:s", ""},
        {"##bogus urn:x", "urn:f", "urn:s", ""},       {"## ##any", "urn:f", "urn:s", ""}, {"", "urn:f", "urn:s", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CElementInfo::GetAnyDefaultNamespace(c[0], c[1], c[2]), c[3]) << c[0] << " / " << c[1];
    EXPECT_EQ(CElementInfo::GetAnyDefaultNamespace("##any", nullptr, nullptr), "");
    EXPECT_EQ(CElementInfo::GetAnyDefaultNamespace("##other", nullptr, nullptr), "DefaultNamespace");
}

TEST(ElementInfoChildAccess, ForwardsReadingAndAttributeWritingToTheChild) {
    ParsedDocument doc("<r x='4'><v>1</v><b/></r>");  // a pseudo child reads the parent's children
    CProbeInfo forwarder("g", "", 1);
    Pinned<CPseudoLeaf> group;
    const CXmlSerializationContext context;
    CXmlElement* next = forwarder.FromXml_Int(&group, doc.First(), doc.Root(), context, false);
    ASSERT_NE(next, nullptr);
    EXPECT_EQ(next->GetLocalName(), "b");
    EXPECT_EQ(group.Get(1).GetI4(), 1);
    EXPECT_EQ(group.Get(2).GetI4(), 4);  // the parent's attributes are the group's
    group.SetI4(2, 9);
    RecordingWriter attributes;
    forwarder.AttributesToXml_Int(&group, &attributes, context);
    EXPECT_EQ(attributes.log, "@x=9,5;");

    // The flag reaches the child's engine: with it an empty choice is accepted.
    ParsedDocument empty("<Pick/>");
    Pinned<CTestClass<ChoiceSchema<false>>> choice;
    EXPECT_EQ(forwarder.FromXml_Int(&choice, nullptr, empty.Root(), context, true), nullptr);
    EXPECT_KV_THROW(forwarder.FromXml_Int(&choice, nullptr, empty.Root(), context, false), CKvValidationException,
                    "Failed to process the element [Pick]");
}

}  // namespace
