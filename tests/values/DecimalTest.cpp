// DecimalTest.cpp - CDecimal: the lexical form, printing with and without rounding, and construction.
#include <climits>
#include <limits>
#include <string>

#include "kvxml/values/Decimal.h"
#include "support/KvTestSupport.h"

using KvXmlLib10::CBigInteger;
using KvXmlLib10::CDecimal;
using KvXmlLib10::CKvInvalidValueException;

namespace {

std::string Printed(const char* text) {
    return CDecimal(text).ToString();
}

std::string BadChar(int position, const std::string& text) {
    return "The string representing a Decimal, contained an invalid char at position " + std::to_string(position) +
           " [" + text + "]";
}

}  // namespace

TEST(DecimalParse, ReadsLexicalFormsAndPrintsThemShortest) {
    const struct {
        const char* text;
        const char* printed;
    } cases[] = {
        {"1.50", "1.5"},     {"-0.25", "-0.25"},  {"1.5e2", "150"},     {" 12 ", "12"},     {"", "0"},
        {".", "0"},          {"0.000", "0"},      {"1.10", "1.1"},      {"-1.10", "-1.1"},  {"1e-2", "0.01"},
        {"1E3", "1000"},     {"+3.0", "3"},       {"0.05", "0.05"},     {"-.5", "-0.5"},    {"5.", "5"},
        {"-0", "0"},         {"-0.0", "0"},       {"-", "0"},           {"1 2 . 3 4", "12.34"},
        {"1-2", "-12"},      {"-+1", "1"},        {"1.5E+2", "150"},    {"1.5e", "1.5"},    {"1.5e-", "1.5"},
        {"12e0", "12"},      {"1.23e1", "12.3"},  {"123e-1", "12.3"},   {"0.001e3", "1"},   {"1e 2", "100"},
        {"1e2-", "0.01"},    {"-7e-3", "-0.007"}, {"00012.3400", "12.34"},
        {"\t1\n.\r5 ", "1.5"},
    };
    for (const auto& c : cases) EXPECT_EQ(Printed(c.text), c.printed) << "[" << c.text << "]";
    EXPECT_EQ(CDecimal(static_cast<const char*>(nullptr)).ToString(), "0");
}

TEST(DecimalParse, RejectsTheFirstInvalidCharacter) {
    const struct {
        const char* text;
        int position;
    } cases[] = {
        {"1,5", 1},  {"abc", 0},  {"1.2.3", 3}, {"1.-2", 2}, {"1e2.5", 3},     {"1e2e3", 3},
        {"1.5f", 3}, {"NaN", 0},  {"1\x01", 1}, {"--x", 2},  {"\xC3\xA9", 0},  {"12 3 .4 x", 8},
    };
    for (const auto& c : cases)
        EXPECT_KV_THROW(CDecimal(c.text), CKvInvalidValueException, BadChar(c.position, c.text));
    CDecimal value;
    EXPECT_KV_THROW(value.Parse("1.5 x"), CKvInvalidValueException, BadChar(4, "1.5 x"));
}

TEST(DecimalParse, StopsAtAnEmbeddedNul) {
    const char text[] = "12.5\0xyz";
    EXPECT_EQ(CDecimal(text).ToString(), "12.5");
}

TEST(DecimalParse, KeepsEveryDigitBeyondFiveHundredTwelve) {
    std::string digits;
    for (int i = 0; i < 1500; ++i) digits.push_back(static_cast<char>('1' + i % 9));
    EXPECT_EQ(Printed(digits.c_str()), digits);
    EXPECT_EQ(Printed(("-" + digits + ".25").c_str()), "-" + digits + ".25");
    // Digits split by white space still count, in order.
    EXPECT_EQ(Printed((digits + " " + digits).c_str()), digits + digits);
}

