// ElementInfoEnumeration.cpp - the enumeration element descriptors: thin shells over the miss rule of their group and
// the enumeration codec.
#include "kvxml/metadata/ElementInfoEnumeration.h"

#include "metadata/detail/MemberRead.h"

namespace KvXmlLib10Data {

using KvXmlLib10::CXmlElement;
using KvXmlLib10::CXmlGeneratedClass;
using KvXmlLib10::CXmlSerializationContext;
using KvXmlLib10::CXmlWriter;
using KvXmlLib10::detail::EnumCodec;
using KvXmlLib10::detail::MissRule;

CElementInfoSeqEnumMnd::CElementInfoSeqEnumMnd(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                               bool nillable, EnumToStringFunc enumToString,
                                               StringToEnumFunc stringToEnum)
    : CElementInfoSeq(elementName, namespaceUri, propertyId, nillable),
      m_enumToString(enumToString),
      m_stringToEnum(stringToEnum) {}

CElementInfoSeqEnumMnd::~CElementInfoSeqEnumMnd() = default;

bool CElementInfoSeqEnumMnd::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
    return EnumCodec{m_enumToString, m_stringToEnum}.Write(*this, context, object, writer);
}

bool CElementInfoSeqEnumMnd::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                            CXmlElement* parent, CXmlElement** current, const char*,
                                            XmlElementType elementType) {
    return ReadMember(MissRule::Search, EnumCodec{m_enumToString, m_stringToEnum}, *this, context, object, parent,
                      current, elementType);
}

CElementInfoSeqEnumOpt::CElementInfoSeqEnumOpt(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                               bool nillable, EnumToStringFunc enumToString,
                                               StringToEnumFunc stringToEnum)
    : CElementInfoSeq(elementName, namespaceUri, propertyId, nillable),
      m_enumToString(enumToString),
      m_stringToEnum(stringToEnum) {}

CElementInfoSeqEnumOpt::~CElementInfoSeqEnumOpt() = default;

bool CElementInfoSeqEnumOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
    return EnumCodec{m_enumToString, m_stringToEnum}.Write(*this, context, object, writer);
}

bool CElementInfoSeqEnumOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                            CXmlElement* parent, CXmlElement** current, const char*,
                                            XmlElementType elementType) {
    return ReadMember(MissRule::Accept, EnumCodec{m_enumToString, m_stringToEnum}, *this, context, object, parent,
                      current, elementType);
}

CElementInfoAllEnumMnd::CElementInfoAllEnumMnd(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                               bool nillable, EnumToStringFunc enumToString,
                                               StringToEnumFunc stringToEnum)
    : CElementInfoAll(elementName, namespaceUri, propertyId, nillable),
      m_enumToString(enumToString),
      m_stringToEnum(stringToEnum) {}

CElementInfoAllEnumMnd::~CElementInfoAllEnumMnd() = default;

bool CElementInfoAllEnumMnd::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
    return EnumCodec{m_enumToString, m_stringToEnum}.Write(*this, context, object, writer);
}

bool CElementInfoAllEnumMnd::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                            CXmlElement* parent, CXmlElement** current, const char*,
                                            XmlElementType elementType) {
    return ReadMember(MissRule::Decline, EnumCodec{m_enumToString, m_stringToEnum}, *this, context, object, parent,
                      current, elementType);
}

bool CElementInfoAllEnumMnd::Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool found,
                                      bool checkMandatory) const {
    return KvXmlLib10::detail::ValidateMandatory(*this, found, checkMandatory);
}

CElementInfoAllEnumOpt::CElementInfoAllEnumOpt(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                               bool nillable, EnumToStringFunc enumToString,
                                               StringToEnumFunc stringToEnum)
    : CElementInfoAll(elementName, namespaceUri, propertyId, nillable),
      m_enumToString(enumToString),
      m_stringToEnum(stringToEnum) {}

CElementInfoAllEnumOpt::~CElementInfoAllEnumOpt() = default;

bool CElementInfoAllEnumOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
    return EnumCodec{m_enumToString, m_stringToEnum}.Write(*this, context, object, writer);
}

bool CElementInfoAllEnumOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                            CXmlElement* parent, CXmlElement** current, const char*,
                                            XmlElementType elementType) {
    return ReadMember(MissRule::Decline, EnumCodec{m_enumToString, m_stringToEnum}, *this, context, object, parent,
                      current, elementType);
}

bool CElementInfoAllEnumOpt::Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool, bool) const {
    return true;
}

CElementInfoChoiceEnumOpt::CElementInfoChoiceEnumOpt(const char* elementName, const char* namespaceUri,
                                                     int32_t propertyId, bool nillable, EnumToStringFunc enumToString,
                                                     StringToEnumFunc stringToEnum)
    : CElementInfoChoice(elementName, namespaceUri, propertyId, nillable),
      m_enumToString(enumToString),
      m_stringToEnum(stringToEnum) {}

CElementInfoChoiceEnumOpt::~CElementInfoChoiceEnumOpt() = default;

bool CElementInfoChoiceEnumOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                             CXmlWriter* writer) const {
    return EnumCodec{m_enumToString, m_stringToEnum}.Write(*this, context, object, writer);
}

bool CElementInfoChoiceEnumOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                               CXmlElement* parent, CXmlElement** current, const char*,
                                               XmlElementType elementType) {
    return ReadMember(MissRule::Decline, EnumCodec{m_enumToString, m_stringToEnum}, *this, context, object, parent,
                      current, elementType);
}

}  // namespace KvXmlLib10Data
