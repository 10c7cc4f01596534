// Decimal.cpp - CDecimal: construction, the lexical form (parse and print) and conversions out.
#include "kvxml/values/Decimal.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <string>
#include <string_view>
#include <utility>

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"

namespace KvXmlLib10 {

namespace {

// A positive exponent above this is refused: it would only ask for a
// number of millions of digits. Negative exponents need no limit, since
// anything beyond the kept fraction digits rounds to zero.
constexpr int64_t kMaxExponent = 100000;
// Beyond any text length, so a negative exponent still moves the point
// exactly as far as it matters.
constexpr int64_t kExponentSaturation = INT64_C(1000000000000000000);

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

[[noreturn]] void ThrowInvalidChar(size_t position, const char* text) {
    const int shown = position > static_cast<size_t>(INT_MAX) ? INT_MAX : static_cast<int>(position);
    throw CKvInvalidValueException(FormatString(
        "The string representing a Decimal, contained an invalid char at position %d [%s]", shown, text));
}

// The digits of one section. White space may sit between digits; as long
// as none does, the run is read straight from the text without a copy.
class DigitRun {
public:
    void Add(const char* p) {
        if (m_count == 0) {
            m_first = p;
        } else if (m_contiguous && p != m_first + m_count) {
            m_contiguous = false;
            m_copy.assign(m_first, m_count);
        }
        if (!m_contiguous) m_copy.push_back(*p);
        ++m_count;
    }
    std::string_view View() const {
        return m_contiguous ? std::string_view(m_first, m_count) : std::string_view(m_copy);
    }

private:
    const char* m_first = nullptr;
    size_t m_count = 0;
    bool m_contiguous = true;
    std::string m_copy;
};

}  // namespace

CDecimal::CDecimal() : m_scale(1) {}

CDecimal::CDecimal(int value) : m_integer(value), m_scale(1) {}

CDecimal::CDecimal(double value) : m_scale(1) {
    // Thirteen fixed fraction digits; to_chars prints like "%.13f" but never
    // with a locale's decimal comma. The newline is part of the text parsed.
    char text[400];
    auto printed = std::to_chars(text, text + sizeof text - 2, value, std::chars_format::fixed, 13);
    char* end = printed.ptr;
    *end++ = '\n';
    *end = '\0';
    Parse(text);
}

CDecimal::CDecimal(const char* text) : m_scale(1) {
    Parse(text);
}

CDecimal::CDecimal(const CBigInteger& value) : m_integer(value), m_scale(1) {}

CDecimal::CDecimal(const CBigInteger& integerPart, const CBigInteger& fraction, int scale)
    : m_integer(integerPart), m_fraction(fraction), m_scale(scale) {
    if (scale < 1) {
        // A fraction without fraction digits is a multiple of 10^-scale.
        CBigInteger whole(fraction);
        CBigInteger::ShiftLeft(whole.m_digits, static_cast<unsigned int>(-static_cast<int64_t>(scale)));
        m_integer += whole;
        m_fraction = CBigInteger();
        m_scale = 1;
        return;
    }
    const bool mixedSigns = integerPart.GetNegative() != fraction.GetNegative() &&
                            !CBigInteger::IsZero(integerPart.m_digits) &&
                            !CBigInteger::IsZero(fraction.m_digits);
    const bool fractionTooWide = !CBigInteger::IsZero(fraction.m_digits) &&
                                 CBigInteger::Position(fraction.m_digits) >= static_cast<size_t>(scale);
    if (mixedSigns || fractionTooWide) SetUnscaled(Unscaled(m_scale), m_scale);
}

CDecimal::CDecimal(const CDecimal& other) = default;
CDecimal::CDecimal(CDecimal&& other) noexcept = default;
CDecimal& CDecimal::operator=(const CDecimal& other) = default;
CDecimal& CDecimal::operator=(CDecimal&& other) noexcept = default;
CDecimal::~CDecimal() = default;

void CDecimal::Parse(const char* text) {
    m_integer = CBigInteger();
    m_fraction = CBigInteger();
    m_scale = 1;
    if (text == nullptr) return;

    enum class Section { Integer, Fraction, Exponent };
    Section section = Section::Integer;
    bool negative = false;
    bool hasExponent = false;
    bool negativeExponent = false;
    int64_t exponent = 0;          // saturates at kExponentSaturation
    size_t exponentTooLargeAt = 0; // position of the digit that passed the limit
    bool exponentTooLarge = false;
    DigitRun integerDigits, fractionDigits;

    for (const char* p = text; *p != '\0'; ++p) {
        const char c = *p;
        if (IsSpace(c)) continue;
        switch (section) {
        case Section::Integer:
            if (IsDigit(c)) {
                integerDigits.Add(p);
            } else if (c == '-' || c == '+') {
                negative = c == '-';
            } else if (c == '.') {
                section = Section::Fraction;
            } else if (c == 'e' || c == 'E') {
                section = Section::Exponent;
                hasExponent = true;
            } else {
                ThrowInvalidChar(static_cast<size_t>(p - text), text);
            }
            break;
        case Section::Fraction:
            if (IsDigit(c)) {
                fractionDigits.Add(p);
            } else if (c == 'e' || c == 'E') {
                section = Section::Exponent;
                hasExponent = true;
            } else {
                ThrowInvalidChar(static_cast<size_t>(p - text), text);
            }
            break;
        case Section::Exponent:
            if (IsDigit(c)) {
                exponent = exponent >= kExponentSaturation / 10 ? kExponentSaturation : exponent * 10 + (c - '0');
                if (exponent > kMaxExponent && !exponentTooLarge) {
                    exponentTooLarge = true;
                    exponentTooLargeAt = static_cast<size_t>(p - text);
                }
            } else if (c == '-' || c == '+') {
                negativeExponent = c == '-';
            } else {
                ThrowInvalidChar(static_cast<size_t>(p - text), text);
            }
            break;
        }
    }
    if (exponentTooLarge && !negativeExponent) ThrowInvalidChar(exponentTooLargeAt, text);

    std::string_view whole = integerDigits.View();
    std::string_view fraction = fractionDigits.View();
    std::string shifted;
    if (hasExponent && exponent != 0) {
        // Moving the decimal point is multiplying or dividing by 10^e.
        if (!negativeExponent) {
            const size_t moved = std::min(static_cast<size_t>(exponent), fraction.size());
            shifted.reserve(whole.size() + static_cast<size_t>(exponent) + fraction.size());
            shifted.append(whole).append(fraction.substr(0, moved));
            shifted.append(static_cast<size_t>(exponent) - moved, '0');
            const size_t split = shifted.size();
            shifted.append(fraction.substr(moved));
            whole = std::string_view(shifted).substr(0, split);
            fraction = std::string_view(shifted).substr(split);
        } else {
            // More than m_maxDivider + 1 leading fraction zeros round to
            // zero whatever follows, so the padding is capped there.
            const size_t shift = static_cast<size_t>(exponent);
            size_t split = 0, zeros = 0;
            if (shift <= whole.size()) {
                split = whole.size() - shift;
            } else {
                zeros = std::min(shift - whole.size(), static_cast<size_t>(m_maxDivider + 1));
            }
            shifted.reserve(zeros + whole.size() + fraction.size());
            shifted.append(whole.substr(0, split)).append(zeros, '0');
            shifted.append(whole.substr(split)).append(fraction);
            whole = std::string_view(shifted).substr(0, split);
            fraction = std::string_view(shifted).substr(split);
        }
    }

    const bool dividing = hasExponent && negativeExponent;
    if (!dividing) {
        // Trailing fraction zeros are dropped before building: the same as
        // rationalising afterwards, without the arithmetic.
        while (fraction.size() > 1 && fraction.back() == '0') fraction.remove_suffix(1);
    }
    CBigInteger::BuildFromChars(whole.data(), whole.size(), m_integer.m_digits);
    CBigInteger::BuildFromChars(fraction.data(), fraction.size(), m_fraction.m_digits);
    m_scale = fraction.empty() ? 1 : static_cast<int32_t>(std::min<size_t>(fraction.size(), INT32_MAX));
    if (negative) {
        m_integer.m_sign = -1;
        m_fraction.m_sign = -1;
    }
    m_integer.Canonicalize();
    m_fraction.Canonicalize();

    // A quotient keeps m_maxDivider digits and is then rationalised; a
    // product (or plain text) is rationalised, then cut.
    if (dividing) {
        if (m_scale > m_maxDivider) ChangeFractionalDivider(m_maxDivider);
        Rationalise();
    } else if (m_scale > m_maxDivider) {
        ChangeFractionalDivider(m_maxDivider);
    }
}

std::string CDecimal::ToString() const {
    if (CBigInteger::IsZero(m_fraction.m_digits)) return m_integer.ToString();
    std::string text;
    text.reserve(24);
    if (GetNegative()) text.push_back('-');
    CBigInteger::AppendMagnitude(text, m_integer.m_digits, 1);
    text.push_back('.');
    CBigInteger::AppendMagnitude(text, m_fraction.m_digits, static_cast<size_t>(m_scale));
    return text;
}

std::string CDecimal::ToString(int digits) const {
    digits = std::clamp(digits, 0, INT_MAX - 1);
    // Adding 5 in the first dropped place and cutting rounds half away
    // from zero; the sum keeps at least digits + 1 fraction digits.
    CDecimal rounded = *this + CDecimal(CBigInteger(), CBigInteger(GetNegative() ? -5 : 5), digits + 1);
    std::string fraction;
    CBigInteger::AppendMagnitude(fraction, rounded.m_fraction.m_digits, static_cast<size_t>(rounded.m_scale));
    fraction.resize(static_cast<size_t>(digits));
    std::string text;
    if (rounded.GetNegative()) text.push_back('-');
    CBigInteger::AppendMagnitude(text, rounded.m_integer.m_digits, 1);
    text.push_back('.');
    text += fraction;
    return text;
}

double CDecimal::ToDouble() const {
    const std::string text = ToString();
    double value = 0.0;
    auto parsed = std::from_chars(text.data(), text.data() + text.size(), value);
    if (parsed.ec == std::errc::result_out_of_range) {
        if (!CBigInteger::IsZero(m_integer.m_digits))
            throw CKvOverFlowException("The Decimal value if to large to fit into a Double");
        return GetNegative() ? -0.0 : 0.0;  // below the smallest subnormal
    }
    return value;
}

int32_t CDecimal::ToLong() const {
    int64_t value = 0;
    if (!m_integer.ToInt64(value) || value < INT32_MIN || value > INT32_MAX)
        throw CKvOverFlowException("The Decimal value if to large to fit into a LONG");
    return static_cast<int32_t>(value);
}

int64_t CDecimal::ToLongLong() const {
    int64_t value = 0;
    if (!m_integer.ToInt64(value)) throw CKvOverFlowException("The Decimal value if to large to fit into a LONGLONG");
    return value;
}

CBigInteger CDecimal::ToBigInteger() const {
    return m_integer;
}

bool CDecimal::GetNegative() const {
    return m_integer.GetNegative() || m_fraction.GetNegative();
}

void CDecimal::Negate() {
    m_integer.Negate();
    m_fraction.Negate();
}

}  // namespace KvXmlLib10
