// DateTime.cpp - CDateTime construction, setters, getters, zones and validation.
#include "kvxml/values/DateTime.h"

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "values/detail/DateTimeCore.h"

namespace KvXmlLib10 {

namespace {

const char* const kTypeNames[] = {"yearZero", "dateTime", "date",  "gYearMonth", "gYear",
                                  "time",     "gDay",     "gMonth", "gMonthDay"};

bool IsKnownType(int type) { return type >= CDateTime::dt_none && type <= CDateTime::dt_gMonthDay; }

const char* TypeName(int type) { return IsKnownType(type) ? kTypeNames[type] : ""; }

[[noreturn]] void ThrowGetter(const char* getter, int type) {
    throw CKvInvalidValueException(FormatString("Failed to %s. Invalid Date Type: %s.", getter, TypeName(type)));
}

}  // namespace

namespace detail {

DateFields DateTimeAccess::ToFields(const CDateTime& v) {
    DateFields f;
    f.type = v.m_type;
    f.year = v.m_year;
    f.month = v.m_month;
    f.day = v.m_day;
    f.hour = v.m_hour;
    f.minute = v.m_minute;
    f.second = v.m_second;
    f.nanos = int64_t{v.m_milliSecond} * 1000000 + int64_t{v.m_microSecond} * 1000 + v.m_nanoSecond;
    return f;
}

void DateTimeAccess::FromFields(CDateTime& v, const DateFields& f) {
    v.m_type = static_cast<CDateTime::DTType>(f.type);
    v.m_year = static_cast<int16_t>(f.year);
    v.m_month = static_cast<uint8_t>(f.month);
    v.m_day = static_cast<uint8_t>(f.day);
    v.m_hour = static_cast<uint8_t>(f.hour);
    v.m_minute = static_cast<uint8_t>(f.minute);
    v.m_second = static_cast<uint8_t>(f.second);
    v.m_milliSecond = static_cast<uint16_t>(f.nanos / 1000000);
    v.m_microSecond = static_cast<uint16_t>(f.nanos / 1000 % 1000);
    v.m_nanoSecond = static_cast<uint16_t>(f.nanos % 1000);
}

void DateTimeAccess::CopyZone(CDateTime& target, const CDateTime& source) {
    target.m_zoneSet = source.m_zoneSet;
    target.m_zoneOffset = source.m_zoneOffset;
    target.m_zoneHour = source.m_zoneHour;
    target.m_zoneMinute = source.m_zoneMinute;
}

int ZoneOffsetMinutes(const CDateTime& value) {
    if (!value.HasTimeZone()) return 0;
    int hour = value.GetZoneHour();
    int minute = value.GetZoneMinute();
    return hour * 60 + (hour < 0 ? -minute : minute);
}

}  // namespace detail

CDateTime::CDateTime() = default;

CDateTime::CDateTime(DTType type) : m_type(type) {}

CDateTime::CDateTime(int16_t year, uint8_t month, uint8_t day) {
    try {
        SetDate(year, month, day);
    } catch (const CKvException&) {
        Clear();
    }
}

CDateTime::CDateTime(int16_t year, uint8_t month, uint8_t day, uint8_t hour, uint8_t minute, uint8_t second) {
    try {
        SetDateTime(year, month, day, hour, minute, second);
    } catch (const CKvException&) {
        Clear();
    }
}

CDateTime::CDateTime(int16_t year, uint8_t month, uint8_t day, uint8_t hour, uint8_t minute, uint8_t second,
                     uint16_t milliSecond, uint16_t microSecond, uint16_t nanoSecond) {
    try {
        SetDateTime(year, month, day, hour, minute, second, milliSecond, microSecond, nanoSecond);
    } catch (const CKvException&) {
        Clear();
    }
}

CDateTime::CDateTime(const char* text) { ParseXSDDateTime(text); }

CDateTime::~CDateTime() = default;

void CDateTime::Clear() { *this = CDateTime(); }

void CDateTime::SetDateTime(DTType type, int16_t year, uint8_t month, uint8_t day, uint8_t hour, uint8_t minute,
                            uint8_t second, uint16_t milliSecond, uint16_t microSecond, uint16_t nanoSecond) {
    if (type < dt_dateTime || type > dt_gMonthDay)
        throw CKvInvalidValueException(FormatString("Unknown date type %d.", static_cast<int>(type)));
    CDateTime next(*this);
    next.m_type = type;
    next.m_year = year;
    next.m_month = month;
    next.m_day = day;
    next.m_hour = hour;
    next.m_minute = minute;
    next.m_second = second;
    next.m_milliSecond = milliSecond;
    next.m_microSecond = microSecond;
    next.m_nanoSecond = nanoSecond;
    next.Validate();
    *this = next;
}

void CDateTime::SetDate(int16_t year, uint8_t month, uint8_t day) {
    SetDateTime(dt_date, year, month, day, 0, 0, 0, 0, 0, 0);
}

void CDateTime::SetTime(uint8_t hour, uint8_t minute, uint8_t second) {
    SetDateTime(dt_time, 0, 0, 0, hour, minute, second, 0, 0, 0);
}

void CDateTime::SetTime(uint8_t hour, uint8_t minute, uint8_t second, uint16_t milliSecond, uint16_t microSecond,
                        uint16_t nanoSecond) {
    SetDateTime(dt_time, 0, 0, 0, hour, minute, second, milliSecond, microSecond, nanoSecond);
}

void CDateTime::SetDateTime(int16_t year, uint8_t month, uint8_t day, uint8_t hour, uint8_t minute, uint8_t second) {
    SetDateTime(dt_dateTime, year, month, day, hour, minute, second, 0, 0, 0);
}

void CDateTime::SetDateTime(int16_t year, uint8_t month, uint8_t day, uint8_t hour, uint8_t minute, uint8_t second,
                            uint16_t milliSecond, uint16_t microSecond, uint16_t nanoSecond) {
    SetDateTime(dt_dateTime, year, month, day, hour, minute, second, milliSecond, microSecond, nanoSecond);
}

void CDateTime::SetGYear(int16_t year) { SetDateTime(dt_gYear, year, 0, 0, 0, 0, 0, 0, 0, 0); }

void CDateTime::SetGYearMonth(int16_t year, uint8_t month) {
    SetDateTime(dt_gYearMonth, year, month, 0, 0, 0, 0, 0, 0, 0);
}

void CDateTime::SetGMonth(uint8_t month) { SetDateTime(dt_gMonth, 0, month, 0, 0, 0, 0, 0, 0, 0); }

void CDateTime::SetGMonthDay(uint8_t month, uint8_t day) {
    SetDateTime(dt_gMonthDay, 0, month, day, 0, 0, 0, 0, 0, 0);
}

void CDateTime::SetGDay(uint8_t day) { SetDateTime(dt_gDay, 0, 0, day, 0, 0, 0, 0, 0, 0); }

void CDateTime::CheckConversion(DTType source, DTType target) {
    if (!IsKnownType(source)) throw CKvInvalidValueException(FormatString("Unknown date type %d.", static_cast<int>(source)));
    if (!IsKnownType(target) || target == dt_none)
        throw CKvInvalidValueException(FormatString("Unknown date type %d.", static_cast<int>(target)));
    bool enough = (!detail::HasYear(target) || detail::HasYear(source)) &&
                  (!detail::HasMonth(target) || detail::HasMonth(source)) &&
                  (!detail::HasDay(target) || detail::HasDay(source)) &&
                  (!detail::HasTime(target) || detail::HasTime(source));
    if (!enough)
        throw CKvInvalidValueException(
            FormatString("Attempting to set a CDateTime of type %s using an XmlDateTime of type %s. The source "
                         "CDateTime does not contian enough data to allow the conversion.",
                         TypeName(target), TypeName(source)));
}

void CDateTime::SetDateTime(const CDateTime& source, DTType target) {
    CheckConversion(source.m_type, target);
    CDateTime next(target);
    if (detail::HasYear(target)) next.m_year = source.m_year;
    if (detail::HasMonth(target)) next.m_month = source.m_month;
    if (detail::HasDay(target)) next.m_day = source.m_day;
    if (detail::HasTime(target)) {
        next.m_hour = source.m_hour;
        next.m_minute = source.m_minute;
        next.m_second = source.m_second;
        next.m_milliSecond = source.m_milliSecond;
        next.m_microSecond = source.m_microSecond;
        next.m_nanoSecond = source.m_nanoSecond;
    }
    detail::DateTimeAccess::CopyZone(next, source);
    next.Validate();
    *this = next;
}

// The single-field setters change one field on a copy, so a rejected value
// leaves *this as it was.
#define KVXML_FIELD_SETTER(Name, Type, member) \
    void CDateTime::Name(Type value) {         \
        CDateTime next(*this);                 \
        next.member = value;                   \
        next.Validate();                       \
        *this = next;                          \
    }

KVXML_FIELD_SETTER(SetYear, int16_t, m_year)
KVXML_FIELD_SETTER(SetMonth, uint8_t, m_month)
KVXML_FIELD_SETTER(SetDay, uint8_t, m_day)
KVXML_FIELD_SETTER(SetHour, uint8_t, m_hour)
KVXML_FIELD_SETTER(SetMinute, uint8_t, m_minute)
KVXML_FIELD_SETTER(SetSecond, uint8_t, m_second)
KVXML_FIELD_SETTER(SetMilliSecond, uint16_t, m_milliSecond)
KVXML_FIELD_SETTER(SetMicroSecond, uint16_t, m_microSecond)
KVXML_FIELD_SETTER(SetNanoSecond, uint16_t, m_nanoSecond)

#undef KVXML_FIELD_SETTER

void CDateTime::SetFracTime(uint16_t milliSecond, uint16_t microSecond, uint16_t nanoSecond) {
    CDateTime next(*this);
    next.m_milliSecond = milliSecond;
    next.m_microSecond = microSecond;
    next.m_nanoSecond = nanoSecond;
    next.Validate();
    *this = next;
}

int16_t CDateTime::GetYear() const {
    if (!detail::HasYear(m_type)) ThrowGetter("GetYear", m_type);
    return m_year;
}

uint8_t CDateTime::GetMonth() const {
    if (!detail::HasMonth(m_type)) ThrowGetter("GetMonth", m_type);
    return m_month;
}

uint8_t CDateTime::GetDay() const {
    if (!detail::HasDay(m_type)) ThrowGetter("GetDay", m_type);
    return m_day;
}

uint8_t CDateTime::GetHour() const {
    if (!detail::HasTime(m_type)) ThrowGetter("GetHour", m_type);
    return m_hour;
}

uint8_t CDateTime::GetMinute() const {
    if (!detail::HasTime(m_type)) ThrowGetter("GetMinute", m_type);
    return m_minute;
}

uint8_t CDateTime::GetSecond() const {
    if (!detail::HasTime(m_type)) ThrowGetter("GetSecond", m_type);
    return m_second;
}

uint16_t CDateTime::GetMilliSecond() const {
    if (!detail::HasTime(m_type)) ThrowGetter("GetMilliSecond", m_type);
    return m_milliSecond;
}

uint16_t CDateTime::GetMicroSecond() const {
    if (!detail::HasTime(m_type)) ThrowGetter("GetMicroSecond", m_type);
    return m_microSecond;
}

uint16_t CDateTime::GetNanoSecond() const {
    if (!detail::HasTime(m_type)) ThrowGetter("GetNanoSecond", m_type);
    return m_nanoSecond;
}

double CDateTime::GetRealSecond() const {
    if (!detail::HasTime(m_type)) ThrowGetter("GetRealSecond", m_type);
    return m_second + m_milliSecond / 1e3 + m_microSecond / 1e6 + m_nanoSecond / 1e9;
}

int CDateTime::GetDayOfYear() const {
    if (m_type != dt_dateTime && m_type != dt_date) ThrowGetter("GetDayOfYear", m_type);
    return g_monthDayInYear[m_month - 1] + ((m_month > 2 && IsLeapYear(m_year)) ? 1 : 0) + m_day;
}

int CDateTime::GetDayOfWeek() const {
    if (m_type != dt_dateTime && m_type != dt_date) ThrowGetter("GetDayOfWeek", m_type);
    // Day 0 (0001-01-01) was a Monday in the proleptic Gregorian calendar.
    return GetModulo(detail::DayNumber(m_year, m_month, m_day) + 1, 7);
}

void CDateTime::SetTimeZone(int16_t hour, uint8_t minute) {
    if (hour < -23 || hour > 23 || minute > 59)
        throw CKvInvalidValueException(FormatString("Invalid TimeZone [%d:%d]", static_cast<int>(hour),
                                                    static_cast<int>(minute)));
    m_zoneSet = true;
    m_zoneOffset = true;
    m_zoneHour = hour;
    m_zoneMinute = minute;
}

void CDateTime::SetUTC() {
    m_zoneSet = true;
    m_zoneOffset = false;
    m_zoneHour = 0;
    m_zoneMinute = 0;
}

bool CDateTime::IsUTC() const { return m_zoneSet; }

bool CDateTime::HasTimeZone() const { return m_zoneOffset; }

int16_t CDateTime::GetZoneHour() const {
    if (!m_zoneOffset) throw CKvInvalidValueException("TimeZone is not been used");
    return m_zoneHour;
}

uint8_t CDateTime::GetZoneMinute() const {
    if (!m_zoneOffset) throw CKvInvalidValueException("TimeZone is not been used");
    return m_zoneMinute;
}

CDateTime::DTType CDateTime::GetType() const { return m_type; }

std::string CDateTime::GetTypeAsString() const { return TypeName(m_type); }

std::string CDateTime::GetTypeAsString(DTType type) { return TypeName(type); }

void CDateTime::Validate() const {
    const int type = m_type;
    const char* name = TypeName(type);
    if (type == dt_none) throw CKvInvalidValueException("Invalid Year Zero");

    if (detail::HasMonth(type)) {
        if (m_month < 1 || m_month > 12)
            throw CKvInvalidValueException(FormatString("Invalid Month [%d] (1 <= month <= 12)", int{m_month}));
    } else if (m_month != 0) {
        throw CKvInvalidValueException(FormatString("Invalid Month [%d] for type %s", int{m_month}, name));
    }

    if (detail::HasYear(type)) {
        if (m_year == 0 || m_year < MIN_YEAR || m_year > MAX_YEAR)
            throw CKvInvalidValueException(FormatString("Invalid Year [%d] (%d <= year <= %d && year != 0)",
                                                        int{m_year}, int{MIN_YEAR}, int{MAX_YEAR}));
    } else if (m_year != 0) {
        throw CKvInvalidValueException(FormatString("Invalid Year [%d] for type %s", int{m_year}, name));
    }

    if (type == dt_dateTime || type == dt_date) {
        bool leapDayInCommonYear = m_month == 2 && m_day == 29 && !IsLeapYear(m_year);
        if (m_day < 1 || m_day > g_monthMax[m_month - 1] || leapDayInCommonYear)
            throw CKvInvalidValueException(FormatString("Invalid Day [%d] (1 <= day <= days in month", int{m_day}));
    } else if (type == dt_gMonthDay) {
        if (m_day < 1 || m_day > g_monthMax[m_month - 1])
            throw CKvInvalidValueException(FormatString("Invalid Day [%d] (1 <= day <= days in month)", int{m_day}));
    } else if (type == dt_gDay) {
        if (m_day < 1 || m_day > 31)
            throw CKvInvalidValueException(FormatString("Invalid Day [%d] (1 <= day <= 31)", int{m_day}));
    } else if (m_day != 0) {
        throw CKvInvalidValueException(FormatString("Invalid Day [%d] for type %s", int{m_day}, name));
    }

    if (detail::HasTime(type)) {
        if (m_hour > 23) throw CKvInvalidValueException(FormatString("Invalid Hour [%d] (0 <= hour <= 23)", int{m_hour}));
        if (m_minute > 59)
            throw CKvInvalidValueException(FormatString("Invalid Minute [%d] (0 <= minute <= 59)", int{m_minute}));
        if (m_second > 59)
            throw CKvInvalidValueException(FormatString("Invalid Second [%d] (0 <= second <= 59)", int{m_second}));
        if (m_milliSecond > 999)
            throw CKvInvalidValueException(
                FormatString("Invalid Milli-Second [%d] (0 <= milli <= 999)", int{m_milliSecond}));
        if (m_microSecond > 999)
            throw CKvInvalidValueException(
                FormatString("Invalid Micro-Second [%d] (0 <= micro <= 999)", int{m_microSecond}));
        if (m_nanoSecond > 999)
            throw CKvInvalidValueException(
                FormatString("Invalid Nano-Second [%d] (0 <= nano <= 999)", int{m_nanoSecond}));
    } else {
        if (m_hour != 0) throw CKvInvalidValueException(FormatString("Invalid Hour [%d] for type %s", int{m_hour}, name));
        if (m_minute != 0)
            throw CKvInvalidValueException(FormatString("Invalid Minute [%d] for type %s", int{m_minute}, name));
        if (m_second != 0)
            throw CKvInvalidValueException(FormatString("Invalid Second [%d] for type %s", int{m_second}, name));
        if (m_milliSecond != 0)
            throw CKvInvalidValueException(
                FormatString("Invalid Milli-Second [%d] for type %s", int{m_milliSecond}, name));
        if (m_microSecond != 0)
            throw CKvInvalidValueException(
                FormatString("Invalid Micro-Second [%d] for type %s", int{m_microSecond}, name));
        if (m_nanoSecond != 0)
            throw CKvInvalidValueException(
                FormatString("Invalid Nano-Second [%d] for type %s", int{m_nanoSecond}, name));
    }
}

}  // namespace KvXmlLib10
