// ElementInfoCollection.cpp - the collection element descriptors: where each group checks the occurrence bounds; the
// Col members are shells over their base.
#include "kvxml/metadata/ElementInfoCollection.h"

#include "kvxml/core/SerializationContext.h"
#include "kvxml/core/XmlCollectionBase.h"
#include "kvxml/values/Variant.h"
#include "metadata/detail/MemberRead.h"
#include "metadata/detail/MetadataSupport.h"

namespace KvXmlLib10Data {

using KvXmlLib10::CXmlElement;
using KvXmlLib10::CXmlGeneratedClass;
using KvXmlLib10::CXmlSerializationContext;
using KvXmlLib10::CXmlWriter;
using KvXmlLib10::detail::MissRule;
using KvXmlLib10::detail::ReadCollectionMember;

namespace {

// Sequences and all groups refuse to write a collection whose count is out
// of bounds before anything of it is written.
bool WriteCheckedCollection(const CElementInfo& info, const CXmlSerializationContext& context,
                            const CXmlGeneratedClass* object, CXmlWriter* writer) {
    if (!context.GetIgnoreInvalidCollectionCounts()) {
        KvXmlLib10::KvVariant value;
        info.ReadProperty(object, value);
        KvXmlLib10::detail::HeldObject collection(value.GetXmlCollection());
        if (collection.get()) static_cast<KvXmlLib10::CXmlCollectionBase*>(collection.get())->ValidateCount(context);
    }
    return info.ElementToXmlCol(context, object, writer);
}

}  // namespace

CElementInfoSeqCol::CElementInfoSeqCol(const char* elementName, const char* namespaceUri, int32_t propertyId)
    : CElementInfoSeq(elementName, namespaceUri, propertyId) {}

CElementInfoSeqCol::~CElementInfoSeqCol() = default;

bool CElementInfoSeqCol::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                      CXmlWriter* writer) const {
    return WriteCheckedCollection(*this, context, object, writer);
}

bool CElementInfoSeqCol::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                        CXmlElement* parent, CXmlElement** current, const char*,
                                        XmlElementType elementType) {
    return ReadCollectionMember(MissRule::Accept, true, *this, context, object, parent, current, elementType);
}

CElementInfoChoiceCol::CElementInfoChoiceCol(const char* elementName, const char* namespaceUri, int32_t propertyId)
    : CElementInfoChoice(elementName, namespaceUri, propertyId) {}

CElementInfoChoiceCol::~CElementInfoChoiceCol() = default;

bool CElementInfoChoiceCol::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                         CXmlWriter* writer) const {
    return ElementToXmlCol(context, object, writer);
}

bool CElementInfoChoiceCol::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                           CXmlElement* parent, CXmlElement** current, const char*,
                                           XmlElementType elementType) {
    return ReadCollectionMember(MissRule::Decline, true, *this, context, object, parent, current, elementType);
}

CElementInfoAllCol::CElementInfoAllCol(const char* elementName, const char* namespaceUri, int32_t propertyId)
    : CElementInfoAll(elementName, namespaceUri, propertyId) {}

CElementInfoAllCol::~CElementInfoAllCol() = default;

bool CElementInfoAllCol::ElementToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                      CXmlWriter* writer) const {
    return WriteCheckedCollection(*this, context, object, writer);
}

bool CElementInfoAllCol::ElementFromXml(const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                                        CXmlElement* parent, CXmlElement** current, const char*,
                                        XmlElementType elementType) {
    return ReadCollectionMember(MissRule::Decline, false, *this, context, object, parent, current, elementType);
}

bool CElementInfoAllCol::Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool, bool) const {
    return true;
}

CElementInfoSeqPrimCol::CElementInfoSeqPrimCol(const char* elementName, const char* namespaceUri, int32_t propertyId)
    : CElementInfoSeqCol(elementName, namespaceUri, propertyId) {}
CElementInfoSeqPrimCol::~CElementInfoSeqPrimCol() = default;

CElementInfoChoicePrimCol::CElementInfoChoicePrimCol(const char* elementName, const char* namespaceUri,
                                                     int32_t propertyId)
    : CElementInfoChoiceCol(elementName, namespaceUri, propertyId) {}
CElementInfoChoicePrimCol::~CElementInfoChoicePrimCol() = default;

CElementInfoAllPrimCol::CElementInfoAllPrimCol(const char* elementName, const char* namespaceUri, int32_t propertyId)
    : CElementInfoAllCol(elementName, namespaceUri, propertyId) {}
CElementInfoAllPrimCol::~CElementInfoAllPrimCol() = default;

