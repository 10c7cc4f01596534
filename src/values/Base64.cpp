// Base64.cpp - base64 encoding and decoding with table lookups.
//
// The hot loops move whole groups (3 bytes <-> 4 characters) straight into a
// buffer sized in advance; the bit-buffer helpers finish the short group at
// either end, so both paths agree bit for bit.
#include "kvxml/values/Base64.h"

#include <array>
#include <climits>
#include <cstdint>
#include <cstring>

#include "kvxml/foundation/KvException.h"

const char CBase64::m_sBase64Alphabet[] =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

const unsigned int CBase64::m_nMask[] = {0, 1, 3, 7, 15, 31, 63, 127, 255};

namespace {

constexpr int8_t kInvalid = -2;
constexpr int8_t kSkipped = -1;

// Value of each byte as a base64 digit, or kSkipped / kInvalid. A byte with
// the high bit set behaves like the ASCII byte below it, so entries 128-255
// mirror 0-127 and the lookup needs no masking.
constexpr std::array<int8_t, 256> MakeDecodeTable() {
    std::array<int8_t, 256> table{};
    for (int i = 0; i < 256; ++i) table[i] = kInvalid;
    const char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (int i = 0; i < 64; ++i) table[static_cast<unsigned char>(alphabet[i])] = static_cast<int8_t>(i);
    for (char c : {'=', ' ', '\t', '\r', '\n'}) table[static_cast<unsigned char>(c)] = kSkipped;
    for (int i = 128; i < 256; ++i) table[i] = table[i - 128];
    return table;
}

constexpr std::array<int8_t, 256> kDecodeTable = MakeDecodeTable();

// The two characters of every 12-bit value, so a group takes two lookups.
struct CharPairs {
    char pair[4096][2];
};

constexpr CharPairs MakeCharPairs() {
    CharPairs table{};
    const char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (int i = 0; i < 4096; ++i) {
        table.pair[i][0] = alphabet[i >> 6];
        table.pair[i][1] = alphabet[i & 63];
    }
    return table;
}

constexpr CharPairs kCharPairs = MakeCharPairs();

}  // namespace

unsigned int CBase64::Read(int bits, int* got, int& position) {
    while (m_bitCount < bits && position < m_inputLength) {
        m_bitBuffer = (m_bitBuffer << 8) | m_input[position++];
        m_bitCount += 8;
    }
    const int taken = m_bitCount < bits ? m_bitCount : bits;
    *got = taken;
    if (taken == 0) return 0;
    m_bitCount -= taken;
    const unsigned int value = (m_bitBuffer >> m_bitCount) & m_nMask[taken];
    m_bitBuffer &= m_nMask[m_bitCount];
    // A short last group is padded with zero bits on the right.
    return value << (bits - taken);
}

void CBase64::Write(unsigned int value, int bits, unsigned char* out, int& position) {
    m_bitBuffer = (m_bitBuffer << bits) | (value & m_nMask[bits]);
    m_bitCount += bits;
    while (m_bitCount >= 8) {
        m_bitCount -= 8;
        out[position++] = static_cast<unsigned char>(m_bitBuffer >> m_bitCount);
    }
    m_bitBuffer &= m_nMask[m_bitCount];
}

std::string CBase64::Encode(const unsigned char* data, int length) {
    if (data == nullptr || length <= 0) return std::string();
    const size_t inputLength = static_cast<size_t>(length);
    const size_t groups = inputLength / 3 + (inputLength % 3 != 0 ? 1 : 0);
    if (groups > SIZE_MAX / 4) throw KvXmlLib10::CKvException("Binary data too long to encode as base64");

    // Filled with the padding first; the groups overwrite it from the start.
    std::string text(groups * 4, '=');
    char* out = &text[0];
    const unsigned char* in = data;
    const size_t fullGroups = inputLength / 3;
    for (size_t i = 0; i < fullGroups; ++i) {
        const uint32_t v = (static_cast<uint32_t>(in[0]) << 16) | (static_cast<uint32_t>(in[1]) << 8) | in[2];
        std::memcpy(out, kCharPairs.pair[v >> 12], 2);
        std::memcpy(out + 2, kCharPairs.pair[v & 0xFFF], 2);
        in += 3;
        out += 4;
    }

    m_input = in;
    m_inputLength = static_cast<int>(inputLength % 3);
    m_bitBuffer = 0;
    m_bitCount = 0;
    int position = 0;
    for (;;) {
        int got = 0;
        const unsigned int value = Read(6, &got, position);
        if (got == 0) break;
        *out++ = m_sBase64Alphabet[value];
    }
    m_input = nullptr;
    m_inputLength = 0;
    return text;
}

int CBase64::Decode(const char* text, unsigned char* out) {
    if (text == nullptr) return 0;
    const auto* in = reinterpret_cast<const unsigned char*>(text);
    const size_t length = std::strlen(text);
    // Four characters make at most three bytes; the count must fit an int.
    if (length / 4 > (static_cast<size_t>(INT_MAX) - 2) / 3)
        throw KvXmlLib10::CKvException("Base64 text too long to decode");

    m_bitBuffer = 0;
    m_bitCount = 0;
    int position = 0;
    size_t i = 0;
    while (i < length) {
        // Whole groups of four digits go straight through while the bit
        // buffer is empty; anything else takes the slow path below.
        if (m_bitCount == 0) {
            while (length - i >= 4) {
                const int a = kDecodeTable[in[i]];
                const int b = kDecodeTable[in[i + 1]];
                const int c = kDecodeTable[in[i + 2]];
                const int d = kDecodeTable[in[i + 3]];
                if ((a | b | c | d) < 0) break;
                const uint32_t v = (static_cast<uint32_t>(a) << 18) | (static_cast<uint32_t>(b) << 12) |
                                   (static_cast<uint32_t>(c) << 6) | static_cast<uint32_t>(d);
                out[position] = static_cast<unsigned char>(v >> 16);
                out[position + 1] = static_cast<unsigned char>(v >> 8);
                out[position + 2] = static_cast<unsigned char>(v);
                position += 3;
                i += 4;
            }
            if (i >= length) break;
        }
        const int value = kDecodeTable[in[i++]];
        if (value == kInvalid) {
            m_bitBuffer = 0;
            m_bitCount = 0;
            return 0;
        }
        if (value == kSkipped) continue;
        Write(static_cast<unsigned int>(value), 6, out, position);
    }
    // Leftover bits (fewer than 8) do not make a byte.
    m_bitBuffer = 0;
    m_bitCount = 0;
    return position;
}
