// CheckRestrictionTest.cpp - facet checks: ranges of ordered types, text and binary lengths, patterns, dispatch.
#include <cmath>

#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using Rule = CWhitespaceUtils::WhitespaceRule;
using C = CConversions;
using H = CXmlObjectHelper;

namespace {

CPrimitiveRestrictions Range(const char* minInclusive, const char* maxInclusive, const char* minExclusive,
                             const char* maxExclusive) {
    return CPrimitiveRestrictions(nullptr, -1, -1, minInclusive, maxInclusive, minExclusive, maxExclusive, -1);
}

CPrimitiveRestrictions Lengths(int32_t minLength, int32_t maxLength, int32_t length, const char* pattern = nullptr) {
    return CPrimitiveRestrictions(pattern, minLength, maxLength, nullptr, nullptr, nullptr, nullptr, length);
}

CDateTime Dt(const char* text) { return C::datetimeFromString(text, Rule::Collapse); }

// The facet check refused the value; `what` is "name [value]".
#define EXPECT_REFUSED(stmt, what) EXPECT_KV_THROW(stmt, CKvException, std::string("Invalid Value for ") + (what))

CBinaryData Bytes(std::initializer_list<unsigned char> bytes) {
    std::string raw(bytes.begin(), bytes.end());
    return CBinaryData(reinterpret_cast<unsigned char*>(raw.data()), static_cast<uint32_t>(raw.size()), false);
}

}  // namespace

TEST(CheckRestrictionRange, EachFacetAdmitsOrRejectsTheBoundItself) {
    struct Case { int32_t value; CPrimitiveRestrictions r; bool passes; };
    const Case cases[] = {
        {5, Range("5", "", "", ""), true},  {4, Range("5", "", "", ""), false},
        {5, Range("", "5", "", ""), true},  {6, Range("", "5", "", ""), false},
        {6, Range("", "", "5", ""), true},  {5, Range("", "", "5", ""), false},
        {4, Range("", "", "", "5"), true},  {5, Range("", "", "", "5"), false},
        {-7, Range("-10", "-5", "-8", "-6"), true}, {-2147483647 - 1, Range("-2147483648", "", "", ""), true},
        {2147483647, Range(nullptr, nullptr, nullptr, "2147483647"), false},
    };
    for (const Case& c : cases) {
        if (c.passes) {
            EXPECT_NO_THROW(H::CheckRestrictionFori4("age", c.value, c.r)) << c.value;
        } else {
            EXPECT_KV_THROW(H::CheckRestrictionFori4("age", c.value, c.r), CKvException,
                            "Invalid Value for age [" + std::to_string(c.value) + "]");
        }
    }
}

TEST(CheckRestrictionRange, BoundsParseWithTheTypesOwnParserAfterCollapseUpToTheFirstFailingFacet) {
    // Later bounds do not parse: reaching one would throw the conversion's error.
    for (const auto& r : {Range("10", "zz", "zz", "zz"), Range("1", "2", "zz", "zz"), Range("1", "9", "7", "zz")})
        EXPECT_REFUSED(H::CheckRestrictionFori4("n", 5, r), "n [5]");
    EXPECT_KV_THROW(H::CheckRestrictionFori4("n", 8, Range("1", "9", "7", "zz")), CKvInvalidValueException,
                    "The value [zz] can not be converted to a i4");
    EXPECT_KV_THROW(H::CheckRestrictionFori4("n", 8, Range("zz", nullptr, nullptr, "1")), CKvInvalidValueException,
                    "The value [zz] can not be converted to a i4");
    EXPECT_NO_THROW(H::CheckRestrictionFori4("n", 12, Range(" \t12\n ", "  12", nullptr, nullptr)));
    EXPECT_KV_THROW(H::CheckRestrictionFori1("n", 0, Range("200", "", "", "")), CKvInvalidValueException,
                    "The value [200] is to large to fit in a i1");
    EXPECT_KV_THROW(H::CheckRestrictionFori4("n", 0, Range("", "1 2", "", "")), CKvInvalidValueException,
                    "The value [1 2] can not be converted to a i4");
    EXPECT_KV_THROW(H::CheckRestrictionFordate("d", Dt("2001-01-01T00:00:00Z"), Range("", "", "2001-05", "")),
                    CKvInvalidValueException, "Invalid XSD date [2001-05]");
    // A gDay bound is written in its own lexical form, not as a number.
    EXPECT_NO_THROW(H::CheckRestrictionForday("d", 5, Range("---05", nullptr, nullptr, nullptr)));
    EXPECT_NO_THROW(H::CheckRestrictionFormonth("m", 2, Range(nullptr, nullptr, "--01", "--03")));
}

