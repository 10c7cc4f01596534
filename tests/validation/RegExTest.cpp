// RegExTest.cpp - XML Schema pattern escapes, whole-value anchoring, UTF-8 values and bounded matching.
#include "kvxml/validation/RegEx.h"

#include <gtest/gtest.h>

#include <chrono>
#include <clocale>
#include <string>
#include <utility>

#include "kvxml/output/Encoder.h"
#include "kvxml/values/StringUtils.h"
#include "support/KvTestSupport.h"
#include "validation/detail/PatternTranslation.h"

using namespace KvXmlLib10;

namespace {

// Values reach the matcher byte for byte (no locale decoding) for one test.
class RawBytesScope {
public:
    RawBytesScope() { ASCIIOnly(true); }
    ~RawBytesScope() { ASCIIOnly(false); }
};

// Switches the C locale for one test and restores it after.
class LocaleScope {
public:
    explicit LocaleScope(const char* name) : m_saved(std::setlocale(LC_ALL, nullptr)) {
        m_ok = std::setlocale(LC_ALL, name) != nullptr;
    }
    ~LocaleScope() { std::setlocale(LC_ALL, m_saved.c_str()); }
    bool Ok() const { return m_ok; }

private:
    std::string m_saved;
    bool m_ok = false;
};

struct Case {
    const char* pattern;
    std::string value;
    bool matches;
};

void ExpectCases(const std::initializer_list<Case>& cases) {
    for (const Case& c : cases) {
        EXPECT_EQ(TestRegEx(c.pattern, c.value), c.matches) << "pattern [" << c.pattern << "] value [" << c.value << "]";
    }
}

const std::string kEAcute = "\xC3\xA9";          // U+00E9
const std::string kLDot = "\xC5\x80";            // U+0140, Latin Extended-A
const std::string kEuro = "\xE2\x82\xAC";        // U+20AC
const std::string kGrinning = "\xF0\x9F\x98\x80";  // U+1F600

// The rewriting spelled as repeated search-from-the-start replacements.
std::string ReferenceTranslation(std::string pattern) {
    FindReplace(pattern, "\\\\", "\x01");
    for (const auto& escape : detail::kEscapeRewrites) FindReplace(pattern, escape.schema, escape.pcre);
    FindReplace(pattern, "\x01", "\\\\");
    return "^" + pattern + "$";
}

}  // namespace

TEST(RegExTranslation, RewritesEachEscapeAndAnchors) {
    const std::pair<const char*, const char*> cases[] = {
        {"\\i", "^([^\\W\\d]|:)$"},
        {"\\I", "^([\\W\\d])$"},
        {"\\c", "^(\\w|\\.|-|:)$"},
        {"\\C", "^([^\\w\\.\\-\\:])$"},
        {"\\p{IsBasicLatin}", "^[\\000-\\177]$"},
        {"\\p{IsLatin-1Supplement}", "^[\\200-\\377]$"},
        {"\\p{IsLatinExtended-A}", "^[\\400-\\577]$"},
        {"\\p{IsLatinExtended-B}", "^[\\600-\\1117]$"},
        {"\\\\i", "^\\\\i$"},
        {"\\\\\\c", "^\\\\(\\w|\\.|-|:)$"},
        {"\\p{IsGreek}\\d", "^\\p{IsGreek}\\d$"},
        {"", "^$"},
    };
    for (const auto& c : cases) EXPECT_EQ(detail::TranslatePattern(c.first), c.second) << c.first;
}

TEST(RegExTranslation, SinglePassAgreesWithRescanningReplacement) {
    const char* const patterns[] = {
        "\\i\\c*", "\\\\i", "\\\\\\i", "\\\\\\\\c", "\\\\\\\\\\C\\I", "\\i\\i\\I\\I",
        "\\p{IsBasicLatin}\\p{IsLatin-1Supplement}\\p{IsLatinExtended-A}\\p{IsLatinExtended-B}",
        "\\\\p{IsBasicLatin}", "a\x01b\\\\", "\\", "\\\\\\", "\\p{IsBasicLatin", "x\\cx\\Cx",
    };
    for (const char* pattern : patterns) {
        EXPECT_EQ(detail::TranslatePattern(pattern), ReferenceTranslation(pattern)) << pattern;
    }
}

