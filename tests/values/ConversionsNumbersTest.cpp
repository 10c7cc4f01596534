// ConversionsNumbersTest.cpp - CConversions integers, floating forms, decimal, integer and locale independence.
#include <gtest/gtest.h>

#include <clocale>
#include <locale.h>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Conversions.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using Rule = CWhitespaceUtils::WhitespaceRule;

namespace {

struct IntCase {
    std::string text;
    int64_t value;
};

}  // namespace

TEST(ConversionsIntegerParse, I4AcceptsWhatThirtyTwoBitStrtolAccepts) {
    const IntCase cases[] = {{"", 0},
                             {"12", 12},
                             {"+7", 7},
                             {"-0", 0},
                             {" \t12", 12},  // strtol skips leading whitespace itself
                             {"0012", 12},
                             {"2147483647", INT32_MAX},
                             {"-2147483648", INT32_MIN},
                             {std::string("12\0x", 4), 12}};  // a NUL ends the text
    for (const auto& c : cases) EXPECT_EQ(CConversions::i4FromString(c.text, Rule::None), c.value) << c.text;
    EXPECT_EQ(CConversions::i4FromString("", Rule::Collapse), 0);
    EXPECT_EQ(CConversions::i4FromString("  12 ", Rule::Collapse), 12);
}

TEST(ConversionsIntegerParse, I4ReportsRangeBeforeSyntax) {
    EXPECT_KV_THROW(CConversions::i4FromString("99999999999", Rule::None), CKvInvalidValueException,
                    "The value [99999999999] is to large to fit in a i4");
    EXPECT_KV_THROW(CConversions::i4FromString("2147483648", Rule::None), CKvInvalidValueException,
                    "The value [2147483648] is to large to fit in a i4");
    EXPECT_KV_THROW(CConversions::i4FromString("-2147483649", Rule::None), CKvInvalidValueException,
                    "The value [-2147483649] is to large to fit in a i4");
    EXPECT_KV_THROW(CConversions::i4FromString("99999999999999999999", Rule::None), CKvInvalidValueException,
                    "The value [99999999999999999999] is to large to fit in a i4");
    EXPECT_KV_THROW(CConversions::i4FromString("99999999999x", Rule::None), CKvInvalidValueException,
                    "The value [99999999999x] is to large to fit in a i4");
}

TEST(ConversionsIntegerParse, I4RejectsTrailingTextQuotingTheRuleResult) {
    for (const char* bad : {"12a", "0x10", "abc", "-", "1.0", "12 ", "1e3"})
        EXPECT_KV_THROW(CConversions::i4FromString(bad, Rule::None), CKvInvalidValueException,
                        std::string("The value [") + bad + "] can not be converted to a i4");
    EXPECT_KV_THROW(CConversions::i4FromString("\t1 \n 2\r\n", Rule::Collapse), CKvInvalidValueException,
                    "The value [1 2] can not be converted to a i4");
    EXPECT_KV_THROW(CConversions::i4FromString("\t12a\n", Rule::Replace), CKvInvalidValueException,
                    "The value [ 12a ] can not be converted to a i4");
    // With no digits strtol leaves the end at the start, whitespace included.
    EXPECT_KV_THROW(CConversions::i4FromString(" ", Rule::None), CKvInvalidValueException,
                    "The value [ ] can not be converted to a i4");
}

TEST(ConversionsIntegerParse, Ui4WrapsNegativesAsThirtyTwoBitStrtoul) {
    const IntCase cases[] = {{"-1", 4294967295LL},        {"4294967295", 4294967295LL}, {"-4294967295", 1},
                             {"-2147483648", 2147483648LL}, {"+5", 5},                   {"", 0},
                             {"-0", 0}};
    for (const auto& c : cases)
        EXPECT_EQ(CConversions::ui4FromString(c.text, Rule::None), static_cast<uint32_t>(c.value)) << c.text;
    for (const char* big : {"4294967296", "-4294967296", "-99999999999", "18446744073709551615",
                            "-18446744073709551615", "99999999999999999999"})
        EXPECT_KV_THROW(CConversions::ui4FromString(big, Rule::None), CKvInvalidValueException,
                        std::string("The value [") + big + "] is to large to fit in a ui4");
    EXPECT_KV_THROW(CConversions::ui4FromString("4x", Rule::None), CKvInvalidValueException,
                    "The value [4x] can not be converted to a ui4");
}

