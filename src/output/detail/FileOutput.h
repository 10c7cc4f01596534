// FileOutput.h - the stdio plumbing shared by the file streams.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "kvxml/foundation/Export.h"
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

/// A file written beside its target and put in its place only once it is
/// complete, so a write that fails half way leaves the old file untouched.
/// Targets that are not regular files (devices, pipes, symbolic links) are
/// written in place, as before. Not committed: the partial file is removed.
/// Exported for the kvxml converter, which writes its output the same way.
class KVXML_API ReplacingFile {
public:
    explicit ReplacingFile(const char* fileName) : m_target(fileName ? fileName : "") {}
    ~ReplacingFile() { Discard(); }
    ReplacingFile(const ReplacingFile&) = delete;
    ReplacingFile& operator=(const ReplacingFile&) = delete;

    /// Creates the file to write (readable and writable as the umask
    /// allows, like a new file); false on failure.
    [[nodiscard]] bool Open();
    std::FILE* Get() const { return m_file.get(); }
    /// Closes the file and moves it over the target; false (and nothing
    /// replaced) when either fails.
    [[nodiscard]] bool Commit();
    /// Closes and removes an uncommitted file.
    void Discard();

private:
    std::string m_target;
    std::string m_temporary;  // empty when writing in place
    OutputFile m_file;
};

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
