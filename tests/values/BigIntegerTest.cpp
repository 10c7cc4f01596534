// BigIntegerTest.cpp - CBigInteger: text forms, signs, the arithmetic operators and the digit helpers.
#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "kvxml/values/BigInteger.h"
#include "kvxml/values/Decimal.h"
#include "support/KvTestSupport.h"

using KvXmlLib10::CBigInteger;
using KvXmlLib10::CKvInvalidValueException;

namespace {

std::string Str(const CBigInteger& value) {
    return value.ToString();
}

// Deterministic digit strings of a given length (no leading zero).
std::string Digits(size_t length, uint32_t& seed) {
    std::string text;
    for (size_t i = 0; i < length; ++i) {
        seed = seed * 1103515245u + 12345u;
        char digit = static_cast<char>('0' + (seed >> 16) % 10);
        if (i == 0 && digit == '0') digit = '7';
        text.push_back(digit);
    }
    return text;
}

}  // namespace

TEST(BigIntegerParse, StripsSignsSpacesAndLeadingZeros) {
    const struct {
        const char* text;
        const char* printed;
    } cases[] = {
        {"-000123", "-123"}, {"0", "0"},     {"-0", "0"},           {"+0", "0"},
        {"000", "0"},        {" 42 ", "42"}, {"+7", "7"},           {"\t-\n9\r", "-9"},
        {"", "0"},           {"-", "0"},     {"   ", "0"},          {"1 2", "12"},
        {"1-2", "-12"},      {"--5", "-5"},  {"-+5", "5"},          {"999999999", "999999999"},
    };
    for (const auto& c : cases) EXPECT_EQ(Str(CBigInteger(c.text)), c.printed) << c.text;
    EXPECT_EQ(Str(CBigInteger(static_cast<const char*>(nullptr))), "0");
}

TEST(BigIntegerParse, TakesIntegerPartOfFractionsAndExponents) {
    EXPECT_EQ(Str(CBigInteger("12.9")), "12");
    EXPECT_EQ(Str(CBigInteger("-12.9")), "-12");
    EXPECT_EQ(Str(CBigInteger("-0.9")), "0");
    EXPECT_EQ(Str(CBigInteger("1.5e2")), "150");
    EXPECT_EQ(Str(CBigInteger("1E3")), "1000");
    EXPECT_EQ(Str(CBigInteger("1e-5")), "0");
    EXPECT_EQ(Str(CBigInteger("-25e-1")), "-2");
}

TEST(BigIntegerParse, RejectsOtherCharactersWithTheDecimalMessage) {
    EXPECT_KV_THROW(CBigInteger("12abc"), CKvInvalidValueException,
                    "The string representing a Decimal, contained an invalid char at position 2 [12abc]");
    EXPECT_KV_THROW(CBigInteger("0x10"), CKvInvalidValueException,
                    "The string representing a Decimal, contained an invalid char at position 1 [0x10]");
    EXPECT_KV_THROW(CBigInteger("\xff"), CKvInvalidValueException,
                    "The string representing a Decimal, contained an invalid char at position 0 [\xff]");
    EXPECT_KV_THROW(CBigInteger("1e999999"), CKvInvalidValueException,
                    "The string representing a Decimal, contained an invalid char at position 7 [1e999999]");
}

TEST(BigIntegerParse, KeepsEveryDigitOfLongRuns) {
    uint32_t seed = 1;
    // Lengths around the nine-digit limb boundaries, and one long run.
    for (size_t length : {1, 8, 9, 10, 17, 18, 19, 26, 27, 28, 36, 37, 1000, 100000}) {
        std::string text = Digits(length, seed);
        EXPECT_EQ(Str(CBigInteger(text.c_str())), text) << length;
        EXPECT_EQ(Str(CBigInteger(("-" + text).c_str())), "-" + text) << length;
    }
}

TEST(BigIntegerPrint, NeverSignsZero) {
    EXPECT_EQ(Str(-CBigInteger(0)), "0");
    EXPECT_EQ(Str(CBigInteger(5) - CBigInteger(5)), "0");
    EXPECT_EQ(Str(CBigInteger(-5) * CBigInteger(0)), "0");
    EXPECT_EQ(Str(CBigInteger(-1) / CBigInteger(7)), "0");
    EXPECT_EQ(Str(CBigInteger(-14) % CBigInteger(7)), "0");
    CBigInteger zero;
    zero.Negate();
    EXPECT_EQ(Str(zero), "0");
    EXPECT_FALSE(zero.GetNegative());
}

