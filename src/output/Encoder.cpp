// Encoder.cpp - local code page <-> UTF-8 / wide conversions behind CEncoder.
//
// Decoding runs in fixed-size chunks of wide characters so that a large
// document never needs a wide copy of itself. Bytes below 0x80 are taken as
// ASCII while the conversion state is initial: every code page glibc offers
// as a locale agrees with ASCII there, and the shift bytes of stateful
// encodings (ESC, SO, SI) are left to the C library.
#include "kvxml/output/Encoder.h"

#include <algorithm>
#include <atomic>
#include <climits>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "kvxml/foundation/KvException.h"
#include "kvxml/values/UnicodeConversion.h"
#include "output/detail/PieceEncoder.h"
#include "output/detail/PlainAscii.h"

namespace KvXmlLib10 {

static_assert(sizeof(wchar_t) == 4, "wide output is defined as 32-bit units");

namespace {

std::atomic<bool> g_asciiOnly{false};

bool IsAsciiOnly() { return g_asciiOnly.load(std::memory_order_relaxed); }

constexpr size_t kChunk = 4096;

using detail::IsPlainAscii;

// CBinaryData lengths are 32-bit; refuse to wrap.
void CheckRoom(const CBinaryData& out, size_t more) {
    if (more > UINT32_MAX - out.GetLength()) {
        throw CKvException("The text is too large to encode.");
    }
}

void AppendBytes(CBinaryData& out, const unsigned char* bytes, size_t length) {
    if (length == 0) return;
    CheckRoom(out, length);
    out.Append(bytes, static_cast<uint32_t>(length));
}

// A growable byte array that becomes a CBinaryData without a copy.
class Utf8Array {
public:
    explicit Utf8Array(size_t capacity) : m_bytes(new unsigned char[capacity]), m_capacity(capacity) {}

    // Space for `more` bytes at the end; CBinaryData lengths are 32-bit.
    unsigned char* Room(size_t more) {
        if (more > UINT32_MAX - m_length) throw CKvException("The text is too large to encode.");
        if (more > m_capacity - m_length) {
            const size_t capacity = std::max(2 * m_capacity, m_length + more);
            std::unique_ptr<unsigned char[]> grown(new unsigned char[capacity]);
            std::memcpy(grown.get(), m_bytes.get(), m_length);
            m_bytes = std::move(grown);
            m_capacity = capacity;
        }
        return m_bytes.get() + m_length;
    }
    void Grew(size_t count) { m_length += count; }
    CBinaryData Release() {
        const auto length = static_cast<uint32_t>(m_length);
        return CBinaryData(m_bytes.release(), length, true);
    }

private:
    std::unique_ptr<unsigned char[]> m_bytes;
    size_t m_capacity;
    size_t m_length = 0;
};

// The local-to-UTF-8 loop, resumable: text held in pieces is converted
// piece by piece with the state carried across, as if it were joined.
class LocalToUtf8 {
public:
    explicit LocalToUtf8(Utf8Array& utf8) : m_utf8(utf8) {}

