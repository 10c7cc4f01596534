// FIVocabulary.h - the indexed string and name tables of a Fast Infoset document.
//
// Writer and reader build the same tables in step: every string or name a
// document adds gets the next index, from 1. The writer looks strings up by
// text (the map face); the reader looks them up by index (the vector face).
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

/// The namespace bound to the prefix "xml"; index 1 of every namespace table.
KVXML_API extern const char* const FI_DEFAULT_NAMESPACE;

/// A qualified name as indices into the prefix, namespace and local name
/// tables; 0 means "none".
struct CQNameParts {
    uint32_t prefix = 0;
    uint32_t namespaceName = 0;
    uint32_t localName = 0;

    bool operator==(const CQNameParts& other) const {
        return prefix == other.prefix && namespaceName == other.namespaceName && localName == other.localName;
    }
    bool operator!=(const CQNameParts& other) const { return !(*this == other); }
};

/// One string table. Tables hold at most kMaxEntries entries: later
/// additions are ignored, so every index stays within the format's bound.
class KVXML_API CFIStringTable {
public:
    static constexpr uint32_t kMaxEntries = uint32_t{1} << 20;
    using const_iterator = std::vector<std::string>::const_iterator;

    /// Writer side: the index of `value`, or false when it is not present.
    bool FindIndex(const std::string& value, uint32_t& index) const;
    /// Writer side: adds `value` unless present or the table is full.
    /// Returns its index (the first one for a repeat), 0 when full.
    uint32_t AddValueToMap(const std::string& value);
    /// Reader side: appends `value` (repeats included) unless the table is
    /// full; returns false when it was full.
    bool AddValueToVector(std::string value);

    uint32_t GetCount() const { return static_cast<uint32_t>(m_entries.size()); }
    /// The entry at a 1-based index; null past the end or for 0.
    const std::string* GetAt(uint32_t index) const {
        return index - 1 < m_entries.size() ? &m_entries[index - 1] : nullptr;
    }
    const_iterator begin() const { return m_entries.begin(); }
    const_iterator end() const { return m_entries.end(); }

private:
    std::vector<std::string> m_entries;
    std::unordered_map<std::string, uint32_t> m_indices;
};

/// One qualified-name table (element names or attribute names).
class KVXML_API CFIQNameTable {
public:
    static constexpr uint32_t kMaxEntries = CFIStringTable::kMaxEntries;
    using const_iterator = std::vector<CQNameParts>::const_iterator;

    bool FindIndex(const CQNameParts& name, uint32_t& index) const;
    /// Writer side, as CFIStringTable::AddValueToMap.
    uint32_t AddQNameToMap(const CQNameParts& name);
    /// Reader side, as CFIStringTable::AddValueToVector.
    bool AddQNameToVector(const CQNameParts& name);

    uint32_t GetCount() const { return static_cast<uint32_t>(m_entries.size()); }
    const CQNameParts* GetAt(uint32_t index) const {
        return index - 1 < m_entries.size() ? &m_entries[index - 1] : nullptr;
    }
    const_iterator begin() const { return m_entries.begin(); }
    const_iterator end() const { return m_entries.end(); }

private:
    static std::string Key(const CQNameParts& name);

    std::vector<CQNameParts> m_entries;
    std::unordered_map<std::string, uint32_t> m_indices;
};

/// The seven tables. A fresh vocabulary holds prefix "xml" and namespace
/// FI_DEFAULT_NAMESPACE at index 1; every other table is empty. Copies copy
/// every table.
class KVXML_API CFIVocabulary {
public:
    CFIVocabulary();

    CFIStringTable& GetPrefixNamesTable() { return m_prefixNames; }
    CFIStringTable& GetNamespaceNamesTable() { return m_namespaceNames; }
    CFIStringTable& GetLocalNamesTable() { return m_localNames; }
    CFIStringTable& GetAttributeValuesTable() { return m_attributeValues; }
    CFIStringTable& GetCharacterChunksTable() { return m_characterChunks; }
    CFIQNameTable& GetElementNamesTable() { return m_elementNames; }
    CFIQNameTable& GetAttributeNamesTable() { return m_attributeNames; }
    const CFIStringTable& GetPrefixNamesTable() const { return m_prefixNames; }
    const CFIStringTable& GetNamespaceNamesTable() const { return m_namespaceNames; }
    const CFIStringTable& GetLocalNamesTable() const { return m_localNames; }
    const CFIStringTable& GetAttributeValuesTable() const { return m_attributeValues; }
    const CFIStringTable& GetCharacterChunksTable() const { return m_characterChunks; }
    const CFIQNameTable& GetElementNamesTable() const { return m_elementNames; }
    const CFIQNameTable& GetAttributeNamesTable() const { return m_attributeNames; }

    bool FindPrefixNameIndex(const std::string& prefix, uint32_t& index) const;
    bool FindNamespaceNameIndex(const std::string& namespaceName, uint32_t& index) const;
    bool FindLocalNameIndex(const std::string& localName, uint32_t& index) const;

    /// Writer side: each returns the string's index (the existing one for a
    /// repeat), 0 when the table is full.
    uint32_t AddPrefixName(const std::string& prefix);
    uint32_t AddNamespaceName(const std::string& namespaceName);
    uint32_t AddLocalName(const std::string& localName);
    uint32_t AddAttributeValue(const std::string& value);
    /// Adds to the character chunk table.
    uint32_t AddElementValue(const std::string& value);
    /// Look up or add the three parts ("" prefix or namespace = none), then
    /// the name itself; returns the name's index, 0 when a table is full.
    uint32_t AddElement(const std::string& prefix, const std::string& namespaceName, const std::string& localName);
    uint32_t AddAttribute(const std::string& prefix, const std::string& namespaceName, const std::string& localName);

private:
    uint32_t AddQName(CFIQNameTable& table, const std::string& prefix, const std::string& namespaceName,
                      const std::string& localName);

    CFIStringTable m_prefixNames;
    CFIStringTable m_namespaceNames;
    CFIStringTable m_localNames;
    CFIStringTable m_attributeValues;
    CFIStringTable m_characterChunks;
    CFIQNameTable m_elementNames;
    CFIQNameTable m_attributeNames;
};

}  // namespace KvXmlLib10
