// KvZip.h - gzip/zlib compression of serialised output and transparent inflation of input.
#pragma once

#include <cstdint>

#include "kvxml/foundation/Export.h"
#include "kvxml/output/OutputEnums.h"

namespace KvXmlLib10 {

class CBinaryData;

/// Stateless wrapper over zlib. Arrays passed by pointer come from new[] and
/// belong to the caller; on success the old array is freed with delete[] and
/// a new new[] array (with its length) takes its place.
class KVXML_API CKvZip {
public:
    /// Deflates at level 1 with a gzip (1) or zlib (2) wrapper; 0 and unknown
    /// types leave the data unchanged. The result must be smaller than the
    /// input: otherwise throws CKvException "Failed to compress data.
    /// [Error Code: %d]" and the data stay as they were.
    static void Compress(unsigned char** data, uint32_t* length, CompressionType type);
    /// Compress on the bytes of a value; an empty value is left alone.
    static void CompressData(CBinaryData& data, CompressionType type);
    /// Inflates a complete zlib stream, or every member of a gzip stream
    /// (members may be concatenated, as zcat reads them), in place; bytes
    /// after them are dropped. Anything else (plain text, Fast Infoset,
    /// truncated or corrupt streams, or output beyond the size limit) is left
    /// exactly as it was; never throws. CXmlDocument, unlike this call,
    /// refuses input over the limit or with bytes after the stream.
    static void Decompress(unsigned char** data, uint32_t* length);

    /// Process-wide cap on the inflated size in bytes, against decompression
    /// bombs: 1 GiB by default, 0 means no cap. Larger output is treated as
    /// not compressed. The output never exceeds 4 GiB - 1 in any case.
    static void SetMaxDecompressedSize(uint64_t bytes);
    static uint64_t GetMaxDecompressedSize();
};

}  // namespace KvXmlLib10
