// Convert.h - the converter's commands, callable from the program and from benchmarks.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "Input.h"

namespace kvxml_cli {

struct ConvertOptions {
    std::string in;   // path or "-"
    std::string out;  // path or "-"
    std::string to;   // "xml", "fi" or "" (by OUT's extension, else the other format)
    Compression compression = Compression::None;
    bool pretty = false;
    bool suggested = false;
    uint32_t maxAddLength = 0;  // 0: the context's default
};

/// Converts IN to OUT without holding either document whole. Throws
/// std::runtime_error naming the file; a failed conversion leaves OUT as
/// it was.
void Convert(const ConvertOptions& options);

/// Prints format, compression, size, counts and vocabulary sizes.
void Info(const std::string& path, std::FILE* out);

}  // namespace kvxml_cli