// Each type's message form is also covered through CheckRestriction's dispatch.
TEST(CheckRestrictionRange, WideTypesCompareOverTheirWholeRangeAndShowTheirValues) {
    EXPECT_REFUSED(H::CheckRestrictionFori8("v", INT64_C(-9000000000), Range("0", "", "", "")), "v [-9000000000]");
    const CBigInteger negative = C::integerFromString("-123456789012345678901234567890", Rule::Collapse);
    EXPECT_REFUSED(H::CheckRestrictionForinteger("v", negative, Range("-1", "", "", "")),
                   "v [-123456789012345678901234567890]");
    EXPECT_REFUSED(H::CheckRestrictionFori4(nullptr, 1, Range("2", "", "", "")), " [1]");
    EXPECT_NO_THROW(H::CheckRestrictionForui8("v", UINT64_MAX, Range("9223372036854775808", "", "", "")));
    EXPECT_NO_THROW(H::CheckRestrictionFori8("v", INT64_MIN, Range("", "", "", "-9223372036854775807")));
    const CBigInteger big = C::integerFromString("100000000000000000000000000000", Rule::Collapse);
    EXPECT_NO_THROW(H::CheckRestrictionForinteger("v", big, Range("99999999999999999999999999999", "", "", "")));
    EXPECT_REFUSED(H::CheckRestrictionForinteger("v", big, Range("", "", "100000000000000000000000000000", "")),
                   "v [100000000000000000000000000000]");
    const CDecimal d = C::decimalFromString("0.30", Rule::Collapse);
    EXPECT_NO_THROW(H::CheckRestrictionFordecimal(
        "v", d, Range("0.3", "0.300", "0.2999999999999999999999", "0.3000000000000000000001")));
}

TEST(CheckRestrictionRange, NaNFailsEveryBoundItMeets) {
    const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
    EXPECT_NO_THROW(H::CheckRestrictionForr8("x", 1e308, Range("", "INF", "", "")));
    EXPECT_NO_THROW(H::CheckRestrictionForr8("x", inf, Range("", "INF", "-INF", "")));
    EXPECT_NO_THROW(H::CheckRestrictionForr8("x", nan, Range("", "", "", "")));
    for (const auto& r : {Range("-INF", "", "", ""), Range("", "INF", "", ""), Range("", "", "-INF", ""),
                          Range("", "", "", "INF")}) {
        EXPECT_REFUSED(H::CheckRestrictionForr8("x", nan, r), "x [nan]");
        EXPECT_REFUSED(H::CheckRestrictionForr4("x", std::nanf(""), r), "x [nan]");
    }
    // A NaN bound orders nothing either.
    EXPECT_REFUSED(H::CheckRestrictionForr8("x", 0.0, Range("NaN", "", "", "")), "x [0.000000]");
}

TEST(CheckRestrictionRange, DatesCompareAcrossTimeZones) {
    const CDateTime tenPlusTwo = Dt("2001-01-01T10:00:00+02:00");
    EXPECT_NO_THROW(
        H::CheckRestrictionFordatetime("t", tenPlusTwo, Range("2001-01-01T08:00:00Z", "2001-01-01T08:00:00Z", "", "")));
    EXPECT_REFUSED(H::CheckRestrictionFordatetime("t", tenPlusTwo, Range("", "", "", "2001-01-01T08:00:00Z")),
                   "t [2001-01-01T10:00:00+02:00]");
    // Without a zone the value is within fourteen hours of the bound: incomparable, so not admitted.
    EXPECT_KV_THROW(
        H::CheckRestrictionFordatetime("t", Dt("2001-01-01T08:00:00"), Range("2001-01-01T08:00:00Z", "", "", "")),
        CKvException, "Invalid Value for t [2001-01-01T08:00:00]");
    EXPECT_NO_THROW(
        H::CheckRestrictionFordatetime("t", Dt("2001-01-03T08:00:00"), Range("2001-01-01T08:00:00Z", "", "", "")));

    // monthYear has no item type of its own, so the dispatch does not reach it.
    const CDateTime may = C::yearMonthFromString("2001-05", Rule::Collapse);
    EXPECT_REFUSED(H::CheckRestrictionFormonthYear("ym", may, Range("", "", "", "2001-05")), "ym [2001-05]");
    // CompareTo reads the first value's month on both sides, so a bound that
    // differs from the value only in its month does not order it.
    EXPECT_NO_THROW(H::CheckRestrictionForyearMonth("ym", may, Range("2001-06", "2001-04", "", "")));
    EXPECT_REFUSED(H::CheckRestrictionForyearMonth("ym", may, Range("", "", "2001-06", "")), "ym [2001-05]");
}