TEST(ConversionsIntegerParse, SixtyFourBitTypesFollowStrtollAndStrtoull) {
    EXPECT_EQ(CConversions::i8FromString("9223372036854775807", Rule::None), INT64_MAX);
    EXPECT_EQ(CConversions::i8FromString("-9223372036854775808", Rule::None), INT64_MIN);
    EXPECT_EQ(CConversions::i8FromString("99999999999", Rule::None), 99999999999LL);
    EXPECT_KV_THROW(CConversions::i8FromString("9223372036854775808", Rule::None), CKvInvalidValueException,
                    "The value [9223372036854775808] is to large to fit in a i8");
    EXPECT_KV_THROW(CConversions::i8FromString("7 7", Rule::Collapse), CKvInvalidValueException,
                    "The value [7 7] can not be converted to a i8");
    EXPECT_EQ(CConversions::ui8FromString("18446744073709551615", Rule::None), UINT64_MAX);
    EXPECT_EQ(CConversions::ui8FromString("-1", Rule::None), UINT64_MAX);
    EXPECT_EQ(CConversions::ui8FromString("", Rule::None), 0u);
    EXPECT_KV_THROW(CConversions::ui8FromString("18446744073709551616", Rule::None), CKvInvalidValueException,
                    "The value [18446744073709551616] is to large to fit in a ui8");
    EXPECT_KV_THROW(CConversions::ui8FromString("z", Rule::None), CKvInvalidValueException,
                    "The value [z] can not be converted to a ui8");
}

TEST(ConversionsIntegerParse, NarrowTypesCheckTheirRangeAfterTheWideParse) {
    EXPECT_EQ(CConversions::i1FromString("-128", Rule::None), -128);
    EXPECT_EQ(CConversions::i1FromString(" 127 ", Rule::Collapse), 127);
    EXPECT_EQ(CConversions::i2FromString("-32768", Rule::None), -32768);
    EXPECT_EQ(CConversions::ui1FromString("255", Rule::None), 255);
    EXPECT_EQ(CConversions::ui2FromString("65535", Rule::None), 65535);
    EXPECT_KV_THROW(CConversions::i1FromString("200", Rule::None), CKvInvalidValueException,
                    "The value [200] is to large to fit in a i1");
    EXPECT_KV_THROW(CConversions::i1FromString("-129", Rule::None), CKvInvalidValueException,
                    "The value [-129] is to large to fit in a i1");
    EXPECT_KV_THROW(CConversions::i2FromString("32768", Rule::None), CKvInvalidValueException,
                    "The value [32768] is to large to fit in a i2");
    EXPECT_KV_THROW(CConversions::ui1FromString("256", Rule::None), CKvInvalidValueException,
                    "The value [256] is to large to fit in a ui1");
    // "-1" wraps to 4294967295 before the ui1 range check sees it.
    EXPECT_KV_THROW(CConversions::ui1FromString("-1", Rule::None), CKvInvalidValueException,
                    "The value [-1] is to large to fit in a ui1");
    EXPECT_KV_THROW(CConversions::ui2FromString(" 65536", Rule::Collapse), CKvInvalidValueException,
                    "The value [65536] is to large to fit in a ui2");
    // Bad text and wide overflow report the message of the wide type.
    EXPECT_KV_THROW(CConversions::i1FromString("x", Rule::None), CKvInvalidValueException,
                    "The value [x] can not be converted to a i4");
    EXPECT_KV_THROW(CConversions::i2FromString("99999999999", Rule::None), CKvInvalidValueException,
                    "The value [99999999999] is to large to fit in a i4");
    EXPECT_KV_THROW(CConversions::ui1FromString("x", Rule::None), CKvInvalidValueException,
                    "The value [x] can not be converted to a ui4");
}

