// XmlGeneratedClassReadTest.cpp - the reading half of the generated-class engine: attributes, nil, the three groups, leftovers, wrapping.
#include <gtest/gtest.h>

#include "metadata/GeneratedTestClasses.h"
#include "support/KvTestSupport.h"

using namespace kvtest;
using KvXmlLib10::CKvException;
using KvXmlLib10::CKvValidationException;
namespace kv = KvXmlLib10;
namespace kvd = KvXmlLib10Data;

namespace {

// Reads text into object and returns the full message of the failure ("" when none).
template <typename T>
std::string ReadFailure(T& object, const char* text,
                        const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext) {
    try {
        object.FromXml(text, context);
    } catch (const CKvException& error) {
        EXPECT_EQ(typeid(error), typeid(CKvValidationException)) << error.GetMessage();
        return error.GetFullMessage();
    }
    return "";
}

struct PersonSchema {
    static constexpr const char* kElementName = "Person";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Sequence, kvd::ElementType_Element, "Person", "",
                                                false, true, -1, kv::Invalid, nullptr, false);
        meta.elements = MakeArray<CElementInfo>({
            new kvd::CElementInfoSeqPrimMnd("name", "", 1, false, kv::string, nullptr, kPreserve, {}),
            new kvd::CElementInfoSeqPrimOpt("age", "", 2, true, kv::i4, nullptr, kCollapse, {}),
            new kvd::CElementInfoSeqEnumOpt("color", "", 3, false, ColorToString, ColorFromString),
        });
        meta.attributes = MakeArray<CAttributeInfo>({
            new kvd::CAttributeInfoPrimitive("id", "", 10, false, kv::i4, nullptr, kCollapse, {}, nullptr),
            new kvd::CAttributeInfoPrimitive("lang", "", 11, true, kv::string, nullptr, kPreserve, {}, "en"),
        });
    }
};
using CPerson = CTestClass<PersonSchema>;

TEST(XmlGeneratedClassRead, RoundTripsAndStartsFromReset) {
    CPerson written;
    written.AddRef();
    written.SetI4(10, 7);
    written.SetString(1, "Ann Lee");
    written.SetI4(2, 30);
    written.SetI4(3, 1);

    CPerson read;
    read.AddRef();
    read.SetString(11, "left over");
    read.FromXml(written.ToXml().c_str());
    EXPECT_EQ(read.ResetCount(), 1);
    EXPECT_EQ(read.Get(10).GetI4(), 7);
    EXPECT_EQ(read.Get(1).GetString(), "Ann Lee");
    EXPECT_EQ(read.Get(2).GetI4(), 30);
    EXPECT_EQ(read.Get(3).GetI4(), 1);
    EXPECT_FALSE(read.Has(11));
    EXPECT_EQ(read.ToXml(), written.ToXml());
}

TEST(XmlGeneratedClassRead, AdoptsTheElementNameItWasReadUnder) {
    CPerson person;
    person.AddRef();
    person.FromXml("<Someone id='1'><name>x</name></Someone>");
    EXPECT_EQ(person.GetElementName(), "Someone");
}

TEST(XmlGeneratedClassRead, AttributesAreCheckedAgainstTheDescriptors) {
    CPerson person;
    person.AddRef();
    EXPECT_EQ(ReadFailure(person, "<Person id='1' foo='2'><name>x</name></Person>"),
              "Failed to process the element [Person]\nUnexpected Attribute [foo] found.");
    EXPECT_EQ(ReadFailure(person, "<Person lang='de'><name>x</name></Person>"),
              "Failed to process the element [Person]\nFailed to find the required Attribute [id]");
    EXPECT_EQ(ReadFailure(person, "<Person id='x'><name>x</name></Person>"),
              "Failed to process the element [Person]\nThe value [x] can not be converted to a i4");

    CXmlSerializationContext lenient;
    lenient.SetIgnoreUnknownAttributes(true);
    EXPECT_EQ(ReadFailure(person, "<Person id='1' foo='2'><name>x</name></Person>", lenient), "");
    EXPECT_EQ(person.Get(10).GetI4(), 1);

    // Schema-instance attributes other than nil are skipped.
    EXPECT_EQ(ReadFailure(person,
                          "<Person xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:type='PersonType' "
                          "xsi:schemaLocation='urn:x x.xsd' id='2'><name>x</name></Person>"),
              "");
    EXPECT_EQ(person.Get(10).GetI4(), 2);
}

