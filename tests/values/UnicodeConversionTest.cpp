// UnicodeConversionTest.cpp - strict UTF-8 / UTF-16 / UTF-32 transcoding.
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

using Bytes = std::vector<unsigned char>;
using Units = std::vector<unsigned short>;

int Utf8To16(const Bytes& in, unsigned short* out, size_t room) {
    return ConvertUTF8toUTF16(in.data(), in.data() + in.size(), out, out ? out + room : nullptr);
}

int Utf8To32(const Bytes& in, unsigned int* out, size_t room) {
    return ConvertUTF8toUTF32(in.data(), in.data() + in.size(), out, out ? out + room : nullptr);
}

}  // namespace

TEST(UnicodeUtf8Decode, DecodesBoundaryCharactersAndBack) {
    const struct { Bytes utf8; unsigned int codePoint; Units utf16; } cases[] = {
        {{0x41}, 0x41, {0x41}},                    {{0x7F}, 0x7F, {0x7F}},
        {{0xC2, 0x80}, 0x80, {0x80}},              {{0xDF, 0xBF}, 0x7FF, {0x7FF}},
        {{0xE0, 0xA0, 0x80}, 0x800, {0x800}},      {{0xED, 0x9F, 0xBF}, 0xD7FF, {0xD7FF}},
        {{0xEE, 0x80, 0x80}, 0xE000, {0xE000}},    {{0xEF, 0xBF, 0xBF}, 0xFFFF, {0xFFFF}},
        {{0xF0, 0x90, 0x80, 0x80}, 0x10000, {0xD800, 0xDC00}}, {{0xF0, 0x9F, 0x98, 0x80}, 0x1F600, {0xD83D, 0xDE00}},
        {{0xF4, 0x8F, 0xBF, 0xBF}, 0x10FFFF, {0xDBFF, 0xDFFF}},
    };
    for (const auto& c : cases) {
        unsigned int utf32 = 0;
        EXPECT_EQ(Utf8To32(c.utf8, &utf32, 1), 1);
        EXPECT_EQ(utf32, c.codePoint);
        EXPECT_EQ(Utf8To16(c.utf8, nullptr, 0), static_cast<int>(c.utf16.size()));
        unsigned short utf16[2] = {0, 0};
        ASSERT_EQ(Utf8To16(c.utf8, utf16, 2), static_cast<int>(c.utf16.size()));
        EXPECT_EQ(Units(utf16, utf16 + c.utf16.size()), c.utf16) << std::hex << c.codePoint;
        EXPECT_TRUE(IsLegalUTF8(c.utf8.data(), static_cast<int>(c.utf8.size())));
        // And back again, counting first.
        EXPECT_EQ(ConvertUTF32toUTF8(&utf32, &utf32 + 1, nullptr, nullptr), static_cast<int>(c.utf8.size()));
        unsigned char back[4];
        ASSERT_EQ(ConvertUTF32toUTF8(&utf32, &utf32 + 1, back, back + 4), static_cast<int>(c.utf8.size()));
        EXPECT_EQ(Bytes(back, back + c.utf8.size()), c.utf8);
        ASSERT_EQ(ConvertUTF32toUTF16(&utf32, &utf32 + 1, utf16, utf16 + 2), static_cast<int>(c.utf16.size()));
        EXPECT_EQ(Units(utf16, utf16 + c.utf16.size()), c.utf16);
    }
}

TEST(UnicodeUtf8Decode, RefusesIllFormedInput) {
    const Bytes bad[] = {
        {0xC0, 0x80}, {0xC1, 0xBF}, {0xE0, 0x80, 0x80}, {0xF0, 0x80, 0x80, 0x80},  // overlong forms
        {0xED, 0xA0, 0x80}, {0xED, 0xBF, 0xBF},                                     // surrogates
        {0xF4, 0x90, 0x80, 0x80}, {0xF5, 0x80, 0x80, 0x80},                         // above U+10FFFF
        {0xF8, 0x88, 0x80, 0x80, 0x80}, {0xFC, 0x84, 0x80, 0x80, 0x80, 0x80}, {0xFE}, {0xFF},
        {0x80}, {0xC2, 0x41},                                                       // lone or missing continuation
        {0xE2, 0x82}, {0x41, 0xF0, 0x9F, 0x98},                                     // cut short at the end
    };
    unsigned short utf16[8];
    unsigned int utf32[8];
    for (const Bytes& b : bad) {
        EXPECT_EQ(Utf8To16(b, nullptr, 0), 0) << int(b[0]);
        EXPECT_EQ(Utf8To16(b, utf16, 8), 0) << int(b[0]);
        EXPECT_EQ(Utf8To32(b, nullptr, 0), 0) << int(b[0]);
        EXPECT_EQ(Utf8To32(b, utf32, 8), 0) << int(b[0]);
    }
}

