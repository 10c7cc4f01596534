// RegExTest.cpp - XML Schema pattern escapes, whole-value anchoring, UTF-8 values and bounded matching.
#include "support/Fixtures.h"
#include "validation/detail/PatternTranslation.h"

using namespace KvXmlTest;
using namespace KvXmlLib10;

namespace {

// The pattern matches each value of `matching` as a whole and none of `other`.
void ExpectMatches(const std::string& pattern, std::initializer_list<std::string> matching,
                   std::initializer_list<std::string> other) {
    for (const std::string& value : matching) EXPECT_TRUE(TestRegEx(pattern, value)) << pattern << " / " << value;
    for (const std::string& value : other) EXPECT_FALSE(TestRegEx(pattern, value)) << pattern << " / " << value;
}

const std::string kEAcute = "\xC3\xA9";            // U+00E9
const std::string kLDot = "\xC5\x80";              // U+0140, Latin Extended-A
const std::string kEuro = "\xE2\x82\xAC";          // U+20AC
const std::string kGrinning = "\xF0\x9F\x98\x80";  // U+1F600

}  // namespace

TEST(RegExTranslation, RewritesEachEscapeAndAnchors) {
    const std::pair<const char*, const char*> cases[] = {
        {"\\i", "^([^\\W\\d]|:)$"}, {"\\I", "^([\\W\\d])$"}, {"\\c", "^(\\w|\\.|-|:)$"}, {"\\C", "^([^\\w\\.\\-\\:])$"},
        {"\\p{IsBasicLatin}", "^[\\000-\\177]$"}, {"\\p{IsLatin-1Supplement}", "^[\\200-\\377]$"},
        {"\\p{IsLatinExtended-A}", "^[\\400-\\577]$"}, {"\\p{IsLatinExtended-B}", "^[\\600-\\1117]$"},
        {"\\i\\I", "^([^\\W\\d]|:)([\\W\\d])$"}, {"\\\\i", "^\\\\i$"}, {"\\\\\\c", "^\\\\(\\w|\\.|-|:)$"},
        {"\\\\\\\\c", "^\\\\\\\\c$"},
        {"\\p{IsGreek}\\d", "^\\p{IsGreek}\\d$"},  // other escapes reach PCRE unchanged
        {"\\p{IsBasicLatin", "^\\p{IsBasicLatin$"},
        {"\\", "^\\$"}, {"\\\\\\", "^\\\\\\$"}, {"", "^$"},
    };
    for (const auto& c : cases) EXPECT_EQ(detail::TranslatePattern(c.first), c.second) << c.first;
}

TEST(RegExEscapes, NameCharactersAndLatinBlocks) {
    ScopedAsciiOnly raw;
    ExpectMatches("\\p{IsBasicLatin}+", {"abc", "\x7F"}, {"ab" + kEAcute});
    ExpectMatches("\\p{IsLatin-1Supplement}", {kEAcute}, {"a"});
    ExpectMatches("\\p{IsLatinExtended-A}", {kLDot}, {kEAcute});
    // The rewritten range of Latin Extended-B reads as \600 to 'I' followed by '7'.
    EXPECT_KV_THROW(TestRegEx("\\p{IsLatinExtended-B}", "x"), CKvException,
                    "Invalid Regular Expression: x Error: 'range out of order in character class'");
    ExpectMatches("\\i\\c*", {"a1:b", "a:b-c.d", "_x", ":"}, {"1a", "-a", "a b", ""});
    ExpectMatches("\\I", {"7", "-"}, {"a"});
    ExpectMatches("\\C", {" ", "/"}, {".", ":", "z"});
    ExpectMatches("\\c+", {"-.:_9"}, {});
}

TEST(RegExEscapes, EscapedBackslashIsNotAnEscapeLead) {
    ExpectMatches("\\\\i", {"\\i"}, {"a"});
    ExpectMatches("\\\\c", {"\\c"}, {});
    ExpectMatches("\\\\p{IsBasicLatin}", {"\\p{IsBasicLatin}"}, {});  // '{' opens no quantifier here
    ExpectMatches("\\\\\\i", {"\\a"}, {"\\1"});                        // escaped backslash, then \i
    ExpectMatches("\\\\\\\\", {"\\\\"}, {});
    ExpectMatches("a\\\\", {"a\\"}, {});
    ExpectMatches("a\x01", {"a\\"}, {});  // a raw 0x01 is taken for the placeholder of an escaped backslash
    // A trailing lone backslash escapes the closing anchor: "a\\" asks for "a$".
    ExpectMatches("a\\", {"a$"}, {"a"});
}

