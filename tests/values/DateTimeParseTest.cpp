// DateTimeParseTest.cpp - CDateTime lexical forms: parsing, validation messages and printing.
#include <string>

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

CDateTime DateTime(const char* text) {
    CDateTime value;
    value.ParseXSDDateTime(text);
    return value;
}

}  // namespace

TEST(DateTimeParse, DateFormsDecideTheType) {
    struct Case {
        const char* text;
        CDateTime::DTType type;
        const char* printed;
    } cases[] = {
        {"2004-02-29", CDateTime::dt_date, "2004-02-29"},
        {"2001-05", CDateTime::dt_gYearMonth, "2001-05"},
        {"2001", CDateTime::dt_gYear, "2001"},
        {"--05", CDateTime::dt_gMonth, "--05"},
        {"--05--", CDateTime::dt_gMonth, "--05"},
        {"--02-29", CDateTime::dt_gMonthDay, "--02-29"},
        {"---07", CDateTime::dt_gDay, "---07"},
        {"-0044-03-15", CDateTime::dt_date, "-0044-03-15"},
        {"-0044", CDateTime::dt_gYear, "-0044"},
        {"2004-01-01Z", CDateTime::dt_date, "2004-01-01Z"},
        {"2004-01-01+05:30", CDateTime::dt_date, "2004-01-01+05:30"},
        {"2004-05:00", CDateTime::dt_gYear, "2004-05:00"},
        {"---15-14:00", CDateTime::dt_gDay, "---15-14:00"},
        {"--12-31+00:00", CDateTime::dt_gMonthDay, "--12-31+00:00"},
        {"-0001-12-31Z", CDateTime::dt_date, "-0001-12-31Z"},
    };
    for (const Case& c : cases) {
        CDateTime value = Date(c.text);
        EXPECT_EQ(value.GetType(), c.type) << c.text;
        EXPECT_EQ(value.ToString(), c.printed) << c.text;
    }
    CDateTime negative = Date("-0044-03-15");
    EXPECT_EQ(negative.GetYear(), -44);
    EXPECT_EQ(negative.GetMonth(), 3);
    EXPECT_EQ(negative.GetDay(), 15);
}

TEST(DateTimeParse, RejectsBadDatesWithTheirMessages) {
    CDateTime value;
    EXPECT_KV_THROW(value.ParseXSDDate(nullptr), CKvInvalidValueException, "Invalid Date (Null String)");
    EXPECT_KV_THROW(value.ParseXSDDate(""), CKvInvalidValueException, "Invalid Date (Empty String)");
    EXPECT_KV_THROW(value.ParseXSDDate("2004-01-01T00:00:00"), CKvInvalidValueException,
                    "Invalid Date ('T' not allowed)");
    EXPECT_KV_THROW(value.ParseXSDDate("2004-01-01+0a:00"), CKvInvalidValueException, "Invalid Date (Bad Zone value)");
    EXPECT_KV_THROW(value.ParseXSDDate("2004-01-01+24:00"), CKvInvalidValueException, "Invalid TimeZone [24:0]");
    EXPECT_KV_THROW(value.ParseXSDDate("2003-02-29"), CKvInvalidValueException,
                    "Invalid Day [29] (1 <= day <= days in month");
    EXPECT_KV_THROW(value.ParseXSDDate("2004-04-31"), CKvInvalidValueException,
                    "Invalid Day [31] (1 <= day <= days in month");
    EXPECT_KV_THROW(value.ParseXSDDate("--04-31"), CKvInvalidValueException,
                    "Invalid Day [31] (1 <= day <= days in month)");
    EXPECT_KV_THROW(value.ParseXSDDate("---32"), CKvInvalidValueException, "Invalid Day [32] (1 <= day <= 31)");
    EXPECT_KV_THROW(value.ParseXSDDate("---00"), CKvInvalidValueException, "Invalid Day [0] (1 <= day <= 31)");
    EXPECT_KV_THROW(value.ParseXSDDate("0000-01-01"), CKvInvalidValueException,
                    "Invalid Year [0] (-9999 <= year <= 9999 && year != 0)");
    EXPECT_KV_THROW(value.ParseXSDDate("-0000"), CKvInvalidValueException,
                    "Invalid Year [0] (-9999 <= year <= 9999 && year != 0)");
    EXPECT_KV_THROW(value.ParseXSDDate("2004-13"), CKvInvalidValueException, "Invalid Month [13] (1 <= month <= 12)");
    EXPECT_KV_THROW(value.ParseXSDDate("--00"), CKvInvalidValueException, "Invalid Month [0] (1 <= month <= 12)");

    const char* shapes[] = {"12004-01-01", "204-01-01",   "2004-1-01",  "2004-01-1",   "+2004-01-01", "2004/01/01",
                            "2004-01-01 ", " 2004-01-01", "--2004",     "----05",      "--05-",       "--5",
                            "2004-01-01+", "2004-01-01Z+", "Z",         "-",           "--",          "---",
                            "2004-+1-01", "\xff\xfe\x80", "20\xc3\xa9", "99999999999999999999999999", "2004-01-01-"};
    for (const char* text : shapes) {
        EXPECT_KV_THROW(value.ParseXSDDate(text), CKvInvalidValueException,
                        "Invalid XSD Date [" + std::string(text) + "] expected CCYY-MM-DD[Z|[+|-]hh:mm]");
    }
}