TEST(UnicodeConvert, EmptySourceOrSmallTargetGivesZero) {
    const unsigned char text[] = "abc";
    unsigned short utf16[4];
    EXPECT_EQ(ConvertUTF8toUTF16(text, text, nullptr, nullptr), 0);
    EXPECT_EQ(ConvertUTF8toUTF16(text, text, utf16, utf16 + 4), 0);
    EXPECT_EQ(ConvertUTF8toUTF16(nullptr, nullptr, utf16, utf16 + 4), 0);
    EXPECT_EQ(ConvertUTF8toUTF16(text, text + 3, utf16, utf16 + 2), 0);
    EXPECT_EQ(ConvertUTF8toUTF16(text, text + 3, utf16, utf16 + 3), 3);
    EXPECT_EQ(Utf8To16({0xF0, 0x9F, 0x98, 0x80}, utf16, 1), 0);  // a pair needs both units
    unsigned char utf8[3];
    const unsigned int grin = 0x1F600;
    EXPECT_EQ(ConvertUTF32toUTF8(&grin, &grin + 1, utf8, utf8 + 3), 0);
}

TEST(UnicodeWideSources, RefuseSurrogatesOutOfRangeAndUnpairedUnits) {
    for (unsigned int bad : {0xD800u, 0xDBFFu, 0xDC00u, 0xDFFFu, 0x110000u, 0xFFFFFFFFu}) {
        const unsigned int text[] = {0x41, bad};
        EXPECT_EQ(ConvertUTF32toUTF8(text, text + 2, nullptr, nullptr), 0) << bad;
        EXPECT_EQ(ConvertUTF32toUTF16(text, text + 2, nullptr, nullptr), 0) << bad;
    }
    for (const Units& units : {Units{0x41, 0xD83D}, Units{0xDE00}, Units{0xD83D, 0x41}, Units{0xDE00, 0xD83D},
                               Units{0xD83D, 0xD83D, 0xDE00}}) {
        EXPECT_EQ(ConvertUTF16toUTF8(units.data(), units.data() + units.size(), nullptr, nullptr), 0);
        EXPECT_EQ(ConvertUTF16toUTF32(units.data(), units.data() + units.size(), nullptr, nullptr), 0);
    }
    const unsigned short pair[] = {0xD83D, 0xDE00, 0xE9};
    unsigned char utf8[6];
    ASSERT_EQ(ConvertUTF16toUTF8(pair, pair + 3, utf8, utf8 + 6), 6);
    EXPECT_EQ(Bytes(utf8, utf8 + 6), (Bytes{0xF0, 0x9F, 0x98, 0x80, 0xC3, 0xA9}));
    unsigned int utf32[2];
    ASSERT_EQ(ConvertUTF16toUTF32(pair, pair + 3, utf32, utf32 + 2), 2);
    EXPECT_EQ(std::vector<unsigned int>(utf32, utf32 + 2), (std::vector<unsigned int>{0x1F600, 0xE9}));
}

TEST(UnicodeLegality, ChecksOneSequenceOfTheGivenLength) {
    const unsigned char e_acute[] = {0xC3, 0xA9, 0x41};
    EXPECT_TRUE(IsLegalUTF8(e_acute, 2));
    EXPECT_FALSE(IsLegalUTF8(e_acute, 1));
    EXPECT_FALSE(IsLegalUTF8(e_acute, 3));
    EXPECT_FALSE(IsLegalUTF8(e_acute, 0));
    EXPECT_TRUE(IsLegalUTF8Sequence(e_acute, e_acute + 2));
    EXPECT_FALSE(IsLegalUTF8Sequence(e_acute, e_acute + 1));
    EXPECT_TRUE(IsLegalUTF8Sequence(e_acute + 2, e_acute + 3));
    EXPECT_FALSE(IsLegalUTF8Sequence(e_acute, e_acute));
}