TEST(DecimalParse, KeepsThirtyFractionDigitsWithTiesTowardZero) {
    // Forty digits: the tenth dropped digits round up.
    EXPECT_EQ(Printed("0.1111111111111111111111111111116666666666"), "0.111111111111111111111111111112");
    // Exact half: stays; the cut is not rationalised again.
    EXPECT_EQ(Printed("0.1234567890123456789012345678905"), "0.123456789012345678901234567890");
    EXPECT_EQ(Printed("-0.1234567890123456789012345678905"), "-0.123456789012345678901234567890");
    EXPECT_EQ(Printed("0.12345678901234567890123456789051"), "0.123456789012345678901234567891");
    EXPECT_EQ(Printed("-0.12345678901234567890123456789051"), "-0.123456789012345678901234567891");
    // Rounding up to a whole unit carries into the integer part.
    EXPECT_EQ(Printed("0.9999999999999999999999999999999999999999"), "1");
    EXPECT_EQ(Printed("-41.9999999999999999999999999999999"), "-42");
    // A negative exponent is a division: the quotient is rounded, then rationalised.
    EXPECT_EQ(Printed("1234567890123456789012345678905e-31"), "0.12345678901234567890123456789");
}

TEST(DecimalParse, HugeExponentsAreBoundedNotHanging) {
    EXPECT_EQ(Printed("1e40"), "1" + std::string(40, '0'));
    EXPECT_EQ(Printed("1e100000").size(), 100001u);
    EXPECT_KV_THROW(CDecimal("1e100001"), CKvInvalidValueException, BadChar(7, "1e100001"));
    EXPECT_KV_THROW(CDecimal("2.5E99999999999999999999"), CKvInvalidValueException,
                    BadChar(9, "2.5E99999999999999999999"));
    // Far below the kept fraction digits, a value is zero, however far.
    EXPECT_EQ(Printed("5e-99999999999999999999"), "0");
    EXPECT_EQ(Printed("1e99999999999999999999-"), "0");
    // A negative exponent beyond the positive limit still moves the point exactly.
    EXPECT_EQ(Printed(("1" + std::string(100005, '0') + "e-100003").c_str()), "100");
    EXPECT_EQ(Printed(("-25" + std::string(200000, '0') + "e-200001").c_str()), "-2.5");
    EXPECT_EQ(Printed("123456e-35"), "0.000000000000000000000000000001");
    EXPECT_EQ(Printed("123456e-36"), "0");
    EXPECT_EQ(Printed("5e-31"), "0");
    EXPECT_EQ(Printed("6e-31"), "0.000000000000000000000000000001");
    EXPECT_EQ(Printed("1e-0"), "1");
    EXPECT_EQ(Printed("0e100000"), "0");
}

TEST(DecimalPrint, RoundsHalfAwayFromZeroAtTheGivenDigits) {
    const struct {
        const char* value;
        int digits;
        const char* printed;
    } cases[] = {
        {"1.005", 2, "1.01"},  {"2", 2, "2.00"},         {"-0.05", 1, "-0.1"},   {"0.04", 1, "0.0"},
        {"1.25", 1, "1.3"},    {"-1.25", 1, "-1.3"},     {"1.24", 1, "1.2"},     {"9.995", 2, "10.00"},
        {"0", 3, "0.000"},     {"1.5", 0, "2."},         {"123.456", 5, "123.45600"},
        {"-0.004", 2, "-0.00"}, {"-999.9999", 3, "-1000.000"}, {"0.125", -1, "0."},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CDecimal(c.value).ToString(c.digits), c.printed) << c.value << " at " << c.digits;
}

TEST(DecimalPrint, FractionIsZeroPaddedToItsScale) {
    EXPECT_EQ(CDecimal(CBigInteger(1), CBigInteger(50), 2).ToString(), "1.50");
    EXPECT_EQ(CDecimal(CBigInteger(0), CBigInteger(-25), 2).ToString(), "-0.25");
    EXPECT_EQ(CDecimal(CBigInteger(0), CBigInteger(5), 2).ToString(), "0.05");
    EXPECT_EQ(CDecimal(CBigInteger(-3), CBigInteger(-7), 9).ToString(), "-3.000000007");
    EXPECT_EQ(CDecimal(CBigInteger(7), CBigInteger(0), 4).ToString(), "7");
}

