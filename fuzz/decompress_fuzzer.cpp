// decompress_fuzzer.cpp - Decompress on arbitrary bytes, plus compress/inflate round trips.
//
// Decompress must either inflate a complete stream or leave the input
// untouched; whatever Compress accepts must inflate back to the original.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "kvxml/foundation/KvException.h"
#include "kvxml/output/KvZip.h"

using KvXmlLib10::CKvZip;

namespace {

unsigned char* CopyOf(const uint8_t* data, size_t size) {
    unsigned char* copy = new unsigned char[size ? size : 1];
    if (size) std::memcpy(copy, data, size);
    return copy;
}

void CheckRoundTrip(const uint8_t* data, uint32_t size, KvXmlLib10::CompressionType type) {
    unsigned char* buffer = CopyOf(data, size);
    uint32_t length = size;
    try {
        CKvZip::Compress(&buffer, &length, type);
    } catch (const KvXmlLib10::CKvException&) {
        // Too small or too random to shrink: the input must be intact.
        if (length != size || (size && std::memcmp(buffer, data, size) != 0)) std::abort();
        delete[] buffer;
        return;
    }
    CKvZip::Decompress(&buffer, &length);
    if (length != size || (size && std::memcmp(buffer, data, size) != 0)) std::abort();
    delete[] buffer;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size > 1u << 20) return 0;
    // Keeps decompression bombs from exhausting the fuzzer's memory.
    CKvZip::SetMaxDecompressedSize(64u << 20);

    const uint32_t length32 = static_cast<uint32_t>(size);
    unsigned char* buffer = CopyOf(data, size);
    unsigned char* before = buffer;
    uint32_t length = length32;
    CKvZip::Decompress(&buffer, &length);
    if (buffer == before && (length != length32 || (size && std::memcmp(buffer, data, size) != 0)))
        std::abort();  // declined, yet changed
    delete[] buffer;

    CheckRoundTrip(data, length32, KvXmlLib10::Compression_GZip);
    CheckRoundTrip(data, length32, KvXmlLib10::Compression_Zlib);
    return 0;
}
