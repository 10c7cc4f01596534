// FIInput.h - bounds-checked octet cursor with the integer and length productions.
//
// Every read checks the remaining input first, so a forged length or a
// truncated document ends in "Unexpected End of File." before anything is
// allocated for it. Each production takes its first octet already read, as
// the bits before its start belong to the enclosing structure.
#pragma once

#include <cstddef>
#include <cstdint>

#include "kvxml/foundation/KvException.h"

namespace KvXmlLib10::detail {

[[noreturn]] inline void ThrowFIError(const char* message) { throw CKvException(message); }

inline constexpr const char* kFIEndOfFile =
    "Failed to parse FastInfoset. Unexpected End of File.";
inline constexpr const char* kFIInteger1Bit2 =
    "Failed to parse FastInfoset. Invalid Encoding of integers 1 To 2^20 type  on the second bit of an octet.";
inline constexpr const char* kFIInteger1Bit3 =
    "Failed to parse FastInfoset. Invalid Encoding of integers 1 To 2^20 type  on the third bit of an octet.";
inline constexpr const char* kFIInteger1Bit4 =
    "Failed to parse FastInfoset. Invalid Encoding of integers 1 To 2^20 type  on the fourth bit of an octet.";
inline constexpr const char* kFIInteger0Bit2 =
    "Failed to parse FastInfoset. Invalid Encoding of integers 0 To 2^20 type  on the second bit of an octet.";
inline constexpr const char* kFIOctetStringBit2 =
    "Failed to parse FastInfoset. Invalid NonEmptyOctetString type  on the second bit of an octet.";
inline constexpr const char* kFIOctetStringBit5 =
    "Failed to parse FastInfoset. Invalid NonEmptyOctetString type  on the fifth bit of an octet.";
inline constexpr const char* kFIOctetStringBit7 =
    "Failed to parse FastInfoset. Invalid NonEmptyOctetString type  on the seventh bit of an octet.";
inline constexpr const char* kFIRestrictedAlphabet =
    "Failed to parse FastInfoset. Invalid Encoding of Restricted Alphabet. Alphabet must contain between 2 and "
    "2^20 characters.";
inline constexpr const char* kFIEncodedStringBit3 =
    "Failed to parse FastInfoset. Invalid EncodedCharacterString type  on the third bit of an octet.";
inline constexpr const char* kFIEncodedStringBit5 =
    "Failed to parse FastInfoset. Invalid EncodedCharacterString type  on the fifth bit of an octet.";
inline constexpr const char* kFIPrefixWithoutNamespace =
    "Failed to parse FastInfoset. Invalid QName type Prefix without Namespace.";
inline constexpr const char* kFIElementType =
    "Failed to parse FastInfoset. Invalid Encoding of Element type.";

constexpr uint32_t kFIMaxIndex = uint32_t{1} << 20;

class FIInput {
public:
    FIInput(const unsigned char* begin, const unsigned char* end) : m_begin(begin), m_at(begin), m_end(end) {}

    std::size_t Remaining() const { return static_cast<std::size_t>(m_end - m_at); }
    std::size_t Consumed() const { return static_cast<std::size_t>(m_at - m_begin); }

    uint8_t Next() {
        if (m_at == m_end) ThrowFIError(kFIEndOfFile);
        return *m_at++;
    }
    /// Advances n octets and returns where they start.
    const unsigned char* Move(uint64_t n) {
        if (n > Remaining()) ThrowFIError(kFIEndOfFile);
        const unsigned char* start = m_at;
        m_at += n;
        return start;
    }

    // Integers from 1 to 2^20 whose first bit is the given bit of `first`.
    uint32_t Integer1To2pw20Bit2(uint8_t first) { return IntegerBit2(first, kFIInteger1Bit2); }
    uint32_t Integer1To2pw20Bit3(uint8_t first);
    uint32_t Integer1To2pw20Bit4(uint8_t first);
    /// 0 (all seven bits set) stands for the empty string.
    uint32_t Integer0To2pw20Bit2(uint8_t first) {
        return (first & 0x7F) == 0x7F ? 0 : IntegerBit2(first, kFIInteger0Bit2);
    }

    // Lengths of non-empty octet strings; 64-bit so the largest forms cannot wrap.
    uint64_t NonEmptyOctetStringBit2Length(uint8_t first);
    uint64_t NonEmptyOctetStringBit5Length(uint8_t first);
    uint64_t NonEmptyOctetStringBit7Length(uint8_t first);
    /// Item count of a sequence, 1 to 2^20, read from the next octets.
    uint32_t LengthOfSequence();

private:
    uint32_t IntegerBit2(uint8_t first, const char* message);
    uint32_t Octets(std::size_t count);
    template <int Shift>
    uint32_t Integer1To2pw20From(uint8_t first, uint32_t mediumBase, uint32_t largeBase, uint32_t hugeBase,
                                 const char* message);

