// ConversionsNumbers.cpp - CConversions for the integer parsers, the two floating types, decimal and integer.
//
// The integer parsers reproduce the C conversions of a platform whose long is
// 32 bits: i4 and ui4 run the 64-bit conversions and then apply the 32-bit
// range rules (errno ERANGE, strtoul's wrap of negated magnitudes) so every
// host gives the same answers. All number text goes through the "C" locale.
#include <algorithm>
#include <cerrno>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "detail/ConversionsCore.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Conversions.h"

namespace KvXmlLib10 {

namespace {

using Rule = CWhitespaceUtils::WhitespaceRule;

[[noreturn]] void ThrowTooLarge(const std::string& text, const char* typeName) {
    throw CKvInvalidValueException(FormatString("The value [%s] is to large to fit in a %s", text.c_str(), typeName));
}

[[noreturn]] void ThrowNotConverted(const std::string& text, const char* typeName) {
    throw CKvInvalidValueException(
        FormatString("The value [%s] can not be converted to a %s", text.c_str(), typeName));
}

// What a C conversion reports: the value, whether errno became ERANGE, and
// whether it stopped before the end of the (NUL-terminated) text.
template <typename T>
struct Converted {
    T value;
    bool outOfRange;
    bool trailing;
};

// Up to 18 decimal digits after an optional sign, and nothing else: the
// common form, read directly. Cannot overflow, so strtoll and strtoull would
// give the same value without a range error. False for any other text.
bool ReadShortDigits(const char* text, bool& negative, uint64_t& magnitude) {
    negative = *text == '-';
    if (negative || *text == '+') ++text;
    const char* digits = text;
    uint64_t value = 0;
    for (; *text >= '0' && *text <= '9'; ++text) {
        if (text - digits == 18) return false;
        value = value * 10 + static_cast<uint64_t>(*text - '0');
    }
    if (*text != '\0' || text == digits) return false;
    magnitude = value;
    return true;
}

Converted<int64_t> ConvertSigned64(const char* text) {
    bool negative = false;
    uint64_t magnitude = 0;
    if (ReadShortDigits(text, negative, magnitude)) {
        const auto value = static_cast<int64_t>(magnitude);
        return {negative ? -value : value, false, false};
    }
    char* end = nullptr;
    errno = 0;
    const long long value = strtoll_l(text, &end, 10, detail::CNumericLocale());
    return {static_cast<int64_t>(value), errno == ERANGE, *end != '\0'};
}

Converted<uint64_t> ConvertUnsigned64(const char* text) {
    bool negative = false;
    uint64_t magnitude = 0;
    if (ReadShortDigits(text, negative, magnitude)) return {negative ? 0 - magnitude : magnitude, false, false};
    char* end = nullptr;
    errno = 0;
    const unsigned long long value = strtoull_l(text, &end, 10, detail::CNumericLocale());
    return {static_cast<uint64_t>(value), errno == ERANGE, *end != '\0'};
}

// strtol with a 32-bit long: the 64-bit result clamps to the 32-bit limits.
Converted<int32_t> ConvertSigned32(const char* text) {
    const Converted<int64_t> wide = ConvertSigned64(text);
    if (wide.outOfRange || wide.value > INT32_MAX) return {INT32_MAX, true, wide.trailing};
    if (wide.value < INT32_MIN) return {INT32_MIN, true, wide.trailing};
    return {static_cast<int32_t>(wide.value), false, wide.trailing};
}

bool IsCSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// strtoul with a 32-bit long: the magnitude after the sign must fit in 32
// bits, and a "-" negates it modulo 2^32.
Converted<uint32_t> ConvertUnsigned32(const char* text) {
    const Converted<uint64_t> wide = ConvertUnsigned64(text);
    const char* p = text;
    while (IsCSpace(*p)) ++p;
    const bool negative = *p == '-';
    const uint64_t magnitude = negative ? 0 - wide.value : wide.value;
    if (wide.outOfRange || magnitude > UINT32_MAX) return {UINT32_MAX, true, wide.trailing};
    const uint32_t low = static_cast<uint32_t>(magnitude);
    return {negative ? 0u - low : low, false, wide.trailing};
}

int32_t ParseI4(const std::string& text) {
    const Converted<int32_t> result = ConvertSigned32(text.c_str());
    if (result.outOfRange) ThrowTooLarge(text, "i4");
    if (result.trailing) ThrowNotConverted(text, "i4");
    return result.value;
}

uint32_t ParseUI4(const std::string& text) {
    const Converted<uint32_t> result = ConvertUnsigned32(text.c_str());
    if (result.outOfRange) ThrowTooLarge(text, "ui4");
    if (result.trailing) ThrowNotConverted(text, "ui4");
    return result.value;
}

double ParseDouble(const std::string& text, const char* typeName) {
    const char* c = text.c_str();
    if (text.empty() || std::strcmp(c, "NaN") == 0 || std::strcmp(c, "1.#QNAN") == 0 || std::strcmp(c, "-NAN") == 0)
        return std::numeric_limits<double>::quiet_NaN();
    if (std::strcmp(c, "-INF") == 0) return -std::numeric_limits<double>::infinity();
    if (std::strcmp(c, "INF") == 0) return std::numeric_limits<double>::infinity();
    char* end = nullptr;
    const double value = strtod_l(c, &end, detail::CNumericLocale());
    if (*end != '\0') ThrowNotConverted(text, typeName);
    return value;
}

// double to float as IEEE round-to-nearest does it, spelled out because a
// finite value beyond the float range is undefined behaviour in C++.
float NarrowToFloat(double value) {
    if (std::isfinite(value) && std::fabs(value) > FLT_MAX) {
        // Half a float ulp above FLT_MAX (2^103) and beyond rounds to infinity.
        const double limit = static_cast<double>(FLT_MAX) + std::ldexp(1.0, 103);
        const float magnitude = std::fabs(value) < limit ? FLT_MAX : std::numeric_limits<float>::infinity();
        return std::signbit(value) ? -magnitude : magnitude;
    }
    return static_cast<float>(value);
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A caller's printf format is only safe with one double argument: at most
// one floating conversion, no '*', no length other than 'l', and widths and
// precisions short enough that printing stays cheap. Checked up to the
// first NUL, where printf stops reading.
bool IsNumberFormat(const char* format) {
    int conversions = 0;
    for (const char* p = format; *p != '\0'; ++p) {
        if (*p != '%') continue;
        ++p;
        if (*p == '%') continue;
        while (*p != '\0' && std::strchr("-+ #0'", *p) != nullptr) ++p;
        int digits = 0;
        while (IsDigit(*p)) ++p, ++digits;
        if (digits > 4) return false;
        if (*p == '.') {
            ++p;
            digits = 0;
            while (IsDigit(*p)) ++p, ++digits;
            if (digits > 4) return false;
        }
        if (*p == 'l') ++p;
        if (*p == '\0' || std::strchr("eEfFgGaA", *p) == nullptr) return false;
        if (++conversions > 1) return false;
    }
    return true;
}

// The floating printer behind r4 and r8. charconv's general format with a
// precision is printf's %g in the "C" locale, digit for digit.
template <size_t BufferSize>
std::string PrintFloating(double value, const std::string& format, int defaultPrecision) {
    if (std::isnan(value)) return "NaN";
    if (std::isinf(value)) return value < 0 ? "-INF" : "INF";
    char buffer[BufferSize];
    if (format.empty()) {
        const auto result =
            std::to_chars(buffer, buffer + BufferSize - 1, value, std::chars_format::general, defaultPrecision);
        return std::string(buffer, result.ptr);
    }
    if (!IsNumberFormat(format.c_str()))
        throw CKvInvalidParamException(FormatString("Invalid number format [%s]", format.c_str()));
    int written;
    {
        detail::ScopedCLocale cLocale;
        written = std::snprintf(buffer, BufferSize, format.c_str(), value);
    }
    if (written < 0) return std::string();
    return std::string(buffer, std::min(static_cast<size_t>(written), BufferSize - 1));
}

}  // namespace

int8_t CConversions::i1FromString(const std::string& text, Rule rule) {
    std::string storage;
    const std::string& t = detail::ApplyRuleCheap(rule, text, storage);
    const int32_t value = ParseI4(t);
    if (value < INT8_MIN || value > INT8_MAX) ThrowTooLarge(t, "i1");
    return static_cast<int8_t>(value);
}

int16_t CConversions::i2FromString(const std::string& text, Rule rule) {
    std::string storage;
    const std::string& t = detail::ApplyRuleCheap(rule, text, storage);
    const int32_t value = ParseI4(t);
    if (value < INT16_MIN || value > INT16_MAX) ThrowTooLarge(t, "i2");
    return static_cast<int16_t>(value);
}

int32_t CConversions::i4FromString(const std::string& text, Rule rule) {
    std::string storage;
    return ParseI4(detail::ApplyRuleCheap(rule, text, storage));
}

int64_t CConversions::i8FromString(const std::string& text, Rule rule) {
    std::string storage;
    const std::string& t = detail::ApplyRuleCheap(rule, text, storage);
    const Converted<int64_t> result = ConvertSigned64(t.c_str());
    if (result.outOfRange) ThrowTooLarge(t, "i8");
    if (result.trailing) ThrowNotConverted(t, "i8");
    return result.value;
}

uint8_t CConversions::ui1FromString(const std::string& text, Rule rule) {
    std::string storage;
    const std::string& t = detail::ApplyRuleCheap(rule, text, storage);
    const uint32_t value = ParseUI4(t);
    if (value > UINT8_MAX) ThrowTooLarge(t, "ui1");
    return static_cast<uint8_t>(value);
}

uint16_t CConversions::ui2FromString(const std::string& text, Rule rule) {
    std::string storage;
    const std::string& t = detail::ApplyRuleCheap(rule, text, storage);
    const uint32_t value = ParseUI4(t);
    if (value > UINT16_MAX) ThrowTooLarge(t, "ui2");
    return static_cast<uint16_t>(value);
}

uint32_t CConversions::ui4FromString(const std::string& text, Rule rule) {
    std::string storage;
    return ParseUI4(detail::ApplyRuleCheap(rule, text, storage));
}

uint64_t CConversions::ui8FromString(const std::string& text, Rule rule) {
    std::string storage;
    const std::string& t = detail::ApplyRuleCheap(rule, text, storage);
    const Converted<uint64_t> result = ConvertUnsigned64(t.c_str());
    if (result.outOfRange) ThrowTooLarge(t, "ui8");
    if (result.trailing) ThrowNotConverted(t, "ui8");
    return result.value;
}

float CConversions::r4FromString(const std::string& text, Rule rule) {
    std::string storage;
    return NarrowToFloat(ParseDouble(detail::ApplyRuleCheap(rule, text, storage), "r4"));
}

double CConversions::r8FromString(const std::string& text, Rule rule) {
    std::string storage;
    return ParseDouble(detail::ApplyRuleCheap(rule, text, storage), "r8");
}

std::string CConversions::r4ToString(float value) { return PrintFloating<32>(value, std::string(), 7); }

std::string CConversions::r4ToString(float value, const std::string& format) {
    return PrintFloating<32>(value, format, 7);
}

std::string CConversions::r8ToString(double value) { return PrintFloating<48>(value, std::string(), 16); }

std::string CConversions::r8ToString(double value, const std::string& format) {
    return PrintFloating<48>(value, format, 16);
}

CDecimal CConversions::decimalFromString(const std::string& text, Rule rule) {
    std::string storage;
    return CDecimal(detail::ApplyRuleCheap(rule, text, storage).c_str());
}

std::string CConversions::decimalToString(const CDecimal& value) { return value.ToString(); }

std::string CConversions::decimalToString(const CDecimal& value, const std::string& format) {
    if (format.empty()) return value.ToString();
    // Read as strtol would with a 32-bit long: garbage gives 0, overflow clamps.
    return value.ToString(ConvertSigned32(format.c_str()).value);
}

CBigInteger CConversions::integerFromString(const std::string& text, Rule rule) {
    std::string storage;
    return CBigInteger(detail::ApplyRuleCheap(rule, text, storage).c_str());
}

std::string CConversions::integerToString(const CBigInteger& value) { return value.ToString(); }

}  // namespace KvXmlLib10
