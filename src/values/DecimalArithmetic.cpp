// DecimalArithmetic.cpp - CDecimal: scale changes, comparisons and the four operations.
//
// Every operation works on the unscaled integer (integer part * 10^scale +
// fraction) at a common scale and splits the result back, so carries and
// borrows between fraction and integer part need no special cases.
#include <algorithm>
#include <new>
#include <utility>

#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Decimal.h"

namespace KvXmlLib10 {

namespace {

using Digits = CBigInteger::CDigitArray;

unsigned int ToShift(int64_t amount) {
    if (amount < 0 || amount > static_cast<int64_t>(UINT32_MAX)) throw std::bad_alloc();
    return static_cast<unsigned int>(amount);
}

}  // namespace

CBigInteger CDecimal::Unscaled(int32_t scale) const {
    CBigInteger unscaled(m_integer);
    CBigInteger::ShiftLeft(unscaled.m_digits, ToShift(scale));
    CBigInteger fraction(m_fraction);
    CBigInteger::ShiftLeft(fraction.m_digits, ToShift(static_cast<int64_t>(scale) - m_scale));
    unscaled += fraction;
    return unscaled;
}

void CDecimal::SetUnscaled(CBigInteger unscaled, int32_t scale) {
    const int32_t sign = unscaled.m_sign;
    CBigInteger::SplitAt(unscaled.m_digits, static_cast<size_t>(scale), &m_integer.m_digits,
                         &m_fraction.m_digits);
    m_integer.m_sign = sign;
    m_fraction.m_sign = sign;
    m_integer.Canonicalize();
    m_fraction.Canonicalize();
    m_scale = scale;
}

void CDecimal::ChangeFractionalDivider(int scale) {
    scale = std::max(scale, 1);
    if (scale > m_scale) {
        CBigInteger::ShiftLeft(m_fraction.m_digits, ToShift(static_cast<int64_t>(scale) - m_scale));
        m_scale = scale;
        return;
    }
    if (scale == m_scale) return;

    const size_t dropped = static_cast<size_t>(m_scale - scale);
    Digits kept, remainder;
    CBigInteger::SplitAt(m_fraction.m_digits, dropped, &kept, &remainder);
    // Round away from zero only when the remainder is above half of
    // 10^dropped: an exact half stays (ties toward zero).
    Digits twice, unit;
    CBigInteger::Multiply(remainder, 2u, twice);
    CBigInteger::Pow10(static_cast<unsigned int>(dropped), unit);
    if (CBigInteger::Compare(twice, unit) > 0) {
        Digits one;
        one.push_back(1);
        CBigInteger::Add(kept, one, kept);
    }
    m_scale = scale;
    const int32_t sign = m_fraction.m_sign;
    if (CBigInteger::Position(kept) >= static_cast<size_t>(scale)) {
        // Rounded up to 10^scale: a whole unit carries into the integer part.
        m_integer += CBigInteger(sign);
        kept.clear();
    }
    m_fraction.m_digits = std::move(kept);
    m_fraction.m_sign = sign;
    m_fraction.Canonicalize();
}

void CDecimal::Rationalise() {
    if (CBigInteger::IsZero(m_fraction.m_digits)) {
        m_scale = 1;
        return;
    }
    const size_t zeros = std::min(CBigInteger::TrailingZeros(m_fraction.m_digits), static_cast<size_t>(m_scale - 1));
    if (zeros == 0) return;
    CBigInteger::SplitAt(m_fraction.m_digits, zeros, &m_fraction.m_digits, nullptr);
    m_scale -= static_cast<int32_t>(zeros);
}

void CDecimal::Normalize(CDecimal& a, CDecimal& b) {
    const int scale = std::max(a.m_scale, b.m_scale);
    a.ChangeFractionalDivider(scale);
    b.ChangeFractionalDivider(scale);
}

int CDecimal::CompareTo(const CDecimal& other) const {
    // Both parts share the value's sign and the fraction stays below one,
    // so the integer parts decide unless they are equal.
    int result = m_integer.CompareTo(other.m_integer);
    if (result != 0) return result;
    const int32_t scale = std::max(m_scale, other.m_scale);
    CBigInteger mine(m_fraction), theirs(other.m_fraction);
    CBigInteger::ShiftLeft(mine.m_digits, ToShift(static_cast<int64_t>(scale) - m_scale));
    CBigInteger::ShiftLeft(theirs.m_digits, ToShift(static_cast<int64_t>(scale) - other.m_scale));
    return mine.CompareTo(theirs);
}

bool CDecimal::operator==(const CDecimal& other) const { return CompareTo(other) == 0; }
bool CDecimal::operator!=(const CDecimal& other) const { return CompareTo(other) != 0; }
bool CDecimal::operator<(const CDecimal& other) const { return CompareTo(other) < 0; }
bool CDecimal::operator<=(const CDecimal& other) const { return CompareTo(other) <= 0; }
bool CDecimal::operator>(const CDecimal& other) const { return CompareTo(other) > 0; }
bool CDecimal::operator>=(const CDecimal& other) const { return CompareTo(other) >= 0; }

CDecimal CDecimal::operator+(const CDecimal& other) const {
    const int32_t scale = std::max(m_scale, other.m_scale);
    CDecimal result;
    result.SetUnscaled(Unscaled(scale) + other.Unscaled(scale), scale);
    return result;
}

CDecimal CDecimal::operator-(const CDecimal& other) const {
    const int32_t scale = std::max(m_scale, other.m_scale);
    CDecimal result;
    result.SetUnscaled(Unscaled(scale) - other.Unscaled(scale), scale);
    return result;
}

CDecimal CDecimal::operator*(const CDecimal& other) const {
    const int64_t scale = static_cast<int64_t>(m_scale) + other.m_scale;
    if (scale > INT32_MAX) throw std::bad_alloc();  // that many digits cannot be stored anyway
    CDecimal result;
    result.SetUnscaled(Unscaled(m_scale) * other.Unscaled(other.m_scale), static_cast<int32_t>(scale));
    result.Rationalise();
    return result;
}

CDecimal CDecimal::operator/(const CDecimal& other) const {
    CBigInteger divisor = other.Unscaled(other.m_scale);
    if (CBigInteger::IsZero(divisor.m_digits)) throw CKvInvalidValueException("ERROR: Overflow in operator/.");
    CBigInteger dividend = Unscaled(m_scale);
    // (u1 / 10^s1) / (u2 / 10^s2) * 10^max = u1 * 10^(s2 + max - s1) / u2
    const int64_t shift = static_cast<int64_t>(other.m_scale) + m_maxDivider - m_scale;
    if (shift >= 0) {
        CBigInteger::ShiftLeft(dividend.m_digits, ToShift(shift));
    } else {
        CBigInteger::ShiftLeft(divisor.m_digits, ToShift(-shift));
    }
    Digits quotient, remainder, twice;
    CBigInteger::Divide(dividend.m_digits, divisor.m_digits, quotient, remainder);
    CBigInteger::Multiply(remainder, 2u, twice);
    if (CBigInteger::Compare(twice, divisor.m_digits) > 0) {
        Digits one;
        one.push_back(1);
        CBigInteger::Add(quotient, one, quotient);
    }
    CBigInteger scaled;
    scaled.m_digits = std::move(quotient);
    scaled.m_sign = dividend.m_sign * divisor.m_sign;
    scaled.Canonicalize();
    CDecimal result;
    result.SetUnscaled(std::move(scaled), m_maxDivider);
    result.Rationalise();
    return result;
}

CDecimal& CDecimal::operator+=(const CDecimal& other) { return *this = *this + other; }
CDecimal& CDecimal::operator-=(const CDecimal& other) { return *this = *this - other; }
CDecimal& CDecimal::operator*=(const CDecimal& other) { return *this = *this * other; }
CDecimal& CDecimal::operator/=(const CDecimal& other) { return *this = *this / other; }

CDecimal& CDecimal::operator++() { return *this += CDecimal(1); }
CDecimal& CDecimal::operator--() { return *this -= CDecimal(1); }

CDecimal CDecimal::operator++(int) {
    CDecimal before(*this);
    ++*this;
    return before;
}

CDecimal CDecimal::operator--(int) {
    CDecimal before(*this);
    --*this;
    return before;
}

}  // namespace KvXmlLib10