TEST(DateTimeParse, TimeFractionFillsMilliMicroNanoFromTheLeft) {
    CDateTime half = Time("12:30:00.5Z");
    EXPECT_EQ(half.GetType(), CDateTime::dt_time);
    EXPECT_EQ(half.GetMilliSecond(), 500);
    EXPECT_EQ(half.ToString(), "12:30:00.5Z");
    CDateTime full = Time("23:59:59.123456789");
    EXPECT_EQ(full.GetMilliSecond(), 123);
    EXPECT_EQ(full.GetMicroSecond(), 456);
    EXPECT_EQ(full.GetNanoSecond(), 789);
    EXPECT_DOUBLE_EQ(full.GetRealSecond(), 59.123456789);
    EXPECT_EQ(full.ToString(), "23:59:59.123456789");

    const char* roundTrips[] = {"00:00:00",           "12:00:00.005",      "12:00:00.000001", "12:00:00.000000001",
                                "12:00:00.12+14:00",  "12:00:00-23:59",    "12:00:00.1002",   "08:15:30.0000305Z"};
    for (const char* text : roundTrips) EXPECT_EQ(Time(text).ToString(), text);
    EXPECT_EQ(Time("12:00:00.000").ToString(), "12:00:00");
    EXPECT_EQ(Time("12:00:00.50").ToString(), "12:00:00.5");
}

TEST(DateTimeParse, RejectsBadTimesWithTheirMessages) {
    CDateTime value;
    EXPECT_KV_THROW(value.ParseXSDTime(nullptr), CKvInvalidValueException, "Invalid Time (Null String)");
    EXPECT_KV_THROW(value.ParseXSDTime(""), CKvInvalidValueException, "Invalid XSD Time (Empty String)");
    EXPECT_KV_THROW(value.ParseXSDTime("12:30:00.1234567891"), CKvInvalidValueException,
                    "Invalid XSD Time [12:30:00.1234567891] Fraction part too long");
    EXPECT_KV_THROW(value.ParseXSDTime("24:00:00"), CKvInvalidValueException, "Invalid Hour [24] (0 <= hour <= 23)");
    EXPECT_KV_THROW(value.ParseXSDTime("12:60:00"), CKvInvalidValueException,
                    "Invalid Minute [60] (0 <= minute <= 59)");
    EXPECT_KV_THROW(value.ParseXSDTime("12:00:60"), CKvInvalidValueException,
                    "Invalid Second [60] (0 <= second <= 59)");
    EXPECT_KV_THROW(value.ParseXSDTime("12:00:00+24:00"), CKvInvalidValueException, "Invalid TimeZone [24:0]");
    EXPECT_KV_THROW(value.ParseXSDTime("12:00:00-01:60"), CKvInvalidValueException, "Invalid TimeZone [-1:60]");
    EXPECT_KV_THROW(value.ParseXSDTime("12:00:00+1:00"), CKvInvalidValueException, "Invalid XSD Time Zone [+1:00]");
    EXPECT_KV_THROW(value.ParseXSDTime("12:00:00z"), CKvInvalidValueException, "Invalid XSD Time Zone [z]");
    EXPECT_KV_THROW(value.ParseXSDTime("12:00:00ZZ"), CKvInvalidValueException, "Invalid XSD Time Zone [ZZ]");
    const char* shapes[] = {"1:00:00", "12:0:00", "12-00-00", "12:00", "12:00:00.", "12:00:00.Z", "+12:00:00",
                            "12:00:0\xff", "T12:00:00"};
    for (const char* text : shapes)
        EXPECT_KV_THROW(value.ParseXSDTime(text), CKvInvalidValueException,
                        "Invalid XSD Time [" + std::string(text) + "] expected hh:mm:ss[.ff]");
    EXPECT_EQ(Time("12:00:00+14:00").GetZoneHour(), 14);
}

