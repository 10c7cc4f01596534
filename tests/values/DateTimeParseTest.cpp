// DateTimeParseTest.cpp - CDateTime lexical forms: parsing, validation messages and printing.
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

using Parser = void (CDateTime::*)(const char*);
const Parser kDate = &CDateTime::ParseXSDDate, kTime = &CDateTime::ParseXSDTime,
             kDateTime = &CDateTime::ParseXSDDateTime;

CDateTime Parsed(Parser parse, const char* text) {
    CDateTime value;
    (value.*parse)(text);
    return value;
}

}  // namespace

TEST(DateTimeParse, DateFormsDecideTheTypeAndPrintBack) {
    using DT = CDateTime;
    const std::pair<const char*, DT::DTType> cases[] = {
        {"2004-02-29", DT::dt_date},       {"2001-05", DT::dt_gYearMonth},    {"2001", DT::dt_gYear},
        {"--05", DT::dt_gMonth},           {"--02-29", DT::dt_gMonthDay},     {"---07", DT::dt_gDay},
        {"-0044-03-15", DT::dt_date},      {"-0044", DT::dt_gYear},           {"2004-01-01Z", DT::dt_date},
        {"2004-05:00", DT::dt_gYear},      {"---15-14:00", DT::dt_gDay},      {"-0001-12-31Z", DT::dt_date},
        {"2004-01-01+05:30", DT::dt_date}, {"--12-31+00:00", DT::dt_gMonthDay},
    };
    for (const auto& [text, type] : cases) {
        const CDateTime value = Parsed(kDate, text);
        EXPECT_EQ(value.GetType(), type) << text;
        EXPECT_EQ(value.ToString(), text);
    }
    EXPECT_EQ(Parsed(kDate, "--05--").ToString(), "--05");  // the older gMonth form
    const CDateTime negative = Parsed(kDate, "-0044-03-15");
    EXPECT_EQ(negative.GetYear(), -44);
    EXPECT_EQ(negative.GetMonth(), 3);
    EXPECT_EQ(negative.GetDay(), 15);
}

TEST(DateTimeParse, TimeFractionFillsMilliMicroNanoFromTheLeft) {
    const CDateTime full = Parsed(kTime, "23:59:59.123456789");
    EXPECT_EQ(full.GetType(), CDateTime::dt_time);
    EXPECT_EQ(full.GetMilliSecond(), 123);
    EXPECT_EQ(full.GetMicroSecond(), 456);
    EXPECT_EQ(full.GetNanoSecond(), 789);
    EXPECT_DOUBLE_EQ(full.GetRealSecond(), 59.123456789);
    EXPECT_EQ(Parsed(kTime, "12:30:00.5Z").GetMilliSecond(), 500);
    EXPECT_EQ(Parsed(kTime, "12:00:00+14:00").GetZoneHour(), 14);
    for (const char* text : {"12:30:00.5Z", "23:59:59.123456789", "00:00:00", "12:00:00.005", "12:00:00.000001",
                             "12:00:00.000000001", "12:00:00.12+14:00", "12:00:00-23:59", "12:00:00.1002",
                             "08:15:30.0000305Z"})
        EXPECT_EQ(Parsed(kTime, text).ToString(), text);
    EXPECT_EQ(Parsed(kTime, "12:00:00.000").ToString(), "12:00:00");
    EXPECT_EQ(Parsed(kTime, "12:00:00.50").ToString(), "12:00:00.5");
    EXPECT_EQ(Parsed(kDateTime, "2004-02-29T23:59:59.999Z").GetType(), CDateTime::dt_dateTime);
    EXPECT_EQ(Parsed(kDateTime, "-0044-03-15T12:00:00-05:00").ToString(), "-0044-03-15T12:00:00-05:00");
    EXPECT_EQ(CDateTime("2001-10-26T21:32:52").ToString(), "2001-10-26T21:32:52");
}

