// AttributeInfo.h - descriptors of the attributes of a generated class.
//
// The engine asks each descriptor to write its attribute while the start tag
// is open, offers each attribute of a read element to the descriptors in
// turn, and finally lets each validate that a required attribute was seen.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/foundation/Export.h"
#include "kvxml/metadata/ElementInfo.h"
#include "kvxml/validation/PrimitiveRestrictions.h"
#include "kvxml/values/ItemType.h"
#include "kvxml/values/WhitespaceUtils.h"

namespace KvXmlLib10 {
class CXmlAttribute;
}

namespace KvXmlLib10Data {

/// Base of every attribute descriptor; immutable and shared.
class KVXML_API CAttributeInfo {
public:
    /// The strings are copied; a null default value is stored as "".
    CAttributeInfo(const char* attributeName, const char* namespaceUri, int32_t propertyId, bool optional,
                   const char* defaultValue);
    virtual ~CAttributeInfo();
    CAttributeInfo(const CAttributeInfo&) = delete;
    CAttributeInfo& operator=(const CAttributeInfo&) = delete;

    /// Writes the attribute of object onto the open element, or nothing.
    virtual void AttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                const KvXmlLib10::CXmlGeneratedClass* object, KvXmlLib10::CXmlWriter* writer) const = 0;
    /// Takes the attribute into object and returns true when it belongs to
    /// this descriptor; false leaves everything alone.
    virtual bool AttributeFromXml(const KvXmlLib10::CXmlSerializationContext& context,
                                  KvXmlLib10::CXmlGeneratedClass* object, KvXmlLib10::CXmlAttribute* attribute) = 0;
    /// Called once after every attribute of an element was offered; found
    /// tells whether this descriptor took one.
    virtual bool Validate(const KvXmlLib10::CXmlSerializationContext& context, bool found) const = 0;

    void ReadProperty(const KvXmlLib10::CXmlGeneratedClass* object, KvXmlLib10::KvVariant& value) const;
    void AccessProperty(KvXmlLib10::CXmlGeneratedClass* object, bool read, KvXmlLib10::KvVariant& value) const;
    /// Same local name (exact bytes) and, unless the context ignores
    /// namespaces, the same namespace URI. Null never matches.
    bool IsThisAttribute(const KvXmlLib10::CXmlSerializationContext& context,
                         const KvXmlLib10::CXmlAttribute* attribute) const;
    /// The wildcard namespace rules (restriction notation "##any" ...).
    static bool IsNamespaceValid(const char* namespaceUri, const char* restriction, const char* targetNamespace);
    /// As IsNamespaceValid; throws CKvInvalidNamespaceException instead of false.
    static bool TestNamespace(const char* namespaceUri, const char* restriction, const char* targetNamespace);
    /// The namespace in which object's element is written.
    static std::string GetTargetNamespace(const KvXmlLib10::CXmlObjectBase* object);
    /// Lets object write itself (its last flag false).
    static void ToXml_Int(const KvXmlLib10::CXmlObjectBase* object, KvXmlLib10::CXmlWriter* writer, bool isRoot,
                          const char* targetNamespace, const KvXmlLib10::CXmlSerializationContext& context);

    const std::string& GetAttributeName() const { return m_attributeName; }
    const std::string& GetNamespaceURI() const { return m_namespaceUri; }
    int32_t GetPropertyId() const { return m_propertyId; }
    bool IsOptional() const { return m_optional; }
    const std::string& GetDefaultValue() const { return m_defaultValue; }

private:
    std::string m_attributeName;
    std::string m_namespaceUri;
    int32_t m_propertyId;
    bool m_optional;
    std::string m_defaultValue;
};

/// An attribute holding one primitive value. Facets are checked on writing
/// only. Matching on reading is always by name and namespace: this kind does
/// not honour the context's ignore-namespaces option.
class KVXML_API CAttributeInfoPrimitive : public CAttributeInfo {
public:
    CAttributeInfoPrimitive(const char* attributeName, const char* namespaceUri, int32_t propertyId, bool optional,
                            KvXmlLib10::ItemType itemType, const char* numberFormat,
                            KvXmlLib10::CWhitespaceUtils::WhitespaceRule whitespaceRule,
                            const KvXmlLib10::CPrimitiveRestrictions& restrictions, const char* defaultValue);
    ~CAttributeInfoPrimitive() override;

