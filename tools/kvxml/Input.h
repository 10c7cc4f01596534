// Input.h - the bytes of one input file or standard input, and what they are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kvxml_cli {

enum class Format { Xml, FastInfoset };
enum class Compression { None, Gzip, Zlib };

/// A whole input: a regular file is mapped, standard input read; compressed
/// bytes are inflated into memory. Throws std::runtime_error on failure.
class Input {
public:
    explicit Input(const std::string& path);
    ~Input();
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    /// The (inflated) bytes.
    const unsigned char* Data() const { return m_data; }
    std::size_t Size() const { return m_size; }
    /// Size on disk or on the pipe, before inflating.
    uint64_t RawSize() const { return m_rawSize; }
    Format GetFormat() const { return m_format; }
    Compression GetCompression() const { return m_compression; }
    /// How a message names this input: the path, or "<stdin>".
    const std::string& Name() const { return m_name; }

private:
    void Inflate();

    std::string m_name;
    unsigned char* m_mapped = nullptr;
    std::size_t m_mappedSize = 0;
    std::vector<unsigned char> m_owned;
    const unsigned char* m_data = nullptr;
    std::size_t m_size = 0;
    uint64_t m_rawSize = 0;
    Format m_format = Format::Xml;
    Compression m_compression = Compression::None;
};

/// Whether the bytes start like a Fast Infoset document (the header, or an
/// XML declaration directly followed by it).
bool LooksLikeFastInfoset(const unsigned char* data, std::size_t size);

const char* FormatName(Format format);
const char* CompressionName(Compression compression);

}  // namespace kvxml_cli
