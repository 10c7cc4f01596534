// DateTimeCompareTest.cpp - CDateTime ordering: the field walk, zones and the relational operators.
#include "kvxml/values/DateTime.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

CDateTime Date(const char* text) {
    CDateTime value;
    value.ParseXSDDate(text);
    return value;
}

CDateTime Time(const char* text) {
    CDateTime value;
    value.ParseXSDTime(text);
    return value;
}

CDateTime DateTime(const char* text) { return CDateTime(text); }

}  // namespace

TEST(DateTimeCompare, WalksTheFieldsInOrder) {
    EXPECT_EQ(Compare(DateTime("2004-01-01T12:00:00"), DateTime("2004-01-01T12:00:00")), 0);
    EXPECT_EQ(Compare(DateTime("2003-12-31T12:00:00"), DateTime("2004-01-01T12:00:00")), 1);
    EXPECT_EQ(Compare(DateTime("2004-01-02T00:00:00"), DateTime("2004-01-01T23:59:59")), 2);
    EXPECT_EQ(Compare(DateTime("2004-01-01T12:00:00.000000001"), DateTime("2004-01-01T12:00:00")), 2);
    EXPECT_EQ(Compare(DateTime("2004-01-01T12:00:59.999999999"), DateTime("2004-01-01T12:01:00")), 1);
    EXPECT_EQ(Compare(Time("10:00:00"), Time("09:59:59.5")), 2);
    EXPECT_EQ(Compare(Date("---05"), Date("---06")), 1);
    EXPECT_EQ(Compare(Date("--02-29"), Date("--02-28")), 2);
    // Zones play no part in Compare itself.
    EXPECT_EQ(Compare(DateTime("2004-01-01T12:00:00Z"), DateTime("2004-01-01T12:00:00+05:00")), 0);
}

TEST(DateTimeCompare, ReadsTheFirstMonthOnBothSides) {
    // Values that differ only in their month compare equal; the day decides otherwise.
    EXPECT_EQ(Compare(Date("2004-01-15"), Date("2004-03-15")), 0);
    EXPECT_EQ(Compare(Date("2004-01-15"), Date("2004-03-10")), 2);
    EXPECT_EQ(Compare(Date("--01"), Date("--12")), 0);
    EXPECT_EQ(Date("2004-01-15").CompareTo(Date("2004-03-15")), 0);
}

TEST(DateTimeCompare, MissingFieldsAndMixedSignYearsAreIncomparable) {
    EXPECT_EQ(Compare(Date("2004"), Date("--05")), 3);
    EXPECT_EQ(Compare(Date("---05"), Date("2004-01")), 3);
    EXPECT_EQ(Compare(Date("-0044-03-15"), Date("2004-03-15")), 3);
    EXPECT_EQ(Compare(Date("-0044-03-15"), Date("-0043-03-15")), 1);
    EXPECT_EQ(Compare(Time("10:00:00"), Date("2004-01-01")), 3);
}

TEST(DateTimeCompare, CompareToNormalisesZones) {
    EXPECT_EQ(DateTime("2004-01-01T12:00:00+05:00").CompareTo(DateTime("2004-01-01T07:00:00Z")), 0);
    EXPECT_EQ(DateTime("2004-01-01T00:30:00+01:00").CompareTo(DateTime("2003-12-31T23:00:00-00:00")), 2);
    EXPECT_EQ(DateTime("2004-01-01T00:30:00+01:00").CompareTo(DateTime("2003-12-31T23:45:00+00:00")), 1);
    EXPECT_EQ(DateTime("2004-01-01T12:00:00-05:00").CompareTo(DateTime("2004-01-01T12:00:00Z")), 2);
    EXPECT_EQ(Time("23:30:00-01:00").CompareTo(Time("00:30:00Z")), 0);
    EXPECT_TRUE(DateTime("2004-01-01T12:00:00+05:00") == DateTime("2004-01-01T07:00:00Z"));
}

TEST(DateTimeCompare, OneZonedSideNeedsAnAnswerForEveryOffset) {
    CDateTime zoned = DateTime("2004-01-01T12:00:00Z");
    EXPECT_EQ(zoned.CompareTo(DateTime("2004-01-01T12:00:00")), 3);
    EXPECT_EQ(zoned.CompareTo(DateTime("2004-01-02T12:00:00")), 1);  // later at every offset
    EXPECT_EQ(zoned.CompareTo(DateTime("2003-12-31T20:00:00")), 2);
    EXPECT_EQ(zoned.CompareTo(DateTime("2004-01-01T00:00:00")), 3);  // within 14 hours
    EXPECT_EQ(DateTime("2004-01-02T12:00:00").CompareTo(zoned), 2);
    EXPECT_EQ(DateTime("2004-01-01T12:00:00").CompareTo(zoned), 3);
    EXPECT_EQ(Date("2004Z").CompareTo(Date("2005")), 1);
}

TEST(DateTimeCompare, RelationalOperatorsFollowTheCodes) {
    CDateTime early = DateTime("2004-01-01T00:00:00");
    CDateTime late = DateTime("2004-06-01T00:00:01");
    EXPECT_TRUE(early < late);
    EXPECT_TRUE(early <= late);
    EXPECT_TRUE(early != late);
    EXPECT_FALSE(early > late);
    EXPECT_FALSE(early >= late);
    EXPECT_FALSE(early == late);
    EXPECT_TRUE(late > early);
    EXPECT_TRUE(early <= early);
    EXPECT_TRUE(early >= early);

    // Incomparable: everything false but !=.
    CDateTime a = DateTime("2004-01-01T12:00:00Z");
    CDateTime b = DateTime("2004-01-01T12:00:00");
    EXPECT_FALSE(a == b);
    EXPECT_FALSE(a < b);
    EXPECT_FALSE(a > b);
    EXPECT_FALSE(a <= b);
    EXPECT_FALSE(a >= b);
    EXPECT_TRUE(a != b);
}

TEST(DateTimeNormalize, MovesDateTimesAcrossDayMonthAndYearEnds) {
    struct Case {
        const char* text;
        const char* normalized;
    } cases[] = {
        {"2004-12-31T23:00:00-05:00", "2005-01-01T04:00:00Z"},
        {"2004-03-01T01:00:00+02:00", "2004-02-29T23:00:00Z"},
        {"2003-03-01T01:00:00+02:00", "2003-02-28T23:00:00Z"},
        {"2004-01-31T20:15:00.25-04:30", "2004-02-01T00:45:00.25Z"},
        {"0001-01-01T01:00:00+02:00", "-0001-12-31T23:00:00Z"},
        {"-0001-12-31T23:00:00-01:00", "0001-01-01T00:00:00Z"},
        {"2004-06-15T12:00:00Z", "2004-06-15T12:00:00Z"},
        {"2004-06-15T12:00:00", "2004-06-15T12:00:00"},
        {"9999-12-31T23:00:00-05:00", "10000-01-01T04:00:00Z"},
    };
    for (const Case& c : cases) EXPECT_EQ(DateTime(c.text).GetNormalized().ToString(), c.normalized) << c.text;
    EXPECT_EQ(Time("23:30:00-01:00").GetNormalized().ToString(), "00:30:00Z");
    EXPECT_EQ(Time("00:10:00+00:20").GetNormalized().ToString(), "23:50:00Z");
    EXPECT_EQ(Date("2004-01-01+05:00").GetNormalized().ToString(), "2004-01-01Z");
}
