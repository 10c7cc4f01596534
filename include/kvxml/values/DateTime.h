// DateTime.h - CDateTime: one value of any XML Schema date or time type.
//
// One class covers dateTime, date, time, gYear, gYearMonth, gMonth,
// gMonthDay and gDay; the type code says which fields are in use. Values are
// always valid: every setter and parse validates, and a failed parse leaves
// the value cleared.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

class CDateTimeSpan;
namespace detail {
struct DateTimeAccess;
}

constexpr int16_t MIN_YEAR = -9999;
constexpr int16_t MAX_YEAR = 9999;
/// Days in each month, January first, February counted with 29.
KVXML_API extern const int g_monthMax[12];
/// Days before each month in a common year; the thirteenth entry is 365.
KVXML_API extern const int g_monthDayInYear[13];

/// Gregorian rule, applied to the year number as written (so -4 is a leap year).
KVXML_API bool IsLeapYear(int year);
/// Floor of a / b. b must not be 0 (gives 0); a quotient that does not fit saturates.
KVXML_API int64_t GetQuotient(int64_t a, int b);
/// a - b * GetQuotient(a, b): 0 <= result < b for b > 0. b == 0 gives 0.
KVXML_API int GetModulo(int64_t a, int b);

/// A date, time or both, with an optional time zone.
///
/// There is no year 0: -0001 is followed by 0001, in parsing, validation and
/// arithmetic alike, and leap years follow IsLeapYear on the written year.
class KVXML_API CDateTime {
public:
    enum DTType {
        dt_none = 0,
        dt_dateTime = 1,
        dt_date = 2,
        dt_gYearMonth = 3,
        dt_gYear = 4,
        dt_time = 5,
        dt_gDay = 6,
        dt_gMonth = 7,
        dt_gMonthDay = 8
    };

    /// An empty value (type dt_none); printing it throws "Date Not Set".
    CDateTime();
    /// An empty value that only carries the type; it holds no valid value yet.
    explicit CDateTime(DTType type);
    /// The constructors below never throw: values that fail validation leave
    /// the object cleared (type dt_none).
    CDateTime(int16_t year, uint8_t month, uint8_t day);
    CDateTime(int16_t year, uint8_t month, uint8_t day, uint8_t hour, uint8_t minute, uint8_t second);
    CDateTime(int16_t year, uint8_t month, uint8_t day, uint8_t hour, uint8_t minute, uint8_t second,
              uint16_t milliSecond, uint16_t microSecond, uint16_t nanoSecond);
    /// Parses a dateTime text; throws CKvInvalidValueException as ParseXSDDateTime does.
    explicit CDateTime(const char* text);
    /// Seconds since 1970-01-01T00:00:00Z as the system time() gives them. The
    /// result is a dateTime in UTC with the zone "Z"; a count whose year lies
    /// outside -9999..9999 leaves the value cleared.
    explicit CDateTime(const int64_t& secondsSince1970);
    virtual ~CDateTime();
    CDateTime(const CDateTime&) = default;
    CDateTime& operator=(const CDateTime&) = default;

    /// Setters set the type, keep the time zone, zero the fields the type lacks
    /// and validate. On failure they throw CKvInvalidValueException and leave
    /// the value unchanged.
    void SetDate(int16_t year, uint8_t month, uint8_t day);
    void SetTime(uint8_t hour, uint8_t minute, uint8_t second);
    void SetTime(uint8_t hour, uint8_t minute, uint8_t second, uint16_t milliSecond, uint16_t microSecond,
                 uint16_t nanoSecond);
    void SetDateTime(int16_t year, uint8_t month, uint8_t day, uint8_t hour, uint8_t minute, uint8_t second);
    void SetDateTime(int16_t year, uint8_t month, uint8_t day, uint8_t hour, uint8_t minute, uint8_t second,
                     uint16_t milliSecond, uint16_t microSecond, uint16_t nanoSecond);
    /// Sets every field as given; a type outside 1..8 throws "Unknown date type %d.".
    void SetDateTime(DTType type, int16_t year, uint8_t month, uint8_t day, uint8_t hour, uint8_t minute,
                     uint8_t second, uint16_t milliSecond, uint16_t microSecond, uint16_t nanoSecond);
    /// Copies source into type target; throws when source lacks a field target needs.
    void SetDateTime(const CDateTime& source, DTType target);
    void SetGYear(int16_t year);
    void SetGYearMonth(int16_t year, uint8_t month);
    void SetGMonth(uint8_t month);
    void SetGMonthDay(uint8_t month, uint8_t day);
    void SetGDay(uint8_t day);
    void SetFracTime(uint16_t milliSecond, uint16_t microSecond, uint16_t nanoSecond);

    /// Single-field setters keep the type and validate (unchanged on failure).
    void SetYear(int16_t year);
    void SetMonth(uint8_t month);
    void SetDay(uint8_t day);
    void SetHour(uint8_t hour);
    void SetMinute(uint8_t minute);
    void SetSecond(uint8_t second);
    void SetMilliSecond(uint16_t milliSecond);
    void SetMicroSecond(uint16_t microSecond);
    void SetNanoSecond(uint16_t nanoSecond);

