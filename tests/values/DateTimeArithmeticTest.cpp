// DateTimeArithmeticTest.cpp - durations (parsing, printing, their partial order), ordering and normalising dates,
// adding durations, differences and system time.
#include <ctime>

#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

CDateTimeSpan Span(const char* text) {
    CDateTimeSpan span;
    span.ParseXSDDuration(text);
    return span;
}

// A date, time or dateTime text, parsed by its form.
CDateTime Value(const std::string& text) {
    CDateTime value;
    if (text.find('T') != std::string::npos)
        value.ParseXSDDateTime(text.c_str());
    else if (text.size() > 2 && text[2] == ':')
        value.ParseXSDTime(text.c_str());
    else
        value.ParseXSDDate(text.c_str());
    return value;
}

// Every field of a span, for one comparison: Y M D h m s ms us ns negative.
std::vector<unsigned long long> Fields(const CDateTimeSpan& s) {
    return {s.GetYears(),        s.GetMonths(),       s.GetDays(),        s.GetHours(),       s.GetMinutes(),
            s.GetSeconds(),      s.GetMilliSeconds(), s.GetMicroSeconds(), s.GetNanoSeconds(), s.IsNegative()};
}

}  // namespace

TEST(DateTimeArithmetic, AddsMonthsFirstThenClampsTheDay) {
    const struct { const char *start, *span, *result; } cases[] = {
        // The worked examples of the XML Schema recommendation first.
        {"2000-01-12T12:13:14Z", "P1Y3M5DT7H10M3.3S", "2001-04-17T19:23:17.3Z"}, {"2000-01", "-P3M", "1999-10"},
        {"2000-01-12", "PT33H", "2000-01-13"}, {"2004-01-31", "P1M", "2004-02-29"}, {"2003-01-31", "P1M", "2003-02-28"},
        {"2004-02-29", "P1Y", "2005-02-28"}, {"2004-02-29", "P4Y", "2008-02-29"}, {"2004-11-15", "P13M", "2005-12-15"},
        {"2004-03-31", "-P1M", "2004-02-29"}, {"2004-02-28", "P1D", "2004-02-29"}, {"2100-02-28", "P1D", "2100-03-01"},
        {"2004-12-31T23:59:59", "PT1S", "2005-01-01T00:00:00"}, {"2004-01-01", "P366D", "2005-01-01"},
        {"2005-01-01T00:00:00", "-PT1S", "2004-12-31T23:59:59"}, {"10:00:00", "PT15H", "01:00:00"},
        {"2004-01-01T00:00:00.9", "PT0.2S", "2004-01-01T00:00:01.1"}, {"--02-29", "P1Y", "--02-28"},
        {"2004-01-01T00:00:00", "-PT0.000000001S", "2003-12-31T23:59:59.999999999"}, {"---31", "P1M", "---31"},
        {"2004-01-01T00:00:00", "PT1440M", "2004-01-02T00:00:00"}, {"2004-05:00", "P2Y", "2006-05:00"},
        {"2004-01-01", "P146097D", "2404-01-01"},  // one 400-year cycle
        {"-0001-12-31", "P1D", "0001-01-01"}, {"0001-01-01", "-P1D", "-0001-12-31"},
        {"-0001-06-01", "P1Y", "0001-06-01"},
    };
    for (const auto& c : cases)
        EXPECT_EQ((Value(c.start) + Span(c.span)).ToString(), c.result) << c.start << " + " << c.span;
    CDateTime value("2004-01-31T10:00:00");
    value += Span("P1M");
    value -= Span("P1M");
    EXPECT_EQ(value.ToString(), "2004-01-29T10:00:00");  // the clamp is not undone
}

