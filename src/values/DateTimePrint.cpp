// DateTimePrint.cpp - printing the XML Schema lexical forms of dates and times.
//
// Printing sits on the writers' hot path, so the digits are written by hand
// into a stack buffer; the text equals what "%02d"/"%04d" padding gives.
#include <cstdlib>
#include <cstring>
#include <string>

#include "kvxml/foundation/KvException.h"
#include "kvxml/values/DateTime.h"
#include "values/detail/DateTimeCore.h"

namespace KvXmlLib10 {

namespace {

// Writes value (>= 0) with at least width digits; returns the new end.
char* PutPadded(char* out, unsigned value, int width) {
    char digits[12];
    int count = 0;
    do {
        digits[count++] = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value != 0);
    for (int i = count; i < width; ++i) *out++ = '0';
    while (count > 0) *out++ = digits[--count];
    return out;
}

char* Put2(char* out, unsigned value) { return PutPadded(out, value, 2); }

// Three digits of a group, then trailing zeros dropped (never the first digit).
char* PutTrimmed3(char* out, unsigned value) {
    char* end = PutPadded(out, value, 3);
    while (end - out > 1 && end[-1] == '0') --end;
    return end;
}

char* PutFraction(char* out, unsigned milli, unsigned micro, unsigned nano) {
    if (nano != 0) {
        *out++ = '.';
        out = PutPadded(out, milli, 3);
        out = PutPadded(out, micro, 3);
        return PutTrimmed3(out, nano);
    }
    if (micro != 0) {
        *out++ = '.';
        out = PutPadded(out, milli, 3);
        return PutTrimmed3(out, micro);
    }
    if (milli != 0) {
        *out++ = '.';
        return PutTrimmed3(out, milli);
    }
    return out;
}

char* PutYear(char* out, int year) {
    if (year < 0) *out++ = '-';
    return PutPadded(out, static_cast<unsigned>(std::abs(year)), 4);
}

}  // namespace

std::string CDateTime::ToFracString(uint16_t milliSecond, uint16_t microSecond, uint16_t nanoSecond) {
    char buffer[32];
    char* end = PutFraction(buffer, milliSecond, microSecond, nanoSecond);
    return std::string(buffer, end);
}

std::string CDateTime::ToString() const { return ToString("s"); }

std::string CDateTime::ToString(const char* format) const {
    if (!format || !*format) return std::string();
    // "G" has no form of its own: it prints the lexical form as well.
    if (std::strcmp(format, "s") != 0 && std::strcmp(format, "G") != 0)
        throw CKvInvalidParamException(std::string("Unknown Format: ") + format);
    if (m_type != dt_time && m_year == 0 && m_month == 0 && m_day == 0 && m_hour == 0 && m_minute == 0 &&
        m_second == 0 && m_milliSecond == 0 && m_microSecond == 0 && m_nanoSecond == 0)
        throw CKvInvalidValueException("Date Not Set");

    char buffer[64];
    char* out = buffer;
    switch (m_type) {
    case dt_dateTime:
    case dt_date:
        out = PutYear(out, m_year);
        *out++ = '-';
        out = Put2(out, m_month);
        *out++ = '-';
        out = Put2(out, m_day);
        break;
    case dt_gYear:
        out = PutYear(out, m_year);
        break;
    case dt_gYearMonth:
        out = PutYear(out, m_year);
        *out++ = '-';
        out = Put2(out, m_month);
        break;
    case dt_gMonth:
        *out++ = '-';
        *out++ = '-';
        out = Put2(out, m_month);
        break;
    case dt_gMonthDay:
        *out++ = '-';
        *out++ = '-';
        out = Put2(out, m_month);
        *out++ = '-';
        out = Put2(out, m_day);
        break;
    case dt_gDay:
        *out++ = '-';
        *out++ = '-';
        *out++ = '-';
        out = Put2(out, m_day);
        break;
    default:
        break;
    }
    if (m_type == dt_dateTime) *out++ = 'T';
    if (m_type == dt_dateTime || m_type == dt_time) {
        out = Put2(out, m_hour);
        *out++ = ':';
        out = Put2(out, m_minute);
        *out++ = ':';
        out = Put2(out, m_second);
        out = PutFraction(out, m_milliSecond, m_microSecond, m_nanoSecond);
    }
    if (m_zoneSet) {
        if (!m_zoneOffset) {
            *out++ = 'Z';
        } else {
            *out++ = m_zoneHour < 0 ? '-' : '+';
            out = Put2(out, static_cast<unsigned>(std::abs(m_zoneHour)));
            *out++ = ':';
            out = Put2(out, m_zoneMinute);
        }
    }
    return std::string(buffer, out);
}

}  // namespace KvXmlLib10
