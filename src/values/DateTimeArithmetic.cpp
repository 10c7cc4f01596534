// DateTimeArithmetic.cpp - adding durations, zone normalisation, comparison and system time.
#include <ctime>

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/values/DateTime.h"
#include "kvxml/values/DateTimeSpan.h"
#include "values/detail/DateTimeCore.h"

namespace KvXmlLib10 {

using detail::DateFields;
using detail::DateTimeAccess;

namespace {

constexpr int64_t kUnixEpochDay = 719162;  // DayNumber(1970, 1, 1)

// Seconds and nanoseconds since 0001-01-01T00:00:00 of the value, with the
// zone applied; the fields a type lacks take the arithmetic's reference values.
void Instant(const CDateTime& value, int64_t& seconds, int64_t& nanos) {
    DateFields f = DateTimeAccess::ToFields(value);
    int64_t y = detail::HasYear(f.type) ? f.year : detail::kReferenceYear;
    int m = detail::HasMonth(f.type) ? f.month : (f.type == CDateTime::dt_gDay ? detail::kReferenceMonthForDay : 1);
    int d = detail::HasDay(f.type) ? f.day : 1;
    seconds = detail::DayNumber(y, m, d) * detail::kSecondsPerDay + f.hour * 3600 + f.minute * 60 + f.second -
              detail::ZoneOffsetMinutes(value) * 60;
    nanos = f.nanos;
}

}  // namespace

void CDateTime::AddDateTimeSpan(const CDateTimeSpan& span) {
    Validate();
    DateFields fields = DateTimeAccess::ToFields(*this);
    detail::AddParts(fields, detail::Decompose(span));
    if (detail::HasYear(fields.type) && (fields.year < MIN_YEAR || fields.year > MAX_YEAR))
        throw CKvInvalidValueException(FormatString("Invalid Year [%lld] (%d <= year <= %d && year != 0)",
                                                    static_cast<long long>(fields.year), int{MIN_YEAR},
                                                    int{MAX_YEAR}));
    DateTimeAccess::FromFields(*this, fields);
}

CDateTime& CDateTime::operator+=(const CDateTimeSpan& span) {
    AddDateTimeSpan(span);
    return *this;
}

CDateTime& CDateTime::operator-=(const CDateTimeSpan& span) {
    AddDateTimeSpan(span.GetAsNegative());
    return *this;
}

CDateTime CDateTime::operator+(const CDateTimeSpan& span) const {
    CDateTime result(*this);
    result.AddDateTimeSpan(span);
    return result;
}

CDateTime CDateTime::operator-(const CDateTimeSpan& span) const {
    CDateTime result(*this);
    result.AddDateTimeSpan(span.GetAsNegative());
    return result;
}

CDateTimeSpan CDateTime::operator-(const CDateTime& other) const {
    int64_t seconds, nanos, otherSeconds, otherNanos;
    Instant(*this, seconds, nanos);
    Instant(other, otherSeconds, otherNanos);
    int64_t diffSeconds = seconds - otherSeconds;
    int64_t diffNanos = nanos - otherNanos;
    bool negative = diffSeconds < 0 || (diffSeconds == 0 && diffNanos < 0);
    if (negative) {
        diffSeconds = -diffSeconds;
        diffNanos = -diffNanos;
    }
    if (diffNanos < 0) {
        diffNanos += detail::kNanosPerSecond;
        --diffSeconds;
    }
    // |difference| stays below 20000 years, so the day count fits 32 bits.
    CDateTimeSpan span(static_cast<uint16_t>(0), 0u, static_cast<uint32_t>(diffSeconds / detail::kSecondsPerDay),
                       static_cast<uint32_t>(diffSeconds / 3600 % 24), static_cast<uint64_t>(diffSeconds / 60 % 60),
                       static_cast<uint64_t>(diffSeconds % 60), static_cast<uint16_t>(diffNanos / 1000000),
                       static_cast<uint16_t>(diffNanos / 1000 % 1000), static_cast<uint16_t>(diffNanos % 1000));
    if (negative) span.Negate();
    return span;
}

CDateTime CDateTime::GetNormalized() const {
    CDateTime result(*this);
    if (!m_zoneSet) return result;
    if (m_zoneOffset && detail::HasTime(m_type)) {
        DateFields fields = DateTimeAccess::ToFields(result);
        detail::ShiftSeconds(fields, -int64_t{detail::ZoneOffsetMinutes(*this)} * 60);
        DateTimeAccess::FromFields(result, fields);  // at most one year beyond the range: fits 16 bits
    }
    result.SetUTC();
    return result;
}

int Compare(const CDateTime& a, const CDateTime& b) {
    return detail::CompareFields(DateTimeAccess::ToFields(a), DateTimeAccess::ToFields(b));
}

int CDateTime::CompareTo(const CDateTime& other) const {
    if (!m_zoneSet && !other.m_zoneSet) return Compare(*this, other);
    if (m_zoneSet && other.m_zoneSet) return Compare(GetNormalized(), other.GetNormalized());
    // One side has no zone: it could be anywhere from +14:00 to -14:00, and the
    // order is known only when both extremes give the same answer.
    CDateTime earliest(m_zoneSet ? other : *this);
    CDateTime latest(earliest);
    earliest.SetTimeZone(14, 0);
    latest.SetTimeZone(-14, 0);
    int first, second;
    if (m_zoneSet) {
        CDateTime self = GetNormalized();
        first = Compare(self, earliest.GetNormalized());
        second = Compare(self, latest.GetNormalized());
    } else {
        CDateTime rhs = other.GetNormalized();
        first = Compare(earliest.GetNormalized(), rhs);
        second = Compare(latest.GetNormalized(), rhs);
    }
    return first == second ? first : 3;
}

bool CDateTime::operator==(const CDateTime& other) const { return CompareTo(other) == 0; }
bool CDateTime::operator!=(const CDateTime& other) const { return CompareTo(other) != 0; }
bool CDateTime::operator<(const CDateTime& other) const { return CompareTo(other) == 1; }
bool CDateTime::operator>(const CDateTime& other) const { return CompareTo(other) == 2; }
bool CDateTime::operator<=(const CDateTime& other) const {
    int result = CompareTo(other);
    return result == 0 || result == 1;
}
bool CDateTime::operator>=(const CDateTime& other) const {
    int result = CompareTo(other);
    return result == 0 || result == 2;
}

int64_t CDateTime::GetTime() const {
    if (m_type != dt_dateTime && m_type != dt_date)
        throw CKvInvalidValueException(FormatString(
            "Failed to GetTime, Date Status must be dateTime or date. Invalid Date Type: %s.", GetTypeAsString().c_str()));
    int64_t seconds, nanos;
    Instant(*this, seconds, nanos);
    return seconds - kUnixEpochDay * detail::kSecondsPerDay;
}

CDateTime::CDateTime(const int64_t& secondsSince1970) {
    int64_t days = GetQuotient(secondsSince1970, 86400);
    int64_t secondOfDay = GetModulo(secondsSince1970, 86400);
    DateFields fields;
    fields.type = dt_dateTime;
    int month = 0, day = 0;
    detail::FromDayNumber(kUnixEpochDay + days, fields.year, month, day);
    if (fields.year < MIN_YEAR || fields.year > MAX_YEAR) return;
    SetDateTime(static_cast<int16_t>(fields.year), static_cast<uint8_t>(month), static_cast<uint8_t>(day),
                static_cast<uint8_t>(secondOfDay / 3600), static_cast<uint8_t>(secondOfDay / 60 % 60),
                static_cast<uint8_t>(secondOfDay % 60));
    SetUTC();
}

CDateTime CDateTime::GetCurrentTime() {
    // Qualified: the namespace has an ItemType enumerator called time.
    int64_t now = static_cast<int64_t>(::time(nullptr));
    return CDateTime(now);
}

}  // namespace KvXmlLib10
