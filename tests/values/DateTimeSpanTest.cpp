// DateTimeSpanTest.cpp - CDateTimeSpan: parsing, printing and the partial order of durations.
#include <string>

#include "kvxml/values/DateTimeSpan.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

CDateTimeSpan Span(const char* text) {
    CDateTimeSpan span;
    span.ParseXSDDuration(text);
    return span;
}

}  // namespace

TEST(DateTimeSpanParse, ReadsEveryComponent) {
    CDateTimeSpan span = Span("P1Y2M3DT4H5M6.5S");
    EXPECT_EQ(span.GetYears(), 1);
    EXPECT_EQ(span.GetMonths(), 2u);
    EXPECT_EQ(span.GetDays(), 3u);
    EXPECT_EQ(span.GetHours(), 4u);
    EXPECT_EQ(span.GetMinutes(), 5u);
    EXPECT_EQ(span.GetSeconds(), 6u);
    EXPECT_EQ(span.GetMilliSeconds(), 500);
    EXPECT_FALSE(span.IsNegative());
    EXPECT_EQ(span.ToString(), "P1Y2M3DT4H5M6.5S");

    CDateTimeSpan micro = Span("-PT0.000001S");
    EXPECT_TRUE(micro.IsNegative());
    EXPECT_EQ(micro.GetMicroSeconds(), 1);
    EXPECT_EQ(micro.ToString(), "-PT0.000001S");

    const char* roundTrips[] = {"PT90M", "P1Y", "P13M", "P400D", "PT36H", "PT0.001S", "-P1DT1S", "PT1.000000009S"};
    for (const char* text : roundTrips) EXPECT_EQ(Span(text).ToString(), text);
}

TEST(DateTimeSpanParse, KeepsTheLenientReadings) {
    CDateTimeSpan minutes = Span("P1D2M");  // "M" after "D" counts minutes
    EXPECT_EQ(minutes.GetMonths(), 0u);
    EXPECT_EQ(minutes.GetMinutes(), 2u);
    EXPECT_EQ(minutes.ToString(), "P1DT2M");
    EXPECT_EQ(Span("P1M1M").GetMinutes(), 1u);
    EXPECT_EQ(Span("PY").ToString(), "P");  // an empty digit run is 0
    EXPECT_EQ(Span("P5S").GetSeconds(), 5u);  // no "T" needed before "S"
    EXPECT_EQ(Span("PT.5S").GetMilliSeconds(), 500);

    // Digits seven to nine each replace the nanoseconds.
    CDateTimeSpan nine = Span("PT0.123456789S");
    EXPECT_EQ(nine.GetMilliSeconds(), 123);
    EXPECT_EQ(nine.GetMicroSeconds(), 456);
    EXPECT_EQ(nine.GetNanoSeconds(), 9);
    EXPECT_EQ(Span("PT0.0000001S").GetNanoSeconds(), 1);
    EXPECT_EQ(Span("PT0.00000071S").GetNanoSeconds(), 1);
    // A second fraction replaces the first instead of adding to it (found by fuzzing).
    CDateTimeSpan twice = Span("PT.67891S1.67891S");
    EXPECT_EQ(twice.GetSeconds(), 1u);
    EXPECT_EQ(twice.GetMilliSeconds(), 678);
    EXPECT_EQ(twice.GetMicroSeconds(), 910);
    EXPECT_EQ(twice.ToString(), "PT1.67891S");
}

TEST(DateTimeSpanParse, DigitRunsWrapLikeASigned32BitSum) {
    EXPECT_EQ(Span("P4294967297D").GetDays(), 1u);
    EXPECT_EQ(Span("P65537Y").GetYears(), 1);
    EXPECT_EQ(Span("PT2147483648M").GetMinutes(), 18446744071562067968ull);
    EXPECT_EQ(Span("PT4294967295S").GetSeconds(), 18446744073709551615ull);
    EXPECT_EQ(Span("PT2147483647S").GetSeconds(), 2147483647u);
    std::string huge = "P" + std::string(100000, '9') + "D";
    EXPECT_NO_THROW(Span(huge.c_str()));
}

