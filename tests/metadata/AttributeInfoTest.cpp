// AttributeInfoTest.cpp - attribute descriptors: writing with defaults and facets, matching, reading, validation.
#include "metadata/GeneratedTestClasses.h"

using namespace kvtest;
using namespace KvXmlLib10;
using namespace KvXmlLib10Data;

namespace {

// The writer calls of one AttributeToXml, optionally with default output suppressed.
std::string WriteAttribute(const CAttributeInfo& info, const CXmlGeneratedClass& object, bool noDefaults = false) {
    CXmlSerializationContext context;
    context.SetNoOptionalAttributeDefaultOutput(noDefaults);
    RecordingWriter writer;
    info.AttributeToXml(context, &object, &writer);
    return writer.log;
}

TEST(AttributeInfoWrite, WritesTextFormatAndTypeOrNothingWhenUnsetOptional) {
    CHolder holder;
    CAttributeInfoPrimitive optional("a", "", 2, true, i4, nullptr, kCollapse, {}, "3");
    CAttributeInfoEnum optionalEnum("c", "", 3, true, ColorToString, ColorFromString, "red");
    EXPECT_EQ(WriteAttribute(optional, holder) + WriteAttribute(optionalEnum, holder), "");
    // A required attribute is never silently dropped.
    CAttributeInfoPrimitive price("price", "urn:p", 1, false, r8, "%.1f", kCollapse, {}, nullptr);
    EXPECT_KV_THROW(WriteAttribute(price, holder), CKvException, "Invalid Type 0 to convert to string");
    KvVariant value;
    value.SetR8(2.25);
    holder.Set(1, value);
    EXPECT_EQ(WriteAttribute(price, holder), "@{urn:p}price=2.2,12;");
    EXPECT_EQ(price.GetDefaultValue(), "");
}

TEST(AttributeInfoWrite, DefaultIsLeftOutOnlyWhenAskedAndTheTextMatchesExactly) {
    struct Case { bool optional; const char* defaultValue; int32_t value; bool noDefaults, written; };
    const Case cases[] = {
        {true, "1", 1, false, true},     // option off: always written
        {true, "1", 1, true, false},     // same text: left out
        {true, "1.0", 1, true, true},    // "1" is not "1.0"
        {true, "1", 2, true, true},      // another value
        {false, "1", 1, true, true},     // required attributes are always written
        {true, nullptr, 0, true, true},  // no default
    };
    for (const Case& c : cases) {
        CHolder holder;
        holder.SetI4(1, c.value);
        CAttributeInfoPrimitive info("n", "", 1, c.optional, i4, nullptr, kCollapse, {}, c.defaultValue);
        EXPECT_EQ(WriteAttribute(info, holder, c.noDefaults).empty(), !c.written)
            << (c.defaultValue ? c.defaultValue : "(null)") << " " << c.value;
    }
    CHolder holder;
    holder.SetI4(1, 0);
    CAttributeInfoEnum shade("shade", "", 1, true, ColorToString, ColorFromString, "red");
    EXPECT_EQ(WriteAttribute(shade, holder, true), "");
    EXPECT_EQ(WriteAttribute(shade, holder), "@shade=red,23;");
    holder.SetI4(1, 1);
    EXPECT_EQ(WriteAttribute(shade, holder, true), "@shade=green,23;");
}

TEST(AttributeInfoWrite, FacetViolationWritesNothing) {
    CHolder holder;
    holder.SetString(1, "toolong");
    const CPrimitiveRestrictions code(nullptr, -1, 3, nullptr, nullptr, nullptr, nullptr, -1);  // maxLength 3
    CAttributeInfoPrimitive info("code", "", 1, true, string, nullptr, kPreserve, code, nullptr);
    RecordingWriter writer;
    EXPECT_KV_THROW(info.AttributeToXml(CXmlSerializationContext(), &holder, &writer), CKvException,
                    "Invalid Value for code [toolong]");
    EXPECT_EQ(writer.log, "");
    holder.SetString(1, "abc");
    EXPECT_EQ(WriteAttribute(info, holder), "@code=abc,23;");
}

TEST(AttributeInfoRead, PrimitiveIgnoresIgnoreNamespacesWhileEnumerationHonoursIt) {
    ParsedDocument doc("<r xmlns:f='urn:f' f:n=' 42 ' f:c='blue' n='7'/>");
    const auto& attributes = doc.Root()->GetAttributes();
    ASSERT_EQ(attributes.size(), 3u);
    CAttributeInfoPrimitive number("n", "", 1, true, i4, nullptr, kCollapse, {}, nullptr);
    CAttributeInfoEnum color("c", "", 2, true, ColorToString, ColorFromString, nullptr);
    const CXmlSerializationContext strict;
    CXmlSerializationContext loose;
    loose.SetIgnoreNamespaces(true);
    CHolder holder;

    EXPECT_FALSE(number.AttributeFromXml(loose, &holder, attributes[0]));
    EXPECT_FALSE(holder.Has(1));
    EXPECT_TRUE(color.AttributeFromXml(loose, &holder, attributes[1]));
    EXPECT_EQ(holder.Get(2).GetI4(), 2);
    EXPECT_FALSE(color.AttributeFromXml(strict, &holder, attributes[1]));
    EXPECT_TRUE(number.AttributeFromXml(loose, &holder, attributes[2]));
    EXPECT_EQ(holder.Get(1).GetI4(), 7);
    EXPECT_FALSE(number.IsThisAttribute(loose, nullptr));
    EXPECT_TRUE(number.IsThisAttribute(loose, attributes[0]));
    EXPECT_FALSE(number.IsThisAttribute(strict, attributes[0]));

    CAttributeInfoPrimitive qualified("n", "urn:f", 3, true, i4, nullptr, kCollapse, {}, nullptr);
    EXPECT_TRUE(qualified.AttributeFromXml(strict, &holder, attributes[0]));
    EXPECT_EQ(holder.Get(3).GetI4(), 42);  // whitespace rule applied
}

TEST(AttributeInfoRead, ConversionFailureStoresNothingAndFacetsAreNotChecked) {
    ParsedDocument doc("<r a='x1' b='toolong'/>");
    const auto& attributes = doc.Root()->GetAttributes();
    const CPrimitiveRestrictions code(nullptr, -1, 3, nullptr, nullptr, nullptr, nullptr, -1);  // maxLength 3
    CAttributeInfoPrimitive number("a", "", 1, true, i4, nullptr, kCollapse, {}, nullptr);
    CAttributeInfoPrimitive text("b", "", 2, true, string, nullptr, kPreserve, code, nullptr);
    CHolder holder;
    EXPECT_KV_THROW(number.AttributeFromXml(CXmlSerializationContext(), &holder, attributes[0]),
                    CKvInvalidValueException, "The value [x1] can not be converted to a i4");
    EXPECT_FALSE(holder.Has(1));
    EXPECT_TRUE(text.AttributeFromXml(CXmlSerializationContext(), &holder, attributes[1]));
    EXPECT_EQ(holder.Get(2).GetString(), "toolong");
}

TEST(AttributeInfoValidate, OnlyAMissingRequiredAttributeFails) {
    const CXmlSerializationContext context;
    CAttributeInfoPrimitive required("id", "", 1, false, i4, nullptr, kCollapse, {}, nullptr);
    CAttributeInfoPrimitive optional("lang", "", 2, true, string, nullptr, kPreserve, {}, "en");
    CAttributeInfoEnum requiredEnum("shade", "", 3, false, ColorToString, ColorFromString, nullptr);
    EXPECT_KV_THROW(required.Validate(context, false), CKvValidationException,
                    "Failed to find the required Attribute [id]");
    EXPECT_KV_THROW(requiredEnum.Validate(context, false), CKvValidationException,
                    "Failed to find the required Attribute [shade]");
    EXPECT_TRUE(required.Validate(context, true));
    EXPECT_FALSE(optional.Validate(context, false));
    EXPECT_TRUE(optional.Validate(context, true));
}

TEST(AttributeInfoHelpers, ForwardNamespaceRulesAndObjectCalls) {
    EXPECT_TRUE(CAttributeInfo::IsNamespaceValid("", "##local urn:a", "urn:t"));
    EXPECT_FALSE(CAttributeInfo::IsNamespaceValid("urn:t", "##other", "urn:t"));
    EXPECT_TRUE(CAttributeInfo::IsNamespaceValid(nullptr, "##any", nullptr));
    EXPECT_KV_THROW(CAttributeInfo::TestNamespace("urn:b", "##local ##targetNamespace", "urn:a"),
                    CKvInvalidNamespaceException,
                    "Invalid namespace [urn:b]. The namespace must be one of [##local ##targetNamespace] where the "
                    "target namespace is [urn:a]");
    Pinned<CHolder> holder;
    EXPECT_EQ(CAttributeInfo::GetTargetNamespace(&holder), "");
    RecordingWriter writer;
    CAttributeInfo::ToXml_Int(&holder, &writer, false, "urn:h", CXmlSerializationContext());
    EXPECT_EQ(writer.log, "<{urn:h}Holder></>");
}

}  // namespace
