// CheckRestrictionTest.cpp - facet sets and the range facets of ordered types.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "kvxml/core/XmlObjectHelper.h"
#include "kvxml/validation/PrimitiveRestrictions.h"
#include "kvxml/values/Conversions.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using Rule = CWhitespaceUtils::WhitespaceRule;
using H = CXmlObjectHelper;

namespace {

CPrimitiveRestrictions Range(const char* minInclusive, const char* maxInclusive, const char* minExclusive,
                             const char* maxExclusive) {
    return CPrimitiveRestrictions(nullptr, -1, -1, minInclusive, maxInclusive, minExclusive, maxExclusive, -1);
}

CDateTime Dt(const char* text) { return CConversions::datetimeFromString(text, Rule::Collapse); }

}  // namespace

TEST(PrimitiveRestrictions, DefaultLeavesEveryFacetUnset) {
    const CPrimitiveRestrictions r;
    EXPECT_EQ(r.pattern, "");
    EXPECT_EQ(r.minLength, -1);
    EXPECT_EQ(r.maxLength, -1);
    EXPECT_EQ(r.minInclusive, "");
    EXPECT_EQ(r.maxInclusive, "");
    EXPECT_EQ(r.minExclusive, "");
    EXPECT_EQ(r.maxExclusive, "");
    EXPECT_EQ(r.length, -1);
}

TEST(PrimitiveRestrictions, ConstructorTakesFieldsInOrderAndNullAsEmpty) {
    const CPrimitiveRestrictions r("[a-z]+", 1, 9, "a", "b", "c", "d", 4);
    EXPECT_EQ(r.pattern, "[a-z]+");
    EXPECT_EQ(r.minLength, 1);
    EXPECT_EQ(r.maxLength, 9);
    EXPECT_EQ(r.minInclusive, "a");
    EXPECT_EQ(r.maxInclusive, "b");
    EXPECT_EQ(r.minExclusive, "c");
    EXPECT_EQ(r.maxExclusive, "d");
    EXPECT_EQ(r.length, 4);
    const CPrimitiveRestrictions empty(nullptr, -1, -1, nullptr, nullptr, nullptr, nullptr, -1);
    EXPECT_EQ(empty.pattern, "");
    EXPECT_EQ(empty.maxExclusive, "");
}