TEST(CheckRestrictionRange, DurationsThatDoNotOrderFailTheFacet) {
    const CDateTimeSpan twoDays = C::durationFromString("P2D", Rule::Collapse);
    EXPECT_NO_THROW(H::CheckRestrictionForduration("p", twoDays, Range("P1D", "PT48H", "PT47H59M", "P1Y")));
    EXPECT_REFUSED(H::CheckRestrictionForduration("p", twoDays, Range("", "", "PT48H", "")), "p [P2D]");
    EXPECT_KV_THROW(H::CheckRestrictionForduration("p", C::durationFromString("P1M", Rule::Collapse),
                                                   Range("", "P30D", "", "")),
                    CKvException, "Invalid Value for p [P1M]");
    EXPECT_KV_THROW(H::CheckRestrictionForduration("p", C::durationFromString("PT25H", Rule::Collapse),
                                                   Range("", "", "", "P1D")),
                    CKvException, "Invalid Value for p [PT25H]");
}

TEST(CheckRestrictionString, LengthFacetsCountBytesInOrderBeforeThePattern) {
    EXPECT_REFUSED(H::CheckRestrictionForstring("s", "abcd", Lengths(2, 3, -1)), "s [abcd]");
    EXPECT_NO_THROW(H::CheckRestrictionForstring("s", "abcd", Lengths(-1, -1, 4)));
    EXPECT_REFUSED(H::CheckRestrictionForstring("s", "abcd", Lengths(-1, -1, 3)), "s [abcd]");
    EXPECT_REFUSED(H::CheckRestrictionForstring("s", "a", Lengths(2, -1, -1)), "s [a]");
    EXPECT_NO_THROW(H::CheckRestrictionForstring("s", "", Lengths(0, 0, 0)));
    EXPECT_NO_THROW(H::CheckRestrictionForstring("s", "ab", Lengths(2, 2, -1)));
    const std::string eAcute = "\xC3\xA9";  // one character, two bytes
    EXPECT_NO_THROW(H::CheckRestrictionForstring("s", eAcute, Lengths(-1, -1, 2)));
    EXPECT_REFUSED(H::CheckRestrictionForstring("s", eAcute, Lengths(-1, 1, -1)), "s [\xC3\xA9]");
    // The broken pattern is never compiled.
    EXPECT_REFUSED(H::CheckRestrictionForstring("s", "abc", Lengths(-1, 1, -1, "(")), "s [abc]");
}

