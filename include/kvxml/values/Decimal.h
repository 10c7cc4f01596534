// Decimal.h - CDecimal, the exact decimal number behind the XML Schema decimal type.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/foundation/Export.h"
#include "kvxml/values/BigInteger.h"

namespace KvXmlLib10 {

/// An exact decimal: integer part + fraction / 10^scale, both parts carrying
/// the value's sign, scale at least 1.
class KVXML_API CDecimal {
public:
    /// The largest scale kept after parsing and after division.
    static constexpr int32_t m_maxDivider = 30;

    CDecimal();
    CDecimal(int value);
    /// The value printed with 13 fraction digits, then parsed; NaN and
    /// infinities throw CKvInvalidValueException.
    CDecimal(double value);
    /// Parses the text; throws CKvInvalidValueException as Parse does.
    CDecimal(const char* text);
    CDecimal(const CBigInteger& value);
    /// Taken as given when the parts are consistent (same sign, fraction
    /// below 10^scale, scale at least 1); otherwise the same value is
    /// stored in that form.
    CDecimal(const CBigInteger& integerPart, const CBigInteger& fraction, int scale);
    CDecimal(const CDecimal& other);
    CDecimal(CDecimal&& other) noexcept;
    CDecimal& operator=(const CDecimal& other);
    CDecimal& operator=(CDecimal&& other) noexcept;
    virtual ~CDecimal();

    /// Replaces the value. White space anywhere is skipped, a sign may stand
    /// anywhere before the point, and an exponent may follow ("1.5e2").
    /// Throws CKvInvalidValueException naming the first bad character; a
    /// positive exponent above 100000 is rejected the same way (at the
    /// digit that exceeds it). A null or empty text gives zero.
    void Parse(const char* text);
    /// Without trailing zeros and without a point for whole numbers.
    std::string ToString() const;
    /// Exactly `digits` fraction digits, rounded half away from zero.
    std::string ToString(int digits) const;

    /// Throws CKvOverFlowException beyond the double range.
    double ToDouble() const;
    /// The integer part; throws CKvOverFlowException outside 32 bits.
    int32_t ToLong() const;
    /// The integer part; throws CKvOverFlowException outside 64 bits.
    int64_t ToLongLong() const;
    /// The integer part (toward zero).
    CBigInteger ToBigInteger() const;

    bool GetNegative() const;
    void Negate();

    bool operator==(const CDecimal& other) const;
    bool operator!=(const CDecimal& other) const;
    bool operator<(const CDecimal& other) const;
    bool operator<=(const CDecimal& other) const;
    bool operator>(const CDecimal& other) const;
    bool operator>=(const CDecimal& other) const;

    CDecimal operator+(const CDecimal& other) const;
    CDecimal operator-(const CDecimal& other) const;
    /// Exact.
    CDecimal operator*(const CDecimal& other) const;
    /// At most 30 fraction digits, ties toward zero; throws
    /// CKvInvalidValueException on a zero divisor.
    CDecimal operator/(const CDecimal& other) const;
    CDecimal& operator+=(const CDecimal& other);
    CDecimal& operator-=(const CDecimal& other);
    CDecimal& operator*=(const CDecimal& other);
    CDecimal& operator/=(const CDecimal& other);
    CDecimal& operator++();
    CDecimal operator++(int);
    CDecimal& operator--();
    CDecimal operator--(int);

    /// Sets the scale (at least 1); a smaller scale rounds the dropped
    /// digits with ties toward zero.
    void ChangeFractionalDivider(int scale);
    /// Drops trailing zero fraction digits, keeping at least one.
    void Rationalise();
    /// Brings both to the larger of their scales.
    static void Normalize(CDecimal& a, CDecimal& b);

private:
    friend class CBigInteger;

    /// The value times 10^scale, for a scale not below m_scale.
    CBigInteger Unscaled(int32_t scale) const;
    /// Sets the value to unscaled / 10^scale.
    void SetUnscaled(CBigInteger unscaled, int32_t scale);
    int CompareTo(const CDecimal& other) const;

    CBigInteger m_integer;
    CBigInteger m_fraction;
    int32_t m_scale;
};

}  // namespace KvXmlLib10
