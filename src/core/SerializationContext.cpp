// SerializationContext.cpp - option rules and the process-wide default context.
#include "kvxml/core/SerializationContext.h"

#include "kvxml/foundation/KvException.h"
#include "foundation/detail/OrEmpty.h"

namespace KvXmlLib10 {

CXmlSerializationContext CXmlSerializationContext::m_defaultContext;

CXmlSerializationContext::CXmlSerializationContext() = default;
CXmlSerializationContext::CXmlSerializationContext(const CXmlSerializationContext& other) = default;
CXmlSerializationContext& CXmlSerializationContext::operator=(const CXmlSerializationContext& other) = default;
CXmlSerializationContext::~CXmlSerializationContext() = default;

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
