// BigIntegerTest.cpp - CBigInteger: text forms, signs, the arithmetic operators and the digit helpers.
#include <climits>

#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

std::string Str(const CBigInteger& value) { return value.ToString(); }

// Deterministic digit strings of a given length (no leading zero).
std::string Digits(size_t length, uint32_t& seed) {
    std::string text;
    for (size_t i = 0; i < length; ++i) {
        seed = seed * 1103515245u + 12345u;
        const char digit = static_cast<char>('0' + (seed >> 16) % 10);
        text.push_back(i == 0 && digit == '0' ? '7' : digit);
    }
    return text;
}

}  // namespace

TEST(BigIntegerParse, StripsSignsAndSpacesAndTakesTheIntegerPart) {
    const std::pair<const char*, const char*> cases[] = {
        {"-000123", "-123"}, {"0", "0"},       {"-0", "0"},        {"+0", "0"},      {"000", "0"},
        {" 42 ", "42"},      {"+7", "7"},      {"\t-\n9\r", "-9"}, {"", "0"},        {"-", "0"},
        {"   ", "0"},        {"1 2", "12"},    {"1-2", "-12"},     {"--5", "-5"},    {"-+5", "5"},
        {"12.9", "12"},      {"-12.9", "-12"}, {"-0.9", "0"},      {"1.5e2", "150"}, {"1E3", "1000"},
        {"1e-5", "0"},       {"-25e-1", "-2"},
    };
    for (const auto& [text, printed] : cases) EXPECT_EQ(Str(CBigInteger(text)), printed) << text;
    EXPECT_EQ(Str(CBigInteger(static_cast<const char*>(nullptr))), "0");
    // Bad text fails with the decimal parser's message.
    EXPECT_KV_THROW(CBigInteger("12abc"), CKvInvalidValueException,
                    "The string representing a Decimal, contained an invalid char at position 2 [12abc]");
    EXPECT_KV_THROW(CBigInteger("\xff"), CKvInvalidValueException,
                    "The string representing a Decimal, contained an invalid char at position 0 [\xff]");
    uint32_t seed = 1;
    // Lengths around the nine-digit limb boundaries, and one long run.
    for (size_t length : {1, 8, 9, 10, 17, 18, 19, 26, 27, 28, 36, 37, 1000, 100000}) {
        const std::string text = "-" + Digits(length, seed);
        EXPECT_EQ(Str(CBigInteger(text.c_str() + 1)), text.substr(1)) << length;
        EXPECT_EQ(Str(CBigInteger(text.c_str())), text) << length;
    }
}

TEST(BigIntegerConstruct, FromIntDoubleDecimalAndConstantsAndBackToIntWithinThirtyTwoBits) {
    const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
    const std::pair<CBigInteger, std::string> cases[] = {
        {INT_MIN, "-2147483648"}, {INT_MAX, "2147483647"}, {CBigInteger(2147483648.0), "2147483648"},
        {CBigInteger(-1.9), "-1"}, {CBigInteger(0.5), "0"}, {CBigInteger(1e20), "100000000000000000000"},
        {CBigInteger(9007199254740993.0), "9007199254740992"}, {CBigInteger(KvXmlLib10::CDecimal("-7.99")), "-7"},
        {CBigInteger(nan), "0"}, {CBigInteger(-inf), "0"}, {CBigInteger::MAX_LONG, "2147483647"},
        {CBigInteger::MIN_LONG, "-2147483648"}, {CBigInteger::MAX_LONGLONG, "9223372036854775807"},
        {CBigInteger::MIN_LONGLONG, "-9223372036854775808"}, {CBigInteger::MAX_DOUBLE, "17" + std::string(307, '0')},
        {CBigInteger::MIN_DOUBLE, "-17" + std::string(307, '0')}, {CBigInteger::Pow10(0), "1"},
        {CBigInteger::Pow10(9), "1000000000"}, {CBigInteger::Pow10(40), "1" + std::string(40, '0')},
    };
    for (const auto& [value, printed] : cases) EXPECT_EQ(Str(value), printed);
    EXPECT_EQ(Str(CBigInteger(std::numeric_limits<double>::max())).size(), 309u);
    EXPECT_EQ(static_cast<int>(CBigInteger("2147483647")), INT_MAX);
    EXPECT_EQ(static_cast<int>(CBigInteger("-2147483648")), INT_MIN);
    for (const char* big : {"2147483648", "-2147483649", "100000000000000000000000000000"})
        EXPECT_KV_THROW(static_cast<int>(CBigInteger(big)), CKvInvalidValueException,
                        "ERROR: Value out of bound of int.");
}

