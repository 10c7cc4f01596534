// Tests for FormatString/FormatV: vsnprintf's text, never cut, no "%n" stores.
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {
template <typename... Args>
std::string Reference(const char* format, Args... args) {
    char buffer[4096];
    int n = std::snprintf(buffer, sizeof buffer, format, args...);
    return std::string(buffer, static_cast<size_t>(n));
}
}  // namespace

TEST(FormatString, MatchesSnprintfForCommonConversions) {
    EXPECT_EQ(FormatString("Index %d is out of range, use 0 - %d", 5, 3), "Index 5 is out of range, use 0 - 3");
    EXPECT_EQ(FormatString("100%% [%s]", "x"), "100% [x]");
    EXPECT_EQ(FormatString("%-6s|%6s|%.2s", "ab", "cd", "efgh"), Reference("%-6s|%6s|%.2s", "ab", "cd", "efgh"));
    EXPECT_EQ(FormatString("%c%c", 'o', 'k'), "ok");
    EXPECT_EQ(FormatString("%#x %#o %X %u", 255, 8, 0xBEEFu, 4294967295u), Reference("%#x %#o %X %u", 255, 8, 0xBEEFu, 4294967295u));
    EXPECT_EQ(FormatString("%+05d|% d|%*d|%.*d", 42, 7, 6, 3, 4, 9), Reference("%+05d|% d|%*d|%.*d", 42, 7, 6, 3, 4, 9));
    EXPECT_EQ(FormatString("%e %g %G %E", 1234.5, 0.0001, 1e20, 2.5), Reference("%e %g %G %E", 1234.5, 0.0001, 1e20, 2.5));
    EXPECT_EQ(FormatString("%ls", L"wide"), "wide");
    EXPECT_EQ(FormatString(""), "");
    EXPECT_EQ(FormatString("no conversions"), "no conversions");
}

TEST(FormatString, NeverTruncatesLongOutput) {
    std::string big(100000, 'a');
    std::string result = FormatString("[%s]", big.c_str());
    ASSERT_EQ(result.size(), big.size() + 2);
    EXPECT_EQ(result.front(), '[');
    EXPECT_EQ(result.back(), ']');
    EXPECT_EQ(FormatString("%.400f", 1.0).size(), 402u);
    EXPECT_EQ(FormatString("%f", 1e300), Reference("%f", 1e300));
    EXPECT_EQ(FormatString("%500d", 1).size(), 500u);
}

TEST(FormatString, I64PrefixTakesA64BitArgument) {
    EXPECT_EQ(FormatString("%I64d", static_cast<int64_t>(-9223372036854775807LL - 1)), "-9223372036854775808");
    EXPECT_EQ(FormatString("%I64u|%d", static_cast<uint64_t>(18446744073709551615ULL), 7), "18446744073709551615|7");
    EXPECT_EQ(FormatString("%020I64d", static_cast<int64_t>(12345)), "00000000000000012345");
    EXPECT_EQ(FormatString("%I64X", static_cast<uint64_t>(0xABCDEF0123ULL)), "ABCDEF0123");
}

TEST(FormatString, PercentNPrintsItsArgumentAndANullStringPrintsLikeTheC_Library) {
    EXPECT_EQ(FormatString("Error [%n]", 13), "Error [13]");
    EXPECT_EQ(FormatString("%s [%n] at %d", "x", -2, 7), "x [-2] at 7");
    // glibc's vsnprintf prints a null string as "(null)".
    const char* nothing = nullptr;
    EXPECT_EQ(FormatString("[%s]", nothing), "[(null)]");
    EXPECT_EQ(FormatString("[%.3s]", nothing), "[]");
}