TEST(CheckRestrictionRange, EachFacetAdmitsOrRejectsTheBoundItself) {
    struct Case {
        int32_t value;
        CPrimitiveRestrictions r;
        bool passes;
    };
    const Case cases[] = {
        {5, Range("5", nullptr, nullptr, nullptr), true},
        {4, Range("5", nullptr, nullptr, nullptr), false},
        {5, Range(nullptr, "5", nullptr, nullptr), true},
        {6, Range(nullptr, "5", nullptr, nullptr), false},
        {6, Range(nullptr, nullptr, "5", nullptr), true},
        {5, Range(nullptr, nullptr, "5", nullptr), false},
        {4, Range(nullptr, nullptr, nullptr, "5"), true},
        {5, Range(nullptr, nullptr, nullptr, "5"), false},
        {-7, Range("-10", "-5", "-8", "-6"), true},
        {-2147483647 - 1, Range("-2147483648", "", "", ""), true},
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

TEST(CheckRestrictionRange, FirstFailingFacetEndsTheCheck) {
    // Later bounds do not parse: reaching one would throw the conversion's error.
    EXPECT_KV_THROW(H::CheckRestrictionFori4("n", 5, Range("10", "zz", "zz", "zz")), CKvException,
                    "Invalid Value for n [5]");
    EXPECT_KV_THROW(H::CheckRestrictionFori4("n", 5, Range("1", "2", "zz", "zz")), CKvException,
                    "Invalid Value for n [5]");
    EXPECT_KV_THROW(H::CheckRestrictionFori4("n", 5, Range("1", "9", "7", "zz")), CKvException,
                    "Invalid Value for n [5]");
    EXPECT_KV_THROW(H::CheckRestrictionFori4("n", 8, Range("1", "9", "7", "zz")), CKvInvalidValueException,
                    "The value [zz] can not be converted to a i4");
    EXPECT_KV_THROW(H::CheckRestrictionFori4("n", 8, Range("zz", nullptr, nullptr, "1")), CKvInvalidValueException,
                    "The value [zz] can not be converted to a i4");
}

TEST(CheckRestrictionRange, BoundsParseWithTheTypesOwnParserAfterCollapse) {
    EXPECT_NO_THROW(H::CheckRestrictionFori4("n", 12, Range(" \t12\n ", "  12", nullptr, nullptr)));
    EXPECT_KV_THROW(H::CheckRestrictionFori1("n", 0, Range("200", nullptr, nullptr, nullptr)), CKvInvalidValueException,
                    "The value [200] is to large to fit in a i1");
    EXPECT_KV_THROW(H::CheckRestrictionFori4("n", 0, Range(nullptr, "1 2", nullptr, nullptr)), CKvInvalidValueException,
                    "The value [1 2] can not be converted to a i4");
    EXPECT_KV_THROW(
        H::CheckRestrictionFordate("d", Dt("2001-01-01T00:00:00Z"), Range(nullptr, nullptr, "2001-05", nullptr)),
        CKvInvalidValueException, "Invalid XSD date [2001-05]");
    // A gDay bound is written in its own lexical form, not as a number.
    EXPECT_NO_THROW(H::CheckRestrictionForday("d", 5, Range("---05", nullptr, nullptr, nullptr)));
    EXPECT_NO_THROW(H::CheckRestrictionFormonth("m", 2, Range(nullptr, nullptr, "--01", "--03")));
}

// Each type's message form is also covered through CheckRestriction's dispatch.
TEST(CheckRestrictionRange, MessageFormEdges) {
    // "%d" reads a 32-bit unsigned value as signed.
    EXPECT_KV_THROW(H::CheckRestrictionForui4("v", 4294967295u, Range("", "10", "", "")), CKvException,
                    "Invalid Value for v [-1]");
    EXPECT_KV_THROW(H::CheckRestrictionFori8("v", INT64_C(-9000000000), Range("0", "", "", "")), CKvException,
                    "Invalid Value for v [-9000000000]");
    const CBigInteger negative = CConversions::integerFromString("-123456789012345678901234567890", Rule::Collapse);
    EXPECT_KV_THROW(H::CheckRestrictionForinteger("v", negative, Range("-1", "", "", "")), CKvException,
                    "Invalid Value for v [-123456789012345678901234567890]");
    EXPECT_KV_THROW(H::CheckRestrictionFori4(nullptr, 1, Range("2", "", "", "")), CKvException,
                    "Invalid Value for  [1]");
}

TEST(CheckRestrictionRange, WideTypesCompareOverTheirWholeRange) {
    EXPECT_NO_THROW(H::CheckRestrictionForui8("v", UINT64_MAX, Range("9223372036854775808", "", "", "")));
    EXPECT_NO_THROW(H::CheckRestrictionFori8("v", INT64_MIN, Range("", "", "", "-9223372036854775807")));
    const CBigInteger big = CConversions::integerFromString("100000000000000000000000000000", Rule::Collapse);
    EXPECT_NO_THROW(H::CheckRestrictionForinteger("v", big, Range("99999999999999999999999999999", "", "", "")));
    EXPECT_THROW(H::CheckRestrictionForinteger("v", big, Range("", "", "100000000000000000000000000000", "")),
                 CKvException);
    const CDecimal d = CConversions::decimalFromString("0.30", Rule::Collapse);
    EXPECT_NO_THROW(H::CheckRestrictionFordecimal(
        "v", d, Range("0.3", "0.300", "0.2999999999999999999999", "0.3000000000000000000001")));
}

TEST(CheckRestrictionRange, NaNFailsEveryBoundItMeets) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_NO_THROW(H::CheckRestrictionForr8("x", 1e308, Range("", "INF", "", "")));
    EXPECT_NO_THROW(H::CheckRestrictionForr8("x", inf, Range("", "INF", "-INF", "")));
    EXPECT_NO_THROW(H::CheckRestrictionForr8("x", nan, Range("", "", "", "")));
    const CPrimitiveRestrictions eachFacet[] = {Range("-INF", "", "", ""), Range("", "INF", "", ""),
                                                Range("", "", "-INF", ""), Range("", "", "", "INF")};
    for (const CPrimitiveRestrictions& r : eachFacet) {
        EXPECT_KV_THROW(H::CheckRestrictionForr8("x", nan, r), CKvException, "Invalid Value for x [nan]");
        EXPECT_KV_THROW(H::CheckRestrictionForr4("x", std::nanf(""), r), CKvException, "Invalid Value for x [nan]");
    }
    // A NaN bound orders nothing either.
    EXPECT_KV_THROW(H::CheckRestrictionForr8("x", 0.0, Range("NaN", "", "", "")), CKvException,
                    "Invalid Value for x [0.000000]");
}

TEST(CheckRestrictionRange, DatesCompareAcrossTimeZones) {
    const CDateTime tenPlusTwo = Dt("2001-01-01T10:00:00+02:00");
    EXPECT_NO_THROW(
        H::CheckRestrictionFordatetime("t", tenPlusTwo, Range("2001-01-01T08:00:00Z", "2001-01-01T08:00:00Z", "", "")));
    EXPECT_KV_THROW(H::CheckRestrictionFordatetime("t", tenPlusTwo, Range("", "", "", "2001-01-01T08:00:00Z")),
                    CKvException, "Invalid Value for t [2001-01-01T10:00:00+02:00]");
    // Without a zone the value is within fourteen hours of the bound: incomparable, so not admitted.
    EXPECT_KV_THROW(
        H::CheckRestrictionFordatetime("t", Dt("2001-01-01T08:00:00"), Range("2001-01-01T08:00:00Z", "", "", "")),
        CKvException, "Invalid Value for t [2001-01-01T08:00:00]");
    EXPECT_NO_THROW(
        H::CheckRestrictionFordatetime("t", Dt("2001-01-03T08:00:00"), Range("2001-01-01T08:00:00Z", "", "", "")));

    const CDateTime day = CConversions::dateFromString("2001-05-10", Rule::Collapse);
    EXPECT_KV_THROW(H::CheckRestrictionFordate("d", day, Range("", "", "2001-05-10", "")), CKvException,
                    "Invalid Value for d [2001-05-10]");
    EXPECT_NO_THROW(
        H::CheckRestrictionFordate("d", day, Range("2001-05-10", "2001-05-10", "2001-05-09", "2001-05-11")));
    EXPECT_KV_THROW(H::CheckRestrictionFortime("t", CConversions::timeFromString("13:20:00Z", Rule::Collapse),
                                               Range("", "12:00:00Z", "", "")),
                    CKvException, "Invalid Value for t [13:20:00Z]");
    const CDateTime may = CConversions::yearMonthFromString("2001-05", Rule::Collapse);
    EXPECT_KV_THROW(H::CheckRestrictionForyearMonth("ym", may, Range("2002-01", "", "", "")), CKvException,
                    "Invalid Value for ym [2001-05]");
    EXPECT_KV_THROW(H::CheckRestrictionFormonthYear("ym", may, Range("", "", "", "2001-05")), CKvException,
                    "Invalid Value for ym [2001-05]");
    EXPECT_KV_THROW(H::CheckRestrictionFormonthDay("md", CConversions::monthDayFromString("--12-25", Rule::Collapse),
                                                   Range("", "--12-24", "", "")),
                    CKvException, "Invalid Value for md [--12-25]");
}

TEST(CheckRestrictionRange, DateOrderIsThatOfCompareTo) {
    // CompareTo reads the first value's month on both sides, so a bound that
    // differs from the value only in its month does not order it.
    const CDateTime may = CConversions::yearMonthFromString("2001-05", Rule::Collapse);
    EXPECT_NO_THROW(H::CheckRestrictionForyearMonth("ym", may, Range("2001-06", "2001-04", "", "")));
    EXPECT_KV_THROW(H::CheckRestrictionForyearMonth("ym", may, Range("", "", "2001-06", "")), CKvException,
                    "Invalid Value for ym [2001-05]");
}

TEST(CheckRestrictionRange, DurationsThatDoNotOrderFailTheFacet) {
    const CDateTimeSpan twoDays = CConversions::durationFromString("P2D", Rule::Collapse);
    EXPECT_NO_THROW(H::CheckRestrictionForduration("p", twoDays, Range("P1D", "PT48H", "PT47H59M", "P1Y")));
    EXPECT_KV_THROW(H::CheckRestrictionForduration("p", twoDays, Range("", "", "PT48H", "")), CKvException,
                    "Invalid Value for p [P2D]");
    const CDateTimeSpan oneMonth = CConversions::durationFromString("P1M", Rule::Collapse);
    EXPECT_KV_THROW(H::CheckRestrictionForduration("p", oneMonth, Range("", "P30D", "", "")), CKvException,
                    "Invalid Value for p [P1M]");
    EXPECT_KV_THROW(H::CheckRestrictionForduration("p", CConversions::durationFromString("PT25H", Rule::Collapse),
                                                   Range("", "", "", "P1D")),
                    CKvException, "Invalid Value for p [PT25H]");
}

TEST(CheckRestrictionRange, LengthAndPatternDoNotApplyToOrderedTypes) {
    const CPrimitiveRestrictions r("(", 5, 0, nullptr, nullptr, nullptr, nullptr, 9);
    EXPECT_NO_THROW(H::CheckRestrictionFori4("n", 12345678, r));
    EXPECT_NO_THROW(H::CheckRestrictionForr8("n", 1.0, r));
    EXPECT_NO_THROW(H::CheckRestrictionFordate("n", CConversions::dateFromString("2001-05-10", Rule::Collapse), r));
}
