// LocalText.cpp - the identity probe and the byte scans behind LocalText.
#include "dom/detail/LocalText.h"

#include <cstdint>
#include <cstring>

#include "kvxml/output/Encoder.h"

namespace KvXmlLib10::detail {

bool HasHighByte(const char* text, std::size_t length) {
    std::size_t i = 0;
    for (; i + 8 <= length; i += 8) {
        uint64_t word = 0;
        std::memcpy(&word, text + i, 8);
        if (word & 0x8080808080808080ULL) return true;
    }
    for (; i < length; ++i) {
        if (static_cast<unsigned char>(text[i]) & 0x80) return true;
    }
    return false;
}

void AppendExcludingCR(std::string& out, const char* text, std::size_t length) {
    const char* end = text + length;
    while (text != end) {
        const void* cr = std::memchr(text, '\r', static_cast<std::size_t>(end - text));
        // Appended by length: the iterator-range form takes the generic
        // replace path, several times slower for these short pieces.
        if (!cr) {
            out.append(text, static_cast<std::size_t>(end - text));
            return;
        }
        const char* stop = static_cast<const char*>(cr);
        out.append(text, static_cast<std::size_t>(stop - text));
        text = stop + 1;
    }
}

LocalText::LocalText() {
    // A two-, a three- and a four-byte character: if all come back as they
    // went in, the conversion passes bytes through (ASCIIOnly) or the locale
    // is UTF-8, and every text the parser delivers would come back unchanged.
    static const char kProbe[] = "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
    const std::size_t probeLength = sizeof kProbe - 1;
    CEncoder::Utf8ToLocalCodePage(kProbe, probeLength, m_scratch);
    m_identity = m_scratch.size() == probeLength && std::memcmp(m_scratch.data(), kProbe, probeLength) == 0;
}

std::string_view LocalText::ConvertSlow(const char* utf8, std::size_t length) {
    CEncoder::Utf8ToLocalCodePage(utf8, length, m_scratch);
    return m_scratch;
}

}  // namespace KvXmlLib10::detail
