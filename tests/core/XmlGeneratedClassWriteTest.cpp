// XmlGeneratedClassWriteTest.cpp - the writing half of the generated-class engine, through whole documents.
#include <gtest/gtest.h>

#include "metadata/GeneratedTestClasses.h"
#include "support/KvTestSupport.h"

using namespace kvtest;
using KvXmlLib10::CKvException;
using KvXmlLib10::CKvValidationException;
namespace kv = KvXmlLib10;
namespace kvd = KvXmlLib10Data;

namespace {

// <Person id lang shade><name/><age/><color/></Person>, type PersonType.
struct PersonSchema {
    static constexpr const char* kElementName = "Person";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        CPrimitiveRestrictions ages;
        ages.minInclusive = "0";
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Sequence, kvd::ElementType_Element, "PersonType", "",
                                                false, true, -1, kv::Invalid, nullptr, false);
        meta.elements = MakeArray<CElementInfo>({
            new kvd::CElementInfoSeqPrimMnd("name", "", 1, false, kv::string, nullptr, kPreserve, {}),
            new kvd::CElementInfoSeqPrimOpt("age", "", 2, true, kv::i4, nullptr, kCollapse, ages),
            new kvd::CElementInfoSeqEnumOpt("color", "", 3, false, ColorToString, ColorFromString),
        });
        meta.attributes = MakeArray<CAttributeInfo>({
            new kvd::CAttributeInfoPrimitive("id", "", 10, false, kv::i4, nullptr, kCollapse, {}, nullptr),
            new kvd::CAttributeInfoPrimitive("lang", "", 11, true, kv::string, nullptr, kPreserve, {}, "en"),
            new kvd::CAttributeInfoEnum("shade", "", 12, true, ColorToString, ColorFromString, "red"),
        });
    }
};
using CPerson = CTestClass<PersonSchema>;

const char kXsiDeclaration[] = "xmlns:AA=\"http://www.w3.org/2001/XMLSchema-instance\"";

CPerson& FillPerson(CPerson& person) {
    person.SetI4(10, 7);
    person.SetString(11, "en");
    person.SetI4(12, 0);
    person.SetString(1, "Ann");
    person.SetI4(2, 30);
    person.SetI4(3, 2);
    return person;
}

TEST(XmlGeneratedClassWrite, AttributesThenElementsInDeclarationOrder) {
    CPerson person;
    person.AddRef();
    FillPerson(person);
    person.SetElementName("PersonType");
    EXPECT_EQ(person.ToXml(true, true, kv::EOL_LF),
              "<?xml version=\"1.0\"?>\n"
              "<PersonType id=\"7\" lang=\"en\" shade=\"red\">\n"
              "\t<name>Ann</name>\n"
              "\t<age>30</age>\n"
              "\t<color>blue</color>\n"
              "</PersonType>\n");

    // Unset optional members and attributes are left out; the unset
    // mandatory name too (it is only checked on reading).
    CPerson sparse;
    sparse.AddRef();
    sparse.SetElementName("PersonType");
    sparse.SetI4(10, 1);
    EXPECT_EQ(WriteCompact(sparse), "<PersonType id=\"1\"/>");
}

TEST(XmlGeneratedClassWrite, TypeAttributeWhenTheElementNameIsNotTheTypeName) {
    CPerson person;
    person.AddRef();
    person.SetI4(10, 7);
    RecordingWriter writer;
    kv::CXmlObjectBase::ToXml_Int(&person, &writer, false, "", CXmlSerializationContext(), false);
    EXPECT_EQ(writer.log, "<Person>@type=PersonType,23;@id=7,5;</>");

    CXmlSerializationContext noTypes;
    noTypes.SetWriteTypeAttribute(false);
    EXPECT_EQ(WriteCompact(person, noTypes), "<Person id=\"7\"/>");
    EXPECT_EQ(WriteCompact(person), std::string("<Person ") + kXsiDeclaration + " AA:type=\"PersonType\" id=\"7\"/>");
}

TEST(XmlGeneratedClassWrite, DefaultValuedOptionalAttributesFollowTheContext) {
    CPerson person;
    person.AddRef();
    person.SetElementName("PersonType");
    person.SetI4(10, 7);
    person.SetString(11, "en");
    person.SetI4(12, 0);
    CXmlSerializationContext quiet;
    quiet.SetNoOptionalAttributeDefaultOutput(true);
    EXPECT_EQ(WriteCompact(person, quiet), "<PersonType id=\"7\"/>");
    EXPECT_EQ(WriteCompact(person), "<PersonType id=\"7\" lang=\"en\" shade=\"red\"/>");
}

