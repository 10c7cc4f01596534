// utf8_fuzzer.cpp - transcoding round trips and counting/writing agreement.
//
// The bytes are read as UTF-8 (checked against a separate validity model),
// and reinterpreted as UTF-16 and UTF-32 units. Whatever converts must come
// back unchanged, and counting mode must predict the written length exactly.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "kvxml/values/UnicodeConversion.h"

using namespace KvXmlLib10;

namespace {

// Well-formed UTF-8 by the code point ranges of each length.
bool ModelIsValidUtf8(const uint8_t* p, size_t n) {
    if (n == 0) return false;
    size_t i = 0;
    while (i < n) {
        const uint8_t lead = p[i];
        size_t length;
        uint32_t c;
        uint32_t minimum;
        if (lead < 0x80) {
            ++i;
            continue;
        } else if ((lead & 0xE0) == 0xC0) {
            length = 2, c = lead & 0x1F, minimum = 0x80;
        } else if ((lead & 0xF0) == 0xE0) {
            length = 3, c = lead & 0x0F, minimum = 0x800;
        } else if ((lead & 0xF8) == 0xF0) {
            length = 4, c = lead & 0x07, minimum = 0x10000;
        } else {
            return false;
        }
        if (n - i < length) return false;
        for (size_t k = 1; k < length; ++k) {
            if ((p[i + k] & 0xC0) != 0x80) return false;
            c = (c << 6) | (p[i + k] & 0x3F);
        }
        if (c < minimum || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return false;
        i += length;
    }
    return true;
}

template <class From, class To, class Forward, class Backward>
void RoundTrip(const From* begin, const From* end, Forward forward, Backward backward) {
    const int needed = forward(begin, end, static_cast<To*>(nullptr), static_cast<To*>(nullptr));
    if (needed <= 0) return;
    std::vector<To> middle(static_cast<size_t>(needed));
    To* first = middle.data();
    if (forward(begin, end, first, first + needed) != needed) std::abort();
    if (forward(begin, end, first, first + needed - 1) != 0) std::abort();
    const int units = static_cast<int>(end - begin);
    if (backward(first, first + needed, static_cast<From*>(nullptr), static_cast<From*>(nullptr)) != units)
        std::abort();
    std::vector<From> back(static_cast<size_t>(units));
    if (backward(first, first + needed, back.data(), back.data() + units) != units) std::abort();
    if (std::memcmp(back.data(), begin, sizeof(From) * static_cast<size_t>(units)) != 0) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const unsigned char* begin = data;
    const unsigned char* end = data + size;

    const int n32 = ConvertUTF8toUTF32(begin, end, nullptr, nullptr);
    const int n16 = ConvertUTF8toUTF16(begin, end, nullptr, nullptr);
    const bool valid = ModelIsValidUtf8(data, size);
    if ((n32 > 0) != valid || (n16 > 0) != valid) std::abort();
    if (UTF8ToUnicode(begin, static_cast<uint32_t>(size), nullptr, 0) != n32) std::abort();

    RoundTrip<unsigned char, unsigned int>(begin, end, ConvertUTF8toUTF32, ConvertUTF32toUTF8);
    RoundTrip<unsigned char, unsigned short>(begin, end, ConvertUTF8toUTF16, ConvertUTF16toUTF8);

    if (valid) {
        std::vector<wchar_t> wide(static_cast<size_t>(n32));
        if (UTF8ToUnicode(begin, static_cast<uint32_t>(size), wide.data(), static_cast<uint32_t>(n32)) != n32)
            std::abort();
        std::vector<unsigned char> utf8(size);
        if (UnicodeToUTF8(wide.data(), static_cast<uint32_t>(n32), utf8.data(), static_cast<uint32_t>(size)) !=
                static_cast<int>(size) ||
            std::memcmp(utf8.data(), data, size) != 0)
            std::abort();
        std::vector<unsigned char> utf16(2 * static_cast<size_t>(n16));
        const uint32_t utf16Size = static_cast<uint32_t>(utf16.size());
        if (UnicodeToUTF16(wide.data(), static_cast<uint32_t>(n32), utf16.data(), utf16Size) != 2 * n16)
            std::abort();
        if (UTF16ToUnicode(utf16.data(), utf16Size, nullptr, 0) != n32) std::abort();
    }

    bool high = false;
    for (size_t i = 0; i < size; ++i) high = high || data[i] >= 0x80;
    if (DoesUTF8StrContainAnyCharsLargerThanOneByte(data, static_cast<uint32_t>(size)) != high) std::abort();

    // The same bytes as UTF-16 and UTF-32 units (copied for alignment).
    std::vector<unsigned short> units16(size / 2);
    if (!units16.empty()) std::memcpy(units16.data(), data, units16.size() * 2);
    const unsigned short* b16 = units16.data();
    RoundTrip<unsigned short, unsigned char>(b16, b16 + units16.size(), ConvertUTF16toUTF8, ConvertUTF8toUTF16);
    RoundTrip<unsigned short, unsigned int>(b16, b16 + units16.size(), ConvertUTF16toUTF32, ConvertUTF32toUTF16);
    std::vector<unsigned int> units32(size / 4);
    if (!units32.empty()) std::memcpy(units32.data(), data, units32.size() * 4);
    const unsigned int* b32 = units32.data();
    RoundTrip<unsigned int, unsigned char>(b32, b32 + units32.size(), ConvertUTF32toUTF8, ConvertUTF8toUTF32);
    RoundTrip<unsigned int, unsigned short>(b32, b32 + units32.size(), ConvertUTF32toUTF16, ConvertUTF16toUTF32);
    return 0;
}