TEST(DateTimeArithmetic, ResultOutsideTheYearRangeThrowsAndKeepsTheValue) {
    CDateTime value = Value("2004-01-01");
    EXPECT_KV_THROW(value.AddDateTimeSpan(Span("P65535Y")), CKvInvalidValueException,
                    "Invalid Year [67539] (-9999 <= year <= 9999 && year != 0)");
    EXPECT_KV_THROW(value.AddDateTimeSpan(Span("-P12004Y")), CKvInvalidValueException,
                    "Invalid Year [-10001] (-9999 <= year <= 9999 && year != 0)");
    EXPECT_KV_THROW(value.AddDateTimeSpan(CDateTimeSpan(0, 0, 0, 0, ~0ull, ~0ull)), CKvInvalidValueException,
                    "Invalid Year [35657797006489] (-9999 <= year <= 9999 && year != 0)");
    EXPECT_EQ(value.ToString(), "2004-01-01");
    EXPECT_EQ((Value("9999-12-31") - Span("P19997Y11M30D")).ToString(), "-9999-01-01");
    EXPECT_KV_THROW(CDateTime().AddDateTimeSpan(Span("P1D")), CKvInvalidValueException, "Invalid Year Zero");
}

TEST(DateTimeArithmetic, DifferenceAddsBackToTheMinuend) {
    const CDateTime a("2004-03-01T00:00:00"), b("2004-02-28T12:00:00.25");
    EXPECT_EQ((a - b).ToString(), "P1DT11H59M59.75S");
    EXPECT_EQ((b - a).ToString(), "-P1DT11H59M59.75S");
    EXPECT_EQ((b + (a - b)).ToString(), a.ToString());
    EXPECT_EQ((a + (b - a)).ToString(), b.ToString());
    EXPECT_EQ((a - a).ToString(), "P");
    EXPECT_EQ((CDateTime("2004-01-01T12:00:00+05:00") - CDateTime("2004-01-01T07:00:00Z")).ToString(), "P");
    const CDateTime first("-9999-01-01T00:00:00"), last("9999-12-31T23:59:59");
    EXPECT_EQ((first + (last - first)).ToString(), last.ToString());
}

TEST(DateTimeArithmetic, QuotientAndModuloFloorTowardsMinusInfinity) {
    const struct {
        long long a;
        int b;
        long long quotient, modulo;
    } cases[] = {{7, 3, 2, 1}, {-7, 3, -3, 2}, {-6, 3, -2, 0}, {7, -3, -3, -2}, {5, 0, 0, 0}};
    for (const auto& c : cases) {
        EXPECT_EQ(GetQuotient(c.a, c.b), c.quotient) << c.a << " / " << c.b;
        EXPECT_EQ(GetModulo(c.a, c.b), c.modulo) << c.a << " % " << c.b;
    }
    EXPECT_EQ(GetQuotient(-9223372036854775807LL - 1, -1), 9223372036854775807LL);
}

TEST(DateTimeSystemTime, SecondsSince1970AreUtcAndNowIsNow) {
    const std::pair<int64_t, const char*> cases[] = {
        {0, "1970-01-01T00:00:00Z"},           {951782400, "2000-02-29T00:00:00Z"},
        {-1, "1969-12-31T23:59:59Z"},          {253402300799, "9999-12-31T23:59:59Z"},
        {-62135596800, "0001-01-01T00:00:00Z"}, {-62135596801, "-0001-12-31T23:59:59Z"},
    };
    for (const auto& [seconds, text] : cases) EXPECT_EQ(CDateTime(seconds).ToString(), text);
    for (int64_t outside : {int64_t{253402300800}, INT64_MIN, INT64_MAX})
        EXPECT_EQ(CDateTime(outside).GetType(), CDateTime::dt_none) << outside;
    EXPECT_EQ(CDateTime("1970-01-01T01:00:00+01:00").GetTime(), 0);
    EXPECT_EQ(CDateTime("1970-01-01T00:00:00").GetTime(), 0);
    EXPECT_EQ(Value("2000-02-29").GetTime(), 951782400);
    for (int64_t t : {int64_t{0}, int64_t{1}, int64_t{-1}, int64_t{86399}, int64_t{1078012800}, int64_t{4102444800},
                      int64_t{-62135596801}, int64_t{-315537897600}})
        EXPECT_EQ(CDateTime(t).GetTime(), t) << t;

    const int64_t before = static_cast<int64_t>(::time(nullptr));
    const CDateTime now = CDateTime::GetCurrentTime();
    const int64_t after = static_cast<int64_t>(::time(nullptr));
    EXPECT_EQ(now.GetType(), CDateTime::dt_dateTime);
    EXPECT_TRUE(now.IsUTC());
    EXPECT_FALSE(now.HasTimeZone());
    EXPECT_GE(now.GetTime(), before);
    EXPECT_LE(now.GetTime(), after);
}