TEST(XmlGeneratedClassWrite, RootItemsComeFromTheContextOnlyForTheRoot) {
    CPerson person;
    person.AddRef();
    person.SetElementName("PersonType");
    person.SetI4(10, 7);
    CXmlSerializationContext context;
    context.GetProcessingInstructions().push_back("<?first a?>");
    context.GetProcessingInstructions().push_back("<?second b?>");
    context.GetNamespaceAliases().Add("b", "urn:b");
    context.GetNamespaceAliases().Add("a", "urn:a");
    context.SetDefaultNamespaceURI("urn:d");
    context.SetInLineSchema("<xs:schema/>");

    RecordingWriter writer;
    kv::CXmlObjectBase::ToXml_Int(&person, &writer, true, "urn:t", context, false);
    EXPECT_EQ(writer.log,
              "pi(<?first a?>)pi(<?second b?>)ns(a=urn:a)ns(b=urn:b)default(urn:d)"
              "<{urn:t}PersonType>@id=7,5;schema(<xs:schema/>)</>");

    RecordingWriter nested;
    kv::CXmlObjectBase::ToXml_Int(&person, &nested, false, "urn:t", context, false);
    EXPECT_EQ(nested.log, "<{urn:t}PersonType>@id=7,5;</>");
}

// A choice of two optional members.
struct ChoiceSchema {
    static constexpr const char* kElementName = "Pick";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Choice, kvd::ElementType_Element, "Pick", "", false,
                                                true, -1, kv::Invalid, nullptr, false);
        meta.elements = MakeArray<CElementInfo>({
            new kvd::CElementInfoChoicePrimOpt("a", "", 1, false, kv::i4, nullptr, kCollapse, {}),
            new kvd::CElementInfoChoiceEnumOpt("b", "", 2, false, ColorToString, ColorFromString),
        });
        meta.attributes = MakeArray<CAttributeInfo>({});
    }
};
using CPick = CTestClass<ChoiceSchema>;

// A choice whose members may not all be absent.
struct StrictChoiceSchema {
    static constexpr const char* kElementName = "Strict";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Choice, kvd::ElementType_Element, "Strict", "", false,
                                                true, -1, kv::Invalid, nullptr, false);
        meta.elements = MakeArray<CElementInfo>({
            new CRequiredChoiceInfo("a", "", 1, false, kv::i4, nullptr, kCollapse, {}),
            new CRequiredChoiceInfo("b", "", 2, false, kv::i4, nullptr, kCollapse, {}),
        });
        meta.attributes = MakeArray<CAttributeInfo>({});
    }
};
using CStrict = CTestClass<StrictChoiceSchema>;

TEST(XmlGeneratedClassWrite, ChoiceWritesOnlyTheFirstSetMember) {
    CPick pick;
    pick.AddRef();
    pick.SetI4(2, 1);
    EXPECT_EQ(WriteCompact(pick), "<Pick><b>green</b></Pick>");
    pick.SetI4(1, 5);
    EXPECT_EQ(WriteCompact(pick), "<Pick><a>5</a></Pick>");
    CPick empty;
    empty.AddRef();
    EXPECT_EQ(WriteCompact(empty), "<Pick/>");  // optional members allow an empty choice
}

TEST(XmlGeneratedClassWrite, EmptyChoiceFailsUnlessAllowed) {
    CStrict strict;
    strict.AddRef();
    try {
        WriteCompact(strict);
        ADD_FAILURE() << "no exception";
    } catch (const CKvValidationException& error) {
        EXPECT_EQ(error.GetFullMessage(),
                  "Failed to convert the element [Strict] to XML\n"
                  "This element is a choice, and as such must have at one (and only one) valid item, currently "
                  "there are none set");
    }
    CXmlSerializationContext lenient;
    lenient.SetIgnoreMissingChoice(true);
    EXPECT_EQ(WriteCompact(strict, lenient), "<Strict/>");

    // The caller may allow an empty choice through the last flag.
    RecordingWriter writer;
    kv::CXmlObjectBase::ToXml_Int(&strict, &writer, false, "", CXmlSerializationContext(), true);
    EXPECT_EQ(writer.log, "<Strict></>");
    strict.SetI4(2, 4);
    EXPECT_EQ(WriteCompact(strict), "<Strict><b>4</b></Strict>");
}

// A nillable class with simple content and an attribute.
struct MeasureSchema {
    static constexpr const char* kElementName = "Measure";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Sequence, kvd::ElementType_Element, "Measure", "",
                                                true, true, 1, kv::r8, "%.2f", false);
        meta.elements = MakeArray<CElementInfo>({});
        meta.attributes = MakeArray<CAttributeInfo>(
            {new kvd::CAttributeInfoPrimitive("unit", "", 2, true, kv::string, nullptr, kPreserve, {}, nullptr)});
    }
};
using CMeasure = CNillableTestClass<MeasureSchema>;

TEST(XmlGeneratedClassWrite, SimpleContentAndNil) {
    CMeasure measure;
    measure.AddRef();
    KvVariant value;
    value.SetR8(2.5);
    measure.Set(1, value);
    measure.SetString(2, "kg");
    EXPECT_EQ(WriteCompact(measure), "<Measure unit=\"kg\">2.50</Measure>");

    measure.SetNilValue(1);
    RecordingWriter nilContent;
    kv::CXmlObjectBase::ToXml_Int(&measure, &nilContent, false, "", CXmlSerializationContext(), false);
    EXPECT_EQ(nilContent.log, "<Measure>@unit=kg,23;@nil;</>");

    // A nil object keeps its attributes and writes no content.
    measure.Set(1, value);
    measure.SetNil(true);
    RecordingWriter nilObject;
    kv::CXmlObjectBase::ToXml_Int(&measure, &nilObject, false, "", CXmlSerializationContext(), false);
    EXPECT_EQ(nilObject.log, "<Measure>@unit=kg,23;@nil;</>");
    EXPECT_EQ(WriteCompact(measure),
              std::string("<Measure unit=\"kg\" ") + kXsiDeclaration + " AA:nil=\"true\"/>");
}

