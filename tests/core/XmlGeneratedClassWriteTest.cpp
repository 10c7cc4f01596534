// XmlGeneratedClassWriteTest.cpp - the writing half of the generated-class engine: root-only items, the type attribute,
// choices, simple content, pseudo elements, wrapping.

#include "XmlGeneratedClassTestSupport.h"

using namespace kvenginetest;

namespace {

// What ToXml_Int gives a recording writer, for the document root or not.
std::string Record(const CXmlObjectBase& object, bool isRoot, const char* targetNamespace = "",
                   const CXmlSerializationContext& context = CXmlSerializationContext(), bool allowEmpty = false) {
    RecordingWriter writer;
    kv::CXmlObjectBase::ToXml_Int(&object, &writer, isRoot, targetNamespace, context, allowEmpty);
    return writer.log;
}

TEST(XmlGeneratedClassWrite, RootItemsAndTheTypeAttributeInCallOrder) {
    Pinned<CPerson> person;
    person.SetI4(10, 7);
    CXmlSerializationContext context;
    context.GetProcessingInstructions().push_back("<?first a?>");
    context.GetProcessingInstructions().push_back("<?second b?>");
    context.GetNamespaceAliases().Add("b", "urn:b");
    context.GetNamespaceAliases().Add("a", "urn:a");
    context.SetDefaultNamespaceURI("urn:d");
    context.SetInLineSchema("<xs:schema/>");
    // The element name differs from the type's: xsi:type (a string, item type 23) comes first.
    EXPECT_EQ(Record(person, true, "urn:t", context),
              "pi(<?first a?>)pi(<?second b?>)ns(a=urn:a)ns(b=urn:b)default(urn:d)"
              "<{urn:t}Person>@type=PersonType,23;@id=7,5;schema(<xs:schema/>)</>");
    // Below the root the context adds nothing.
    person.SetElementName("PersonType");
    EXPECT_EQ(Record(person, false, "urn:t", context), "<{urn:t}PersonType>@id=7,5;</>");
}

TEST(XmlGeneratedClassWrite, ChoiceWritesOnlyTheFirstSetMember) {
    Pinned<CTestClass<ChoiceSchema<true>>> pick;
    EXPECT_EQ(WriteCompact(pick), "<Pick/>");  // optional members allow an empty choice
    pick.SetI4(2, 1);
    EXPECT_EQ(WriteCompact(pick), "<Pick><b>1</b></Pick>");
    pick.SetI4(1, 5);
    EXPECT_EQ(WriteCompact(pick), "<Pick><a>5</a></Pick>");
}

TEST(XmlGeneratedClassWrite, EmptyChoiceFailsUnlessAllowed) {
    Pinned<CTestClass<ChoiceSchema<false>>> strict;
    EXPECT_EQ(WriteFailure(strict),
              "Failed to convert the element [Pick] to XML\n"
              "This element is a choice, and as such must have at one (and only one) valid item, currently "
              "there are none set");
    CXmlSerializationContext lenient;
    lenient.SetIgnoreMissingChoice(true);
    EXPECT_EQ(WriteCompact(strict, lenient), "<Pick/>");
    // The caller may allow an empty choice through the last flag.
    EXPECT_EQ(Record(strict, false, "", CXmlSerializationContext(), true), "<Pick></>");
}

// A nillable class with r8 simple content in a number format, and an attribute.
struct MeasureSchema : NoNamespaces {
    static constexpr const char* kElementName = "Measure";
    static void Build(Metadata& meta) {
        meta = {new CParentElementInfo(kvd::GroupType_Sequence, kvd::ElementType_Element, "Measure", "", true, true, 1,
                                       kv::r8, "%.2f", false),
                MakeArray<CElementInfo>({}),
                MakeArray<CAttributeInfo>({new kvd::CAttributeInfoPrimitive("unit", "", 2, true, kv::string, nullptr,
                                                                            kPreserve, {}, nullptr)})};
    }
};

TEST(XmlGeneratedClassWrite, SimpleContentInItsFormatOrNil) {
    Pinned<CNillableTestClass<MeasureSchema>> measure;
    KvVariant value;
    value.SetR8(2.5);
    measure.Set(1, value);
    measure.SetString(2, "kg");
    EXPECT_EQ(WriteCompact(measure), "<Measure unit=\"kg\">2.50</Measure>");
    measure.SetNilValue(1);
    EXPECT_EQ(Record(measure, false), "<Measure>@unit=kg,23;@nil;</>");
}

void Attach(COuter& outer, int32_t id, CXmlObjectBase* child) {
    KvVariant value;
    value.SetXmlObject(child);
    outer.Set(id, value);
}

TEST(XmlGeneratedClassWrite, NestedObjectsAndPseudoElements) {
    Pinned<COuter> outer;
    CPerson* person = new CPerson;
    person->SetI4(10, 7);
    person->SetI4(12, 0);
    person->SetString(1, "Ann");
    person->SetI4(2, 30);
    person->SetI4(3, 2);
    person->SetElementName("PersonType");
    Attach(outer, 1, person);
    CGroup* group = new CGroup;
    group->SetI4(1, 8);
    Attach(outer, 2, group);
    outer.SetI4(3, 9);
    EXPECT_EQ(WriteCompact(outer),
              "<Outer><PersonType id=\"7\" shade=\"red\"><name>Ann</name><age>30</age><color>blue</color>"
              "</PersonType><g>8</g><tail>9</tail></Outer>");

    // Every level wraps once; the attribute step wraps in a plain CKvException.
    person->Set(10, KvVariant());
    try {
        WriteCompact(outer);
        ADD_FAILURE() << "no exception";
    } catch (const CKvException& error) {
        EXPECT_EQ(typeid(error), typeid(CKvValidationException));
        EXPECT_EQ(error.GetFullMessage(),
                  "Failed to convert the element [Outer] to XML\n"
                  "Failed to convert the element [PersonType] to XML\n"
                  "Failed to convert attributes to XML\n"
                  "Invalid Type 0 to convert to string");
        ASSERT_NE(error.GetInnerException(), nullptr);
        ASSERT_NE(error.GetInnerException()->GetInnerException(), nullptr);
        const CKvException& root = *error.GetInnerException()->GetInnerException();
        EXPECT_EQ(typeid(root), typeid(CKvException));
    }
}

TEST(XmlGeneratedClassWrite, UnknownGroupTypeFails) {
    Pinned<CTestClass<BrokenSchema>> broken;
    EXPECT_EQ(WriteFailure(broken), "Failed to convert the element [Broken] to XML\nUnknown XML Group Type");
}

}  // namespace