// Codes: 0 equal, 1 less, 2 greater, 3 incomparable.
TEST(DateTimeCompare, WalksTheFieldsInOrderIgnoringZones) {
    const struct { const char *a, *b; int code; } cases[] = {
        {"2004-01-01T12:00:00", "2004-01-01T12:00:00", 0}, {"2003-12-31T12:00:00", "2004-01-01T12:00:00", 1},
        {"2004-01-02T00:00:00", "2004-01-01T23:59:59", 2}, {"2004-01-01T12:00:00.000000001", "2004-01-01T12:00:00", 2},
        {"2004-01-01T12:00:59.999999999", "2004-01-01T12:01:00", 1}, {"10:00:00", "09:59:59.5", 2},
        {"---05", "---06", 1}, {"--02-29", "--02-28", 2}, {"2004-01-01T12:00:00Z", "2004-01-01T12:00:00+05:00", 0},
        // The first value's month is read on both sides: the day decides.
        {"2004-01-15", "2004-03-15", 0}, {"2004-01-15", "2004-03-10", 2}, {"--01", "--12", 0},
        // Missing fields and mixed-sign years are incomparable.
        {"2004", "--05", 3}, {"---05", "2004-01", 3}, {"-0044-03-15", "2004-03-15", 3},
        {"-0044-03-15", "-0043-03-15", 1}, {"10:00:00", "2004-01-01", 3},
    };
    for (const auto& c : cases) EXPECT_EQ(Compare(Value(c.a), Value(c.b)), c.code) << c.a << " vs " << c.b;
}

TEST(DateTimeCompare, CompareToNormalisesZonesAndAnswersOneZonedSideForEveryOffset) {
    const struct { const char *a, *b; int code; } cases[] = {
        {"2004-01-01T12:00:00+05:00", "2004-01-01T07:00:00Z", 0},
        {"2004-01-01T00:30:00+01:00", "2003-12-31T23:00:00-00:00", 2},
        {"2004-01-01T00:30:00+01:00", "2003-12-31T23:45:00+00:00", 1},
        {"2004-01-01T12:00:00-05:00", "2004-01-01T12:00:00Z", 2}, {"23:30:00-01:00", "00:30:00Z", 0},
        {"2004-01-15", "2004-03-15", 0},
        {"2004-01-01T12:00:00Z", "2004-01-01T12:00:00", 3}, {"2004-01-01T12:00:00Z", "2004-01-02T12:00:00", 1},
        {"2004-01-01T12:00:00Z", "2003-12-31T20:00:00", 2},
        {"2004-01-01T12:00:00Z", "2004-01-01T00:00:00", 3},  // within 14 hours
        {"2004-01-02T12:00:00", "2004-01-01T12:00:00Z", 2}, {"2004-01-01T12:00:00", "2004-01-01T12:00:00Z", 3},
        {"2004Z", "2005", 1},
    };
    for (const auto& c : cases) EXPECT_EQ(Value(c.a).CompareTo(Value(c.b)), c.code) << c.a << " vs " << c.b;
}

TEST(DateTimeCompare, RelationalOperatorsFollowTheCodes) {
    const auto Relations = [](const CDateTime& a, const CDateTime& b) {
        return std::vector<bool>{a == b, a != b, a < b, a <= b, a > b, a >= b};
    };
    const CDateTime early = Value("2004-01-01T00:00:00"), late = Value("2004-06-01T00:00:01");
    EXPECT_EQ(Relations(early, late), (std::vector<bool>{false, true, true, true, false, false}));
    EXPECT_EQ(Relations(late, early), (std::vector<bool>{false, true, false, false, true, true}));
    EXPECT_EQ(Relations(early, early), (std::vector<bool>{true, false, false, true, false, true}));
    EXPECT_EQ(Relations(Value("2004-01-01T12:00:00+05:00"), Value("2004-01-01T07:00:00Z")),
              (std::vector<bool>{true, false, false, true, false, true}));
    // Incomparable: everything false but !=.
    EXPECT_EQ(Relations(Value("2004-01-01T12:00:00Z"), Value("2004-01-01T12:00:00")),
              (std::vector<bool>{false, true, false, false, false, false}));
}