    /// An unset optional value writes nothing; an unset required one fails
    /// in the conversion. With NoOptionalAttributeDefaultOutput an optional
    /// value whose text equals the default exactly is left out.
    void AttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                        const KvXmlLib10::CXmlGeneratedClass* object, KvXmlLib10::CXmlWriter* writer) const override;
    bool AttributeFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                          KvXmlLib10::CXmlAttribute* attribute) override;
    /// Throws CKvValidationException "Failed to find the required Attribute [%s]".
    bool Validate(const KvXmlLib10::CXmlSerializationContext& context, bool found) const override;
    /// Throws what the facet checker throws.
    void CheckRestriction(const KvXmlLib10::KvVariant& value) const;

    KvXmlLib10::ItemType GetItemType() const { return m_itemType; }
    const std::string& GetNumberFormat() const { return m_numberFormat; }
    KvXmlLib10::CWhitespaceUtils::WhitespaceRule GetWhitespaceRule() const { return m_whitespaceRule; }
    const KvXmlLib10::CPrimitiveRestrictions& GetRestrictions() const { return m_restrictions; }

private:
    KvXmlLib10::ItemType m_itemType;
    std::string m_numberFormat;
    KvXmlLib10::CWhitespaceUtils::WhitespaceRule m_whitespaceRule;
    KvXmlLib10::CPrimitiveRestrictions m_restrictions;
};

/// An attribute holding an enumeration value as a 32-bit integer. Matches
/// through IsThisAttribute, so ignore-namespaces is honoured.
class KVXML_API CAttributeInfoEnum : public CAttributeInfo {
public:
    CAttributeInfoEnum(const char* attributeName, const char* namespaceUri, int32_t propertyId, bool optional,
                       EnumToStringFunc enumToString, StringToEnumFunc stringToEnum, const char* defaultValue);
    ~CAttributeInfoEnum() override;

    void AttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                        const KvXmlLib10::CXmlGeneratedClass* object, KvXmlLib10::CXmlWriter* writer) const override;
    bool AttributeFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                          KvXmlLib10::CXmlAttribute* attribute) override;
    /// Throws CKvValidationException "Failed to find the required Attribute [%s]".
    bool Validate(const KvXmlLib10::CXmlSerializationContext& context, bool found) const override;

private:
    EnumToStringFunc m_enumToString;
    StringToEnumFunc m_stringToEnum;
};

/// The wildcard (xs:anyAttribute): attributes whose namespace the
/// restriction admits against the target namespace are gathered into the
/// CAttributeCol held by the property, and written back from it. Validation
/// always accepts.
class KVXML_API CAttributeInfoAny : public CAttributeInfo {
public:
    CAttributeInfoAny(const char* attributeName, const char* namespaceUri, int32_t propertyId, bool optional,
                      const char* defaultValue, const char* restriction, const char* targetNamespace);
    ~CAttributeInfoAny() override;
    /// The collection writes itself with the object's target namespace; an
    /// unset property writes nothing.
    void AttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                        const KvXmlLib10::CXmlGeneratedClass* object, KvXmlLib10::CXmlWriter* writer) const override;
    /// False for a namespace the restriction refuses. Throws CKvException
    /// "Serialization Data Error : The collection should be a CAttributeCol,
    /// it was not!" when the property holds anything else.
    bool AttributeFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                          KvXmlLib10::CXmlAttribute* attribute) override;
    bool Validate(const KvXmlLib10::CXmlSerializationContext& context, bool found) const override;

    const std::string& GetNamespaceRestriction() const { return m_restriction; }
    /// The namespace the restriction is read against.
    const std::string& GetWildcardNamespace() const { return m_targetNamespace; }

private:
    std::string m_restriction;
    std::string m_targetNamespace;
};

}  // namespace KvXmlLib10Data