TEST(BigIntegerConstruct, FromIntDoubleAndDecimal) {
    EXPECT_EQ(Str(CBigInteger(INT_MIN)), "-2147483648");
    EXPECT_EQ(Str(CBigInteger(INT_MAX)), "2147483647");
    EXPECT_EQ(Str(CBigInteger(2147483648.0)), "2147483648");
    EXPECT_EQ(Str(CBigInteger(-1.9)), "-1");
    EXPECT_EQ(Str(CBigInteger(0.5)), "0");
    EXPECT_EQ(Str(CBigInteger(1e20)), "100000000000000000000");
    EXPECT_EQ(Str(CBigInteger(9007199254740993.0)), "9007199254740992");
    EXPECT_EQ(Str(CBigInteger(std::numeric_limits<double>::quiet_NaN())), "0");
    EXPECT_EQ(Str(CBigInteger(-std::numeric_limits<double>::infinity())), "0");
    EXPECT_EQ(Str(CBigInteger(std::numeric_limits<double>::max())).size(), 309u);
    EXPECT_EQ(Str(CBigInteger(KvXmlLib10::CDecimal("-7.99"))), "-7");
}

TEST(BigIntegerConstruct, RangeConstants) {
    EXPECT_EQ(Str(CBigInteger::MAX_LONG), "2147483647");
    EXPECT_EQ(Str(CBigInteger::MIN_LONG), "-2147483648");
    EXPECT_EQ(Str(CBigInteger::MAX_LONGLONG), "9223372036854775807");
    EXPECT_EQ(Str(CBigInteger::MIN_LONGLONG), "-9223372036854775808");
    EXPECT_EQ(Str(CBigInteger::MAX_DOUBLE), "17" + std::string(307, '0'));
    EXPECT_EQ(Str(CBigInteger::MIN_DOUBLE), "-17" + std::string(307, '0'));
}

TEST(BigIntegerConvert, IntWithinThirtyTwoBitsOnly) {
    EXPECT_EQ(static_cast<int>(CBigInteger("2147483647")), INT_MAX);
    EXPECT_EQ(static_cast<int>(CBigInteger("-2147483648")), INT_MIN);
    EXPECT_EQ(static_cast<int>(CBigInteger("-17")), -17);
    EXPECT_KV_THROW(static_cast<int>(CBigInteger(2147483648.0)), CKvInvalidValueException,
                    "ERROR: Value out of bound of int.");
    EXPECT_KV_THROW(static_cast<int>(CBigInteger("-2147483649")), CKvInvalidValueException,
                    "ERROR: Value out of bound of int.");
    EXPECT_KV_THROW(static_cast<int>(CBigInteger("100000000000000000000000000000")), CKvInvalidValueException,
                    "ERROR: Value out of bound of int.");
}

TEST(BigIntegerCompare, OrdersBySignThenMagnitude) {
    const char* ordered[] = {"-1000000000000", "-1000000000", "-999999999", "-1", "0",
                             "1",              "999999999",   "1000000000", "1000000001", "100000000000000000000"};
    const int count = static_cast<int>(sizeof ordered / sizeof ordered[0]);
    for (int i = 0; i < count; ++i) {
        for (int j = 0; j < count; ++j) {
            CBigInteger a(ordered[i]), b(ordered[j]);
            EXPECT_EQ(a == b, i == j) << ordered[i] << " " << ordered[j];
            EXPECT_EQ(a != b, i != j);
            EXPECT_EQ(a < b, i < j);
            EXPECT_EQ(a <= b, i <= j);
            EXPECT_EQ(a > b, i > j);
            EXPECT_EQ(a >= b, i >= j);
        }
    }
}

TEST(BigIntegerAdd, CarriesAndBorrowsAcrossLimbs) {
    EXPECT_EQ(Str(CBigInteger("99999999999999999999") + CBigInteger(1)), "100000000000000000000");
    EXPECT_EQ(Str(CBigInteger("999999999") + CBigInteger(1)), "1000000000");
    EXPECT_EQ(Str(CBigInteger("1000000000") - CBigInteger(1)), "999999999");
    EXPECT_EQ(Str(CBigInteger("1000000000000000000000000000") - CBigInteger(1)), "999999999999999999999999999");
    EXPECT_EQ(Str(CBigInteger("-1000000000000000000") + CBigInteger(1)), "-999999999999999999");
    EXPECT_EQ(Str(CBigInteger(-5) + CBigInteger(3)), "-2");
    EXPECT_EQ(Str(CBigInteger(5) + CBigInteger(-7)), "-2");
    EXPECT_EQ(Str(CBigInteger(-5) - CBigInteger(-7)), "2");
    EXPECT_EQ(Str(CBigInteger(-5) - CBigInteger(7)), "-12");
    CBigInteger sum("999999999999999999");
    sum += sum;
    EXPECT_EQ(Str(sum), "1999999999999999998");
    sum -= CBigInteger("1999999999999999999");
    EXPECT_EQ(Str(sum), "-1");
}

