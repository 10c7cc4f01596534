// RegEx.cpp - XML Schema patterns rewritten into PCRE2 syntax and matched against a whole value.
//
// Schema patterns know a few escapes PCRE2 does not (\i, \I, \c, \C, the
// \p{IsBlock} block names); those are replaced by equivalent classes, the
// pattern is anchored at both ends and compiled in UTF-8 mode, and a value
// matches only when the match covers all of it. Long values are matched by
// PCRE2's JIT, short ones by its interpreter; both under backtracking limits
// that grow with the value.
#define PCRE2_CODE_UNIT_WIDTH 8
#include "kvxml/validation/RegEx.h"

#include <pcre2.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/output/Encoder.h"
#include "output/detail/PlainAscii.h"
#include "validation/detail/PatternTranslation.h"
#include "validation/detail/TestPattern.h"

namespace KvXmlLib10 {

namespace {

// Values shorter than this go to the interpreter: compiling for the JIT costs
// a few microseconds, more than a short value takes to match.
constexpr size_t kJitMinLength = 1024;

// Backtracking bounds grow with the value. A repeated group such as \c* takes
// a level of depth, a heap frame of a few hundred bytes and a few match steps
// per character, so long values of a linear pattern still match; a
// pathological pattern such as (a+)+b gives up after work in proportion to
// the value and counts as no match. The heap cap bounds what a hostile value
// can make the interpreter take.
constexpr uint64_t kMatchLimit = 1000000;
constexpr uint64_t kMatchStepsPerByte = 10;
constexpr uint64_t kDepthLimit = 250000;
constexpr uint64_t kDepthPerByte = 4;
constexpr uint64_t kHeapLimitKiB = 64 * 1024;
constexpr uint64_t kHeapKiBPerByte = 1;
constexpr uint64_t kHeapLimitCapKiB = 1024 * 1024;

// The JIT stack is address space reserved up front and touched only as deep
// as a match goes. A repeated group takes some 32 bytes of it per character,
// nested groups several times that: the stack starts at kJitStackPerByte per
// byte of the value and grows on each shortfall up to the cap, past which
// the interpreter gets its turn.
constexpr uint64_t kJitStackPerByte = 64;
constexpr uint64_t kJitStackGrowth = 8;
constexpr uint64_t kJitStackCap = uint64_t{1} << 30;
constexpr size_t kJitStackStart = 32 * 1024;

uint32_t Scaled(uint64_t base, uint64_t perByte, size_t length, uint64_t cap = UINT32_MAX) {
    const uint64_t wanted = base + perByte * static_cast<uint64_t>(length);
    return static_cast<uint32_t>(std::min({wanted, cap, uint64_t{UINT32_MAX}}));
}

struct CodeDeleter {
    void operator()(pcre2_code* code) const noexcept { pcre2_code_free(code); }
};
struct MatchDataDeleter {
    void operator()(pcre2_match_data* data) const noexcept { pcre2_match_data_free(data); }
};
struct MatchContextDeleter {
    void operator()(pcre2_match_context* context) const noexcept { pcre2_match_context_free(context); }
};
struct JitStackDeleter {
    void operator()(pcre2_jit_stack* stack) const noexcept { pcre2_jit_stack_free(stack); }
};
struct GeneralContextDeleter {
    void operator()(pcre2_general_context* context) const noexcept { pcre2_general_context_free(context); }
};
using CodePtr = std::unique_ptr<pcre2_code, CodeDeleter>;
using GeneralContextPtr = std::unique_ptr<pcre2_general_context, GeneralContextDeleter>;
using MatchDataPtr = std::unique_ptr<pcre2_match_data, MatchDataDeleter>;
using MatchContextPtr = std::unique_ptr<pcre2_match_context, MatchContextDeleter>;
using JitStackPtr = std::unique_ptr<pcre2_jit_stack, JitStackDeleter>;

// Runs the JIT-compiled pattern, first on PCRE2's own 32 KiB stack (enough
// for most patterns, and free), then on stacks sized for the value, growing
// while the match runs out. PCRE2_ERROR_JIT_STACKLIMIT when even the largest
// stack (or the memory for one) was not enough.
int MatchJit(const pcre2_code* code, PCRE2_SPTR subject, size_t length, uint32_t options,
             pcre2_match_data* matchData, pcre2_match_context* context) {
    int found = pcre2_match(code, subject, length, 0, options, matchData, context);
    for (uint64_t size = kJitStackPerByte * length; found == PCRE2_ERROR_JIT_STACKLIMIT; size *= kJitStackGrowth) {
        size = std::min(size, kJitStackCap);
        JitStackPtr stack(pcre2_jit_stack_create(kJitStackStart, static_cast<size_t>(size), nullptr));
        if (!stack) break;
        pcre2_jit_stack_assign(context, nullptr, stack.get());
        found = pcre2_match(code, subject, length, 0, options, matchData, context);
        pcre2_jit_stack_assign(context, nullptr, nullptr);
        if (size == kJitStackCap) break;
    }
    return found;
}

// What a match needs besides the pattern: a match context and a match block,
// whose backtracking frames PCRE2 allocates on first use (20 KiB at least).
// Each thread keeps one of each between calls, so matching a value usually
// allocates nothing; no pattern is kept. A block whose frames grew past
// kKeptFramesBytes is given back once its match is done.
class MatchScratch {
public:
    static MatchScratch& ForThread() {
        thread_local MatchScratch scratch;
        return scratch;
    }

