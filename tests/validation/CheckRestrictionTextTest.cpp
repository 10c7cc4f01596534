// CheckRestrictionTextTest.cpp - string and binary facets, booleans, and the dispatch by item type.
#include <gtest/gtest.h>

#include <string>

#include "kvxml/core/XmlObjectHelper.h"
#include "kvxml/validation/PrimitiveRestrictions.h"
#include "kvxml/values/Conversions.h"
#include "kvxml/values/Variant.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using Rule = CWhitespaceUtils::WhitespaceRule;
using H = CXmlObjectHelper;

namespace {

CPrimitiveRestrictions Lengths(int32_t minLength, int32_t maxLength, int32_t length, const char* pattern = nullptr) {
    return CPrimitiveRestrictions(pattern, minLength, maxLength, nullptr, nullptr, nullptr, nullptr, length);
}

CBinaryData Bytes(std::initializer_list<unsigned char> bytes) {
    std::string raw(bytes.begin(), bytes.end());
    return CBinaryData(reinterpret_cast<unsigned char*>(raw.data()), static_cast<uint32_t>(raw.size()), false);
}

}  // namespace

TEST(CheckRestrictionString, LengthFacetsInOrder) {
    EXPECT_KV_THROW(H::CheckRestrictionForstring("s", "abcd", Lengths(2, 3, -1)), CKvException,
                    "Invalid Value for s [abcd]");
    EXPECT_NO_THROW(H::CheckRestrictionForstring("s", "abcd", Lengths(-1, -1, 4)));
    EXPECT_KV_THROW(H::CheckRestrictionForstring("s", "abcd", Lengths(-1, -1, 3)), CKvException,
                    "Invalid Value for s [abcd]");
    EXPECT_KV_THROW(H::CheckRestrictionForstring("s", "a", Lengths(2, -1, -1)), CKvException,
                    "Invalid Value for s [a]");
    EXPECT_NO_THROW(H::CheckRestrictionForstring("s", "", Lengths(0, 0, 0)));
    EXPECT_NO_THROW(H::CheckRestrictionForstring("s", "ab", Lengths(2, 2, -1)));
    // Length facets come before the pattern: the broken pattern is never compiled.
    EXPECT_KV_THROW(H::CheckRestrictionForstring("s", "abc", Lengths(-1, 1, -1, "(")), CKvException,
                    "Invalid Value for s [abc]");
}

TEST(CheckRestrictionString, LengthCountsBytes) {
    const std::string eAcute = "\xC3\xA9";  // one character, two bytes
    EXPECT_NO_THROW(H::CheckRestrictionForstring("s", eAcute, Lengths(-1, -1, 2)));
    EXPECT_KV_THROW(H::CheckRestrictionForstring("s", eAcute, Lengths(-1, 1, -1)), CKvException,
                    "Invalid Value for s [\xC3\xA9]");
}

TEST(CheckRestrictionString, PatternMatchesTheWholeValue) {
    const CPrimitiveRestrictions code = Lengths(-1, -1, -1, "[0-9]{3}-[A-Z]{2}");
    EXPECT_NO_THROW(H::CheckRestrictionForstring("code", "123-AB", code));
    EXPECT_KV_THROW(H::CheckRestrictionForstring("code", "123-ABC", code), CKvException,
                    "Invalid Value for code [123-ABC]");
    EXPECT_KV_THROW(H::CheckRestrictionForstring("code", "x123-AB", code), CKvException,
                    "Invalid Value for code [x123-AB]");
    EXPECT_NO_THROW(H::CheckRestrictionForstring("n", "a1:b", Lengths(-1, -1, -1, "\\i\\c*")));
    EXPECT_KV_THROW(H::CheckRestrictionForstring("n", "1a", Lengths(-1, -1, -1, "\\i\\c*")), CKvException,
                    "Invalid Value for n [1a]");
}

TEST(CheckRestrictionString, PatternThatDoesNotCompileWrapsTheRegexError) {
    EXPECT_KV_THROW(H::CheckRestrictionForstring("code", "abc", Lengths(-1, -1, -1, "(")), CKvException,
                    "Invalid Regular Expression: abc Error: 'missing closing parenthesis'\n"
                    "Invalid Value for code [abc]");
    try {
        H::CheckRestrictionForstring("code", "abc", Lengths(-1, -1, -1, "["));
        ADD_FAILURE() << "no exception";
    } catch (const CKvException& e) {
        EXPECT_EQ(e.GetInnerException(), nullptr);
    }
}

TEST(CheckRestrictionString, RangeFacetsDoNotApply) {
    const CPrimitiveRestrictions r(nullptr, -1, -1, "zz", "a", "zz", "a", -1);
    EXPECT_NO_THROW(H::CheckRestrictionForstring("s", "m", r));
}

TEST(CheckRestrictionBinary, LengthCountsBytesAndMessageShowsHex) {
    const CBinaryData three = Bytes({1, 2, 3});
    EXPECT_KV_THROW(H::CheckRestrictionForbase64Binary("blob", three, Lengths(-1, -1, 2)), CKvException,
                    "Invalid Value for blob [010203]");
    EXPECT_KV_THROW(H::CheckRestrictionForhexBinary("blob", three, Lengths(4, -1, -1)), CKvException,
                    "Invalid Value for blob [010203]");
    EXPECT_KV_THROW(H::CheckRestrictionForhexBinary("blob", Bytes({0xAB, 0xFF}), Lengths(-1, 1, -1)), CKvException,
                    "Invalid Value for blob [ABFF]");
    EXPECT_NO_THROW(H::CheckRestrictionForbase64Binary("blob", three, Lengths(3, 3, 3)));
    EXPECT_NO_THROW(H::CheckRestrictionForhexBinary("blob", CBinaryData(), Lengths(0, 0, 0)));
}

