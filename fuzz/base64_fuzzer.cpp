// base64_fuzzer.cpp - base64 decoding against a bit-by-bit model, and round trips.
//
// The input is taken twice: as base64 text (up to its first NUL) whose decoded
// bytes must match a plain reference decoder and survive re-encoding, and as
// raw bytes that must come back unchanged from their own base64 text.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "kvxml/values/BinaryData.h"

using KvXmlLib10::CBinaryData;

namespace {

// -1 skipped, -2 invalid, else the digit; a set high bit is ignored.
int Digit(unsigned char c) {
    c &= 0x7F;
    if (c >= 'A' && c <= 'Z') return c - 'A';
    if (c >= 'a' && c <= 'z') return c - 'a' + 26;
    if (c >= '0' && c <= '9') return c - '0' + 52;
    if (c == '+') return 62;
    if (c == '/') return 63;
    if (c == '=' || c == ' ' || c == '\t' || c == '\r' || c == '\n') return -1;
    return -2;
}

// Empty for invalid text, like the library.
std::string ReferenceDecode(const std::string& text) {
    std::string bytes;
    uint32_t bits = 0;
    int count = 0;
    for (unsigned char c : text) {
        const int d = Digit(c);
        if (d == -2) return std::string();
        if (d == -1) continue;
        bits = (bits << 6) | static_cast<uint32_t>(d);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>((bits >> count) & 0xFF);
            bits &= (1u << count) - 1;
        }
    }
    return bytes;
}

std::string Bytes(const CBinaryData& value) {
    return std::string(reinterpret_cast<const char*>(value.GetData()), value.GetLength());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string raw(reinterpret_cast<const char*>(data), size);
    const std::string text = raw.substr(0, raw.find('\0'));

    CBinaryData decoded;
    decoded.SetAsBase64(text.c_str());
    if (Bytes(decoded) != ReferenceDecode(text)) std::abort();

    const std::string reencoded = decoded.GetAsBase64();
    CBinaryData again;
    again.SetAsBase64(reencoded.c_str());
    if (again != decoded) std::abort();

    CBinaryData original;
    original.SetBuffer(data, static_cast<uint32_t>(size));
    const std::string encoded = original.GetAsBase64();
    if (encoded.size() != (size + 2) / 3 * 4) std::abort();
    CBinaryData back;
    back.SetAsBase64(encoded.c_str());
    if (back != original) std::abort();
    return 0;
}
