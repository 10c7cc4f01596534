// DateTimeCore.h - calendar arithmetic and field access shared by the CDateTime sources.
//
// Arithmetic runs on DateFields, whose year is 64-bit, so that durations of
// any size can be added (and compared) without overflow; only the public
// operations check the result against the year range.
#pragma once

#include <cstdint>

#include "kvxml/values/DateTime.h"
#include "kvxml/values/DateTimeSpan.h"

namespace KvXmlLib10 {
namespace detail {

constexpr int64_t kNanosPerSecond = 1000000000;
constexpr int64_t kSecondsPerDay = 86400;
// Stand-ins for the fields a recurring or partial type lacks (1972 is a leap
// year, so --02-29 survives; December has 31 days, so every gDay does).
constexpr int64_t kReferenceYear = 1972;
constexpr int kReferenceMonthForDay = 12;

bool HasYear(int type);
bool HasMonth(int type);
bool HasDay(int type);
bool HasTime(int type);

struct DateFields {
    int type = 0;
    int64_t year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int64_t nanos = 0;  // fraction of the second
};

/// A span taken apart into whole days, seconds of a day and nanoseconds.
struct SpanParts {
    int sign = 1;
    int64_t years = 0;
    int64_t months = 0;
    int64_t days = 0;     // < 1.3e16 for any span
    int64_t seconds = 0;  // 0 .. 86399
    int64_t nanos = 0;    // 0 .. 999999999
};

SpanParts Decompose(const CDateTimeSpan& span);

bool IsLeap(int64_t year);
int DaysInMonth(int64_t year, int month);
/// Days since 0001-01-01 (day 0), in the calendar without a year 0.
int64_t DayNumber(int64_t year, int month, int day);
void FromDayNumber(int64_t dayNumber, int64_t& year, int& month, int& day);

/// Adds the parts to the fields the type holds (absent fields take reference
/// values during the sum and stay 0). No range check.
void AddParts(DateFields& fields, const SpanParts& parts);
/// Shifts the time of day by a signed number of seconds (|seconds| < 1 day).
void ShiftSeconds(DateFields& fields, int64_t seconds);

/// The field walk behind Compare.
int CompareFields(const DateFields& a, const DateFields& b);

/// Zone offset in minutes east of UTC; 0 without a numeric zone.
int ZoneOffsetMinutes(const CDateTime& value);

struct DateTimeAccess {
    static DateFields ToFields(const CDateTime& value);
    /// Copies the fields back; the year must already fit 16 bits.
    static void FromFields(CDateTime& value, const DateFields& fields);
    static void CopyZone(CDateTime& target, const CDateTime& source);
};

}  // namespace detail
}  // namespace KvXmlLib10