TEST(CheckRestrictionBinary, PatternAndRangeFacetsDoNotApply) {
    const CPrimitiveRestrictions r("(", -1, -1, "zz", "zz", "zz", "zz", -1);
    EXPECT_NO_THROW(H::CheckRestrictionForbase64Binary("b", Bytes({1}), r));
    EXPECT_NO_THROW(H::CheckRestrictionForhexBinary("b", Bytes({1}), r));
}

TEST(CheckRestrictionBoolean, AcceptsEveryValue) {
    const CPrimitiveRestrictions r("(", 5, 0, "zz", "zz", "zz", "zz", 9);
    EXPECT_NO_THROW(H::CheckRestrictionForboolean("b", true, r));
    EXPECT_NO_THROW(H::CheckRestrictionForboolean("b", false, r));
}

TEST(CheckRestrictionDispatch, ReadsTheVariantAsTheGivenType) {
    struct Case {
        ItemType type;
        const char* text;
        const char* failingMax;
        const char* shown;
    };
    const Case cases[] = {
        {i1, "-3", "-4", "-3"},
        {i2, "300", "299", "300"},
        {i4, "70000", "1", "70000"},
        {i8, "9000000000", "1", "9000000000"},
        {ui1, "200", "199", "200"},
        {ui2, "60000", "1", "60000"},
        {ui4, "4000000000", "1", "-294967296"},
        {ui8, "18446744073709551615", "1", "18446744073709551615"},
        {r4, "2.5", "2", "2.500000"},
        {r8, "-0.125", "-1", "-0.125000"},
        {duration, "P2D", "P1D", "P2D"},
        {yearMonth, "2001-05", "2000-05", "2001-05"},
        {monthDay, "--05-10", "--05-09", "--05-10"},
        {year, "2001", "2000", "2001"},
        {month, "--05", "--04", "5"},
        {day, "---10", "---09", "10"},
        {date, "2001-05-10", "2001-05-09", "2001-05-10"},
        {datetime, "2001-05-10T12:00:00Z", "2001-05-10T11:00:00Z", "2001-05-10T12:00:00Z"},
        {ItemType::time, "12:00:00Z", "11:00:00Z", "12:00:00Z"},
        {decimal, "1.25", "1.2", "1.25"},
        {integer, "123456789012345678901", "1", "123456789012345678901"},
    };
    for (const Case& c : cases) {
        KvVariant v;
        v.FromString(c.text, c.type, Rule::Collapse);
        const CPrimitiveRestrictions passing(nullptr, -1, -1, c.text, c.text, nullptr, nullptr, -1);
        EXPECT_NO_THROW(H::CheckRestriction("v", v, c.type, passing)) << c.text;
        const CPrimitiveRestrictions failing(nullptr, -1, -1, nullptr, c.failingMax, nullptr, nullptr, -1);
        EXPECT_KV_THROW(H::CheckRestriction("v", v, c.type, failing), CKvException,
                        std::string("Invalid Value for v [") + c.shown + "]");
    }
    KvVariant s;
    s.SetString("abcd");
    EXPECT_KV_THROW(H::CheckRestriction("s", s, string, Lengths(-1, 3, -1)), CKvException,
                    "Invalid Value for s [abcd]");
    KvVariant b;
    b.SetBase64Binary(Bytes({1, 2, 3}));
    EXPECT_KV_THROW(H::CheckRestriction("b", b, base64Binary, Lengths(-1, -1, 2)), CKvException,
                    "Invalid Value for b [010203]");
    b.SetHexBinary(Bytes({0x0F}));
    EXPECT_KV_THROW(H::CheckRestriction("b", b, hexBinary, Lengths(2, -1, -1)), CKvException,
                    "Invalid Value for b [0F]");
    KvVariant flag;
    flag.SetBoolean(true);
    EXPECT_NO_THROW(H::CheckRestriction("f", flag, boolean, Lengths(5, 0, 9, "(")));
}

TEST(CheckRestrictionDispatch, UnknownTypesNameTheValuesType) {
    KvVariant c;
    c.SetChar('x');
    EXPECT_KV_THROW(H::CheckRestriction("c", c, char_, CPrimitiveRestrictions()), CKvInvalidValueException,
                    "unknown type [char]");
    KvVariant n;
    n.SetI4(5);
    EXPECT_KV_THROW(H::CheckRestriction("n", n, Invalid, CPrimitiveRestrictions()), CKvInvalidValueException,
                    "unknown type [i4]");
    EXPECT_KV_THROW(H::CheckRestriction("n", n, static_cast<ItemType>(27), CPrimitiveRestrictions()),
                    CKvInvalidValueException, "unknown type [i4]");
    EXPECT_KV_THROW(H::CheckRestriction("n", n, static_cast<ItemType>(-1), CPrimitiveRestrictions()),
                    CKvInvalidValueException, "unknown type [i4]");
    EXPECT_KV_THROW(H::CheckRestriction("e", KvVariant(), Invalid, CPrimitiveRestrictions()), CKvException,
                    "Invalid Type 0");
}
