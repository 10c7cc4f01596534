// StringUtilsTest.cpp - padding, trimming, upper-casing, find-and-replace and the whitespace rules.
#include <array>

#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using Rule = CWhitespaceUtils::WhitespaceRule;
using W = CWhitespaceUtils;

TEST(StringUtilsDigits, PadZeroPadsLikePrintfAndTrimmingKeepsTheFirstCharacter) {
    const struct {
        int value, width;
        const char* text;
    } cases[] = {{5, 2, "05"},     {0, 4, "0000"}, {44, 4, "0044"}, {12345, 2, "12345"},
                 {-5, 3, "-05"},   {7, 0, "7"},    {-2147483647 - 1, 1, "-2147483648"}};
    for (const auto& c : cases) EXPECT_EQ(PadZero(c.value, static_cast<unsigned char>(c.width)), c.text);
    EXPECT_EQ(PadZero(1, 200).size(), 200u);
    for (const auto& [text, trimmed] : {std::pair<const char*, const char*>{"120", "12"}, {"000", "0"},
                                        {"100500", "1005"}, {"5", "5"}, {"", ""}})
        EXPECT_EQ(TrimTrainingZeros(text), trimmed);
}

TEST(StringUtilsText, FindReplaceRescansFromTheStartAndStruprUpperCasesInPlace) {
    // After "aab" -> "ab" the search restarts at 0 and finds the new "ab".
    for (auto [s, find, with, result] : {std::array<std::string, 4>{"a-b-c", "-", "+", "a+b+c"},
                                         {"aab", "ab", "b", "b"}, {"&amp;", "&amp;", "&", "&"},
                                         {"unchanged", "", "x", "unchanged"}}) {
        FindReplace(s, find, with);
        EXPECT_EQ(s, result);
    }
    std::wstring w = L"x\u00e9y\u00e9";
    FindReplace(w, L"\u00e9", L"e");
    EXPECT_EQ(w, L"xeye");
    char text[] = "abc-Xyz_09\xe9";
    EXPECT_EQ(strupr(text), text);
    EXPECT_STREQ(text, "ABC-XYZ_09\xe9");
    EXPECT_EQ(strupr(nullptr), nullptr);
}

TEST(WhitespaceUtilsRules, ExactlyTabLineFeedCarriageReturnAndSpacePreservedReplacedOrCollapsed) {
    const struct { std::string text, preserved, replaced, collapsed; } cases[] = {
        {"a\r\nb\rc", "a\nb\nc", "a b c", "a b c"}, {"\t a \r\n b  ", "\t a \n b  ", "  a   b  ", "a b"},
        {"\r\r\n\n\r", "\n\n\n\n", "    ", ""}, {"\n\r", "\n\n", "  ", ""}, {"\r\n\r\n", "\n\n", "  ", ""},
        {"a\t\t\n\r b\nc", "a\t\t\n\n b\nc", "a     b c", "a b c"}, {"", "", "", ""}, {"x", "x", "x", "x"},
        {"\v\fx ", "\v\fx ", "\v\fx ", "\v\fx"},  // only TAB, LF, CR and space count
        // A NUL is an ordinary character, except that it ends Preserve's copy after a CR.
        {std::string(" \0 a\n", 5), std::string(" \0 a\n", 5), std::string(" \0 a ", 5), std::string("\0 a", 3)},
        {std::string("a\r\0b", 4), "a\n", std::string("a \0b", 4), std::string("a \0b", 4)},
        {std::string("a\0b\r", 4), "a", std::string("a\0b ", 4), std::string("a\0b", 3)},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(W::Preserve(c.text), c.preserved) << "[" << c.text << "]";
        EXPECT_EQ(W::Replace(c.text), c.replaced) << "[" << c.text << "]";
        EXPECT_EQ(W::Collapse(c.text), c.collapsed) << "[" << c.text << "]";
        EXPECT_EQ(W::ApplyRule(Rule::None, c.text), c.text);
        EXPECT_EQ(W::ApplyRule(Rule::Preserve, c.text), c.preserved);
        EXPECT_EQ(W::ApplyRule(Rule::Replace, c.text), c.replaced);
        EXPECT_EQ(W::ApplyRule(Rule::Collapse, c.text), c.collapsed);
    }
    for (int32_t bad : {-1, 4, 1000})
        EXPECT_KV_THROW(W::ApplyRule(static_cast<Rule>(bad), "a"), CKvException, "Unknown WhitespaceRule");
    for (int c = -128; c < 128; ++c)
        EXPECT_EQ(W::IsWhiteSpace(static_cast<char>(c)), c == 9 || c == 10 || c == 13 || c == 32) << c;
    const char text[] = "x\r\ny\rz";
    EXPECT_EQ(W::Preserve(text, 6), "x\ny\nz");
    EXPECT_EQ(W::Preserve(text, 2), "x\n");  // the CR LF pair is cut at the CR
    EXPECT_EQ(W::Preserve(text, 0), "");
    EXPECT_EQ(W::Preserve(text, -3), "");
    EXPECT_EQ(W::Preserve(nullptr, 4), "");
}

