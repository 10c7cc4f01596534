// OutputEnums.h - the options the output entry points pass through unchanged.
#pragma once

#include <cstdint>

namespace KvXmlLib10 {

/// Text encoding of an output stream.
enum XmlEncoding : int32_t {
    Encoding_None = 0,
    Encoding_UTF8 = 1,
    /// Declared as UTF-16, delivered as 4-byte wide characters.
    Encoding_UTF16 = 2,
    Encoding_Wide = 3
};

/// Line ends written between elements and for line feeds inside text.
enum EOLType : int32_t {
    EOL_CRLF = 0,
    EOL_LF = 1
};

/// Wrapper around deflated output; other values leave data unchanged.
enum CompressionType : int32_t {
    Compression_None = 0,
    Compression_GZip = 1,
    Compression_Zlib = 2
};

}  // namespace KvXmlLib10