    pcre2_match_context* Context() {
        if (!m_context) m_context.reset(pcre2_match_context_create(m_general.get()));
        if (!m_context) throw std::bad_alloc();
        return m_context.get();
    }

    // A block with room for at least `pairs` offset pairs.
    pcre2_match_data* Data(uint32_t pairs) {
        if (!m_data || pcre2_get_ovector_count(m_data.get()) < pairs) {
            m_data.reset();
            m_data.reset(pcre2_match_data_create(pairs, m_general.get()));
        }
        if (!m_data) throw std::bad_alloc();
        return m_data.get();
    }

    // Ends one match: a block that grew large is not kept.
    void Done() noexcept {
        if (m_largest > kKeptFramesBytes) m_data.reset();
        m_largest = 0;
    }

private:
    static constexpr size_t kKeptFramesBytes = 256 * 1024;

    MatchScratch() : m_general(pcre2_general_context_create(Allocate, Free, this)) {
        if (!m_general) throw std::bad_alloc();
    }

    static void* Allocate(size_t size, void* self) {
        auto* scratch = static_cast<MatchScratch*>(self);
        scratch->m_largest = std::max(scratch->m_largest, size);
        return std::malloc(size);
    }
    static void Free(void* block, void*) { std::free(block); }

    size_t m_largest = 0;  // the largest block PCRE2 asked for since the last Done
    GeneralContextPtr m_general;
    MatchContextPtr m_context;
    MatchDataPtr m_data;
};

// Hands the scratch back however the match ends.
struct ScratchUse {
    MatchScratch& scratch = MatchScratch::ForThread();
    ~ScratchUse() { scratch.Done(); }
};

// The anchored PCRE2 text of a schema pattern, NUL-terminated. A short
// pattern without escapes, the common case, is anchored on the stack.
class AnchoredPattern {
public:
    explicit AnchoredPattern(const std::string& pattern) {
        bool escapes = false;
        for (const char c : pattern) {
            escapes |= c == '\\' || c == '\x01';
            m_ascii &= static_cast<unsigned char>(c) < 0x80;
        }
        if (escapes || pattern.size() + 3 > sizeof m_short) {
            m_long = detail::TranslatePattern(pattern);
            return;
        }
        m_short[0] = '^';
        std::memcpy(m_short + 1, pattern.data(), pattern.size());
        m_short[pattern.size() + 1] = '$';
        m_short[pattern.size() + 2] = '\0';
    }
    const char* Text() const { return m_long.empty() ? m_short : m_long.c_str(); }
    // ASCII text is valid UTF-8: PCRE2 need not check it.
    uint32_t CheckOption() const { return m_ascii ? PCRE2_NO_UTF_CHECK : 0; }

private:
    char m_short[128];
    std::string m_long;
    bool m_ascii = true;
};

[[noreturn]] void ThrowCompileError(int errorCode, const std::string& value) {
    PCRE2_UCHAR reason[256] = {0};
    // A negative result means a truncated or unknown message; what the buffer
    // holds is still NUL-terminated and the best there is.
    pcre2_get_error_message(errorCode, reason, sizeof reason);
    throw CKvException(FormatString("Invalid Regular Expression: %s Error: '%s'", value.c_str(),
                                    reinterpret_cast<const char*>(reason)));
}

}  // namespace

bool TestRegEx(std::string pattern, std::string value) { return detail::TestPattern(pattern, value); }

namespace detail {

bool TestPattern(const std::string& pattern, const std::string& value) {
    const AnchoredPattern translated(pattern);

    // Zero-terminated on purpose: the pattern ends at its first NUL. Anchored
    // when compiled rather than when matched, which means the same and is the
    // only form the JIT accepts. The start-of-match optimisations can only
    // reject a subject early, and an anchored match has a single start: they
    // cannot change its outcome, so the study that prepares them is skipped.
    int errorCode = 0;
    PCRE2_SIZE errorOffset = 0;
    const uint32_t options = PCRE2_UTF | PCRE2_ANCHORED | PCRE2_NO_START_OPTIMIZE | translated.CheckOption();
    CodePtr code(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(translated.Text()), PCRE2_ZERO_TERMINATED, options,
                               &errorCode, &errorOffset, nullptr));
    if (!code) ThrowCompileError(errorCode, value);

