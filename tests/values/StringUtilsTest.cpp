// StringUtilsTest.cpp - padding, trimming, upper-casing and find-and-replace helpers.
#include <gtest/gtest.h>

#include <string>

#include "kvxml/values/StringUtils.h"

using namespace KvXmlLib10;

TEST(StringUtilsPadZero, PadsToWidthLikePrintf) {
    EXPECT_EQ(PadZero(5, 2), "05");
    EXPECT_EQ(PadZero(0, 4), "0000");
    EXPECT_EQ(PadZero(44, 4), "0044");
    EXPECT_EQ(PadZero(12345, 2), "12345");
    EXPECT_EQ(PadZero(-5, 3), "-05");
    EXPECT_EQ(PadZero(7, 0), "7");
    EXPECT_EQ(PadZero(-2147483647 - 1, 1), "-2147483648");
    EXPECT_EQ(PadZero(1, 200).size(), 200u);
}

TEST(StringUtilsTrimTrainingZeros, KeepsTheFirstCharacter) {
    EXPECT_EQ(TrimTrainingZeros("120"), "12");
    EXPECT_EQ(TrimTrainingZeros("000"), "0");
    EXPECT_EQ(TrimTrainingZeros("100500"), "1005");
    EXPECT_EQ(TrimTrainingZeros("5"), "5");
    EXPECT_EQ(TrimTrainingZeros(""), "");
}

TEST(StringUtilsStrupr, UpperCasesInPlaceAndPassesNullThrough) {
    char text[] = "abc-Xyz_09\xe9";
    EXPECT_EQ(strupr(text), text);
    EXPECT_STREQ(text, "ABC-XYZ_09\xe9");
    EXPECT_EQ(strupr(nullptr), nullptr);
}

TEST(StringUtilsFindReplace, ReplacesEveryOccurrenceRescanningFromTheStart) {
    std::string s = "a-b-c";
    FindReplace(s, "-", "+");
    EXPECT_EQ(s, "a+b+c");
    // After "aab" -> "ab" the search restarts at 0 and finds the new "ab".
    s = "aab";
    FindReplace(s, "ab", "b");
    EXPECT_EQ(s, "b");
    s = "&amp;";
    FindReplace(s, "&amp;", "&");
    EXPECT_EQ(s, "&");
    s = "unchanged";
    FindReplace(s, "", "x");
    EXPECT_EQ(s, "unchanged");

    std::wstring w = L"x\u00e9y\u00e9";
    FindReplace(w, L"\u00e9", L"e");
    EXPECT_EQ(w, L"xeye");
}
