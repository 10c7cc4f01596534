// Naming.cpp - identifier conversion for kvxsd.
#include "Naming.h"

#include <cctype>
#include <cstdint>

namespace kvxsd {

namespace {

bool IsIdentChar(unsigned char c) { return std::isalnum(c) != 0; }

// Latin letters with diacritics (U+00C0 to U+017F) without them; null: not a letter.
const char* const kLatin[] = {
    "A", "A", "A", "A", "A", "A", "AE", "C", "E", "E", "E", "E", "I", "I", "I", "I",  // U+00C0
    "D", "N", "O", "O", "O", "O", "O", nullptr, "O", "U", "U", "U", "U", "Y", "TH", "ss",  // U+00D0
    "a", "a", "a", "a", "a", "a", "ae", "c", "e", "e", "e", "e", "i", "i", "i", "i",  // U+00E0
    "d", "n", "o", "o", "o", "o", "o", nullptr, "o", "u", "u", "u", "u", "y", "th", "y",  // U+00F0
    "A", "a", "A", "a", "A", "a", "C", "c", "C", "c", "C", "c", "C", "c", "D", "d",  // U+0100
    "D", "d", "E", "e", "E", "e", "E", "e", "E", "e", "E", "e", "G", "g", "G", "g",  // U+0110
    "G", "g", "G", "g", "H", "h", "H", "h", "I", "i", "I", "i", "I", "i", "I", "i",  // U+0120
    "I", "i", "IJ", "ij", "J", "j", "K", "k", "k", "L", "l", "L", "l", "L", "l", "L",  // U+0130
    "l", "L", "l", "N", "n", "N", "n", "N", "n", "n", "N", "n", "O", "o", "O", "o",  // U+0140
    "O", "o", "OE", "oe", "R", "r", "R", "r", "R", "r", "S", "s", "S", "s", "S", "s",  // U+0150
    "S", "s", "T", "t", "T", "t", "T", "t", "U", "u", "U", "u", "U", "u", "U", "u",  // U+0160
    "U", "u", "U", "u", "W", "w", "Y", "y", "Y", "Z", "z", "Z", "z", "Z", "z", "s",  // U+0170
};

// The code point of the UTF-8 sequence at name[i], advancing i past it; a byte
// that starts no valid sequence stands for itself (as Latin-1 would read it).
uint32_t NextCodePoint(const std::string& name, size_t& i) {
    const unsigned char lead = static_cast<unsigned char>(name[i++]);
    const int extra = lead >= 0xC2 && lead <= 0xDF ? 1 : lead >= 0xE0 && lead <= 0xEF ? 2 : lead >= 0xF0 && lead <= 0xF4 ? 3 : 0;
    if (extra == 0) return lead;
    uint32_t cp = lead & (0x3Fu >> extra);
    for (int k = 0; k < extra; ++k) {
        const size_t at = i + static_cast<size_t>(k);
        if (at >= name.size() || (static_cast<unsigned char>(name[at]) & 0xC0) != 0x80) return lead;
        cp = cp << 6 | (static_cast<unsigned char>(name[at]) & 0x3Fu);
    }
    i += static_cast<size_t>(extra);
    return cp;
}

// XML names may use any letter; identifiers are ASCII. Latin letters lose their
// diacritics ("Größe" -> "Grosse"); any other character becomes a word of its
// own, "_u" and its code point in lower-case hex ("名前" -> "_u540d__u524d_"),
// so equal names stay equal and different scripts never collapse to nothing.
// Clashes that remain ("Grosse" and "Größe") are the scope's to number.
std::string Transliterate(const std::string& name) {
    std::string out;
    out.reserve(name.size());
    static const char kHex[] = "0123456789abcdef";
    for (size_t i = 0; i < name.size();) {
        if (static_cast<unsigned char>(name[i]) < 0x80) {
            out += name[i++];
            continue;
        }
        const uint32_t cp = NextCodePoint(name, i);
        if (cp >= 0xC0 && cp < 0x180 && kLatin[cp - 0xC0]) {
            out += kLatin[cp - 0xC0];
            continue;
        }
        out += "_u";
        const int digits = cp > 0xFFFF ? 6 : 4;
        for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4) out += kHex[(cp >> shift) & 0xF];
        out += '_';
    }
    return out;
}

std::vector<std::string> SplitWords(const std::string& xmlName) {
    const std::string name = Transliterate(xmlName);
    std::vector<std::string> words;
    std::string word;
    const size_t n = name.size();
    for (size_t i = 0; i < n; ++i) {
        const unsigned char c = static_cast<unsigned char>(name[i]);
        if (!IsIdentChar(c)) {
            if (!word.empty()) words.push_back(std::move(word));
            word.clear();
            continue;
        }
        if (!word.empty()) {
            const unsigned char prev = static_cast<unsigned char>(word.back());
            const bool nextLower = i + 1 < n && std::islower(static_cast<unsigned char>(name[i + 1]));
            // "orderDate" splits before D; "USPrice" splits before P (an acronym ends).
            const bool boundary = std::isupper(c) && (std::islower(prev) || std::isdigit(prev) ||
                                                     (std::isupper(prev) && nextLower));
            if (boundary) {
                words.push_back(std::move(word));
                word.clear();
            }
        }
        word += static_cast<char>(c);
    }
    if (!word.empty()) words.push_back(std::move(word));
    return words;
}

const std::unordered_set<std::string>& ReservedWords() {
    static const std::unordered_set<std::string> words = {
        // keywords and alternative tokens
        "alignas", "alignof", "and", "and_eq", "asm", "auto", "bitand", "bitor", "bool", "break", "case", "catch",
        "char", "char8_t", "char16_t", "char32_t", "class", "compl", "concept", "const", "consteval", "constexpr",
        "constinit", "const_cast", "continue", "co_await", "co_return", "co_yield", "decltype", "default", "delete",
        "do", "double", "dynamic_cast", "else", "enum", "explicit", "export", "extern", "false", "float", "for",
        "friend", "goto", "if", "inline", "int", "long", "mutable", "namespace", "new", "noexcept", "not",
        "not_eq", "nullptr", "operator", "or", "or_eq", "private", "protected", "public", "register",
        "reinterpret_cast", "requires", "return", "short", "signed", "sizeof", "static", "static_assert",
        "static_cast", "struct", "switch", "template", "this", "thread_local", "throw", "true", "try", "typedef",
        "typeid", "typename", "union", "unsigned", "using", "virtual", "void", "volatile", "wchar_t", "while",
        "xor", "xor_eq", "final", "override", "import", "module",
        // macros of the C and POSIX headers, and common ones of other platforms
        "NULL", "EOF", "TRUE", "FALSE", "min", "max", "DOMAIN", "SING", "OVERFLOW", "UNDERFLOW", "TLOSS", "PLOSS",
        "ERROR", "DELETE", "IN", "OUT", "OPTIONAL", "CONST", "VOID", "BOOL", "BYTE", "WORD", "DWORD", "INT",
        "CHAR", "LONG", "SHORT", "FLOAT", "DOUBLE", "PI", "INFINITY", "NAN", "HUGE_VAL", "BUFSIZ", "FILENAME_MAX",
        "SEEK_SET", "SEEK_CUR", "SEEK_END", "stdin", "stdout", "stderr", "errno", "assert", "offsetof",
        "EXIT_SUCCESS", "EXIT_FAILURE", "RAND_MAX", "CHAR_BIT", "INT_MAX", "INT_MIN", "UINT_MAX", "LONG_MAX",
        "LONG_MIN", "SIZE_MAX", "EDOM", "ERANGE", "EILSEQ", "SIGINT", "SIGTERM", "SIGABRT", "SIGSEGV", "SIGFPE",
        "SIGILL", "CLOCKS_PER_SEC", "MB_LEN_MAX", "MB_CUR_MAX", "unix", "linux", "i386", "major", "minor",
        "PASCAL", "CALLBACK", "WINAPI", "near", "far", "NEAR", "FAR", "interface", "small", "ABSOLUTE", "RELATIVE",
        "TRANSPARENT", "OPAQUE", "STRICT", "ALTERNATE", "WINDING", "MOD", "NONE"};
    return words;
}

}  // namespace