    /// Getters throw CKvInvalidValueException when the type lacks the field.
    int16_t GetYear() const;
    uint8_t GetMonth() const;
    uint8_t GetDay() const;
    uint8_t GetHour() const;
    uint8_t GetMinute() const;
    uint8_t GetSecond() const;
    uint16_t GetMilliSecond() const;
    uint16_t GetMicroSecond() const;
    uint16_t GetNanoSecond() const;
    /// Seconds plus the fraction.
    double GetRealSecond() const;
    /// 1 for 1 January.
    int GetDayOfYear() const;
    /// 0 Sunday .. 6 Saturday (dateTime and date only).
    int GetDayOfWeek() const;
    /// Seconds since 1970-01-01T00:00:00Z (dateTime and date only; a date counts
    /// from its midnight). A value without a zone is taken as UTC.
    int64_t GetTime() const;

    /// Sets a numeric zone: hour -23..23, minute 0..59. The sign of the offset
    /// is the sign of hour, so an offset of -00:30 cannot be held (it is +00:30).
    void SetTimeZone(int16_t hour, uint8_t minute);
    /// Sets the zone "Z".
    void SetUTC();
    /// True when any zone ("Z" or numeric) is set.
    bool IsUTC() const;
    /// True when a numeric zone is set.
    bool HasTimeZone() const;
    /// Throw "TimeZone is not been used" unless a numeric zone is set.
    int16_t GetZoneHour() const;
    uint8_t GetZoneMinute() const;
    /// The value moved to zone "Z". dateTime and time values are shifted by the
    /// offset (a time wraps around midnight); the date-only types keep their
    /// fields and only take the zone "Z". Without a zone: an unchanged copy.
    /// A dateTime at the edge of the year range may move to year 10000 or -10000.
    CDateTime GetNormalized() const;

    /// Parse the lexical forms; the form decides the type. All failures are
    /// CKvInvalidValueException and leave the value cleared.
    void ParseXSDDate(const char* text);
    void ParseXSDTime(const char* text);
    void ParseXSDDateTime(const char* text);

    /// "s" and "G" give the lexical form, null or "" an empty string; another
    /// format throws CKvInvalidParamException "Unknown Format: <format>". An
    /// empty non-time value throws CKvInvalidValueException "Date Not Set".
    std::string ToString(const char* format) const;
    std::string ToString() const;
    /// The fraction of a second as printed: "" for zero, else "." and up to
    /// nine digits without trailing zeros.
    static std::string ToFracString(uint16_t milliSecond, uint16_t microSecond, uint16_t nanoSecond);

    DTType GetType() const;
    std::string GetTypeAsString() const;
    /// "yearZero" for dt_none, "" for codes above 8.
    static std::string GetTypeAsString(DTType type);
    /// Throws unless a value of type source holds every field type target needs.
    static void CheckConversion(DTType source, DTType target);
    /// Throws CKvInvalidValueException for the first field out of range.
    void Validate() const;

    /// Adds the span (subtracts a negative one): months and years first, the
    /// day clamped to the new month, then the time with carries into the days.
    /// A result outside -9999..9999 throws and leaves the value unchanged.
    void AddDateTimeSpan(const CDateTimeSpan& span);
    CDateTime& operator+=(const CDateTimeSpan& span);
    CDateTime& operator-=(const CDateTimeSpan& span);
    CDateTime operator+(const CDateTimeSpan& span) const;
    CDateTime operator-(const CDateTimeSpan& span) const;
    /// The exact distance in days, hours, minutes, seconds and fraction, so
    /// that other + (*this - other) == *this. Each side's zone is applied; a
    /// side without a zone counts as UTC.
    CDateTimeSpan operator-(const CDateTime& other) const;

    /// 0 equal, 1 earlier, 2 later, 3 incomparable, after bringing both sides
    /// to zone "Z". Against a value without a zone, the zoneless side is tried
    /// at +14:00 and -14:00; if the two answers differ the result is 3.
    int CompareTo(const CDateTime& other) const;
    bool operator==(const CDateTime& other) const;
    bool operator!=(const CDateTime& other) const;
    bool operator<(const CDateTime& other) const;
    bool operator>(const CDateTime& other) const;
    bool operator<=(const CDateTime& other) const;
    bool operator>=(const CDateTime& other) const;

    /// The current time as CDateTime(int64_t) gives it: UTC, zone "Z".
    static CDateTime GetCurrentTime();

private:
    friend struct detail::DateTimeAccess;

    void Clear();

    DTType m_type = dt_none;
    int16_t m_year = 0;
    uint8_t m_month = 0;
    uint8_t m_day = 0;
    uint8_t m_hour = 0;
    uint8_t m_minute = 0;
    uint8_t m_second = 0;
    uint16_t m_milliSecond = 0;
    uint16_t m_microSecond = 0;
    uint16_t m_nanoSecond = 0;
    bool m_zoneSet = false;
    bool m_zoneOffset = false;
    int16_t m_zoneHour = 0;
    uint8_t m_zoneMinute = 0;
};

/// 0 equal, 1 a earlier, 2 a later, 3 incomparable, by the fields year,
/// month, day, hour, minute and second with fraction as they stand (zones are
/// not applied; a field the type lacks counts as -1). The month is read from
/// a on both sides, so values differing only in their month compare equal.
KVXML_API int Compare(const CDateTime& a, const CDateTime& b);

}  // namespace KvXmlLib10
