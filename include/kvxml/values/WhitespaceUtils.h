// WhitespaceUtils.h - CWhitespaceUtils: the XML Schema whitespace rules applied to text before parsing.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

/// The whitespace facet's three rules (plus "leave alone"). Whitespace is
/// exactly TAB, LF, CR and space; every other byte, NUL included, is text.
class KVXML_API CWhitespaceUtils {
public:
    /// Scoped because the class also has functions named Preserve, Replace
    /// and Collapse; the numbers are part of the generated-code interface.
    enum class WhitespaceRule : int32_t { None = 0, Preserve = 1, Replace = 2, Collapse = 3 };

    CWhitespaceUtils() = delete;

    /// True for TAB (9), LF (10), CR (13) and space (32) only.
    static bool IsWhiteSpace(char c) { return c == '\t' || c == '\n' || c == '\r' || c == ' '; }

    /// Line ends normalised: each CR LF pair and each lone CR become LF.
    /// Text without a CR comes back unchanged; otherwise the result stops at
    /// the first NUL.
    static std::string Preserve(const std::string& text);
    /// As above over length bytes; a null text or a negative length is empty text.
    static std::string Preserve(const char* text, int length);

    /// Each TAB and LF becomes a space, and so does each CR together with an
    /// LF right after it (CR LF gives one space).
    static std::string Replace(const std::string& text);

    /// Leading and trailing whitespace dropped, each inner run of whitespace
    /// turned into one space.
    static std::string Collapse(const std::string& text);

    /// Applies rule to text (None returns it unchanged).
    /// Throws CKvException "Unknown WhitespaceRule" for any other rule value.
    static std::string ApplyRule(WhitespaceRule rule, const std::string& text);
};

}  // namespace KvXmlLib10
