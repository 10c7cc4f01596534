// Encoder.h - conversions between the local code page and UTF-8 or wide characters.
//
// Text inside the library is 8-bit characters in the local code page (the
// current C locale, as seen by mbrtowc and wcrtomb). These functions turn it
// into UTF-8 or wide bytes for output and turn UTF-8 from the parser back
// into the local code page. Characters that do not convert become '?'.
#pragma once

#include <cstddef>
#include <string>

#include "kvxml/foundation/Export.h"
#include "kvxml/values/BinaryData.h"

namespace KvXmlLib10 {

/// Process-wide switch, off at start: when on, text is taken as plain bytes
/// and passed through every conversion unchanged (no locale involved).
KVXML_API void ASCIIOnly(bool asciiOnly);

class KVXML_API CEncoder {
public:
    /// UTF-8 bytes of local code page text (NULs included). A byte that does
    /// not decode becomes '?' and decoding resumes at the next byte.
    /// Throws CKvException when the result would exceed 4 GiB.
    static CBinaryData LocalCodePageToUtf8Binary(const std::string& text);
    static CBinaryData LocalCodePageToUtf8Binary(const char* text, size_t length);

    /// The wide characters of local code page text, one 32-bit unit per
    /// character in machine byte order, no byte-order mark, no terminator.
    /// With ASCIIOnly each byte becomes one unit of the same value.
    static CBinaryData LocalCodePageToUnicodeBinary(const std::string& text);
    static CBinaryData LocalCodePageToUnicodeBinary(const char* text, size_t length);

    /// UTF-8 bytes of wide text; a character that cannot be encoded (a
    /// surrogate or a value above 0x10FFFF) becomes '?'.
    static CBinaryData UnicodeToUtf8Binary(const wchar_t* text, size_t length);

    /// Local code page text of UTF-8 bytes, replacing the content of `out`
    /// (whose capacity is reused). Malformed UTF-8 sequences and characters
    /// with no local form become '?'.
    static void Utf8ToLocalCodePage(const unsigned char* utf8, size_t length, std::string& out);
    static void Utf8ToLocalCodePage(const char* utf8, size_t length, std::string& out);
    static std::string Utf8ToLocalCodePage(const char* utf8, size_t length);
};

}  // namespace KvXmlLib10