TEST(DateTimeParse, DateTimeJoinsAFullDateAndATime) {
    CDateTime value = DateTime("2004-02-29T23:59:59.999Z");
    EXPECT_EQ(value.GetType(), CDateTime::dt_dateTime);
    EXPECT_EQ(value.ToString(), "2004-02-29T23:59:59.999Z");
    EXPECT_EQ(DateTime("-0044-03-15T12:00:00-05:00").ToString(), "-0044-03-15T12:00:00-05:00");
    EXPECT_EQ(CDateTime("2001-10-26T21:32:52").ToString(), "2001-10-26T21:32:52");

    EXPECT_KV_THROW(value.ParseXSDDateTime(nullptr), CKvInvalidValueException, "Invalid DateTime (Null String)");
    EXPECT_KV_THROW(value.ParseXSDDateTime(""), CKvInvalidValueException,
                    "Invalid XSD DateTime [] expected CCYY-MM-DDThh:mm:ss[.ff]");
    EXPECT_KV_THROW(value.ParseXSDDateTime("2004-01-01"), CKvInvalidValueException,
                    "Invalid XSD DateTime [2004-01-01] expected CCYY-MM-DDThh:mm:ss[.ff]");
    EXPECT_KV_THROW(value.ParseXSDDateTime("2004-01T12:00:00"), CKvInvalidValueException,
                    "Invalid XSD DateTime [2004-01T12:00:00]");
    EXPECT_KV_THROW(value.ParseXSDDateTime("2004-01-01ZT12:00:00"), CKvInvalidValueException,
                    "Invalid XSD DateTime [2004-01-01ZT12:00:00]");
    EXPECT_KV_THROW(value.ParseXSDDateTime("2003-02-29T12:00:00"), CKvInvalidValueException,
                    "Invalid Day [29] (1 <= day <= days in month");
    EXPECT_KV_THROW(value.ParseXSDDateTime("2004-01-01T24:00:00"), CKvInvalidValueException,
                    "Invalid Hour [24] (0 <= hour <= 23)");
    EXPECT_KV_THROW(value.ParseXSDDateTime("2004-01-01T"), CKvInvalidValueException, "Invalid XSD Time (Empty String)");
    EXPECT_KV_THROW(value.ParseXSDDateTime("T12:00:00"), CKvInvalidValueException, "Invalid Date (Empty String)");
    EXPECT_KV_THROW(value.ParseXSDDateTime("2004-01-01T12:00"), CKvInvalidValueException,
                    "Invalid XSD Time [12:00] expected hh:mm:ss[.ff]");
    EXPECT_KV_THROW(CDateTime("2004-01-01t12:00:00"), CKvInvalidValueException,
                    "Invalid XSD DateTime [2004-01-01t12:00:00] expected CCYY-MM-DDThh:mm:ss[.ff]");
}

TEST(DateTimeParse, FailedParseLeavesTheValueCleared) {
    CDateTime value = DateTime("2004-01-01T12:00:00Z");
    EXPECT_THROW(value.ParseXSDDate("2004-02-30"), CKvInvalidValueException);
    EXPECT_EQ(value.GetType(), CDateTime::dt_none);
    EXPECT_FALSE(value.IsUTC());
    value = Date("2004-01-01");
    EXPECT_THROW(value.ParseXSDTime(nullptr), CKvInvalidValueException);
    EXPECT_EQ(value.GetType(), CDateTime::dt_none);
}

