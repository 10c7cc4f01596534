// BigInteger.h - CBigInteger, the unbounded signed integer behind the XML Schema integer type.
//
// The magnitude is kept in base-10^9 limbs so that decimal text converts in
// linear time both ways, and values of up to 36 digits live inline without a
// heap allocation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

class CDecimal;

/// An exact signed integer of any size.
class KVXML_API CBigInteger {
public:
    /// A magnitude: base-10^9 limbs, least significant first, each below
    /// kBase. High zero limbs are allowed (Clean removes them); the empty
    /// array reads as zero. Up to four limbs are stored inline.
    class KVXML_API CDigitArray {
    public:
        static constexpr uint32_t kBase = 1000000000u;
        static constexpr unsigned kDigitsPerLimb = 9;

        CDigitArray() noexcept {}
        CDigitArray(const CDigitArray& other);
        CDigitArray(CDigitArray&& other) noexcept;
        CDigitArray& operator=(const CDigitArray& other);
        CDigitArray& operator=(CDigitArray&& other) noexcept;
        ~CDigitArray();

        size_t size() const noexcept { return m_size; }
        bool empty() const noexcept { return m_size == 0; }
        uint32_t* data() noexcept { return IsInline() ? m_inline : m_heap; }
        const uint32_t* data() const noexcept { return IsInline() ? m_inline : m_heap; }
        uint32_t& operator[](size_t i) noexcept { return data()[i]; }
        uint32_t operator[](size_t i) const noexcept { return data()[i]; }
        uint32_t back() const noexcept { return data()[m_size - 1]; }
        void clear() noexcept { m_size = 0; }
        void pop_back() noexcept { --m_size; }
        /// Grows with zero limbs or shrinks; throws std::bad_alloc when huge.
        void resize(size_t n);
        void reserve(size_t n);
        void push_back(uint32_t limb);
        void swap(CDigitArray& other) noexcept;

    private:
        static constexpr uint32_t kInline = 4;
        bool IsInline() const noexcept { return m_capacity == kInline; }

        uint32_t m_size = 0;
        uint32_t m_capacity = kInline;
        union {
            uint32_t m_inline[kInline] = {};
            uint32_t* m_heap;
        };
    };

    /// Range constants, built at start-up from decimal text.
    static const CBigInteger MAX_LONG;
    static const CBigInteger MIN_LONG;
    static const CBigInteger MAX_LONGLONG;
    static const CBigInteger MIN_LONGLONG;
    static const CBigInteger MAX_DOUBLE;
    static const CBigInteger MIN_DOUBLE;

    CBigInteger();
    CBigInteger(int value);
    /// The integer part (toward zero); NaN and infinities give zero.
    explicit CBigInteger(double value);
    /// Parses the text; throws CKvInvalidValueException as Parse does.
    CBigInteger(const char* text);
    /// The integer part of the decimal (toward zero).
    explicit CBigInteger(const CDecimal& value);
    CBigInteger(const CBigInteger& other);
    CBigInteger(CBigInteger&& other) noexcept;
    CBigInteger& operator=(const CBigInteger& other);
    CBigInteger& operator=(CBigInteger&& other) noexcept;
    virtual ~CBigInteger();

    /// Replaces the value. Accepts optional white space and one leading sign
    /// around a digit run; any other text (fraction, exponent, inner spaces)
    /// is read as a CDecimal and its integer part kept, so bad text throws
    /// CKvInvalidValueException with the decimal parser's message. A null
    /// or empty text gives zero.
    void Parse(const char* text);
    /// Decimal digits with a "-" for negative values; zero is "0".
    std::string ToString() const;
    /// Throws CKvInvalidValueException outside the signed 32-bit range.
    explicit operator int() const;

    bool operator==(const CBigInteger& other) const;
    bool operator!=(const CBigInteger& other) const;
    bool operator<(const CBigInteger& other) const;
    bool operator<=(const CBigInteger& other) const;
    bool operator>(const CBigInteger& other) const;
    bool operator>=(const CBigInteger& other) const;

    CBigInteger operator-() const;
    void Negate();
    /// Makes the value non-negative in place.
    void Abs();
    bool GetNegative() const;
    CBigInteger GetAbs() const;