TEST(DateTimeNormalize, MovesDateTimesAcrossDayMonthAndYearEnds) {
    const std::pair<const char*, const char*> cases[] = {
        {"2004-12-31T23:00:00-05:00", "2005-01-01T04:00:00Z"}, {"2004-03-01T01:00:00+02:00", "2004-02-29T23:00:00Z"},
        {"2003-03-01T01:00:00+02:00", "2003-02-28T23:00:00Z"},
        {"2004-01-31T20:15:00.25-04:30", "2004-02-01T00:45:00.25Z"},
        {"0001-01-01T01:00:00+02:00", "-0001-12-31T23:00:00Z"}, {"-0001-12-31T23:00:00-01:00", "0001-01-01T00:00:00Z"},
        {"2004-06-15T12:00:00Z", "2004-06-15T12:00:00Z"}, {"2004-06-15T12:00:00", "2004-06-15T12:00:00"},
        {"9999-12-31T23:00:00-05:00", "10000-01-01T04:00:00Z"}, {"23:30:00-01:00", "00:30:00Z"},
        {"00:10:00+00:20", "23:50:00Z"}, {"2004-01-01+05:00", "2004-01-01Z"},
    };
    for (const auto& [text, normalized] : cases) EXPECT_EQ(Value(text).GetNormalized().ToString(), normalized) << text;
}

