// Naming.cpp - identifier conversion for kvxsd.
#include "Naming.h"

#include <cctype>

namespace kvxsd {

namespace {

bool IsIdentChar(unsigned char c) { return std::isalnum(c) != 0; }

std::vector<std::string> SplitWords(const std::string& name) {
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
    for (char c : candidate)
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
