// DecimalTest.cpp - CDecimal: the lexical form, printing, construction, scale changes, comparisons and arithmetic.
#include <climits>

#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

CDecimal D(const char* text) { return CDecimal(text); }

std::string Printed(const std::string& text) { return CDecimal(text.c_str()).ToString(); }

std::string BadChar(int position, const std::string& text) {
    return "The string representing a Decimal, contained an invalid char at position " + std::to_string(position) +
           " [" + text + "]";
}

}  // namespace

TEST(DecimalParse, ReadsLexicalFormsPrintsThemShortestAndKeepsEveryDigit) {
    const std::pair<const char*, const char*> cases[] = {
        {"1.50", "1.5"},     {"-0.25", "-0.25"},  {"1.5e2", "150"},     {" 12 ", "12"},     {"", "0"},
        {".", "0"},          {"0.000", "0"},      {"1.10", "1.1"},      {"-1.10", "-1.1"},  {"1e-2", "0.01"},
        {"1E3", "1000"},     {"+3.0", "3"},       {"0.05", "0.05"},     {"-.5", "-0.5"},    {"5.", "5"},
        {"-0", "0"},         {"-0.0", "0"},       {"-", "0"},           {"1 2 . 3 4", "12.34"},
        {"1-2", "-12"},      {"-+1", "1"},        {"1.5E+2", "150"},    {"1.5e", "1.5"},    {"1.5e-", "1.5"},
        {"12e0", "12"},      {"1.23e1", "12.3"},  {"123e-1", "12.3"},   {"0.001e3", "1"},   {"1e 2", "100"},
        {"1e2-", "0.01"},    {"-7e-3", "-0.007"}, {"00012.3400", "12.34"}, {"\t1\n.\r5 ", "1.5"},
    };
    for (const auto& [text, printed] : cases) EXPECT_EQ(Printed(text), printed) << "[" << text << "]";
    EXPECT_EQ(CDecimal(static_cast<const char*>(nullptr)).ToString(), "0");
    EXPECT_EQ(CDecimal("12.5\0xyz").ToString(), "12.5");  // an embedded NUL ends the text
    std::string digits;
    for (int i = 0; i < 1500; ++i) digits.push_back(static_cast<char>('1' + i % 9));
    EXPECT_EQ(Printed(digits), digits);
    EXPECT_EQ(Printed("-" + digits + ".25"), "-" + digits + ".25");
    // Digits split by white space still count, in order.
    EXPECT_EQ(Printed(digits + " " + digits), digits + digits);
}

TEST(DecimalParse, RejectsTheFirstInvalidCharacter) {
    EXPECT_KV_THROW(CDecimal("1,5"), CKvInvalidValueException,
                    "The string representing a Decimal, contained an invalid char at position 1 [1,5]");
    const std::pair<const char*, int> cases[] = {
        {"abc", 0},  {"1.2.3", 3}, {"1.-2", 2}, {"1e2.5", 3},    {"1e2e3", 3},       {"1.5f", 3},
        {"NaN", 0},  {"1\x01", 1}, {"--x", 2},  {"\xC3\xA9", 0}, {"12 3 .4 x", 8},
        // A positive exponent above 100000 fails at the digit that passes it.
        {"1e100001", 7}, {"2.5E99999999999999999999", 9},
    };
    for (const auto& [text, position] : cases)
        EXPECT_KV_THROW(CDecimal{text}, CKvInvalidValueException, BadChar(position, text));
    CDecimal value;
    EXPECT_KV_THROW(value.Parse("1.5 x"), CKvInvalidValueException, BadChar(4, "1.5 x"));
}

