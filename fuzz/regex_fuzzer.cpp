// regex_fuzzer.cpp - pattern translation and matching on arbitrary patterns and values.
//
// The input splits at its first NUL or newline into a pattern and a value.
// Any pattern either compiles or raises the library's compile message, and
// matching always finishes. The one-pass rewriting must agree with repeated
// search-from-the-start replacement, and a printable ASCII value must match
// the pattern that spells it literally.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "kvxml/foundation/KvException.h"
#include "kvxml/validation/RegEx.h"
#include "kvxml/values/StringUtils.h"
#include "validation/detail/PatternTranslation.h"

using KvXmlLib10::CKvException;
using KvXmlLib10::TestRegEx;

namespace {

bool IsAlphanumeric(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// A pattern that matches exactly text: every punctuation character escaped.
// False when text holds anything but printable ASCII, or is long enough for
// the compiled pattern to outgrow PCRE2's size limit.
bool LiteralPattern(const std::string& text, std::string& pattern) {
    pattern.clear();
    if (text.size() > 1000) return false;
    for (char c : text) {
        if (c < 0x20 || c > 0x7E) return false;
        if (!IsAlphanumeric(c)) pattern += '\\';
        pattern += c;
    }
    return true;
}

// Quadratic in the number of escapes, so only run on short patterns.
constexpr size_t kReferenceLimit = 4096;

std::string ReferenceTranslation(std::string pattern) {
    KvXmlLib10::FindReplace(pattern, "\\\\", "\x01");
    for (const auto& escape : KvXmlLib10::detail::kEscapeRewrites) {
        KvXmlLib10::FindReplace(pattern, escape.schema, escape.pcre);
    }
    KvXmlLib10::FindReplace(pattern, "\x01", "\\\\");
    return "^" + pattern + "$";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string raw(reinterpret_cast<const char*>(data), size);
    const size_t split = raw.find_first_of(std::string("\0\n", 2));
    const std::string pattern = raw.substr(0, split);
    const std::string value = split == std::string::npos ? std::string() : raw.substr(split + 1);

    if (pattern.size() <= kReferenceLimit &&
        KvXmlLib10::detail::TranslatePattern(pattern) != ReferenceTranslation(pattern)) {
        std::abort();
    }

    try {
        TestRegEx(pattern, value);
    } catch (const CKvException& e) {
        if (e.GetMessage().rfind("Invalid Regular Expression: ", 0) != 0) std::abort();
    }

    std::string literal;
    if (LiteralPattern(value, literal) && !TestRegEx(literal, value)) std::abort();
    return 0;
}
