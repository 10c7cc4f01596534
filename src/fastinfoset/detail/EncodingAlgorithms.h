// EncodingAlgorithms.h - the built-in encoding algorithms on raw bytes.
//
// CFastInfosetBinaryData is the public face; the reader decodes straight
// from its input and the writer encodes into its output through these, so
// no value takes a detour through a shared byte buffer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace KvXmlLib10::detail {

constexpr uint32_t kAlgorithmHexadecimal = 1;
constexpr uint32_t kAlgorithmBase64 = 2;
constexpr uint32_t kAlgorithmShort = 3;
constexpr uint32_t kAlgorithmInt = 4;
constexpr uint32_t kAlgorithmLong = 5;
constexpr uint32_t kAlgorithmBoolean = 6;
constexpr uint32_t kAlgorithmFloat = 7;
constexpr uint32_t kAlgorithmDouble = 8;
constexpr uint32_t kAlgorithmUuid = 9;
constexpr uint32_t kAlgorithmCdata = 10;

/// Appends the octets of `text` under the algorithm to `out`. Throws
/// "Unknown byte encoding." for an index outside 1..10; conversion errors
/// pass through.
void EncodeAlgorithm(uint32_t algorithm, const char* text, std::string& out);

/// Appends the text of the octets to `out`. Throws "Unknown byte
/// encoding." and the "Invalid value for ... byte encoding." messages.
void DecodeAlgorithm(uint32_t algorithm, const unsigned char* data, std::size_t length, std::string& out);

}  // namespace KvXmlLib10::detail
