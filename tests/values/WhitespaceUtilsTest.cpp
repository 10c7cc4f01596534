// WhitespaceUtilsTest.cpp - the preserve, replace and collapse whitespace rules.
#include "kvxml/values/WhitespaceUtils.h"

#include <gtest/gtest.h>

#include <string>

#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using Rule = CWhitespaceUtils::WhitespaceRule;

TEST(WhitespaceUtilsIsWhiteSpace, ExactlyTabLineFeedCarriageReturnAndSpace) {
    for (int c = -128; c < 128; ++c) {
        const bool expected = c == 9 || c == 10 || c == 13 || c == 32;
        EXPECT_EQ(CWhitespaceUtils::IsWhiteSpace(static_cast<char>(c)), expected) << c;
    }
}

TEST(WhitespaceUtilsPreserve, NormalisesLineEndsOnly) {
    EXPECT_EQ(CWhitespaceUtils::Preserve("a\r\nb\rc"), "a\nb\nc");
    EXPECT_EQ(CWhitespaceUtils::Preserve("\r\r\n\n\r"), "\n\n\n\n");
    EXPECT_EQ(CWhitespaceUtils::Preserve("\n\r"), "\n\n");
    EXPECT_EQ(CWhitespaceUtils::Preserve(" \t a \r\n"), " \t a \n");
    EXPECT_EQ(CWhitespaceUtils::Preserve("\v\f x"), "\v\f x");
    EXPECT_EQ(CWhitespaceUtils::Preserve(""), "");
}

TEST(WhitespaceUtilsPreserve, NulEndsTheCopyOnlyWhenThereIsACarriageReturn) {
    EXPECT_EQ(CWhitespaceUtils::Preserve(std::string("a\0b\n", 4)), std::string("a\0b\n", 4));
    EXPECT_EQ(CWhitespaceUtils::Preserve(std::string("a\r\0b", 4)), "a\n");
    EXPECT_EQ(CWhitespaceUtils::Preserve(std::string("a\0b\r", 4)), "a");
}

TEST(WhitespaceUtilsPreserve, PointerAndLength) {
    const char text[] = "x\r\ny\rz";
    EXPECT_EQ(CWhitespaceUtils::Preserve(text, 6), "x\ny\nz");
    EXPECT_EQ(CWhitespaceUtils::Preserve(text, 2), "x\n");  // the CR LF pair is cut at the CR
    EXPECT_EQ(CWhitespaceUtils::Preserve(text, 1), "x");
    EXPECT_EQ(CWhitespaceUtils::Preserve(text, 0), "");
    EXPECT_EQ(CWhitespaceUtils::Preserve(text, -3), "");
    EXPECT_EQ(CWhitespaceUtils::Preserve(nullptr, 4), "");
}

TEST(WhitespaceUtilsReplace, EachWhitespaceBecomesOneSpace) {
    EXPECT_EQ(CWhitespaceUtils::Replace("a\r\nb"), "a b");
    EXPECT_EQ(CWhitespaceUtils::Replace("\ta\nb\rc "), " a b c ");
    EXPECT_EQ(CWhitespaceUtils::Replace("\r\r\n"), "  ");
    EXPECT_EQ(CWhitespaceUtils::Replace("\n\r"), "  ");
    EXPECT_EQ(CWhitespaceUtils::Replace("\r\n\r\n"), "  ");
    EXPECT_EQ(CWhitespaceUtils::Replace(std::string("\v\f\0 ", 4)), std::string("\v\f\0 ", 4));
    EXPECT_EQ(CWhitespaceUtils::Replace(""), "");
}

TEST(WhitespaceUtilsCollapse, TrimsAndJoinsRuns) {
    EXPECT_EQ(CWhitespaceUtils::Collapse("\t a \r\n b  "), "a b");
    EXPECT_EQ(CWhitespaceUtils::Collapse("a\t\t\n\r b\nc"), "a b c");
    EXPECT_EQ(CWhitespaceUtils::Collapse(" \t\r\n"), "");
    EXPECT_EQ(CWhitespaceUtils::Collapse(""), "");
    EXPECT_EQ(CWhitespaceUtils::Collapse("x"), "x");
    EXPECT_EQ(CWhitespaceUtils::Collapse("\vx\f"), "\vx\f");
    EXPECT_EQ(CWhitespaceUtils::Collapse(std::string(" \0 a ", 5)), std::string("\0 a", 3));
}

TEST(WhitespaceUtilsApplyRule, DispatchesByRule) {
    const std::string text = " a\r\n\tb ";
    EXPECT_EQ(CWhitespaceUtils::ApplyRule(Rule::None, text), text);
    EXPECT_EQ(CWhitespaceUtils::ApplyRule(Rule::Preserve, text), " a\n\tb ");
    EXPECT_EQ(CWhitespaceUtils::ApplyRule(Rule::Replace, text), " a  b ");
    EXPECT_EQ(CWhitespaceUtils::ApplyRule(Rule::Collapse, text), "a b");
    EXPECT_EQ(static_cast<int32_t>(Rule::None), 0);
    EXPECT_EQ(static_cast<int32_t>(Rule::Collapse), 3);
}

TEST(WhitespaceUtilsApplyRule, UnknownRuleThrows) {
    for (int32_t bad : {-1, 4, 1000}) {
        EXPECT_KV_THROW(CWhitespaceUtils::ApplyRule(static_cast<Rule>(bad), "a"), CKvException,
                        "Unknown WhitespaceRule");
    }
}
