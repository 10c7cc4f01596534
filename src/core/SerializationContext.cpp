// SerializationContext.cpp - option rules and the process-wide default context.
#include "kvxml/core/SerializationContext.h"

#include "kvxml/foundation/KvException.h"
#include "foundation/detail/OrEmpty.h"
#include "kvxml/metadata/AnyAttribute.h"

namespace KvXmlLib10 {

CXmlSerializationContext CXmlSerializationContext::m_defaultContext;

CXmlSerializationContext::CXmlSerializationContext() = default;
CXmlSerializationContext::CXmlSerializationContext(const CXmlSerializationContext& other) = default;
CXmlSerializationContext& CXmlSerializationContext::operator=(const CXmlSerializationContext& other) = default;
CXmlSerializationContext::~CXmlSerializationContext() = default;

CXmlSerializationContext::RootAttributes::~RootAttributes() {
    if (CAttributeCol* held = collection.load()) held->Release();
}

CAttributeCol* CXmlSerializationContext::GetAdditionalRootAttributes() const {
    std::atomic<CAttributeCol*>& slot = m_additionalRootAttributes.collection;
    CAttributeCol* collection = slot.load(std::memory_order_acquire);
    if (!collection) {
        // Every root write asks, so threads sharing the default context may
        // race here: the loser drops its collection and takes the winner's.
        CAttributeCol* created = new CAttributeCol("", "##any", "");
        created->AddRef();
        if (slot.compare_exchange_strong(collection, created, std::memory_order_acq_rel))
            collection = created;
        else
            created->Release();
    }
    collection->AddRef();
    return collection;
}

void CXmlSerializationContext::SetIgnoreUnknownElements(bool value) {
    if (value && m_ignoreMissingMandatoryElements) {
        throw CKvInvalidStateException(
            "The parser can only ignore additional elements, or ignore the fact that some required ones are "
            "missing, you can not ignore both\n"
            "Set IgnoreMissingMandatoryElements to false before setting IgnoreUnknownElements to true");
    }
    m_ignoreUnknownElements = value;
}

void CXmlSerializationContext::SetIgnoreMissingMandatoryElements(bool value) {
    if (value && m_ignoreUnknownElements) {
        throw CKvInvalidStateException(
            "The parser can only ignore additional elements, or ignore the fact that some required ones are "
            "missing, you can not ignore both\n"
            "Set IgnoreUnknownElements to false before setting IgnoreMissingMandatoryElements to true");
    }
    m_ignoreMissingMandatoryElements = value;
}

bool CXmlSerializationContext::GetIgnoreNamespaces() const {
    return m_ignoreNamespaces || m_schemaType == SchemaType_NoNamespaces;
}

void CXmlSerializationContext::SetInLineSchema(const char* schema) { m_inLineSchema = detail::OrEmpty(schema); }

void CXmlSerializationContext::SetDefaultNamespaceURI(const char* uri) { m_defaultNamespaceURI = detail::OrEmpty(uri); }

}  // namespace KvXmlLib10
