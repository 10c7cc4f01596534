// PlainAscii.h - text that reads as ASCII in every local code page.
#pragma once

#include <cstddef>

namespace KvXmlLib10 {
namespace detail {

/// Below 0x80 and none of the shift bytes of stateful code pages (ESC, SO,
/// SI): every code page glibc offers as a locale agrees with ASCII there.
inline bool IsPlainAscii(unsigned char byte) { return byte < 0x80 && byte != 0x1B && byte != 0x0E && byte != 0x0F; }

/// True when the whole text is plain ASCII, and so its own UTF-8.
inline bool IsPlainAsciiText(const char* text, std::size_t length) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    for (std::size_t i = 0; i < length; ++i) {
        if (!IsPlainAscii(bytes[i])) return false;
    }
    return true;
}

}  // namespace detail
}  // namespace KvXmlLib10