TEST(DateTimeSpanParse, ReadsEveryComponentAndTheLenientForms) {
    const struct { const char* text; std::vector<unsigned long long> fields; const char* printed; } cases[] = {
        {"P1Y2M3DT4H5M6.5S", {1, 2, 3, 4, 5, 6, 500, 0, 0, 0}, "P1Y2M3DT4H5M6.5S"},
        {"-PT0.000001S", {0, 0, 0, 0, 0, 0, 0, 1, 0, 1}, "-PT0.000001S"},
        {"P1D2M", {0, 0, 1, 0, 2, 0, 0, 0, 0, 0}, "P1DT2M"},  // "M" after "D" counts minutes
        {"P1M1M", {0, 1, 0, 0, 1, 0, 0, 0, 0, 0}, "P1MT1M"},
        {"PY", {0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, "P"},         // an empty digit run is 0
        {"P5S", {0, 0, 0, 0, 0, 5, 0, 0, 0, 0}, "PT5S"},     // no "T" needed before "S"
        {"PT.5S", {0, 0, 0, 0, 0, 0, 500, 0, 0, 0}, "PT0.5S"},
        // Digits seven to nine each replace the nanoseconds.
        {"PT0.123456789S", {0, 0, 0, 0, 0, 0, 123, 456, 9, 0}, "PT0.123456009S"},
        {"PT0.00000071S", {0, 0, 0, 0, 0, 0, 0, 0, 1, 0}, "PT0.000000001S"},
        // A second fraction replaces the first instead of adding to it (found by fuzzing).
        {"PT.67891S1.67891S", {0, 0, 0, 0, 0, 1, 678, 910, 0, 0}, "PT1.67891S"},
        // Digit runs wrap like a signed 32-bit sum.
        {"P4294967297D", {0, 0, 1, 0, 0, 0, 0, 0, 0, 0}, "P1D"}, {"P65537Y", {1, 0, 0, 0, 0, 0, 0, 0, 0, 0}, "P1Y"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Fields(Span(c.text)), c.fields) << c.text;
        EXPECT_EQ(Span(c.text).ToString(), c.printed) << c.text;
    }
    for (const char* text : {"PT90M", "P13M", "P400D", "PT36H", "PT0.001S", "-P1DT1S", "PT1.000000009S"})
        EXPECT_EQ(Span(text).ToString(), text);
    EXPECT_EQ(Span("PT2147483648M").GetMinutes(), 18446744071562067968ull);
    EXPECT_EQ(Span("PT4294967295S").GetSeconds(), 18446744073709551615ull);
    EXPECT_EQ(Span("PT2147483647S").GetSeconds(), 2147483647u);
    EXPECT_NO_THROW(Span(("P" + std::string(100000, '9') + "D").c_str()));
}

TEST(DateTimeSpanParse, RejectsBadTextWithTheMessages) {
    CDateTimeSpan span = Span("P1Y");
    EXPECT_KV_THROW(span.ParseXSDDuration(nullptr), CKvInvalidValueException, "Invalid XSD Duration (Null String)");
    EXPECT_EQ(span.GetYears(), 0);  // cleared by the failed parse
    EXPECT_KV_THROW(span.ParseXSDDuration(""), CKvInvalidValueException, "Invalid XSD Duration (Empty String)");
    EXPECT_KV_THROW(span.ParseXSDDuration("PT1.1234567891S"), CKvInvalidValueException,
                    "Invalid XSD Duration [PT1.1234567891S] Fraction part too long");
    for (const char* text : {"P", "PT", "P1H", "-", "-P", "1Y", "+P1Y", "P1Y2", "P1.5Y", "PT1H1H", "P1D1D", "PT1D",
                             "P1T2D", " P1Y", "P1Y ", "P-1Y", "--P1Y", "p1y", "PT1.5", "P1W", "P\xff", "P1Y\x80",
                             "PT1M1H", "PTT1H", "P1DT"})
        EXPECT_KV_THROW(span.ParseXSDDuration(text), CKvInvalidValueException,
                        "Invalid XSD Duration [" + std::string(text) + "] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]");
}

TEST(DateTimeSpanPrint, ZeroPrintsAsABareP) {
    EXPECT_EQ(CDateTimeSpan().ToString(), "P");
    EXPECT_EQ(CDateTimeSpan().GetAsNegative().ToString(), "-P");
    EXPECT_EQ(CDateTimeSpan(0, 0, 0, 0, 0, 0, 0, 0, 5).ToString(), "PT0.000000005S");
    EXPECT_EQ(CDateTimeSpan(2, 90, 3600).ToString(), "P2DT90M3600S");
    CDateTimeSpan span(1, 2, 3, 4, 5, 6);
    span.Negate();
    EXPECT_EQ(span.ToString(), "-P1Y2M3DT4H5M6S");
    span.SetDateTimeSpan(7, 0, 0);
    EXPECT_EQ(span.ToString(), "-P7D");
    span.Clear();
    EXPECT_EQ(span.ToString(), "P");
}

// Codes: 0 equal, 1 less, 2 greater, 3 incomparable.
TEST(DateTimeSpanCompare, UsesTheFourReferenceDates) {
    const struct { const char *a, *b; int code; } cases[] = {
        {"P1M", "P30D", 3}, {"P1Y", "P12M", 0}, {"PT1H", "PT60M", 0}, {"P1D", "PT24H", 0}, {"P1D", "PT23H", 2},
        {"P1D", "PT25H", 1}, {"P1Y", "P365D", 3}, {"P1Y", "P367D", 1}, {"-PT2H", "-PT1H", 1},
        {"PT0.000000001S", "PT0S", 2},
        // The first value's month is read on both sides, so months alone never differ ...
        {"P1M", "P2M", 0},
        // ... and across a month end the day alone decides: 1696-08-31 against 1696-09-02.
        {"-P1D", "P1D", 2},
        // Sums far beyond the year range still compare.
        {"P65535Y", "P1Y", 2}, {"PT4294967295S", "P1D", 2},
    };
    for (const auto& c : cases) EXPECT_EQ(Span(c.a).CompareTo(Span(c.b)), c.code) << c.a << " vs " << c.b;
    EXPECT_TRUE(Span("PT1H") == Span("PT60M"));
    EXPECT_TRUE(Span("PT1H") < Span("PT61M"));
    EXPECT_TRUE(Span("PT2H") > Span("PT61M"));
    EXPECT_TRUE(Span("P1M") != Span("P30D"));
    EXPECT_FALSE(Span("P1M") < Span("P30D") || Span("P1M") > Span("P30D") || Span("P1M") == Span("P30D"));
}