struct MeasureSchema {
    static constexpr const char* kElementName = "Measure";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Sequence, kvd::ElementType_Element, "Measure", "",
                                                true, true, 1, kv::i4, nullptr, false);
        meta.elements = MakeArray<CElementInfo>(
            {new kvd::CElementInfoSeqPrimOpt("note", "", 3, false, kv::string, nullptr, kPreserve, {})});
        meta.attributes = MakeArray<CAttributeInfo>(
            {new kvd::CAttributeInfoPrimitive("unit", "", 2, true, kv::string, nullptr, kPreserve, {}, nullptr)});
    }
};
using CMeasure = CNillableTestClass<MeasureSchema>;

// Same shape, but the class descriptor says it is not nillable.
struct RigidMeasureSchema : MeasureSchema {
    static void Build(Metadata& meta) {
        MeasureSchema::Build(meta);
        delete meta.classInfo;
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Sequence, kvd::ElementType_Element, "Measure", "",
                                                false, true, 1, kv::i4, nullptr, false);
    }
};

const char kXsi[] = "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'";

std::string MeasureText(const char* nil, const char* content) {
    return std::string("<Measure ") + kXsi + " unit='kg'" + (nil ? std::string(" xsi:nil='") + nil + "'" : "") +
           ">" + content + "</Measure>";
}

TEST(XmlGeneratedClassRead, ClassLevelNilIsHonouredBeforeOtherSchemaAttributes) {
    CMeasure measure;
    measure.AddRef();
    for (const char* yes : {"true", "TRUE", "1"}) {
        EXPECT_EQ(ReadFailure(measure, MeasureText(yes, "<note>n</note>").c_str()), "") << yes;
        EXPECT_TRUE(measure.IsNil());
        EXPECT_FALSE(measure.Has(3));  // content is not read
        EXPECT_FALSE(measure.Has(1));
        EXPECT_EQ(measure.Get(2).GetString(), "kg");  // attributes are
    }
    for (const char* no : {"false", "False", "0"}) {
        EXPECT_EQ(ReadFailure(measure, MeasureText(no, "12<note>n</note>").c_str()), "") << no;
        EXPECT_FALSE(measure.IsNil());
        EXPECT_EQ(measure.Get(1).GetI4(), 12);
        EXPECT_EQ(measure.Get(3).GetString(), "n");
    }
    EXPECT_EQ(ReadFailure(measure, MeasureText("yes", "").c_str()),
              "Failed to process the element [Measure]\nUnexpected Value [yes] for 'nil' Attribute found.");

    // Not nillable: any nil attribute is refused, false included.
    CTestClass<MeasureSchema> plain;  // no INillable
    plain.AddRef();
    EXPECT_EQ(ReadFailure(plain, MeasureText("true", "").c_str()),
              "Failed to process the element [Measure]\n"
              "Invalid use of 'nil' attibute in non-nillable element [Measure]");
    CNillableTestClass<RigidMeasureSchema> rigid;  // INillable, but the descriptor says no
    rigid.AddRef();
    EXPECT_EQ(ReadFailure(rigid, MeasureText("false", "1").c_str()),
              "Failed to process the element [Measure]\n"
              "Invalid use of 'nil' attibute in non-nillable element [Measure]");
    EXPECT_EQ(ReadFailure(rigid, MeasureText(nullptr, "1").c_str()), "");
}