TEST(BigIntegerMultiply, ProductsAndSigns) {
    EXPECT_EQ(Str(CBigInteger(123456789) * CBigInteger(987654321)), "121932631112635269");
    EXPECT_EQ(Str(CBigInteger("999999999999999999") * CBigInteger("999999999999999999")),
              "999999999999999998000000000000000001");
    EXPECT_EQ(Str(CBigInteger(-3) * CBigInteger(4)), "-12");
    EXPECT_EQ(Str(CBigInteger(-3) * CBigInteger(-4)), "12");
    CBigInteger power(1);
    for (int i = 0; i < 64; ++i) power *= CBigInteger(2);
    EXPECT_EQ(Str(power), "18446744073709551616");
    EXPECT_EQ(Str(power * power), "340282366920938463463374607431768211456");
}

TEST(BigIntegerDivide, TruncatesTowardZeroAndRemainderFollowsDividend) {
    const struct {
        int a, b, quotient, remainder;
    } cases[] = {
        {7, 2, 3, 1}, {7, -2, -3, 1}, {-7, 2, -3, -1}, {-7, -2, 3, -1}, {0, 5, 0, 0}, {5, 7, 0, 5}, {-5, 7, 0, -5},
    };
    for (const auto& c : cases) {
        CBigInteger a(c.a), b(c.b);
        EXPECT_EQ(static_cast<int>(a / b), c.quotient) << c.a << "/" << c.b;
        EXPECT_EQ(static_cast<int>(a % b), c.remainder) << c.a << "%" << c.b;
        a /= b;
        EXPECT_EQ(static_cast<int>(a), c.quotient);
        CBigInteger r(c.a);
        r %= b;
        EXPECT_EQ(static_cast<int>(r), c.remainder);
    }
    EXPECT_EQ(Str(CBigInteger("340282366920938463463374607431768211456") / CBigInteger("18446744073709551616")),
              "18446744073709551616");
}

TEST(BigIntegerDivide, LongDivisionSatisfiesTheDivisionIdentity) {
    uint32_t seed = 42;
    const size_t lengths[] = {1, 9, 10, 18, 19, 27, 28, 45, 60, 200};
    for (size_t la : lengths) {
        for (size_t lb : lengths) {
            if (lb > la) continue;
            CBigInteger a(Digits(la, seed).c_str()), b(Digits(lb, seed).c_str());
            if (seed & 1) a.Negate();
            if (seed & 2) b.Negate();
            CBigInteger q = a / b, r = a % b;
            EXPECT_EQ(q * b + r, a) << Str(a) << " / " << Str(b);
            EXPECT_LT(r.GetAbs(), b.GetAbs());
            EXPECT_TRUE(r == CBigInteger(0) || r.GetNegative() == a.GetNegative());
            EXPECT_EQ((a * b) / b, a);
        }
    }
    // Divisors with a small or a maximal top limb, where the quotient
    // estimate is most often off by one.
    const char* divisors[] = {"1000000000", "1000000001", "1999999999", "999999999999999999",
                              "500000000000000000", "100000000000000000000000000000"};
    for (const char* d : divisors) {
        CBigInteger b(d), a = CBigInteger("999999999999999999999999999999999999999999999") * b + (b - CBigInteger(1));
        EXPECT_EQ(Str(a / b), "999999999999999999999999999999999999999999999") << d;
        EXPECT_EQ(a % b, b - CBigInteger(1)) << d;
    }
}

TEST(BigIntegerDivide, ByZeroNamesTheOperator) {
    CBigInteger a(10), zero;
    EXPECT_KV_THROW(a / zero, CKvInvalidValueException, "ERROR: Overflow in operator/.");
    EXPECT_KV_THROW(a /= zero, CKvInvalidValueException, "ERROR: Overflow in operator /=.");
    EXPECT_KV_THROW(a % zero, CKvInvalidValueException, "ERROR: Overflow in operator%.");
    EXPECT_KV_THROW(a %= zero, CKvInvalidValueException, "ERROR: Overflow in operator%=.");
    EXPECT_EQ(Str(a), "10");
}