TEST(ConversionsIntegerParse, PrintedValuesParseBack) {
    std::mt19937_64 random(42);
    for (int i = 0; i < 2000; ++i) {
        const uint64_t bits = random();
        const auto i4 = static_cast<int32_t>(bits);
        const auto i8 = static_cast<int64_t>(bits);
        EXPECT_EQ(CConversions::i4FromString(CConversions::i4ToString(i4), Rule::None), i4);
        EXPECT_EQ(CConversions::ui4FromString(CConversions::ui4ToString(static_cast<uint32_t>(bits)), Rule::None),
                  static_cast<uint32_t>(bits));
        EXPECT_EQ(CConversions::i8FromString(CConversions::i8ToString(i8), Rule::None), i8);
        EXPECT_EQ(CConversions::ui8FromString(CConversions::ui8ToString(bits), Rule::None), bits);
    }
}

TEST(ConversionsFloatParse, NamedValuesAndEmptyText) {
    for (const char* nan : {"", "NaN", "1.#QNAN", "-NAN", "nan"})
        EXPECT_TRUE(std::isnan(CConversions::r8FromString(nan, Rule::None))) << nan;
    EXPECT_TRUE(std::isnan(CConversions::r8FromString(" ", Rule::Collapse)));
    EXPECT_TRUE(std::isnan(CConversions::r4FromString("\n", Rule::Collapse)));
    EXPECT_EQ(CConversions::r8FromString("INF", Rule::None), std::numeric_limits<double>::infinity());
    EXPECT_EQ(CConversions::r8FromString("-INF", Rule::None), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(CConversions::r4FromString(" -INF ", Rule::Collapse), -std::numeric_limits<float>::infinity());
}

TEST(ConversionsFloatParse, StrtodFormsAndOverflowWithoutError) {
    EXPECT_EQ(CConversions::r8FromString("1.5", Rule::None), 1.5);
    EXPECT_EQ(CConversions::r8FromString("-2.5E-3", Rule::None), -2.5e-3);
    EXPECT_EQ(CConversions::r8FromString(" .5", Rule::None), 0.5);
    EXPECT_EQ(CConversions::r8FromString("0x1p3", Rule::None), 8.0);
    EXPECT_EQ(CConversions::r8FromString("1e400", Rule::None), std::numeric_limits<double>::infinity());
    EXPECT_EQ(CConversions::r8FromString("1e-400", Rule::None), 0.0);
    EXPECT_EQ(CConversions::r8FromString("0.1", Rule::None), 0.1);
    EXPECT_EQ(CConversions::r4FromString("0.1", Rule::None), 0.1f);
    EXPECT_KV_THROW(CConversions::r8FromString("1.5x", Rule::None), CKvInvalidValueException,
                    "The value [1.5x] can not be converted to a r8");
    EXPECT_KV_THROW(CConversions::r8FromString("1,5", Rule::None), CKvInvalidValueException,
                    "The value [1,5] can not be converted to a r8");
    EXPECT_KV_THROW(CConversions::r4FromString(" 1 2 ", Rule::Collapse), CKvInvalidValueException,
                    "The value [1 2] can not be converted to a r4");
    EXPECT_KV_THROW(CConversions::r4FromString("inf inity", Rule::None), CKvInvalidValueException,
                    "The value [inf inity] can not be converted to a r4");
}

TEST(ConversionsFloatParse, R4NarrowsBeyondTheFloatRangeAsIeeeRounding) {
    const float max = std::numeric_limits<float>::max();
    const float inf = std::numeric_limits<float>::infinity();
    EXPECT_EQ(CConversions::r4FromString("3.4028235e38", Rule::None), max);
    EXPECT_EQ(CConversions::r4FromString("1e39", Rule::None), inf);
    EXPECT_EQ(CConversions::r4FromString("-1e300", Rule::None), -inf);
    // FLT_MAX plus just under half an ulp (2^103) still rounds down; the tie goes to infinity.
    EXPECT_EQ(CConversions::r4FromString("0x1.ffffffp127", Rule::None), inf);
    EXPECT_EQ(CConversions::r4FromString("0x1.fffffefffffffp127", Rule::None), max);
    EXPECT_EQ(CConversions::r4FromString("-0x1.fffffefffffffp127", Rule::None), -max);
    EXPECT_EQ(CConversions::r4FromString("1e-50", Rule::None), 0.0f);
}

TEST(ConversionsFloatPrint, DefaultFormsAreSixteenAndSevenSignificantDigits) {
    EXPECT_EQ(CConversions::r8ToString(1.0 / 3.0), "0.3333333333333333");
    EXPECT_EQ(CConversions::r8ToString(0.1), "0.1");
    EXPECT_EQ(CConversions::r8ToString(1e16), "1e+16");
    EXPECT_EQ(CConversions::r8ToString(123456789012345678.0), "1.234567890123457e+17");
    EXPECT_EQ(CConversions::r8ToString(-0.0), "-0");
    EXPECT_EQ(CConversions::r8ToString(5e-324), "4.940656458412465e-324");
    EXPECT_EQ(CConversions::r8ToString(-1.5e-7), "-1.5e-07");
    EXPECT_EQ(CConversions::r4ToString(0.1f), "0.1");
    EXPECT_EQ(CConversions::r4ToString(1.0f / 3.0f), "0.3333333");
    EXPECT_EQ(CConversions::r4ToString(1234567.0f), "1234567");
    EXPECT_EQ(CConversions::r4ToString(16777216.0f), "1.677722e+07");
    EXPECT_EQ(CConversions::r4ToString(100000000.0f), "1e+08");
    EXPECT_EQ(CConversions::r8ToString(std::nan("")), "NaN");
    EXPECT_EQ(CConversions::r8ToString(std::numeric_limits<double>::infinity()), "INF");
    EXPECT_EQ(CConversions::r4ToString(-std::numeric_limits<float>::infinity()), "-INF");
    EXPECT_EQ(CConversions::r8ToString(std::nan(""), "%.2f"), "NaN");
}

TEST(ConversionsFloatPrint, DefaultFormsMatchPrintfDigitForDigit) {
    std::mt19937_64 random(7);
    char expected[64];
    for (int i = 0; i < 5000; ++i) {
        const uint64_t bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value)) continue;
        std::snprintf(expected, sizeof expected, "%.16g", value);
        ASSERT_EQ(CConversions::r8ToString(value), expected);
        const float narrow = static_cast<float>(static_cast<uint32_t>(bits)) * 1e-5f;
        std::snprintf(expected, sizeof expected, "%.7g", static_cast<double>(narrow));
        ASSERT_EQ(CConversions::r4ToString(narrow), expected);
    }
}

