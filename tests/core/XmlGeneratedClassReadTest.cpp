// XmlGeneratedClassReadTest.cpp - the reading half of the generated-class engine: nil, simple content, soft and hard
// failures of the three groups, wrapping.

#include "XmlGeneratedClassTestSupport.h"

using namespace kvenginetest;

namespace {

// A nillable class with i4 simple content (property 1), an attribute and a child.
template <bool Nillable>
struct MeasureSchema : NoNamespaces {
    static constexpr const char* kElementName = "Measure";
    static void Build(Metadata& meta) {
        meta = {new CParentElementInfo(kvd::GroupType_Sequence, kvd::ElementType_Element, "Measure", "", Nillable, true,
                                       1, kv::i4, nullptr, false),
                MakeArray<CElementInfo>(
                    {new kvd::CElementInfoSeqPrimOpt("note", "", 3, false, kv::string, nullptr, kPreserve, {})}),
                MakeArray<CAttributeInfo>({new kvd::CAttributeInfoPrimitive("unit", "", 2, true, kv::string, nullptr,
                                                                            kPreserve, {}, nullptr)})};
    }
};
using CMeasure = CNillableTestClass<MeasureSchema<true>>;

std::string MeasureText(const char* nil, const char* content) {
    return std::string("<Measure xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' unit='kg'") +
           (nil ? std::string(" xsi:nil='") + nil + "'" : "") + ">" + content + "</Measure>";
}

TEST(XmlGeneratedClassRead, ClassLevelNilIsHonouredBeforeTheContent) {
    Pinned<CMeasure> measure;
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
    const char* refused =
        "Failed to process the element [Measure]\nInvalid use of 'nil' attibute in non-nillable element [Measure]";
    Pinned<CTestClass<MeasureSchema<true>>> plain;  // no INillable
    EXPECT_EQ(ReadFailure(plain, MeasureText("true", "").c_str()), refused);
    Pinned<CNillableTestClass<MeasureSchema<false>>> rigid;  // INillable, but the descriptor says no
    EXPECT_EQ(ReadFailure(rigid, MeasureText("false", "1").c_str()), refused);
    EXPECT_EQ(ReadFailure(rigid, MeasureText(nullptr, "1").c_str()), "");
}

struct RawSchema : NoNamespaces {
    static constexpr const char* kElementName = "Raw";
    static void Build(Metadata& meta) {
        meta = {new CParentElementInfo(kvd::GroupType_Sequence, kvd::ElementType_Element, "Raw", "", false, false, 1,
                                       kv::i4, nullptr, true),
                MakeArray<CElementInfo>({}), MakeArray<CAttributeInfo>({})};
    }
};

TEST(XmlGeneratedClassRead, SimpleContentIsConvertedUntrimmedOrKeptRaw) {
    Pinned<CMeasure> measure;
    EXPECT_EQ(ReadFailure(measure, MeasureText(nullptr, "abc").c_str()),
              "Failed to process the element [Measure]\nThe value [abc] can not be converted to a i4");
    // Whitespace rule "none": a trailing blank reaches the conversion.
    EXPECT_EQ(ReadFailure(measure, MeasureText(nullptr, "5 ").c_str()),
              "Failed to process the element [Measure]\nThe value [5 ] can not be converted to a i4");

    Pinned<CTestClass<RawSchema>> raw;
    raw.FromXml("<Raw> not a number </Raw>");
    EXPECT_EQ(raw.Get(1).GetString(), " not a number ");
}

// A pseudo-element sequence with an optional and a mandatory member.
struct PseudoSequenceSchema : NoNamespaces {
    static constexpr const char* kElementName = "Group";
    static void Build(Metadata& meta) {
        meta = {Parent(kvd::GroupType_Sequence, "Group", kvd::ElementType_PseudoElement),
                MakeArray<CElementInfo>(
                    {I4<kvd::CElementInfoSeqPrimOpt>("a", 1), I4<kvd::CElementInfoSeqPrimMnd>("b", 2)}),
                MakeArray<CAttributeInfo>({})};
    }
};

TEST(XmlGeneratedClassRead, PseudoSequenceHandsBackWhatItDidNotConsume) {
    ParsedDocument doc("<r><a>1</a><b>2</b><c/><d/></r>");
    Pinned<CExposed<CTestClass<PseudoSequenceSchema>>> group;
    const CXmlSerializationContext context;
    CXmlElement* rest =
        group.ProcessElementSeqFromXml(context, doc.Root(), doc.First(), kvd::ElementType_PseudoElement);
    ASSERT_NE(rest, nullptr);
    EXPECT_EQ(rest->GetLocalName(), "c");
    EXPECT_EQ(group.Get(2).GetI4(), 2);

    // A missing mandatory member is a soft failure: the start comes back, even after a consumed member.
    EXPECT_EQ(group.ProcessElementSeqFromXml(context, doc.Root(), rest, kvd::ElementType_PseudoElement), rest);
    ParsedDocument partial("<r><a>1</a><c/></r>");
    EXPECT_EQ(group.ProcessElementSeqFromXml(context, partial.Root(), partial.First(), kvd::ElementType_PseudoElement),
              partial.First());
    EXPECT_EQ(group.ProcessElementSeqFromXml(context, doc.Root(), nullptr, kvd::ElementType_PseudoElement), nullptr);
}

// An all-group member whose Validate reports absence instead of throwing.
class CFoundOnlyInfo : public kvd::CElementInfoAllPrimMnd {
public:
    using CElementInfoAllPrimMnd::CElementInfoAllPrimMnd;
    bool Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool found, bool) const override {
        return found;
    }
};