    const unsigned char* m_begin;
    const unsigned char* m_at;
    const unsigned char* m_end;
};

inline uint32_t FIInput::Octets(std::size_t count) {
    const unsigned char* at = Move(count);
    uint32_t value = 0;
    for (std::size_t i = 0; i < count; ++i) value = (value << 8) | at[i];
    return value;
}

// 0 + 6 bits, 10 + 13 bits (from 65), 110 + 20 bits (from 8257).
inline uint32_t FIInput::IntegerBit2(uint8_t first, const char* message) {
    if ((first & 0x40) == 0) return (first & 0x3Fu) + 1;
    if ((first & 0x60) == 0x40) return (((first & 0x1Fu) << 8) | Octets(1)) + 65;
    if ((first & 0x70) == 0x60) {
        const uint32_t value = (((first & 0x0Fu) << 16) | Octets(2)) + 8257;
        if (value <= kFIMaxIndex) return value;
    }
    ThrowFIError(message);
}

// From the third bit: 0 + 5 bits, 100 + 11 bits (from 33), 101 + 19 bits
// (from 2081), 110 + 7 zero bits + 20 bits (from 526369). From the fourth bit
// every mask moves one bit right: 0 + 4 bits, 100 + 10 bits (from 17),
// 101 + 18 bits (from 1041), 110 + 6 zero bits + 20 bits (from 263185).
template <int Shift>
inline uint32_t FIInput::Integer1To2pw20From(uint8_t first, uint32_t mediumBase, uint32_t largeBase,
                                             uint32_t hugeBase, const char* message) {
    if ((first & (0x20 >> Shift)) == 0) return (first & (0x1Fu >> Shift)) + 1;
    if ((first & (0x38 >> Shift)) == (0x20 >> Shift))
        return (((first & (0x07u >> Shift)) << 8) | Octets(1)) + mediumBase;
    if ((first & (0x38 >> Shift)) == (0x28 >> Shift))
        return (((first & (0x07u >> Shift)) << 16) | Octets(2)) + largeBase;
    if ((first & (0x3F >> Shift)) == (0x30 >> Shift)) {
        const uint32_t rest = Octets(3);
        const uint32_t value = rest + hugeBase;
        if (rest < (uint32_t{1} << 20) && value <= kFIMaxIndex) return value;
    }
    ThrowFIError(message);
}

inline uint32_t FIInput::Integer1To2pw20Bit3(uint8_t first) {
    return Integer1To2pw20From<0>(first, 33, 2081, 526369, kFIInteger1Bit3);
}

inline uint32_t FIInput::Integer1To2pw20Bit4(uint8_t first) {
    return Integer1To2pw20From<1>(first, 17, 1041, 263185, kFIInteger1Bit4);
}

// 0 + 6 bits, 1000000 + 8 bits (from 65), 1100000 + 32 bits (from 321).
inline uint64_t FIInput::NonEmptyOctetStringBit2Length(uint8_t first) {
    if ((first & 0x40) == 0) return (first & 0x3Fu) + 1;
    if ((first & 0x7F) == 0x40) return uint64_t{Octets(1)} + 65;
    if ((first & 0x7F) == 0x60) return uint64_t{Octets(4)} + 321;
    ThrowFIError(kFIOctetStringBit2);
}

// 0 + 3 bits, 1000 + 8 bits (from 9), 1100 + 32 bits (from 265).
inline uint64_t FIInput::NonEmptyOctetStringBit5Length(uint8_t first) {
    if ((first & 0x08) == 0) return (first & 0x07u) + 1;
    if ((first & 0x0F) == 0x08) return uint64_t{Octets(1)} + 9;
    if ((first & 0x0F) == 0x0C) return uint64_t{Octets(4)} + 265;
    ThrowFIError(kFIOctetStringBit5);
}

// 0 + 1 bit, 10 + 8 bits (from 3), 11 + 32 bits (from 259).
inline uint64_t FIInput::NonEmptyOctetStringBit7Length(uint8_t first) {
    if ((first & 0x02) == 0) return (first & 0x01u) + 1;
    if ((first & 0x03) == 0x02) return uint64_t{Octets(1)} + 3;
    return uint64_t{Octets(4)} + 259;
}

// 0 + 7 bits, 1000 + 20 bits (from 129).
inline uint32_t FIInput::LengthOfSequence() {
    const uint8_t first = Next();
    if ((first & 0x80) == 0) return (first & 0x7Fu) + 1;
    if ((first & 0xF0) == 0x80) {
        const uint32_t value = (((first & 0x0Fu) << 16) | Octets(2)) + 129;
        if (value <= kFIMaxIndex) return value;
    }
    ThrowFIError(kFIInteger1Bit2);
}

}  // namespace KvXmlLib10::detail
