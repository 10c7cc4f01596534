// Input.cpp - mapping, reading and inflating the converter's input.
#include "Input.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "kvxml/output/KvZip.h"

namespace kvxml_cli {

namespace {

bool HasHeader(const unsigned char* data, std::size_t size) {
    return size >= 4 && data[0] == 0xE0 && data[1] == 0 && data[2] == 0 && data[3] == 1;
}

Compression Sniff(const unsigned char* data, std::size_t size) {
    if (size < 2) return Compression::None;
    if (data[0] == 0x1F && data[1] == 0x8B) return Compression::Gzip;
    if ((data[0] & 0x0F) == 8 && (data[0] >> 4) <= 7 && ((data[0] << 8) | data[1]) % 31 == 0) return Compression::Zlib;
    return Compression::None;
}

std::runtime_error Failure(const std::string& name, const std::string& what) {
    return std::runtime_error(name + ": " + what);
}

}  // namespace

bool LooksLikeFastInfoset(const unsigned char* data, std::size_t size) {
    if (HasHeader(data, size)) return true;
    // A declaration in front ends with "?>" directly followed by the header;
    // which of the declarations it is, the library checks.
    if (size < 6 || std::memcmp(data, "<?xml", 5) != 0) return false;
    const std::size_t window = size < 64 ? size : 64;
    for (std::size_t i = 5; i + 1 < window; ++i) {
        if (data[i] == '?' && data[i + 1] == '>') return HasHeader(data + i + 2, size - i - 2);
    }
    return false;
}

const char* FormatName(Format format) { return format == Format::FastInfoset ? "fastinfoset" : "xml"; }

const char* CompressionName(Compression compression) {
    switch (compression) {
        case Compression::Gzip:
            return "gzip";
        case Compression::Zlib:
            return "zlib";
        default:
            return "none";
    }
}

// One zlib stream over all the members of the input.
struct Input::Inflater {
    Inflater() {
        if (inflateInit2(&stream, 15 + 32) != Z_OK) throw std::bad_alloc();
    }
    ~Inflater() { inflateEnd(&stream); }
    z_stream stream{};
    bool inMember = false;
};

Input::Input(const std::string& path) : m_name(path == "-" ? "<stdin>" : path) {
    m_fd = path == "-" ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY);
    if (m_fd < 0) throw Failure(m_name, std::strerror(errno));
    struct stat info {};
    if (m_fd != STDIN_FILENO && ::fstat(m_fd, &info) == 0 && S_ISREG(info.st_mode) && info.st_size > 0) {
        m_mappedSize = static_cast<std::size_t>(info.st_size);
        void* mapped = ::mmap(nullptr, m_mappedSize, PROT_READ, MAP_PRIVATE, m_fd, 0);
        const int error = errno;
        ::close(m_fd);
        m_fd = -1;
        if (mapped == MAP_FAILED) throw Failure(m_name, std::strerror(error));
        m_mapped = static_cast<unsigned char*>(mapped);
        ::madvise(m_mapped, m_mappedSize, MADV_SEQUENTIAL);
        m_rawSize = m_mappedSize;
    }
    const unsigned char* first = nullptr;
    std::size_t firstSize = 0;
    if (!NextRaw(first, firstSize)) throw Failure(m_name, "empty input");
    m_compression = Sniff(first, firstSize);
    if (m_compression != Compression::None && !StartInflating()) {
        // Not a compressed stream after all: take the bytes as they are.
        m_compression = Compression::None;
        m_inflater.reset();
        m_head = first;
        m_headSize = firstSize;
    } else if (m_compression == Compression::None) {
        m_head = first;
        m_headSize = firstSize;
    }
    m_format = LooksLikeFastInfoset(m_head, m_headSize) ? Format::FastInfoset : Format::Xml;
}

Input::~Input() {
    if (m_mapped) ::munmap(m_mapped, m_mappedSize);
    if (m_fd > STDIN_FILENO) ::close(m_fd);
}