TEST(DateTimeParse, RejectsBadTextWithTheMessages) {
    const struct { Parser parse; const char* text; const char* message; } cases[] = {
        {kDate, nullptr, "Invalid Date (Null String)"}, {kDate, "", "Invalid Date (Empty String)"},
        {kDate, "2004-01-01T00:00:00", "Invalid Date ('T' not allowed)"},
        {kDate, "2004-01-01+0a:00", "Invalid Date (Bad Zone value)"},
        {kDate, "2004-01-01+24:00", "Invalid TimeZone [24:0]"},
        {kDate, "2003-02-29", "Invalid Day [29] (1 <= day <= days in month"},
        {kDate, "2004-04-31", "Invalid Day [31] (1 <= day <= days in month"},
        {kDate, "--04-31", "Invalid Day [31] (1 <= day <= days in month)"},
        {kDate, "---32", "Invalid Day [32] (1 <= day <= 31)"}, {kDate, "---00", "Invalid Day [0] (1 <= day <= 31)"},
        {kDate, "0000-01-01", "Invalid Year [0] (-9999 <= year <= 9999 && year != 0)"},
        {kDate, "-0000", "Invalid Year [0] (-9999 <= year <= 9999 && year != 0)"},
        {kDate, "2004-13", "Invalid Month [13] (1 <= month <= 12)"},
        {kDate, "--00", "Invalid Month [0] (1 <= month <= 12)"}, {kTime, nullptr, "Invalid Time (Null String)"},
        {kTime, "", "Invalid XSD Time (Empty String)"},
        {kTime, "12:30:00.1234567891", "Invalid XSD Time [12:30:00.1234567891] Fraction part too long"},
        {kTime, "24:00:00", "Invalid Hour [24] (0 <= hour <= 23)"},
        {kTime, "12:60:00", "Invalid Minute [60] (0 <= minute <= 59)"},
        {kTime, "12:00:60", "Invalid Second [60] (0 <= second <= 59)"},
        {kTime, "12:00:00+24:00", "Invalid TimeZone [24:0]"}, {kTime, "12:00:00-01:60", "Invalid TimeZone [-1:60]"},
        {kTime, "12:00:00+1:00", "Invalid XSD Time Zone [+1:00]"}, {kTime, "12:00:00z", "Invalid XSD Time Zone [z]"},
        {kTime, "12:00:00ZZ", "Invalid XSD Time Zone [ZZ]"}, {kDateTime, nullptr, "Invalid DateTime (Null String)"},
        {kDateTime, "", "Invalid XSD DateTime [] expected CCYY-MM-DDThh:mm:ss[.ff]"},
        {kDateTime, "2004-01-01", "Invalid XSD DateTime [2004-01-01] expected CCYY-MM-DDThh:mm:ss[.ff]"},
        {kDateTime, "2004-01-01t12:00:00",
         "Invalid XSD DateTime [2004-01-01t12:00:00] expected CCYY-MM-DDThh:mm:ss[.ff]"},
        {kDateTime, "2004-01T12:00:00", "Invalid XSD DateTime [2004-01T12:00:00]"},
        {kDateTime, "2004-01-01ZT12:00:00", "Invalid XSD DateTime [2004-01-01ZT12:00:00]"},
        {kDateTime, "2003-02-29T12:00:00", "Invalid Day [29] (1 <= day <= days in month"},
        {kDateTime, "2004-01-01T24:00:00", "Invalid Hour [24] (0 <= hour <= 23)"},
        {kDateTime, "2004-01-01T", "Invalid XSD Time (Empty String)"},
        {kDateTime, "T12:00:00", "Invalid Date (Empty String)"},
        {kDateTime, "2004-01-01T12:00", "Invalid XSD Time [12:00] expected hh:mm:ss[.ff]"},
    };
    for (const auto& c : cases) EXPECT_KV_THROW(Parsed(c.parse, c.text), CKvInvalidValueException, c.message);

    for (const char* text : {"12004-01-01", "204-01-01", "2004-1-01", "2004-01-1", "+2004-01-01", "2004/01/01",
                             "2004-01-01 ", " 2004-01-01", "--2004", "----05", "--05-", "--5", "2004-01-01+",
                             "2004-01-01Z+", "Z", "-", "--", "---", "2004-+1-01", "\xff\xfe\x80", "20\xc3\xa9",
                             "99999999999999999999999999", "2004-01-01-"})
        EXPECT_KV_THROW(Parsed(kDate, text), CKvInvalidValueException,
                        "Invalid XSD Date [" + std::string(text) + "] expected CCYY-MM-DD[Z|[+|-]hh:mm]");
    for (const char* text : {"1:00:00", "12:0:00", "12-00-00", "12:00", "12:00:00.", "12:00:00.Z", "+12:00:00",
                             "12:00:0\xff", "T12:00:00"})
        EXPECT_KV_THROW(Parsed(kTime, text), CKvInvalidValueException,
                        "Invalid XSD Time [" + std::string(text) + "] expected hh:mm:ss[.ff]");
}

