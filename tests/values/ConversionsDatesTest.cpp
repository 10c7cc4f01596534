// ConversionsDatesTest.cpp - CConversions for durations, the date and time types and the bare year, month and day.
#include <gtest/gtest.h>

#include <string>

#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Conversions.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using Rule = CWhitespaceUtils::WhitespaceRule;

TEST(ConversionsDuration, RoundTripsAfterTheRule) {
    for (const char* text : {"P1Y2M3DT4H5M6.5S", "PT90M", "-P1D", "PT0.000001S", "P400DT12H"})
        EXPECT_EQ(CConversions::durationToString(CConversions::durationFromString(text, Rule::None)), text);
    EXPECT_EQ(CConversions::durationToString(CConversions::durationFromString("\n P1D \t", Rule::Collapse)), "P1D");
    EXPECT_KV_THROW(CConversions::durationFromString(" P1D", Rule::None), CKvInvalidValueException,
                    "Invalid XSD Duration [ P1D] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]");
    EXPECT_KV_THROW(CConversions::durationFromString("  ", Rule::Collapse), CKvInvalidValueException,
                    "Invalid XSD Duration (Empty String)");
}

TEST(ConversionsDateTypes, EachTypeRoundTripsItsOwnForm) {
    struct Case {
        CDateTime (*parse)(const std::string&, Rule);
        std::string (*print)(const CDateTime&);
        const char* text;
    };
    const Case cases[] = {
        {CConversions::dateFromString, CConversions::dateToString, "2004-02-29"},
        {CConversions::dateFromString, CConversions::dateToString, "-0044-03-15Z"},
        {CConversions::dateFromString, CConversions::dateToString, "2001-05-17+09:30"},
        {CConversions::datetimeFromString, CConversions::datetimeToString, "2004-02-29T12:30:45.5Z"},
        {CConversions::datetimeFromString, CConversions::datetimeToString, "1999-12-31T23:59:59.999-05:00"},
        {CConversions::timeFromString, CConversions::timeToString, "12:30:00.5Z"},
        {CConversions::timeFromString, CConversions::timeToString, "00:00:00"},
        {CConversions::yearMonthFromString, CConversions::yearMonthToString, "2001-05"},
        {CConversions::yearMonthFromString, CConversions::yearMonthToString, "2001-12+14:00"},
        {CConversions::monthDayFromString, CConversions::monthDayToString, "--02-29"},
        {CConversions::monthDayFromString, CConversions::monthDayToString, "--12-31Z"},
    };
    for (const auto& c : cases) EXPECT_EQ(c.print(c.parse(c.text, Rule::None)), c.text);
    EXPECT_EQ(CConversions::dateToString(CConversions::dateFromString("\r\n 2004-02-29\t", Rule::Collapse)),
              "2004-02-29");
    EXPECT_EQ(CConversions::datetimeFromString("2004-02-29T12:30:45", Rule::None).GetType(), CDateTime::dt_dateTime);
    EXPECT_EQ(CConversions::timeFromString("12:30:45", Rule::None).GetType(), CDateTime::dt_time);
    EXPECT_EQ(CConversions::monthDayFromString("--02-29", Rule::None).GetType(), CDateTime::dt_gMonthDay);
}

TEST(ConversionsDateTypes, RejectsTheFormsOfOtherDateTypes) {
    EXPECT_KV_THROW(CConversions::dateFromString("2001-05", Rule::None), CKvInvalidValueException,
                    "Invalid XSD date [2001-05]");
    EXPECT_KV_THROW(CConversions::yearMonthFromString("2001-05-01Z", Rule::None), CKvInvalidValueException,
                    "Invalid XSD gYearMonth [2001-05-01Z]");
    EXPECT_KV_THROW(CConversions::monthDayFromString("--05", Rule::None), CKvInvalidValueException,
                    "Invalid XSD gMonthDay [--05]");
    EXPECT_KV_THROW(CConversions::yearFromString("2004-05", Rule::None), CKvInvalidValueException,
                    "Invalid XSD gYear [2004-05]");
    EXPECT_KV_THROW(CConversions::monthFromString("---03", Rule::None), CKvInvalidValueException,
                    "Invalid XSD gMonth [---03]");
    EXPECT_KV_THROW(CConversions::dayFromString("--03-04", Rule::None), CKvInvalidValueException,
                    "Invalid XSD gDay [--03-04]");
}

