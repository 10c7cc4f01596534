// BigInteger.cpp - CBigInteger: text forms, signs, comparisons and the arithmetic operators.
#include "kvxml/values/BigInteger.h"

#include <utility>

#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Decimal.h"

namespace KvXmlLib10 {

namespace {

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

}  // namespace

const CBigInteger CBigInteger::MAX_LONG(CDecimal("2147483647"));
const CBigInteger CBigInteger::MIN_LONG(CDecimal("-2147483648"));
const CBigInteger CBigInteger::MAX_LONGLONG(CDecimal("9223372036854775807"));
const CBigInteger CBigInteger::MIN_LONGLONG(CDecimal("-9223372036854775808"));
const CBigInteger CBigInteger::MAX_DOUBLE(CDecimal("1.7E+308"));
const CBigInteger CBigInteger::MIN_DOUBLE(CDecimal("-1.7E+308"));

CBigInteger::CBigInteger() : m_sign(1) {}

CBigInteger::CBigInteger(int value) : m_sign(1) {
    FromInt64(value);
}

CBigInteger::CBigInteger(double value) : m_sign(value < 0 ? -1 : 1) {
    BuildDouble(value, m_digits);
    Canonicalize();
}

CBigInteger::CBigInteger(const char* text) : m_sign(1) {
    Parse(text);
}

CBigInteger::CBigInteger(const CDecimal& value) : CBigInteger(value.m_integer) {}

CBigInteger::CBigInteger(const CBigInteger& other) = default;
CBigInteger::CBigInteger(CBigInteger&& other) noexcept = default;
CBigInteger& CBigInteger::operator=(const CBigInteger& other) = default;
CBigInteger& CBigInteger::operator=(CBigInteger&& other) noexcept = default;
CBigInteger::~CBigInteger() = default;

void CBigInteger::Canonicalize() {
    Clean(m_digits);
    if (m_digits.empty()) m_sign = 1;
}

void CBigInteger::FromInt64(int64_t value) {
    // Magnitude in unsigned arithmetic: -INT64_MIN does not fit in int64_t.
    uint64_t magnitude = value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
    m_sign = value < 0 ? -1 : 1;
    BuildDWORDLONG(magnitude, m_digits);
}

bool CBigInteger::ToInt64(int64_t& value) const {
    const size_t n = m_digits.size();  // canonical: no high zero limbs
    if (n > 3 || (n == 3 && m_digits[2] > 9)) return false;
    uint64_t magnitude = 0;
    for (size_t i = n; i-- > 0;) magnitude = magnitude * CDigitArray::kBase + m_digits[i];
    const uint64_t limit = static_cast<uint64_t>(INT64_MAX) + (m_sign < 0 ? 1 : 0);
    if (magnitude > limit) return false;
    value = m_sign < 0 ? static_cast<int64_t>(0 - magnitude) : static_cast<int64_t>(magnitude);
    return true;
}

void CBigInteger::Parse(const char* text) {
    m_sign = 1;
    m_digits.clear();
    if (text == nullptr) return;
    // Fast path: [spaces][sign][spaces]digits[spaces].
    const char* p = text;
    while (IsSpace(*p)) ++p;
    int32_t sign = 1;
    if (*p == '-' || *p == '+') sign = *p++ == '-' ? -1 : 1;
    while (IsSpace(*p)) ++p;
    const char* first = p;
    while (IsDigit(*p)) ++p;
    const char* last = p;
    while (IsSpace(*p)) ++p;
    if (*p == '\0' && last != first) {
        BuildFromChars(first, static_cast<size_t>(last - first), m_digits);
        m_sign = sign;
        Canonicalize();
        return;
    }
    // Anything else (fractions, exponents, inner spaces, bad characters) is
    // read by the decimal parser, which also owns the error message.
    CDecimal value(text);
    *this = std::move(value.m_integer);
}

std::string CBigInteger::ToString() const {
    std::string text;
    if (m_sign < 0 && !IsZero(m_digits)) text.push_back('-');
    AppendMagnitude(text, m_digits, 1);
    return text;
}

CBigInteger::operator int() const {
    int64_t value = 0;
    if (!ToInt64(value) || value < INT32_MIN || value > INT32_MAX)
        throw CKvInvalidValueException("ERROR: Value out of bound of int.");
    return static_cast<int>(value);
}

int CBigInteger::CompareTo(const CBigInteger& other) const {
    if (m_sign != other.m_sign) return m_sign < other.m_sign ? -1 : 1;
    int magnitude = Compare(m_digits, other.m_digits);
    return m_sign < 0 ? -magnitude : magnitude;
}

bool CBigInteger::operator==(const CBigInteger& other) const { return CompareTo(other) == 0; }
bool CBigInteger::operator!=(const CBigInteger& other) const { return CompareTo(other) != 0; }
bool CBigInteger::operator<(const CBigInteger& other) const { return CompareTo(other) < 0; }
bool CBigInteger::operator<=(const CBigInteger& other) const { return CompareTo(other) <= 0; }
bool CBigInteger::operator>(const CBigInteger& other) const { return CompareTo(other) > 0; }
bool CBigInteger::operator>=(const CBigInteger& other) const { return CompareTo(other) >= 0; }

CBigInteger CBigInteger::operator-() const {
    CBigInteger result(*this);
    result.Negate();
    return result;
}

void CBigInteger::Negate() {
    m_sign = -m_sign;
    Canonicalize();
}

void CBigInteger::Abs() {
    m_sign = 1;
}

bool CBigInteger::GetNegative() const {
    return m_sign < 0 && !IsZero(m_digits);
}

CBigInteger CBigInteger::GetAbs() const {
    CBigInteger result(*this);
    result.Abs();
    return result;
}

void CBigInteger::AddSigned(const CBigInteger& a, const CBigInteger& b, bool subtract,
                            CBigInteger& result) {
    const int32_t bSign = subtract ? -b.m_sign : b.m_sign;
    if (a.m_sign == bSign) {
        Add(a.m_digits, b.m_digits, result.m_digits);
        result.m_sign = bSign;
    } else {
        // Opposite signs: the larger magnitude keeps its sign.
        const int32_t sign = Compare(a.m_digits, b.m_digits) >= 0 ? a.m_sign : bSign;
        Subtract(a.m_digits, b.m_digits, result.m_digits);
        result.m_sign = sign;
    }
    result.Canonicalize();
}

void CBigInteger::DivideOrThrow(const CBigInteger& a, const CBigInteger& b, CBigInteger* quotient,
                                CBigInteger* remainder, const char* message) {
    if (IsZero(b.m_digits)) throw CKvInvalidValueException(message);
    const int32_t qSign = a.m_sign == b.m_sign ? 1 : -1;
    const int32_t rSign = a.m_sign;
    CDigitArray q, r;
    Divide(a.m_digits, b.m_digits, q, r);
    if (quotient != nullptr) {
        quotient->m_digits = std::move(q);
        quotient->m_sign = qSign;
        quotient->Canonicalize();
    }
    if (remainder != nullptr) {
        remainder->m_digits = std::move(r);
        remainder->m_sign = rSign;
        remainder->Canonicalize();
    }
}

CBigInteger CBigInteger::operator+(const CBigInteger& other) const {
    CBigInteger result;
    AddSigned(*this, other, false, result);
    return result;
}

CBigInteger CBigInteger::operator-(const CBigInteger& other) const {
    CBigInteger result;
    AddSigned(*this, other, true, result);
    return result;
}

CBigInteger CBigInteger::operator*(const CBigInteger& other) const {
    CBigInteger result;
    Multiply(m_digits, other.m_digits, result.m_digits);
    result.m_sign = m_sign * other.m_sign;
    result.Canonicalize();
    return result;
}

CBigInteger CBigInteger::operator/(const CBigInteger& other) const {
    CBigInteger result;
    DivideOrThrow(*this, other, &result, nullptr, "ERROR: Overflow in operator/.");
    return result;
}

CBigInteger CBigInteger::operator%(const CBigInteger& other) const {
    CBigInteger result;
    DivideOrThrow(*this, other, nullptr, &result, "ERROR: Overflow in operator%.");
    return result;
}

CBigInteger& CBigInteger::operator+=(const CBigInteger& other) {
    AddSigned(*this, other, false, *this);
    return *this;
}

CBigInteger& CBigInteger::operator-=(const CBigInteger& other) {
    AddSigned(*this, other, true, *this);
    return *this;
}

CBigInteger& CBigInteger::operator*=(const CBigInteger& other) {
    Multiply(m_digits, other.m_digits, m_digits);
    m_sign *= other.m_sign;
    Canonicalize();
    return *this;
}

CBigInteger& CBigInteger::operator/=(const CBigInteger& other) {
    DivideOrThrow(*this, other, this, nullptr, "ERROR: Overflow in operator /=.");
    return *this;
}

CBigInteger& CBigInteger::operator%=(const CBigInteger& other) {
    DivideOrThrow(*this, other, nullptr, this, "ERROR: Overflow in operator%=.");
    return *this;
}

CBigInteger CBigInteger::SquareRoot() const {
    if (GetNegative()) throw CKvInvalidValueException("ERROR: Negative Number in function SquareRoot().");
    CBigInteger x;
    if (IsZero(m_digits)) return x;
    // Newton's iteration from above: 10^(p/2 + 1) exceeds the root of a
    // number below 10^(p+1), and the sequence falls until it stops at the
    // rounded-down root.
    Pow10(static_cast<unsigned int>(Position(m_digits) / 2 + 1), x.m_digits);
    const CBigInteger two(2);
    for (;;) {
        CBigInteger next = (x + *this / x) / two;
        if (next >= x) break;
        x = std::move(next);
    }
    return x;
}

CBigInteger CBigInteger::Pow10(unsigned int n) {
    CBigInteger result;
    Pow10(n, result.m_digits);
    return result;
}

}  // namespace KvXmlLib10