TEST(DateTimeValidate, SettersRejectFieldsTheTypeCannotHold) {
    CDateTime value;
    EXPECT_KV_THROW(value.Validate(), CKvInvalidValueException, "Invalid Year Zero");
    const struct {
        int type, year, month, day, hour, minute, second, milli, micro, nano;
        const char* message;
    } fields[] = {
        {CDateTime::dt_date, 2004, 13, 1, 0, 0, 0, 0, 0, 0, "Invalid Month [13] (1 <= month <= 12)"},
        {CDateTime::dt_date, -10000, 1, 1, 0, 0, 0, 0, 0, 0,
         "Invalid Year [-10000] (-9999 <= year <= 9999 && year != 0)"},
        {CDateTime::dt_gMonthDay, 0, 2, 30, 0, 0, 0, 0, 0, 0, "Invalid Day [30] (1 <= day <= days in month)"},
        {CDateTime::dt_gYear, 2004, 1, 0, 0, 0, 0, 0, 0, 0, "Invalid Month [1] for type gYear"},
        {CDateTime::dt_gMonth, 2004, 1, 0, 0, 0, 0, 0, 0, 0, "Invalid Year [2004] for type gMonth"},
        {CDateTime::dt_gYearMonth, 2004, 1, 3, 0, 0, 0, 0, 0, 0, "Invalid Day [3] for type gYearMonth"},
        {CDateTime::dt_date, 2004, 1, 3, 1, 0, 0, 0, 0, 0, "Invalid Hour [1] for type date"},
        {CDateTime::dt_gDay, 0, 0, 3, 0, 2, 0, 0, 0, 0, "Invalid Minute [2] for type gDay"},
        {CDateTime::dt_gDay, 0, 0, 3, 0, 0, 3, 0, 0, 0, "Invalid Second [3] for type gDay"},
        {CDateTime::dt_gDay, 0, 0, 3, 0, 0, 0, 4, 0, 0, "Invalid Milli-Second [4] for type gDay"},
        {CDateTime::dt_gDay, 0, 0, 3, 0, 0, 0, 0, 5, 0, "Invalid Micro-Second [5] for type gDay"},
        {CDateTime::dt_gDay, 0, 0, 3, 0, 0, 0, 0, 0, 6, "Invalid Nano-Second [6] for type gDay"},
        {CDateTime::dt_time, 0, 0, 0, 1, 2, 3, 1000, 0, 0, "Invalid Milli-Second [1000] (0 <= milli <= 999)"},
        {CDateTime::dt_time, 0, 0, 0, 1, 2, 3, 0, 1000, 0, "Invalid Micro-Second [1000] (0 <= micro <= 999)"},
        {CDateTime::dt_time, 0, 0, 0, 1, 2, 3, 0, 0, 1000, "Invalid Nano-Second [1000] (0 <= nano <= 999)"},
        {9, 0, 0, 0, 0, 0, 0, 0, 0, 0, "Unknown date type 9."},
    };
    for (const auto& f : fields)
        EXPECT_KV_THROW(value.SetDateTime(static_cast<CDateTime::DTType>(f.type), f.year, f.month, f.day, f.hour,
                                          f.minute, f.second, f.milli, f.micro, f.nano),
                        CKvInvalidValueException, f.message);
    EXPECT_KV_THROW(CDateTime(2004, 1, 1).SetFracTime(1, 0, 0), CKvInvalidValueException,
                    "Invalid Milli-Second [1] for type date");
}

