// ElementInfoClass.cpp - the class and abstract-class element descriptors: thin shells over the miss rule of their
// group and the class codec.
#include "kvxml/metadata/ElementInfoClass.h"

#include <string>

#include "kvxml/foundation/KvException.h"
#include "metadata/detail/MemberRead.h"

namespace KvXmlLib10Data {

using KvXmlLib10::AbstractClassFactoryFunc;
using KvXmlLib10::ClassFactoryFunc;
using KvXmlLib10::CXmlElement;
using KvXmlLib10::CXmlGeneratedClass;
using KvXmlLib10::CXmlSerializationContext;
using KvXmlLib10::CXmlWriter;
using KvXmlLib10::detail::ClassCodec;
using KvXmlLib10::detail::MissRule;

namespace {

// Abstract members of an all group are deliberately not supported on reading.
[[noreturn]] void ThrowNotImplemented(const char* operation) {
    throw KvXmlLib10::CKvException(std::string(operation) +
                                   ", has not been implemented fully, contact the maintainers of your kvxml build");
}

}  // namespace

CElementInfoSeqClsMnd::CElementInfoSeqClsMnd(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                             XmlElementType elementType, ClassFactoryFunc factory, int32_t classNumber,
                                             bool mandatoryContent)
    : CElementInfoSeq(elementName, namespaceUri, propertyId),
      m_elementType(elementType),
      m_factory(factory),
      m_classNumber(classNumber),
      m_mandatoryContent(mandatoryContent) {}

CElementInfoSeqClsMnd::~CElementInfoSeqClsMnd() = default;

bool CElementInfoSeqClsMnd::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                         CXmlWriter* writer) const {
    return ClassCodec{m_elementType, m_factory, m_classNumber, nullptr, true}.Write(*this, context, object, writer);
}

void CElementInfoSeqClsMnd::PseudoChildAttributeToXml(const CXmlSerializationContext& context,
                                                      const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    KvXmlLib10::detail::WritePseudoChildAttributes(*this, m_elementType, context, object, writer);
}

bool CElementInfoSeqClsMnd::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                           CXmlElement* parent, CXmlElement** current, const char*,
                                           XmlElementType elementType) {
    // A pseudo child that reads nothing is missing only when its content is mandatory.
    const bool optionalPseudo = m_elementType == ElementType_PseudoElement && !m_mandatoryContent;
    return ReadClassMember(optionalPseudo ? MissRule::Accept : MissRule::Search,
                           ClassCodec{m_elementType, m_factory, m_classNumber, nullptr, true}, *this, context, object,
                           parent, current, elementType);
}

CElementInfoAllClsMnd::CElementInfoAllClsMnd(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                             XmlElementType elementType, ClassFactoryFunc factory, int32_t classNumber,
                                             bool mandatoryContent)
    : CElementInfoAll(elementName, namespaceUri, propertyId),
      m_elementType(elementType),
      m_factory(factory),
      m_classNumber(classNumber),
      m_mandatoryContent(mandatoryContent) {}

CElementInfoAllClsMnd::~CElementInfoAllClsMnd() = default;

bool CElementInfoAllClsMnd::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                         CXmlWriter* writer) const {
    return ClassCodec{m_elementType, m_factory, m_classNumber, nullptr, true}.Write(*this, context, object, writer);
}

void CElementInfoAllClsMnd::PseudoChildAttributeToXml(const CXmlSerializationContext& context,
                                                      const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    KvXmlLib10::detail::WritePseudoChildAttributes(*this, m_elementType, context, object, writer);
}

bool CElementInfoAllClsMnd::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                           CXmlElement* parent, CXmlElement** current, const char*,
                                           XmlElementType elementType) {
    return ReadClassMember(MissRule::Decline, ClassCodec{m_elementType, m_factory, m_classNumber, nullptr, true}, *this,
                           context, object, parent, current, elementType);
}

bool CElementInfoAllClsMnd::Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool found,
                                     bool checkMandatory) const {
    if (found || !checkMandatory) return found;
    // The pre-created child of an own element may stay empty unless its content is required.
    if (m_elementType == ElementType_Element && !m_mandatoryContent) return true;
    KvXmlLib10::detail::ThrowMandatoryMissing(*this);
}

CElementInfoSeqClsOpt::CElementInfoSeqClsOpt(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                             XmlElementType elementType, ClassFactoryFunc factory, int32_t classNumber)
    : CElementInfoSeq(elementName, namespaceUri, propertyId),
      m_elementType(elementType),
      m_factory(factory),
      m_classNumber(classNumber) {}

CElementInfoSeqClsOpt::~CElementInfoSeqClsOpt() = default;

bool CElementInfoSeqClsOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                         CXmlWriter* writer) const {
    return ClassCodec{m_elementType, m_factory, m_classNumber, nullptr, false}.Write(*this, context, object, writer);
}