TEST(BigIntegerSquareRoot, RoundsDown) {
    const struct {
        const char* value;
        const char* root;
    } cases[] = {
        {"0", "0"},   {"1", "1"},   {"3", "1"},   {"4", "2"},
        {"15", "3"},  {"16", "4"},  {"17", "4"},  {"999999999999999999", "999999999"},
        {"10000000000000000000000000000000000000000", "100000000000000000000"},
        {"10000000000000000000200000000000000000000", "100000000000000000000"},
    };
    for (const auto& c : cases) EXPECT_EQ(Str(CBigInteger(c.value).SquareRoot()), c.root) << c.value;
    EXPECT_KV_THROW(CBigInteger(-4).SquareRoot(), CKvInvalidValueException,
                    "ERROR: Negative Number in function SquareRoot().");
}

TEST(BigIntegerSigns, NegateAbsAndGetAbs) {
    CBigInteger value("-12345678901234567890");
    EXPECT_TRUE(value.GetNegative());
    EXPECT_EQ(Str(value.GetAbs()), "12345678901234567890");
    EXPECT_EQ(Str(-value), "12345678901234567890");
    value.Abs();
    EXPECT_EQ(Str(value), "12345678901234567890");
    value.Negate();
    EXPECT_EQ(Str(value), "-12345678901234567890");
}

TEST(BigIntegerPow10, BuildsOneFollowedByZeros) {
    EXPECT_EQ(Str(CBigInteger::Pow10(0)), "1");
    EXPECT_EQ(Str(CBigInteger::Pow10(8)), "100000000");
    EXPECT_EQ(Str(CBigInteger::Pow10(9)), "1000000000");
    EXPECT_EQ(Str(CBigInteger::Pow10(40)), "1" + std::string(40, '0'));
}

TEST(BigIntegerDigits, MagnitudeHelpers) {
    using Digits = CBigInteger::CDigitArray;
    Digits a, b, out, rem;
    // Build reads the trailing run of digits only.
    CBigInteger::Build(std::string("abc123"), a);
    CBigInteger::Build(std::string("12a34"), b);
    EXPECT_EQ(CBigInteger::Compare(a, b), 1);
    CBigInteger::Subtract(b, a, out);  // larger minus smaller, either order
    CBigInteger::Build(89u, rem);
    EXPECT_EQ(CBigInteger::Compare(out, rem), 0);
    EXPECT_EQ(CBigInteger::Position(a), 2u);
    CBigInteger::ShiftLeft(a, 10);  // 1230000000000
    EXPECT_EQ(CBigInteger::Position(a), 12u);
    CBigInteger::BuildDWORDLONG(1230000000000ull, b);
    EXPECT_EQ(CBigInteger::Compare(a, b), 0);
    a.push_back(0);  // a high zero limb does not change the value
    EXPECT_EQ(CBigInteger::Compare(a, b), 0);
    CBigInteger::Clean(a);
    EXPECT_EQ(a.size(), 2u);
    CBigInteger::Multiply(a, 999999999u, out);
    CBigInteger::Divide(out, a, out, rem);
    CBigInteger::Build(999999999u, b);
    EXPECT_EQ(CBigInteger::Compare(out, b), 0);
    EXPECT_TRUE(rem.empty());
    CBigInteger::BuildDouble(-2.5e9, out);
    CBigInteger::BuildDWORDLONG(2500000000ull, b);
    EXPECT_EQ(CBigInteger::Compare(out, b), 0);
    CBigInteger::Pow10(18, out);
    CBigInteger::BuildDWORDLONG(1000000000000000000ull, b);
    EXPECT_EQ(CBigInteger::Compare(out, b), 0);
    EXPECT_KV_THROW(CBigInteger::Divide(b, Digits(), out, rem), CKvInvalidValueException,
                    "ERROR: Overflow in operator/.");
}

TEST(BigIntegerDigits, ArraySwapsAndMovesBetweenInlineAndHeapStorage) {
    using Digits = CBigInteger::CDigitArray;
    Digits small, large;
    CBigInteger::Build(std::string("123"), small);
    CBigInteger::Build(std::string(100, '9'), large);  // twelve limbs: on the heap
    const Digits smallCopy(small), largeCopy(large);
    small.swap(large);
    EXPECT_EQ(CBigInteger::Compare(small, largeCopy), 0);
    EXPECT_EQ(CBigInteger::Compare(large, smallCopy), 0);
    Digits moved(std::move(small));
    EXPECT_EQ(CBigInteger::Compare(moved, largeCopy), 0);
    moved = std::move(large);
    EXPECT_EQ(CBigInteger::Compare(moved, smallCopy), 0);
    moved = largeCopy;
    moved = *&moved;
    EXPECT_EQ(CBigInteger::Compare(moved, largeCopy), 0);
    moved.resize(2);
    moved.push_back(7);
    EXPECT_EQ(moved.size(), 3u);
    EXPECT_EQ(moved[2], 7u);
}