TEST(DateTimeValidate, FailedParsesClearTheValueFailedSettersKeepItAndConstructorsClear) {
    CDateTime value(2004, 1, 31);
    EXPECT_KV_THROW(value.SetMonth(2), CKvInvalidValueException, "Invalid Day [31] (1 <= day <= days in month");
    EXPECT_EQ(value.ToString(), "2004-01-31");
    value.SetDay(29);
    value.SetMonth(2);
    EXPECT_EQ(value.ToString(), "2004-02-29");
    EXPECT_KV_THROW(value.SetYear(2003), CKvInvalidValueException, "Invalid Day [29] (1 <= day <= days in month");
    EXPECT_EQ(value.GetYear(), 2004);
    EXPECT_KV_THROW(value.SetHour(1), CKvInvalidValueException, "Invalid Hour [1] for type date");

    EXPECT_EQ(CDateTime(2003, 2, 29).GetType(), CDateTime::dt_none);
    EXPECT_EQ(CDateTime(2004, 1, 1, 24, 0, 0).GetType(), CDateTime::dt_none);
    EXPECT_EQ(CDateTime(2004, 1, 1, 23, 0, 0, 999, 999, 1000).GetType(), CDateTime::dt_none);
    EXPECT_EQ(CDateTime(2004, 1, 1, 23, 0, 0, 1, 2, 3).ToString(), "2004-01-01T23:00:00.001002003");
    CDateTime time;
    time.SetTime(7, 8, 9);
    time.SetFracTime(10, 0, 0);
    EXPECT_EQ(time.ToString(), "07:08:09.01");
    CDateTime parsed("2004-01-01T12:00:00Z");
    EXPECT_KV_THROW(parsed.ParseXSDDate("2004-02-30"), CKvInvalidValueException,
                    "Invalid Day [30] (1 <= day <= days in month");
    EXPECT_EQ(parsed.GetType(), CDateTime::dt_none);
    EXPECT_FALSE(parsed.IsUTC());
    parsed = Parsed(kDate, "2004-01-01");
    EXPECT_KV_THROW(parsed.ParseXSDTime(nullptr), CKvInvalidValueException, "Invalid Time (Null String)");
    EXPECT_EQ(parsed.GetType(), CDateTime::dt_none);
}

TEST(DateTimeType, NamesAndGettersThatRefuseMissingFields) {
    const char* names[] = {"yearZero", "dateTime", "date",   "gYearMonth", "gYear",
                           "time",     "gDay",     "gMonth", "gMonthDay"};
    for (int i = 0; i <= 8; ++i) EXPECT_EQ(CDateTime::GetTypeAsString(static_cast<CDateTime::DTType>(i)), names[i]);
    EXPECT_EQ(CDateTime::GetTypeAsString(static_cast<CDateTime::DTType>(9)), "");
    EXPECT_EQ(CDateTime().GetTypeAsString(), "yearZero");

    const CDateTime year = Parsed(kDate, "2004"), time = Parsed(kTime, "10:00:00"), date = Parsed(kDate, "2004-01-01");
    const std::pair<std::function<void()>, const char*> refusals[] = {
        {[&] { year.GetMonth(); }, "Failed to GetMonth. Invalid Date Type: gYear."},
        {[&] { year.GetDay(); }, "Failed to GetDay. Invalid Date Type: gYear."},
        {[&] { year.GetHour(); }, "Failed to GetHour. Invalid Date Type: gYear."},
        {[&] { year.GetDayOfYear(); }, "Failed to GetDayOfYear. Invalid Date Type: gYear."},
        {[&] { year.GetTime(); }, "Failed to GetTime, Date Status must be dateTime or date. Invalid Date Type: gYear."},
        {[&] { time.GetYear(); }, "Failed to GetYear. Invalid Date Type: time."},
        {[&] { time.GetDayOfWeek(); }, "Failed to GetDayOfWeek. Invalid Date Type: time."},
        {[&] { date.GetMinute(); }, "Failed to GetMinute. Invalid Date Type: date."},
        {[&] { date.GetSecond(); }, "Failed to GetSecond. Invalid Date Type: date."},
        {[&] { date.GetMilliSecond(); }, "Failed to GetMilliSecond. Invalid Date Type: date."},
        {[&] { date.GetMicroSecond(); }, "Failed to GetMicroSecond. Invalid Date Type: date."},
        {[&] { date.GetNanoSecond(); }, "Failed to GetNanoSecond. Invalid Date Type: date."},
        {[&] { date.GetRealSecond(); }, "Failed to GetRealSecond. Invalid Date Type: date."},
        {[&] { CDateTime().GetYear(); }, "Failed to GetYear. Invalid Date Type: yearZero."},
        {[&] { date.GetZoneHour(); }, "TimeZone is not been used"},
        {[&] { Parsed(kDate, "2004Z").GetZoneMinute(); }, "TimeZone is not been used"},
    };
    for (const auto& [call, message] : refusals) EXPECT_KV_THROW(call(), CKvInvalidValueException, message);
}

