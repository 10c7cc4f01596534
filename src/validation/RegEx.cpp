// RegEx.cpp - XML Schema patterns rewritten into PCRE2 syntax and matched against a whole value.
//
// Schema patterns know a few escapes PCRE2 does not (\i, \I, \c, \C, the
// \p{IsBlock} block names); those are replaced by equivalent classes, the
// pattern is anchored at both ends and compiled in UTF-8 mode, and a value
// matches only when the match covers all of it.
#define PCRE2_CODE_UNIT_WIDTH 8
#include "kvxml/validation/RegEx.h"

#include <pcre2.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/output/Encoder.h"
#include "validation/detail/PatternTranslation.h"

namespace KvXmlLib10 {

namespace {

// Backtracking bounds: a pathological pattern such as (a+)+$ gives up after
// a few milliseconds instead of stalling the caller, and counts as no match.
// A repeated group such as \c* takes about two levels of depth per character,
// so the depth bound still admits values of some 100,000 characters; the heap
// bound caps what the frames of a pattern with many groups may take.
constexpr uint32_t kMatchLimit = 1000000;
constexpr uint32_t kDepthLimit = 250000;
constexpr uint32_t kHeapLimitKiB = 64 * 1024;

struct CodeDeleter {
    void operator()(pcre2_code* code) const noexcept { pcre2_code_free(code); }
};
struct MatchDataDeleter {
    void operator()(pcre2_match_data* data) const noexcept { pcre2_match_data_free(data); }
};
struct MatchContextDeleter {
    void operator()(pcre2_match_context* context) const noexcept { pcre2_match_context_free(context); }
};
using CodePtr = std::unique_ptr<pcre2_code, CodeDeleter>;
using MatchDataPtr = std::unique_ptr<pcre2_match_data, MatchDataDeleter>;
using MatchContextPtr = std::unique_ptr<pcre2_match_context, MatchContextDeleter>;

[[noreturn]] void ThrowCompileError(int errorCode, const std::string& value) {
    PCRE2_UCHAR reason[256] = {0};
    // A negative result means a truncated or unknown message; what the buffer
    // holds is still NUL-terminated and the best there is.
    pcre2_get_error_message(errorCode, reason, sizeof reason);
    throw CKvException(FormatString("Invalid Regular Expression: %s Error: '%s'", value.c_str(),
                                    reinterpret_cast<const char*>(reason)));
}

}  // namespace

bool TestRegEx(std::string pattern, std::string value) {
    const std::string translated = detail::TranslatePattern(std::move(pattern));

    // Zero-terminated on purpose: the pattern ends at its first NUL.
    int errorCode = 0;
    PCRE2_SIZE errorOffset = 0;
    CodePtr code(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(translated.c_str()), PCRE2_ZERO_TERMINATED, PCRE2_UTF,
                               &errorCode, &errorOffset, nullptr));
    if (!code) ThrowCompileError(errorCode, value);

    uint32_t captures = 0;
    if (pcre2_pattern_info(code.get(), PCRE2_INFO_CAPTURECOUNT, &captures) != 0) return false;
    MatchDataPtr matchData(pcre2_match_data_create(captures + 1, nullptr));
    MatchContextPtr context(pcre2_match_context_create(nullptr));
    if (!matchData || !context) throw std::bad_alloc();
    pcre2_set_match_limit(context.get(), kMatchLimit);
    pcre2_set_depth_limit(context.get(), kDepthLimit);
    pcre2_set_heap_limit(context.get(), kHeapLimitKiB);

    // The value, like a C string, ends at its first NUL.
    const CBinaryData utf8 = CEncoder::LocalCodePageToUtf8Binary(value);
    const char* subject = utf8.GetLength() ? reinterpret_cast<const char*>(utf8.GetData()) : "";
    size_t length = utf8.GetLength();
    if (const void* nul = std::memchr(subject, '\0', length)) {
        length = static_cast<size_t>(static_cast<const char*>(nul) - subject);
    }

    // Any negative result (no match, malformed UTF-8, a limit reached) is no match.
    const int found = pcre2_match(code.get(), reinterpret_cast<PCRE2_SPTR>(subject), length, 0, PCRE2_ANCHORED,
                                  matchData.get(), context.get());
    if (found <= 0) return false;
    const PCRE2_SIZE* offsets = pcre2_get_ovector_pointer(matchData.get());
    return offsets[0] == 0 && offsets[1] == length;
}

}  // namespace KvXmlLib10
