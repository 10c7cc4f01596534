// Tests for the serialisation options and the namespace alias map.

#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

TEST(SerializationContextDefaults, WritesTypesAndStripsCdataOnly) {
    const CXmlSerializationContext c;
    EXPECT_EQ((std::vector<bool>{c.GetWriteTypeAttribute(), c.GetStripCDATA(), c.GetIgnoreUnknownAttributes(),
                                 c.GetIgnoreUnknownElements(), c.GetIgnoreMissingMandatoryElements(),
                                 c.GetIgnoreMissingChoice(), c.GetIgnoreInvalidCollectionCounts(),
                                 c.GetIgnoreNamespaces(), c.GetNoOptionalAttributeDefaultOutput()}),
              (std::vector<bool>{true, true, false, false, false, false, false, false, false}));
    EXPECT_EQ(c.GetSchemaType(), SchemaType_Default);
    EXPECT_EQ(c.GetInLineSchema() + c.GetDefaultNamespaceURI(), "");
    EXPECT_EQ(c.GetNamespaceAliases().GetNamespaceCount(), 0);
    EXPECT_TRUE(c.GetProcessingInstructions().empty());
}

TEST(SerializationContextOptions, SchemaTypeTwoImpliesIgnoringNamespaces) {
    CXmlSerializationContext context;
    context.SetSchemaType(SchemaType_NoNamespaces);
    EXPECT_TRUE(context.GetIgnoreNamespaces());
    context.SetSchemaType(SchemaType_Namespaces);
    EXPECT_FALSE(context.GetIgnoreNamespaces());
    context.SetIgnoreNamespaces(true);
    EXPECT_TRUE(context.GetIgnoreNamespaces());
}

TEST(SerializationContextOptions, UnknownAndMissingElementsExcludeEachOther) {
    CXmlSerializationContext context;
    context.SetIgnoreMissingMandatoryElements(true);
    EXPECT_KV_THROW(context.SetIgnoreUnknownElements(true), CKvInvalidStateException,
                    "The parser can only ignore additional elements, or ignore the fact that some required ones "
                    "are missing, you can not ignore both\nSet IgnoreMissingMandatoryElements to false before "
                    "setting IgnoreUnknownElements to true");
    EXPECT_FALSE(context.GetIgnoreUnknownElements());
    context.SetIgnoreUnknownElements(false);  // turning off never throws
    context.SetIgnoreMissingMandatoryElements(false);
    context.SetIgnoreUnknownElements(true);
    EXPECT_TRUE(context.GetIgnoreUnknownElements());
    EXPECT_KV_THROW(context.SetIgnoreMissingMandatoryElements(true), CKvInvalidStateException,
                    "The parser can only ignore additional elements, or ignore the fact that some required ones "
                    "are missing, you can not ignore both\nSet IgnoreUnknownElements to false before setting "
                    "IgnoreMissingMandatoryElements to true");
    EXPECT_FALSE(context.GetIgnoreMissingMandatoryElements());
    EXPECT_TRUE(context.GetIgnoreUnknownElements());
}

TEST(SerializationContextCopy, CopiesOptionsStringsAndListsIndependently) {
    CXmlSerializationContext source;
    source.SetWriteTypeAttribute(false);
    source.SetIgnoreInvalidCollectionCounts(true);
    source.SetSchemaType(SchemaType_NoNamespaces);
    source.SetInLineSchema("<xs:schema/>");
    source.SetDefaultNamespaceURI("urn:default");
    source.GetNamespaceAliases().Add("p", "urn:p");
    source.GetProcessingInstructions().push_back("<?pi data?>");

    CXmlSerializationContext copy(source);
    source.GetNamespaceAliases().Add("q", "urn:q");
    source.GetProcessingInstructions().clear();

    EXPECT_FALSE(copy.GetWriteTypeAttribute());
    EXPECT_TRUE(copy.GetIgnoreInvalidCollectionCounts());
    EXPECT_EQ(copy.GetSchemaType(), SchemaType_NoNamespaces);
    EXPECT_EQ(copy.GetInLineSchema(), "<xs:schema/>");
    EXPECT_EQ(copy.GetDefaultNamespaceURI(), "urn:default");
    EXPECT_EQ(copy.GetNamespaceAliases().GetNamespaceCount(), 1);
    ASSERT_EQ(copy.GetProcessingInstructions().size(), 1u);
    EXPECT_EQ(copy.GetProcessingInstructions()[0], "<?pi data?>");
}

TEST(NamespaceAliasMap, OneAliasPerNamespaceInUriOrder) {
    CNamespaceAliasMap map;
    map.Add("a", "urn:x");
    map.Add("b", "urn:x");
    EXPECT_EQ(map.GetNamespaceCount(), 1);
    EXPECT_EQ(map.GetAliasFromNamespace("urn:x"), "b");
    EXPECT_FALSE(map.DoesAliasExist("a"));

    map.Add("z", "urn:b");
    map.Add("y", "urn:a");
    map.Add("up", "URN:c");  // upper case sorts first in byte order
    ASSERT_EQ(map.GetNamespaceCount(), 4);
    EXPECT_EQ(map.GetNamespaceAt(0), "URN:c");
    EXPECT_EQ(map.GetNamespaceAt(1), "urn:a");
    EXPECT_EQ(map.GetNamespaceAt(2), "urn:b");
    EXPECT_EQ(map.GetNamespaceAt(3), "urn:x");
    EXPECT_EQ(map.GetNamespaceAt(4), "");
    EXPECT_EQ(map.GetNamespaceAt(-1), "");

    map.RemoveNamespace("urn:b");
    map.RemoveNamespace("urn:never");
    EXPECT_EQ(map.GetNamespaceCount(), 3);
    EXPECT_FALSE(map.DoesNamespaceExist("urn:b"));
    EXPECT_TRUE(map.DoesNamespaceExist("urn:a"));
}

TEST(NamespaceAliasMap, LooksUpBothWays) {
    CNamespaceAliasMap map;
    EXPECT_KV_THROW(map.GetNamespaceFromAlias("p"), CKvException, "Namespace alias [p] not found");
    map.Add("p", "urn:b");
    map.Add("p", "urn:a");  // two namespaces may share an alias: the first in URI order wins
    EXPECT_EQ(map.GetNamespaceFromAlias("p"), "urn:a");
    EXPECT_TRUE(map.DoesAliasExist("p"));
    EXPECT_EQ(map.GetAliasFromNamespace("urn:unknown"), "");
    EXPECT_EQ(map.GetNamespaceCount(), 2);  // asking does not add an entry
}
