// ElementInfoEnumeration.cpp - the enumeration element descriptors of the sequence, all and choice groups.
#include "kvxml/metadata/ElementInfoEnumeration.h"

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "metadata/detail/MetadataSupport.h"

namespace KvXmlLib10Data {

using KvXmlLib10::detail::MandatorySearch;

namespace {

[[noreturn]] void ThrowMandatoryMissing(const CElementInfo& info) {
    throw KvXmlLib10::CKvValidationException(
        KvXmlLib10::FormatString("Failed to find the mandatory element [%s]", info.GetElementName().c_str()));
}

}  // namespace

// ---- sequence, mandatory ----

CElementInfoSeqEnumMnd::CElementInfoSeqEnumMnd(const char* elementName, const char* namespaceUri,
                                               int32_t propertyId, bool nillable, EnumToStringFunc enumToString,
                                               StringToEnumFunc stringToEnum)
    : CElementInfoSeq(elementName, namespaceUri, propertyId, nillable),
      m_enumToString(enumToString),
      m_stringToEnum(stringToEnum) {}

CElementInfoSeqEnumMnd::~CElementInfoSeqEnumMnd() = default;

bool CElementInfoSeqEnumMnd::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
    return ElementToXmlEnum(context, object, writer, m_enumToString);
}

bool CElementInfoSeqEnumMnd::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
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
    KvXmlLib10::detail::ReadEnumElement(*this, object, current, m_stringToEnum);
    return true;
}

// ---- sequence, optional ----

CElementInfoSeqEnumOpt::CElementInfoSeqEnumOpt(const char* elementName, const char* namespaceUri,
                                               int32_t propertyId, bool nillable, EnumToStringFunc enumToString,
                                               StringToEnumFunc stringToEnum)
    : CElementInfoSeq(elementName, namespaceUri, propertyId, nillable),
      m_enumToString(enumToString),
      m_stringToEnum(stringToEnum) {}

CElementInfoSeqEnumOpt::~CElementInfoSeqEnumOpt() = default;

bool CElementInfoSeqEnumOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
    return ElementToXmlEnum(context, object, writer, m_enumToString);
}

bool CElementInfoSeqEnumOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                            CXmlElement*, CXmlElement** current, const char*, XmlElementType) {
    if (IsThisElement(context, *current))
        KvXmlLib10::detail::ReadEnumElement(*this, object, current, m_stringToEnum);
    return true;
}

// ---- all group, mandatory ----

CElementInfoAllEnumMnd::CElementInfoAllEnumMnd(const char* elementName, const char* namespaceUri,
                                               int32_t propertyId, bool nillable, EnumToStringFunc enumToString,
                                               StringToEnumFunc stringToEnum)
    : CElementInfoAll(elementName, namespaceUri, propertyId, nillable),
      m_enumToString(enumToString),
      m_stringToEnum(stringToEnum) {}

CElementInfoAllEnumMnd::~CElementInfoAllEnumMnd() = default;

bool CElementInfoAllEnumMnd::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
    return ElementToXmlEnum(context, object, writer, m_enumToString);
}

bool CElementInfoAllEnumMnd::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                            CXmlElement*, CXmlElement** current, const char*, XmlElementType) {
    if (!IsThisElement(context, *current)) return false;
    KvXmlLib10::detail::ReadEnumElement(*this, object, current, m_stringToEnum);
    return true;
}

bool CElementInfoAllEnumMnd::Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool found,
                                      bool checkMandatory) const {
    if (found || !checkMandatory) return true;
    ThrowMandatoryMissing(*this);
}

// ---- all group, optional ----

CElementInfoAllEnumOpt::CElementInfoAllEnumOpt(const char* elementName, const char* namespaceUri,
                                               int32_t propertyId, bool nillable, EnumToStringFunc enumToString,
                                               StringToEnumFunc stringToEnum)
    : CElementInfoAll(elementName, namespaceUri, propertyId, nillable),
      m_enumToString(enumToString),
      m_stringToEnum(stringToEnum) {}

CElementInfoAllEnumOpt::~CElementInfoAllEnumOpt() = default;

bool CElementInfoAllEnumOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
    return ElementToXmlEnum(context, object, writer, m_enumToString);
}

bool CElementInfoAllEnumOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                            CXmlElement*, CXmlElement** current, const char*, XmlElementType) {
    if (!IsThisElement(context, *current)) return false;
    KvXmlLib10::detail::ReadEnumElement(*this, object, current, m_stringToEnum);
    return true;
}

bool CElementInfoAllEnumOpt::Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool,
                                      bool) const {
    return true;
}

// ---- choice ----

CElementInfoChoiceEnumOpt::CElementInfoChoiceEnumOpt(const char* elementName, const char* namespaceUri,
                                                     int32_t propertyId, bool nillable,
                                                     EnumToStringFunc enumToString, StringToEnumFunc stringToEnum)
    : CElementInfoChoice(elementName, namespaceUri, propertyId, nillable),
      m_enumToString(enumToString),
      m_stringToEnum(stringToEnum) {}

CElementInfoChoiceEnumOpt::~CElementInfoChoiceEnumOpt() = default;

bool CElementInfoChoiceEnumOpt::ElementToXml(const CXmlSerializationContext& context,
                                             const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    return ElementToXmlEnum(context, object, writer, m_enumToString);
}

bool CElementInfoChoiceEnumOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                               CXmlElement*, CXmlElement** current, const char*, XmlElementType) {
    if (!IsThisElement(context, *current)) return false;
    KvXmlLib10::detail::ReadEnumElement(*this, object, current, m_stringToEnum);
    return true;
}

}  // namespace KvXmlLib10Data