TEST(RegExAnchoring, WholeValueOnly) {
    ExpectMatches("[0-9]{3}", {"123"}, {"1234", "12"});
    ExpectMatches("b", {}, {"abc", "bc", "ab"});
    ExpectMatches("abc", {}, {"abc\n"});  // $ would accept a final newline; the length check does not
    ExpectMatches("", {""}, {"a"});
    ExpectMatches("a*", {""}, {});
    ExpectMatches("a+", {}, {""});
    // The pattern becomes ^a|b$: a value matches only when the first branch
    // that succeeds at offset 0 also ends at the value's end.
    ExpectMatches("a|b", {"a", "b"}, {"ab", "ba"});
    ExpectMatches("a|ab", {}, {"ab"});
    ExpectMatches("ab|a", {"ab"}, {});
    ExpectMatches("(a|ab)", {"ab"}, {});
}

TEST(RegExValue, Utf8CharactersCountAsOneMalformedUtf8IsNoMatchAndANulEndsTheText) {
    ScopedAsciiOnly raw;
    ExpectMatches(".", {kEAcute, kEuro, kGrinning}, {});
    ExpectMatches("..", {}, {kEAcute});
    ExpectMatches(kEAcute, {kEAcute}, {});
    ExpectMatches("\\w", {}, {kEAcute});  // \w stays ASCII
    ExpectMatches(".{3}", {kEAcute + kEuro + kGrinning}, {});
    ExpectMatches(".*", {}, {"\xC3", "a\xFF", "\x80", "\xED\xA0\x80"});  // the last a surrogate
    ExpectMatches("[\\000-\\377]*", {}, {"\xC0\xAF"});                   // overlong '/'
    EXPECT_TRUE(TestRegEx("abc", std::string("abc\0def", 7)));
    EXPECT_FALSE(TestRegEx("abc\\x00def", std::string("abc\0def", 7)));
    EXPECT_TRUE(TestRegEx("a*", std::string("\0a", 2)));
    EXPECT_TRUE(TestRegEx(std::string("ab\0(", 4), "ab"));
}

TEST(RegExValue, ConvertsFromTheLocalCodePage) {
    {
        ScopedLocale locale("C.UTF-8");
        ASSERT_TRUE(locale.Active());
        ExpectMatches(".", {kEAcute}, {});
        ExpectMatches("\\p{IsLatin-1Supplement}", {kEAcute}, {});
    }
    // In the "C" locale the two bytes of "é" are not characters: each becomes '?'.
    ScopedLocale locale("C");
    ASSERT_TRUE(locale.Active());
    ExpectMatches("\\?\\?", {kEAcute}, {});
    ExpectMatches(".", {}, {kEAcute});
}

TEST(RegExCompile, FailureQuotesTheValueAndPcreReason) {
    EXPECT_KV_THROW(TestRegEx("(", "abc"), CKvException,
                    "Invalid Regular Expression: abc Error: 'missing closing parenthesis'");
    EXPECT_KV_THROW(TestRegEx("[a", ""), CKvException,
                    "Invalid Regular Expression:  Error: 'missing terminating ] for character class'");
    EXPECT_KV_THROW(TestRegEx("\xFF", "v"), CKvException,
                    "Invalid Regular Expression: v Error: 'UTF-8 error: illegal byte (0xfe or 0xff)'");
}

TEST(RegExLimits, CatastrophicBacktrackingGivesUpAsNoMatch) {
    EXPECT_FALSE(TestRegEx("(a+)+$", std::string(30, 'a') + "b"));
    EXPECT_FALSE(TestRegEx("(a+)+$", std::string(5000, 'a') + "b"));
    EXPECT_FALSE(TestRegEx("(a|aa)*c", std::string(5000, 'a')));
    EXPECT_FALSE(TestRegEx("((a*)*)*b", std::string(200, 'a')));
    for (size_t length : {size_t{100}, size_t{200000}, size_t{2000000}}) {
        EXPECT_FALSE(TestRegEx("(a+)+b", std::string(length, 'a'))) << length;
    }
    // The same patterns still decide ordinary values.
    EXPECT_TRUE(TestRegEx("(a+)+$", std::string(5000, 'a')));
    EXPECT_TRUE(TestRegEx("(a|aa)*c", "aaac"));
}

TEST(RegExLimits, RepeatedGroupsMatchLongValues) {
    for (size_t length : {size_t{200000}, size_t{10000000}}) {
        std::string alternating(length, 'a');
        for (size_t i = 1; i < length; i += 2) alternating[i] = 'b';
        EXPECT_TRUE(TestRegEx("\\c*", alternating)) << length;
        EXPECT_TRUE(TestRegEx("(a|b)*", alternating)) << length;
        EXPECT_TRUE(TestRegEx("([a-z]{2})*", alternating)) << length;
    }
    const std::string longName(200000, 'n');
    ExpectMatches("\\c*", {}, {longName + " "});
    ExpectMatches("([a-z]{2})*", {}, {longName + "x"});
    // Nested groups need several times the backtracking stack per character.
    ExpectMatches("((((((((((a))))))))))*", {std::string(200000, 'a')}, {std::string(200000, 'a') + "b"});
}