TEST(UnicodeWide, ConvertsWideTextToUtf8AndToUnalignedUtf16Bytes) {
    const wchar_t wide[] = L"a\u00E9\u20AC\U0001F600";
    const Bytes utf8 = {'a', 0xC3, 0xA9, 0xE2, 0x82, 0xAC, 0xF0, 0x9F, 0x98, 0x80};
    EXPECT_EQ(UnicodeToUTF8(wide, 4, nullptr, 0), 10);
    unsigned char out[10];
    ASSERT_EQ(UnicodeToUTF8(wide, 4, out, 10), 10);
    EXPECT_EQ(Bytes(out, out + 10), utf8);
    EXPECT_EQ(UnicodeToUTF8(wide, 4, out, 9), 0);
    wchar_t back[4];
    EXPECT_EQ(UTF8ToUnicode(utf8.data(), 10, nullptr, 0), 4);
    ASSERT_EQ(UTF8ToUnicode(utf8.data(), 10, back, 4), 4);
    EXPECT_EQ(std::wstring(back, 4), std::wstring(wide, 4));
    const wchar_t negative[] = {L'a', static_cast<wchar_t>(-1)};
    EXPECT_EQ(UnicodeToUTF8(negative, 2, nullptr, 0), 0);

    // The UTF-16 side is bytes in machine order, here one byte off alignment.
    const wchar_t pair[] = L"a\U0001F600";
    unsigned char buffer[8];
    unsigned char* bytes = buffer + 1;
    EXPECT_EQ(UnicodeToUTF16(pair, 2, nullptr, 0), 6);
    ASSERT_EQ(UnicodeToUTF16(pair, 2, bytes, 7), 6);
    EXPECT_EQ(UnicodeToUTF16(pair, 2, bytes, 5), 0);
    unsigned short units[3];
    std::memcpy(units, bytes, 6);
    EXPECT_EQ(Units(units, units + 3), (Units{0x61, 0xD83D, 0xDE00}));
    ASSERT_EQ(UTF16ToUnicode(bytes, 6, back, 2), 2);
    EXPECT_EQ(std::wstring(back, 2), std::wstring(pair, 2));
    EXPECT_EQ(UTF16ToUnicode(bytes, 5, nullptr, 0), 0);
    EXPECT_EQ(UTF16ToUnicode(bytes, 4, nullptr, 0), 0);  // ends inside the pair
}

TEST(UnicodeAsciiCheck, FindsAnyNonAsciiCharacter) {
    EXPECT_FALSE(DoesUTF8StrContainAnyCharsLargerThanOneByte(reinterpret_cast<const unsigned char*>("abc"), 3));
    const unsigned char accent[] = "a\xC3\xA9";
    EXPECT_TRUE(DoesUTF8StrContainAnyCharsLargerThanOneByte(accent, 3));
    EXPECT_FALSE(DoesUTF8StrContainAnyCharsLargerThanOneByte(accent, 1));
    for (size_t at = 0; at < 40; ++at) {
        std::string text(40, 'x');
        text[at] = static_cast<char>(0x80);
        const auto* p = reinterpret_cast<const unsigned char*>(text.data());
        EXPECT_TRUE(DoesUTF8StrContainAnyCharsLargerThanOneByte(p, 40)) << at;
        EXPECT_FALSE(DoesUTF8StrContainAnyCharsLargerThanOneByte(p, static_cast<uint32_t>(at))) << at;
    }
    EXPECT_FALSE(DoesUnicodeStrContainAnyUTF8CharsLargerThanOneByte(L"abc", 3));
    EXPECT_TRUE(DoesUnicodeStrContainAnyUTF8CharsLargerThanOneByte(L"ab\u00E9", 3));
    EXPECT_TRUE(DoesUnicodeStrContainAnyUTF8CharsLargerThanOneByte(L"\u0080bc", 3));
    EXPECT_FALSE(DoesUnicodeStrContainAnyUTF8CharsLargerThanOneByte(L"ab\u00E9", 2));
    EXPECT_FALSE(DoesUnicodeStrContainAnyUTF8CharsLargerThanOneByte(L"\u00E9", 0));
    const wchar_t negative[] = {static_cast<wchar_t>(-5)};
    EXPECT_TRUE(DoesUnicodeStrContainAnyUTF8CharsLargerThanOneByte(negative, 1));
}
