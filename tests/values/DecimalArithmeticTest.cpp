// DecimalArithmeticTest.cpp - CDecimal: scale changes, comparisons and the four operations.
#include <string>

#include "kvxml/values/Decimal.h"
#include "support/KvTestSupport.h"

using KvXmlLib10::CBigInteger;
using KvXmlLib10::CDecimal;
using KvXmlLib10::CKvInvalidValueException;

namespace {

CDecimal D(const char* text) {
    return CDecimal(text);
}

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

TEST(DecimalScale, RationaliseKeepsOneFractionDigit) {
    CDecimal value(CBigInteger(3), CBigInteger(1200), 5);
    EXPECT_EQ(value.ToString(), "3.01200");
    value.Rationalise();
    EXPECT_EQ(value.ToString(), "3.012");
    CDecimal zero(CBigInteger(4), CBigInteger(0), 7);
    zero.Rationalise();
    zero.ChangeFractionalDivider(2);  // from scale 1, so the fraction is padded
    EXPECT_EQ(zero.ToString(), "4");
    CDecimal big(CBigInteger(0), CBigInteger("1000000000000000000000000000"), 28);  // 0.1
    big.Rationalise();
    EXPECT_EQ(big.ToString(), "0.1");
}

TEST(DecimalScale, NormalizeBringsBothToTheLargerScale) {
    CDecimal a("1.5"), b("-0.125");
    CDecimal::Normalize(a, b);
    EXPECT_EQ(a.ToString(), "1.500");
    EXPECT_EQ(b.ToString(), "-0.125");
}

TEST(DecimalCompare, EqualValuesWithDifferentScales) {
    CDecimal wide(CBigInteger(1), CBigInteger(50), 2);
    EXPECT_TRUE(wide == D("1.5"));
    EXPECT_FALSE(wide != D("1.5"));
    EXPECT_TRUE(wide <= D("1.5") && wide >= D("1.5"));
    EXPECT_TRUE(D("1.50") == D("1.5000000"));
    EXPECT_TRUE(D("-0") == D("0.000"));
    EXPECT_TRUE(D("1e2") == D("100.0"));
}

TEST(DecimalCompare, OrdersAcrossSignsAndScales) {
    const char* ordered[] = {"-100", "-1.5", "-1.25", "-1", "-0.5", "-0.05", "0",
                             "0.001", "0.1", "0.25", "1", "1.999", "2", "1000000000000000000000.1"};
    const int count = static_cast<int>(sizeof ordered / sizeof ordered[0]);
    for (int i = 0; i < count; ++i) {
        for (int j = 0; j < count; ++j) {
            CDecimal a(ordered[i]), b(ordered[j]);
            EXPECT_EQ(a == b, i == j) << ordered[i] << " " << ordered[j];
            EXPECT_EQ(a < b, i < j) << ordered[i] << " " << ordered[j];
            EXPECT_EQ(a > b, i > j) << ordered[i] << " " << ordered[j];
            EXPECT_EQ(a <= b, i <= j);
            EXPECT_EQ(a >= b, i >= j);
            EXPECT_EQ(a != b, i != j);
        }
    }
}

TEST(DecimalAdd, CarriesBetweenFractionAndIntegerPart) {
    EXPECT_TRUE(D("0.1") + D("0.2") == D("0.3"));
    EXPECT_EQ((D("1.25") + D("0.25")).ToString(), "1.50");  // sums keep the larger scale
    EXPECT_EQ((D("0.5") + D("0.5")).ToString(), "1");
    EXPECT_EQ((D("-0.5") + D("1")).ToString(), "0.5");
    EXPECT_EQ((D("0.5") + D("-1")).ToString(), "-0.5");
    EXPECT_EQ((D("1") - D("1.25")).ToString(), "-0.25");
    EXPECT_EQ((D("-1.75") - D("0.25")).ToString(), "-2");
    EXPECT_EQ((D("999999999.999999999") + D("0.000000001")).ToString(), "1000000000");
    EXPECT_EQ((D("-1000000000") + D("0.000000001")).ToString(), "-999999999.999999999");
    EXPECT_EQ((D("1.5") - D("1.5")).ToString(), "0");
    CDecimal total("0.75");
    total += D("0.5");
    total -= D("2");
    EXPECT_EQ(total.ToString(), "-0.75");
}

TEST(DecimalAdd, IncrementAndDecrementByOne) {
    CDecimal value("0.5");
    EXPECT_EQ((value++).ToString(), "0.5");
    EXPECT_EQ(value.ToString(), "1.5");
    EXPECT_EQ((--value).ToString(), "0.5");
    EXPECT_EQ((value--).ToString(), "0.5");
    EXPECT_EQ(value.ToString(), "-0.5");
    EXPECT_EQ((++value).ToString(), "0.5");
}

TEST(DecimalMultiply, IsExactAndRationalised) {
    EXPECT_EQ((D("1.5") * D("1.5")).ToString(), "2.25");
    EXPECT_EQ((D("-0.5") * D("0.2")).ToString(), "-0.1");
    EXPECT_EQ((D("-0.5") * D("-4")).ToString(), "2");
    EXPECT_EQ((D("0.000000000000000000001") * D("0.000000000000000000001")).ToString(),
              "0.000000000000000000000000000000000000000001");
    EXPECT_EQ((D("123456789.123456789") * D("0")).ToString(), "0");
    CDecimal value("2.5");
    value *= D("4");
    EXPECT_EQ(value.ToString(), "10");
}

TEST(DecimalDivide, KeepsThirtyDigitsRoundedTiesTowardZero) {
    EXPECT_EQ((D("1") / D("3")).ToString(), "0.333333333333333333333333333333");
    EXPECT_EQ((D("2") / D("3")).ToString(), "0.666666666666666666666666666667");
    EXPECT_EQ((D("-2") / D("3")).ToString(), "-0.666666666666666666666666666667");
    EXPECT_EQ((D("2") / D("-3")).ToString(), "-0.666666666666666666666666666667");
    EXPECT_EQ((D("1") / D("8")).ToString(), "0.125");
    EXPECT_EQ((D("10") / D("4")).ToString(), "2.5");
    EXPECT_EQ((D("0.75") / D("0.025")).ToString(), "30");
    EXPECT_EQ((D("1") / D("2000000000000000000000000000000")).ToString(), "0");  // exact half of 10^-30
    EXPECT_EQ((D("3") / D("2000000000000000000000000000000")).ToString(), "0.000000000000000000000000000001");
    EXPECT_EQ((D("-3") / D("2000000000000000000000000000000")).ToString(), "-0.000000000000000000000000000001");
    // Products keep every digit, so a divisor can be finer than 10^-30.
    EXPECT_EQ((D("1") / (D("1e-20") * D("1e-20"))).ToString(), "1" + std::string(40, '0'));
    CDecimal value("7");
    value /= D("-2");
    EXPECT_EQ(value.ToString(), "-3.5");
}

TEST(DecimalDivide, ByZeroFailsLikeTheIntegerDivision) {
    EXPECT_KV_THROW(D("1") / D("0.000"), CKvInvalidValueException, "ERROR: Overflow in operator/.");
    CDecimal value("1.5");
    EXPECT_KV_THROW(value /= D("0"), CKvInvalidValueException, "ERROR: Overflow in operator/.");
    EXPECT_EQ(value.ToString(), "1.5");
}

TEST(DecimalSign, NegateAndGetNegative) {
    CDecimal value("-0.25");
    EXPECT_TRUE(value.GetNegative());
    value.Negate();
    EXPECT_EQ(value.ToString(), "0.25");
    EXPECT_FALSE(value.GetNegative());
    CDecimal zero("-0.0");
    EXPECT_FALSE(zero.GetNegative());
    zero.Negate();
    EXPECT_EQ(zero.ToString(), "0");
}
