// UnicodeConversion.cpp - strict UTF-8 / UTF-16 / UTF-32 transcoding.
//
// Every converter is one loop: a source decodes one code point (refusing
// anything the Unicode encoding forms do not allow), an encoder turns it into
// target units, and a store writes them or, with a null target, only counts.
#include "kvxml/values/UnicodeConversion.h"

#include <array>
#include <climits>
#include <cstddef>
#include <cstring>

namespace KvXmlLib10 {

namespace {

constexpr uint32_t kMaxCodePoint = 0x10FFFF;
constexpr size_t kMaxUnits = INT_MAX;

// Continuation bytes implied by a lead byte. 0x80..0xBF are not lead bytes
// and 0xF8..0xFF lead the old 5- and 6-byte forms; both are refused later.
constexpr std::array<uint8_t, 256> MakeTrailingBytes() {
    std::array<uint8_t, 256> table{};
    for (int i = 0; i < 256; ++i) {
        table[i] = i < 0xC0 ? 0 : i < 0xE0 ? 1 : i < 0xF0 ? 2 : i < 0xF8 ? 3 : i < 0xFC ? 4 : 5;
    }
    return table;
}

constexpr std::array<uint8_t, 256> trailingBytesForUTF8 = MakeTrailingBytes();

// Adding up a sequence as value = value * 64 + byte leaves the lead byte's
// marker bits and each continuation byte's 0x80 in the sum; subtracting the
// sum of those markers for the sequence length leaves the code point.
constexpr uint32_t offsetsFromUTF8[6] = {0x00000000, 0x00003080, 0x000E2080,
                                         0x03C82080, 0xFA082080, 0x82082080};

constexpr bool IsSurrogate(uint32_t c) { return c >= 0xD800 && c <= 0xDFFF; }
constexpr bool IsHighSurrogate(uint32_t c) { return c >= 0xD800 && c <= 0xDBFF; }
constexpr bool IsLowSurrogate(uint32_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

// ---------------------------------------------------------------------------
// Sources: Next decodes one code point and returns false on any error.

struct Utf8Source {
    const unsigned char* p;
    const unsigned char* end;

    bool More() const { return p < end; }

    bool Next(uint32_t& codePoint) {
        if (*p < 0x80) {
            codePoint = *p++;
            return true;
        }
        const unsigned trailing = trailingBytesForUTF8[*p];
        // The sequence's last byte must lie before the end.
        if (static_cast<ptrdiff_t>(trailing) >= end - p) return false;
        if (!IsLegalUTF8(p, static_cast<int>(trailing) + 1)) return false;
        uint32_t value = 0;
        for (unsigned i = 0; i <= trailing; ++i) value = (value << 6) + *p++;
        value -= offsetsFromUTF8[trailing];
        // Legal sequences never give these; kept so the rule stands alone.
        if (value > kMaxCodePoint || IsSurrogate(value)) return false;
        codePoint = value;
        return true;
    }
};

template <class Unit>
struct Utf32Source {
    const Unit* p;
    const Unit* end;

    bool More() const { return p < end; }

    bool Next(uint32_t& codePoint) {
        // A negative wchar_t becomes a huge value and is refused with the rest.
        const uint32_t value = static_cast<uint32_t>(*p++);
        if (value > kMaxCodePoint || IsSurrogate(value)) return false;
        codePoint = value;
        return true;
    }
};

// UTF-16 units from a typed array.
struct Utf16Units {
    const unsigned short* p;
    uint32_t operator[](size_t i) const { return p[i]; }
};

// UTF-16 units in machine byte order from a byte array of any alignment.
struct Utf16Bytes {
    const unsigned char* p;
    uint32_t operator[](size_t i) const {
        uint16_t unit;
        std::memcpy(&unit, p + 2 * i, sizeof unit);
        return unit;
    }
};

template <class Units>
struct Utf16Source {
    Units units;
    size_t i;
    size_t n;

    bool More() const { return i < n; }

    bool Next(uint32_t& codePoint) {
        const uint32_t first = units[i++];
        if (!IsSurrogate(first)) {
            codePoint = first;
            return true;
        }
        // Only a high surrogate followed by a low one makes a pair.
        if (!IsHighSurrogate(first) || i >= n) return false;
        const uint32_t second = units[i++];
        if (!IsLowSurrogate(second)) return false;
        codePoint = 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
        return true;
    }
};

// ---------------------------------------------------------------------------
// Encoders: the target units of one code point (already known valid).

struct Utf8Encoder {
    static size_t Encode(uint32_t c, uint32_t* units) {
        if (c < 0x80) {
            units[0] = c;
            return 1;
        }
        if (c < 0x800) {
            units[0] = 0xC0 | (c >> 6);
            units[1] = 0x80 | (c & 0x3F);
            return 2;
        }
        if (c < 0x10000) {
            units[0] = 0xE0 | (c >> 12);
            units[1] = 0x80 | ((c >> 6) & 0x3F);
            units[2] = 0x80 | (c & 0x3F);
            return 3;
        }
        units[0] = 0xF0 | (c >> 18);
        units[1] = 0x80 | ((c >> 12) & 0x3F);
        units[2] = 0x80 | ((c >> 6) & 0x3F);
        units[3] = 0x80 | (c & 0x3F);
        return 4;
    }
};

struct Utf16Encoder {
    static size_t Encode(uint32_t c, uint32_t* units) {
        if (c < 0x10000) {
            units[0] = c;
            return 1;
        }
        const uint32_t v = c - 0x10000;
        units[0] = 0xD800 + (v >> 10);
        units[1] = 0xDC00 + (v & 0x3FF);
        return 2;
    }
};

struct Utf32Encoder {
    static size_t Encode(uint32_t c, uint32_t* units) {
        units[0] = c;
        return 1;
    }
};

// ---------------------------------------------------------------------------
// Stores

template <class Unit>
struct ArrayStore {
    Unit* p;
    void operator()(size_t i, uint32_t unit) const { p[i] = static_cast<Unit>(unit); }
};

struct Utf16ByteStore {
    unsigned char* p;
    void operator()(size_t i, uint32_t unit) const {
        const uint16_t value = static_cast<uint16_t>(unit);
        std::memcpy(p + 2 * i, &value, sizeof value);
    }
};

template <class Unit>
size_t Room(const Unit* begin, const Unit* end) {
    return begin != nullptr && end > begin ? static_cast<size_t>(end - begin) : 0;
}

// The shared loop. counting: nothing is written and capacity is ignored.
template <class Encoder, class Source, class Store>
int Transcode(Source source, Store store, bool counting, size_t capacity, size_t maxUnits = kMaxUnits) {
    size_t count = 0;
    uint32_t units[4];
    while (source.More()) {
        uint32_t codePoint;
        if (!source.Next(codePoint)) return 0;
        const size_t produced = Encoder::Encode(codePoint, units);
        if (produced > maxUnits - count) return 0;
        if (!counting) {
            if (produced > capacity - count) return 0;
            for (size_t k = 0; k < produced; ++k) store(count + k, units[k]);
        }
        count += produced;
    }
    return static_cast<int>(count);
}

template <class Unit>
bool BadRange(const Unit* begin, const Unit* end) {
    return begin == nullptr || end <= begin;
}

}  // namespace

// ---------------------------------------------------------------------------
// Validity tests

bool IsLegalUTF8(const unsigned char* source, int length) {
    if (source == nullptr || length < 1 || length > 4) return false;
    const unsigned char lead = source[0];
    int expected;
    if (lead < 0x80)
        expected = 1;
    else if (lead < 0xC2)  // a continuation byte, or an overlong 2-byte lead
        return false;
    else if (lead < 0xE0)
        expected = 2;
    else if (lead < 0xF0)
        expected = 3;
    else if (lead <= 0xF4)
        expected = 4;
    else  // beyond U+10FFFF
        return false;
    if (length != expected) return false;
    for (int i = 1; i < length; ++i) {
        if (source[i] < 0x80 || source[i] > 0xBF) return false;
    }
    if (length >= 3) {
        // The second byte narrows further: no overlong 3- or 4-byte forms,
        // no surrogates (ED A0..BF), nothing above F4 8F.
        const unsigned char second = source[1];
        switch (lead) {
            case 0xE0: return second >= 0xA0;
            case 0xED: return second <= 0x9F;
            case 0xF0: return second >= 0x90;
            case 0xF4: return second <= 0x8F;
            default: break;
        }
    }
    return true;
}

bool IsLegalUTF8Sequence(const unsigned char* source, const unsigned char* sourceEnd) {
    if (BadRange(source, sourceEnd)) return false;
    const int length = trailingBytesForUTF8[*source] + 1;
    if (length > sourceEnd - source) return false;
    return IsLegalUTF8(source, length);
}

// ---------------------------------------------------------------------------
// Core converters

int ConvertUTF8toUTF16(const unsigned char* sourceStart, const unsigned char* sourceEnd,
                       unsigned short* targetStart, unsigned short* targetEnd) {
    if (BadRange(sourceStart, sourceEnd)) return 0;
    return Transcode<Utf16Encoder>(Utf8Source{sourceStart, sourceEnd}, ArrayStore<unsigned short>{targetStart},
                                   targetStart == nullptr, Room(targetStart, targetEnd));
}

int ConvertUTF8toUTF32(const unsigned char* sourceStart, const unsigned char* sourceEnd,
                       unsigned int* targetStart, unsigned int* targetEnd) {
    if (BadRange(sourceStart, sourceEnd)) return 0;
    return Transcode<Utf32Encoder>(Utf8Source{sourceStart, sourceEnd}, ArrayStore<unsigned int>{targetStart},
                                   targetStart == nullptr, Room(targetStart, targetEnd));
}

int ConvertUTF16toUTF8(const unsigned short* sourceStart, const unsigned short* sourceEnd,
                       unsigned char* targetStart, unsigned char* targetEnd) {
    if (BadRange(sourceStart, sourceEnd)) return 0;
    Utf16Source<Utf16Units> source{Utf16Units{sourceStart}, 0, static_cast<size_t>(sourceEnd - sourceStart)};
    return Transcode<Utf8Encoder>(source, ArrayStore<unsigned char>{targetStart}, targetStart == nullptr,
                                  Room(targetStart, targetEnd));
}

int ConvertUTF16toUTF32(const unsigned short* sourceStart, const unsigned short* sourceEnd,
                        unsigned int* targetStart, unsigned int* targetEnd) {
    if (BadRange(sourceStart, sourceEnd)) return 0;
    Utf16Source<Utf16Units> source{Utf16Units{sourceStart}, 0, static_cast<size_t>(sourceEnd - sourceStart)};
    return Transcode<Utf32Encoder>(source, ArrayStore<unsigned int>{targetStart}, targetStart == nullptr,
                                   Room(targetStart, targetEnd));
}

int ConvertUTF32toUTF8(const unsigned int* sourceStart, const unsigned int* sourceEnd,
                       unsigned char* targetStart, unsigned char* targetEnd) {
    if (BadRange(sourceStart, sourceEnd)) return 0;
    return Transcode<Utf8Encoder>(Utf32Source<unsigned int>{sourceStart, sourceEnd},
                                  ArrayStore<unsigned char>{targetStart}, targetStart == nullptr,
                                  Room(targetStart, targetEnd));
}

int ConvertUTF32toUTF16(const unsigned int* sourceStart, const unsigned int* sourceEnd,
                        unsigned short* targetStart, unsigned short* targetEnd) {
    if (BadRange(sourceStart, sourceEnd)) return 0;
    return Transcode<Utf16Encoder>(Utf32Source<unsigned int>{sourceStart, sourceEnd},
                                   ArrayStore<unsigned short>{targetStart}, targetStart == nullptr,
                                   Room(targetStart, targetEnd));
}

// ---------------------------------------------------------------------------
// Wrappers over wchar_t (UTF-32 on this platform)

int UnicodeToUTF8(const wchar_t* source, uint32_t length, unsigned char* target, uint32_t targetSize) {
    if (source == nullptr || length == 0) return 0;
    return Transcode<Utf8Encoder>(Utf32Source<wchar_t>{source, source + length}, ArrayStore<unsigned char>{target},
                                  target == nullptr, targetSize);
}

int UTF8ToUnicode(const unsigned char* source, uint32_t length, wchar_t* target, uint32_t targetSize) {
    if (source == nullptr || length == 0) return 0;
    return Transcode<Utf32Encoder>(Utf8Source{source, source + length}, ArrayStore<wchar_t>{target},
                                   target == nullptr, targetSize);
}

int UnicodeToUTF16(const wchar_t* source, uint32_t length, unsigned char* target, uint32_t targetSize) {
    if (source == nullptr || length == 0) return 0;
    // Counted in units inside, reported in bytes; the byte count must fit an int.
    const int units = Transcode<Utf16Encoder>(Utf32Source<wchar_t>{source, source + length},
                                              Utf16ByteStore{target}, target == nullptr, targetSize / 2,
                                              kMaxUnits / 2);
    return units * 2;
}

int UTF16ToUnicode(const unsigned char* source, uint32_t length, wchar_t* target, uint32_t targetSize) {
    // An odd byte count ends in half a unit: truncated input.
    if (source == nullptr || length == 0 || length % 2 != 0) return 0;
    Utf16Source<Utf16Bytes> units{Utf16Bytes{source}, 0, length / 2};
    return Transcode<Utf32Encoder>(units, ArrayStore<wchar_t>{target}, target == nullptr, targetSize);
}

// ---------------------------------------------------------------------------
// ASCII tests

bool DoesUnicodeStrContainAnyUTF8CharsLargerThanOneByte(const wchar_t* text, int length) {
    if (text == nullptr) return false;
    for (int i = length - 1; i >= 0; --i) {
        // Unsigned, so a negative wchar_t counts as non-ASCII too.
        if (static_cast<uint32_t>(text[i]) > 127) return true;
    }
    return false;
}

bool DoesUTF8StrContainAnyCharsLargerThanOneByte(const unsigned char* text, uint32_t length) {
    if (text == nullptr) return false;
    size_t i = 0;
    // Eight bytes at a time until a high bit shows up, then byte by byte.
    for (; length - i >= 8; i += 8) {
        uint64_t word;
        std::memcpy(&word, text + i, sizeof word);
        if (word & 0x8080808080808080ULL) break;
    }
    for (; i < length; ++i) {
        if (text[i] >= 0x80) return true;
    }
    return false;
}

}  // namespace KvXmlLib10