TEST(XmlGeneratedClassRead, SimpleContentConvertedOrRaw) {
    CMeasure measure;
    measure.AddRef();
    EXPECT_EQ(ReadFailure(measure, MeasureText(nullptr, "abc").c_str()),
              "Failed to process the element [Measure]\nThe value [abc] can not be converted to a i4");
    // Whitespace rule "none": a trailing blank reaches the conversion.
    EXPECT_EQ(ReadFailure(measure, MeasureText(nullptr, "5 ").c_str()),
              "Failed to process the element [Measure]\nThe value [5 ] can not be converted to a i4");
}

struct RawSchema {
    static constexpr const char* kElementName = "Raw";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Sequence, kvd::ElementType_Element, "Raw", "", false,
                                                false, 1, kv::i4, nullptr, true);
        meta.elements = MakeArray<CElementInfo>({});
        meta.attributes = MakeArray<CAttributeInfo>({});
    }
};

TEST(XmlGeneratedClassRead, RawSimpleContentIsKeptAsText) {
    CTestClass<RawSchema> raw;
    raw.AddRef();
    raw.FromXml("<Raw> not a number </Raw>");
    EXPECT_EQ(raw.Get(1).GetString(), " not a number ");
}

// ---- sequences ----

TEST(XmlGeneratedClassRead, SequenceLeftoverElementsFailUnlessIgnored) {
    CPerson person;
    person.AddRef();
    EXPECT_EQ(ReadFailure(person, "<Person id='1'><name>x</name><extra/></Person>"),
              "Failed to process the element [Person]\n"
              "Failed read all the elements held within the element [Person]. The unexpected element [extra] "
              "remains un processed");
    EXPECT_EQ(ReadFailure(person, "<Person id='1'><age>3</age></Person>"),
              "Failed to process the element [Person]\nFailed to find a required element [name]");

    CXmlSerializationContext skipping;
    skipping.SetIgnoreUnknownElements(true);
    EXPECT_EQ(ReadFailure(person, "<Person id='1'><x/><name>a</name><age>3</age><z/></Person>", skipping), "");
    EXPECT_EQ(person.Get(1).GetString(), "a");
    EXPECT_EQ(person.Get(2).GetI4(), 3);
    EXPECT_FALSE(person.Has(3));

    // After a skipped leftover, reading resumes at the last member that
    // consumed something: age reads again, then color.
    EXPECT_EQ(
        ReadFailure(person, "<Person id='1'><name>a</name><age>3</age><z/><age>4</age><color>red</color></Person>",
                    skipping),
        "");
    EXPECT_EQ(person.Get(2).GetI4(), 4);
    EXPECT_EQ(person.Get(3).GetI4(), 0);

    CXmlSerializationContext missingOk;
    missingOk.SetIgnoreMissingMandatoryElements(true);
    EXPECT_EQ(ReadFailure(person, "<Person id='1'><age>3</age></Person>", missingOk), "");
    EXPECT_FALSE(person.Has(1));
    EXPECT_EQ(person.Get(2).GetI4(), 3);
}

// A pseudo-element sequence with a mandatory and an optional member.
struct PseudoSequenceSchema {
    static constexpr const char* kElementName = "Group";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Sequence, kvd::ElementType_PseudoElement, "Group", "",
                                                false, false, -1, kv::Invalid, nullptr, false);
        meta.elements = MakeArray<CElementInfo>({
            new kvd::CElementInfoSeqPrimOpt("a", "", 1, false, kv::i4, nullptr, kCollapse, {}),
            new kvd::CElementInfoSeqPrimMnd("b", "", 2, false, kv::i4, nullptr, kCollapse, {}),
        });
        meta.attributes = MakeArray<CAttributeInfo>({});
    }
};

