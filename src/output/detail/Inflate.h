// Inflate.h - inflation of possibly compressed input, telling apart why it did not happen.
#pragma once

#include <cstddef>
#include <cstdint>

namespace KvXmlLib10 {
namespace detail {

/// Whether inflate could accept the bytes at all: a gzip magic number, or a
/// zlib header (deflate method, window of at most 32 KiB, check bits). Plain
/// XML ('<') and Fast Infoset (0xE0) never look like either.
inline bool MayBeCompressed(const unsigned char* data, std::size_t length) {
    if (length < 2) return false;
    if (data[0] == 0x1F && data[1] == 0x8B) return true;
    const unsigned cmf = data[0];
    return (cmf & 0x0F) == 8 && (cmf >> 4) <= 7 && ((cmf << 8) | data[1]) % 31 == 0;
}

enum class InflateOutcome {
    Inflated,       // complete stream(s), replaced by their content
    NotCompressed,  // no complete stream: left as it was
    OverLimit,      // inflates past `limit`: left as it was
    TrailingBytes,  // complete stream(s), replaced, but `trailing` bytes after them were no gzip member
};

struct InflateResult {
    InflateOutcome outcome;
    uint64_t limit;     // the cap in force
    uint32_t trailing;  // bytes left after the last stream
};

/// Inflates a zlib stream or one or more gzip members (as zcat does) in
/// place, up to CKvZip's size limit; the arrays are new[] like CKvZip's.
InflateResult Inflate(unsigned char** data, uint32_t* length);

}  // namespace detail
}  // namespace KvXmlLib10
