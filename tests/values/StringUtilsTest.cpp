// StringUtilsTest.cpp - padding, trimming, upper-casing and find-and-replace helpers.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>

#include "kvxml/values/StringUtils.h"

using namespace KvXmlLib10;

TEST(StringUtilsPadZero, PadsToWidthLikePrintf) {
    const struct {
        int value, width;
        const char* text;
    } cases[] = {{5, 2, "05"},     {0, 4, "0000"}, {44, 4, "0044"}, {12345, 2, "12345"},
                 {-5, 3, "-05"},   {7, 0, "7"},    {-2147483647 - 1, 1, "-2147483648"}};
    for (const auto& c : cases) EXPECT_EQ(PadZero(c.value, static_cast<unsigned char>(c.width)), c.text);
    EXPECT_EQ(PadZero(1, 200).size(), 200u);
}

TEST(StringUtilsTrimTrainingZeros, KeepsTheFirstCharacter) {
    for (const auto& [text, trimmed] : {std::pair<const char*, const char*>{"120", "12"}, {"000", "0"},
                                        {"100500", "1005"}, {"5", "5"}, {"", ""}})
        EXPECT_EQ(TrimTrainingZeros(text), trimmed);
}

TEST(StringUtilsStrupr, UpperCasesInPlaceAndPassesNullThrough) {
    char text[] = "abc-Xyz_09\xe9";
    EXPECT_EQ(strupr(text), text);
    EXPECT_STREQ(text, "ABC-XYZ_09\xe9");
    EXPECT_EQ(strupr(nullptr), nullptr);
}

TEST(StringUtilsFindReplace, ReplacesEveryOccurrenceRescanningFromTheStart) {
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
}