TEST(DecimalConstruct, FromIntDoubleAndBigInteger) {
    EXPECT_EQ(CDecimal(INT_MIN).ToString(), "-2147483648");
    EXPECT_EQ(CDecimal(0.1).ToString(), "0.1");
    EXPECT_EQ(CDecimal(-2.25).ToString(), "-2.25");
    EXPECT_EQ(CDecimal(1e20).ToString(), "100000000000000000000");
    EXPECT_EQ(CDecimal(1.0 / 3).ToString(), "0.3333333333333");
    EXPECT_EQ(CDecimal(2.0 / 3).ToString(), "0.6666666666667");
    EXPECT_EQ(CDecimal(1e-14).ToString(), "0");
    EXPECT_KV_THROW(CDecimal(std::numeric_limits<double>::quiet_NaN()), CKvInvalidValueException,
                    BadChar(0, "nan\n"));
    EXPECT_KV_THROW(CDecimal(std::numeric_limits<double>::infinity()), CKvInvalidValueException,
                    BadChar(0, "inf\n"));
    EXPECT_EQ(CDecimal(CBigInteger("-123456789012345678901234567890")).ToString(),
              "-123456789012345678901234567890");
}

TEST(DecimalConstruct, InconsistentPartsKeepTheirValue) {
    // 1 + (-5)/10 and a fraction wider than its scale are stored normalised.
    EXPECT_EQ(CDecimal(CBigInteger(1), CBigInteger(-5), 1).ToString(), "0.5");
    EXPECT_EQ(CDecimal(CBigInteger(-1), CBigInteger(5), 1).ToString(), "-0.5");
    EXPECT_EQ(CDecimal(CBigInteger(1), CBigInteger(250), 2).ToString(), "3.50");
    EXPECT_EQ(CDecimal(CBigInteger(1), CBigInteger(25), 0).ToString(), "26");
    EXPECT_EQ(CDecimal(CBigInteger(1), CBigInteger(25), -2).ToString(), "2501");
}

TEST(DecimalConvert, RangeChecksNameTheTargetType) {
    using KvXmlLib10::CKvOverFlowException;
    EXPECT_EQ(CDecimal("1.5").ToDouble(), 1.5);
    EXPECT_EQ(CDecimal("-0.25").ToDouble(), -0.25);
    EXPECT_EQ(CDecimal("1e308").ToDouble(), 1e308);
    EXPECT_EQ(CDecimal("1e-330").ToDouble(), 0.0);
    EXPECT_KV_THROW(CDecimal("1e309").ToDouble(), CKvOverFlowException,
                    "The Decimal value if to large to fit into a Double");
    EXPECT_KV_THROW(CDecimal("-1e309").ToDouble(), CKvOverFlowException,
                    "The Decimal value if to large to fit into a Double");
    EXPECT_EQ(CDecimal("2147483647.9").ToLong(), INT32_MAX);
    EXPECT_EQ(CDecimal("-2147483648.9").ToLong(), INT32_MIN);
    EXPECT_KV_THROW(CDecimal("2147483648").ToLong(), CKvOverFlowException,
                    "The Decimal value if to large to fit into a LONG");
    EXPECT_KV_THROW(CDecimal("-2147483649").ToLong(), CKvOverFlowException,
                    "The Decimal value if to large to fit into a LONG");
    EXPECT_EQ(CDecimal("9223372036854775807.5").ToLongLong(), INT64_MAX);
    EXPECT_EQ(CDecimal("-9223372036854775808.5").ToLongLong(), INT64_MIN);
    EXPECT_KV_THROW(CDecimal("9223372036854775808").ToLongLong(), CKvOverFlowException,
                    "The Decimal value if to large to fit into a LONGLONG");
    EXPECT_KV_THROW(CDecimal("-9223372036854775809").ToLongLong(), CKvOverFlowException,
                    "The Decimal value if to large to fit into a LONGLONG");
    EXPECT_EQ(CDecimal("-12.9").ToBigInteger().ToString(), "-12");
    EXPECT_EQ(CDecimal("-0.9").ToLong(), 0);
}
