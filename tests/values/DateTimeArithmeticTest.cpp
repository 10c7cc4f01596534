// DateTimeArithmeticTest.cpp - adding durations to dates, differences and system time.
#include <ctime>
#include <string>

#include "kvxml/values/DateTime.h"
#include "kvxml/values/DateTimeSpan.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

CDateTimeSpan Span(const char* text) {
    CDateTimeSpan span;
    span.ParseXSDDuration(text);
    return span;
}

CDateTime Date(const char* text) {
    CDateTime value;
    value.ParseXSDDate(text);
    return value;
}

}  // namespace

TEST(DateTimeArithmetic, AddsMonthsFirstThenClampsTheDay) {
    struct Case {
        const char* start;
        const char* span;
        const char* result;
    } cases[] = {
        // The worked examples of the XML Schema recommendation.
        {"2000-01-12T12:13:14Z", "P1Y3M5DT7H10M3.3S", "2001-04-17T19:23:17.3Z"},
        {"2000-01", "-P3M", "1999-10"},
        {"2000-01-12", "PT33H", "2000-01-13"},
        {"2004-01-31", "P1M", "2004-02-29"},
        {"2003-01-31", "P1M", "2003-02-28"},
        {"2004-02-29", "P1Y", "2005-02-28"},
        {"2004-02-29", "P4Y", "2008-02-29"},
        {"2004-11-15", "P13M", "2005-12-15"},
        {"2004-03-31", "-P1M", "2004-02-29"},
        {"2004-02-28", "P1D", "2004-02-29"},
        {"2100-02-28", "P1D", "2100-03-01"},
        {"2004-12-31T23:59:59", "PT1S", "2005-01-01T00:00:00"},
        {"2005-01-01T00:00:00", "-PT1S", "2004-12-31T23:59:59"},
        {"2004-01-01T00:00:00.9", "PT0.2S", "2004-01-01T00:00:01.1"},
        {"2004-01-01T00:00:00", "-PT0.000000001S", "2003-12-31T23:59:59.999999999"},
        {"2004-01-01T00:00:00", "PT1440M", "2004-01-02T00:00:00"},
        {"2004-01-01", "P366D", "2005-01-01"},
        {"2004-01-01", "P146097D", "2404-01-01"},  // one 400-year cycle
        {"-0001-12-31", "P1D", "0001-01-01"},
        {"0001-01-01", "-P1D", "-0001-12-31"},
        {"-0001-06-01", "P1Y", "0001-06-01"},
        {"10:00:00", "PT15H", "01:00:00"},
        {"--02-29", "P1Y", "--02-28"},
        {"---31", "P1M", "---31"},
        {"2004-05:00", "P2Y", "2006-05:00"},
    };
    for (const Case& c : cases) {
        CDateTime start;
        if (std::string(c.start).find('T') != std::string::npos)
            start.ParseXSDDateTime(c.start);
        else if (c.start[2] == ':')
            start.ParseXSDTime(c.start);
        else
            start.ParseXSDDate(c.start);
        EXPECT_EQ((start + Span(c.span)).ToString(), c.result) << c.start << " + " << c.span;
    }
    CDateTime value("2004-01-31T10:00:00");
    value += Span("P1M");
    value -= Span("P1M");
    EXPECT_EQ(value.ToString(), "2004-01-29T10:00:00");  // the clamp is not undone
}

TEST(DateTimeArithmetic, ResultOutsideTheYearRangeThrowsAndKeepsTheValue) {
    CDateTime value = Date("2004-01-01");
    EXPECT_KV_THROW(value.AddDateTimeSpan(Span("P65535Y")), CKvInvalidValueException,
                    "Invalid Year [67539] (-9999 <= year <= 9999 && year != 0)");
    EXPECT_THROW(value.AddDateTimeSpan(Span("-P12004Y")), CKvInvalidValueException);
    EXPECT_THROW(value.AddDateTimeSpan(CDateTimeSpan(0, 0, 0, 0, ~0ull, ~0ull)), CKvInvalidValueException);
    EXPECT_EQ(value.ToString(), "2004-01-01");
    EXPECT_EQ((Date("9999-12-31") - Span("P19997Y11M30D")).ToString(), "-9999-01-01");
    EXPECT_KV_THROW(CDateTime().AddDateTimeSpan(Span("P1D")), CKvInvalidValueException, "Invalid Year Zero");
}

