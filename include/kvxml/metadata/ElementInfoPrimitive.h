// ElementInfoPrimitive.h - descriptors of child elements holding one primitive value.
//
// Arguments after name, namespace URI and property id: nillable, item type,
// number format (may be null; used for float, double and decimal), whitespace
// rule applied on reading, facets checked on writing.
#pragma once

#include "kvxml/metadata/ElementInfo.h"

namespace KvXmlLib10Data {

/// Mandatory member of a sequence: searches for its element (see the
/// context's ignore options) and fails with "Failed to find a required element [%s]".
class KVXML_API CElementInfoSeqPrimMnd : public CElementInfoSeq {
public:
    CElementInfoSeqPrimMnd(const char* elementName, const char* namespaceUri, int32_t propertyId, bool nillable,
                           KvXmlLib10::ItemType itemType, const char* numberFormat,
                           KvXmlLib10::CWhitespaceUtils::WhitespaceRule whitespaceRule,
                           const KvXmlLib10::CPrimitiveRestrictions& restrictions);
    ~CElementInfoSeqPrimMnd() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
};

/// Optional member of a sequence: no match leaves object and cursor alone.
class KVXML_API CElementInfoSeqPrimOpt : public CElementInfoSeq {
public:
    CElementInfoSeqPrimOpt(const char* elementName, const char* namespaceUri, int32_t propertyId, bool nillable,
                           KvXmlLib10::ItemType itemType, const char* numberFormat,
                           KvXmlLib10::CWhitespaceUtils::WhitespaceRule whitespaceRule,
                           const KvXmlLib10::CPrimitiveRestrictions& restrictions);
    ~CElementInfoSeqPrimOpt() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
};

/// Mandatory member of an all group; Validate reports it missing.
class KVXML_API CElementInfoAllPrimMnd : public CElementInfoAll {
public:
    CElementInfoAllPrimMnd(const char* elementName, const char* namespaceUri, int32_t propertyId, bool nillable,
                           KvXmlLib10::ItemType itemType, const char* numberFormat,
                           KvXmlLib10::CWhitespaceUtils::WhitespaceRule whitespaceRule,
                           const KvXmlLib10::CPrimitiveRestrictions& restrictions);
    ~CElementInfoAllPrimMnd() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
    /// Throws CKvValidationException "Failed to find the mandatory element [%s]"
    /// when not found and checkMandatory is set.
    bool Validate(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                  bool found, bool checkMandatory) const override;
};

/// Optional member of an all group.
class KVXML_API CElementInfoAllPrimOpt : public CElementInfoAll {
public:
    CElementInfoAllPrimOpt(const char* elementName, const char* namespaceUri, int32_t propertyId, bool nillable,
                           KvXmlLib10::ItemType itemType, const char* numberFormat,
                           KvXmlLib10::CWhitespaceUtils::WhitespaceRule whitespaceRule,
                           const KvXmlLib10::CPrimitiveRestrictions& restrictions);
    ~CElementInfoAllPrimOpt() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
    /// Always true.
    bool Validate(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                  bool found, bool checkMandatory) const override;
};

/// Member of a choice: no match returns false so the next member is tried.
class KVXML_API CElementInfoChoicePrimOpt : public CElementInfoChoice {
public:
    CElementInfoChoicePrimOpt(const char* elementName, const char* namespaceUri, int32_t propertyId, bool nillable,
                              KvXmlLib10::ItemType itemType, const char* numberFormat,
                              KvXmlLib10::CWhitespaceUtils::WhitespaceRule whitespaceRule,
                              const KvXmlLib10::CPrimitiveRestrictions& restrictions);
    ~CElementInfoChoicePrimOpt() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
};

}  // namespace KvXmlLib10Data