TEST(CheckRestrictionString, PatternMatchesTheWholeValueAndOneThatDoesNotCompileWrapsTheRegexError) {
    const CPrimitiveRestrictions code = Lengths(-1, -1, -1, "[0-9]{3}-[A-Z]{2}");
    EXPECT_NO_THROW(H::CheckRestrictionForstring("code", "123-AB", code));
    EXPECT_REFUSED(H::CheckRestrictionForstring("code", "123-ABC", code), "code [123-ABC]");
    EXPECT_REFUSED(H::CheckRestrictionForstring("code", "x123-AB", code), "code [x123-AB]");
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

TEST(CheckRestrictionBinary, LengthCountsBytesAndMessageShowsHex) {
    const CBinaryData three = Bytes({1, 2, 3});
    EXPECT_REFUSED(H::CheckRestrictionForbase64Binary("blob", three, Lengths(-1, -1, 2)), "blob [010203]");
    EXPECT_REFUSED(H::CheckRestrictionForhexBinary("blob", three, Lengths(4, -1, -1)), "blob [010203]");
    EXPECT_REFUSED(H::CheckRestrictionForhexBinary("blob", Bytes({0xAB, 0xFF}), Lengths(-1, 1, -1)), "blob [ABFF]");
    EXPECT_NO_THROW(H::CheckRestrictionForbase64Binary("blob", three, Lengths(3, 3, 3)));
    EXPECT_NO_THROW(H::CheckRestrictionForhexBinary("blob", CBinaryData(), Lengths(0, 0, 0)));
}

TEST(CheckRestrictionFacets, ThoseThatDoNotApplyToTheTypeAreIgnored) {
    // Each facet given would fail, or not parse, if it were applied.
    const CPrimitiveRestrictions all("(", 5, 0, "zz", "zz", "zz", "zz", 9);
    const CPrimitiveRestrictions ranges(nullptr, -1, -1, "zz", "a", "zz", "a", -1);
    const CPrimitiveRestrictions lengthsAndPattern("(", 5, 0, nullptr, nullptr, nullptr, nullptr, 9);
    EXPECT_NO_THROW(H::CheckRestrictionForstring("s", "m", ranges));
    EXPECT_NO_THROW(H::CheckRestrictionForbase64Binary("b", Bytes({1}), Lengths(-1, -1, -1, "(")));
    EXPECT_NO_THROW(H::CheckRestrictionForhexBinary("b", Bytes({1}), ranges));
    EXPECT_NO_THROW(H::CheckRestrictionForboolean("b", true, all));
    EXPECT_NO_THROW(H::CheckRestrictionForboolean("b", false, all));
    EXPECT_NO_THROW(H::CheckRestrictionFori4("n", 12345678, lengthsAndPattern));
    EXPECT_NO_THROW(H::CheckRestrictionForr8("n", 1.0, lengthsAndPattern));
    EXPECT_NO_THROW(H::CheckRestrictionFordate("n", Dt("2001-05-10T00:00:00"), lengthsAndPattern));
}

TEST(CheckRestrictionDispatch, ReadsTheVariantAsTheGivenType) {
    struct Case { ItemType type; const char* text; const char* failingMax; const char* shown; };
    const Case cases[] = {
        {i1, "-3", "-4", "-3"}, {i2, "300", "299", "300"}, {i4, "70000", "1", "70000"},
        {i8, "9000000000", "1", "9000000000"}, {ui1, "200", "199", "200"}, {ui2, "60000", "1", "60000"},
        {ui4, "4000000000", "1", "-294967296"},  // "%d" reads a 32-bit unsigned value as signed
        {ui8, "18446744073709551615", "1", "18446744073709551615"}, {r4, "2.5", "2", "2.500000"},
        {r8, "-0.125", "-1", "-0.125000"}, {duration, "P2D", "P1D", "P2D"},
        {yearMonth, "2001-05", "2000-05", "2001-05"}, {monthDay, "--05-10", "--05-09", "--05-10"},
        {year, "2001", "2000", "2001"}, {month, "--05", "--04", "5"}, {day, "---10", "---09", "10"},
        {date, "2001-05-10", "2001-05-09", "2001-05-10"},
        {datetime, "2001-05-10T12:00:00Z", "2001-05-10T11:00:00Z", "2001-05-10T12:00:00Z"},
        {ItemType::time, "12:00:00Z", "11:00:00Z", "12:00:00Z"}, {decimal, "1.25", "1.2", "1.25"},
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
    EXPECT_REFUSED(H::CheckRestriction("s", s, string, Lengths(-1, 3, -1)), "s [abcd]");
    KvVariant b;
    b.SetBase64Binary(Bytes({1, 2, 3}));
    EXPECT_REFUSED(H::CheckRestriction("b", b, base64Binary, Lengths(-1, -1, 2)), "b [010203]");
    b.SetHexBinary(Bytes({0x0F}));
    EXPECT_REFUSED(H::CheckRestriction("b", b, hexBinary, Lengths(2, -1, -1)), "b [0F]");
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
    for (ItemType type : {Invalid, static_cast<ItemType>(27), static_cast<ItemType>(-1)})
        EXPECT_KV_THROW(H::CheckRestriction("n", n, type, CPrimitiveRestrictions()), CKvInvalidValueException,
                        "unknown type [i4]");
    EXPECT_KV_THROW(H::CheckRestriction("e", KvVariant(), Invalid, CPrimitiveRestrictions()), CKvException,
                    "Invalid Type 0");
}