std::string PascalCase(const std::string& xmlName) {
    std::string out;
    for (const std::string& word : SplitWords(xmlName)) {
        out += static_cast<char>(std::toupper(static_cast<unsigned char>(word[0])));
        out.append(word, 1, std::string::npos);
    }
    return out;
}

std::string SnakeCase(const std::string& xmlName) {
    std::string out;
    for (const std::string& word : SplitWords(xmlName)) {
        if (!out.empty()) out += '_';
        for (char c : word) out += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return out;
}

bool IsReserved(const std::string& identifier) {
    if (ReservedWords().count(identifier)) return true;
    // _Upper and double underscores belong to the implementation.
    if (identifier.size() > 1 && identifier[0] == '_' && std::isupper(static_cast<unsigned char>(identifier[1])))
        return true;
    return identifier.find("__") != std::string::npos;
}

std::string MakeIdentifier(const std::string& candidate) {
    std::string id;
    for (char c : Transliterate(candidate))
        if (IsIdentChar(static_cast<unsigned char>(c)) || c == '_') id += c;
    if (id.empty()) return "Empty";
    if (std::isdigit(static_cast<unsigned char>(id[0]))) id = "Value" + id;
    if (IsReserved(id)) id += '_';
    return id;
}

std::string NameScope::Assign(const std::string& path, const std::string& wanted,
                              const std::unordered_map<std::string, std::string>& overrides,
                              std::vector<std::string>& renames) {
    std::string base = MakeIdentifier(wanted);
    std::string why = base == wanted ? std::string() : IsReserved(wanted) ? "reserved word" : "not an identifier";
    auto it = overrides.find(path);
    if (it != overrides.end()) {
        base = MakeIdentifier(it->second);
        why = "--rename";
    }
    std::string name = base;
    if (m_used.count(name)) {
        // Suffixes continue where the last clash of this base stopped: linear
        // even when hundreds of names clash.
        int& suffix = m_nextSuffix.emplace(base, 2).first->second;
        do name = base + std::to_string(suffix++);
        while (m_used.count(name));
        why = "clashes with " + base;
    }
    m_used.insert(name);
    if (!why.empty()) renames.push_back(path + ": " + wanted + " -> " + name + " (" + why + ")");
    return name;
}

}  // namespace kvxsd