TEST(DecimalParse, KeepsThirtyFractionDigitsWithTiesTowardZero) {
    const std::pair<std::string, std::string> cases[] = {
        // Forty digits: the tenth dropped digits round up.
        {"0.1111111111111111111111111111116666666666", "0.111111111111111111111111111112"},
        // Exact half: stays; the cut is not rationalised again.
        {"0.1234567890123456789012345678905", "0.123456789012345678901234567890"},
        {"-0.1234567890123456789012345678905", "-0.123456789012345678901234567890"},
        {"0.12345678901234567890123456789051", "0.123456789012345678901234567891"},
        {"-0.12345678901234567890123456789051", "-0.123456789012345678901234567891"},
        // Rounding up to a whole unit carries into the integer part.
        {"0.9999999999999999999999999999999999999999", "1"}, {"-41.9999999999999999999999999999999", "-42"},
        // A negative exponent is a division: the quotient is rounded, then rationalised.
        {"1234567890123456789012345678905e-31", "0.12345678901234567890123456789"},
        // Exponents far out are bounded, not hanging; a negative one still moves the point exactly.
        {"1e40", "1" + std::string(40, '0')}, {"5e-99999999999999999999", "0"}, {"1e99999999999999999999-", "0"},
        {"1" + std::string(100005, '0') + "e-100003", "100"}, {"-25" + std::string(200000, '0') + "e-200001", "-2.5"},
        {"123456e-35", "0.000000000000000000000000000001"}, {"123456e-36", "0"}, {"5e-31", "0"},
        {"6e-31", "0.000000000000000000000000000001"}, {"1e-0", "1"}, {"0e100000", "0"},
    };
    for (const auto& [text, printed] : cases) EXPECT_EQ(Printed(text), printed) << text.substr(0, 40);
    EXPECT_EQ(Printed("1e100000").size(), 100001u);
}

TEST(DecimalPrint, RoundsHalfAwayFromZeroAtTheGivenDigits) {
    const struct { const char* value; int digits; const char* printed; } cases[] = {
        {"1.005", 2, "1.01"},  {"2", 2, "2.00"},         {"-0.05", 1, "-0.1"},   {"0.04", 1, "0.0"},
        {"1.25", 1, "1.3"},    {"-1.25", 1, "-1.3"},     {"1.24", 1, "1.2"},     {"9.995", 2, "10.00"},
        {"0", 3, "0.000"},     {"1.5", 0, "2."},         {"123.456", 5, "123.45600"},
        {"-0.004", 2, "-0.00"}, {"-999.9999", 3, "-1000.000"}, {"0.125", -1, "0."},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CDecimal(c.value).ToString(c.digits), c.printed) << c.value << " at " << c.digits;
}