TEST(BigIntegerSigns, AbsNegateAndZeroIsNeverNegative) {
    CBigInteger value("-12345678901234567890");
    EXPECT_TRUE(value.GetNegative());
    EXPECT_EQ(Str(value.GetAbs()), "12345678901234567890");
    EXPECT_EQ(-value, value.GetAbs());
    value.Abs();
    value.Negate();
    EXPECT_EQ(Str(value), "-12345678901234567890");
    for (const CBigInteger& zero : {-CBigInteger(0), CBigInteger(5) - CBigInteger(5), CBigInteger(-5) * CBigInteger(0),
                                    CBigInteger(-1) / CBigInteger(7), CBigInteger(-14) % CBigInteger(7)}) {
        EXPECT_EQ(Str(zero), "0");
        EXPECT_FALSE(zero.GetNegative());
    }
}

TEST(BigIntegerCompare, OrdersBySignThenMagnitude) {
    const std::vector<CBigInteger> ordered = {"-1000000000000", "-1000000000", "-999999999", "-1", "0", "1",
                                              "999999999", "1000000000", "1000000001", "100000000000000000000"};
    for (size_t i = 0; i < ordered.size(); ++i) {
        for (size_t j = 0; j < ordered.size(); ++j) {
            const CBigInteger &a = ordered[i], &b = ordered[j];
            EXPECT_EQ((std::vector<bool>{a == b, a != b, a < b, a <= b, a > b, a >= b}),
                      (std::vector<bool>{i == j, i != j, i < j, i <= j, i > j, i >= j})) << Str(a) << " " << Str(b);
        }
    }
}

// Each case runs the operator and its compound-assignment form.
TEST(BigIntegerArithmetic, CarriesAcrossLimbsAndTruncatesTowardZero) {
    const struct { const char *a, op, *b, *result; } cases[] = {
        {"99999999999999999999", '+', "1", "100000000000000000000"}, {"999999999", '+', "1", "1000000000"},
        {"1000000000000000000000000000", '-', "1", "999999999999999999999999999"},
        {"-1000000000000000000", '+', "1", "-999999999999999999"}, {"-5", '+', "3", "-2"}, {"5", '+', "-7", "-2"},
        {"-5", '-', "-7", "2"}, {"-5", '-', "7", "-12"}, {"-3", '*', "-4", "12"}, {"-3", '*', "4", "-12"},
        {"999999999999999999", '*', "999999999999999999", "999999999999999998000000000000000001"},
        {"7", '/', "-2", "-3"}, {"-7", '%', "2", "-1"}, {"5", '%', "7", "5"},
    };
    for (const auto& c : cases) {
        const CBigInteger a(c.a), b(c.b);
        CBigInteger result, compound(a);
        switch (c.op) {
            case '+': result = a + b, compound += b; break;
            case '-': result = a - b, compound -= b; break;
            case '*': result = a * b, compound *= b; break;
            case '/': result = a / b, compound /= b; break;
            default: result = a % b, compound %= b; break;
        }
        EXPECT_EQ(Str(result), c.result) << c.a << ' ' << c.op << ' ' << c.b;
        EXPECT_EQ(Str(compound), c.result) << c.a << ' ' << c.op << "= " << c.b;
    }
}