    // Converts text from position i; stops at the end, once at or past
    // `stopAt`, or before a character that starts within the last `hold`
    // bytes (whose end may lie in the next piece). Returns the position.
    size_t Run(const char* text, size_t length, size_t i, size_t hold, size_t stopAt) {
        const auto* bytes = reinterpret_cast<const unsigned char*>(text);
        while (i < length && i < stopAt) {
            if (m_initial) {
                const size_t run = i + detail::PlainAsciiRun(bytes + i, length - i);
                if (run > i) {
                    std::memcpy(m_utf8.Room(run - i), bytes + i, run - i);
                    m_utf8.Grew(run - i);
                    i = run;
                    continue;
                }
            }
            if (length - i < hold) break;
            wchar_t wc = 0;
            const size_t got = std::mbrtowc(&wc, text + i, length - i, &m_state);
            if (got == 0) {  // the NUL character
                ++i;
            } else if (got > length - i) {  // invalid, incomplete or not a character of its own
                wc = L'?';
                ++i;
                m_state = std::mbstate_t{};
            } else {
                i += got;
            }
            m_initial = std::mbsinit(&m_state) != 0;
            unsigned char* at = m_utf8.Room(4);
            const int one = UnicodeToUTF8(&wc, 1, at, 4);
            if (one > 0) {
                m_utf8.Grew(static_cast<size_t>(one));
            } else {
                *at = '?';
                m_utf8.Grew(1);
            }
        }
        return i;
    }

private:
    Utf8Array& m_utf8;
    std::mbstate_t m_state{};
    bool m_initial = true;
};

// Decodes local code page text and hands the wide characters to `sink`
// in chunks of at most kChunk.
template <class Sink>
void DecodeLocal(const char* text, size_t length, Sink&& sink) {
    wchar_t chunk[kChunk];
    size_t used = 0;
    std::mbstate_t state{};
    bool initial = true;
    size_t i = 0;
    while (i < length) {
        if (used == kChunk) {
            sink(chunk, used);
            used = 0;
        }
        const unsigned char byte = static_cast<unsigned char>(text[i]);
        if (initial && IsPlainAscii(byte)) {
            chunk[used++] = static_cast<wchar_t>(byte);
            ++i;
            continue;
        }
        wchar_t wc = 0;
        const size_t got = std::mbrtowc(&wc, text + i, length - i, &state);
        if (got == 0) {  // the NUL character
            chunk[used++] = L'\0';
            ++i;
        } else if (got > length - i) {  // invalid, incomplete or not a character of its own
            chunk[used++] = L'?';
            ++i;
            state = std::mbstate_t{};
        } else {
            chunk[used++] = wc;
            i += got;
        }
        initial = std::mbsinit(&state) != 0;
    }
    if (used) sink(chunk, used);
}

// Encodes wide characters as UTF-8 onto `out`.
void AppendUnicodeAsUtf8(const wchar_t* text, size_t length, CBinaryData& out) {
    unsigned char staging[kChunk * 4];
    while (length > 0) {
        const size_t part = length < kChunk ? length : kChunk;
        size_t written = 0;
        if (!DoesUnicodeStrContainAnyUTF8CharsLargerThanOneByte(text, static_cast<int>(part))) {
            for (size_t i = 0; i < part; ++i) staging[i] = static_cast<unsigned char>(text[i]);
            written = part;
        } else {
            const int converted = UnicodeToUTF8(text, static_cast<uint32_t>(part), staging,
                                                static_cast<uint32_t>(sizeof staging));
            if (converted > 0) {
                written = static_cast<size_t>(converted);
            } else {
                // The converter refuses the chunk whole; redo it one character
                // at a time so only the bad characters turn into '?'.
                for (size_t i = 0; i < part; ++i) {
                    const int one = UnicodeToUTF8(text + i, 1, staging + written, 4);
                    if (one > 0) {
                        written += static_cast<size_t>(one);
                    } else {
                        staging[written++] = '?';
                    }
                }
            }
        }
        AppendBytes(out, staging, written);
        text += part;
        length -= part;
    }
}

// Length of the UTF-8 sequence a lead byte announces; 0 for a byte that
// cannot start one.
size_t SequenceLength(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead < 0xC0) return 0;
    if (lead < 0xE0) return 2;
    if (lead < 0xF0) return 3;
    if (lead < 0xF8) return 4;
    return 0;
}

// Decodes UTF-8 one sequence at a time, '?' for each byte that does not
// start a well-formed sequence. Returns the wide characters written.
size_t DecodeUtf8Leniently(const unsigned char* utf8, size_t length, wchar_t* out) {
    size_t written = 0;
    size_t i = 0;
    while (i < length) {
        const size_t need = SequenceLength(utf8[i]);
        wchar_t wc = 0;
        if (need != 0 && need <= length - i &&
            UTF8ToUnicode(utf8 + i, static_cast<uint32_t>(need), &wc, 1) == 1) {
            out[written++] = wc;
            i += need;
        } else {
            out[written++] = L'?';
            ++i;
        }
    }
    return written;
}

// Encodes wide characters in the local code page onto `out`.
class LocalEncoder {
public:
    explicit LocalEncoder(std::string& out) : m_out(out) {}

