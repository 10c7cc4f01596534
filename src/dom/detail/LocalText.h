// LocalText.h - UTF-8 from the parser to the local code page, without work when nothing changes.
//
// The conversion is the encoder's; this wrapper decides once per load
// whether it can change text at all (ASCIIOnly, or a UTF-8 locale, make it
// the identity) and otherwise sends only chunks with a byte above 0x7F
// through it, so ASCII text never takes the wide-character round trip.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace KvXmlLib10::detail {

/// True when a byte of the range is 0x80 or above.
bool HasHighByte(const char* text, std::size_t length);

/// Appends `length` bytes to `out`, leaving out every carriage return.
void AppendExcludingCR(std::string& out, const char* text, std::size_t length);

class LocalText {
public:
    /// Probes the current locale and the ASCIIOnly switch.
    LocalText();

    /// The text in the local code page: `utf8` itself when unchanged,
    /// otherwise a view of internal scratch space valid until the next call.
    std::string_view Convert(const char* utf8, std::size_t length) {
        if (m_identity || !HasHighByte(utf8, length)) return std::string_view(utf8, length);
        return ConvertSlow(utf8, length);
    }

    bool IsIdentity() const { return m_identity; }

private:
    std::string_view ConvertSlow(const char* utf8, std::size_t length);

    bool m_identity;
    std::string m_scratch;
};

}  // namespace KvXmlLib10::detail