TEST(XmlGeneratedClassRead, PseudoSequenceHandsBackWhatItDidNotConsume) {
    ParsedDocument doc("<r><a>1</a><b>2</b><c/><d/></r>");
    CExposed<CTestClass<PseudoSequenceSchema>> group;
    group.AddRef();
    const CXmlSerializationContext context;
    CXmlElement* rest = group.ProcessElementSeqFromXml(context, doc.Root(), doc.First(), kvd::ElementType_PseudoElement);
    ASSERT_NE(rest, nullptr);
    EXPECT_EQ(rest->GetLocalName(), "c");
    EXPECT_EQ(group.Get(2).GetI4(), 2);

    // A missing mandatory member is a soft failure: the start comes back.
    CXmlElement* c = rest;
    EXPECT_EQ(group.ProcessElementSeqFromXml(context, doc.Root(), c, kvd::ElementType_PseudoElement), c);
    EXPECT_EQ(group.ProcessElementSeqFromXml(context, doc.Root(), nullptr, kvd::ElementType_PseudoElement), nullptr);
}

// ---- all groups ----

struct AllSchema {
    static constexpr const char* kElementName = "Bag";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(kvd::GroupType_All, kvd::ElementType_Element, "Bag", "", false,
                                                false, -1, kv::Invalid, nullptr, false);
        meta.elements = MakeArray<CElementInfo>({
            new kvd::CElementInfoAllPrimMnd("a", "", 1, false, kv::i4, nullptr, kCollapse, {}),
            new kvd::CElementInfoAllPrimOpt("b", "", 2, false, kv::i4, nullptr, kCollapse, {}),
            new kvd::CElementInfoAllEnumMnd("c", "", 3, false, ColorToString, ColorFromString),
        });
        meta.attributes = MakeArray<CAttributeInfo>({});
    }
};
using CBag = CTestClass<AllSchema>;

TEST(XmlGeneratedClassRead, AllGroupTakesChildrenInAnyOrder) {
    CBag bag;
    bag.AddRef();
    EXPECT_EQ(ReadFailure(bag, "<Bag><c>blue</c><b>2</b><a>1</a></Bag>"), "");
    EXPECT_EQ(bag.Get(1).GetI4(), 1);
    EXPECT_EQ(bag.Get(2).GetI4(), 2);
    EXPECT_EQ(bag.Get(3).GetI4(), 2);
    EXPECT_EQ(ReadFailure(bag, "<Bag><c>red</c><a>1</a></Bag>"), "");
    EXPECT_FALSE(bag.Has(2));
    EXPECT_EQ(WriteCompact(bag), "<Bag><a>1</a><c>red</c></Bag>");

    EXPECT_EQ(ReadFailure(bag, "<Bag><b>2</b><c>red</c></Bag>"),
              "Failed to process the element [Bag]\nFailed to find the mandatory element [a]");
    EXPECT_EQ(ReadFailure(bag, "<Bag><a>1</a><c>red</c><a>2</a></Bag>"),
              "Failed to process the element [Bag]\n"
              "Failed read all the elements held within the element [Bag]. The unexpected element [a] remains un "
              "processed");
    CXmlSerializationContext skipping;
    skipping.SetIgnoreUnknownElements(true);
    EXPECT_EQ(ReadFailure(bag, "<Bag><a>1</a><c>red</c><x/></Bag>", skipping), "");
}

// An all-group member whose Validate reports absence instead of throwing.
class CFoundOnlyInfo : public kvd::CElementInfoAllPrimMnd {
public:
    using CElementInfoAllPrimMnd::CElementInfoAllPrimMnd;
    bool Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool found, bool) const override {
        return found;
    }
};

struct SoftAllSchema {
    static constexpr const char* kElementName = "Soft";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(kvd::GroupType_All, kvd::ElementType_PseudoElement, "Soft", "", false,
                                                false, -1, kv::Invalid, nullptr, false);
        meta.elements = MakeArray<CElementInfo>({
            new kvd::CElementInfoAllPrimOpt("a", "", 1, false, kv::i4, nullptr, kCollapse, {}),
            new CFoundOnlyInfo("b", "", 2, false, kv::i4, nullptr, kCollapse, {}),
        });
        meta.attributes = MakeArray<CAttributeInfo>({});
    }
};