    void Put(const wchar_t* text, size_t length) {
        char bytes[MB_LEN_MAX];
        for (size_t i = 0; i < length; ++i) {
            const wchar_t wc = text[i];
            if (m_initial && wc >= 0 && wc < 0x80 && IsPlainAscii(static_cast<unsigned char>(wc))) {
                m_out.push_back(static_cast<char>(wc));
                continue;
            }
            const size_t got = std::wcrtomb(bytes, wc, &m_state);
            if (got == static_cast<size_t>(-1)) {
                m_state = std::mbstate_t{};
                m_out.push_back('?');
            } else {
                m_out.append(bytes, got);
            }
            m_initial = std::mbsinit(&m_state) != 0;
        }
    }

    void PutAscii(const unsigned char* text, size_t length) {
        size_t i = 0;
        while (i < length) {
            size_t run = i;
            if (m_initial) {
                while (run < length && IsPlainAscii(text[run])) ++run;
                m_out.append(reinterpret_cast<const char*>(text + i), run - i);
            }
            if (run < length) {
                const wchar_t wc = text[run];
                Put(&wc, 1);
                ++run;
            }
            i = run;
        }
    }

    // A stateful code page may owe a return to its initial shift state.
    void Finish() {
        if (m_initial) return;
        char bytes[MB_LEN_MAX];
        const size_t got = std::wcrtomb(bytes, L'\0', &m_state);
        if (got != static_cast<size_t>(-1) && got > 1) m_out.append(bytes, got - 1);
        m_state = std::mbstate_t{};
        m_initial = true;
    }

private:
    std::string& m_out;
    std::mbstate_t m_state{};
    bool m_initial = true;
};

}  // namespace

void ASCIIOnly(bool asciiOnly) { g_asciiOnly.store(asciiOnly, std::memory_order_relaxed); }

CBinaryData CEncoder::LocalCodePageToUtf8Binary(const std::string& text) {
    return LocalCodePageToUtf8Binary(text.data(), text.size());
}

CBinaryData CEncoder::LocalCodePageToUtf8Binary(const char* text, size_t length) {
    CBinaryData out;
    if (length == 0) return out;
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    if (IsAsciiOnly() || detail::IsPlainAsciiText(text, length)) {
        // ASCII (or pass-through) text is its own UTF-8.
        AppendBytes(out, bytes, length);
        return out;
    }
    // Mostly ASCII with a few local characters: ASCII runs are copied as
    // they are, only the rest goes through the C library one character at
    // a time. Written into one array sized for a few multi-byte characters
    // and handed over whole, so the bytes are copied once.
    Utf8Array utf8(length + length / 8 + 16);
    LocalToUtf8 convert(utf8);
    convert.Run(text, length, 0, 0, SIZE_MAX);
    return utf8.Release();
}

namespace detail {

CBinaryData LocalPiecesToUtf8Binary(const std::vector<std::string_view>& pieces, size_t length) {
    // More than any character's length in any local code page.
    constexpr size_t kHold = MB_LEN_MAX;
    // No separate ASCII scan first: the conversion copies ASCII runs whole,
    // so plain text costs one pass either way.
    const bool plain = IsAsciiOnly();
    bool stitchable = true;
    for (size_t k = 0; k + 1 < pieces.size(); ++k) {
        if (pieces[k].size() < kHold) stitchable = false;
    }
    if (!plain && !stitchable) {
        std::string joined;
        joined.reserve(length);
        for (const std::string_view& piece : pieces) joined.append(piece.data(), piece.size());
        return CEncoder::LocalCodePageToUtf8Binary(joined.data(), joined.size());
    }
    if (length == 0) return CBinaryData();
    Utf8Array utf8(plain ? length : length + length / 8 + 16);
    if (plain) {
        // ASCII (or pass-through) text is its own UTF-8.
        for (const std::string_view& piece : pieces) {
            std::memcpy(utf8.Room(piece.size()), piece.data(), piece.size());
            utf8.Grew(piece.size());
        }
        return utf8.Release();
    }
    LocalToUtf8 convert(utf8);
    std::string stitch;
    size_t from = 0;
    for (size_t k = 0; k < pieces.size(); ++k) {
        const std::string_view piece = pieces[k];
        const bool last = k + 1 == pieces.size();
        const size_t stopped = convert.Run(piece.data(), piece.size(), from, last ? 0 : kHold, SIZE_MAX);
        from = 0;
        if (stopped >= piece.size()) continue;
        // A character may cross into the next piece: convert the tail with
        // enough of the next piece behind it, then resume there.
        const std::string_view next = pieces[k + 1];
        const size_t carried = piece.size() - stopped;
        stitch.assign(piece.data() + stopped, carried);
        stitch.append(next.data(), std::min(next.size(), kHold));
        from = convert.Run(stitch.data(), stitch.size(), 0, 0, carried) - carried;
    }
    return utf8.Release();
}

}  // namespace detail

