// ConversionsNumbersTest.cpp - CConversions integers, floating forms, decimal, integer and locale independence.
#include <cmath>
#include <locale.h>
#include <random>

#include "support/Fixtures.h"

using namespace KvXmlLib10;
using C = CConversions;
using Rule = CWhitespaceUtils::WhitespaceRule;

namespace {

// Any integer parser, its result printed in base ten.
using Parser = std::string (*)(const std::string&, Rule);
template <auto F>
std::string AsText(const std::string& text, Rule rule) {
    return std::to_string(F(text, rule));
}

constexpr double kInf = std::numeric_limits<double>::infinity();

}  // namespace

TEST(ConversionsInteger, ParsesLikeTheThirtyTwoBitLongConversionsAndPrintsTheFullRangeInBaseTen) {
    const struct { Parser parse; Rule rule; std::vector<std::pair<std::string, const char*>> cases; } groups[] = {
        // strtol skips leading whitespace itself; a NUL ends the text.
        {AsText<C::i4FromString>, Rule::None,
         {{"", "0"}, {"+7", "7"}, {"-0", "0"}, {" \t12", "12"}, {"0012", "12"}, {"2147483647", "2147483647"},
          {"-2147483648", "-2147483648"}, {std::string("12\0x", 4), "12"}}},
        {AsText<C::i4FromString>, Rule::Collapse, {{"", "0"}, {"  12 ", "12"}}},
        // ui4 wraps a negated magnitude as a 32-bit strtoul does.
        {AsText<C::ui4FromString>, Rule::None,
         {{"-1", "4294967295"}, {"4294967295", "4294967295"}, {"-4294967295", "1"}, {"-2147483648", "2147483648"},
          {"+5", "5"}, {"", "0"}, {"-0", "0"}}},
        {AsText<C::i8FromString>, Rule::None,
         {{"9223372036854775807", "9223372036854775807"}, {"-9223372036854775808", "-9223372036854775808"},
          {"-999999999999999999", "-999999999999999999"}, {"+0000000000000000000042", "42"}}},
        {AsText<C::ui8FromString>, Rule::None,
         {{"18446744073709551615", "18446744073709551615"}, {"-1", "18446744073709551615"}, {"", "0"},
          {"-999999999999999999", "17446744073709551617"}}},
        {AsText<C::i1FromString>, Rule::Collapse, {{"-128", "-128"}, {" 127 ", "127"}}},
        {AsText<C::i2FromString>, Rule::None, {{"-32768", "-32768"}}},
        {AsText<C::ui1FromString>, Rule::None, {{"255", "255"}}},
        {AsText<C::ui2FromString>, Rule::None, {{"65535", "65535"}}},
    };
    for (const auto& g : groups)
        for (const auto& [text, value] : g.cases) EXPECT_EQ(g.parse(text, g.rule), value) << "[" << text << "]";
    // KvVariant's text table prints the other integer types.
    EXPECT_EQ(C::i1ToString(std::numeric_limits<int8_t>::min()), "-128");
    EXPECT_EQ(C::i1ToString(127), "127");
    EXPECT_EQ(C::i2ToString(std::numeric_limits<int16_t>::min()), "-32768");
    EXPECT_EQ(C::i4ToString(std::numeric_limits<int32_t>::min()), "-2147483648");
    EXPECT_EQ(C::i8ToString(std::numeric_limits<int64_t>::max()), "9223372036854775807");
    EXPECT_EQ(C::ui4ToString(0), "0");
}

TEST(ConversionsIntegerParse, ReportsRangeBeforeSyntaxQuotingTheRuleResult) {
    EXPECT_KV_THROW(C::i4FromString("\t1 \n 2\r\n", Rule::Collapse), CKvInvalidValueException,
                    "The value [1 2] can not be converted to a i4");
    EXPECT_KV_THROW(C::i4FromString("\t12a\n", Rule::Replace), CKvInvalidValueException,
                    "The value [ 12a ] can not be converted to a i4");
    EXPECT_KV_THROW(C::i8FromString("7 7", Rule::Collapse), CKvInvalidValueException,
                    "The value [7 7] can not be converted to a i8");
    EXPECT_KV_THROW(C::ui2FromString(" 65536", Rule::Collapse), CKvInvalidValueException,
                    "The value [65536] is to large to fit in a ui2");
    const struct {
        Parser parse;
        const char* type;  // named in the message
        std::vector<std::string> tooLarge, bad;
    } groups[] = {
        // With no digits strtol leaves the end at the start, whitespace included.
        {AsText<C::i4FromString>, "i4", {"2147483648", "-2147483649", "99999999999999999999", "99999999999x"},
         {"0x10", "-", "1.0", "12 ", "1e3", " "}},
        {AsText<C::ui4FromString>, "ui4",
         {"4294967296", "-4294967296", "-99999999999", "-18446744073709551615", "99999999999999999999"}, {"4x"}},
        {AsText<C::i8FromString>, "i8", {"9223372036854775808"}, {}},
        {AsText<C::ui8FromString>, "ui8", {"18446744073709551616"}, {"z", "+", "1-"}},
        // The narrow types check their range after the wide parse ("-1" as ui1 is 4294967295) ...
        {AsText<C::i1FromString>, "i1", {"200", "-129"}, {}}, {AsText<C::i2FromString>, "i2", {"32768"}, {}},
        {AsText<C::ui1FromString>, "ui1", {"256", "-1"}, {}},
        // ... and report bad text and wide overflow with the wide type's message.
        {AsText<C::i1FromString>, "i4", {}, {"x"}}, {AsText<C::i2FromString>, "i4", {"99999999999"}, {}},
        {AsText<C::ui1FromString>, "ui4", {}, {"x"}},
    };
    for (const auto& g : groups) {
        for (const std::string& text : g.tooLarge)
            EXPECT_KV_THROW(g.parse(text, Rule::None), CKvInvalidValueException,
                            "The value [" + text + "] is to large to fit in a " + g.type);
        for (const std::string& text : g.bad)
            EXPECT_KV_THROW(g.parse(text, Rule::None), CKvInvalidValueException,
                            "The value [" + text + "] can not be converted to a " + g.type);
    }
}