TEST(DateTimeValidate, SettersRejectFieldsTheTypeCannotHold) {
    CDateTime value;
    EXPECT_KV_THROW(value.Validate(), CKvInvalidValueException, "Invalid Year Zero");
    EXPECT_KV_THROW(value.SetDate(2004, 13, 1), CKvInvalidValueException, "Invalid Month [13] (1 <= month <= 12)");
    EXPECT_KV_THROW(value.SetDate(-10000, 1, 1), CKvInvalidValueException,
                    "Invalid Year [-10000] (-9999 <= year <= 9999 && year != 0)");
    EXPECT_KV_THROW(value.SetGMonthDay(2, 30), CKvInvalidValueException,
                    "Invalid Day [30] (1 <= day <= days in month)");
    EXPECT_KV_THROW(value.SetDateTime(CDateTime::dt_gYear, 2004, 1, 0, 0, 0, 0, 0, 0, 0), CKvInvalidValueException,
                    "Invalid Month [1] for type gYear");
    EXPECT_KV_THROW(value.SetDateTime(CDateTime::dt_gMonth, 2004, 1, 0, 0, 0, 0, 0, 0, 0), CKvInvalidValueException,
                    "Invalid Year [2004] for type gMonth");
    EXPECT_KV_THROW(value.SetDateTime(CDateTime::dt_gYearMonth, 2004, 1, 3, 0, 0, 0, 0, 0, 0),
                    CKvInvalidValueException, "Invalid Day [3] for type gYearMonth");
    EXPECT_KV_THROW(value.SetDateTime(CDateTime::dt_date, 2004, 1, 3, 1, 0, 0, 0, 0, 0), CKvInvalidValueException,
                    "Invalid Hour [1] for type date");
    EXPECT_KV_THROW(value.SetDateTime(CDateTime::dt_gDay, 0, 0, 3, 0, 2, 0, 0, 0, 0), CKvInvalidValueException,
                    "Invalid Minute [2] for type gDay");
    EXPECT_KV_THROW(value.SetDateTime(CDateTime::dt_gDay, 0, 0, 3, 0, 0, 3, 0, 0, 0), CKvInvalidValueException,
                    "Invalid Second [3] for type gDay");
    EXPECT_KV_THROW(value.SetDateTime(CDateTime::dt_gDay, 0, 0, 3, 0, 0, 0, 4, 0, 0), CKvInvalidValueException,
                    "Invalid Milli-Second [4] for type gDay");
    EXPECT_KV_THROW(value.SetDateTime(CDateTime::dt_gDay, 0, 0, 3, 0, 0, 0, 0, 5, 0), CKvInvalidValueException,
                    "Invalid Micro-Second [5] for type gDay");
    EXPECT_KV_THROW(value.SetDateTime(CDateTime::dt_gDay, 0, 0, 3, 0, 0, 0, 0, 0, 6), CKvInvalidValueException,
                    "Invalid Nano-Second [6] for type gDay");
    EXPECT_KV_THROW(value.SetTime(1, 2, 3, 1000, 0, 0), CKvInvalidValueException,
                    "Invalid Milli-Second [1000] (0 <= milli <= 999)");
    EXPECT_KV_THROW(value.SetTime(1, 2, 3, 0, 1000, 0), CKvInvalidValueException,
                    "Invalid Micro-Second [1000] (0 <= micro <= 999)");
    EXPECT_KV_THROW(value.SetTime(1, 2, 3, 0, 0, 1000), CKvInvalidValueException,
                    "Invalid Nano-Second [1000] (0 <= nano <= 999)");
    EXPECT_KV_THROW(value.SetDateTime(static_cast<CDateTime::DTType>(9), 0, 0, 0, 0, 0, 0, 0, 0, 0),
                    CKvInvalidValueException, "Unknown date type 9.");
}