bool Input::NextRaw(const unsigned char*& data, std::size_t& size) {
    if (m_mapped) {
        // Slices that zlib's 32-bit counts can take.
        size = std::min<std::size_t>(m_mappedSize - m_mappedAt, std::size_t{1} << 30);
        data = m_mapped + m_mappedAt;
        m_mappedAt += size;
        return size != 0;
    }
    if (m_rawDone) return false;
    m_raw.resize(std::size_t{1} << 18);
    for (;;) {
        const ssize_t got = ::read(m_fd, m_raw.data(), m_raw.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) throw Failure(m_name, std::strerror(errno));
        if (got == 0) {
            m_rawDone = true;
            return false;
        }
        m_rawSize += static_cast<uint64_t>(got);
        data = m_raw.data();
        size = static_cast<std::size_t>(got);
        return true;
    }
}

// Inflates the first piece, which must be there; false when the first
// bytes do not inflate at all.
bool Input::StartInflating() {
    m_inflater = std::make_unique<Inflater>();
    z_stream& stream = m_inflater->stream;
    const unsigned char* first = m_mapped ? m_mapped : m_raw.data();
    stream.next_in = const_cast<unsigned char*>(first);
    stream.avail_in = static_cast<uInt>(m_mapped ? m_mappedAt : m_rawSize);
    m_rawFed = stream.avail_in;
    m_inflater->inMember = true;
    bool got = false;
    try {
        got = NextInflated(m_head, m_headSize);
    } catch (const std::runtime_error&) {
        // Only the zlib test can pass by chance on plain text.
        if (m_compression == Compression::Gzip || m_rawFed != (m_mapped ? m_mappedAt : m_rawSize)) throw;
        return false;
    }
    if (!got) throw Failure(m_name, "empty input");
    return true;
}

bool Input::NextInflated(const unsigned char*& data, std::size_t& size) {
    z_stream& stream = m_inflater->stream;
    m_out.resize(std::size_t{1} << 18);
    for (;;) {
        if (stream.avail_in == 0) {
            const unsigned char* raw = nullptr;
            std::size_t rawSize = 0;
            if (!NextRaw(raw, rawSize)) {
                if (m_inflater->inMember)
                    throw Failure(m_name, "truncated compressed data at byte " + std::to_string(m_rawFed));
                return false;
            }
            stream.next_in = const_cast<unsigned char*>(raw);
            stream.avail_in = static_cast<uInt>(rawSize);
            m_rawFed += rawSize;
        }
        if (!m_inflater->inMember) {  // a further gzip member follows
            inflateReset(&stream);
            m_inflater->inMember = true;
        }
        stream.next_out = m_out.data();
        stream.avail_out = static_cast<uInt>(m_out.size());
        const int status = inflate(&stream, Z_NO_FLUSH);
        if (status == Z_STREAM_END) {
            m_inflater->inMember = false;
        } else if (status != Z_OK && status != Z_BUF_ERROR) {
            throw Failure(m_name, "corrupt compressed data at byte " + std::to_string(m_rawFed - stream.avail_in));
        }
        const std::size_t produced = m_out.size() - stream.avail_out;
        if (produced != 0) {
            data = m_out.data();
            size = produced;
            return true;
        }
    }
}

bool Input::Next(const unsigned char*& data, std::size_t& size) {
    if (m_head) {
        data = m_head;
        size = m_headSize;
        m_head = nullptr;
    } else if (!(m_inflater ? NextInflated(data, size) : NextRaw(data, size))) {
        return false;
    }
    m_size += size;
    return true;
}

void Input::ReadAll(const unsigned char*& data, std::size_t& size) {
    // A mapped plain file is whole already.
    if (m_mapped && !m_inflater && m_head == m_mapped && m_headSize == m_mappedSize) {
        Next(data, size);
        return;
    }
    const uint64_t limit = m_inflater ? KvXmlLib10::CKvZip::GetMaxDecompressedSize() : UINT64_MAX;
    const unsigned char* piece = nullptr;
    std::size_t pieceSize = 0;
    while (Next(piece, pieceSize)) {
        if (m_size > limit)
            throw Failure(m_name, "compressed input inflates past the limit of " + std::to_string(limit) +
                                      " bytes (see CKvZip::SetMaxDecompressedSize)");
        m_all.insert(m_all.end(), piece, piece + pieceSize);
    }
    data = m_all.data();
    size = m_all.size();
}

}  // namespace kvxml_cli