TEST(DateTimeType, ConversionNeedsEveryTargetField) {
    const CDateTime source = Parsed(kDateTime, "2004-02-29T10:11:12.5+01:00");
    CDateTime target;
    target.SetDateTime(source, CDateTime::dt_gMonthDay);
    EXPECT_EQ(target.ToString(), "--02-29+01:00");
    target.SetDateTime(source, CDateTime::dt_time);
    EXPECT_EQ(target.ToString(), "10:11:12.5+01:00");
    EXPECT_KV_THROW(target.SetDateTime(Parsed(kDate, "2004-02"), CDateTime::dt_date), CKvInvalidValueException,
                    "Attempting to set a CDateTime of type date using an XmlDateTime of type gYearMonth. The source "
                    "CDateTime does not contian enough data to allow the conversion.");
    EXPECT_KV_THROW(CDateTime::CheckConversion(CDateTime::dt_time, static_cast<CDateTime::DTType>(12)),
                    CKvInvalidValueException, "Unknown date type 12.");
    EXPECT_NO_THROW(CDateTime::CheckConversion(CDateTime::dt_dateTime, CDateTime::dt_gYear));
}

TEST(DateTimePrint, FormatsZonesAndFractions) {
    CDateTime value = Parsed(kDate, "2004-01-01");
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
    EXPECT_EQ(Parsed(kTime, "12:00:00-00:30").ToString(), "12:00:00+00:30");
    EXPECT_KV_THROW(value.SetTimeZone(-24, 0), CKvInvalidValueException, "Invalid TimeZone [-24:0]");

    const struct {
        int milli, micro, nano;
        const char* text;
    } fractions[] = {{0, 0, 0, ""},        {500, 0, 0, ".5"},        {5, 0, 0, ".005"},
                     {0, 10, 0, ".00001"}, {0, 0, 100, ".0000001"}, {120, 0, 9, ".120000009"}};
    for (const auto& f : fractions) EXPECT_EQ(CDateTime::ToFracString(f.milli, f.micro, f.nano), f.text);
}

TEST(DateTimeCalendar, DayOfYearWeekdayAndLeapYears) {
    EXPECT_EQ(Parsed(kDate, "2004-12-31").GetDayOfYear(), 366);
    EXPECT_EQ(Parsed(kDate, "2003-12-31").GetDayOfYear(), 365);
    EXPECT_EQ(Parsed(kDate, "2004-03-01").GetDayOfYear(), 61);
    EXPECT_EQ(Parsed(kDate, "1970-01-01").GetDayOfWeek(), 4);  // Thursday
    EXPECT_EQ(Parsed(kDate, "2000-01-01").GetDayOfWeek(), 6);  // Saturday
    EXPECT_EQ(Parsed(kDateTime, "2024-02-29T12:00:00").GetDayOfWeek(), 4);
    EXPECT_EQ(Parsed(kDate, "0001-01-01").GetDayOfWeek(), 1);  // Monday
    for (int leap : {2000, 2004, -4}) EXPECT_TRUE(IsLeapYear(leap)) << leap;
    for (int plain : {1900, 2003, -1}) EXPECT_FALSE(IsLeapYear(plain)) << plain;
}