TEST(ConversionsFloatParse, NamedValuesStrtodFormsAndOverflowWithoutError) {
    for (const char* nan : {"", "NaN", "1.#QNAN", "-NAN", "nan"})
        EXPECT_TRUE(std::isnan(C::r8FromString(nan, Rule::None))) << nan;
    EXPECT_TRUE(std::isnan(C::r8FromString(" ", Rule::Collapse)));
    EXPECT_TRUE(std::isnan(C::r4FromString("\n", Rule::Collapse)));
    const std::pair<const char*, double> cases[] = {
        {"INF", kInf},   {"-INF", -kInf},  {"1.5", 1.5},  {"-2.5E-3", -2.5e-3}, {" .5", 0.5},
        {"0x1p3", 8.0},  {"1e400", kInf},  {"1e-400", 0}, {"0.1", 0.1},
    };
    for (const auto& [text, value] : cases) EXPECT_EQ(C::r8FromString(text, Rule::None), value) << text;
    EXPECT_EQ(C::r4FromString(" -INF ", Rule::Collapse), -std::numeric_limits<float>::infinity());
    EXPECT_EQ(C::r4FromString("0.1", Rule::None), 0.1f);
    EXPECT_KV_THROW(C::r8FromString("1.5x", Rule::None), CKvInvalidValueException,
                    "The value [1.5x] can not be converted to a r8");
    EXPECT_KV_THROW(C::r8FromString("1,5", Rule::None), CKvInvalidValueException,
                    "The value [1,5] can not be converted to a r8");
    EXPECT_KV_THROW(C::r4FromString(" 1 2 ", Rule::Collapse), CKvInvalidValueException,
                    "The value [1 2] can not be converted to a r4");
    EXPECT_KV_THROW(C::r4FromString("inf inity", Rule::None), CKvInvalidValueException,
                    "The value [inf inity] can not be converted to a r4");
}

TEST(ConversionsFloatParse, R4NarrowsBeyondTheFloatRangeAsIeeeRounding) {
    const float max = std::numeric_limits<float>::max(), inf = std::numeric_limits<float>::infinity();
    // FLT_MAX plus just under half an ulp (2^103) still rounds down; the tie goes to infinity.
    const std::pair<const char*, float> cases[] = {
        {"3.4028235e38", max},        {"1e39", inf},  {"-1e300", -inf}, {"0x1.ffffffp127", inf},
        {"0x1.fffffefffffffp127", max}, {"-0x1.fffffefffffffp127", -max}, {"1e-50", 0.0f},
    };
    for (const auto& [text, value] : cases) EXPECT_EQ(C::r4FromString(text, Rule::None), value) << text;
}

TEST(ConversionsFloatPrint, DefaultFormsAreSixteenAndSevenSignificantDigits) {
    const std::pair<double, const char*> doubles[] = {
        {1.0 / 3.0, "0.3333333333333333"}, {0.1, "0.1"},       {1e16, "1e+16"},
        {123456789012345678.0, "1.234567890123457e+17"},       {-0.0, "-0"},
        {5e-324, "4.940656458412465e-324"}, {-1.5e-7, "-1.5e-07"}, {std::nan(""), "NaN"}, {kInf, "INF"},
    };
    for (const auto& [value, text] : doubles) EXPECT_EQ(C::r8ToString(value), text);
    const std::pair<float, const char*> floats[] = {
        {0.1f, "0.1"},          {1.0f / 3.0f, "0.3333333"}, {1234567.0f, "1234567"},
        {16777216.0f, "1.677722e+07"}, {100000000.0f, "1e+08"}, {-std::numeric_limits<float>::infinity(), "-INF"},
    };
    for (const auto& [value, text] : floats) EXPECT_EQ(C::r4ToString(value), text);

    // Digit for digit what printf gives, on random bit patterns.
    std::mt19937_64 random(7);
    char expected[64];
    for (int i = 0; i < 5000; ++i) {
        const uint64_t bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value)) continue;
        std::snprintf(expected, sizeof expected, "%.16g", value);
        ASSERT_EQ(C::r8ToString(value), expected);
        const float narrow = static_cast<float>(static_cast<uint32_t>(bits)) * 1e-5f;
        std::snprintf(expected, sizeof expected, "%.7g", static_cast<double>(narrow));
        ASSERT_EQ(C::r4ToString(narrow), expected);
    }
}

