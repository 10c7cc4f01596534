// ElementInfoMemberTest.cpp - the single-valued element descriptors as one table of (group, kind, cardinality):
// writing, the read cursor protocol, all-group validation, nil, and what only class members do.
#include "metadata/GeneratedTestClasses.h"

using namespace kvtest;
using namespace KvXmlLib10;
using namespace KvXmlLib10Data;

namespace {

enum Kind { Prim, Enum, Cls, AbsCls };
enum Card { Mnd, Opt };

template <typename T>
CSmartPtr<CXmlObjectBase> MakeClass(int32_t, const char* name) {
    T* object = new T;
    object->SetElementName(name);
    return object;
}
// Places xsi:type 'Leaf' only; anything else has no class.
template <typename T>
CSmartPtr<CXmlObjectBase> MakeByType(CXmlElement* element) {
    if (CClassfactoryBase::GetElementType(element) != "Leaf") return nullptr;
    return new T;
}

struct Row {
    const char* name;
    Group group;
    Kind kind;
    Card card;
    std::function<CElementInfo*(bool nillable, XmlElementType childType)> make;

    bool IsClass() const { return kind == Cls || kind == AbsCls; }
    bool Unreadable() const { return kind == AbsCls && group == All; }
};

template <typename T>
Row PrimRow(const char* name, Group g, Card c) {
    return {name, g, Prim, c, [](bool nillable, XmlElementType) -> CElementInfo* {
                return new T("n", "", 1, nillable, i4, nullptr, kCollapse, {});
            }};
}
template <typename T>
Row EnumRow(const char* name, Group g, Card c) {
    return {name, g, Enum, c, [](bool nillable, XmlElementType) -> CElementInfo* {
                return new T("n", "", 1, nillable, ColorToString, ColorFromString);
            }};
}
template <typename T>
Row ClsRow(const char* name, Group g) {
    return {name, g, Cls, Opt, [](bool, XmlElementType type) -> CElementInfo* {
                return type == ElementType_Element ? new T("n", "", 1, type, MakeClass<CLeaf>, 7)
                                                   : new T("n", "", 1, type, MakeClass<CPseudoLeaf>, 7);
            }};
}
template <typename T>
Row ClsMndRow(const char* name, Group g) {
    return {name, g, Cls, Mnd,
            [](bool, XmlElementType type) -> CElementInfo* { return new T("n", "", 1, type, nullptr, 7, true); }};
}
template <typename T, typename... Extra>
Row AbsRow(const char* name, Group g, Card c, Extra... extra) {
    return {name, g, AbsCls, c, [=](bool, XmlElementType type) -> CElementInfo* {
                return type == ElementType_Element ? new T("n", "", 1, type, MakeByType<CLeaf>, extra...)
                                                   : new T("n", "", 1, type, MakeByType<CPseudoLeaf>, extra...);
            }};
}

const std::vector<Row>& Rows() {
    static const std::vector<Row> rows = {
        PrimRow<CElementInfoSeqPrimMnd>("SeqPrimMnd", Seq, Mnd),
        PrimRow<CElementInfoSeqPrimOpt>("SeqPrimOpt", Seq, Opt),
        PrimRow<CElementInfoAllPrimMnd>("AllPrimMnd", All, Mnd),
        PrimRow<CElementInfoAllPrimOpt>("AllPrimOpt", All, Opt),
        PrimRow<CElementInfoChoicePrimOpt>("ChoicePrimOpt", Choice, Opt),
        EnumRow<CElementInfoSeqEnumMnd>("SeqEnumMnd", Seq, Mnd),
        EnumRow<CElementInfoSeqEnumOpt>("SeqEnumOpt", Seq, Opt),
        EnumRow<CElementInfoAllEnumMnd>("AllEnumMnd", All, Mnd),
        EnumRow<CElementInfoAllEnumOpt>("AllEnumOpt", All, Opt),
        EnumRow<CElementInfoChoiceEnumOpt>("ChoiceEnumOpt", Choice, Opt),
        ClsMndRow<CElementInfoSeqClsMnd>("SeqClsMnd", Seq), ClsRow<CElementInfoSeqClsOpt>("SeqClsOpt", Seq),
        ClsMndRow<CElementInfoAllClsMnd>("AllClsMnd", All), ClsRow<CElementInfoAllClsOpt>("AllClsOpt", All),
        ClsRow<CElementInfoChoiceClsOpt>("ChoiceClsOpt", Choice),
        AbsRow<CElementInfoSeqAbsClsMnd>("SeqAbsClsMnd", Seq, Mnd),
        AbsRow<CElementInfoSeqAbsClsOpt>("SeqAbsClsOpt", Seq, Opt),
        AbsRow<CElementInfoAllAbsClsMnd>("AllAbsClsMnd", All, Mnd, 3),
        AbsRow<CElementInfoAllAbsClsOpt>("AllAbsClsOpt", All, Opt),
        AbsRow<CElementInfoChoiceAbsClsOpt>("ChoiceAbsClsOpt", Choice, Opt),
    };
    return rows;
}

std::unique_ptr<CElementInfo> Make(const Row& row, bool nillable = false,
                                   XmlElementType childType = ElementType_Element) {
    return std::unique_ptr<CElementInfo>(row.make(nillable, childType));
}

// A mandatory class member reads into the child its parent created in advance.
void Prepare(const Row& row, CHolder& holder, bool pseudo = false) {
    if (row.kind != Cls || row.card != Mnd) return;
    KvVariant child;
    if (pseudo)
        child.SetXmlObject(new CPseudoLeaf);
    else
        child.SetXmlObject(new CLeaf);
    holder.Set(1, child);
}

// Property 1 as the text the row's kind stores: "7" for every kind read from its sample.
std::string Stored(const Row& row, const CHolder& holder) {
    const KvVariant value = holder.Get(1);
    if (!value.IsValid()) return "unset";
    if (value.IsNil()) return "nil";
    if (row.kind == Prim) return std::to_string(value.GetI4());
    if (row.kind == Enum) return value.GetI4() == 1 ? "7" : "enum " + std::to_string(value.GetI4());
    CSmartPtr<CXmlObjectBase> object;
    object = value.GetXmlObject();
    object->Release();  // the smart pointer holds the reference now
    KvVariant v;
    if (auto* leaf = dynamic_cast<CLeaf*>(object.get())) v = leaf->Get(1);
    if (auto* leaf = dynamic_cast<CPseudoLeaf*>(object.get())) v = leaf->Get(1);
    return v.IsValid() ? v.ToString(nullptr) : "";
}

// One present element of the row's kind, worth "7".
std::string Sample(const Row& row) {
    if (row.kind == Prim) return "<n>7</n>";
    if (row.kind == Enum) return "<n>green</n>";
    return "<n xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:type='Leaf'><v>7</v></n>";
}

const char kNotImplemented[] = ", has not been implemented fully, contact the maintainers of your kvxml build";

bool Read(CElementInfo& info, const CXmlSerializationContext& context, CHolder& holder, const ParsedDocument& doc,
          CXmlElement*& cursor, XmlElementType type = ElementType_Element) {
    return info.ElementFromXml(context, &holder, doc.Root(), &cursor, "", type);
}

TEST(ElementInfoMemberWrite, UnsetWritesNothingAndAValueWritesOneElement) {
    const CXmlSerializationContext context;
    for (const Row& row : Rows()) {
        auto info = Make(row);
        CHolder holder;
        RecordingWriter unset, set;
        EXPECT_FALSE(info->ElementToXml(context, &holder, &unset)) << row.name;  // even when mandatory
        EXPECT_EQ(unset.log, "") << row.name;
        KvVariant value;
        if (row.IsClass()) {
            CLeaf* leaf = new CLeaf;
            leaf->SetI4(1, 7);
            value.SetXmlObject(leaf);
        } else {
            value.SetI4(row.kind == Prim ? 7 : 1);
        }
        holder.Set(1, value);
        EXPECT_TRUE(info->ElementToXml(context, &holder, &set)) << row.name;
        const char* expected = row.kind == Prim   ? "<n>text(7,5)</>"
                               : row.kind == Enum ? "<n>text(green,23)</>"
                                                  : "<n><v>text(7,5)</></>";
        EXPECT_EQ(set.log, expected) << row.name;
    }
}

TEST(ElementInfoMemberRead, ReadsStoresAndAdvances) {
    const CXmlSerializationContext context;
    for (const Row& row : Rows()) {
        ParsedDocument doc(("<r>" + Sample(row) + "<z/></r>").c_str());
        auto info = Make(row);
        CHolder holder;
        Prepare(row, holder);
        CXmlElement* cursor = doc.First();
        if (row.Unreadable()) {
            EXPECT_KV_THROW(Read(*info, context, holder, doc, cursor), CKvException,
                            std::string("CElementInfo") + row.name + "::ElementFromXml" + kNotImplemented);
            continue;
        }
        EXPECT_TRUE(Read(*info, context, holder, doc, cursor)) << row.name;
        EXPECT_EQ(Stored(row, holder), "7") << row.name;
        ASSERT_NE(cursor, nullptr);
        EXPECT_EQ(cursor->GetLocalName(), "z") << row.name;
    }
}

// A foreign element under the cursor, and the end of the children: optional
// sequence members let the group go on, all-group and choice members decline,
// mandatory sequence members fail (or, inside a pseudo element, decline).
// (An abstract member also misses its own element when no class fits its xsi:type, or it has none.)
TEST(ElementInfoMemberRead, MissFollowsGroupAndCardinality) {
    ParsedDocument doc("<r xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'><x/><n xsi:type='Unknown'><v>7</v></n>"
                       "<n/></r>");
    CXmlElement* unknownType = doc.First()->GetNextSiblingElement();
    const CXmlSerializationContext context;
    for (const Row& row : Rows()) {
        if (row.Unreadable()) continue;
        auto info = Make(row);
        CHolder holder;
        Prepare(row, holder);
        std::vector<CXmlElement*> starts = {doc.First(), nullptr};
        if (row.kind == AbsCls) starts.insert(starts.end(), {unknownType, unknownType->GetNextSiblingElement()});
        for (CXmlElement* start : starts) {
            CXmlElement* cursor = start;
            if (row.group == Seq && row.card == Mnd) {
                const std::string message = row.kind == AbsCls
                                                ? "Failed to find a suitable substitution element for [n]"
                                                : "Failed to find a required element [n]";
                EXPECT_KV_THROW(Read(*info, context, holder, doc, cursor), CKvValidationException, message);
                EXPECT_FALSE(Read(*info, context, holder, doc, cursor, ElementType_PseudoElement)) << row.name;
            } else {
                EXPECT_EQ(Read(*info, context, holder, doc, cursor), row.group == Seq) << row.name;
            }
            EXPECT_EQ(cursor, start) << row.name;
            EXPECT_EQ(Stored(row, holder), row.kind == Cls && row.card == Mnd ? "" : "unset") << row.name;
        }
    }
}

TEST(ElementInfoMemberRead, MandatorySequenceMembersSearchByTheContextsOptions) {
    ParsedDocument doc("<r><x/><y/><n>7</n><z/></r>");
    CXmlSerializationContext skipping, lenient;
    skipping.SetIgnoreUnknownElements(true);
    lenient.SetIgnoreMissingMandatoryElements(true);
    for (const Row& row : Rows()) {
        if (row.group != Seq || row.card != Mnd || row.kind == AbsCls) continue;  // abstract ones ignore options
        auto info = Make(row);
        CHolder holder;
        Prepare(row, holder);
        CXmlElement* cursor = doc.First();
        EXPECT_TRUE(Read(*info, lenient, holder, doc, cursor)) << row.name;  // accepted where it stands
        EXPECT_EQ(cursor, doc.First());
        EXPECT_TRUE(Read(*info, skipping, holder, doc, cursor)) << row.name;
        EXPECT_EQ(cursor->GetLocalName(), "z");
        EXPECT_EQ(Stored(row, holder), row.kind == Enum ? "enum -1" : row.kind == Prim ? "7" : "");
        // Skipping to the end is still a missing element, or in a pseudo element no match.
        CXmlElement* last = cursor;
        EXPECT_KV_THROW(Read(*info, skipping, holder, doc, cursor), CKvValidationException,
                        "Failed to find a required element [n]");
        cursor = last;
        EXPECT_FALSE(Read(*info, skipping, holder, doc, cursor, ElementType_PseudoElement));
    }
}

TEST(ElementInfoMemberValidate, OnlyAllGroupMandatoryMembersReportMissing) {
    CHolder holder;
    const CXmlSerializationContext context;
    for (const Row& row : Rows()) {
        auto info = Make(row);
        if (row.group != All) {
            EXPECT_KV_THROW(info->Validate(context, &holder, true, true), CKvException,
                            "Not implemented, should never be called");
            continue;
        }
        EXPECT_TRUE(info->Validate(context, &holder, true, true)) << row.name;
        // An unchecked miss: a class member answers what it found.
        EXPECT_EQ(info->Validate(context, &holder, false, false), !(row.kind == Cls && row.card == Mnd)) << row.name;
        if (row.card == Opt)
            EXPECT_TRUE(info->Validate(context, &holder, false, true)) << row.name;
        else
            EXPECT_KV_THROW(info->Validate(context, &holder, false, true), CKvValidationException,
                            "Failed to find the mandatory element [n]");
    }
    // An own-element child whose content is not mandatory may stay empty; a pseudo child may not.
    CElementInfoAllClsMnd lax("n", "", 1, ElementType_Element, nullptr, 0, false);
    CElementInfoAllClsMnd pseudo("n", "", 1, ElementType_PseudoElement, nullptr, 0, false);
    EXPECT_TRUE(lax.Validate(context, &holder, false, true));
    EXPECT_KV_THROW(pseudo.Validate(context, &holder, false, true), CKvValidationException,
                    "Failed to find the mandatory element [n]");
}

TEST(ElementInfoMemberRead, NilAttributeRules) {
    struct Case { const char* nilValue; bool nillable; const char* error; bool expectNil; };  // a null error: reads
    const Case cases[] = {
        {"true", true, nullptr, true}, {"TRUE", true, nullptr, true}, {"1", true, nullptr, true},
        {"false", true, nullptr, false}, {"False", false, nullptr, false}, {"0", false, nullptr, false},
        {"", false, nullptr, false}, {"yes", true, "Unexpected Value [yes] for 'nil' Attribute found.", false},
        {"true", false, "Invalid use of 'nil' attibute in non-nillable element [n]", false},
        {"yes", false, "Invalid use of 'nil' attibute in non-nillable element [n]", false},
    };
    const CXmlSerializationContext context;
    for (const Case& c : cases) {
        for (const Row& row : Rows()) {
            if (row.IsClass()) continue;  // a class reads nil through its own engine
            // A nil element's text is never converted.
            const std::string text =
                std::string("<r xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'><n xsi:nil='") + c.nilValue +
                "'>" + (c.expectNil ? "not a number" : (row.kind == Prim ? "7" : "green")) + "</n></r>";
            ParsedDocument doc(text.c_str());
            auto info = Make(row, c.nillable);
            CHolder holder;
            CXmlElement* cursor = doc.First();
            if (c.error) {
                EXPECT_KV_THROW(Read(*info, context, holder, doc, cursor), CKvValidationException, c.error);
                EXPECT_EQ(cursor, doc.First());
                EXPECT_EQ(Stored(row, holder), "unset");
                continue;
            }
            EXPECT_TRUE(Read(*info, context, holder, doc, cursor));
            EXPECT_EQ(cursor, nullptr);
            EXPECT_EQ(Stored(row, holder), c.expectNil ? "nil" : "7") << row.name << " " << c.nilValue;
        }
    }
}

TEST(ElementInfoMemberWrite, NilIsWrittenWithoutFacetsAndViolationsWriteNothing) {
    const CPrimitiveRestrictions strict("[a-z]+", 3, -1, nullptr, nullptr, nullptr, nullptr, -1);
    const CXmlSerializationContext context;
    CElementInfoSeqPrimMnd text("n", "", 1, true, string, nullptr, kCollapse, strict);
    CElementInfoChoiceEnumOpt shade("n", "", 1, true, ColorToString, ColorFromString);
    CHolder holder;
    RecordingWriter nil, bad, unknownEnum;
    holder.SetNilValue(1);
    EXPECT_TRUE(text.ElementToXml(context, &holder, &nil));
    holder.SetString(1, "ab");
    EXPECT_KV_THROW(text.ElementToXml(context, &holder, &bad), CKvException, "Invalid Value for n [ab]");
    holder.SetI4(1, 42);  // the generated function knows no text for it
    EXPECT_TRUE(shade.ElementToXml(context, &holder, &unknownEnum));
    EXPECT_EQ(nil.log + "|" + bad.log + "|" + unknownEnum.log, "<n>@nil;</>||<n>text(,23)</>");

    KvVariant price;
    price.SetR8(1.5);
    holder.Set(1, price);
    CElementInfoSeqPrimMnd formatted("price", "urn:p", 1, false, r8, "%.2f", kCollapse, {});
    RecordingWriter writer;
    EXPECT_TRUE(formatted.ElementToXml(context, &holder, &writer));
    EXPECT_EQ(writer.log, "<{urn:p}price>text(1.50,12)</>");
}

TEST(ElementInfoMemberRead, ConversionFollowsKindAndWhitespaceRuleAndFailureStoresNothing) {
    ParsedDocument doc("<r><n>  a\tb  </n><m> -5 </m><n> green</n><n>12a</n></r>");
    CHolder holder;
    const CXmlSerializationContext context;
    CElementInfoSeqPrimMnd preserved("n", "", 1, false, string, nullptr, kPreserve, {});
    const CPrimitiveRestrictions ages(nullptr, -1, -1, "0", nullptr, nullptr, nullptr, -1);
    CElementInfoSeqPrimMnd collapsed("m", "", 2, false, i4, nullptr, kCollapse, ages);
    CElementInfoSeqEnumMnd shade("n", "", 3, false, ColorToString, ColorFromString);
    CElementInfoSeqPrimMnd number("n", "", 4, false, i4, nullptr, kCollapse, {});
    CXmlElement* cursor = doc.First();
    EXPECT_TRUE(Read(preserved, context, holder, doc, cursor));
    EXPECT_TRUE(Read(collapsed, context, holder, doc, cursor));
    EXPECT_TRUE(Read(shade, context, holder, doc, cursor));
    CXmlElement* last = cursor;
    EXPECT_KV_THROW(Read(number, context, holder, doc, cursor), CKvInvalidValueException,
                    "The value [12a] can not be converted to a i4");
    EXPECT_EQ(cursor, last);
    EXPECT_EQ(holder.Get(1).GetString(), "  a\tb  ");
    EXPECT_EQ(holder.Get(2).GetI4(), -5);  // facets are a writing matter
    EXPECT_EQ(holder.Get(3).GetI4(), -1);  // enumeration text is taken as it stands
    EXPECT_FALSE(holder.Has(4));
}

// Pseudo children read straight from the parent's children and are kept only
// when they consumed something; their attributes go onto the parent's element.
TEST(ElementInfoMemberClass, PseudoChildStoredOnlyWhenItConsumed) {
    ParsedDocument doc("<r><v>7</v><z/></r>");
    const CXmlSerializationContext context;
    for (const Row& row : Rows()) {
        if (!row.IsClass() || row.Unreadable()) continue;
        auto info = Make(row, false, ElementType_PseudoElement);
        CHolder holder;
        Prepare(row, holder, true);
        CXmlElement* cursor = doc.First()->GetNextSiblingElement();  // <z/>: nothing for the child
        const bool missOk = row.group == Seq && !(row.kind == AbsCls && row.card == Mnd);
        if (row.group == Seq && row.card == Mnd && row.kind == AbsCls)
            EXPECT_KV_THROW(Read(*info, context, holder, doc, cursor), CKvValidationException,
                            "Failed to find a suitable substitution element for [n]");
        else if (row.group == Seq && row.card == Mnd)
            EXPECT_KV_THROW(Read(*info, context, holder, doc, cursor), CKvValidationException,
                            "Failed to find a required element [n]");  // its content is mandatory
        else
            EXPECT_EQ(Read(*info, context, holder, doc, cursor), missOk) << row.name;
        EXPECT_EQ(cursor->GetLocalName(), "z") << row.name;
        if (row.card == Opt) {
            EXPECT_EQ(Stored(row, holder), "unset") << row.name;
        }

        cursor = doc.First();
        if (row.kind == AbsCls) continue;  // an abstract factory places no pseudo child without xsi:type
        EXPECT_TRUE(Read(*info, context, holder, doc, cursor)) << row.name;
        EXPECT_EQ(Stored(row, holder), "7") << row.name;
        EXPECT_EQ(cursor->GetLocalName(), "z") << row.name;

        KvVariant held = holder.Get(1);
        CXmlObjectBase* child = held.GetXmlObject();
        static_cast<CPseudoLeaf*>(child)->SetI4(2, 4);
        child->Release();
        RecordingWriter attributes, content;
        info->PseudoChildAttributeToXml(context, &holder, &attributes);
        info->ElementToXml(context, &holder, &content);
        EXPECT_EQ(attributes.log + "|" + content.log, "@x=4,5;|<v>text(7,5)</>") << row.name;
        RecordingWriter none;
        Make(row)->PseudoChildAttributeToXml(context, &holder, &none);
        EXPECT_EQ(none.log, "") << row.name;
    }
}

TEST(ElementInfoMemberClass, ChildReadFailureKeepsOnlyMandatoryChildren) {
    ParsedDocument doc("<r xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'><n xsi:type='Leaf'><v>x</v></n></r>");
    const CXmlSerializationContext context;
    for (const Row& row : Rows()) {
        if (!row.IsClass() || row.Unreadable()) continue;
        auto info = Make(row);
        CHolder holder;
        Prepare(row, holder);
        CXmlElement* cursor = doc.First();
        EXPECT_KV_THROW(Read(*info, context, holder, doc, cursor), CKvValidationException,
                        "Failed to process the element [n]");
        EXPECT_EQ(cursor, doc.First());
        EXPECT_EQ(holder.Has(1), row.card == Mnd) << row.name;
    }
}

}  // namespace