TEST(ConversionsFloatPrint, CallerFormatsAreUsedAndCut) {
    EXPECT_EQ(CConversions::r8ToString(3.14159, "%.2f"), "3.14");
    EXPECT_EQ(CConversions::r8ToString(3.14159, "%10.3e"), " 3.142e+00");
    EXPECT_EQ(CConversions::r8ToString(3.14159, "value=%g%%"), "value=3.14159%");
    EXPECT_EQ(CConversions::r8ToString(2.5, "%lf"), "2.500000");
    EXPECT_EQ(CConversions::r8ToString(2.5, "none"), "none");
    EXPECT_EQ(CConversions::r4ToString(2.5f, "%.1f"), "2.5");
    // 48 characters of buffer for r8 and 32 for r4, NUL included.
    EXPECT_EQ(CConversions::r8ToString(3.14159, "%.60f"), "3.141589999999999882618340052431449294090270996");
    EXPECT_EQ(CConversions::r4ToString(0.1f, "%.40f"), "0.10000000149011611938476562500");
}

TEST(ConversionsFloatPrint, RejectsFormatsThatDoNotTakeOneDouble) {
    for (const char* bad : {"%d", "%s", "%n", "%f %f", "%*f", "%.*f", "%Lf", "%99999f", "%.99999f", "%", "%1$f"})
        EXPECT_KV_THROW(CConversions::r8ToString(1.0, bad), CKvInvalidParamException,
                        std::string("Invalid number format [") + bad + "]");
    EXPECT_KV_THROW(CConversions::r4ToString(1.0f, "%x"), CKvInvalidParamException, "Invalid number format [%x]");
}