// A pseudo element: its members land directly in the parent's element.
struct GroupSchema {
    static constexpr const char* kElementName = "Group";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Sequence, kvd::ElementType_PseudoElement, "Group", "",
                                                false, true, -1, kv::Invalid, nullptr, false);
        meta.elements = MakeArray<CElementInfo>(
            {new kvd::CElementInfoSeqPrimOpt("g", "", 1, false, kv::i4, nullptr, kCollapse, {})});
        meta.attributes = MakeArray<CAttributeInfo>({});
    }
};
using CGroup = CTestClass<GroupSchema>;

CXmlObjectBase* NewGroup() { return new CGroup; }
CXmlObjectBase* NewPerson() { return new CPerson; }

// An outer class holding a person and a pseudo-element group.
struct OuterSchema {
    static constexpr const char* kElementName = "Outer";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Sequence, kvd::ElementType_Element, "Outer", "", false,
                                                false, -1, kv::Invalid, nullptr, false);
        meta.elements = MakeArray<CElementInfo>({
            new CTestChildInfo("Person", "", 1, NewPerson),
            new CTestChildInfo("Group", "", 2, NewGroup),
            new kvd::CElementInfoSeqPrimOpt("tail", "", 3, false, kv::i4, nullptr, kCollapse, {}),
        });
        meta.attributes = MakeArray<CAttributeInfo>({});
    }
};
using COuter = CTestClass<OuterSchema>;

void Attach(COuter& outer, int32_t id, CXmlObjectBase* child) {
    KvVariant value;
    value.SetXmlObject(child);
    outer.Set(id, value);
}

TEST(XmlGeneratedClassWrite, NestedObjectsAndPseudoElements) {
    COuter outer;
    outer.AddRef();
    CPerson* person = new CPerson;
    FillPerson(*person);
    person->SetElementName("PersonType");
    Attach(outer, 1, person);
    CGroup* group = new CGroup;
    group->SetI4(1, 8);
    Attach(outer, 2, group);
    outer.SetI4(3, 9);
    EXPECT_EQ(WriteCompact(outer),
              "<Outer><PersonType id=\"7\" lang=\"en\" shade=\"red\"><name>Ann</name><age>30</age>"
              "<color>blue</color></PersonType><g>8</g><tail>9</tail></Outer>");
}

TEST(XmlGeneratedClassWrite, FailuresAreWrappedOncePerLevel) {
    COuter outer;
    outer.AddRef();
    CPerson* person = new CPerson;
    FillPerson(*person);
    person->SetI4(2, -3);
    Attach(outer, 1, person);
    try {
        WriteCompact(outer);
        ADD_FAILURE() << "no exception";
    } catch (const CKvException& error) {
        EXPECT_EQ(typeid(error), typeid(CKvValidationException));
        EXPECT_EQ(error.GetFullMessage(),
                  "Failed to convert the element [Outer] to XML\n"
                  "Failed to convert the element [Person] to XML\n"
                  "Invalid Value for age [-3]");
    }

    // An attribute failure is wrapped by the attribute step, then by the element.
    person->SetI4(2, 3);
    person->Set(10, KvVariant());
    try {
        WriteCompact(outer);
        ADD_FAILURE() << "no exception";
    } catch (const CKvException& error) {
        EXPECT_EQ(error.GetFullMessage(),
                  "Failed to convert the element [Outer] to XML\n"
                  "Failed to convert the element [Person] to XML\n"
                  "Failed to convert attributes to XML\n"
                  "Invalid Type 0 to convert to string");
        ASSERT_NE(error.GetInnerException(), nullptr);
        ASSERT_NE(error.GetInnerException()->GetInnerException(), nullptr);
        EXPECT_EQ(typeid(*error.GetInnerException()->GetInnerException()), typeid(CKvException));
    }
}

// A class whose group type is out of range.
struct BrokenSchema {
    static constexpr const char* kElementName = "Broken";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(static_cast<kvd::XmlElementGroupType>(3), kvd::ElementType_Element,
                                                "Broken", "", false, false, -1, kv::Invalid, nullptr, false);
        meta.elements = MakeArray<CElementInfo>({});
        meta.attributes = MakeArray<CAttributeInfo>({});
    }
};

TEST(XmlGeneratedClassWrite, UnknownGroupTypeFails) {
    CTestClass<BrokenSchema> broken;
    broken.AddRef();
    try {
        WriteCompact(broken);
        ADD_FAILURE() << "no exception";
    } catch (const CKvException& error) {
        EXPECT_EQ(error.GetFullMessage(), "Failed to convert the element [Broken] to XML\nUnknown XML Group Type");
    }
}

}  // namespace
