// FileOutput.h - the stdio plumbing shared by the file streams.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>

#include "kvxml/output/OutputEnums.h"

namespace KvXmlLib10 {
namespace detail {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// An open output file; closed on destruction without error reporting.
using OutputFile = std::unique_ptr<std::FILE, FileCloser>;

/// Opens for writing in text mode (create or truncate); null on failure.
inline OutputFile OpenOutputFile(const char* fileName) {
    return OutputFile(std::fopen(fileName ? fileName : "", "wt"));
}

/// Writes all bytes in one call; an empty buffer succeeds trivially.
[[nodiscard]] inline bool WriteBytes(std::FILE* file, const unsigned char* bytes, uint32_t length) {
    if (length == 0) return true;
    return std::fwrite(bytes, 1, length, file) == length;
}

/// The wide encodings start with FF FE (0xFEFF, little-endian); others with nothing.
[[nodiscard]] inline bool WriteByteOrderMark(std::FILE* file, XmlEncoding encoding) {
    if (encoding != Encoding_UTF16 && encoding != Encoding_Wide) return true;
    static const unsigned char kMark[2] = {0xFF, 0xFE};
    return WriteBytes(file, kMark, 2);
}

/// Closes the file and reports whether the data it still buffered reached it.
[[nodiscard]] inline bool CloseOutputFile(OutputFile& file) {
    return std::fclose(file.release()) == 0;
}

}  // namespace detail
}  // namespace KvXmlLib10
