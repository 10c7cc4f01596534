// AttributeInfoTest.cpp - attribute descriptors: writing with defaults and facets, matching, reading, validation.
#include <gtest/gtest.h>

#include "metadata/GeneratedTestClasses.h"
#include "support/KvTestSupport.h"

using namespace kvtest;
using KvXmlLib10::CKvException;
using KvXmlLib10::CKvInvalidNamespaceException;
using KvXmlLib10::CKvInvalidValueException;
using KvXmlLib10::CKvValidationException;
namespace kv = KvXmlLib10;
namespace kvd = KvXmlLib10Data;

namespace {

std::string WriteAttribute(const CAttributeInfo& info, const CXmlGeneratedClass& object,
                           const CXmlSerializationContext& context = CXmlSerializationContext()) {
    RecordingWriter writer;
    info.AttributeToXml(context, &object, &writer);
    return writer.log;
}

TEST(AttributeInfoWrite, PrimitiveWritesTextFormatAndType) {
    CHolder holder;
    KvVariant value;
    value.SetR8(2.25);
    holder.Set(1, value);
    kvd::CAttributeInfoPrimitive price("price", "urn:p", 1, false, kv::r8, "%.1f", kCollapse, {}, nullptr);
    EXPECT_EQ(WriteAttribute(price, holder), "@{urn:p}price=2.2,12;");
    EXPECT_EQ(price.GetDefaultValue(), "");
}

TEST(AttributeInfoWrite, UnsetOptionalIsLeftOutButUnsetRequiredFails) {
    CHolder holder;
    kvd::CAttributeInfoPrimitive optional("a", "", 1, true, kv::i4, nullptr, kCollapse, {}, "3");
    kvd::CAttributeInfoPrimitive required("b", "", 2, false, kv::i4, nullptr, kCollapse, {}, nullptr);
    kvd::CAttributeInfoEnum optionalEnum("c", "", 3, true, ColorToString, ColorFromString, "red");
    EXPECT_EQ(WriteAttribute(optional, holder), "");
    EXPECT_EQ(WriteAttribute(optionalEnum, holder), "");
    EXPECT_KV_THROW(WriteAttribute(required, holder), CKvException, "Invalid Type 0 to convert to string");
}

TEST(AttributeInfoWrite, DefaultIsLeftOutOnlyWhenAskedAndTheTextMatchesExactly) {
    struct Case {
        bool optional;
        const char* defaultValue;
        int32_t value;
        bool option;
        bool written;
    };
    const Case cases[] = {
        {true, "1", 1, false, true},    // option off: always written
        {true, "1", 1, true, false},    // same text: left out
        {true, "1.0", 1, true, true},   // "1" is not "1.0"
        {true, "1", 2, true, true},     // another value
        {false, "1", 1, true, true},    // required attributes are always written
        {true, nullptr, 0, true, true}, // no default
    };
    for (const Case& c : cases) {
        CHolder holder;
        holder.SetI4(1, c.value);
        kvd::CAttributeInfoPrimitive info("n", "", 1, c.optional, kv::i4, nullptr, kCollapse, {}, c.defaultValue);
        CXmlSerializationContext context;
        context.SetNoOptionalAttributeDefaultOutput(c.option);
        EXPECT_EQ(WriteAttribute(info, holder, context).empty(), !c.written)
            << (c.defaultValue ? c.defaultValue : "(null)") << " " << c.value;
    }

    CHolder holder;
    holder.SetI4(1, 0);
    kvd::CAttributeInfoEnum shade("shade", "", 1, true, ColorToString, ColorFromString, "red");
    CXmlSerializationContext quiet;
    quiet.SetNoOptionalAttributeDefaultOutput(true);
    EXPECT_EQ(WriteAttribute(shade, holder, quiet), "");
    EXPECT_EQ(WriteAttribute(shade, holder), "@shade=red,23;");
    holder.SetI4(1, 1);
    EXPECT_EQ(WriteAttribute(shade, holder, quiet), "@shade=green,23;");
}

TEST(AttributeInfoWrite, FacetViolationWritesNothing) {
    CHolder holder;
    holder.SetString(1, "toolong");
    CPrimitiveRestrictions code;
    code.maxLength = 3;
    kvd::CAttributeInfoPrimitive info("code", "", 1, true, kv::string, nullptr, kPreserve, code, nullptr);
    WriterProbe probe;
    probe.get()->WriteStartElement("r", "");
    EXPECT_KV_THROW(info.AttributeToXml(CXmlSerializationContext(), &holder, probe.get()), CKvException,
                    "Invalid Value for code [toolong]");
    probe.get()->WriteEndElement();
    EXPECT_EQ(probe.Text(), "<r/>");
    holder.SetString(1, "abc");
    EXPECT_EQ(WriteAttribute(info, holder), "@code=abc,23;");
}

TEST(AttributeInfoRead, PrimitiveIgnoresIgnoreNamespacesWhileEnumerationHonoursIt) {
    ParsedDocument doc("<r xmlns:f='urn:f' f:n=' 42 ' f:c='blue' n='7'/>");
    const auto& attributes = doc.Root()->GetAttributes();
    ASSERT_EQ(attributes.size(), 3u);
    kvd::CAttributeInfoPrimitive number("n", "", 1, true, kv::i4, nullptr, kCollapse, {}, nullptr);
    kvd::CAttributeInfoEnum color("c", "", 2, true, ColorToString, ColorFromString, nullptr);
    CXmlSerializationContext loose;
    loose.SetIgnoreNamespaces(true);
    CHolder holder;

    EXPECT_FALSE(number.AttributeFromXml(loose, &holder, attributes[0]));
    EXPECT_FALSE(holder.Has(1));
    EXPECT_TRUE(color.AttributeFromXml(loose, &holder, attributes[1]));
    EXPECT_EQ(holder.Get(2).GetI4(), 2);
    EXPECT_FALSE(color.AttributeFromXml(CXmlSerializationContext(), &holder, attributes[1]));
    EXPECT_TRUE(number.AttributeFromXml(loose, &holder, attributes[2]));
    EXPECT_EQ(holder.Get(1).GetI4(), 7);
    EXPECT_FALSE(number.IsThisAttribute(loose, nullptr));
    EXPECT_TRUE(number.IsThisAttribute(loose, attributes[0]));
    EXPECT_FALSE(number.IsThisAttribute(CXmlSerializationContext(), attributes[0]));

    kvd::CAttributeInfoPrimitive qualified("n", "urn:f", 3, true, kv::i4, nullptr, kCollapse, {}, nullptr);
    EXPECT_TRUE(qualified.AttributeFromXml(CXmlSerializationContext(), &holder, attributes[0]));
    EXPECT_EQ(holder.Get(3).GetI4(), 42);  // whitespace rule applied
}

TEST(AttributeInfoRead, ConversionFailureStoresNothingAndFacetsAreNotChecked) {
    ParsedDocument doc("<r a='x1' b='toolong'/>");
    const auto& attributes = doc.Root()->GetAttributes();
    CPrimitiveRestrictions code;
    code.maxLength = 3;
    kvd::CAttributeInfoPrimitive number("a", "", 1, true, kv::i4, nullptr, kCollapse, {}, nullptr);
    kvd::CAttributeInfoPrimitive text("b", "", 2, true, kv::string, nullptr, kPreserve, code, nullptr);
    CHolder holder;
    EXPECT_KV_THROW(number.AttributeFromXml(CXmlSerializationContext(), &holder, attributes[0]),
                    CKvInvalidValueException, "The value [x1] can not be converted to a i4");
    EXPECT_FALSE(holder.Has(1));
    EXPECT_TRUE(text.AttributeFromXml(CXmlSerializationContext(), &holder, attributes[1]));
    EXPECT_EQ(holder.Get(2).GetString(), "toolong");
}

TEST(AttributeInfoValidate, OnlyAMissingRequiredAttributeFails) {
    const CXmlSerializationContext context;
    kvd::CAttributeInfoPrimitive required("id", "", 1, false, kv::i4, nullptr, kCollapse, {}, nullptr);
    kvd::CAttributeInfoPrimitive optional("lang", "", 2, true, kv::string, nullptr, kPreserve, {}, "en");
    kvd::CAttributeInfoEnum requiredEnum("shade", "", 3, false, ColorToString, ColorFromString, nullptr);
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

    CHolder holder;
    holder.AddRef();
    EXPECT_EQ(CAttributeInfo::GetTargetNamespace(&holder), "");
    WriterProbe probe;
    CAttributeInfo::ToXml_Int(&holder, probe.get(), false, "urn:h", CXmlSerializationContext());
    EXPECT_EQ(probe.Text(), "<AA:Holder xmlns:AA=\"urn:h\"/>");
}

}  // namespace