CElementInfoSeqEnumCol::CElementInfoSeqEnumCol(const char* elementName, const char* namespaceUri, int32_t propertyId)
    : CElementInfoSeqCol(elementName, namespaceUri, propertyId) {}
CElementInfoSeqEnumCol::~CElementInfoSeqEnumCol() = default;

CElementInfoChoiceEnumCol::CElementInfoChoiceEnumCol(const char* elementName, const char* namespaceUri,
                                                     int32_t propertyId)
    : CElementInfoChoiceCol(elementName, namespaceUri, propertyId) {}
CElementInfoChoiceEnumCol::~CElementInfoChoiceEnumCol() = default;

CElementInfoAllEnumCol::CElementInfoAllEnumCol(const char* elementName, const char* namespaceUri, int32_t propertyId)
    : CElementInfoAll(elementName, namespaceUri, propertyId) {}
CElementInfoAllEnumCol::~CElementInfoAllEnumCol() = default;

CElementInfoSeqClsCol::CElementInfoSeqClsCol(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                             XmlElementType elementType)
    : CElementInfoSeqCol(elementName, namespaceUri, propertyId), m_elementType(elementType) {}

CElementInfoSeqClsCol::~CElementInfoSeqClsCol() = default;

void CElementInfoSeqClsCol::PseudoChildAttributeToXml(const CXmlSerializationContext& context,
                                                      const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    KvXmlLib10::detail::WritePseudoChildAttributes(*this, m_elementType, context, object, writer);
}

CElementInfoChoiceClsCol::CElementInfoChoiceClsCol(const char* elementName, const char* namespaceUri,
                                                   int32_t propertyId, XmlElementType elementType)
    : CElementInfoChoiceCol(elementName, namespaceUri, propertyId), m_elementType(elementType) {}

CElementInfoChoiceClsCol::~CElementInfoChoiceClsCol() = default;

void CElementInfoChoiceClsCol::PseudoChildAttributeToXml(const CXmlSerializationContext& context,
                                                         const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    KvXmlLib10::detail::WritePseudoChildAttributes(*this, m_elementType, context, object, writer);
}

CElementInfoAllClsCol::CElementInfoAllClsCol(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                             XmlElementType elementType)
    : CElementInfoAllCol(elementName, namespaceUri, propertyId), m_elementType(elementType) {}

CElementInfoAllClsCol::~CElementInfoAllClsCol() = default;

void CElementInfoAllClsCol::PseudoChildAttributeToXml(const CXmlSerializationContext& context,
                                                      const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    KvXmlLib10::detail::WritePseudoChildAttributes(*this, m_elementType, context, object, writer);
}

CElementInfoSeqAbsClsCol::CElementInfoSeqAbsClsCol(const char* elementName, const char* namespaceUri,
                                                   int32_t propertyId, XmlElementType elementType)
    : CElementInfoSeqCol(elementName, namespaceUri, propertyId), m_elementType(elementType) {}

CElementInfoSeqAbsClsCol::~CElementInfoSeqAbsClsCol() = default;

void CElementInfoSeqAbsClsCol::PseudoChildAttributeToXml(const CXmlSerializationContext& context,
                                                         const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    KvXmlLib10::detail::WritePseudoChildAttributes(*this, m_elementType, context, object, writer);
}

CElementInfoChoiceAbsClsCol::CElementInfoChoiceAbsClsCol(const char* elementName, const char* namespaceUri,
                                                         int32_t propertyId, XmlElementType elementType)
    : CElementInfoChoiceCol(elementName, namespaceUri, propertyId), m_elementType(elementType) {}

CElementInfoChoiceAbsClsCol::~CElementInfoChoiceAbsClsCol() = default;

void CElementInfoChoiceAbsClsCol::PseudoChildAttributeToXml(const CXmlSerializationContext& context,
                                                            const CXmlGeneratedClass* object,
                                                            CXmlWriter* writer) const {
    KvXmlLib10::detail::WritePseudoChildAttributes(*this, m_elementType, context, object, writer);
}

CElementInfoAllAbsClsCol::CElementInfoAllAbsClsCol(const char* elementName, const char* namespaceUri,
                                                   int32_t propertyId, XmlElementType elementType)
    : CElementInfoAllCol(elementName, namespaceUri, propertyId), m_elementType(elementType) {}

CElementInfoAllAbsClsCol::~CElementInfoAllAbsClsCol() = default;

void CElementInfoAllAbsClsCol::PseudoChildAttributeToXml(const CXmlSerializationContext& context,
                                                         const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    KvXmlLib10::detail::WritePseudoChildAttributes(*this, m_elementType, context, object, writer);
}

}  // namespace KvXmlLib10Data
