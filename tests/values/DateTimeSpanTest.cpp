// DateTimeSpanTest.cpp - CDateTimeSpan: parsing, printing and the partial order of durations.
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

CDateTimeSpan Span(const char* text) {
    CDateTimeSpan span;
    span.ParseXSDDuration(text);
    return span;
}

// Every field of a span, for one comparison: Y M D h m s ms us ns negative.
std::vector<unsigned long long> Fields(const CDateTimeSpan& s) {
    return {s.GetYears(),        s.GetMonths(),       s.GetDays(),        s.GetHours(),       s.GetMinutes(),
            s.GetSeconds(),      s.GetMilliSeconds(), s.GetMicroSeconds(), s.GetNanoSeconds(), s.IsNegative()};
}

}  // namespace

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
        {"P4294967297D", {0, 0, 1, 0, 0, 0, 0, 0, 0, 0}, "P1D"},
        {"P65537Y", {1, 0, 0, 0, 0, 0, 0, 0, 0, 0}, "P1Y"},
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