TEST(DateTimeValidate, FailedSettersKeepTheValueAndConstructorsClear) {
    CDateTime value(2004, 1, 31);
    EXPECT_THROW(value.SetMonth(2), CKvInvalidValueException);
    EXPECT_EQ(value.ToString(), "2004-01-31");
    value.SetDay(29);
    value.SetMonth(2);
    EXPECT_EQ(value.ToString(), "2004-02-29");
    EXPECT_THROW(value.SetYear(2003), CKvInvalidValueException);
    EXPECT_EQ(value.GetYear(), 2004);
    EXPECT_THROW(value.SetHour(1), CKvInvalidValueException);

    EXPECT_EQ(CDateTime(2003, 2, 29).GetType(), CDateTime::dt_none);
    EXPECT_EQ(CDateTime(2004, 1, 1, 24, 0, 0).GetType(), CDateTime::dt_none);
    EXPECT_EQ(CDateTime(2004, 1, 1, 23, 0, 0, 999, 999, 1000).GetType(), CDateTime::dt_none);
    EXPECT_EQ(CDateTime(2004, 1, 1, 23, 0, 0, 1, 2, 3).ToString(), "2004-01-01T23:00:00.001002003");

    CDateTime time;
    time.SetTime(7, 8, 9);
    time.SetFracTime(10, 0, 0);
    EXPECT_EQ(time.ToString(), "07:08:09.01");
    EXPECT_KV_THROW(CDateTime(2004, 1, 1).SetFracTime(1, 0, 0), CKvInvalidValueException,
                    "Invalid Milli-Second [1] for type date");
}

TEST(DateTimeType, NamesAndGettersThatRefuseMissingFields) {
    const char* names[] = {"yearZero", "dateTime", "date",   "gYearMonth", "gYear",
                           "time",     "gDay",     "gMonth", "gMonthDay"};
    for (int i = 0; i <= 8; ++i) EXPECT_EQ(CDateTime::GetTypeAsString(static_cast<CDateTime::DTType>(i)), names[i]);
    EXPECT_EQ(CDateTime::GetTypeAsString(static_cast<CDateTime::DTType>(9)), "");
    EXPECT_EQ(CDateTime().GetTypeAsString(), "yearZero");

    CDateTime year = Date("2004");
    EXPECT_KV_THROW(year.GetMonth(), CKvInvalidValueException, "Failed to GetMonth. Invalid Date Type: gYear.");
    EXPECT_KV_THROW(year.GetDay(), CKvInvalidValueException, "Failed to GetDay. Invalid Date Type: gYear.");
    EXPECT_KV_THROW(year.GetHour(), CKvInvalidValueException, "Failed to GetHour. Invalid Date Type: gYear.");
    EXPECT_KV_THROW(year.GetDayOfYear(), CKvInvalidValueException, "Failed to GetDayOfYear. Invalid Date Type: gYear.");
    EXPECT_KV_THROW(year.GetTime(), CKvInvalidValueException,
                    "Failed to GetTime, Date Status must be dateTime or date. Invalid Date Type: gYear.");
    CDateTime time = Time("10:00:00");
    EXPECT_KV_THROW(time.GetYear(), CKvInvalidValueException, "Failed to GetYear. Invalid Date Type: time.");
    EXPECT_KV_THROW(time.GetDayOfWeek(), CKvInvalidValueException, "Failed to GetDayOfWeek. Invalid Date Type: time.");
    CDateTime date = Date("2004-01-01");
    EXPECT_KV_THROW(date.GetMinute(), CKvInvalidValueException, "Failed to GetMinute. Invalid Date Type: date.");
    EXPECT_KV_THROW(date.GetSecond(), CKvInvalidValueException, "Failed to GetSecond. Invalid Date Type: date.");
    EXPECT_KV_THROW(date.GetMilliSecond(), CKvInvalidValueException,
                    "Failed to GetMilliSecond. Invalid Date Type: date.");
    EXPECT_KV_THROW(date.GetMicroSecond(), CKvInvalidValueException,
                    "Failed to GetMicroSecond. Invalid Date Type: date.");
    EXPECT_KV_THROW(date.GetNanoSecond(), CKvInvalidValueException, "Failed to GetNanoSecond. Invalid Date Type: date.");
    EXPECT_KV_THROW(date.GetRealSecond(), CKvInvalidValueException,
                    "Failed to GetRealSecond. Invalid Date Type: date.");
    EXPECT_KV_THROW(CDateTime().GetYear(), CKvInvalidValueException, "Failed to GetYear. Invalid Date Type: yearZero.");
    EXPECT_KV_THROW(date.GetZoneHour(), CKvInvalidValueException, "TimeZone is not been used");
    EXPECT_KV_THROW(Date("2004Z").GetZoneMinute(), CKvInvalidValueException, "TimeZone is not been used");
}