TEST(ConversionsDateTypes, PassesTheParserMessagesThrough) {
    EXPECT_KV_THROW(CConversions::dateFromString("2003-02-29", Rule::None), CKvInvalidValueException,
                    "Invalid Day [29] (1 <= day <= days in month");
    EXPECT_KV_THROW(CConversions::dateFromString("0000-01-01", Rule::None), CKvInvalidValueException,
                    "Invalid Year [0] (-9999 <= year <= 9999 && year != 0)");
    EXPECT_KV_THROW(CConversions::dateFromString("", Rule::None), CKvInvalidValueException,
                    "Invalid Date (Empty String)");
    EXPECT_KV_THROW(CConversions::datetimeFromString("2004-02-29", Rule::None), CKvInvalidValueException,
                    "Invalid XSD DateTime [2004-02-29] expected CCYY-MM-DDThh:mm:ss[.ff]");
    EXPECT_KV_THROW(CConversions::timeFromString("12:30:00.1234567891", Rule::None), CKvInvalidValueException,
                    "Invalid XSD Time [12:30:00.1234567891] Fraction part too long");
    EXPECT_KV_THROW(CConversions::dateFromString(" 2004-02-29", Rule::None), CKvInvalidValueException,
                    "Invalid XSD Date [ 2004-02-29] expected CCYY-MM-DD[Z|[+|-]hh:mm]");
}

TEST(ConversionsDateParts, ParseTheirGFormsAndDropTheZone) {
    EXPECT_EQ(CConversions::yearFromString("2004", Rule::None), 2004);
    EXPECT_EQ(CConversions::yearFromString(" 2004Z ", Rule::Collapse), 2004);
    EXPECT_EQ(CConversions::yearFromString("-0044", Rule::None), 65492);  // the 16 bits of -44
    EXPECT_EQ(CConversions::monthFromString("--03", Rule::None), 3);
    EXPECT_EQ(CConversions::monthFromString("--03--", Rule::None), 3);
    EXPECT_EQ(CConversions::monthFromString("--12-05:00", Rule::None), 12);
    EXPECT_EQ(CConversions::dayFromString("---07", Rule::None), 7);
    EXPECT_EQ(CConversions::dayFromString("---31+01:00", Rule::None), 31);
    EXPECT_KV_THROW(CConversions::yearFromString("0000", Rule::None), CKvInvalidValueException,
                    "Invalid Year [0] (-9999 <= year <= 9999 && year != 0)");
    EXPECT_KV_THROW(CConversions::monthFromString("--13", Rule::None), CKvInvalidValueException,
                    "Invalid Month [13] (1 <= month <= 12)");
    EXPECT_KV_THROW(CConversions::dayFromString("---32", Rule::None), CKvInvalidValueException,
                    "Invalid Day [32] (1 <= day <= 31)");
}

TEST(ConversionsDateParts, PrintWithTheirPrefixesAndPadding) {
    EXPECT_EQ(CConversions::monthToString(3), "--03");
    EXPECT_EQ(CConversions::monthToString(12), "--12");
    EXPECT_EQ(CConversions::dayToString(7), "---07");
    EXPECT_EQ(CConversions::dayToString(0), "---00");
    EXPECT_EQ(CConversions::dayToString(255), "---255");
    EXPECT_EQ(CConversions::yearToString(2004), "2004");
    EXPECT_EQ(CConversions::yearToString(5), "5");
    EXPECT_EQ(CConversions::yearToString(65535), "65535");
    for (unsigned m = 1; m <= 12; ++m)
        EXPECT_EQ(CConversions::monthFromString(CConversions::monthToString(static_cast<uint8_t>(m)), Rule::None), m);
    for (unsigned d = 1; d <= 31; ++d)
        EXPECT_EQ(CConversions::dayFromString(CConversions::dayToString(static_cast<uint8_t>(d)), Rule::None), d);
}

TEST(ConversionsDateTypes, PrintingAnEmptyValueThrows) {
    EXPECT_KV_THROW(CConversions::dateToString(CDateTime()), CKvInvalidValueException, "Date Not Set");
}