CBinaryData CEncoder::LocalCodePageToUnicodeBinary(const std::string& text) {
    return LocalCodePageToUnicodeBinary(text.data(), text.size());
}

CBinaryData CEncoder::LocalCodePageToUnicodeBinary(const char* text, size_t length) {
    CBinaryData out;
    auto append = [&out](const wchar_t* chunk, size_t used) {
        AppendBytes(out, reinterpret_cast<const unsigned char*>(chunk), used * sizeof(wchar_t));
    };
    if (IsAsciiOnly()) {
        wchar_t chunk[kChunk];
        size_t used = 0;
        for (size_t i = 0; i < length; ++i) {
            chunk[used++] = static_cast<wchar_t>(static_cast<unsigned char>(text[i]));
            if (used == kChunk) {
                append(chunk, used);
                used = 0;
            }
        }
        if (used) append(chunk, used);
        return out;
    }
    DecodeLocal(text, length, append);
    return out;
}

CBinaryData CEncoder::UnicodeToUtf8Binary(const wchar_t* text, size_t length) {
    CBinaryData out;
    if (text && length) AppendUnicodeAsUtf8(text, length, out);
    return out;
}

void CEncoder::Utf8ToLocalCodePage(const unsigned char* utf8, size_t length, std::string& out) {
    out.clear();
    if (!utf8 || length == 0) return;
    if (IsAsciiOnly()) {
        out.assign(reinterpret_cast<const char*>(utf8), length);
        return;
    }
    // Chunks of at most kChunk bytes, cut at a character boundary, so the
    // 32-bit length of the converter always holds.
    wchar_t wide[kChunk];
    LocalEncoder encoder(out);
    size_t at = 0;
    while (at < length) {
        size_t end = length - at <= kChunk ? length : at + kChunk;
        if (end < length) {
            // Back up over at most three continuation bytes to the lead byte.
            size_t back = end;
            while (back > end - 3 && (utf8[back] & 0xC0) == 0x80) --back;
            if ((utf8[back] & 0xC0) != 0x80) end = back;
        }
        const unsigned char* piece = utf8 + at;
        const size_t pieceLength = end - at;
        if (!DoesUTF8StrContainAnyCharsLargerThanOneByte(piece, static_cast<uint32_t>(pieceLength))) {
            encoder.PutAscii(piece, pieceLength);
        } else {
            int got = UTF8ToUnicode(piece, static_cast<uint32_t>(pieceLength), wide, kChunk);
            const size_t count =
                got > 0 ? static_cast<size_t>(got) : DecodeUtf8Leniently(piece, pieceLength, wide);
            encoder.Put(wide, count);
        }
        at = end;
    }
    encoder.Finish();
}

void CEncoder::Utf8ToLocalCodePage(const char* utf8, size_t length, std::string& out) {
    Utf8ToLocalCodePage(reinterpret_cast<const unsigned char*>(utf8), length, out);
}

std::string CEncoder::Utf8ToLocalCodePage(const char* utf8, size_t length) {
    std::string out;
    Utf8ToLocalCodePage(utf8, length, out);
    return out;
}

}  // namespace KvXmlLib10