TEST(DateTimeArithmetic, DifferenceAddsBackToTheMinuend) {
    CDateTime a("2004-03-01T00:00:00");
    CDateTime b("2004-02-28T12:00:00.25");
    EXPECT_EQ((a - b).ToString(), "P1DT11H59M59.75S");
    EXPECT_EQ((b - a).ToString(), "-P1DT11H59M59.75S");
    EXPECT_EQ((b + (a - b)).ToString(), a.ToString());
    EXPECT_EQ((a + (b - a)).ToString(), b.ToString());
    EXPECT_EQ((a - a).ToString(), "P");
    EXPECT_EQ((CDateTime("2004-01-01T12:00:00+05:00") - CDateTime("2004-01-01T07:00:00Z")).ToString(), "P");
    CDateTime farApart("-9999-01-01T00:00:00");
    CDateTime later("9999-12-31T23:59:59");
    EXPECT_EQ((farApart + (later - farApart)).ToString(), later.ToString());
}

TEST(DateTimeArithmetic, QuotientAndModuloFloorTowardsMinusInfinity) {
    EXPECT_EQ(GetQuotient(7, 3), 2);
    EXPECT_EQ(GetQuotient(-7, 3), -3);
    EXPECT_EQ(GetQuotient(-6, 3), -2);
    EXPECT_EQ(GetQuotient(7, -3), -3);
    EXPECT_EQ(GetModulo(7, 3), 1);
    EXPECT_EQ(GetModulo(-7, 3), 2);
    EXPECT_EQ(GetModulo(-6, 3), 0);
    EXPECT_EQ(GetModulo(7, -3), -2);
    EXPECT_EQ(GetQuotient(-9223372036854775807LL - 1, -1), 9223372036854775807LL);
    EXPECT_EQ(GetQuotient(5, 0), 0);
    EXPECT_EQ(GetModulo(5, 0), 0);
}

TEST(DateTimeSystemTime, SecondsSince1970AreUtc) {
    EXPECT_EQ(CDateTime(int64_t{0}).ToString(), "1970-01-01T00:00:00Z");
    EXPECT_EQ(CDateTime(int64_t{951782400}).ToString(), "2000-02-29T00:00:00Z");
    EXPECT_EQ(CDateTime(int64_t{-1}).ToString(), "1969-12-31T23:59:59Z");
    EXPECT_EQ(CDateTime(int64_t{253402300799}).ToString(), "9999-12-31T23:59:59Z");
    EXPECT_EQ(CDateTime(int64_t{253402300800}).GetType(), CDateTime::dt_none);
    EXPECT_EQ(CDateTime(INT64_MIN).GetType(), CDateTime::dt_none);
    EXPECT_EQ(CDateTime(INT64_MAX).GetType(), CDateTime::dt_none);
    EXPECT_EQ(CDateTime(int64_t{-62135596800}).ToString(), "0001-01-01T00:00:00Z");
    EXPECT_EQ(CDateTime(int64_t{-62135596801}).ToString(), "-0001-12-31T23:59:59Z");

    EXPECT_EQ(CDateTime("1970-01-01T01:00:00+01:00").GetTime(), 0);
    EXPECT_EQ(CDateTime("1970-01-01T00:00:00").GetTime(), 0);
    EXPECT_EQ(Date("2000-02-29").GetTime(), 951782400);
    const int64_t samples[] = {0, 1, -1, 86399, 1078012800, 4102444800, -62135596801, -315537897600};
    for (int64_t t : samples) EXPECT_EQ(CDateTime(t).GetTime(), t) << t;
}

TEST(DateTimeSystemTime, CurrentTimeIsNowInUtc) {
    int64_t before = static_cast<int64_t>(::time(nullptr));
    CDateTime now = CDateTime::GetCurrentTime();
    int64_t after = static_cast<int64_t>(::time(nullptr));
    EXPECT_EQ(now.GetType(), CDateTime::dt_dateTime);
    EXPECT_TRUE(now.IsUTC());
    EXPECT_FALSE(now.HasTimeZone());
    EXPECT_GE(now.GetTime(), before);
    EXPECT_LE(now.GetTime(), after);
}
