// DateTimeCalendar.cpp - the calendar: leap years, day numbers, carries and the field walk.
//
// The calendar has no year 0 (-0001 is followed by 0001) and applies the leap
// rule to the year as written. Day numbers make the month-by-month day carry
// of duration addition a constant-time step, so huge durations cost nothing.
#include <cstdint>
#include <limits>

#include "values/detail/DateTimeCore.h"

namespace KvXmlLib10 {

const int g_monthMax[12] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
const int g_monthDayInYear[13] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};

bool IsLeapYear(int year) { return detail::IsLeap(year); }

int64_t GetQuotient(int64_t a, int b) {
    if (b == 0) return 0;
    if (b == -1) return a == std::numeric_limits<int64_t>::min() ? std::numeric_limits<int64_t>::max() : -a;
    int64_t quotient = a / b;
    if (a % b != 0 && ((a < 0) != (b < 0))) --quotient;
    return quotient;
}

int GetModulo(int64_t a, int b) {
    if (b == 0 || b == -1) return 0;
    int64_t remainder = a % b;
    if (remainder != 0 && ((remainder < 0) != (b < 0))) remainder += b;
    return static_cast<int>(remainder);
}

namespace detail {

bool HasYear(int type) {
    return type == CDateTime::dt_dateTime || type == CDateTime::dt_date || type == CDateTime::dt_gYearMonth ||
           type == CDateTime::dt_gYear;
}

bool HasMonth(int type) {
    return type == CDateTime::dt_dateTime || type == CDateTime::dt_date || type == CDateTime::dt_gYearMonth ||
           type == CDateTime::dt_gMonth || type == CDateTime::dt_gMonthDay;
}

bool HasDay(int type) {
    return type == CDateTime::dt_dateTime || type == CDateTime::dt_date || type == CDateTime::dt_gMonthDay ||
           type == CDateTime::dt_gDay;
}

bool HasTime(int type) { return type == CDateTime::dt_dateTime || type == CDateTime::dt_time; }

bool IsLeap(int64_t year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int DaysInMonth(int64_t year, int month) {
    if (month == 2) return IsLeap(year) ? 29 : 28;
    return g_monthMax[month - 1];
}

namespace {

// Days in the years 1..count (the same for -1..-count: the leap rule is symmetric).
int64_t DaysInFirstYears(int64_t count) { return 365 * count + count / 4 - count / 100 + count / 400; }

int64_t DaysInYear(int64_t year) { return IsLeap(year) ? 366 : 365; }

// For n >= 0: the year y >= 1 with DaysInFirstYears(y - 1) <= n < DaysInFirstYears(y),
// and n's 0-based day within it.
void SplitPositive(int64_t n, int64_t& year, int64_t& dayOfYear) {
    int64_t cycles400 = n / 146097;
    int64_t rest = n % 146097;
    int64_t centuries = rest / 36524;
    if (centuries == 4) centuries = 3;  // the last day of a 400-year cycle
    rest -= centuries * 36524;
    int64_t cycles4 = rest / 1461;
    rest %= 1461;
    int64_t years = rest / 365;
    if (years == 4) years = 3;  // the last day of a leap year
    rest -= years * 365;
    year = 400 * cycles400 + 100 * centuries + 4 * cycles4 + years + 1;
    dayOfYear = rest;
}

// Continuous year index: 0001 -> 0, -0001 -> -1; makes year arithmetic skip 0.
int64_t YearToIndex(int64_t year) { return year > 0 ? year - 1 : year; }
int64_t IndexToYear(int64_t index) { return index >= 0 ? index + 1 : index; }

int64_t FloorDiv(int64_t a, int64_t b) { return a / b - ((a % b != 0 && ((a < 0) != (b < 0))) ? 1 : 0); }
int64_t FloorMod(int64_t a, int64_t b) { return a - FloorDiv(a, b) * b; }

}  // namespace

int64_t DayNumber(int64_t year, int month, int day) {
    int64_t before;
    if (year > 0)
        before = DaysInFirstYears(year - 1);
    else
        before = -DaysInFirstYears(-year);
    int dayOfYear = g_monthDayInYear[month - 1] + ((month > 2 && IsLeap(year)) ? 1 : 0) + day - 1;
    return before + dayOfYear;
}

void FromDayNumber(int64_t dayNumber, int64_t& year, int& month, int& day) {
    int64_t dayOfYear;
    if (dayNumber >= 0) {
        SplitPositive(dayNumber, year, dayOfYear);
    } else {
        // Count backwards from -0001-12-31 (day -1), mirroring the positive years.
        int64_t fromEnd;
        SplitPositive(-dayNumber - 1, year, fromEnd);
        dayOfYear = DaysInYear(year) - 1 - fromEnd;
        year = -year;
    }
    bool leap = IsLeap(year);
    month = 12;
    while (month > 1 && dayOfYear < g_monthDayInYear[month - 1] + ((month > 2 && leap) ? 1 : 0)) --month;
    day = static_cast<int>(dayOfYear - g_monthDayInYear[month - 1] - ((month > 2 && leap) ? 1 : 0)) + 1;
}

SpanParts Decompose(const CDateTimeSpan& span) {
    SpanParts parts;
    parts.sign = span.IsNegative() ? -1 : 1;
    parts.years = span.GetYears();
    parts.months = span.GetMonths();
    // Fraction fields are not range-checked on spans: up to 65535 each.
    uint64_t fraction = uint64_t{span.GetMilliSeconds()} * 1000000 + uint64_t{span.GetMicroSeconds()} * 1000 +
                        uint64_t{span.GetNanoSeconds()};
    uint64_t seconds = fraction / kNanosPerSecond;
    parts.nanos = static_cast<int64_t>(fraction % kNanosPerSecond);
    uint64_t days = span.GetSeconds() / kSecondsPerDay;
    seconds += span.GetSeconds() % kSecondsPerDay;
    days += span.GetMinutes() / 1440;
    seconds += (span.GetMinutes() % 1440) * 60;
    days += span.GetHours() / 24;
    seconds += (span.GetHours() % 24) * 3600;
    days += seconds / kSecondsPerDay + span.GetDays();
    parts.seconds = static_cast<int64_t>(seconds % kSecondsPerDay);
    parts.days = static_cast<int64_t>(days);  // at most about 1.3e16
    return parts;
}

void AddParts(DateFields& f, const SpanParts& parts) {
    const int sign = parts.sign;
    int64_t y = HasYear(f.type) ? f.year : kReferenceYear;
    int m = HasMonth(f.type) ? f.month : (f.type == CDateTime::dt_gDay ? kReferenceMonthForDay : 1);
    int d = HasDay(f.type) ? f.day : 1;

    // Months first, carrying into the years.
    int64_t monthIndex = (m - 1) + sign * parts.months;
    m = static_cast<int>(FloorMod(monthIndex, 12)) + 1;
    y = IndexToYear(YearToIndex(y) + sign * parts.years + FloorDiv(monthIndex, 12));

    // The time of day, carrying whole days.
    int64_t nanos = f.nanos + sign * parts.nanos;
    int64_t seconds = f.hour * 3600 + f.minute * 60 + f.second + sign * parts.seconds + FloorDiv(nanos, kNanosPerSecond);
    nanos = FloorMod(nanos, kNanosPerSecond);
    int64_t dayCarry = FloorDiv(seconds, kSecondsPerDay);
    seconds = FloorMod(seconds, kSecondsPerDay);

    // The day is clamped to the new month before the days are added.
    int last = DaysInMonth(y, m);
    if (d > last) d = last;
    if (d < 1) d = 1;
    FromDayNumber(DayNumber(y, m, d) + sign * parts.days + dayCarry, y, m, d);

    if (HasYear(f.type)) f.year = y;
    if (HasMonth(f.type)) f.month = m;
    if (HasDay(f.type)) f.day = d;
    if (HasTime(f.type)) {
        f.hour = static_cast<int>(seconds / 3600);
        f.minute = static_cast<int>(seconds / 60 % 60);
        f.second = static_cast<int>(seconds % 60);
        f.nanos = nanos;
    }
}

void ShiftSeconds(DateFields& fields, int64_t seconds) {
    SpanParts parts;
    parts.sign = seconds < 0 ? -1 : 1;
    parts.seconds = seconds < 0 ? -seconds : seconds;
    AddParts(fields, parts);
}

namespace {

// Returns 0 when equal (the walk goes on), else the code for this field.
int CompareField(int64_t a, int64_t b, bool& decided) {
    decided = true;
    if ((a < 0 && b > 0) || (a > 0 && b < 0)) return 3;  // the product of the two is negative
    if (a < b) return 1;
    if (a > b) return 2;
    decided = false;
    return 0;
}

}  // namespace

int CompareFields(const DateFields& a, const DateFields& b) {
    bool decided = false;
    int result = CompareField(HasYear(a.type) ? a.year : -1, HasYear(b.type) ? b.year : -1, decided);
    if (decided) return result;
    // a's month stands on both sides; only the presence test reads b's type.
    result = CompareField(HasMonth(a.type) ? a.month : -1, HasMonth(b.type) ? a.month : -1, decided);
    if (decided) return result;
    result = CompareField(HasDay(a.type) ? a.day : -1, HasDay(b.type) ? b.day : -1, decided);
    if (decided) return result;
    result = CompareField(HasTime(a.type) ? a.hour : -1, HasTime(b.type) ? b.hour : -1, decided);
    if (decided) return result;
    result = CompareField(HasTime(a.type) ? a.minute : -1, HasTime(b.type) ? b.minute : -1, decided);
    if (decided) return result;
    // Seconds with the fraction, counted exactly in nanoseconds.
    result = CompareField(HasTime(a.type) ? a.second * kNanosPerSecond + a.nanos : -1,
                          HasTime(b.type) ? b.second * kNanosPerSecond + b.nanos : -1, decided);
    return result;
}

}  // namespace detail
}  // namespace KvXmlLib10
