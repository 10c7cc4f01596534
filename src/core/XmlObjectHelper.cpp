// XmlObjectHelper.cpp - wildcard namespace restrictions and name matching.
#include "kvxml/core/XmlObjectHelper.h"

#include <string_view>

#include "kvxml/dom/XmlElement.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"

namespace KvXmlLib10 {

namespace {
bool TokenAdmits(std::string_view token, const std::string& namespaceUri, const std::string& targetNamespace) {
    if (token == "##any") return true;
    // An unqualified name is "other" than a non-empty target namespace.
    if (token == "##other") return namespaceUri != targetNamespace;
    if (token == "##local") return namespaceUri.empty();
    if (token == "##targetNamespace") return namespaceUri == targetNamespace;
    return namespaceUri == token;
}
}  // namespace

bool CXmlObjectHelper::IsNamespaceValid(const std::string& namespaceUri, const std::string& restriction,
                                        const std::string& targetNamespace) {
    // Split on single spaces: an empty restriction, or two spaces in a row,
    // is an empty token that admits the empty namespace.
    std::string_view remainder(restriction);
    for (;;) {
        std::size_t space = remainder.find(' ');
        std::string_view token = remainder.substr(0, space);
        if (TokenAdmits(token, namespaceUri, targetNamespace)) return true;
        if (space == std::string_view::npos) return false;
        remainder.remove_prefix(space + 1);
        if (remainder.empty()) return false;
    }
}

bool CXmlObjectHelper::TestNamespace(const std::string& namespaceUri, const std::string& restriction,
                                     const std::string& targetNamespace) {
    if (IsNamespaceValid(namespaceUri, restriction, targetNamespace)) return true;
    throw CKvInvalidNamespaceException(
        FormatString("Invalid namespace [%s]. The namespace must be one of [%s] where the target namespace is [%s]",
                     namespaceUri.c_str(), restriction.c_str(), targetNamespace.c_str()));
}

bool CXmlObjectHelper::DoesElementNameMatch(const CXmlSerializationContext& context, const CXmlElement* element,
                                            const std::string& name, const std::string& namespaceUri) {
    if (!element) return false;
    if (context.GetSchemaType() == SchemaType_NoNamespaces) return element->GetLocalName() == name;
    if (element->GetLocalName() != name) return false;
    if (context.GetIgnoreNamespaces()) return true;
    return element->GetNamespaceURI() == namespaceUri;
}

}  // namespace KvXmlLib10
