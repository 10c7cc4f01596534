// ElementInfoPrimitive.cpp - the primitive-value element descriptors: thin shells over the miss rule of their group and
// the primitive codec.
#include "kvxml/metadata/ElementInfoPrimitive.h"

#include "metadata/detail/MemberRead.h"

namespace KvXmlLib10Data {

using KvXmlLib10::CPrimitiveRestrictions;
using KvXmlLib10::CWhitespaceUtils;
using KvXmlLib10::CXmlElement;
using KvXmlLib10::CXmlGeneratedClass;
using KvXmlLib10::CXmlSerializationContext;
using KvXmlLib10::CXmlWriter;
using KvXmlLib10::ItemType;
using KvXmlLib10::detail::MissRule;

namespace {
constexpr KvXmlLib10::detail::PrimCodec kCodec{};
}  // namespace

CElementInfoSeqPrimMnd::CElementInfoSeqPrimMnd(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                               bool nillable, ItemType itemType, const char* numberFormat,
                                               CWhitespaceUtils::WhitespaceRule whitespaceRule,
                                               const CPrimitiveRestrictions& restrictions)
    : CElementInfoSeq(elementName, namespaceUri, propertyId, nillable, itemType, numberFormat, whitespaceRule,
                      restrictions) {}

CElementInfoSeqPrimMnd::~CElementInfoSeqPrimMnd() = default;

bool CElementInfoSeqPrimMnd::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
    return kCodec.Write(*this, context, object, writer);
}

bool CElementInfoSeqPrimMnd::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                            CXmlElement* parent, CXmlElement** current, const char*,
                                            XmlElementType elementType) {
    return ReadMember(MissRule::Search, kCodec, *this, context, object, parent, current, elementType);
}

CElementInfoSeqPrimOpt::CElementInfoSeqPrimOpt(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                               bool nillable, ItemType itemType, const char* numberFormat,
                                               CWhitespaceUtils::WhitespaceRule whitespaceRule,
                                               const CPrimitiveRestrictions& restrictions)
    : CElementInfoSeq(elementName, namespaceUri, propertyId, nillable, itemType, numberFormat, whitespaceRule,
                      restrictions) {}

CElementInfoSeqPrimOpt::~CElementInfoSeqPrimOpt() = default;

bool CElementInfoSeqPrimOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
    return kCodec.Write(*this, context, object, writer);
}

bool CElementInfoSeqPrimOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                            CXmlElement* parent, CXmlElement** current, const char*,
                                            XmlElementType elementType) {
    return ReadMember(MissRule::Accept, kCodec, *this, context, object, parent, current, elementType);
}

CElementInfoAllPrimMnd::CElementInfoAllPrimMnd(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                               bool nillable, ItemType itemType, const char* numberFormat,
                                               CWhitespaceUtils::WhitespaceRule whitespaceRule,
                                               const CPrimitiveRestrictions& restrictions)
    : CElementInfoAll(elementName, namespaceUri, propertyId, nillable, itemType, numberFormat, whitespaceRule,
                      restrictions) {}

CElementInfoAllPrimMnd::~CElementInfoAllPrimMnd() = default;

bool CElementInfoAllPrimMnd::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
    return kCodec.Write(*this, context, object, writer);
}

bool CElementInfoAllPrimMnd::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                            CXmlElement* parent, CXmlElement** current, const char*,
                                            XmlElementType elementType) {
    return ReadMember(MissRule::Decline, kCodec, *this, context, object, parent, current, elementType);
}

bool CElementInfoAllPrimMnd::Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool found,
                                      bool checkMandatory) const {
    return KvXmlLib10::detail::ValidateMandatory(*this, found, checkMandatory);
}

CElementInfoAllPrimOpt::CElementInfoAllPrimOpt(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                               bool nillable, ItemType itemType, const char* numberFormat,
                                               CWhitespaceUtils::WhitespaceRule whitespaceRule,
                                               const CPrimitiveRestrictions& restrictions)
    : CElementInfoAll(elementName, namespaceUri, propertyId, nillable, itemType, numberFormat, whitespaceRule,
                      restrictions) {}

CElementInfoAllPrimOpt::~CElementInfoAllPrimOpt() = default;

bool CElementInfoAllPrimOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                          CXmlWriter* writer) const {
    return kCodec.Write(*this, context, object, writer);
}

bool CElementInfoAllPrimOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                            CXmlElement* parent, CXmlElement** current, const char*,
                                            XmlElementType elementType) {
    return ReadMember(MissRule::Decline, kCodec, *this, context, object, parent, current, elementType);
}

bool CElementInfoAllPrimOpt::Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool, bool) const {
    return true;
}

CElementInfoChoicePrimOpt::CElementInfoChoicePrimOpt(const char* elementName, const char* namespaceUri,
                                                     int32_t propertyId, bool nillable, ItemType itemType,
                                                     const char* numberFormat,
                                                     CWhitespaceUtils::WhitespaceRule whitespaceRule,
                                                     const CPrimitiveRestrictions& restrictions)
    : CElementInfoChoice(elementName, namespaceUri, propertyId, nillable, itemType, numberFormat, whitespaceRule,
                         restrictions) {}

CElementInfoChoicePrimOpt::~CElementInfoChoicePrimOpt() = default;

bool CElementInfoChoicePrimOpt::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                             CXmlWriter* writer) const {
    return kCodec.Write(*this, context, object, writer);
}

bool CElementInfoChoicePrimOpt::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                               CXmlElement* parent, CXmlElement** current, const char*,
                                               XmlElementType elementType) {
    return ReadMember(MissRule::Decline, kCodec, *this, context, object, parent, current, elementType);
}

}  // namespace KvXmlLib10Data
