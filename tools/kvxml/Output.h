// Output.h - the converter's output file or standard output, optionally deflated as it is written.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

#include <zlib.h>

#include "Input.h"
#include "output/detail/FileOutput.h"

namespace kvxml_cli {

/// Bytes go to standard output for "-", else to a file written beside the
/// target and put in its place by Finish, so a failed conversion leaves
/// an existing file as it was; devices and pipes are written in place.
/// Throws std::runtime_error naming the file on failure.
class Output {
public:
    Output(const std::string& path, Compression compression);
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    void Write(const void* data, std::size_t length);
    /// Ends the compressed stream and closes the file.
    void Finish();
    /// Drops what was written after a failure (never the target itself).
    void Discard();

private:
    void Open();
    void WriteRaw(const unsigned char* data, std::size_t length);
    void Deflate(const unsigned char* data, std::size_t length, int flush);

    std::string m_path;
    std::string m_name;
    Compression m_compression;
    std::unique_ptr<KvXmlLib10::detail::ReplacingFile> m_target;
    std::FILE* m_file = nullptr;
    bool m_deflating = false;
    z_stream m_stream{};
};

}  // namespace kvxml_cli
