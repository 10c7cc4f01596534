// XmlGeneratedClassMetadataTest.cpp - metadata lifetime and queries of generated classes: CleanMetaData and the element
// list.

#include "XmlGeneratedClassTestSupport.h"

using namespace kvenginetest;

namespace {

std::string g_deleted;  // names of the deleted descriptors, in order

class CCountedElement : public CProbeInfo {
public:
    explicit CCountedElement(const char* name) : CProbeInfo(name, "", 0) {}
    ~CCountedElement() override { g_deleted += GetElementName(); }
};

class CCountedAttribute : public kvd::CAttributeInfoPrimitive {
public:
    explicit CCountedAttribute(const char* name)
        : CAttributeInfoPrimitive(name, "", 0, true, kv::i4, nullptr, kCollapse, {}, nullptr) {}
    ~CCountedAttribute() override { g_deleted += GetAttributeName(); }
};

class CCountedParent : public CParentElementInfo {
public:
    CCountedParent()
        : CParentElementInfo(kvd::GroupType_Sequence, kvd::ElementType_Element, "P", "", false, false, -1,
                             kv::Invalid, nullptr, false) {}
    ~CCountedParent() override { g_deleted += "P"; }
};

TEST(XmlGeneratedClassMetadata, CleanMetaDataDeletesEverythingAndNullsTheTables) {
    CParentElementInfo* classInfo = new CCountedParent;
    CElementInfo** elements = MakeArray<CElementInfo>({new CCountedElement("a"), new CCountedElement("b")});
    CAttributeInfo** attributes = MakeArray<CAttributeInfo>({new CCountedAttribute("x")});
    CXmlGeneratedClass::CleanMetaData(classInfo, elements, attributes);
    EXPECT_EQ(g_deleted, "Pabx");
    EXPECT_EQ(classInfo, nullptr);
    EXPECT_EQ(elements, nullptr);
    EXPECT_EQ(attributes, nullptr);
    CXmlGeneratedClass::CleanMetaData(classInfo, elements, attributes);  // already clean: nothing happens
    EXPECT_EQ(g_deleted, "Pabx");
}

// A choice member in urn:a that may not be absent, then either an optional
// choice member or a sequence member (which does not make the choice optional).
template <bool OptionalChoiceMember>
struct ListSchema : NoNamespaces {
    static constexpr const char* kElementName = "List";
    static void Build(Metadata& meta) {
        CElementInfo* second = OptionalChoiceMember ? I4<kvd::CElementInfoChoicePrimOpt>("b", 2)
                                                    : I4<kvd::CElementInfoSeqPrimOpt>("s", 2);
        meta = {Parent(kvd::GroupType_Choice, "List"),
                MakeArray<CElementInfo>(
                    {new kvd::CElementInfoChoicePrimCol("a", "urn:a", 1), second}),
                MakeArray<CAttributeInfo>({})};
    }
    template <typename T>
    static void Init(T& object) {
        object.Set(1, I4List("a", 1));
    }
};

TEST(XmlGeneratedClassMetadata, ElementListQueries) {
    Pinned<CTestClass<ListSchema<true>>> list;
    EXPECT_EQ(list.GetClassElementInfoCount(), 2);
    EXPECT_TRUE(list.DoesElementContainOptionalElements());

    ParsedDocument doc("<r xmlns:a='urn:a'><a:a/><a/><b/><c/></r>");
    CXmlElement* qualified = doc.First();
    CXmlElement* plain = qualified->GetNextSiblingElement();
    CXmlElement* b = plain->GetNextSiblingElement();
    const CXmlSerializationContext strict;
    EXPECT_TRUE(list.IsElementInList(strict, qualified));
    EXPECT_FALSE(list.IsElementInList(strict, plain));
    EXPECT_TRUE(list.IsElementInList(strict, b));
    EXPECT_FALSE(list.IsElementInList(strict, b->GetNextSiblingElement()));
    EXPECT_FALSE(list.IsElementInList(strict, nullptr));
    CXmlSerializationContext loose;
    loose.SetIgnoreNamespaces(true);
    EXPECT_TRUE(list.IsElementInList(loose, plain));

    Pinned<CTestClass<ListSchema<false>>> required;
    EXPECT_FALSE(required.DoesElementContainOptionalElements());
    Pinned<CHolder> empty;
    EXPECT_EQ(empty.GetClassElementInfoCount(), 0);
    EXPECT_FALSE(empty.DoesElementContainOptionalElements());
}

}  // namespace