TEST(XmlGeneratedClassRead, AllGroupFailsSoftlyWhenValidateSaysNo) {
    ParsedDocument doc("<r><a>1</a><x/></r>");
    CExposed<CTestClass<SoftAllSchema>> soft;
    soft.AddRef();
    const CXmlSerializationContext context;
    EXPECT_EQ(soft.ProcessElementAllFromXml(context, doc.Root(), doc.First(), kvd::ElementType_PseudoElement),
              doc.First());
    ParsedDocument complete("<r><b>2</b><a>1</a><x/></r>");
    CXmlElement* rest =
        soft.ProcessElementAllFromXml(context, complete.Root(), complete.First(), kvd::ElementType_PseudoElement);
    ASSERT_NE(rest, nullptr);
    EXPECT_EQ(rest->GetLocalName(), "x");  // a pseudo element leaves the rest to its parent
}

// ---- choices ----

struct ChoiceSchema {
    static constexpr const char* kElementName = "Pick";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Choice, kvd::ElementType_Element, "Pick", "", false,
                                                false, -1, kv::Invalid, nullptr, false);
        meta.elements = MakeArray<CElementInfo>({
            new CRequiredChoiceInfo("a", "", 1, false, kv::i4, nullptr, kCollapse, {}),
            new CRequiredChoiceInfo("b", "", 2, false, kv::i4, nullptr, kCollapse, {}),
        });
        meta.attributes = MakeArray<CAttributeInfo>({});
    }
};
using CPick = CTestClass<ChoiceSchema>;

struct OptionalChoiceSchema : ChoiceSchema {
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Choice, kvd::ElementType_Element, "Pick", "", false,
                                                false, -1, kv::Invalid, nullptr, false);
        meta.elements = MakeArray<CElementInfo>({
            new CRequiredChoiceInfo("a", "", 1, false, kv::i4, nullptr, kCollapse, {}),
            new kvd::CElementInfoChoicePrimOpt("b", "", 2, false, kv::i4, nullptr, kCollapse, {}),
        });
        meta.attributes = MakeArray<CAttributeInfo>({});
    }
};

const char kNoChoice[] =
    "Failed to process the element [Pick]\n"
    "No child elements within the element [Pick] were populated. The element represents a choice, so one and only "
    "one element should be populated. The element contained no sutable child elements";

TEST(XmlGeneratedClassRead, ChoiceTakesTheFirstMatchingMember) {
    CPick pick;
    pick.AddRef();
    EXPECT_EQ(ReadFailure(pick, "<Pick><b>2</b></Pick>"), "");
    EXPECT_FALSE(pick.Has(1));
    EXPECT_EQ(pick.Get(2).GetI4(), 2);
    EXPECT_EQ(ReadFailure(pick, "<Pick><a>1</a><b>2</b></Pick>"),
              "Failed to process the element [Pick]\n"
              "Failed read all the elements held within the element [Pick]. The unexpected element [b] remains un "
              "processed");
    CXmlSerializationContext skipping;
    skipping.SetIgnoreUnknownElements(true);
    EXPECT_EQ(ReadFailure(pick, "<Pick><x/><y/><b>2</b><z/></Pick>", skipping), "");
    EXPECT_EQ(pick.Get(2).GetI4(), 2);
}

TEST(XmlGeneratedClassRead, EmptyChoiceFailsUnlessAMemberIsOptionalOrItIsIgnored) {
    CPick pick;
    pick.AddRef();
    EXPECT_EQ(ReadFailure(pick, "<Pick/>"), kNoChoice);
    EXPECT_EQ(ReadFailure(pick, "<Pick><x/></Pick>"), kNoChoice);
    CXmlSerializationContext skipping;
    skipping.SetIgnoreUnknownElements(true);
    EXPECT_EQ(ReadFailure(pick, "<Pick><x/></Pick>", skipping), kNoChoice);

    CXmlSerializationContext lenient;
    lenient.SetIgnoreMissingChoice(true);
    EXPECT_EQ(ReadFailure(pick, "<Pick/>", lenient), "");
    EXPECT_EQ(ReadFailure(pick, "<Pick><x/></Pick>", lenient),
              "Failed to process the element [Pick]\n"
              "Failed read all the elements held within the element [Pick]. The unexpected element [x] remains un "
              "processed");

    CTestClass<OptionalChoiceSchema> optional;
    optional.AddRef();
    EXPECT_EQ(ReadFailure(optional, "<Pick/>"), "");
}

