// PlainAscii.h - text that reads as ASCII in every local code page.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace KvXmlLib10 {
namespace detail {

/// Below 0x80 and none of the shift bytes of stateful code pages (ESC, SO,
/// SI): every code page glibc offers as a locale agrees with ASCII there.
inline bool IsPlainAscii(unsigned char byte) { return byte < 0x80 && byte != 0x1B && byte != 0x0E && byte != 0x0F; }

/// The length of the plain ASCII run the text starts with. Tests sixteen
/// or eight bytes at a time: output text is long and almost all of it plain.
inline std::size_t PlainAsciiRun(const unsigned char* text, std::size_t length) {
    constexpr uint64_t kOnes = 0x0101010101010101ULL;
    constexpr uint64_t kHigh = 0x8080808080808080ULL;
    const auto hasZeroByte = [](uint64_t v) { return ((v - kOnes) & ~v & kHigh) != 0; };
    std::size_t i = 0;
#if defined(__SSE2__)
    const __m128i esc = _mm_set1_epi8(0x1B);
    const __m128i shift = _mm_set1_epi8(0x0F);  // SO and SI, equal once the low bit is set
    const __m128i low = _mm_set1_epi8(0x01);
    for (; i + 16 <= length; i += 16) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
        const __m128i stop =
            _mm_or_si128(_mm_cmpeq_epi8(block, esc), _mm_cmpeq_epi8(_mm_or_si128(block, low), shift));
        if (_mm_movemask_epi8(_mm_or_si128(block, stop)) != 0) break;  // a high byte or a shift byte
    }
#endif
    for (; i + 8 <= length; i += 8) {
        uint64_t word;
        std::memcpy(&word, text + i, 8);
        // A high byte, an ESC, or an SO/SI (0x0E/0x0F, equal once the low bit is set).
        if ((word & kHigh) != 0 || hasZeroByte(word ^ (0x1B * kOnes)) || hasZeroByte((word | kOnes) ^ (0x0F * kOnes)))
            break;
    }
    while (i < length && IsPlainAscii(text[i])) ++i;
    return i;
}

/// True when the whole text is plain ASCII, and so its own UTF-8.
inline bool IsPlainAsciiText(const char* text, std::size_t length) {
    return PlainAsciiRun(reinterpret_cast<const unsigned char*>(text), length) == length;
}

}  // namespace detail
}  // namespace KvXmlLib10
