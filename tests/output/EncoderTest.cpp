// EncoderTest.cpp - local code page conversions under the "C" and a UTF-8 locale, and ASCIIOnly.
#include "support/Fixtures.h"
#include "output/detail/PlainAscii.h"

using namespace KvXmlTest;
using namespace KvXmlLib10;

namespace {
const std::string kUtf8Sample = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z";  // a é € U+1F600 z
const std::wstring kWideSample = L"a\u00e9\u20ac\U0001F600z";

std::string ToUtf8(const std::string& local) { return AsString(CEncoder::LocalCodePageToUtf8Binary(local)); }
std::wstring ToWide(const std::string& local) { return Wide(CEncoder::LocalCodePageToUnicodeBinary(local)); }
}  // namespace

TEST(EncoderLocalToUtf8, Utf8LocaleKeepsCharactersAndReplacesBadBytesAcrossChunks) {
    ScopedLocale locale("C.UTF-8");
    ASSERT_TRUE(locale.Active());
    EXPECT_EQ(ToUtf8(kUtf8Sample), kUtf8Sample);
    // A stray continuation byte, an impossible byte, a surrogate and a
    // sequence cut short at the end: one '?' per byte, decoding resumes.
    EXPECT_EQ(ToUtf8("a\x80" "b\xFF" "c"), "a?b?c");
    EXPECT_EQ(ToUtf8("\xED\xA0\x80"), "???");
    EXPECT_EQ(ToUtf8("ok\xE2\x82"), "ok??");
    EXPECT_EQ(ToUtf8(std::string("\xC3\xA9\0\xC3\xA9", 5)), std::string("\xC3\xA9\0\xC3\xA9", 5));
    std::string text;
    for (int i = 0; i < 3000; ++i) text += kUtf8Sample;
    EXPECT_EQ(ToUtf8(text), text);
    const std::wstring wide = ToWide(text);
    ASSERT_EQ(wide.size(), 3000u * 5);
    EXPECT_EQ(wide.substr(wide.size() - 5), kWideSample);
}

TEST(EncoderPlainAscii, RunEndsAtTheFirstHighOrShiftByteWherever) {
    for (const char stop : {'\x80', '\xFF', '\x1B', '\x0E', '\x0F'}) {
        for (const size_t at : {0, 7, 8, 15, 16, 17, 31, 40, 47}) {
            std::string text(48, 'a');
            text[at] = stop;
            EXPECT_EQ(detail::PlainAsciiRun(reinterpret_cast<const unsigned char*>(text.data()), text.size()), at)
                << int(static_cast<unsigned char>(stop)) << " at " << at;
        }
    }
    const std::string plain = "\x7F\x0D\x10\x1A\x1C\x01 any ASCII but the shift bytes ~";
    EXPECT_TRUE(detail::IsPlainAsciiText(plain.data(), plain.size()));
}

TEST(EncoderLocalToUnicode, FourByteUnitsInMachineOrderAndTheCLocaleReplacesHighBytes) {
    {
        ScopedLocale locale("C.UTF-8");
        ASSERT_TRUE(locale.Active());
        EXPECT_EQ(CEncoder::LocalCodePageToUnicodeBinary(kUtf8Sample).GetLength(), 20u);
        EXPECT_EQ(ToWide(kUtf8Sample), kWideSample);
        EXPECT_EQ(ToWide("\xFF" "a"), L"?a");
    }
    // The "C" locale replaces every byte above 0x7F, in all three directions; NULs pass.
    ScopedLocale locale("C");
    ASSERT_TRUE(locale.Active());
    EXPECT_EQ(ToWide("a\xE9"), L"a?");
    EXPECT_EQ(ToWide(std::string("a\0b", 3)), std::wstring(L"a\0b", 3));
    EXPECT_EQ(ToUtf8("plain <ascii>"), "plain <ascii>");
    EXPECT_EQ(ToUtf8("a\xE9" "b\x80\xFF"), "a?b??");
    EXPECT_EQ(ToUtf8(std::string("x\0y", 3)), std::string("x\0y", 3));
    EXPECT_EQ(CEncoder::LocalCodePageToUtf8Binary(std::string()).GetLength(), 0u);
    EXPECT_EQ(CEncoder::Utf8ToLocalCodePage(kUtf8Sample.data(), kUtf8Sample.size()), "a???z");
    EXPECT_EQ(CEncoder::Utf8ToLocalCodePage("plain\0text", 10), std::string("plain\0text", 10));
}

TEST(EncoderAsciiOnly, PassesBytesThroughUnchanged) {
    ScopedLocale locale("C.UTF-8");
    ASSERT_TRUE(locale.Active());
    ASCIIOnly(true);
    const std::string raw("a\xE9\xFF\x80z");
    EXPECT_EQ(ToUtf8(raw), raw);
    EXPECT_EQ(CEncoder::Utf8ToLocalCodePage(raw.data(), raw.size()), raw);
    EXPECT_EQ(ToWide(raw), std::wstring(L"a\u00e9\u00ff\u0080z"));
    ASCIIOnly(false);
    EXPECT_EQ(ToUtf8(raw), "a???z");
}

TEST(EncoderUnicodeToUtf8, EncodesAndReplacesUnencodable) {
    EXPECT_EQ(AsString(CEncoder::UnicodeToUtf8Binary(kWideSample.data(), kWideSample.size())), kUtf8Sample);
    const wchar_t bad[] = {L'x', static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000), L'\u00e9'};
    EXPECT_EQ(AsString(CEncoder::UnicodeToUtf8Binary(bad, 4)), "x??\xC3\xA9");
    EXPECT_EQ(CEncoder::UnicodeToUtf8Binary(nullptr, 0).GetLength(), 0u);
}

TEST(EncoderUtf8ToLocal, Utf8LocaleRoundTrips) {
    ScopedLocale locale("C.UTF-8");
    ASSERT_TRUE(locale.Active());
    EXPECT_EQ(CEncoder::Utf8ToLocalCodePage(kUtf8Sample.data(), kUtf8Sample.size()), kUtf8Sample);
    // Malformed input: an overlong NUL, a lone lead byte, a cut sequence.
    EXPECT_EQ(CEncoder::Utf8ToLocalCodePage("\xC0\x80", 2), "??");
    EXPECT_EQ(CEncoder::Utf8ToLocalCodePage("a\xC3" "b", 3), "a?b");
    EXPECT_EQ(CEncoder::Utf8ToLocalCodePage("\xC3\xA9\xE2\x82", 4), "\xC3\xA9??");
    // Long input: characters of 2 and 4 bytes straddle the internal pieces.
    for (const char* unit : {"\xC3\xA9", "x\xF0\x9F\x98\x80", "ab\xE2\x82\xAC"}) {
        std::string text;
        while (text.size() < 20000) text += unit;
        EXPECT_EQ(CEncoder::Utf8ToLocalCodePage(text.data(), text.size()), text) << unit;
    }
    std::string reused = "previous content";
    CEncoder::Utf8ToLocalCodePage(reinterpret_cast<const unsigned char*>("new"), 3, reused);
    EXPECT_EQ(reused, "new");
    CEncoder::Utf8ToLocalCodePage("", 0, reused);
    EXPECT_EQ(reused, "");
}

