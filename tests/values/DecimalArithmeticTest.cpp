// DecimalArithmeticTest.cpp - CDecimal: scale changes, comparisons and the four operations.
#include <iterator>
#include <string>
#include <vector>

#include "kvxml/values/Decimal.h"
#include "support/KvTestSupport.h"

using KvXmlLib10::CBigInteger;
using KvXmlLib10::CDecimal;
using KvXmlLib10::CKvInvalidValueException;

namespace {

CDecimal D(const char* text) { return CDecimal(text); }

}  // namespace

TEST(DecimalScale, ChangeFractionalDividerRoundsTiesTowardZero) {
    const struct {
        const char* value;
        int scale;
        const char* printed;
    } cases[] = {
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
TEST(DecimalArithmetic, ExactSumsAndProductsAndThirtyDigitQuotients) {
    const struct {
        const char* a;
        char op;
        const char* b;
        std::string result;
    } cases[] = {
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
        {"1", '/', "3", "0.333333333333333333333333333333"},
        {"2", '/', "3", "0.666666666666666666666666666667"},
        {"-2", '/', "3", "-0.666666666666666666666666666667"},
        {"2", '/', "-3", "-0.666666666666666666666666666667"},
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
}

TEST(DecimalArithmetic, DivisionByZeroFailsAndKeepsTheValue) {
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
