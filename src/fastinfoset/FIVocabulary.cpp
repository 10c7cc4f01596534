// FIVocabulary.cpp - string and qualified-name tables.
#include "kvxml/fastinfoset/FIVocabulary.h"

namespace KvXmlLib10 {

const char* const FI_DEFAULT_NAMESPACE = "http://www.w3.org/XML/1998/namespace";

// ---- CFIStringTable ----

bool CFIStringTable::FindIndex(const std::string& value, uint32_t& index) const {
    auto found = m_indices.find(value);
    if (found == m_indices.end()) return false;
    index = found->second;
    return true;
}

uint32_t CFIStringTable::AddValueToMap(const std::string& value) {
    if (auto found = m_indices.find(value); found != m_indices.end()) return found->second;
    if (m_entries.size() >= kMaxEntries) return 0;
    m_entries.push_back(value);
    const uint32_t index = GetCount();
    m_indices.emplace(value, index);
    return index;
}

bool CFIStringTable::AddValueToVector(std::string value) {
    if (m_entries.size() >= kMaxEntries) return false;
    m_entries.push_back(std::move(value));
    return true;
}

// ---- CFIQNameTable ----

std::string CFIQNameTable::Key(const CQNameParts& name) {
    std::string key(3 * sizeof(uint32_t), '\0');
    const uint32_t parts[3] = {name.prefix, name.namespaceName, name.localName};
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t b = 0; b < 4; ++b) key[4 * i + b] = static_cast<char>(parts[i] >> (8 * b));
    }
    return key;
}

bool CFIQNameTable::FindIndex(const CQNameParts& name, uint32_t& index) const {
    auto found = m_indices.find(Key(name));
    if (found == m_indices.end()) return false;
    index = found->second;
    return true;
}

uint32_t CFIQNameTable::AddQNameToMap(const CQNameParts& name) {
    std::string key = Key(name);
    if (auto found = m_indices.find(key); found != m_indices.end()) return found->second;
    if (m_entries.size() >= kMaxEntries) return 0;
    m_entries.push_back(name);
    const uint32_t index = GetCount();
    m_indices.emplace(std::move(key), index);
    return index;
}

bool CFIQNameTable::AddQNameToVector(const CQNameParts& name) {
    if (m_entries.size() >= kMaxEntries) return false;
    m_entries.push_back(name);
    return true;
}

// ---- CFIVocabulary ----

CFIVocabulary::CFIVocabulary() {
    m_prefixNames.AddValueToMap("xml");
    m_namespaceNames.AddValueToMap(FI_DEFAULT_NAMESPACE);
}

bool CFIVocabulary::FindPrefixNameIndex(const std::string& prefix, uint32_t& index) const {
    return m_prefixNames.FindIndex(prefix, index);
}

bool CFIVocabulary::FindNamespaceNameIndex(const std::string& namespaceName, uint32_t& index) const {
    return m_namespaceNames.FindIndex(namespaceName, index);
}

bool CFIVocabulary::FindLocalNameIndex(const std::string& localName, uint32_t& index) const {
    return m_localNames.FindIndex(localName, index);
}

uint32_t CFIVocabulary::AddPrefixName(const std::string& prefix) { return m_prefixNames.AddValueToMap(prefix); }

uint32_t CFIVocabulary::AddNamespaceName(const std::string& namespaceName) {
    return m_namespaceNames.AddValueToMap(namespaceName);
}

uint32_t CFIVocabulary::AddLocalName(const std::string& localName) { return m_localNames.AddValueToMap(localName); }

uint32_t CFIVocabulary::AddAttributeValue(const std::string& value) {
    return m_attributeValues.AddValueToMap(value);
}

uint32_t CFIVocabulary::AddElementValue(const std::string& value) { return m_characterChunks.AddValueToMap(value); }

uint32_t CFIVocabulary::AddElement(const std::string& prefix, const std::string& namespaceName,
                                   const std::string& localName) {
    return AddQName(m_elementNames, prefix, namespaceName, localName);
}

uint32_t CFIVocabulary::AddAttribute(const std::string& prefix, const std::string& namespaceName,
                                     const std::string& localName) {
    return AddQName(m_attributeNames, prefix, namespaceName, localName);
}

uint32_t CFIVocabulary::AddQName(CFIQNameTable& table, const std::string& prefix, const std::string& namespaceName,
                                 const std::string& localName) {
    CQNameParts parts;
    if (!prefix.empty() && (parts.prefix = m_prefixNames.AddValueToMap(prefix)) == 0) return 0;
    if (!namespaceName.empty() && (parts.namespaceName = m_namespaceNames.AddValueToMap(namespaceName)) == 0) return 0;
    if ((parts.localName = m_localNames.AddValueToMap(localName)) == 0) return 0;
    return table.AddQNameToMap(parts);
}

}  // namespace KvXmlLib10
