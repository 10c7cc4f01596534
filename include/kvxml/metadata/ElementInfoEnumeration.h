// ElementInfoEnumeration.h - descriptors of child elements holding a member of a schema enumeration.
//
// The value travels as a 32-bit integer; two generated functions turn it into
// its schema text and back. Enumeration values are never facet-checked.
#pragma once

#include "kvxml/metadata/ElementInfo.h"

namespace KvXmlLib10Data {

/// Mandatory member of a sequence (searches like the primitive form).
class KVXML_API CElementInfoSeqEnumMnd : public CElementInfoSeq {
public:
    CElementInfoSeqEnumMnd(const char* elementName, const char* namespaceUri, int32_t propertyId, bool nillable,
                           EnumToStringFunc enumToString, StringToEnumFunc stringToEnum);
    ~CElementInfoSeqEnumMnd() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;

private:
    EnumToStringFunc m_enumToString;
    StringToEnumFunc m_stringToEnum;
};

/// Optional member of a sequence.
class KVXML_API CElementInfoSeqEnumOpt : public CElementInfoSeq {
public:
    CElementInfoSeqEnumOpt(const char* elementName, const char* namespaceUri, int32_t propertyId, bool nillable,
                           EnumToStringFunc enumToString, StringToEnumFunc stringToEnum);
    ~CElementInfoSeqEnumOpt() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;

private:
    EnumToStringFunc m_enumToString;
    StringToEnumFunc m_stringToEnum;
};

/// Mandatory member of an all group; Validate reports it missing.
class KVXML_API CElementInfoAllEnumMnd : public CElementInfoAll {
public:
    CElementInfoAllEnumMnd(const char* elementName, const char* namespaceUri, int32_t propertyId, bool nillable,
                           EnumToStringFunc enumToString, StringToEnumFunc stringToEnum);
    ~CElementInfoAllEnumMnd() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
    /// Throws CKvValidationException "Failed to find the mandatory element [%s]"
    /// when not found and checkMandatory is set.
    bool Validate(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                  bool found, bool checkMandatory) const override;

private:
    EnumToStringFunc m_enumToString;
    StringToEnumFunc m_stringToEnum;
};

/// Optional member of an all group.
class KVXML_API CElementInfoAllEnumOpt : public CElementInfoAll {
public:
    CElementInfoAllEnumOpt(const char* elementName, const char* namespaceUri, int32_t propertyId, bool nillable,
                           EnumToStringFunc enumToString, StringToEnumFunc stringToEnum);
    ~CElementInfoAllEnumOpt() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
    /// Always true.
    bool Validate(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                  bool found, bool checkMandatory) const override;

private:
    EnumToStringFunc m_enumToString;
    StringToEnumFunc m_stringToEnum;
};

/// Member of a choice: no match returns false so the next member is tried.
class KVXML_API CElementInfoChoiceEnumOpt : public CElementInfoChoice {
public:
    CElementInfoChoiceEnumOpt(const char* elementName, const char* namespaceUri, int32_t propertyId, bool nillable,
                              EnumToStringFunc enumToString, StringToEnumFunc stringToEnum);
    ~CElementInfoChoiceEnumOpt() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;

private:
    EnumToStringFunc m_enumToString;
    StringToEnumFunc m_stringToEnum;
};

}  // namespace KvXmlLib10Data