TEST(RegExEscapes, NameStartAndNameCharacters) {
    ExpectCases({
        {"\\i\\c*", "a1:b", true},
        {"\\i\\c*", "a:b-c.d", true},
        {"\\i\\c*", "_x", true},
        {"\\i\\c*", ":", true},
        {"\\i\\c*", "1a", false},
        {"\\i\\c*", "-a", false},
        {"\\i\\c*", "a b", false},
        {"\\i\\c*", "", false},
        {"\\I", "7", true},
        {"\\I", "-", true},
        {"\\I", "a", false},
        {"\\C", " ", true},
        {"\\C", "/", true},
        {"\\C", ".", false},
        {"\\C", ":", false},
        {"\\C", "z", false},
        {"\\c+", "-.:_9", true},
    });
}

TEST(RegExEscapes, LatinBlocks) {
    RawBytesScope raw;
    ExpectCases({
        {"\\p{IsBasicLatin}+", "abc", true},
        {"\\p{IsBasicLatin}+", "ab" + kEAcute, false},
        {"\\p{IsBasicLatin}", std::string("\x7F"), true},
        {"\\p{IsLatin-1Supplement}", kEAcute, true},
        {"\\p{IsLatin-1Supplement}", "a", false},
        {"\\p{IsLatinExtended-A}", kLDot, true},
        {"\\p{IsLatinExtended-A}", kEAcute, false},
    });
}

TEST(RegExEscapes, LatinExtendedBNeverCompiles) {
    // The rewritten range reads as \600 to 'I' followed by '7'.
    EXPECT_KV_THROW(TestRegEx("\\p{IsLatinExtended-B}", "x"), CKvException,
                    "Invalid Regular Expression: x Error: 'range out of order in character class'");
}

TEST(RegExEscapes, EscapedBackslashIsNotAnEscapeLead) {
    ExpectCases({
        {"\\\\i", "\\i", true},
        {"\\\\i", "a", false},
        {"\\\\c", "\\c", true},
        {"\\\\p{IsBasicLatin}", "\\p{IsBasicLatin}", true},  // all literal text: '{' opens no quantifier
        {"\\\\\\i", "\\a", true},  // escaped backslash, then \i
        {"\\\\\\i", "\\1", false},
        {"\\\\\\\\", "\\\\", true},
        {"a\\\\", "a\\", true},
        {"a\x01", "a\\", true},  // a raw 0x01 is taken for the placeholder of an escaped backslash
    });
    // A trailing lone backslash escapes the closing anchor: "a\\" asks for "a$".
    EXPECT_TRUE(TestRegEx("a\\", "a$"));
    EXPECT_FALSE(TestRegEx("a\\", "a"));
}

TEST(RegExEscapes, OtherEscapesReachPcreUnchanged) {
    ExpectCases({
        {"\\d{3}", "123", true},
        {"\\d{3}", "12a", false},
        {"\\p{Lu}+", "ABC", true},
        {"\\p{Lu}+", "AbC", false},
        {"[\\-+]?\\d+", "-12", true},
        {"\\s", "\t", true},
    });
    // A block name the rewriting does not know is left to PCRE2, which refuses it.
    bool thrown = false;
    try {
        TestRegEx("\\p{IsGreek}", "x");
    } catch (const CKvException& e) {
        thrown = true;
        EXPECT_EQ(e.GetMessage().rfind("Invalid Regular Expression: x Error: '", 0), 0u) << e.GetMessage();
    }
    EXPECT_TRUE(thrown);
}

TEST(RegExAnchoring, WholeValueOnly) {
    ExpectCases({
        {"[0-9]{3}", "123", true},
        {"[0-9]{3}", "1234", false},
        {"[0-9]{3}", "12", false},
        {"b", "abc", false},
        {"b", "bc", false},
        {"b", "ab", false},
        {"abc", "abc\n", false},  // $ would accept a final newline; the length check does not
        {"", "", true},
        {"", "a", false},
        {"a*", "", true},
        {"a+", "", false},
    });
}

TEST(RegExAnchoring, TopLevelAlternationBindsAnchorsToTheOuterBranches) {
    // The pattern becomes ^a|b$: a value matches only when the first branch
    // that succeeds at offset 0 also ends at the value's end.
    ExpectCases({
        {"a|b", "a", true},
        {"a|b", "b", true},
        {"a|b", "ab", false},
        {"a|b", "ba", false},
        {"a|ab", "ab", false},
        {"ab|a", "ab", true},
        {"(a|ab)", "ab", true},
    });
}

