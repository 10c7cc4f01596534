// ElementInfoPrimitive.cpp - the primitive-value element descriptors of the sequence, all and choice groups.
#include "kvxml/metadata/ElementInfoPrimitive.h"

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "metadata/detail/MetadataSupport.h"

namespace KvXmlLib10Data {

using KvXmlLib10::detail::MandatorySearch;

// ---- sequence, mandatory ----

CElementInfoSeqPrimMnd::CElementInfoSeqPrimMnd(const char* elementName, const char* namespaceUri,
                                               int32_t propertyId, bool nillable, ItemType itemType,
                                               const char* numberFormat,
                                               CWhitespaceUtils::WhitespaceRule whitespaceRule,
                                               const CPrimitiveRestrictions& restrictions)
    : CElementInfoSeq(elementName, namespaceUri, propertyId, nillable, itemType, numberFormat, whitespaceRule,
                      restrictions) {}

CElementInfoSeqPrimMnd::~CElementInfoSeqPrimMnd() = default;

bool CElementInfoSeqPrimMnd::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
    return ElementToXmlPrim(context, object, writer);
}

bool CElementInfoSeqPrimMnd::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                            CXmlElement*, CXmlElement** current, const char*,
                                            XmlElementType elementType) {
    switch (KvXmlLib10::detail::SearchMandatoryElement(*this, context, current, elementType)) {
        case MandatorySearch::Absent:
            return true;
        case MandatorySearch::NotMatched:
            return false;
        case MandatorySearch::Found:
            break;
    }
    KvXmlLib10::detail::ReadPrimitiveElement(*this, object, current);
    return true;
}

// ---- sequence, optional ----

CElementInfoSeqPrimOpt::CElementInfoSeqPrimOpt(const char* elementName, const char* namespaceUri,
                                               int32_t propertyId, bool nillable, ItemType itemType,
                                               const char* numberFormat,
                                               CWhitespaceUtils::WhitespaceRule whitespaceRule,
                                               const CPrimitiveRestrictions& restrictions)
    : CElementInfoSeq(elementName, namespaceUri, propertyId, nillable, itemType, numberFormat, whitespaceRule,
                      restrictions) {}

CElementInfoSeqPrimOpt::~CElementInfoSeqPrimOpt() = default;

bool CElementInfoSeqPrimOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
    return ElementToXmlPrim(context, object, writer);
}

bool CElementInfoSeqPrimOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                            CXmlElement*, CXmlElement** current, const char*, XmlElementType) {
    if (IsThisElement(context, *current)) KvXmlLib10::detail::ReadPrimitiveElement(*this, object, current);
    return true;
}

// ---- all group, mandatory ----

CElementInfoAllPrimMnd::CElementInfoAllPrimMnd(const char* elementName, const char* namespaceUri,
                                               int32_t propertyId, bool nillable, ItemType itemType,
                                               const char* numberFormat,
                                               CWhitespaceUtils::WhitespaceRule whitespaceRule,
                                               const CPrimitiveRestrictions& restrictions)
    : CElementInfoAll(elementName, namespaceUri, propertyId, nillable, itemType, numberFormat, whitespaceRule,
                      restrictions) {}

CElementInfoAllPrimMnd::~CElementInfoAllPrimMnd() = default;

bool CElementInfoAllPrimMnd::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
    return ElementToXmlPrim(context, object, writer);
}

bool CElementInfoAllPrimMnd::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                            CXmlElement*, CXmlElement** current, const char*, XmlElementType) {
    if (!IsThisElement(context, *current)) return false;
    KvXmlLib10::detail::ReadPrimitiveElement(*this, object, current);
    return true;
}

bool CElementInfoAllPrimMnd::Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool found,
                                      bool checkMandatory) const {
    if (found || !checkMandatory) return true;
    throw KvXmlLib10::CKvValidationException(
        KvXmlLib10::FormatString("Failed to find the mandatory element [%s]", GetElementName().c_str()));
}

// ---- all group, optional ----

CElementInfoAllPrimOpt::CElementInfoAllPrimOpt(const char* elementName, const char* namespaceUri,
                                               int32_t propertyId, bool nillable, ItemType itemType,
                                               const char* numberFormat,
                                               CWhitespaceUtils::WhitespaceRule whitespaceRule,
                                               const CPrimitiveRestrictions& restrictions)
    : CElementInfoAll(elementName, namespaceUri, propertyId, nillable, itemType, numberFormat, whitespaceRule,
                      restrictions) {}

CElementInfoAllPrimOpt::~CElementInfoAllPrimOpt() = default;

bool CElementInfoAllPrimOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
    return ElementToXmlPrim(context, object, writer);
}

bool CElementInfoAllPrimOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                            CXmlElement*, CXmlElement** current, const char*, XmlElementType) {
    if (!IsThisElement(context, *current)) return false;
    KvXmlLib10::detail::ReadPrimitiveElement(*this, object, current);
    return true;
}

bool CElementInfoAllPrimOpt::Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool,
                                      bool) const {
    return true;
}

// ---- choice ----

CElementInfoChoicePrimOpt::CElementInfoChoicePrimOpt(const char* elementName, const char* namespaceUri,
                                                     int32_t propertyId, bool nillable, ItemType itemType,
                                                     const char* numberFormat,
                                                     CWhitespaceUtils::WhitespaceRule whitespaceRule,
                                                     const CPrimitiveRestrictions& restrictions)
    : CElementInfoChoice(elementName, namespaceUri, propertyId, nillable, itemType, numberFormat, whitespaceRule,
                         restrictions) {}

CElementInfoChoicePrimOpt::~CElementInfoChoicePrimOpt() = default;

bool CElementInfoChoicePrimOpt::ElementToXml(const CXmlSerializationContext& context,
                                             const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    return ElementToXmlPrim(context, object, writer);
}

bool CElementInfoChoicePrimOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                               CXmlElement*, CXmlElement** current, const char*, XmlElementType) {
    if (!IsThisElement(context, *current)) return false;
    KvXmlLib10::detail::ReadPrimitiveElement(*this, object, current);
    return true;
}

}  // namespace KvXmlLib10Data