struct SoftAllSchema : NoNamespaces {
    static constexpr const char* kElementName = "Soft";
    static void Build(Metadata& meta) {
        meta = {Parent(kvd::GroupType_All, "Soft", kvd::ElementType_PseudoElement),
                MakeArray<CElementInfo>({I4<kvd::CElementInfoAllPrimOpt>("a", 1), I4<CFoundOnlyInfo>("b", 2)}),
                MakeArray<CAttributeInfo>({})};
    }
};

TEST(XmlGeneratedClassRead, AllGroupFailsSoftlyWhenValidateSaysNo) {
    Pinned<CExposed<CTestClass<SoftAllSchema>>> soft;
    const CXmlSerializationContext context;
    ParsedDocument doc("<r><a>1</a><x/></r>");
    EXPECT_EQ(soft.ProcessElementAllFromXml(context, doc.Root(), doc.First(), kvd::ElementType_PseudoElement),
              doc.First());
    ParsedDocument complete("<r><b>2</b><a>1</a><x/></r>");
    CXmlElement* rest =
        soft.ProcessElementAllFromXml(context, complete.Root(), complete.First(), kvd::ElementType_PseudoElement);
    ASSERT_NE(rest, nullptr);
    EXPECT_EQ(rest->GetLocalName(), "x");  // a pseudo element leaves the rest to its parent
}

TEST(XmlGeneratedClassRead, EmptyChoiceFailsUnlessAMemberIsOptionalOrItIsIgnored) {
    const char* noChoice =
        "Failed to process the element [Pick]\n"
        "No child elements within the element [Pick] were populated. The element represents a choice, so one and only "
        "one element should be populated. The element contained no sutable child elements";
    Pinned<CTestClass<ChoiceSchema<false>>> pick;
    EXPECT_EQ(ReadFailure(pick, "<Pick/>"), noChoice);
    EXPECT_EQ(ReadFailure(pick, "<Pick><x/></Pick>"), noChoice);
    CXmlSerializationContext skipping;
    skipping.SetIgnoreUnknownElements(true);
    EXPECT_EQ(ReadFailure(pick, "<Pick><x/></Pick>", skipping), noChoice);

    CXmlSerializationContext lenient;
    lenient.SetIgnoreMissingChoice(true);
    EXPECT_EQ(ReadFailure(pick, "<Pick/>", lenient), "");
    EXPECT_EQ(ReadFailure(pick, "<Pick><x/></Pick>", lenient),
              "Failed to process the element [Pick]\n"
              "Failed read all the elements held within the element [Pick]. The unexpected element [x] remains un "
              "processed");

    Pinned<CTestClass<ChoiceSchema<true>>> optional;
    EXPECT_EQ(ReadFailure(optional, "<Pick/>"), "");
}

TEST(XmlGeneratedClassRead, PseudoChoiceWithoutAMemberLeavesTheCursorToItsParent) {
    ParsedDocument doc("<r><x/><b>2</b><y/></r>");
    Pinned<CExposed<CTestClass<ChoiceSchema<false, kvd::ElementType_PseudoElement>>>> pick;
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
    auto* list = pick.Get(2).GetXmlCollection<kv::Ci4Col>();
    EXPECT_EQ(list->Item(0), 2);
    list->Release();
}

TEST(XmlGeneratedClassRead, NestedFailuresChainOneMessagePerLevel) {
    Pinned<COuter> outer;
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

TEST(XmlGeneratedClassRead, UnknownGroupTypeFails) {
    Pinned<CTestClass<BrokenSchema>> broken;
    EXPECT_EQ(ReadFailure(broken, "<Broken/>"), "Failed to process the element [Broken]\nUnknow Group Type");
}

}  // namespace