    CBigInteger operator+(const CBigInteger& other) const;
    CBigInteger operator-(const CBigInteger& other) const;
    CBigInteger operator*(const CBigInteger& other) const;
    /// Truncates toward zero; throws CKvInvalidValueException on a zero divisor.
    CBigInteger operator/(const CBigInteger& other) const;
    /// Takes the sign of the dividend; throws CKvInvalidValueException on a zero divisor.
    CBigInteger operator%(const CBigInteger& other) const;
    CBigInteger& operator+=(const CBigInteger& other);
    CBigInteger& operator-=(const CBigInteger& other);
    CBigInteger& operator*=(const CBigInteger& other);
    CBigInteger& operator/=(const CBigInteger& other);
    CBigInteger& operator%=(const CBigInteger& other);

    /// The integer square root, rounded down; throws CKvInvalidValueException
    /// for a negative value.
    CBigInteger SquareRoot() const;
    /// Ten to the power n (n + 1 digits are allocated).
    static CBigInteger Pow10(unsigned int n);

    // Magnitude helpers. Results may alias the inputs.
    /// -1, 0 or 1 as a is below, equal to or above b.
    static int Compare(const CDigitArray& a, const CDigitArray& b);
    static void Add(const CDigitArray& a, const CDigitArray& b, CDigitArray& result);
    /// a - b; a must not be smaller than b.
    static void Subtract(const CDigitArray& a, const CDigitArray& b, CDigitArray& result);
    /// a times one limb (below CDigitArray::kBase).
    static void Multiply(const CDigitArray& a, uint32_t limb, CDigitArray& result);
    static void Multiply(const CDigitArray& a, const CDigitArray& b, CDigitArray& result);
    /// Long division; throws CKvInvalidValueException when b is zero.
    static void Divide(const CDigitArray& a, const CDigitArray& b, CDigitArray& quotient,
                       CDigitArray& remainder);
    /// Multiplies a by ten to the power n.
    static void ShiftLeft(CDigitArray& a, unsigned int n);
    /// Index of the highest decimal digit (0 for zero).
    static size_t Position(const CDigitArray& a);
    /// Removes high zero limbs.
    static void Clean(CDigitArray& a);
    static void Build(unsigned int value, CDigitArray& result);
    static void BuildDWORDLONG(unsigned long long value, CDigitArray& result);
    /// The magnitude of the integer part; NaN and infinities give zero.
    static void BuildDouble(double value, CDigitArray& result);
    /// Reads the trailing run of decimal digits of text, ignoring the rest.
    static void Build(const std::string& text, CDigitArray& result);
    static void Pow10(unsigned int n, CDigitArray& result);

private:
    friend class CDecimal;

    /// Zero always has sign 1 and no limbs.
    void Canonicalize();
    int CompareTo(const CBigInteger& other) const;
    /// result = a + b, or a - b when subtract is set.
    static void AddSigned(const CBigInteger& a, const CBigInteger& b, bool subtract,
                          CBigInteger& result);
    /// The value when it fits in 64 bits.
    bool ToInt64(int64_t& value) const;
    void FromInt64(int64_t value);
    /// Digits from a run of '0'..'9' characters (linear time).
    static void BuildFromChars(const char* first, size_t count, CDigitArray& result);
    /// Appends the decimal digits of a, left-padded with '0' to minWidth.
    static void AppendMagnitude(std::string& out, const CDigitArray& a, size_t minWidth);
    /// high = a / 10^n, low = a % 10^n (either may be null).
    static void SplitAt(const CDigitArray& a, size_t n, CDigitArray* high, CDigitArray* low);
    /// Number of trailing zero decimal digits (0 for zero).
    static size_t TrailingZeros(const CDigitArray& a);
    static bool IsZero(const CDigitArray& a);
    static void DivideOrThrow(const CBigInteger& a, const CBigInteger& b, CBigInteger* quotient,
                              CBigInteger* remainder, const char* message);

    int32_t m_sign;
    CDigitArray m_digits;
};

}  // namespace KvXmlLib10