struct PseudoChoiceSchema : ChoiceSchema {
    static void Build(Metadata& meta) {
        ChoiceSchema::Build(meta);
        delete meta.classInfo;
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Choice, kvd::ElementType_PseudoElement, "Pick", "",
                                                false, false, -1, kv::Invalid, nullptr, false);
    }
};

TEST(XmlGeneratedClassRead, PseudoChoiceWithoutAMemberLeavesTheCursorToItsParent) {
    ParsedDocument doc("<r><x/><b>2</b><y/></r>");
    CExposed<CTestClass<PseudoChoiceSchema>> pick;
    pick.AddRef();
    const CXmlSerializationContext strict;
    EXPECT_EQ(pick.ProcessElementChoiceFromXml(strict, doc.Root(), doc.First(), kvd::ElementType_PseudoElement, false),
              doc.First());
    CXmlSerializationContext skipping;
    skipping.SetIgnoreUnknownElements(true);
    EXPECT_EQ(
        pick.ProcessElementChoiceFromXml(skipping, doc.Root(), doc.First(), kvd::ElementType_PseudoElement, false),
        doc.First());
    CXmlElement* b = doc.First()->GetNextSiblingElement();
    CXmlElement* rest = pick.ProcessElementChoiceFromXml(strict, doc.Root(), b, kvd::ElementType_PseudoElement, false);
    ASSERT_NE(rest, nullptr);
    EXPECT_EQ(rest->GetLocalName(), "y");
    EXPECT_EQ(pick.Get(2).GetI4(), 2);
}

// ---- nesting ----

CXmlObjectBase* NewPerson() { return new CPerson; }

struct OuterSchema {
    static constexpr const char* kElementName = "Outer";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(kvd::GroupType_Sequence, kvd::ElementType_Element, "Outer", "", false,
                                                false, -1, kv::Invalid, nullptr, false);
        meta.elements = MakeArray<CElementInfo>({new CTestChildInfo("Person", "", 1, NewPerson)});
        meta.attributes = MakeArray<CAttributeInfo>({});
    }
};
using COuter = CTestClass<OuterSchema>;

TEST(XmlGeneratedClassRead, NestedFailuresChainOneMessagePerLevel) {
    COuter outer;
    outer.AddRef();
    EXPECT_EQ(ReadFailure(outer, "<Outer><Person id='1'><age>3</age></Person></Outer>"),
              "Failed to process the element [Outer]\n"
              "Failed to process the element [Person]\n"
              "Failed to find a required element [name]");
    EXPECT_EQ(ReadFailure(outer, "<Outer><Person id='1'><name>n</name></Person></Outer>"), "");
    CXmlObjectBase* child = outer.Get(1).GetXmlObject();
    ASSERT_NE(child, nullptr);
    EXPECT_EQ(static_cast<CPerson*>(child)->Get(1).GetString(), "n");
    child->Release();
}

struct BrokenSchema {
    static constexpr const char* kElementName = "Broken";
    static constexpr const char* kTargetNamespace = "";
    static constexpr const char* kTypeNamespace = "";
    static void Build(Metadata& meta) {
        meta.classInfo = new CParentElementInfo(static_cast<kvd::XmlElementGroupType>(-1), kvd::ElementType_Element,
                                                "Broken", "", false, false, -1, kv::Invalid, nullptr, false);
        meta.elements = MakeArray<CElementInfo>({});
        meta.attributes = MakeArray<CAttributeInfo>({});
    }
};

TEST(XmlGeneratedClassRead, UnknownGroupTypeFails) {
    CTestClass<BrokenSchema> broken;
    broken.AddRef();
    EXPECT_EQ(ReadFailure(broken, "<Broken/>"), "Failed to process the element [Broken]\nUnknow Group Type");
}

}  // namespace
