// ConversionsDatesTest.cpp - CConversions for durations, the date and time types and the bare year, month and day.
#include <gtest/gtest.h>

#include <string>

#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Conversions.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using C = CConversions;
using Rule = CWhitespaceUtils::WhitespaceRule;

// KvVariant's text table runs every converter on a plain form; here the zones and the rule.
TEST(ConversionsDateTypes, EachTypeRoundTripsItsOwnFormAfterTheRule) {
    EXPECT_EQ(C::dateToString(C::dateFromString("-0044-03-15Z", Rule::None)), "-0044-03-15Z");
    EXPECT_EQ(C::dateToString(C::dateFromString("\r\n 2001-05-17+09:30\t", Rule::Collapse)), "2001-05-17+09:30");
    EXPECT_EQ(C::datetimeToString(C::datetimeFromString("1999-12-31T23:59:59.999-05:00", Rule::None)),
              "1999-12-31T23:59:59.999-05:00");
    EXPECT_EQ(C::timeToString(C::timeFromString("00:00:00-01:30", Rule::None)), "00:00:00-01:30");
    EXPECT_EQ(C::yearMonthToString(C::yearMonthFromString("2001-12+14:00", Rule::None)), "2001-12+14:00");
    EXPECT_EQ(C::monthDayToString(C::monthDayFromString("--12-31Z", Rule::None)), "--12-31Z");
    EXPECT_EQ(C::durationToString(C::durationFromString("\n -P1D \t", Rule::Collapse)), "-P1D");
    EXPECT_KV_THROW(C::durationFromString("  ", Rule::Collapse), CKvInvalidValueException,
                    "Invalid XSD Duration (Empty String)");
}

TEST(ConversionsDateTypes, RejectsTheFormsOfOtherDateTypesAndPassesParserMessages) {
    EXPECT_KV_THROW(C::dateFromString("2001-05", Rule::None), CKvInvalidValueException, "Invalid XSD date [2001-05]");
    EXPECT_KV_THROW(C::yearMonthFromString("2001-05-01Z", Rule::None), CKvInvalidValueException,
                    "Invalid XSD gYearMonth [2001-05-01Z]");
    EXPECT_KV_THROW(C::monthDayFromString("--05", Rule::None), CKvInvalidValueException,
                    "Invalid XSD gMonthDay [--05]");
    EXPECT_KV_THROW(C::yearFromString("2004-05", Rule::None), CKvInvalidValueException, "Invalid XSD gYear [2004-05]");
    EXPECT_KV_THROW(C::monthFromString("---03", Rule::None), CKvInvalidValueException, "Invalid XSD gMonth [---03]");
    EXPECT_KV_THROW(C::dayFromString("--03-04", Rule::None), CKvInvalidValueException, "Invalid XSD gDay [--03-04]");
    EXPECT_KV_THROW(C::dateFromString("2003-02-29", Rule::None), CKvInvalidValueException,
                    "Invalid Day [29] (1 <= day <= days in month");
    EXPECT_KV_THROW(C::datetimeFromString("2004-02-29", Rule::None), CKvInvalidValueException,
                    "Invalid XSD DateTime [2004-02-29] expected CCYY-MM-DDThh:mm:ss[.ff]");
    EXPECT_KV_THROW(C::yearFromString("0000", Rule::None), CKvInvalidValueException,
                    "Invalid Year [0] (-9999 <= year <= 9999 && year != 0)");
}

TEST(ConversionsDateParts, ParseTheirGFormsDropTheZoneAndPrintWithPrefixes) {
    EXPECT_EQ(C::yearFromString("2004", Rule::None), 2004);
    EXPECT_EQ(C::yearFromString(" 2004Z ", Rule::Collapse), 2004);
    EXPECT_EQ(C::yearFromString("-0044", Rule::None), 65492);  // the 16 bits of -44
    EXPECT_EQ(C::monthFromString("--03--", Rule::None), 3);
    EXPECT_EQ(C::monthFromString("--12-05:00", Rule::None), 12);
    EXPECT_EQ(C::dayFromString("---31+01:00", Rule::None), 31);
    EXPECT_EQ(C::monthToString(3), "--03");
    EXPECT_EQ(C::dayToString(7), "---07");
    EXPECT_EQ(C::dayToString(0), "---00");
    EXPECT_EQ(C::dayToString(255), "---255");
    EXPECT_EQ(C::yearToString(5), "5");
    EXPECT_EQ(C::yearToString(65535), "65535");
    for (uint8_t m = 1; m <= 12; ++m) EXPECT_EQ(C::monthFromString(C::monthToString(m), Rule::None), m);
    for (uint8_t d = 1; d <= 31; ++d) EXPECT_EQ(C::dayFromString(C::dayToString(d), Rule::None), d);
}