TEST(ConversionsDecimal, ParsesAfterTheRuleAndPrintsWithDigitCounts) {
    EXPECT_EQ(CConversions::decimalToString(CConversions::decimalFromString(" 1.50 ", Rule::Collapse)), "1.5");
    EXPECT_EQ(CConversions::decimalToString(CConversions::decimalFromString("-0.25", Rule::None)), "-0.25");
    EXPECT_EQ(CConversions::decimalToString(CConversions::decimalFromString("", Rule::None)), "0");
    const CDecimal value("1.005");
    EXPECT_EQ(CConversions::decimalToString(value, ""), "1.005");
    EXPECT_EQ(CConversions::decimalToString(value, "2"), "1.01");
    EXPECT_EQ(CConversions::decimalToString(value, " 4"), "1.0050");  // strtol skips the space
    EXPECT_EQ(CConversions::decimalToString(CDecimal(2), "2"), "2.00");
    EXPECT_EQ(CConversions::decimalToString(value, "1x"), "1.0");
    EXPECT_THROW(CConversions::decimalFromString("1.2.3", Rule::None), CKvInvalidValueException);
}

TEST(ConversionsBigInteger, ParsesAfterTheRuleAndPrintsCanonically) {
    EXPECT_EQ(CConversions::integerToString(CConversions::integerFromString(" -000123 ", Rule::Collapse)), "-123");
    const std::string big = "123456789012345678901234567890123456789012345678901234567890";
    EXPECT_EQ(CConversions::integerToString(CConversions::integerFromString(big, Rule::None)), big);
    EXPECT_EQ(CConversions::integerToString(CConversions::integerFromString("-0", Rule::None)), "0");
    EXPECT_THROW(CConversions::integerFromString("12x", Rule::None), CKvInvalidValueException);
}

TEST(ConversionsLocale, CallerFormatRestoresTheThreadLocale) {
    const locale_t before = uselocale(static_cast<locale_t>(nullptr));
    EXPECT_EQ(CConversions::r8ToString(0.5, "%.1f"), "0.5");
    EXPECT_EQ(uselocale(static_cast<locale_t>(nullptr)), before);
    EXPECT_THROW(CConversions::r8ToString(0.5, "%d"), CKvInvalidParamException);
    EXPECT_EQ(uselocale(static_cast<locale_t>(nullptr)), before);
}

// The conversions must not follow the process locale. Only C, C.utf8 and
// POSIX may be installed (Debian's C.UTF-8 uses '.'); then no comma locale
// can be selected here and the test is skipped.
TEST(ConversionsLocale, IgnoresACommaDecimalProcessLocale) {
    const std::string saved = std::setlocale(LC_ALL, nullptr);
    const char* candidates[] = {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8", "nl_NL.UTF-8",
                                "ru_RU.UTF-8", "de_DE",      "fr_FR",       "de_DE@euro"};
    const char* chosen = nullptr;
    for (const char* name : candidates) {
        if (std::setlocale(LC_ALL, name) != nullptr && std::strcmp(std::localeconv()->decimal_point, ",") == 0) {
            chosen = name;
            break;
        }
    }
    if (chosen == nullptr) {
        std::setlocale(LC_ALL, saved.c_str());
        GTEST_SKIP() << "no comma-decimal locale is installed on this host";
    }
    EXPECT_EQ(CConversions::r8FromString("1.5", Rule::None), 1.5) << chosen;
    EXPECT_EQ(CConversions::r4FromString("0.25", Rule::None), 0.25f);
    EXPECT_THROW(CConversions::r8FromString("1,5", Rule::None), CKvInvalidValueException);
    EXPECT_EQ(CConversions::r8ToString(1.5), "1.5");
    EXPECT_EQ(CConversions::r8ToString(1.5, "%.2f"), "1.50");
    EXPECT_EQ(CConversions::r4ToString(0.25f, "%g"), "0.25");
    EXPECT_EQ(CConversions::i4FromString("-12", Rule::None), -12);
    EXPECT_TRUE(CConversions::booleanFromString("TRUE", Rule::None));
    std::setlocale(LC_ALL, saved.c_str());
}