TEST(DateTimeType, ConversionNeedsEveryTargetField) {
    CDateTime source = DateTime("2004-02-29T10:11:12.5+01:00");
    CDateTime target;
    target.SetDateTime(source, CDateTime::dt_gMonthDay);
    EXPECT_EQ(target.ToString(), "--02-29+01:00");
    target.SetDateTime(source, CDateTime::dt_time);
    EXPECT_EQ(target.ToString(), "10:11:12.5+01:00");
    EXPECT_KV_THROW(target.SetDateTime(Date("2004-02"), CDateTime::dt_date), CKvInvalidValueException,
                    "Attempting to set a CDateTime of type date using an XmlDateTime of type gYearMonth. The source "
                    "CDateTime does not contian enough data to allow the conversion.");
    EXPECT_KV_THROW(CDateTime::CheckConversion(CDateTime::dt_time, static_cast<CDateTime::DTType>(12)),
                    CKvInvalidValueException, "Unknown date type 12.");
    EXPECT_NO_THROW(CDateTime::CheckConversion(CDateTime::dt_dateTime, CDateTime::dt_gYear));
}

TEST(DateTimePrint, FormatsZonesAndFractions) {
    CDateTime value = Date("2004-01-01");
    EXPECT_EQ(value.ToString(nullptr), "");
    EXPECT_EQ(value.ToString(""), "");
    EXPECT_EQ(value.ToString("G"), "2004-01-01");
    EXPECT_KV_THROW(value.ToString("yyyy"), CKvInvalidParamException, "Unknown Format: yyyy");
    EXPECT_KV_THROW(CDateTime().ToString(), CKvInvalidValueException, "Date Not Set");
    EXPECT_KV_THROW(CDateTime(CDateTime::dt_date).ToString(), CKvInvalidValueException, "Date Not Set");

    value.SetTimeZone(0, 0);
    EXPECT_EQ(value.ToString(), "2004-01-01+00:00");
    value.SetTimeZone(-5, 30);
    EXPECT_EQ(value.ToString(), "2004-01-01-05:30");
    value.SetUTC();
    EXPECT_EQ(value.ToString(), "2004-01-01Z");
    EXPECT_TRUE(value.IsUTC());
    EXPECT_FALSE(value.HasTimeZone());
    // An offset's sign lives in its hour, so -00:30 comes back as +00:30.
    EXPECT_EQ(Time("12:00:00-00:30").ToString(), "12:00:00+00:30");
    EXPECT_KV_THROW(value.SetTimeZone(24, 0), CKvInvalidValueException, "Invalid TimeZone [24:0]");
    EXPECT_KV_THROW(value.SetTimeZone(-24, 0), CKvInvalidValueException, "Invalid TimeZone [-24:0]");

    EXPECT_EQ(CDateTime::ToFracString(0, 0, 0), "");
    EXPECT_EQ(CDateTime::ToFracString(500, 0, 0), ".5");
    EXPECT_EQ(CDateTime::ToFracString(5, 0, 0), ".005");
    EXPECT_EQ(CDateTime::ToFracString(0, 10, 0), ".00001");
    EXPECT_EQ(CDateTime::ToFracString(0, 0, 100), ".0000001");
    EXPECT_EQ(CDateTime::ToFracString(120, 0, 9), ".120000009");
}

TEST(DateTimeCalendar, DayOfYearAndWeekday) {
    EXPECT_EQ(Date("2004-12-31").GetDayOfYear(), 366);
    EXPECT_EQ(Date("2003-12-31").GetDayOfYear(), 365);
    EXPECT_EQ(Date("2004-03-01").GetDayOfYear(), 61);
    EXPECT_EQ(Date("1970-01-01").GetDayOfWeek(), 4);  // Thursday
    EXPECT_EQ(Date("2000-01-01").GetDayOfWeek(), 6);  // Saturday
    EXPECT_EQ(DateTime("2024-02-29T12:00:00").GetDayOfWeek(), 4);
    EXPECT_EQ(Date("0001-01-01").GetDayOfWeek(), 1);  // Monday

    EXPECT_TRUE(IsLeapYear(2000));
    EXPECT_TRUE(IsLeapYear(2004));
    EXPECT_FALSE(IsLeapYear(1900));
    EXPECT_FALSE(IsLeapYear(2003));
    EXPECT_TRUE(IsLeapYear(-4));
    EXPECT_FALSE(IsLeapYear(-1));
}
