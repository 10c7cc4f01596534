// Input.h - the bytes of one input file or standard input, and what they are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kvxml_cli {

enum class Format { Xml, FastInfoset };
enum class Compression { None, Gzip, Zlib };

/// One input, read in pieces: a regular file is mapped, standard input read
/// as it comes; gzip and zlib input (several gzip members too) is inflated
/// as it is read, so streaming a document keeps memory bounded. The first
/// piece is read on opening to tell the format. Throws std::runtime_error
/// naming the input.
class Input {
public:
    explicit Input(const std::string& path);
    ~Input();
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    /// The next piece of (inflated) bytes, valid until the next call; false
    /// at the end.
    bool Next(const unsigned char*& data, std::size_t& size);
    /// The rest of the input at once, for readers that need the whole
    /// document. Inflated input is capped by CKvZip::GetMaxDecompressedSize().
    void ReadAll(const unsigned char*& data, std::size_t& size);

    /// Bytes on disk, or read from the pipe so far, before inflating.
    uint64_t RawSize() const { return m_rawSize; }
    /// (Inflated) bytes handed out so far.
    uint64_t Size() const { return m_size; }
    Format GetFormat() const { return m_format; }
    Compression GetCompression() const { return m_compression; }
    /// How a message names this input: the path, or "<stdin>".
    const std::string& Name() const { return m_name; }

private:
    bool NextRaw(const unsigned char*& data, std::size_t& size);
    bool NextInflated(const unsigned char*& data, std::size_t& size);
    bool StartInflating();

    std::string m_name;
    int m_fd = -1;
    unsigned char* m_mapped = nullptr;
    std::size_t m_mappedSize = 0;
    std::size_t m_mappedAt = 0;
    std::vector<unsigned char> m_raw;
    bool m_rawDone = false;
    uint64_t m_rawSize = 0;
    uint64_t m_rawFed = 0;  // raw bytes handed to the inflater
    struct Inflater;
    std::unique_ptr<Inflater> m_inflater;
    std::vector<unsigned char> m_out;
    std::vector<unsigned char> m_all;
    const unsigned char* m_head = nullptr;  // the first piece, read on opening
    std::size_t m_headSize = 0;
    uint64_t m_size = 0;
    Format m_format = Format::Xml;
    Compression m_compression = Compression::None;
};

/// Whether the bytes start like a Fast Infoset document (the header, or an
/// XML declaration directly followed by it).
bool LooksLikeFastInfoset(const unsigned char* data, std::size_t size);

const char* FormatName(Format format);
const char* CompressionName(Compression compression);

}  // namespace kvxml_cli
