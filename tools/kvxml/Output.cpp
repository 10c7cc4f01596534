// Output.cpp - writing and deflating the converter's output.
#include "Output.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace kvxml_cli {

Output::Output(const std::string& path, Compression compression)
    : m_path(path), m_name(path == "-" ? "<stdout>" : path), m_compression(compression) {}

Output::~Output() {
    if (m_deflating) deflateEnd(&m_stream);
}

void Output::Open() {
    if (m_path == "-") {
        m_file = stdout;
    } else {
        m_target = std::make_unique<KvXmlLib10::detail::ReplacingFile>(m_path.c_str());
        if (!m_target->Open()) throw std::runtime_error(m_name + ": " + std::strerror(errno));
        m_file = m_target->Get();
    }
    if (m_compression == Compression::None) return;
    // Level 1 with the same wrappers the library's compressed streams use.
    const int windowBits = m_compression == Compression::Gzip ? 31 : 15;
    if (deflateInit2(&m_stream, 1, Z_DEFLATED, windowBits, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::runtime_error(m_name + ": cannot start compressing");
    m_deflating = true;
}

void Output::WriteRaw(const unsigned char* data, std::size_t length) {
    if (length && std::fwrite(data, 1, length, m_file) != length)
        throw std::runtime_error(m_name + ": write failed: " + std::strerror(errno));
}

void Output::Deflate(const unsigned char* data, std::size_t length, int flush) {
    unsigned char chunk[1 << 16];
    m_stream.next_in = const_cast<unsigned char*>(data);
    m_stream.avail_in = static_cast<uInt>(length);
    do {
        m_stream.next_out = chunk;
        m_stream.avail_out = sizeof chunk;
        const int status = deflate(&m_stream, flush);
        if (status == Z_STREAM_ERROR) throw std::runtime_error(m_name + ": compression failed");
        WriteRaw(chunk, sizeof chunk - m_stream.avail_out);
    } while (m_stream.avail_out == 0);
}

void Output::Write(const void* data, std::size_t length) {
    if (!m_file) Open();
    const auto* bytes = static_cast<const unsigned char*>(data);
    if (!m_deflating) {
        WriteRaw(bytes, length);
        return;
    }
    while (length > 0) {
        const std::size_t part = length > (1u << 30) ? (1u << 30) : length;
        Deflate(bytes, part, Z_NO_FLUSH);
        bytes += part;
        length -= part;
    }
}

void Output::Finish() {
    if (!m_file) Open();
    if (m_deflating) {
        Deflate(nullptr, 0, Z_FINISH);
        deflateEnd(&m_stream);
        m_deflating = false;
    }
    const bool ok = m_target ? m_target->Commit() : std::fflush(m_file) == 0;
    m_file = nullptr;
    if (!ok) throw std::runtime_error(m_name + ": write failed: " + std::strerror(errno));
}

void Output::Discard() {
    m_file = nullptr;
    if (m_target) m_target->Discard();
}

}  // namespace kvxml_cli
