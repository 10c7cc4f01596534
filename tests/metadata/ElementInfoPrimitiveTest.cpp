// ElementInfoPrimitiveTest.cpp - primitive element descriptors: the shared writer, nil, the read cursor protocol of each group.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "metadata/GeneratedTestClasses.h"
#include "support/KvTestSupport.h"

using namespace kvtest;
using KvXmlLib10::CKvException;
using KvXmlLib10::CKvInvalidValueException;
using KvXmlLib10::CKvValidationException;
namespace kv = KvXmlLib10;
namespace kvd = KvXmlLib10Data;

namespace {

const char kXsi[] = "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'";

// One descriptor of each primitive class, all for property 1 named "n".
std::vector<std::unique_ptr<CElementInfo>> EveryPrimitiveKind(ItemType type, const CPrimitiveRestrictions& facets,
                                                              bool nillable = false) {
    std::vector<std::unique_ptr<CElementInfo>> kinds;
    kinds.emplace_back(new kvd::CElementInfoSeqPrimMnd("n", "", 1, nillable, type, nullptr, kCollapse, facets));
    kinds.emplace_back(new kvd::CElementInfoSeqPrimOpt("n", "", 1, nillable, type, nullptr, kCollapse, facets));
    kinds.emplace_back(new kvd::CElementInfoAllPrimMnd("n", "", 1, nillable, type, nullptr, kCollapse, facets));
    kinds.emplace_back(new kvd::CElementInfoAllPrimOpt("n", "", 1, nillable, type, nullptr, kCollapse, facets));
    kinds.emplace_back(new kvd::CElementInfoChoicePrimOpt("n", "", 1, nillable, type, nullptr, kCollapse, facets));
    return kinds;
}

TEST(ElementInfoPrimitiveWrite, UnsetWritesNothingEvenWhenMandatory) {
    CHolder holder;
    for (const auto& info : EveryPrimitiveKind(kv::i4, {})) {
        RecordingWriter writer;
        EXPECT_FALSE(info->ElementToXml(CXmlSerializationContext(), &holder, &writer));
        EXPECT_EQ(writer.log, "");
    }
}

TEST(ElementInfoPrimitiveWrite, WritesTextWithTheVariantsTypeAndFormat) {
    CHolder holder;
    KvVariant value;
    value.SetR8(1.5);
    holder.Set(1, value);
    kvd::CElementInfoSeqPrimMnd formatted("price", "urn:p", 1, false, kv::r8, "%.2f", kCollapse, {});
    RecordingWriter writer;
    EXPECT_TRUE(formatted.ElementToXml(CXmlSerializationContext(), &holder, &writer));
    EXPECT_EQ(writer.log, "<{urn:p}price>text(1.50,12)</>");

    // The item type written is the value's own, not the descriptor's.
    holder.SetString(1, "a<b");
    for (const auto& info : EveryPrimitiveKind(kv::i4, {})) {
        WriterProbe probe;
        EXPECT_TRUE(info->ElementToXml(CXmlSerializationContext(), &holder, probe.get()));
        EXPECT_EQ(probe.Text(), "<n>a&lt;b</n>");
    }
    RecordingWriter typed;
    kvd::CElementInfoSeqPrimOpt mismatched("n", "", 1, false, kv::i4, nullptr, kCollapse, {});
    mismatched.ElementToXml(CXmlSerializationContext(), &holder, &typed);
    EXPECT_EQ(typed.log, "<n>text(a<b,23)</>");
}

TEST(ElementInfoPrimitiveWrite, NilIsAnEmptyElementAndSkipsFacets) {
    CHolder holder;
    holder.SetNilValue(1);
    CPrimitiveRestrictions strict;
    strict.minLength = 3;
    strict.pattern = "[a-z]+";
    for (const auto& info : EveryPrimitiveKind(kv::string, strict, true)) {
        RecordingWriter writer;
        EXPECT_TRUE(info->ElementToXml(CXmlSerializationContext(), &holder, &writer));
        EXPECT_EQ(writer.log, "<n>@nil;</>");
    }
    WriterProbe probe;
    kvd::CElementInfoSeqPrimOpt info("n", "", 1, true, kv::string, nullptr, kPreserve, strict);
    info.ElementToXml(CXmlSerializationContext(), &holder, probe.get());
    EXPECT_EQ(probe.Text(), "<n xmlns:AA=\"http://www.w3.org/2001/XMLSchema-instance\" AA:nil=\"true\"/>");
}

TEST(ElementInfoPrimitiveWrite, FacetViolationLeavesNothingWritten) {
    CHolder holder;
    holder.SetI4(1, -1);
    CPrimitiveRestrictions ages;
    ages.minInclusive = "0";
    for (const auto& info : EveryPrimitiveKind(kv::i4, ages)) {
        WriterProbe probe;
        probe.get()->WriteStartElement("r", "");
        EXPECT_KV_THROW(info->ElementToXml(CXmlSerializationContext(), &holder, probe.get()), CKvException,
                        "Invalid Value for n [-1]");
        probe.get()->WriteEndElement();
        EXPECT_EQ(probe.Text(), "<r/>");
    }
}

// ---- reading ----

TEST(ElementInfoPrimitiveRead, SequenceMandatorySearchesPastForeignElementsWhenAllowed) {
    ParsedDocument doc("<r><x/><y/><n> 12 </n><z/></r>");
    kvd::CElementInfoSeqPrimMnd info("n", "", 1, false, kv::i4, nullptr, kCollapse, {});
    CHolder holder;

    CXmlElement* cursor = doc.First();
    const CXmlSerializationContext strict;
    EXPECT_KV_THROW(info.ElementFromXml(strict, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element),
                    CKvValidationException, "Failed to find a required element [n]");
    EXPECT_EQ(cursor, doc.First());
    EXPECT_FALSE(holder.Has(1));

    CXmlSerializationContext skipping;
    skipping.SetIgnoreUnknownElements(true);
    EXPECT_TRUE(info.ElementFromXml(skipping, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element));
    EXPECT_EQ(holder.Get(1).GetI4(), 12);
    ASSERT_NE(cursor, nullptr);
    EXPECT_EQ(cursor->GetLocalName(), "z");

    // Reaching the end is still a missing element.
    EXPECT_KV_THROW(info.ElementFromXml(skipping, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element),
                    CKvValidationException, "Failed to find a required element [n]");
}

TEST(ElementInfoPrimitiveRead, SequenceMandatoryAbsentWhenMissingIsIgnored) {
    ParsedDocument doc("<r><x/></r>");
    kvd::CElementInfoSeqPrimMnd info("n", "", 1, false, kv::i4, nullptr, kCollapse, {});
    CHolder holder;
    CXmlSerializationContext lenient;
    lenient.SetIgnoreMissingMandatoryElements(true);
    CXmlElement* cursor = doc.First();
    EXPECT_TRUE(info.ElementFromXml(lenient, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element));
    EXPECT_EQ(cursor, doc.First());
    EXPECT_FALSE(holder.Has(1));
    cursor = nullptr;
    EXPECT_TRUE(info.ElementFromXml(lenient, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element));
}

TEST(ElementInfoPrimitiveRead, SequenceMandatoryInPseudoElementReportsNoMatch) {
    ParsedDocument doc("<r><x/><y/></r>");
    kvd::CElementInfoSeqPrimMnd info("n", "", 1, false, kv::i4, nullptr, kCollapse, {});
    CHolder holder;
    CXmlElement* cursor = doc.First();
    const CXmlSerializationContext strict;
    EXPECT_FALSE(info.ElementFromXml(strict, &holder, doc.Root(), &cursor, "", kvd::ElementType_PseudoElement));
    EXPECT_EQ(cursor, doc.First());
    CXmlSerializationContext skipping;
    skipping.SetIgnoreUnknownElements(true);
    EXPECT_FALSE(info.ElementFromXml(skipping, &holder, doc.Root(), &cursor, "", kvd::ElementType_PseudoElement));
    EXPECT_FALSE(holder.Has(1));
}

TEST(ElementInfoPrimitiveRead, NoMatchIsTrueForSequenceOptionalAndFalseForChoiceAndAll) {
    ParsedDocument doc("<r><x/><n>5</n></r>");
    const CXmlSerializationContext context;
    auto kinds = EveryPrimitiveKind(kv::i4, {});
    // Index 0, the mandatory sequence member, searches instead (tests above).
    const bool expectedOnMiss[] = {false, true, false, false, false};
    for (size_t k = 1; k < kinds.size(); ++k) {
        CHolder holder;
        CXmlElement* cursor = doc.First();
        EXPECT_EQ(kinds[k]->ElementFromXml(context, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element),
                  expectedOnMiss[k])
            << k;
        EXPECT_EQ(cursor, doc.First());
        cursor = nullptr;
        EXPECT_EQ(kinds[k]->ElementFromXml(context, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element),
                  expectedOnMiss[k]);
        EXPECT_FALSE(holder.Has(1));

        cursor = doc.First()->GetNextSiblingElement();
        EXPECT_TRUE(kinds[k]->ElementFromXml(context, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element));
        EXPECT_EQ(cursor, nullptr);
        EXPECT_EQ(holder.Get(1).GetI4(), 5);
    }
}

TEST(ElementInfoPrimitiveRead, AllGroupValidateReportsOnlyMissingCheckedMandatoryMembers) {
    CHolder holder;
    const CXmlSerializationContext context;
    kvd::CElementInfoAllPrimMnd mandatory("n", "", 1, false, kv::i4, nullptr, kCollapse, {});
    kvd::CElementInfoAllPrimOpt optional("n", "", 1, false, kv::i4, nullptr, kCollapse, {});
    EXPECT_KV_THROW(mandatory.Validate(context, &holder, false, true), CKvValidationException,
                    "Failed to find the mandatory element [n]");
    EXPECT_TRUE(mandatory.Validate(context, &holder, false, false));
    EXPECT_TRUE(mandatory.Validate(context, &holder, true, true));
    EXPECT_TRUE(optional.Validate(context, &holder, false, true));
    EXPECT_TRUE(optional.Validate(context, &holder, true, false));
}

TEST(ElementInfoPrimitiveRead, NilAttributeRules) {
    struct Case {
        const char* nilValue;
        bool nillable;
        const char* error;  // null: reads
        bool expectNil;
    };
    const Case cases[] = {
        {"true", true, nullptr, true},
        {"TRUE", true, nullptr, true},
        {"1", true, nullptr, true},
        {"false", true, nullptr, false},
        {"False", false, nullptr, false},
        {"0", false, nullptr, false},
        {"", false, nullptr, false},
        {"yes", true, "Unexpected Value [yes] for 'nil' Attribute found.", false},
        {"true", false, "Invalid use of 'nil' attibute in non-nillable element [n]", false},
        {"yes", false, "Invalid use of 'nil' attibute in non-nillable element [n]", false},
    };
    const CXmlSerializationContext context;
    for (const Case& c : cases) {
        const std::string text = std::string("<r ") + kXsi + "><n xsi:nil='" + c.nilValue + "'>7</n></r>";
        ParsedDocument doc(text.c_str());
        for (const auto& info : EveryPrimitiveKind(kv::i4, {}, c.nillable)) {
            CHolder holder;
            CXmlElement* cursor = doc.First();
            if (c.error) {
                EXPECT_KV_THROW(
                    info->ElementFromXml(context, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element),
                    CKvValidationException, c.error);
                EXPECT_EQ(cursor, doc.First());
                EXPECT_FALSE(holder.Has(1));
                continue;
            }
            EXPECT_TRUE(info->ElementFromXml(context, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element));
            EXPECT_EQ(cursor, nullptr);
            EXPECT_EQ(holder.Get(1).IsNil(), c.expectNil) << c.nilValue;
            if (!c.expectNil) {
                EXPECT_EQ(holder.Get(1).GetI4(), 7);
            }
        }
    }
}

TEST(ElementInfoPrimitiveRead, NilElementTextIsNotConverted) {
    const std::string text = std::string("<r ") + kXsi + "><n xsi:nil='true'>not a number</n></r>";
    ParsedDocument doc(text.c_str());
    kvd::CElementInfoSeqPrimMnd info("n", "", 1, true, kv::i4, nullptr, kCollapse, {});
    CHolder holder;
    CXmlElement* cursor = doc.First();
    EXPECT_TRUE(info.ElementFromXml(CXmlSerializationContext(), &holder, doc.Root(), &cursor, "",
                                    kvd::ElementType_Element));
    EXPECT_TRUE(holder.Get(1).IsNil());
}

TEST(ElementInfoPrimitiveRead, ConversionFailureStoresNothingAndKeepsTheCursor) {
    ParsedDocument doc("<r><n>12a</n></r>");
    CHolder holder;
    for (const auto& info : EveryPrimitiveKind(kv::i4, {})) {
        CXmlElement* cursor = doc.First();
        EXPECT_KV_THROW(info->ElementFromXml(CXmlSerializationContext(), &holder, doc.Root(), &cursor, "",
                                             kvd::ElementType_Element),
                        CKvInvalidValueException, "The value [12a] can not be converted to a i4");
        EXPECT_EQ(cursor, doc.First());
        EXPECT_FALSE(holder.Has(1));
    }
}

TEST(ElementInfoPrimitiveRead, AppliesTheWhitespaceRuleAndNoFacets) {
    ParsedDocument doc("<r><n>  a\tb  </n><m> -5 </m></r>");
    CHolder holder;
    const CXmlSerializationContext context;
    kvd::CElementInfoSeqPrimMnd preserved("n", "", 1, false, kv::string, nullptr, kPreserve, {});
    CPrimitiveRestrictions ages;
    ages.minInclusive = "0";
    kvd::CElementInfoSeqPrimMnd collapsed("m", "", 2, false, kv::i4, nullptr, kCollapse, ages);
    CXmlElement* cursor = doc.First();
    EXPECT_TRUE(preserved.ElementFromXml(context, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element));
    EXPECT_TRUE(collapsed.ElementFromXml(context, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element));
    EXPECT_EQ(holder.Get(1).GetString(), "  a\tb  ");
    EXPECT_EQ(holder.Get(2).GetI4(), -5);  // facets are a writing matter
}

}  // namespace
