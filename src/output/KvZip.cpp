// KvZip.cpp - one-shot deflate of finished output, chunked inflate of input.
//
// Inflation runs on untrusted input before anything else looks at it, so it
// never trusts sizes found in the stream (a gzip trailer can claim anything),
// grows its output geometrically, and gives up - leaving the input as it was -
// once the output passes the process-wide cap (1 GiB unless set) or the 32-bit
// length range. Like zcat it reads every gzip member of a concatenation.
#include "kvxml/output/KvZip.h"

#include <zlib.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <memory>

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/values/BinaryData.h"
#include "output/detail/Inflate.h"

namespace KvXmlLib10 {

namespace {

constexpr uint32_t kScratchSize = 65536;
constexpr uint64_t kMaxLength = 0xFFFFFFFFu;  // lengths are 32-bit

std::atomic<uint64_t> g_maxInflated{uint64_t{1} << 30};

// Owns an initialised z_stream; End is deflateEnd or inflateEnd.
template <int (*End)(z_streamp)>
class ZStream {
public:
    ZStream() { std::memset(&m_stream, 0, sizeof(m_stream)); }
    ~ZStream() {
        if (m_live) End(&m_stream);
    }
    ZStream(const ZStream&) = delete;
    ZStream& operator=(const ZStream&) = delete;

    z_stream* Get() { return &m_stream; }
    /// Records the result of the init macro; true when it succeeded.
    bool Started(int initResult) {
        m_live = initResult == Z_OK;
        return m_live;
    }

private:
    z_stream m_stream;
    bool m_live = false;
};

using DeflateStream = ZStream<deflateEnd>;
using InflateStream = ZStream<inflateEnd>;

// Output of inflate: a new[] array doubled as needed, so n bytes cost O(n).
class Accumulator {
public:
    explicit Accumulator(uint64_t limit) : m_limit(limit) {}

    /// False when the bytes would pass the limit; nothing is added then.
    bool Append(const unsigned char* bytes, uint32_t count) {
        if (count > m_limit - m_size) return false;
        const uint64_t needed = m_size + count;
        if (needed > m_capacity) {
            uint64_t capacity = std::max<uint64_t>(m_capacity * 2, kScratchSize);
            capacity = std::min(std::max(capacity, needed), m_limit);
            std::unique_ptr<unsigned char[]> grown(new unsigned char[capacity]);
            if (m_size) std::memcpy(grown.get(), m_data.get(), m_size);
            m_data = std::move(grown);
            m_capacity = capacity;
        }
        if (count) std::memcpy(m_data.get() + m_size, bytes, count);
        m_size = needed;
        return true;
    }

    uint32_t Size() const { return static_cast<uint32_t>(m_size); }
    /// The array (possibly larger than Size()); never null.
    unsigned char* Release() {
        if (!m_data) m_data.reset(new unsigned char[1]);
        return m_data.release();
    }

private:
    std::unique_ptr<unsigned char[]> m_data;
    uint64_t m_size = 0;
    uint64_t m_capacity = 0;
    uint64_t m_limit;
};

}  // namespace

void CKvZip::Compress(unsigned char** data, uint32_t* length, CompressionType type) {
    if (type != Compression_GZip && type != Compression_Zlib) return;
    if (!data || !length || (!*data && *length)) return;

    // The compressed form must fit in the input's own size; otherwise the
    // finishing call cannot reach the stream end and compression fails.
    std::unique_ptr<unsigned char[]> output(new unsigned char[*length ? *length : 1]);

    DeflateStream deflater;
    z_stream* stream = deflater.Get();
    const int init = type == Compression_GZip
                         ? deflateInit2(stream, 1, Z_DEFLATED, 31, 8, Z_DEFAULT_STRATEGY)
                         : deflateInit(stream, 1);
    if (!deflater.Started(init))
        throw CKvException(FormatString("Failed to compress data. [Error Code: %d]", init));

    stream->next_in = *data;
    stream->avail_in = *length;
    stream->next_out = output.get();
    stream->avail_out = *length;
    deflate(stream, Z_NO_FLUSH);
    const int finish = deflate(stream, Z_FINISH);
    if (finish != Z_STREAM_END)
        throw CKvException(FormatString("Failed to compress data. [Error Code: %d]", finish));

    const uint32_t produced = static_cast<uint32_t>(stream->total_out);
    delete[] *data;
    *data = output.release();
    *length = produced;
}

void CKvZip::CompressData(CBinaryData& data, CompressionType type) {
    if (data.GetLength() == 0) return;
    if (type != Compression_GZip && type != Compression_Zlib) return;

    uint32_t length = data.GetLength();
    std::unique_ptr<unsigned char[]> bytes(new unsigned char[length]);
    std::memcpy(bytes.get(), data.GetData(), length);
    unsigned char* raw = bytes.get();
    Compress(&raw, &length, type);  // on success frees bytes' array
    bytes.release();
    data = CBinaryData(raw, length, true);
}

void CKvZip::Decompress(unsigned char** data, uint32_t* length) {
    // Bytes after a complete stream are dropped here; the document loader
    // refuses them instead.
    static_cast<void>(detail::Inflate(data, length));
}

namespace detail {

InflateResult Inflate(unsigned char** data, uint32_t* length) {
    InflateResult result{InflateOutcome::NotCompressed, 0, 0};
    if (!data || !length || !*data || !MayBeCompressed(*data, *length)) return result;

    const uint64_t cap = g_maxInflated.load(std::memory_order_relaxed);
    result.limit = cap == 0 ? kMaxLength : std::min(cap, kMaxLength);
    Accumulator inflated(result.limit);

    InflateStream inflater;
    z_stream* stream = inflater.Get();
    if (!inflater.Started(inflateInit2(stream, 47))) return result;  // 32 + 15: detect gzip or zlib

    std::unique_ptr<unsigned char[]> scratch(new unsigned char[kScratchSize]);
    stream->next_in = *data;
    stream->avail_in = *length;
    for (;;) {
        stream->next_out = scratch.get();
        stream->avail_out = kScratchSize;
        const int code = inflate(stream, Z_NO_FLUSH);
        if (code != Z_OK && code != Z_STREAM_END) return result;  // corrupt or truncated
        if (!inflated.Append(scratch.get(), kScratchSize - stream->avail_out)) {
            result.outcome = InflateOutcome::OverLimit;
            return result;
        }
        if (code == Z_OK) continue;
        // One stream ended: go on only into a further gzip member.
        if (stream->avail_in >= 2 && stream->next_in[0] == 0x1F && stream->next_in[1] == 0x8B) {
            if (inflateReset(stream) != Z_OK) return result;
            continue;
        }
        result.trailing = stream->avail_in;
        break;
    }

    const uint32_t produced = inflated.Size();
    delete[] *data;
    *data = inflated.Release();
    *length = produced;
    result.outcome = result.trailing ? InflateOutcome::TrailingBytes : InflateOutcome::Inflated;
    return result;
}

}  // namespace detail

void CKvZip::SetMaxDecompressedSize(uint64_t bytes) {
    g_maxInflated.store(bytes, std::memory_order_relaxed);
}

uint64_t CKvZip::GetMaxDecompressedSize() { return g_maxInflated.load(std::memory_order_relaxed); }

}  // namespace KvXmlLib10
