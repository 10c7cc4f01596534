// Input.cpp - mapping, reading and inflating the converter's input.
#include "Input.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

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

Input::Input(const std::string& path) : m_name(path == "-" ? "<stdin>" : path) {
    const int fd = path == "-" ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY);
    if (fd < 0) throw Failure(m_name, std::strerror(errno));
    struct stat info {};
    if (fd != STDIN_FILENO && ::fstat(fd, &info) == 0 && S_ISREG(info.st_mode) && info.st_size > 0) {
        m_mappedSize = static_cast<std::size_t>(info.st_size);
        void* mapped = ::mmap(nullptr, m_mappedSize, PROT_READ, MAP_PRIVATE, fd, 0);
        ::close(fd);
        if (mapped == MAP_FAILED) throw Failure(m_name, std::strerror(errno));
        m_mapped = static_cast<unsigned char*>(mapped);
        ::madvise(m_mapped, m_mappedSize, MADV_SEQUENTIAL);
        m_data = m_mapped;
        m_size = m_mappedSize;
    } else {
        unsigned char chunk[1 << 16];
        for (;;) {
            const ssize_t got = ::read(fd, chunk, sizeof chunk);
            if (got == 0) break;
            if (got < 0) {
                if (errno == EINTR) continue;
                const int error = errno;
                if (fd != STDIN_FILENO) ::close(fd);
                throw Failure(m_name, std::strerror(error));
            }
            m_owned.insert(m_owned.end(), chunk, chunk + got);
        }
        if (fd != STDIN_FILENO) ::close(fd);
        m_data = m_owned.data();
        m_size = m_owned.size();
    }
    m_rawSize = m_size;
    if (m_size == 0) throw Failure(m_name, "empty input");
    m_compression = Sniff(m_data, m_size);
    if (m_compression != Compression::None) Inflate();
    m_format = LooksLikeFastInfoset(m_data, m_size) ? Format::FastInfoset : Format::Xml;
}

Input::~Input() {
    if (m_mapped) ::munmap(m_mapped, m_mappedSize);
}

void Input::Inflate() {
    z_stream stream{};
    if (inflateInit2(&stream, 15 + 32) != Z_OK) throw Failure(m_name, "cannot start inflating");
    std::vector<unsigned char> out;
    stream.next_in = const_cast<unsigned char*>(m_data);
    std::size_t remaining = m_size;
    int status = Z_OK;
    unsigned char chunk[1 << 16];
    while (status != Z_STREAM_END) {
        if (stream.avail_in == 0) {
            const std::size_t part = remaining > (1u << 30) ? (1u << 30) : remaining;
            stream.avail_in = static_cast<uInt>(part);
            remaining -= part;
        }
        stream.next_out = chunk;
        stream.avail_out = sizeof chunk;
        status = inflate(&stream, Z_NO_FLUSH);
        if (status != Z_OK && status != Z_STREAM_END) {
            inflateEnd(&stream);
            // Not a compressed stream after all: take the bytes as they are.
            if (out.empty() && status == Z_DATA_ERROR) {
                m_compression = Compression::None;
                return;
            }
            throw Failure(m_name, "corrupt or truncated compressed data at byte " + std::to_string(stream.total_in));
        }
        out.insert(out.end(), chunk, chunk + (sizeof chunk - stream.avail_out));
        if (status == Z_OK && stream.avail_in == 0 && remaining == 0) {
            inflateEnd(&stream);
            throw Failure(m_name, "truncated compressed data at byte " + std::to_string(stream.total_in));
        }
    }
    inflateEnd(&stream);
    m_owned.swap(out);
    if (m_mapped) {
        ::munmap(m_mapped, m_mappedSize);
        m_mapped = nullptr;
    }
    m_data = m_owned.data();
    m_size = m_owned.size();
    if (m_size == 0) throw Failure(m_name, "empty input");
}

}  // namespace kvxml_cli
