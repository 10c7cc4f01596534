// XmlNames.h - which element and attribute names a writer may emit.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"

namespace KvXmlLib10 {
namespace detail {

enum NameByteClass : uint8_t { kNotName = 0, kNameChar = 1, kNameStart = 3 };

constexpr std::array<uint8_t, 256> MakeNameTable() {
    std::array<uint8_t, 256> table{};
    for (int c = 'A'; c <= 'Z'; ++c) table[c] = kNameStart;
    for (int c = 'a'; c <= 'z'; ++c) table[c] = kNameStart;
    table['_'] = kNameStart;
    table[':'] = kNameStart;  // qualified names given whole by wildcard content
    for (int c = '0'; c <= '9'; ++c) table[c] = kNameChar;
    table['-'] = kNameChar;
    table['.'] = kNameChar;
    // Bytes of the local code page above ASCII are letters of some script;
    // which ones is the reader's concern.
    for (int c = 0x80; c <= 0xFF; ++c) table[c] = kNameStart;
    return table;
}

inline constexpr std::array<uint8_t, 256> kNameTable = MakeNameTable();

/// True when `name` can stand as an element or attribute name: not empty,
/// no blanks, quotes, markup or control bytes, not starting with a digit,
/// '-' or '.'.
inline bool IsXmlName(const std::string& name) {
    const auto* at = reinterpret_cast<const unsigned char*>(name.c_str());
    if (kNameTable[*at] != kNameStart) return false;  // the empty name stops at its NUL
    while (kNameTable[*++at] != kNotName) {
    }
    return static_cast<size_t>(at - reinterpret_cast<const unsigned char*>(name.c_str())) == name.size();
}

/// Throws CKvException unless `name` is an XML name; `kind` is "element" or
/// "attribute".
inline void CheckXmlName(const std::string& name, const char* kind) {
    if (!IsXmlName(name)) {
        throw CKvException(FormatString("The %s name [%s] is not a valid XML name", kind, name.c_str()));
    }
}

}  // namespace detail
}  // namespace KvXmlLib10
