// Conversions.h - CConversions: the text forms of the primitive value types.
//
// Every <type>FromString applies a whitespace rule first and then parses;
// every <type>ToString prints the canonical text the writers emit. Numbers
// are read and written under the "C" numeric locale whatever the process
// locale is.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/foundation/Export.h"
#include "kvxml/values/BigInteger.h"
#include "kvxml/values/BinaryData.h"
#include "kvxml/values/DateTime.h"
#include "kvxml/values/DateTimeSpan.h"
#include "kvxml/values/Decimal.h"
#include "kvxml/values/WhitespaceUtils.h"

namespace KvXmlLib10 {

/// Static conversions between values and their XML lexical forms.
/// Parse failures throw CKvInvalidValueException quoting the text after the
/// whitespace rule (hexBinary: CKvException from CBinaryData); an unknown
/// rule throws CKvException "Unknown WhitespaceRule". An embedded NUL ends
/// the text for every parser, as it would for a C string.
class KVXML_API CConversions {
public:
    CConversions() = delete;

    /// Base-10 integer printers ("C" locale, no padding, "-" for negatives).
    static std::string i1ToString(int8_t value);
    static std::string i2ToString(int16_t value);
    static std::string i4ToString(int32_t value);
    static std::string i8ToString(int64_t value);
    static std::string ui1ToString(uint8_t value);
    static std::string ui2ToString(uint16_t value);
    static std::string ui4ToString(uint32_t value);
    static std::string ui8ToString(uint64_t value);

    /// Base-10 integer parsers with the rules of the C conversions on a
    /// platform whose long is 32 bits: optional leading whitespace and sign,
    /// empty text gives 0, a "-" on an unsigned type wraps ("-1" as ui4 is
    /// 4294967295). Out of range: "The value [%s] is to large to fit in a
    /// <type>"; other bad text: "The value [%s] can not be converted to a
    /// <type>". i1/i2 report bad text with the i4 message, ui1/ui2 with ui4's.
    static int8_t i1FromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static int16_t i2FromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static int32_t i4FromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static int64_t i8FromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static uint8_t ui1FromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static uint16_t ui2FromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static uint32_t ui4FromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static uint64_t ui8FromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);

    /// Empty text, "NaN", "1.#QNAN" and "-NAN" give a quiet NaN; "INF" and
    /// "-INF" the infinities; else the C strtod form (overflow gives an
    /// infinity, no range error). r4 narrows the double without a check.
    static float r4FromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static double r8FromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    /// "NaN", "INF", "-INF", else "%.7g" / "%.16g" or the given printf format
    /// (one floating conversion at most, width and precision below 10000,
    /// else CKvInvalidParamException). Output is cut at 31 / 47 characters.
    static std::string r4ToString(float value);
    static std::string r4ToString(float value, const std::string& format);
    static std::string r8ToString(double value);
    static std::string r8ToString(double value, const std::string& format);

    /// "true", "false", "1" or "0" in any case.
    static bool booleanFromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static std::string booleanToString(bool value);
    /// Exactly one byte after the whitespace rule.
    static char charFromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static std::string charToString(char value);
    /// The text after the whitespace rule; printing returns it unchanged.
    static std::string stringFromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static std::string stringToString(const std::string& value);

    static CBinaryData hexBinaryFromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static std::string hexBinaryToString(const CBinaryData& value);
    /// Invalid base64 gives empty data, not an error.
    static CBinaryData base64BinaryFromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static std::string base64BinaryToString(const CBinaryData& value);

    static CDecimal decimalFromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    /// An empty format prints the exact value; otherwise the format is read
    /// as a base-10 count of fraction digits (rounded half away from zero).
    static std::string decimalToString(const CDecimal& value);
    static std::string decimalToString(const CDecimal& value, const std::string& format);
    static CBigInteger integerFromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static std::string integerToString(const CBigInteger& value);

    static CDateTimeSpan durationFromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static std::string durationToString(const CDateTimeSpan& value);
    /// Each accepts only its own lexical form, time zone optional; a date
    /// text of another form (such as "2001-05" for date) throws
    /// CKvInvalidValueException "Invalid XSD <gYearMonth|...> [%s]".
    static CDateTime yearMonthFromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static CDateTime monthDayFromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static CDateTime dateFromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static CDateTime datetimeFromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static CDateTime timeFromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static std::string yearMonthToString(const CDateTime& value);
    static std::string monthDayToString(const CDateTime& value);
    static std::string dateToString(const CDateTime& value);
    static std::string datetimeToString(const CDateTime& value);
    static std::string timeToString(const CDateTime& value);
    /// gYear, gMonth and gDay texts; the zone is dropped. A negative year
    /// wraps into the unsigned 16 bits.
    static uint16_t yearFromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static uint8_t monthFromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    static uint8_t dayFromString(const std::string& text, CWhitespaceUtils::WhitespaceRule rule);
    /// "%u", "--%02u" and "---%02u".
    static std::string yearToString(uint16_t value);
    static std::string monthToString(uint8_t value);
    static std::string dayToString(uint8_t value);
};

}  // namespace KvXmlLib10
