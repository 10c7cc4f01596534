// AttributeInfo.cpp - the attribute descriptor base and its primitive and enumeration kinds.
#include "kvxml/metadata/AttributeInfo.h"

#include "kvxml/core/SerializationContext.h"
#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/core/XmlObjectHelper.h"
#include "kvxml/dom/XmlAttribute.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/output/XmlWriter.h"
#include "kvxml/values/Variant.h"
#include "metadata/detail/MetadataSupport.h"

namespace KvXmlLib10Data {

using KvXmlLib10::CPrimitiveRestrictions;
using KvXmlLib10::CWhitespaceUtils;
using KvXmlLib10::CXmlAttribute;
using KvXmlLib10::CXmlElement;
using KvXmlLib10::CXmlGeneratedClass;
using KvXmlLib10::CXmlObjectBase;
using KvXmlLib10::CXmlSerializationContext;
using KvXmlLib10::CXmlWriter;
using KvXmlLib10::ItemType;
using KvXmlLib10::KvVariant;

namespace {

std::string Copy(const char* text) { return text ? std::string(text) : std::string(); }

bool ValidateRequired(const CAttributeInfo& info, bool found) {
    if (info.IsOptional() || found) return found;
    throw KvXmlLib10::CKvValidationException(
        KvXmlLib10::FormatString("Failed to find the required Attribute [%s]", info.GetAttributeName().c_str()));
}

// Whether an optional attribute is left out because it says what the
// default says anyway (only when the context asks for it).
bool SuppressedAsDefault(const CAttributeInfo& info, const CXmlSerializationContext& context,
                         const std::string& text) {
    return info.IsOptional() && !info.GetDefaultValue().empty() && context.GetNoOptionalAttributeDefaultOutput() &&
           text == info.GetDefaultValue();
}

}  // namespace

// ---- base ----

CAttributeInfo::CAttributeInfo(const char* attributeName, const char* namespaceUri, int32_t propertyId,
                               bool optional, const char* defaultValue)
    : m_attributeName(Copy(attributeName)),
      m_namespaceUri(Copy(namespaceUri)),
      m_propertyId(propertyId),
      m_optional(optional),
      m_defaultValue(Copy(defaultValue)) {}

CAttributeInfo::~CAttributeInfo() = default;

void CAttributeInfo::ReadProperty(const CXmlGeneratedClass* object, KvVariant& value) const {
    object->ReadProperty(m_propertyId, value);
}

void CAttributeInfo::AccessProperty(CXmlGeneratedClass* object, bool read, KvVariant& value) const {
    object->AccessProperty(m_propertyId, read, value);
}

bool CAttributeInfo::IsThisAttribute(const CXmlSerializationContext& context, const CXmlAttribute* attribute) const {
    if (!attribute) return false;
    if (attribute->GetLocalName() != m_attributeName) return false;
    if (context.GetIgnoreNamespaces()) return true;
    return attribute->GetNamespaceURI() == m_namespaceUri;
}

bool CAttributeInfo::IsNamespaceValid(const char* namespaceUri, const char* restriction,
                                      const char* targetNamespace) {
    return KvXmlLib10::CXmlObjectHelper::IsNamespaceValid(Copy(namespaceUri), Copy(restriction),
                                                          Copy(targetNamespace));
}

bool CAttributeInfo::TestNamespace(const char* namespaceUri, const char* restriction, const char* targetNamespace) {
    return KvXmlLib10::CXmlObjectHelper::TestNamespace(Copy(namespaceUri), Copy(restriction), Copy(targetNamespace));
}

std::string CAttributeInfo::GetTargetNamespace(const CXmlObjectBase* object) { return object->GetTargetNamespace(); }

void CAttributeInfo::ToXml_Int(const CXmlObjectBase* object, CXmlWriter* writer, bool isRoot,
                               const char* targetNamespace, const CXmlSerializationContext& context) {
    CXmlObjectBase::ToXml_Int(object, writer, isRoot, targetNamespace, context, false);
}

// ---- primitive ----

CAttributeInfoPrimitive::CAttributeInfoPrimitive(const char* attributeName, const char* namespaceUri,
                                                 int32_t propertyId, bool optional, ItemType itemType,
                                                 const char* numberFormat,
                                                 CWhitespaceUtils::WhitespaceRule whitespaceRule,
                                                 const CPrimitiveRestrictions& restrictions,
                                                 const char* defaultValue)
    : CAttributeInfo(attributeName, namespaceUri, propertyId, optional, defaultValue),
      m_itemType(itemType),
      m_numberFormat(Copy(numberFormat)),
      m_whitespaceRule(whitespaceRule),
      m_restrictions(restrictions) {}

CAttributeInfoPrimitive::~CAttributeInfoPrimitive() = default;

void CAttributeInfoPrimitive::AttributeToXml(const CXmlSerializationContext& context,
                                             const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    KvVariant value;
    ReadProperty(object, value);
    if (IsOptional() && !value.IsValid()) return;
    // A required value is converted unchecked: unset, it fails here rather
    // than being dropped silently.
    std::string text = value.ToString(m_numberFormat.c_str());
    if (SuppressedAsDefault(*this, context, text)) return;
    CheckRestriction(value);
    writer->WriteAttributeString(GetAttributeName(), GetNamespaceURI(), text,
                                 KvXmlLib10::detail::VariantItemType(value, m_itemType));
}

bool CAttributeInfoPrimitive::AttributeFromXml(const CXmlSerializationContext&, CXmlGeneratedClass* object,
                                               CXmlAttribute* attribute) {
    // Always by name and namespace: ignore-namespaces is not consulted here.
    if (!attribute || attribute->GetLocalName() != GetAttributeName() ||
        attribute->GetNamespaceURI() != GetNamespaceURI())
        return false;
    KvVariant value;
    value.FromString(attribute->GetValue(), m_itemType, m_whitespaceRule);
    AccessProperty(object, false, value);
    return true;
}

bool CAttributeInfoPrimitive::Validate(const CXmlSerializationContext&, bool found) const {
    return ValidateRequired(*this, found);
}

void CAttributeInfoPrimitive::CheckRestriction(const KvVariant& value) const {
    KvXmlLib10::CXmlObjectHelper::CheckRestriction(GetAttributeName().c_str(), value, m_itemType, m_restrictions);
}

// ---- enumeration ----

CAttributeInfoEnum::CAttributeInfoEnum(const char* attributeName, const char* namespaceUri, int32_t propertyId,
                                       bool optional, EnumToStringFunc enumToString, StringToEnumFunc stringToEnum,
                                       const char* defaultValue)
    : CAttributeInfo(attributeName, namespaceUri, propertyId, optional, defaultValue),
      m_enumToString(enumToString),
      m_stringToEnum(stringToEnum) {}

CAttributeInfoEnum::~CAttributeInfoEnum() = default;

void CAttributeInfoEnum::AttributeToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                        CXmlWriter* writer) const {
    KvVariant value;
    ReadProperty(object, value);
    if (IsOptional() && !value.IsValid()) return;
    const char* converted = m_enumToString(value.GetI4());
    std::string text = converted ? converted : "";
    if (SuppressedAsDefault(*this, context, text)) return;
    writer->WriteAttributeString(GetAttributeName(), GetNamespaceURI(), text, KvXmlLib10::string);
}

bool CAttributeInfoEnum::AttributeFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                          CXmlAttribute* attribute) {
    if (!IsThisAttribute(context, attribute)) return false;
    KvVariant value;
    value.SetI4(m_stringToEnum(attribute->GetValue().c_str()));
    AccessProperty(object, false, value);
    return true;
}

bool CAttributeInfoEnum::Validate(const CXmlSerializationContext&, bool found) const {
    return ValidateRequired(*this, found);
}

}  // namespace KvXmlLib10Data
