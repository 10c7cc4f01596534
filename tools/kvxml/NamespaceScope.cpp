// NamespaceScope.cpp - prefix bindings with undo, and the checks on each declaration.
#include "NamespaceScope.h"

#include <cstring>

#include "foundation/detail/StandardNamespaces.h"
#include "kvxml/output/XmlWriter.h"

namespace kvxml_cli {

namespace {

const std::string kNoNamespace;

}  // namespace

bool SplitQName(const char* name, std::string_view& prefix, std::string_view& local) {
    const std::size_t length = std::strlen(name);
    const auto* colon = static_cast<const char*>(std::memchr(name, ':', length));
    if (!colon) {
        prefix = std::string_view();
        local = std::string_view(name, length);
        return true;
    }
    const auto at = static_cast<std::size_t>(colon - name);
    if (at == 0 || at + 1 == length || std::memchr(colon + 1, ':', length - at - 1)) return false;
    prefix = std::string_view(name, at);
    local = std::string_view(colon + 1, length - at - 1);
    return true;
}

NamespaceScope::NamespaceScope() : m_default(&kNoNamespace) {
    // "xml" is bound in every document without a declaration.
    m_bindings.push_back({"xml", KvXmlLib10::CXmlWriter::XML_NAMESPACE, nullptr});
    m_inForce.emplace(m_bindings.back().prefix, &m_bindings.back());
}

XML_Error NamespaceScope::Declare(std::string_view prefix, std::string_view uri) {
    // The checks and their order are expat's, so both parsers refuse the
    // same documents with the same message.
    if (uri.empty() && !prefix.empty()) return XML_ERROR_UNDECLARING_PREFIX;
    if (prefix == "xmlns") return XML_ERROR_RESERVED_PREFIX_XMLNS;
    const bool mustBeXml = prefix == "xml";
    const bool isXml = uri == KvXmlLib10::CXmlWriter::XML_NAMESPACE;
    if (mustBeXml != isXml) return mustBeXml ? XML_ERROR_RESERVED_PREFIX_XML : XML_ERROR_RESERVED_NAMESPACE_URI;
    if (uri == KvXmlLib10::detail::kXmlnsNamespace) return XML_ERROR_RESERVED_NAMESPACE_URI;

    Forget();
    auto inForce = m_inForce.find(prefix);
    const Binding* shadowed = inForce == m_inForce.end() ? nullptr : inForce->second;
    m_bindings.push_back({std::string(prefix), std::string(uri), shadowed});
    const Binding& binding = m_bindings.back();
    if (inForce == m_inForce.end()) {
        m_inForce.emplace(binding.prefix, &binding);
    } else {
        inForce->second = &binding;
    }
    if (prefix.empty()) m_default = &binding.uri;
    return XML_ERROR_NONE;
}

void NamespaceScope::DropBindings() {
    const std::size_t mark = m_marks.back();
    m_marks.pop_back();
    Forget();
    while (m_bindings.size() > mark) {
        const Binding& binding = m_bindings.back();
        auto inForce = m_inForce.find(binding.prefix);
        if (binding.shadowed) {
            inForce->second = binding.shadowed;
        } else {
            m_inForce.erase(inForce);
        }
        if (binding.prefix.empty()) m_default = binding.shadowed ? &binding.shadowed->uri : &kNoNamespace;
        m_bindings.pop_back();
    }
}

const std::string* NamespaceScope::FindBound(std::string_view prefix) {
    auto inForce = m_inForce.find(prefix);
    if (inForce == m_inForce.end()) return nullptr;
    m_cachedPrefix.assign(prefix);
    m_cachedUri = &inForce->second->uri;
    return m_cachedUri;
}

void NamespaceScope::Forget() {
    m_cachedUri = nullptr;
    ++m_generation;
}

}  // namespace kvxml_cli