// Person in a namespace whose members are unqualified (no namespace).
struct UnqualifiedPersonSchema : PersonSchema {
    static constexpr const char* kTargetNamespace = "urn:p";
    static constexpr const char* kTypeNamespace = "urn:p";
};
using CUnqualifiedPerson = CTestClass<UnqualifiedPersonSchema>;

TEST(XmlGeneratedClassWrite, UnqualifiedMembersUnderADefaultNamespaceReadBackOnlyWhenUndeclared) {
    Pinned<CUnqualifiedPerson> person;
    person.SetString(1, "Ann");
    person.SetI4(10, 7);
    CXmlSerializationContext context;
    context.SetWriteTypeAttribute(false);
    context.SetDefaultNamespaceURI("urn:p");
    // By default <name> lands in the default namespace: it does not read back.
    const std::string plain = WriteCompact(person, context);
    EXPECT_EQ(plain, "<Person xmlns=\"urn:p\" id=\"7\"><name>Ann</name></Person>");
    Pinned<CUnqualifiedPerson> copy;
    EXPECT_NE(ReadFailure(copy, plain.c_str(), context), "");

    context.SetUndeclareDefaultNamespace(true);
    const std::string undeclared = WriteCompact(person, context);
    EXPECT_EQ(undeclared,
              "<Person xmlns=\"urn:p\" id=\"7\"><name xmlns=\"\">Ann</name></Person>");
    Pinned<CUnqualifiedPerson> again;
    EXPECT_EQ(ReadFailure(again, undeclared.c_str(), context), "");
    EXPECT_EQ(WriteCompact(again, context), undeclared);
}
