// NamespaceAliasMap.cpp - prefix table for the document root.
#include "kvxml/core/NamespaceAliasMap.h"

#include <iterator>

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "foundation/detail/OrEmpty.h"

namespace KvXmlLib10 {

void CNamespaceAliasMap::Add(const char* alias, const char* namespaceUri) {
    m_aliasByNamespace[detail::OrEmpty(namespaceUri)] = detail::OrEmpty(alias);
}

void CNamespaceAliasMap::RemoveNamespace(const char* namespaceUri) {
    m_aliasByNamespace.erase(detail::OrEmpty(namespaceUri));
}

int CNamespaceAliasMap::GetNamespaceCount() const { return static_cast<int>(m_aliasByNamespace.size()); }

std::string CNamespaceAliasMap::GetNamespaceAt(int index) const {
    if (index < 0 || index >= GetNamespaceCount()) return std::string();
    return std::next(m_aliasByNamespace.begin(), index)->first;
}

std::string CNamespaceAliasMap::GetAliasFromNamespace(const char* namespaceUri) const {
    auto found = m_aliasByNamespace.find(detail::OrEmpty(namespaceUri));
    return found == m_aliasByNamespace.end() ? std::string() : found->second;
}

std::string CNamespaceAliasMap::GetNamespaceFromAlias(const char* alias) const {
    std::string wanted = detail::OrEmpty(alias);
    for (const auto& [uri, prefix] : m_aliasByNamespace)
        if (prefix == wanted) return uri;
    throw CKvException(FormatString("Namespace alias [%s] not found", wanted.c_str()));
}

bool CNamespaceAliasMap::DoesAliasExist(const char* alias) const {
    std::string wanted = detail::OrEmpty(alias);
    for (const auto& entry : m_aliasByNamespace)
        if (entry.second == wanted) return true;
    return false;
}

bool CNamespaceAliasMap::DoesNamespaceExist(const char* namespaceUri) const {
    return m_aliasByNamespace.count(detail::OrEmpty(namespaceUri)) != 0;
}

}  // namespace KvXmlLib10
