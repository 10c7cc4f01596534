// ElementInfoEnumerationTest.cpp - enumeration element descriptors: text through the generated functions, nil, group rules.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "metadata/GeneratedTestClasses.h"
#include "support/KvTestSupport.h"

using namespace kvtest;
using KvXmlLib10::CKvException;
using KvXmlLib10::CKvValidationException;
namespace kv = KvXmlLib10;
namespace kvd = KvXmlLib10Data;

namespace {

std::vector<std::unique_ptr<CElementInfo>> EveryEnumKind(bool nillable = false) {
    std::vector<std::unique_ptr<CElementInfo>> kinds;
    kinds.emplace_back(new kvd::CElementInfoSeqEnumMnd("c", "", 1, nillable, ColorToString, ColorFromString));
    kinds.emplace_back(new kvd::CElementInfoSeqEnumOpt("c", "", 1, nillable, ColorToString, ColorFromString));
    kinds.emplace_back(new kvd::CElementInfoAllEnumMnd("c", "", 1, nillable, ColorToString, ColorFromString));
    kinds.emplace_back(new kvd::CElementInfoAllEnumOpt("c", "", 1, nillable, ColorToString, ColorFromString));
    kinds.emplace_back(new kvd::CElementInfoChoiceEnumOpt("c", "", 1, nillable, ColorToString, ColorFromString));
    return kinds;
}

TEST(ElementInfoEnumerationWrite, WritesTheGeneratedTextAsAString) {
    CHolder holder;
    holder.SetI4(1, 2);
    for (const auto& info : EveryEnumKind()) {
        RecordingWriter writer;
        EXPECT_TRUE(info->ElementToXml(CXmlSerializationContext(), &holder, &writer));
        EXPECT_EQ(writer.log, "<c>text(blue,23)</>");
        EXPECT_FALSE(info->HasPrimitiveInfo());
    }
    // Values the generated function does not know give an empty element.
    holder.SetI4(1, 42);
    WriterProbe probe;
    EveryEnumKind()[0]->ElementToXml(CXmlSerializationContext(), &holder, probe.get());
    EXPECT_EQ(probe.Text(), "<c/>");
}

TEST(ElementInfoEnumerationWrite, UnsetWritesNothingAndNilWritesTheNilAttribute) {
    CHolder unset;
    CHolder nil;
    nil.SetNilValue(1);
    for (const auto& info : EveryEnumKind(true)) {
        RecordingWriter nothing;
        EXPECT_FALSE(info->ElementToXml(CXmlSerializationContext(), &unset, &nothing));
        EXPECT_EQ(nothing.log, "");
        RecordingWriter writer;
        EXPECT_TRUE(info->ElementToXml(CXmlSerializationContext(), &nil, &writer));
        EXPECT_EQ(writer.log, "<c>@nil;</>");
    }
}

TEST(ElementInfoEnumerationRead, ConvertsTheTextAsItStands) {
    ParsedDocument doc(
        "<r xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'><c>green</c><c> green</c><c>mauve</c>"
        "<c xsi:nil='TRUE'>red</c></r>");
    const CXmlSerializationContext context;
    for (const auto& info : EveryEnumKind(true)) {
        CHolder holder;
        CXmlElement* cursor = doc.First();
        const int32_t expected[] = {1, -1, -1};
        for (int32_t value : expected) {
            EXPECT_TRUE(info->ElementFromXml(context, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element));
            EXPECT_EQ(holder.Get(1).GetI4(), value);
        }
        EXPECT_TRUE(info->ElementFromXml(context, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element));
        EXPECT_TRUE(holder.Get(1).IsNil());
        EXPECT_EQ(cursor, nullptr);
    }
}

TEST(ElementInfoEnumerationRead, GroupRulesMatchThePrimitiveKinds) {
    ParsedDocument doc(
        "<r xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'><x/><c xsi:nil='true'>red</c></r>");
    const CXmlSerializationContext context;
    auto kinds = EveryEnumKind(false);
    CHolder holder;
    CXmlElement* cursor = doc.First();
    EXPECT_KV_THROW(kinds[0]->ElementFromXml(context, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element),
                    CKvValidationException, "Failed to find a required element [c]");
    EXPECT_TRUE(kinds[1]->ElementFromXml(context, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element));
    EXPECT_FALSE(kinds[4]->ElementFromXml(context, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element));
    EXPECT_EQ(cursor, doc.First());
    cursor = doc.First()->GetNextSiblingElement();
    EXPECT_KV_THROW(kinds[1]->ElementFromXml(context, &holder, doc.Root(), &cursor, "", kvd::ElementType_Element),
                    CKvValidationException, "Invalid use of 'nil' attibute in non-nillable element [c]");
    EXPECT_FALSE(holder.Has(1));

    EXPECT_KV_THROW(kinds[2]->Validate(context, &holder, false, true), CKvValidationException,
                    "Failed to find the mandatory element [c]");
    EXPECT_TRUE(kinds[2]->Validate(context, &holder, false, false));
    EXPECT_TRUE(kinds[3]->Validate(context, &holder, false, true));
    EXPECT_KV_THROW(kinds[0]->Validate(context, &holder, false, true), CKvException,
                    "Not implemented, should never be called");
}

}  // namespace