TEST(DecimalConstruct, FromPartsPadsTheFractionAndNormalisesInconsistentParts) {
    const struct { int integer, fraction, scale; const char* printed; } cases[] = {
        {1, 50, 2, "1.50"}, {0, -25, 2, "-0.25"}, {0, 5, 2, "0.05"}, {-3, -7, 9, "-3.000000007"}, {7, 0, 4, "7"},
        // 1 + (-5)/10 and a fraction wider than its scale keep their value.
        {1, -5, 1, "0.5"}, {-1, 5, 1, "-0.5"}, {1, 250, 2, "3.50"}, {1, 25, 0, "26"}, {1, 25, -2, "2501"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CDecimal(CBigInteger(c.integer), CBigInteger(c.fraction), c.scale).ToString(), c.printed);
}

TEST(DecimalConstruct, FromIntDoubleAndBigInteger) {
    const std::pair<CDecimal, const char*> cases[] = {
        {INT_MIN, "-2147483648"}, {0.1, "0.1"}, {-2.25, "-2.25"}, {1e20, "100000000000000000000"},
        {1.0 / 3, "0.3333333333333"}, {2.0 / 3, "0.6666666666667"}, {1e-14, "0"},
        {CBigInteger("-123456789012345678901234567890"), "-123456789012345678901234567890"},
    };
    for (const auto& [value, printed] : cases) EXPECT_EQ(value.ToString(), printed);
    EXPECT_KV_THROW(CDecimal(std::numeric_limits<double>::quiet_NaN()), CKvInvalidValueException, BadChar(0, "nan\n"));
    EXPECT_KV_THROW(CDecimal(std::numeric_limits<double>::infinity()), CKvInvalidValueException, BadChar(0, "inf\n"));
}

TEST(DecimalConvert, RangeChecksNameTheTargetType) {
    EXPECT_EQ(CDecimal("-0.25").ToDouble(), -0.25);
    EXPECT_EQ(CDecimal("1e308").ToDouble(), 1e308);
    EXPECT_EQ(CDecimal("1e-330").ToDouble(), 0.0);
    EXPECT_EQ(CDecimal("2147483647.9").ToLong(), INT32_MAX);
    EXPECT_EQ(CDecimal("-2147483648.9").ToLong(), INT32_MIN);
    EXPECT_EQ(CDecimal("-0.9").ToLong(), 0);
    EXPECT_EQ(CDecimal("9223372036854775807.5").ToLongLong(), INT64_MAX);
    EXPECT_EQ(CDecimal("-9223372036854775808.5").ToLongLong(), INT64_MIN);
    EXPECT_EQ(CDecimal("-12.9").ToBigInteger().ToString(), "-12");
    for (const char* big : {"1e309", "-1e309"})
        EXPECT_KV_THROW(CDecimal(big).ToDouble(), CKvOverFlowException,
                        "The Decimal value if to large to fit into a Double");
    for (const char* big : {"2147483648", "-2147483649"})
        EXPECT_KV_THROW(CDecimal(big).ToLong(), CKvOverFlowException,
                        "The Decimal value if to large to fit into a LONG");
    for (const char* big : {"9223372036854775808", "-9223372036854775809"})
        EXPECT_KV_THROW(CDecimal(big).ToLongLong(), CKvOverFlowException,
                        "The Decimal value if to large to fit into a LONGLONG");
}

TEST(DecimalScale, ChangeFractionalDividerRoundsTiesTowardZero) {
    const struct { const char* value; int scale; const char* printed; } cases[] = {
        {"0.125", 2, "0.12"},  {"0.126", 2, "0.13"},   {"-0.125", 2, "-0.12"}, {"-0.126", 2, "-0.13"},
        {"0.995", 2, "0.99"},  {"0.996", 2, "1"},      {"-0.996", 2, "-1"},    {"1.5", 3, "1.500"},
        {"2.45", 1, "2.4"},    {"2.451", 1, "2.5"},    {"9.96", 1, "10"},      {"0.5", 0, "0.5"},
        {"1.99999999999999999999", 1, "2"},            {"7", 5, "7"},
    };
    for (const auto& c : cases) {
        CDecimal value(c.value);
        value.ChangeFractionalDivider(c.scale);
        EXPECT_EQ(value.ToString(), c.printed) << c.value << " to " << c.scale;
    }
}

TEST(DecimalScale, RationaliseKeepsOneFractionDigitAndNormalizeTakesTheLargerScale) {
    CDecimal value(CBigInteger(3), CBigInteger(1200), 5);
    value.Rationalise();
    EXPECT_EQ(value.ToString(), "3.012");
    CDecimal zero(CBigInteger(4), CBigInteger(0), 7);
    zero.Rationalise();
    zero.ChangeFractionalDivider(2);  // from scale 1, so the fraction is padded
    EXPECT_EQ(zero.ToString(), "4");
    CDecimal big(CBigInteger(0), CBigInteger("1000000000000000000000000000"), 28);  // 0.1
    big.Rationalise();
    EXPECT_EQ(big.ToString(), "0.1");

    CDecimal a("1.5"), b("-0.125");
    CDecimal::Normalize(a, b);
    EXPECT_EQ(a.ToString(), "1.500");
    EXPECT_EQ(b.ToString(), "-0.125");
}

TEST(DecimalCompare, OrdersAcrossSignsAndScales) {
    EXPECT_TRUE(CDecimal(CBigInteger(1), CBigInteger(50), 2) == D("1.5"));
    EXPECT_TRUE(D("1.50") == D("1.5000000"));
    EXPECT_TRUE(D("-0") == D("0.000"));
    EXPECT_TRUE(D("1e2") == D("100.0"));
    const char* ordered[] = {"-100", "-1.5", "-1.25", "-1", "-0.5", "-0.05", "0",
                             "0.001", "0.1", "0.25", "1", "1.999", "2", "1000000000000000000000.1"};
    for (size_t i = 0; i < std::size(ordered); ++i) {
        for (size_t j = 0; j < std::size(ordered); ++j) {
            const CDecimal a(ordered[i]), b(ordered[j]);
            EXPECT_EQ((std::vector<bool>{a == b, a != b, a < b, a <= b, a > b, a >= b}),
                      (std::vector<bool>{i == j, i != j, i < j, i <= j, i > j, i >= j}))
                << ordered[i] << " " << ordered[j];
        }
    }
}

// Each case runs the operator and its compound-assignment form.
TEST(DecimalArithmetic, ExactSumsAndProductsThirtyDigitQuotientsAndDivisionByZeroRefused) {
    const struct { const char* a; char op; const char* b; std::string result; } cases[] = {
        {"0.1", '+', "0.2", "0.3"},
        {"1.25", '+', "0.25", "1.50"},  // sums keep the larger scale
        {"0.5", '+', "0.5", "1"},       {"-0.5", '+', "1", "0.5"},     {"0.5", '+', "-1", "-0.5"},
        {"1", '-', "1.25", "-0.25"},    {"-1.75", '-', "0.25", "-2"},  {"1.5", '-', "1.5", "0"},
        {"999999999.999999999", '+', "0.000000001", "1000000000"},
        {"-1000000000", '+', "0.000000001", "-999999999.999999999"},
        // Products are exact and rationalised.
        {"1.5", '*', "1.5", "2.25"},    {"-0.5", '*', "0.2", "-0.1"},  {"-0.5", '*', "-4", "2"},
        {"0.000000000000000000001", '*', "0.000000000000000000001", "0.000000000000000000000000000000000000000001"},
        {"123456789.123456789", '*', "0", "0"},
        // Quotients keep thirty fraction digits, ties toward zero.
        {"1", '/', "3", "0.333333333333333333333333333333"}, {"2", '/', "3", "0.666666666666666666666666666667"},
        {"-2", '/', "3", "-0.666666666666666666666666666667"}, {"2", '/', "-3", "-0.666666666666666666666666666667"},
        {"1", '/', "8", "0.125"},       {"10", '/', "4", "2.5"},       {"0.75", '/', "0.025", "30"},
        {"7", '/', "-2", "-3.5"},
        {"1", '/', "2000000000000000000000000000000", "0"},  // exact half of 10^-30
        {"3", '/', "2000000000000000000000000000000", "0.000000000000000000000000000001"},
        {"-3", '/', "2000000000000000000000000000000", "-0.000000000000000000000000000001"},
    };
    for (const auto& c : cases) {
        const CDecimal a(c.a), b(c.b);
        CDecimal result, compound(a);
        switch (c.op) {
            case '+': result = a + b, compound += b; break;
            case '-': result = a - b, compound -= b; break;
            case '*': result = a * b, compound *= b; break;
            default: result = a / b, compound /= b; break;
        }
        EXPECT_EQ(result.ToString(), c.result) << c.a << ' ' << c.op << ' ' << c.b;
        EXPECT_EQ(compound.ToString(), c.result) << c.a << ' ' << c.op << "= " << c.b;
    }
    // Products keep every digit, so a divisor can be finer than 10^-30.
    EXPECT_EQ((D("1") / (D("1e-20") * D("1e-20"))).ToString(), "1" + std::string(40, '0'));
    EXPECT_KV_THROW(D("1") / D("0.000"), CKvInvalidValueException, "ERROR: Overflow in operator/.");
    CDecimal value("1.5");
    EXPECT_KV_THROW(value /= D("0"), CKvInvalidValueException, "ERROR: Overflow in operator/.");
    EXPECT_EQ(value.ToString(), "1.5");
}

TEST(DecimalSign, NegateIncrementAndDecrement) {
    CDecimal value("-0.25");
    EXPECT_TRUE(value.GetNegative());
    value.Negate();
    EXPECT_EQ(value.ToString(), "0.25");
    EXPECT_FALSE(value.GetNegative());
    CDecimal zero("-0.0");
    EXPECT_FALSE(zero.GetNegative());
    zero.Negate();
    EXPECT_EQ(zero.ToString(), "0");
    EXPECT_FALSE(zero.GetNegative());
    value = CDecimal("0.5");
    EXPECT_EQ((value++).ToString(), "0.5");
    EXPECT_EQ(value.ToString(), "1.5");
    EXPECT_EQ((--value).ToString(), "0.5");
    EXPECT_EQ((value--).ToString(), "0.5");
    EXPECT_EQ(value.ToString(), "-0.5");
    EXPECT_EQ((++value).ToString(), "0.5");
}