TEST(DateTimeSpanParse, RejectsBadTextWithTheMessages) {
    CDateTimeSpan span;
    EXPECT_KV_THROW(span.ParseXSDDuration(nullptr), CKvInvalidValueException, "Invalid XSD Duration (Null String)");
    EXPECT_KV_THROW(span.ParseXSDDuration(""), CKvInvalidValueException, "Invalid XSD Duration (Empty String)");
    EXPECT_KV_THROW(span.ParseXSDDuration("PT1.1234567891S"), CKvInvalidValueException,
                    "Invalid XSD Duration [PT1.1234567891S] Fraction part too long");
    const char* bad[] = {"P",     "PT",     "P1H",    "-",      "-P",     "1Y",    "+P1Y",  "P1Y2",  "P1.5Y",
                         "PT1H1H", "P1D1D", "PT1D",   "P1T2D",  " P1Y",   "P1Y ",  "P-1Y",  "--P1Y", "p1y",
                         "PT1.5", "P1W",    "P\xff",  "P1Y\x80", "PT1M1H", "PTT1H", "P1DT"};
    for (const char* text : bad)
        EXPECT_KV_THROW(span.ParseXSDDuration(text), CKvInvalidValueException,
                        "Invalid XSD Duration [" + std::string(text) + "] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]");
    span = Span("P1Y");
    EXPECT_THROW(span.ParseXSDDuration("P1H"), CKvInvalidValueException);
    EXPECT_EQ(span.GetYears(), 0);  // cleared by the failed parse
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

TEST(DateTimeSpanCompare, UsesTheFourReferenceDates) {
    EXPECT_EQ(Span("P1M").CompareTo(Span("P30D")), 3);
    EXPECT_EQ(Span("P1Y").CompareTo(Span("P12M")), 0);
    EXPECT_EQ(Span("PT1H").CompareTo(Span("PT60M")), 0);
    EXPECT_EQ(Span("P1D").CompareTo(Span("PT24H")), 0);
    EXPECT_EQ(Span("P1D").CompareTo(Span("PT23H")), 2);
    EXPECT_EQ(Span("P1D").CompareTo(Span("PT25H")), 1);
    EXPECT_EQ(Span("P1Y").CompareTo(Span("P365D")), 3);
    EXPECT_EQ(Span("P1Y").CompareTo(Span("P367D")), 1);
    EXPECT_EQ(Span("-PT2H").CompareTo(Span("-PT1H")), 1);
    EXPECT_EQ(Span("PT0.000000001S").CompareTo(Span("PT0S")), 2);
    // Compare reads the first value's month on both sides, so months alone never differ.
    EXPECT_EQ(Span("P1M").CompareTo(Span("P2M")), 0);
    // ... and across a month end the day alone decides: 1696-08-31 against 1696-09-02.
    EXPECT_EQ(Span("-P1D").CompareTo(Span("P1D")), 2);
    // Sums far beyond the year range still compare.
    EXPECT_EQ(Span("P65535Y").CompareTo(Span("P1Y")), 2);
    EXPECT_EQ(Span("PT4294967295S").CompareTo(Span("P1D")), 2);

    EXPECT_TRUE(Span("PT1H") == Span("PT60M"));
    EXPECT_TRUE(Span("PT1H") < Span("PT61M"));
    EXPECT_TRUE(Span("PT2H") > Span("PT61M"));
    EXPECT_TRUE(Span("P1M") != Span("P30D"));
    EXPECT_FALSE(Span("P1M") < Span("P30D"));
    EXPECT_FALSE(Span("P1M") > Span("P30D"));
    EXPECT_FALSE(Span("P1M") == Span("P30D"));
}
