// ElementInfoPrimitiveTest.cpp - primitive and enumeration element descriptors: writing, nil, the read cursor protocol.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "metadata/GeneratedTestClasses.h"
#include "support/KvTestSupport.h"

using namespace kvtest;
using namespace KvXmlLib10;
using namespace KvXmlLib10Data;

namespace {

using Kinds = std::vector<std::unique_ptr<CElementInfo>>;

// One descriptor of each primitive class, all for property 1 named "n", in
// the order SeqMnd, SeqOpt, AllMnd, AllOpt, ChoiceOpt.
Kinds EveryPrimitiveKind(ItemType type, const CPrimitiveRestrictions& facets = {}, bool nillable = false) {
    Kinds kinds;
    kinds.emplace_back(new CElementInfoSeqPrimMnd("n", "", 1, nillable, type, nullptr, kCollapse, facets));
    kinds.emplace_back(new CElementInfoSeqPrimOpt("n", "", 1, nillable, type, nullptr, kCollapse, facets));
    kinds.emplace_back(new CElementInfoAllPrimMnd("n", "", 1, nillable, type, nullptr, kCollapse, facets));
    kinds.emplace_back(new CElementInfoAllPrimOpt("n", "", 1, nillable, type, nullptr, kCollapse, facets));
    kinds.emplace_back(new CElementInfoChoicePrimOpt("n", "", 1, nillable, type, nullptr, kCollapse, facets));
    return kinds;
}

// The same five kinds for the colour enumeration.
Kinds EveryEnumKind(bool nillable = false) {
    Kinds kinds;
    kinds.emplace_back(new CElementInfoSeqEnumMnd("n", "", 1, nillable, ColorToString, ColorFromString));
    kinds.emplace_back(new CElementInfoSeqEnumOpt("n", "", 1, nillable, ColorToString, ColorFromString));
    kinds.emplace_back(new CElementInfoAllEnumMnd("n", "", 1, nillable, ColorToString, ColorFromString));
    kinds.emplace_back(new CElementInfoAllEnumOpt("n", "", 1, nillable, ColorToString, ColorFromString));
    kinds.emplace_back(new CElementInfoChoiceEnumOpt("n", "", 1, nillable, ColorToString, ColorFromString));
    return kinds;
}

// Ten descriptors: the five i4 primitive kinds, then the five enumeration kinds.
Kinds EveryKind(bool nillable = false) {
    Kinds kinds = EveryPrimitiveKind(i4, {}, nillable);
    for (auto& kind : EveryEnumKind(nillable)) kinds.push_back(std::move(kind));
    return kinds;
}

bool Read(CElementInfo& info, const CXmlSerializationContext& context, CHolder& holder, const ParsedDocument& doc,
          CXmlElement*& cursor, XmlElementType type = ElementType_Element) {
    return info.ElementFromXml(context, &holder, doc.Root(), &cursor, "", type);
}

TEST(ElementInfoPrimitiveWrite, UnsetNilValueAndFacetViolation) {
    const CPrimitiveRestrictions strict("[a-z]+", 3, -1, nullptr, nullptr, nullptr, nullptr, -1);
    const CXmlSerializationContext context;
    for (const auto& info : EveryPrimitiveKind(string, strict, true)) {
        CHolder holder;
        RecordingWriter unset, nil, bad, good;
        EXPECT_FALSE(info->ElementToXml(context, &holder, &unset));  // even when mandatory
        holder.SetNilValue(1);
        EXPECT_TRUE(info->ElementToXml(context, &holder, &nil));  // facets are not checked for nil
        holder.SetString(1, "ab");
        EXPECT_KV_THROW(info->ElementToXml(context, &holder, &bad), CKvException, "Invalid Value for n [ab]");
        holder.SetString(1, "abc");
        EXPECT_TRUE(info->ElementToXml(context, &holder, &good));
        EXPECT_EQ(unset.log + "|" + nil.log + "|" + bad.log + "|" + good.log, "|<n>@nil;</>||<n>text(abc,23)</>");
    }
}

TEST(ElementInfoPrimitiveWrite, WritesTheVariantsOwnTypeWithTheNumberFormat) {
    CHolder holder;
    KvVariant value;
    value.SetR8(1.5);
    holder.Set(1, value);
    CElementInfoSeqPrimMnd formatted("price", "urn:p", 1, false, r8, "%.2f", kCollapse, {});
    RecordingWriter writer;
    EXPECT_TRUE(formatted.ElementToXml(CXmlSerializationContext(), &holder, &writer));
    EXPECT_EQ(writer.log, "<{urn:p}price>text(1.50,12)</>");
    holder.SetString(1, "a<b");
    RecordingWriter typed;
    EveryPrimitiveKind(i4)[1]->ElementToXml(CXmlSerializationContext(), &holder, &typed);
    EXPECT_EQ(typed.log, "<n>text(a<b,23)</>");
}

TEST(ElementInfoEnumerationWrite, WritesTheGeneratedTextAsAStringNilOrNothing) {
    const CXmlSerializationContext context;
    for (const auto& info : EveryEnumKind()) {
        EXPECT_FALSE(info->HasPrimitiveInfo());
        CHolder holder;
        RecordingWriter unset, blue, unknown, nil;
        EXPECT_FALSE(info->ElementToXml(context, &holder, &unset));
        holder.SetI4(1, 2);
        EXPECT_TRUE(info->ElementToXml(context, &holder, &blue));
        holder.SetI4(1, 42);  // the generated function knows no text for it
        EXPECT_TRUE(info->ElementToXml(context, &holder, &unknown));
        holder.SetNilValue(1);
        EXPECT_TRUE(info->ElementToXml(context, &holder, &nil));
        EXPECT_EQ(unset.log + "|" + blue.log + "|" + unknown.log + "|" + nil.log,
                  "|<n>text(blue,23)</>|<n>text(,23)</>|<n>@nil;</>");
    }
}

TEST(ElementInfoPrimitiveRead, SequenceMandatorySearchesByTheContextsOptions) {
    ParsedDocument doc("<r><x/><y/><n>2</n><z/></r>");
    const CXmlSerializationContext strict;
    CXmlSerializationContext skipping, lenient;
    skipping.SetIgnoreUnknownElements(true);
    lenient.SetIgnoreMissingMandatoryElements(true);
    auto kinds = EveryKind();
    for (CElementInfo* info : {kinds[0].get(), kinds[5].get()}) {
        CHolder holder;
        CXmlElement* cursor = doc.First();
        EXPECT_KV_THROW(Read(*info, strict, holder, doc, cursor), CKvValidationException,
                        "Failed to find a required element [n]");
        // Missing elements ignored: no match is accepted where it stands, also at the end.
        EXPECT_TRUE(Read(*info, lenient, holder, doc, cursor));
        EXPECT_EQ(cursor, doc.First());
        // In a pseudo element a miss is a plain no-match.
        EXPECT_FALSE(Read(*info, strict, holder, doc, cursor, ElementType_PseudoElement));
        EXPECT_EQ(cursor, doc.First());
        EXPECT_FALSE(holder.Has(1));

        EXPECT_TRUE(Read(*info, skipping, holder, doc, cursor));
        EXPECT_TRUE(holder.Has(1));
        ASSERT_NE(cursor, nullptr);
        EXPECT_EQ(cursor->GetLocalName(), "z");
        // Reaching the end is still a missing element, or in a pseudo element no match.
        CXmlElement* last = cursor;
        EXPECT_KV_THROW(Read(*info, skipping, holder, doc, cursor), CKvValidationException,
                        "Failed to find a required element [n]");
        cursor = last;
        EXPECT_FALSE(Read(*info, skipping, holder, doc, cursor, ElementType_PseudoElement));
        cursor = nullptr;
        EXPECT_TRUE(Read(*info, lenient, holder, doc, cursor));
    }
}

TEST(ElementInfoPrimitiveRead, NoMatchIsTrueForSequenceOptionalAndFalseForChoiceAndAll) {
    ParsedDocument doc("<r><x/><n>5</n></r>");
    const CXmlSerializationContext context;
    auto kinds = EveryKind();
    for (size_t k = 0; k < kinds.size(); ++k) {
        if (k % 5 == 0) continue;  // the mandatory sequence member searches instead (above)
        const bool onMiss = k % 5 == 1;
        CHolder holder;
        CXmlElement* cursor = doc.First();
        EXPECT_EQ(Read(*kinds[k], context, holder, doc, cursor), onMiss) << k;
        EXPECT_EQ(cursor, doc.First());
        cursor = nullptr;
        EXPECT_EQ(Read(*kinds[k], context, holder, doc, cursor), onMiss) << k;
        EXPECT_FALSE(holder.Has(1));
        cursor = doc.First()->GetNextSiblingElement();
        EXPECT_TRUE(Read(*kinds[k], context, holder, doc, cursor));
        EXPECT_EQ(cursor, nullptr);
        EXPECT_TRUE(holder.Has(1));
    }
}

TEST(ElementInfoPrimitiveRead, AllGroupValidateReportsOnlyMissingCheckedMandatoryMembers) {
    CHolder holder;
    const CXmlSerializationContext context;
    auto kinds = EveryKind();
    for (size_t mandatory : {2, 7}) {
        EXPECT_KV_THROW(kinds[mandatory]->Validate(context, &holder, false, true), CKvValidationException,
                        "Failed to find the mandatory element [n]");
        EXPECT_TRUE(kinds[mandatory]->Validate(context, &holder, false, false));
        EXPECT_TRUE(kinds[mandatory]->Validate(context, &holder, true, true));
        EXPECT_TRUE(kinds[mandatory + 1]->Validate(context, &holder, false, true));
        EXPECT_TRUE(kinds[mandatory + 1]->Validate(context, &holder, true, false));
    }
}

TEST(ElementInfoPrimitiveRead, NilAttributeRules) {
    struct Case {
        const char* nilValue;
        bool nillable;
        const char* error;  // null: reads
        bool expectNil;
    };
    const Case cases[] = {
        {"true", true, nullptr, true},   {"TRUE", true, nullptr, true},   {"1", true, nullptr, true},
        {"false", true, nullptr, false}, {"False", false, nullptr, false}, {"0", false, nullptr, false},
        {"", false, nullptr, false},
        {"yes", true, "Unexpected Value [yes] for 'nil' Attribute found.", false},
        {"true", false, "Invalid use of 'nil' attibute in non-nillable element [n]", false},
        {"yes", false, "Invalid use of 'nil' attibute in non-nillable element [n]", false},
    };
    const CXmlSerializationContext context;
    for (const Case& c : cases) {
        // A nil element's text is never converted.
        const std::string text = std::string("<r xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'><n xsi:nil='") +
                                 c.nilValue + "'>" + (c.expectNil ? "not a number" : "7") + "</n></r>";
        ParsedDocument doc(text.c_str());
        auto kinds = EveryKind(c.nillable);
        for (size_t k = 0; k < kinds.size(); ++k) {
            CHolder holder;
            CXmlElement* cursor = doc.First();
            if (c.error) {
                EXPECT_KV_THROW(Read(*kinds[k], context, holder, doc, cursor), CKvValidationException, c.error);
                EXPECT_EQ(cursor, doc.First());
                EXPECT_FALSE(holder.Has(1));
                continue;
            }
            EXPECT_TRUE(Read(*kinds[k], context, holder, doc, cursor));
            EXPECT_EQ(cursor, nullptr);
            EXPECT_EQ(holder.Get(1).IsNil(), c.expectNil) << c.nilValue;
            if (!c.expectNil) {
                EXPECT_EQ(holder.Get(1).GetI4(), k < 5 ? 7 : -1);
            }
        }
    }
}

TEST(ElementInfoPrimitiveRead, ConversionFailureStoresNothingAndKeepsTheCursor) {
    ParsedDocument doc("<r><n>12a</n></r>");
    CHolder holder;
    for (const auto& info : EveryPrimitiveKind(i4)) {
        CXmlElement* cursor = doc.First();
        EXPECT_KV_THROW(Read(*info, CXmlSerializationContext(), holder, doc, cursor), CKvInvalidValueException,
                        "The value [12a] can not be converted to a i4");
        EXPECT_EQ(cursor, doc.First());
        EXPECT_FALSE(holder.Has(1));
    }
}

TEST(ElementInfoPrimitiveRead, AppliesTheWhitespaceRuleAndNoFacets) {
    ParsedDocument doc("<r><n>  a\tb  </n><m> -5 </m></r>");
    CHolder holder;
    const CXmlSerializationContext context;
    CElementInfoSeqPrimMnd preserved("n", "", 1, false, string, nullptr, kPreserve, {});
    const CPrimitiveRestrictions ages(nullptr, -1, -1, "0", nullptr, nullptr, nullptr, -1);
    CElementInfoSeqPrimMnd collapsed("m", "", 2, false, i4, nullptr, kCollapse, ages);
    CXmlElement* cursor = doc.First();
    EXPECT_TRUE(Read(preserved, context, holder, doc, cursor));
    EXPECT_TRUE(Read(collapsed, context, holder, doc, cursor));
    EXPECT_EQ(holder.Get(1).GetString(), "  a\tb  ");
    EXPECT_EQ(holder.Get(2).GetI4(), -5);  // facets are a writing matter
}

TEST(ElementInfoEnumerationRead, ConvertsTheTextAsItStands) {
    ParsedDocument doc(
        "<r xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'><n>green</n><n> green</n><n>mauve</n>"
        "<n xsi:nil='TRUE'>red</n></r>");
    for (const auto& info : EveryEnumKind(true)) {
        CHolder holder;
        CXmlElement* cursor = doc.First();
        for (int32_t value : {1, -1, -1}) {
            EXPECT_TRUE(Read(*info, CXmlSerializationContext(), holder, doc, cursor));
            EXPECT_EQ(holder.Get(1).GetI4(), value);
        }
        EXPECT_TRUE(Read(*info, CXmlSerializationContext(), holder, doc, cursor));
        EXPECT_TRUE(holder.Get(1).IsNil());
        EXPECT_EQ(cursor, nullptr);
    }
}

}  // namespace
