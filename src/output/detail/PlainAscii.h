// PlainAscii.h - text that reads as ASCII in every local code page.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace KvXmlLib10 {
namespace detail {

/// Below 0x80 and none of the shift bytes of stateful code pages (ESC, SO,
/// SI): every code page glibc offers as a locale agrees with ASCII there.
inline bool IsPlainAscii(unsigned char byte) { return byte < 0x80 && byte != 0x1B && byte != 0x0E && byte != 0x0F; }

/// The length of the plain ASCII run the text starts with. Tests eight
/// bytes at a time: output text is long and almost all of it plain.
inline std::size_t PlainAsciiRun(const unsigned char* text, std::size_t length) {
    constexpr uint64_t kOnes = 0x0101010101010101ULL;
    constexpr uint64_t kHigh = 0x8080808080808080ULL;
    const auto hasZeroByte = [](uint64_t v) { return ((v - kOnes) & ~v & kHigh) != 0; };
    std::size_t i = 0;
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
