// NameTable.h - each distinct name of a document stored once, plus a cache of parser names.
//
// Element and attribute names repeat all through a document; storing them
// once keeps tree nodes small, and caching the parser's raw "uri|local"
// spellings means each distinct name is split and converted only once per
// load. Lookups use a keyed hash so crafted names cannot force collisions.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace KvXmlLib10::detail {

/// Pointers into a NameTable; valid until the table is cleared.
struct QualifiedName {
    const std::string* uri;
    const std::string* localName;
};

/// The empty string shared by every name table and lookup miss.
const std::string& EmptyString();

class NameTable {
public:
    NameTable() = default;
    NameTable(const NameTable&) = delete;
    NameTable& operator=(const NameTable&) = delete;

    /// The stored copy of `text`, added on first use.
    const std::string* Intern(std::string_view text);
    /// The name cached for a parser spelling (NUL-terminated), or null.
    const QualifiedName* FindRaw(const char* raw);
    const QualifiedName& AddRaw(std::string_view raw, const QualifiedName& name);
    /// Forgets every name; pointers handed out before become invalid.
    void Clear();

private:
    struct KeyedHash {
        std::size_t operator()(std::string_view text) const;
    };

    // A parser spelling with its name, and the spelling looked up after it
    // last time: documents repeat their names in the same order, so that
    // one is tried first, compared up to the NUL without measuring the
    // spelling. A wrong guess only costs the ordinary lookup.
    struct RawName {
        std::string_view raw;  // NUL-terminated: it views a stored string
        QualifiedName name;
        RawName* next = nullptr;
    };

    // Most names repeat within a few elements: a small direct-mapped front
    // for the raw-name map, placed by a cheap hash of the name's ends. A
    // collision only costs a miss, so crafted names gain nothing here.
    static constexpr std::size_t kRecentSlots = 256;
    static std::size_t RecentSlot(std::string_view raw);
    const QualifiedName& Found(RawName& entry);

    std::deque<std::string> m_storage;  // stable addresses for keys and names
    std::unordered_map<std::string_view, const std::string*, KeyedHash> m_interned;
    std::unordered_map<std::string_view, RawName, KeyedHash> m_raw;
    std::array<RawName*, kRecentSlots> m_recent{};
    RawName* m_latest = nullptr;  // the entry of the last lookup
};

}  // namespace KvXmlLib10::detail