TEST(ConversionsFloatPrint, CallerFormatsAreCheckedUsedAndCut) {
    const std::pair<const char*, const char*> cases[] = {
        {"%.2f", "3.14"},    {"%10.3e", " 3.142e+00"}, {"value=%g%%", "value=3.14159%"}, {"%lf", "3.141590"},
        {"none", "none"},
        // 48 characters of buffer, NUL included.
        {"%.60f", "3.141589999999999882618340052431449294090270996"},
    };
    for (const auto& [format, text] : cases) EXPECT_EQ(C::r8ToString(3.14159, format), text) << format;
    EXPECT_EQ(C::r4ToString(2.5f, "%.1f"), "2.5");
    EXPECT_EQ(C::r4ToString(0.1f, "%.40f"), "0.10000000149011611938476562500");  // 32 characters for r4
    EXPECT_EQ(C::r8ToString(std::nan(""), "%.2f"), "NaN");
    for (const char* bad : {"%d", "%s", "%n", "%f %f", "%*f", "%.*f", "%Lf", "%99999f", "%.99999f", "%", "%1$f"})
        EXPECT_KV_THROW(C::r8ToString(1.0, bad), CKvInvalidParamException,
                        std::string("Invalid number format [") + bad + "]");
    EXPECT_KV_THROW(C::r4ToString(1.0f, "%x"), CKvInvalidParamException, "Invalid number format [%x]");
}

TEST(ConversionsDecimal, ReadsTheFormatAsADigitCountLikeStrtol) {
    const CDecimal value("1.005");
    EXPECT_EQ(C::decimalToString(value), "1.005");
    EXPECT_EQ(C::decimalToString(value, ""), "1.005");
    EXPECT_EQ(C::decimalToString(value, "2"), "1.01");
    EXPECT_EQ(C::decimalToString(value, " 4"), "1.0050");  // strtol skips the space
    EXPECT_EQ(C::decimalToString(value, "1x"), "1.0");
    EXPECT_EQ(C::decimalToString(C::decimalFromString("", Rule::None)), "0");
    EXPECT_KV_THROW(C::decimalFromString("1.2.3", Rule::None), CKvInvalidValueException,
                    "The string representing a Decimal, contained an invalid char at position 3 [1.2.3]");
    const std::string big = "123456789012345678901234567890123456789012345678901234567890";
    EXPECT_EQ(C::integerToString(C::integerFromString(" " + big + " ", Rule::Collapse)), big);
    EXPECT_KV_THROW(C::integerFromString("12x", Rule::None), CKvInvalidValueException,
                    "The string representing a Decimal, contained an invalid char at position 2 [12x]");
}

// The conversions follow neither the thread nor the process locale. Where no
// comma-decimal locale is installed (often only C and POSIX are) the second half is skipped.
TEST(ConversionsLocale, CallerFormatsRestoreTheThreadLocaleAndACommaDecimalLocaleIsIgnored) {
    const locale_t before = uselocale(static_cast<locale_t>(nullptr));
    EXPECT_EQ(C::r8ToString(0.5, "%.1f"), "0.5");
    EXPECT_KV_THROW(C::r8ToString(0.5, "%d"), CKvInvalidParamException, "Invalid number format [%d]");
    EXPECT_EQ(uselocale(static_cast<locale_t>(nullptr)), before);
    KvXmlTest::ScopedLocale restore(nullptr);  // only remembers the locale to put back
    const char* chosen = nullptr;
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8", "de_DE", "fr_FR"})
        if (!chosen && std::setlocale(LC_ALL, name) && std::strcmp(std::localeconv()->decimal_point, ",") == 0)
            chosen = name;
    if (chosen == nullptr) GTEST_SKIP() << "no comma-decimal locale is installed on this host";
    EXPECT_EQ(C::r8FromString("1.5", Rule::None), 1.5) << chosen;
    EXPECT_EQ(C::r4FromString("0.25", Rule::None), 0.25f);
    EXPECT_KV_THROW(C::r8FromString("1,5", Rule::None), CKvInvalidValueException,
                    "The value [1,5] can not be converted to a r8");
    EXPECT_EQ(C::r8ToString(1.5), "1.5");
    EXPECT_EQ(C::r8ToString(1.5, "%.2f"), "1.50");
    EXPECT_EQ(C::r4ToString(0.25f, "%g"), "0.25");
    EXPECT_EQ(C::i4FromString("-12", Rule::None), -12);
}