// With |r| < |b| and r taking a's sign, the identity pins truncating division.
TEST(BigIntegerDivide, LongDivisionSatisfiesTheDivisionIdentityAndDivisionByZeroNamesTheOperator) {
    uint32_t seed = 42;
    const size_t lengths[] = {1, 9, 10, 18, 19, 27, 28, 45, 60, 200};
    for (size_t la : lengths) {
        for (size_t lb : lengths) {
            if (lb > la) continue;
            CBigInteger a(Digits(la, seed).c_str()), b(Digits(lb, seed).c_str());
            if (seed & 1) a.Negate();
            if (seed & 2) b.Negate();
            const CBigInteger q = a / b, r = a % b;
            EXPECT_EQ(q * b + r, a) << Str(a) << " / " << Str(b);
            EXPECT_LT(r.GetAbs(), b.GetAbs());
            EXPECT_TRUE(r == CBigInteger(0) || r.GetNegative() == a.GetNegative());
            EXPECT_EQ((a * b) / b, a);
        }
    }
    // Divisors with a small or a maximal top limb, where the quotient
    // estimate is most often off by one.
    const CBigInteger nines("999999999999999999999999999999999999999999999");
    for (const char* d : {"1000000000", "1000000001", "1999999999", "999999999999999999", "500000000000000000",
                          "100000000000000000000000000000"}) {
        const CBigInteger b(d), a = nines * b + (b - CBigInteger(1));
        EXPECT_EQ(a / b, nines) << d;
        EXPECT_EQ(a % b, b - CBigInteger(1)) << d;
    }
    CBigInteger a(10), zero;
    EXPECT_KV_THROW(a / zero, CKvInvalidValueException, "ERROR: Overflow in operator/.");
    EXPECT_KV_THROW(a /= zero, CKvInvalidValueException, "ERROR: Overflow in operator /=.");
    EXPECT_KV_THROW(a % zero, CKvInvalidValueException, "ERROR: Overflow in operator%.");
    EXPECT_KV_THROW(a %= zero, CKvInvalidValueException, "ERROR: Overflow in operator%=.");
    EXPECT_EQ(Str(a), "10");
}

TEST(BigIntegerSquareRoot, RoundsDown) {
    const std::pair<const char*, const char*> cases[] = {
        {"0", "0"}, {"1", "1"}, {"3", "1"}, {"4", "2"}, {"15", "3"}, {"16", "4"}, {"17", "4"},
        {"999999999999999999", "999999999"}, {"10000000000000000000000000000000000000000", "100000000000000000000"},
        {"10000000000000000000200000000000000000000", "100000000000000000000"},
    };
    for (const auto& [value, root] : cases) EXPECT_EQ(Str(CBigInteger(value).SquareRoot()), root) << value;
    EXPECT_KV_THROW(CBigInteger(-4).SquareRoot(), CKvInvalidValueException,
                    "ERROR: Negative Number in function SquareRoot().");
}

// The limb helpers behind the operators, where they promise more than the operators show.
TEST(BigIntegerDigits, MagnitudeHelpers) {
    using Digits = CBigInteger::CDigitArray;
    Digits a, b, out, rem, expected;
    CBigInteger::Build(std::string("abc123"), a);  // the trailing run of digits only
    CBigInteger::Build(std::string("12a34"), b);
    EXPECT_EQ(CBigInteger::Compare(a, b), 1);
    CBigInteger::Subtract(b, a, out);  // larger minus smaller, either order
    CBigInteger::Build(89u, expected);
    EXPECT_EQ(CBigInteger::Compare(out, expected), 0);
    CBigInteger::ShiftLeft(a, 10);
    EXPECT_EQ(CBigInteger::Position(a), 12u);
    a.push_back(0);  // a high zero limb does not change the value
    CBigInteger::BuildDWORDLONG(1230000000000ull, expected);
    EXPECT_EQ(CBigInteger::Compare(a, expected), 0);
    CBigInteger::Clean(a);
    EXPECT_EQ(a.size(), 2u);
    CBigInteger::Multiply(a, 999999999u, out);
    CBigInteger::Divide(out, a, out, rem);  // results may alias the inputs
    CBigInteger::Build(999999999u, expected);
    EXPECT_EQ(CBigInteger::Compare(out, expected), 0);
    EXPECT_TRUE(rem.empty());
    CBigInteger::BuildDouble(-2.5e9, out);  // the magnitude only
    CBigInteger::BuildDWORDLONG(2500000000ull, expected);
    EXPECT_EQ(CBigInteger::Compare(out, expected), 0);
    EXPECT_KV_THROW(CBigInteger::Divide(b, Digits(), out, rem), CKvInvalidValueException,
                    "ERROR: Overflow in operator/.");
    CBigInteger big(std::string(100, '9').c_str());  // twelve limbs: on the heap
    big = *&big;
    EXPECT_EQ(Str(big), std::string(100, '9'));
}
