// NamespaceAliasMap.h - the prefixes a document root declares, one per namespace.
#pragma once

#include <map>
#include <string>

#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

/// Ordered by namespace URI (plain byte order), which is also the order in
/// which the root element declares them.
class KVXML_API CNamespaceAliasMap {
public:
    /// Sets the alias of a namespace, replacing an earlier one.
    void Add(const char* alias, const char* namespaceUri);
    void RemoveNamespace(const char* namespaceUri);
    int GetNamespaceCount() const;
    /// The namespace at `index` in URI order; "" outside 0 .. count-1.
    std::string GetNamespaceAt(int index) const;
    /// "" for a namespace that has no alias.
    std::string GetAliasFromNamespace(const char* namespaceUri) const;
    /// Throws CKvException "Namespace alias [%s] not found".
    std::string GetNamespaceFromAlias(const char* alias) const;
    bool DoesAliasExist(const char* alias) const;
    bool DoesNamespaceExist(const char* namespaceUri) const;

private:
    std::map<std::string, std::string> m_aliasByNamespace;
};

}  // namespace KvXmlLib10
