// ClassFactoryBase.cpp - splitting the xsi:type QName of a loaded element.
#include "kvxml/core/ClassFactoryBase.h"

#include "kvxml/dom/XmlDocument.h"
#include "kvxml/dom/XmlElement.h"
#include "foundation/detail/StandardNamespaces.h"

namespace KvXmlLib10 {

namespace {
const std::string kTypeName = "type";
const std::string kSchemaInstance = detail::kXsiNamespace;
}  // namespace

CClassfactoryBase::~CClassfactoryBase() = default;

std::string CClassfactoryBase::GetElementType(CXmlElement* element) {
    const std::string& value = element->GetAttribute(kTypeName, kSchemaInstance);
    std::size_t colon = value.find(':');
    return colon == std::string::npos ? value : value.substr(colon + 1);
}

std::string CClassfactoryBase::GetElementTypeNamespaceUri(CXmlElement* element) {
    const std::string& value = element->GetAttribute(kTypeName, kSchemaInstance);
    std::size_t colon = value.find(':');
    // An unprefixed type stays in the element's namespace: no default-namespace lookup.
    if (colon != std::string::npos && element->GetOwnerDocument()) {
        std::string uri = element->GetOwnerDocument()->LookupNamespaceFromAlias(value.substr(0, colon).c_str());
        if (!uri.empty()) return uri;
    }
    return element->GetNamespaceURI();
}

}  // namespace KvXmlLib10
