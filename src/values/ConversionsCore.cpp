// ConversionsCore.cpp - the "C" locale object and the whitespace step shared by all CConversions parsers.
#include "detail/ConversionsCore.h"

#include <cstdint>
#include <cstring>
#include <new>

namespace KvXmlLib10 {
namespace detail {

namespace {

bool IsBreak(char c) { return c == '\t' || c == '\n' || c == '\r'; }

// True when no byte of the text is a space or a control character: then
// neither rule has anything to change. Eight bytes at a time, since most
// values (numbers, dates, binary) have no such byte at all.
bool HasNoSpaceOrControl(const std::string& text) {
    constexpr uint64_t kOnes = 0x0101010101010101ULL;
    constexpr uint64_t kHighs = 0x8080808080808080ULL;
    const char* data = text.data();
    const size_t size = text.size();
    size_t i = 0;
    for (; i + 8 <= size; i += 8) {
        uint64_t word;
        std::memcpy(&word, data + i, 8);
        // Nonzero exactly when some byte is below 0x21.
        if ((word - kOnes * 0x21) & ~word & kHighs) return false;
    }
    for (; i < size; ++i)
        if (static_cast<unsigned char>(data[i]) <= ' ') return false;
    return true;
}

// True when Collapse would return the text unchanged: no TAB, LF or CR, no
// space at either end and no two spaces in a row.
bool IsCollapsed(const std::string& text) {
    if (HasNoSpaceOrControl(text)) return true;
    const size_t size = text.size();
    for (size_t i = 0; i < size; ++i) {
        const char c = text[i];
        if (IsBreak(c)) return false;
        if (c == ' ' && (i == 0 || i + 1 == size || text[i - 1] == ' ')) return false;
    }
    return true;
}

bool HasNoBreak(const std::string& text) {
    if (HasNoSpaceOrControl(text)) return true;
    for (const char c : text)
        if (IsBreak(c)) return false;
    return true;
}

}  // namespace

locale_t CNumericLocale() {
    // Never freed: conversions may run during static destruction.
    static const locale_t locale = [] {
        locale_t created = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
        if (created == static_cast<locale_t>(nullptr)) throw std::bad_alloc();
        return created;
    }();
    return locale;
}

const std::string& ApplyRuleCheap(CWhitespaceUtils::WhitespaceRule rule, const std::string& text,
                                  std::string& storage) {
    using Rule = CWhitespaceUtils::WhitespaceRule;
    switch (rule) {
        case Rule::None:
            return text;
        case Rule::Preserve:
            if (text.find('\r') == std::string::npos) return text;
            break;
        case Rule::Replace:
            if (HasNoBreak(text)) return text;
            break;
        case Rule::Collapse:
            if (IsCollapsed(text)) return text;
            break;
        default:
            break;  // ApplyRule reports the unknown rule
    }
    storage = CWhitespaceUtils::ApplyRule(rule, text);
    return storage;
}

}  // namespace detail
}  // namespace KvXmlLib10