TEST(RegExValue, ValueAndPatternEndAtFirstNul) {
    EXPECT_TRUE(TestRegEx("abc", std::string("abc\0def", 7)));
    EXPECT_FALSE(TestRegEx("abc\\x00def", std::string("abc\0def", 7)));
    EXPECT_TRUE(TestRegEx("a*", std::string("\0a", 2)));
    EXPECT_TRUE(TestRegEx(std::string("ab\0(", 4), "ab"));
}

TEST(RegExValue, Utf8CharactersCountAsOne) {
    RawBytesScope raw;
    ExpectCases({
        {".", kEAcute, true},
        {"..", kEAcute, false},
        {".", kEuro, true},
        {".", kGrinning, true},
        {"a.z", "a" + kGrinning + "z", true},
        {"[^a]", kEuro, true},
        {kEAcute.c_str(), kEAcute, true},
        {"\\w", kEAcute, false},  // \w stays ASCII
        {".{3}", kEAcute + kEuro + kGrinning, true},
    });
}

TEST(RegExValue, ConvertsFromTheLocalCodePage) {
    {
        LocaleScope locale("C.UTF-8");
        ASSERT_TRUE(locale.Ok());
        EXPECT_TRUE(TestRegEx(".", kEAcute));
        EXPECT_TRUE(TestRegEx("\\p{IsLatin-1Supplement}", kEAcute));
    }
    {
        // In the "C" locale the two bytes of "é" are not characters: each becomes '?'.
        LocaleScope locale("C");
        ASSERT_TRUE(locale.Ok());
        EXPECT_FALSE(TestRegEx(".", kEAcute));
        EXPECT_TRUE(TestRegEx("\\?\\?", kEAcute));
    }
}

TEST(RegExValue, MalformedUtf8IsNoMatch) {
    RawBytesScope raw;
    ExpectCases({
        {".*", "\xC3", false},
        {".*", "a\xFF", false},
        {".*", "\x80", false},
        {".*", "\xED\xA0\x80", false},  // a surrogate
        {"[\\000-\\377]*", "\xC0\xAF", false},  // overlong '/'
    });
}

TEST(RegExCompile, FailureQuotesTheValueAndPcreReason) {
    EXPECT_KV_THROW(TestRegEx("(", "abc"), CKvException,
                    "Invalid Regular Expression: abc Error: 'missing closing parenthesis'");
    EXPECT_KV_THROW(TestRegEx("[a", ""), CKvException,
                    "Invalid Regular Expression:  Error: 'missing terminating ] for character class'");
    EXPECT_KV_THROW(TestRegEx("a{2,1}", "aa"), CKvException,
                    "Invalid Regular Expression: aa Error: 'numbers out of order in {} quantifier'");
    EXPECT_KV_THROW(TestRegEx("\xFF", "v"), CKvException,
                    "Invalid Regular Expression: v Error: 'UTF-8 error: illegal byte (0xfe or 0xff)'");
    EXPECT_KV_THROW(TestRegEx("[z-a]", "q"), CKvException,
                    "Invalid Regular Expression: q Error: 'range out of order in character class'");
}

TEST(RegExLimits, CatastrophicBacktrackingGivesUpAsNoMatch) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(TestRegEx("(a+)+$", std::string(30, 'a') + "b"));
    EXPECT_FALSE(TestRegEx("(a+)+$", std::string(5000, 'a') + "b"));
    EXPECT_FALSE(TestRegEx("(a|aa)*c", std::string(5000, 'a')));
    EXPECT_FALSE(TestRegEx("((a*)*)*b", std::string(200, 'a')));
    const auto elapsed = std::chrono::steady_clock::now() - start;
    EXPECT_LT(elapsed, std::chrono::seconds(5));
    // The same patterns still decide ordinary values.
    EXPECT_TRUE(TestRegEx("(a+)+$", std::string(5000, 'a')));
    EXPECT_TRUE(TestRegEx("(a|aa)*c", "aaac"));
}

TEST(RegExLimits, LongValuesThroughRepeatedGroups) {
    // \c* repeats a group, one backtracking level per character.
    EXPECT_TRUE(TestRegEx("\\i\\c*", "a" + std::string(100000, 'b')));
    EXPECT_FALSE(TestRegEx("\\i\\c*", "a" + std::string(100000, 'b') + " "));
    EXPECT_TRUE(TestRegEx("[a-z]*", std::string(1000000, 'q')));
}