void CElementInfoSeqClsOpt::PseudoChildAttributeToXml(const CXmlSerializationContext& context,
                                                      const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    KvXmlLib10::detail::WritePseudoChildAttributes(*this, m_elementType, context, object, writer);
}

bool CElementInfoSeqClsOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                           CXmlElement* parent, CXmlElement** current, const char*,
                                           XmlElementType elementType) {
    return ReadClassMember(MissRule::Accept, ClassCodec{m_elementType, m_factory, m_classNumber, nullptr, false}, *this,
                           context, object, parent, current, elementType);
}

CElementInfoAllClsOpt::CElementInfoAllClsOpt(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                             XmlElementType elementType, ClassFactoryFunc factory, int32_t classNumber)
    : CElementInfoAll(elementName, namespaceUri, propertyId),
      m_elementType(elementType),
      m_factory(factory),
      m_classNumber(classNumber) {}

CElementInfoAllClsOpt::~CElementInfoAllClsOpt() = default;

bool CElementInfoAllClsOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                         CXmlWriter* writer) const {
    return ClassCodec{m_elementType, m_factory, m_classNumber, nullptr, false}.Write(*this, context, object, writer);
}

void CElementInfoAllClsOpt::PseudoChildAttributeToXml(const CXmlSerializationContext& context,
                                                      const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    KvXmlLib10::detail::WritePseudoChildAttributes(*this, m_elementType, context, object, writer);
}

bool CElementInfoAllClsOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                           CXmlElement* parent, CXmlElement** current, const char*,
                                           XmlElementType elementType) {
    return ReadClassMember(MissRule::Decline, ClassCodec{m_elementType, m_factory, m_classNumber, nullptr, false},
                           *this, context, object, parent, current, elementType);
}

bool CElementInfoAllClsOpt::Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool, bool) const {
    return true;
}

CElementInfoChoiceClsOpt::CElementInfoChoiceClsOpt(const char* elementName, const char* namespaceUri,
                                                   int32_t propertyId, XmlElementType elementType,
                                                   ClassFactoryFunc factory, int32_t classNumber)
    : CElementInfoChoice(elementName, namespaceUri, propertyId),
      m_elementType(elementType),
      m_factory(factory),
      m_classNumber(classNumber) {}

CElementInfoChoiceClsOpt::~CElementInfoChoiceClsOpt() = default;

bool CElementInfoChoiceClsOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                            CXmlWriter* writer) const {
    return ClassCodec{m_elementType, m_factory, m_classNumber, nullptr, false}.Write(*this, context, object, writer);
}

void CElementInfoChoiceClsOpt::PseudoChildAttributeToXml(const CXmlSerializationContext& context,
                                                         const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    KvXmlLib10::detail::WritePseudoChildAttributes(*this, m_elementType, context, object, writer);
}

bool CElementInfoChoiceClsOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                              CXmlElement* parent, CXmlElement** current, const char*,
                                              XmlElementType elementType) {
    return ReadClassMember(MissRule::Decline, ClassCodec{m_elementType, m_factory, m_classNumber, nullptr, false},
                           *this, context, object, parent, current, elementType);
}

CElementInfoSeqAbsClsMnd::CElementInfoSeqAbsClsMnd(const char* elementName, const char* namespaceUri,
                                                   int32_t propertyId, XmlElementType elementType,
                                                   AbstractClassFactoryFunc factory)
    : CElementInfoSeq(elementName, namespaceUri, propertyId), m_elementType(elementType), m_factory(factory) {}

CElementInfoSeqAbsClsMnd::~CElementInfoSeqAbsClsMnd() = default;

bool CElementInfoSeqAbsClsMnd::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                            CXmlWriter* writer) const {
    return ClassCodec{m_elementType, nullptr, 0, m_factory, false}.Write(*this, context, object, writer);
}

void CElementInfoSeqAbsClsMnd::PseudoChildAttributeToXml(const CXmlSerializationContext& context,
                                                         const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    KvXmlLib10::detail::WritePseudoChildAttributes(*this, m_elementType, context, object, writer);
}

bool CElementInfoSeqAbsClsMnd::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                              CXmlElement* parent, CXmlElement** current, const char*,
                                              XmlElementType elementType) {
    return ReadClassMember(MissRule::Substitute, ClassCodec{m_elementType, nullptr, 0, m_factory, false}, *this,
                           context, object, parent, current, elementType);
}

CElementInfoSeqAbsClsOpt::CElementInfoSeqAbsClsOpt(const char* elementName, const char* namespaceUri,
                                                   int32_t propertyId, XmlElementType elementType,
                                                   AbstractClassFactoryFunc factory)
    : CElementInfoSeq(elementName, namespaceUri, propertyId), m_elementType(elementType), m_factory(factory) {}

CElementInfoSeqAbsClsOpt::~CElementInfoSeqAbsClsOpt() = default;

bool CElementInfoSeqAbsClsOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                            CXmlWriter* writer) const {
    return ClassCodec{m_elementType, nullptr, 0, m_factory, false}.Write(*this, context, object, writer);
}

void CElementInfoSeqAbsClsOpt::PseudoChildAttributeToXml(const CXmlSerializationContext& context,
                                                         const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    KvXmlLib10::detail::WritePseudoChildAttributes(*this, m_elementType, context, object, writer);
}

bool CElementInfoSeqAbsClsOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                              CXmlElement* parent, CXmlElement** current, const char*,
                                              XmlElementType elementType) {
    return ReadClassMember(MissRule::Accept, ClassCodec{m_elementType, nullptr, 0, m_factory, false}, *this, context,
                           object, parent, current, elementType);
}

CElementInfoChoiceAbsClsOpt::CElementInfoChoiceAbsClsOpt(const char* elementName, const char* namespaceUri,
                                                         int32_t propertyId, XmlElementType elementType,
                                                         AbstractClassFactoryFunc factory)
    : CElementInfoChoice(elementName, namespaceUri, propertyId), m_elementType(elementType), m_factory(factory) {}

CElementInfoChoiceAbsClsOpt::~CElementInfoChoiceAbsClsOpt() = default;

bool CElementInfoChoiceAbsClsOpt::ElementToXml(const CXmlSerializationContext& context,
                                               const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    return ClassCodec{m_elementType, nullptr, 0, m_factory, false}.Write(*this, context, object, writer);
}

void CElementInfoChoiceAbsClsOpt::PseudoChildAttributeToXml(const CXmlSerializationContext& context,
                                                            const CXmlGeneratedClass* object,
                                                            CXmlWriter* writer) const {
    KvXmlLib10::detail::WritePseudoChildAttributes(*this, m_elementType, context, object, writer);
}

bool CElementInfoChoiceAbsClsOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                                 CXmlElement* parent, CXmlElement** current, const char*,
                                                 XmlElementType elementType) {
    return ReadClassMember(MissRule::Decline, ClassCodec{m_elementType, nullptr, 0, m_factory, false}, *this, context,
                           object, parent, current, elementType);
}

CElementInfoAllAbsClsOpt::CElementInfoAllAbsClsOpt(const char* elementName, const char* namespaceUri,
                                                   int32_t propertyId, XmlElementType elementType,
                                                   AbstractClassFactoryFunc factory)
    : CElementInfoAll(elementName, namespaceUri, propertyId), m_elementType(elementType), m_factory(factory) {}

CElementInfoAllAbsClsOpt::~CElementInfoAllAbsClsOpt() = default;

bool CElementInfoAllAbsClsOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                            CXmlWriter* writer) const {
    return ClassCodec{m_elementType, nullptr, 0, m_factory, false}.Write(*this, context, object, writer);
}

void CElementInfoAllAbsClsOpt::PseudoChildAttributeToXml(const CXmlSerializationContext& context,
                                                         const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    KvXmlLib10::detail::WritePseudoChildAttributes(*this, m_elementType, context, object, writer);
}

bool CElementInfoAllAbsClsOpt::ElementFromXml(const CXmlSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                                              CXmlElement**, const char*, XmlElementType) {
    ThrowNotImplemented("CElementInfoAllAbsClsOpt::ElementFromXml");
}

bool CElementInfoAllAbsClsOpt::Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool, bool) const {
    return true;
}

CElementInfoAllAbsClsMnd::CElementInfoAllAbsClsMnd(const char* elementName, const char* namespaceUri,
                                                   int32_t propertyId, XmlElementType elementType,
                                                   AbstractClassFactoryFunc factory, int32_t number)
    : CElementInfoAll(elementName, namespaceUri, propertyId),
      m_elementType(elementType),
      m_factory(factory),
      m_number(number) {}

CElementInfoAllAbsClsMnd::~CElementInfoAllAbsClsMnd() = default;

bool CElementInfoAllAbsClsMnd::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                            CXmlWriter* writer) const {
    return ClassCodec{m_elementType, nullptr, 0, m_factory, false}.Write(*this, context, object, writer);
}

void CElementInfoAllAbsClsMnd::PseudoChildAttributeToXml(const CXmlSerializationContext& context,
                                                         const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    KvXmlLib10::detail::WritePseudoChildAttributes(*this, m_elementType, context, object, writer);
}

bool CElementInfoAllAbsClsMnd::ElementFromXml(const CXmlSerializationContext&, CXmlGeneratedClass*, CXmlElement*,
                                              CXmlElement**, const char*, XmlElementType) {
    ThrowNotImplemented("CElementInfoAllAbsClsMnd::ElementFromXml");
}

bool CElementInfoAllAbsClsMnd::Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool found,
                                        bool checkMandatory) const {
    return KvXmlLib10::detail::ValidateMandatory(*this, found, checkMandatory);
}

}  // namespace KvXmlLib10Data