    uint32_t captures = 0;
    if (pcre2_pattern_info(code.get(), PCRE2_INFO_CAPTURECOUNT, &captures) != 0) return false;
    ScratchUse use;
    pcre2_match_data* matchData = use.scratch.Data(captures + 1);
    pcre2_match_context* context = use.scratch.Context();

    // The value, like a C string, ends at its first NUL.
    // Plain ASCII is its own UTF-8 and needs no converted copy.
    CBinaryData utf8;
    const char* subject = value.c_str();
    size_t length = value.size();
    uint32_t matchOptions = PCRE2_NO_UTF_CHECK;
    if (!detail::IsPlainAsciiText(value.data(), value.size())) {
        matchOptions = 0;  // converted: PCRE2 checks it
        utf8 = CEncoder::LocalCodePageToUtf8Binary(value);
        subject = utf8.GetLength() ? reinterpret_cast<const char*>(utf8.GetData()) : "";
        length = utf8.GetLength();
    }
    if (const void* nul = std::memchr(subject, '\0', length)) {
        length = static_cast<size_t>(static_cast<const char*>(nul) - subject);
    }

    pcre2_set_match_limit(context, Scaled(kMatchLimit, kMatchStepsPerByte, length));
    pcre2_set_depth_limit(context, Scaled(kDepthLimit, kDepthPerByte, length));
    pcre2_set_heap_limit(context, Scaled(kHeapLimitKiB, kHeapKiBPerByte, length, kHeapLimitCapKiB));

    // Long values run on the JIT: a repeated group costs it some 32 bytes of
    // stack per character against some 500 bytes of the interpreter's heap
    // frames, and it runs many times faster. Where PCRE2 has no JIT, or its
    // stack cannot be made large enough, the interpreter decides.
    const auto* text = reinterpret_cast<PCRE2_SPTR>(subject);
    int found = PCRE2_ERROR_JIT_STACKLIMIT;
    if (length >= kJitMinLength && pcre2_jit_compile(code.get(), PCRE2_JIT_COMPLETE) == 0) {
        found = MatchJit(code.get(), text, length, matchOptions, matchData, context);
    }
    if (found == PCRE2_ERROR_JIT_STACKLIMIT) {
        found = pcre2_match(code.get(), text, length, 0, matchOptions | PCRE2_NO_JIT, matchData, context);
    }
    // Any other negative result (no match, malformed UTF-8, a limit reached) is no match.
    if (found <= 0) return false;
    const PCRE2_SIZE* offsets = pcre2_get_ovector_pointer(matchData);
    return offsets[0] == 0 && offsets[1] == length;
}

}  // namespace detail

}  // namespace KvXmlLib10
