// ElementInfoUntyped.cpp - the wildcard element descriptors: shells over the untyped codec with the miss rule of
// their group and cardinality.
#include "kvxml/metadata/ElementInfoUntyped.h"

#include "metadata/detail/UntypedRead.h"

namespace KvXmlLib10Data {

using KvXmlLib10::CXmlElement;
using KvXmlLib10::CXmlGeneratedClass;
using KvXmlLib10::CXmlSerializationContext;
using KvXmlLib10::CXmlWriter;
using KvXmlLib10::detail::MissRule;
using KvXmlLib10::detail::UntypedCodec;

namespace {
std::string Copy(const char* text) { return text ? std::string(text) : std::string(); }
}  // namespace

CElementInfoSeqUntpdMnd::CElementInfoSeqUntpdMnd(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                                 const char* restriction, const char* wildcardNamespace)
    : CElementInfoSeq(elementName, namespaceUri, propertyId),
      m_restriction(Copy(restriction)),
      m_wildcardNamespace(Copy(wildcardNamespace)) {}

CElementInfoSeqUntpdMnd::~CElementInfoSeqUntpdMnd() = default;

bool CElementInfoSeqUntpdMnd::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                           CXmlWriter* writer) const {
    return UntypedCodec{m_restriction, m_wildcardNamespace, true}.Write(*this, context, object, writer);
}

bool CElementInfoSeqUntpdMnd::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                             CXmlElement* parent, CXmlElement** current, const char* namespaceUri,
                                             XmlElementType elementType) {
    return ReadUntypedMember(MissRule::Search, UntypedCodec{m_restriction, m_wildcardNamespace, true}, *this, context,
                             object, parent, current, namespaceUri, elementType);
}

CElementInfoSeqUntpdOpt::CElementInfoSeqUntpdOpt(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                                 const char* restriction, const char* wildcardNamespace)
    : CElementInfoSeq(elementName, namespaceUri, propertyId),
      m_restriction(Copy(restriction)),
      m_wildcardNamespace(Copy(wildcardNamespace)) {}

CElementInfoSeqUntpdOpt::~CElementInfoSeqUntpdOpt() = default;

bool CElementInfoSeqUntpdOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                           CXmlWriter* writer) const {
    return UntypedCodec{m_restriction, m_wildcardNamespace, false}.Write(*this, context, object, writer);
}

bool CElementInfoSeqUntpdOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                             CXmlElement* parent, CXmlElement** current, const char* namespaceUri,
                                             XmlElementType elementType) {
    return ReadUntypedMember(MissRule::Accept, UntypedCodec{m_restriction, m_wildcardNamespace, false}, *this, context,
                             object, parent, current, namespaceUri, elementType);
}

CElementInfoAllUntpdMnd::CElementInfoAllUntpdMnd(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                                 const char* restriction, const char* wildcardNamespace)
    : CElementInfoAll(elementName, namespaceUri, propertyId),
      m_restriction(Copy(restriction)),
      m_wildcardNamespace(Copy(wildcardNamespace)) {}

CElementInfoAllUntpdMnd::~CElementInfoAllUntpdMnd() = default;

bool CElementInfoAllUntpdMnd::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                           CXmlWriter* writer) const {
    return UntypedCodec{m_restriction, m_wildcardNamespace, true}.Write(*this, context, object, writer);
}

bool CElementInfoAllUntpdMnd::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                             CXmlElement* parent, CXmlElement** current, const char* namespaceUri,
                                             XmlElementType elementType) {
    return ReadUntypedMember(MissRule::Decline, UntypedCodec{m_restriction, m_wildcardNamespace, true}, *this, context,
                             object, parent, current, namespaceUri, elementType);
}

bool CElementInfoAllUntpdMnd::Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool found,
                                       bool checkMandatory) const {
    return KvXmlLib10::detail::ValidateMandatory(*this, found, checkMandatory);
}

CElementInfoAllUntpdOpt::CElementInfoAllUntpdOpt(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                                 const char* restriction, const char* wildcardNamespace)
    : CElementInfoAll(elementName, namespaceUri, propertyId),
      m_restriction(Copy(restriction)),
      m_wildcardNamespace(Copy(wildcardNamespace)) {}

CElementInfoAllUntpdOpt::~CElementInfoAllUntpdOpt() = default;

bool CElementInfoAllUntpdOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                           CXmlWriter* writer) const {
    return UntypedCodec{m_restriction, m_wildcardNamespace, false}.Write(*this, context, object, writer);
}

bool CElementInfoAllUntpdOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                             CXmlElement* parent, CXmlElement** current, const char* namespaceUri,
                                             XmlElementType elementType) {
    return ReadUntypedMember(MissRule::Decline, UntypedCodec{m_restriction, m_wildcardNamespace, false}, *this, context,
                             object, parent, current, namespaceUri, elementType);
}

bool CElementInfoAllUntpdOpt::Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool, bool) const {
    return true;
}

CElementInfoChoiceUntpdOpt::CElementInfoChoiceUntpdOpt(const char* elementName, const char* namespaceUri,
                                                       int32_t propertyId, const char* restriction,
                                                       const char* wildcardNamespace)
    : CElementInfoChoice(elementName, namespaceUri, propertyId),
      m_restriction(Copy(restriction)),
      m_wildcardNamespace(Copy(wildcardNamespace)) {}

CElementInfoChoiceUntpdOpt::~CElementInfoChoiceUntpdOpt() = default;

bool CElementInfoChoiceUntpdOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                              CXmlWriter* writer) const {
    return UntypedCodec{m_restriction, m_wildcardNamespace, false}.Write(*this, context, object, writer);
}

bool CElementInfoChoiceUntpdOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                                CXmlElement* parent, CXmlElement** current, const char* namespaceUri,
                                                XmlElementType elementType) {
    return ReadUntypedMember(MissRule::Decline, UntypedCodec{m_restriction, m_wildcardNamespace, false}, *this, context,
                             object, parent, current, namespaceUri, elementType);
}

CElementInfoSeqUntpdCol::CElementInfoSeqUntpdCol(const char* elementName, const char* namespaceUri, int32_t propertyId)
    : CElementInfoSeqCol(elementName, namespaceUri, propertyId) {}

CElementInfoSeqUntpdCol::~CElementInfoSeqUntpdCol() = default;

bool CElementInfoSeqUntpdCol::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                             CXmlElement* parent, CXmlElement** current, const char*,
                                             XmlElementType elementType) {
    return KvXmlLib10::detail::ReadUntypedCollection(MissRule::Accept, *this, context, object, parent, current,
                                                     elementType);
}

CElementInfoChoiceUntpdCol::CElementInfoChoiceUntpdCol(const char* elementName, const char* namespaceUri,
                                                       int32_t propertyId)
    : CElementInfoChoiceCol(elementName, namespaceUri, propertyId) {}

CElementInfoChoiceUntpdCol::~CElementInfoChoiceUntpdCol() = default;

bool CElementInfoChoiceUntpdCol::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                                CXmlElement* parent, CXmlElement** current, const char*,
                                                XmlElementType elementType) {
    return KvXmlLib10::detail::ReadUntypedCollection(MissRule::Decline, *this, context, object, parent, current,
                                                     elementType);
}

CElementInfoAllUntpdCol::CElementInfoAllUntpdCol(const char* elementName, const char* namespaceUri, int32_t propertyId)
    : CElementInfoAllCol(elementName, namespaceUri, propertyId) {}

CElementInfoAllUntpdCol::~CElementInfoAllUntpdCol() = default;

}  // namespace KvXmlLib10Data
