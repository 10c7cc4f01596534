// Wildcard.cpp - restriction token checks and the flat release of wildcard trees.
#include "metadata/detail/Wildcard.h"

#include <string_view>
#include <vector>

#include "kvxml/core/XmlObjectBase.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"

namespace KvXmlLib10 {
namespace detail {

std::string RequireValue(const char* value, const char* message) {
    if (!value) throw CKvInvalidNamespaceException(message);
    return value;
}

std::string RequireRestriction(const char* restriction) {
    std::string text = RequireValue(restriction, "Namespace Restriction must have a value");
    std::string_view rest(text);
    for (;;) {
        const size_t blank = rest.find(' ');
        const std::string_view token = rest.substr(0, blank);
        if (token.substr(0, 2) == "##" && token != "##any" && token != "##other" && token != "##local" &&
            token != "##targetNamespace")
            throw CKvInvalidNamespaceException(FormatString("Invalid Namespace [%s]", std::string(token).c_str()));
        if (blank == std::string_view::npos) break;
        rest.remove_prefix(blank + 1);
    }
    return text;
}

void ReleaseFlat(CXmlObjectBase* object) {
    thread_local std::vector<CXmlObjectBase*> pending;
    thread_local bool draining = false;
    if (!object) return;
    if (draining) {
        pending.push_back(object);
        return;
    }
    draining = true;
    object->Release();
    while (!pending.empty()) {
        CXmlObjectBase* next = pending.back();
        pending.pop_back();
        next->Release();
    }
    draining = false;
}

}  // namespace detail
}  // namespace KvXmlLib10
