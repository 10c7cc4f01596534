// DateTimeParse.cpp - reading the XML Schema lexical forms of dates and times.
//
// The text comes straight from documents: every position is checked against
// the length before it is read, digits are tested without <cctype> (bytes
// above 0x7F are negative chars), and a run of any length is scanned once.
#include <cstring>
#include <string>

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/values/DateTime.h"
#include "values/detail/DateTimeCore.h"

namespace KvXmlLib10 {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool AreDigits(const char* p, size_t count) {
    for (size_t i = 0; i < count; ++i)
        if (!IsDigit(p[i])) return false;
    return true;
}

int TwoDigits(const char* p) { return (p[0] - '0') * 10 + (p[1] - '0'); }

[[noreturn]] void Fail(const std::string& message) { throw CKvInvalidValueException(message); }

// The fields a date or time text sets, before they go into a CDateTime.
struct Parsed {
    CDateTime::DTType type = CDateTime::dt_none;
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int milli = 0;
    int micro = 0;
    int nano = 0;
    bool zoneZ = false;
    bool zoneNumeric = false;
    int zoneHour = 0;
    int zoneMinute = 0;
};

// "+hh:mm" or "-hh:mm", exactly six characters.
bool ReadOffset(const char* p, size_t n, Parsed& out) {
    if (n != 6 || (p[0] != '+' && p[0] != '-') || p[3] != ':' || !AreDigits(p + 1, 2) || !AreDigits(p + 4, 2))
        return false;
    int hour = TwoDigits(p + 1);
    out.zoneHour = p[0] == '-' ? -hour : hour;
    out.zoneMinute = TwoDigits(p + 4);
    out.zoneNumeric = true;
    return true;
}

// The date part without its zone; false when it has none of the shapes.
bool ReadDatePart(const char* p, size_t n, Parsed& out) {
    if (n >= 3 && p[0] == '-' && p[1] == '-' && p[2] == '-') {
        if (n != 5 || !AreDigits(p + 3, 2)) return false;
        out.type = CDateTime::dt_gDay;
        out.day = TwoDigits(p + 3);
        return true;
    }
    if (n >= 2 && p[0] == '-' && p[1] == '-') {
        if (n < 4 || !AreDigits(p + 2, 2)) return false;
        out.month = TwoDigits(p + 2);
        if (n == 4 || (n == 6 && p[4] == '-' && p[5] == '-')) {
            out.type = CDateTime::dt_gMonth;
            return true;
        }
        if (n == 7 && p[4] == '-' && AreDigits(p + 5, 2)) {
            out.type = CDateTime::dt_gMonthDay;
            out.day = TwoDigits(p + 5);
            return true;
        }
        return false;
    }
    bool negative = n > 0 && p[0] == '-';
    if (negative) {
        ++p;
        --n;
    }
    if (n < 4 || !AreDigits(p, 4)) return false;
    int year = TwoDigits(p) * 100 + TwoDigits(p + 2);
    out.year = negative ? -year : year;
    if (n == 4) {
        out.type = CDateTime::dt_gYear;
        return true;
    }
    if (n < 7 || p[4] != '-' || !AreDigits(p + 5, 2)) return false;
    out.month = TwoDigits(p + 5);
    if (n == 7) {
        out.type = CDateTime::dt_gYearMonth;
        return true;
    }
    if (n != 10 || p[7] != '-' || !AreDigits(p + 8, 2)) return false;
    out.day = TwoDigits(p + 8);
    out.type = CDateTime::dt_date;
    return true;
}

void ApplyZone(const Parsed& parsed, CDateTime& value) {
    if (parsed.zoneZ) value.SetUTC();
    if (parsed.zoneNumeric)
        value.SetTimeZone(static_cast<int16_t>(parsed.zoneHour), static_cast<uint8_t>(parsed.zoneMinute));
}

// Builds and validates the value; throws before touching target.
CDateTime Build(const Parsed& p) {
    CDateTime value;
    ApplyZone(p, value);
    // Field widths match the text (at most four digits), so the casts keep every value.
    value.SetDateTime(p.type, static_cast<int16_t>(p.year), static_cast<uint8_t>(p.month),
                      static_cast<uint8_t>(p.day), static_cast<uint8_t>(p.hour), static_cast<uint8_t>(p.minute),
                      static_cast<uint8_t>(p.second), static_cast<uint16_t>(p.milli),
                      static_cast<uint16_t>(p.micro), static_cast<uint16_t>(p.nano));
    return value;
}

// Date forms with an optional zone; text has n characters and no NUL, and
// messages quote exactly those n characters.
void ParseDateText(const char* text, size_t n, Parsed& out) {
    if (n == 0) Fail("Invalid Date (Empty String)");
    if (std::memchr(text, 'T', n)) Fail("Invalid Date ('T' not allowed)");
    size_t dateLength = n;
    if (text[n - 1] == 'Z') {
        out.zoneZ = true;
        dateLength = n - 1;
    } else if (n >= 6 && text[n - 3] == ':' && (text[n - 6] == '+' || text[n - 6] == '-')) {
        if (!ReadOffset(text + n - 6, 6, out)) Fail("Invalid Date (Bad Zone value)");
        // Range errors speak for themselves ("Invalid TimeZone [24:0]").
        CDateTime probe;
        ApplyZone(out, probe);
        dateLength = n - 6;
    }
    if (!ReadDatePart(text, dateLength, out))
        Fail(FormatString("Invalid XSD Date [%s] expected CCYY-MM-DD[Z|[+|-]hh:mm]", std::string(text, n).c_str()));
}

// hh:mm:ss[.f{1,9}][zone].
void ParseTimeText(const char* text, size_t n, Parsed& out) {
    if (n == 0) Fail("Invalid XSD Time (Empty String)");
    auto badShape = [&]() {
        Fail(FormatString("Invalid XSD Time [%s] expected hh:mm:ss[.ff]", std::string(text, n).c_str()));
    };
    if (n < 8 || !AreDigits(text, 2) || text[2] != ':' || !AreDigits(text + 3, 2) || text[5] != ':' ||
        !AreDigits(text + 6, 2))
        badShape();
    out.hour = TwoDigits(text);
    out.minute = TwoDigits(text + 3);
    out.second = TwoDigits(text + 6);
    size_t pos = 8;
    if (pos < n && text[pos] == '.') {
        size_t start = ++pos;
        while (pos < n && IsDigit(text[pos])) ++pos;
        size_t digits = pos - start;
        if (digits == 0) badShape();
        if (digits > 9)
            Fail(FormatString("Invalid XSD Time [%s] Fraction part too long", std::string(text, n).c_str()));
        int groups[3] = {0, 0, 0};
        for (size_t i = 0; i < 9; ++i) {
            int digit = i < digits ? text[start + i] - '0' : 0;
            groups[i / 3] = groups[i / 3] * 10 + digit;
        }
        out.milli = groups[0];
        out.micro = groups[1];
        out.nano = groups[2];
    }
    if (pos < n) {
        const char* zone = text + pos;
        size_t zoneLength = n - pos;
        if (zoneLength == 1 && zone[0] == 'Z')
            out.zoneZ = true;
        else if (!ReadOffset(zone, zoneLength, out))
            Fail(FormatString("Invalid XSD Time Zone [%s]", std::string(zone, zoneLength).c_str()));
    }
    out.type = CDateTime::dt_time;
}

}  // namespace

void CDateTime::ParseXSDDate(const char* text) {
    Clear();
    if (!text) Fail("Invalid Date (Null String)");
    Parsed parsed;
    ParseDateText(text, std::strlen(text), parsed);
    *this = Build(parsed);
}

void CDateTime::ParseXSDTime(const char* text) {
    Clear();
    if (!text) Fail("Invalid Time (Null String)");
    Parsed parsed;
    ParseTimeText(text, std::strlen(text), parsed);
    *this = Build(parsed);
}

void CDateTime::ParseXSDDateTime(const char* text) {
    Clear();
    if (!text) Fail("Invalid DateTime (Null String)");
    size_t n = std::strlen(text);
    const char* t = static_cast<const char*>(std::memchr(text, 'T', n));
    if (!t) Fail(FormatString("Invalid XSD DateTime [%s] expected CCYY-MM-DDThh:mm:ss[.ff]", text));

    Parsed datePart;
    size_t dateLength = static_cast<size_t>(t - text);
    if (dateLength == 0) Fail("Invalid Date (Empty String)");
    ParseDateText(text, dateLength, datePart);
    // The zone belongs after the time; a zone inside the date part is refused.
    if (datePart.type != dt_date || datePart.zoneZ || datePart.zoneNumeric) {
        Build(datePart);  // the date part's own range errors come first
        Fail(FormatString("Invalid XSD DateTime [%s]", text));
    }

    // Validating the whole checks the date fields before the time fields, as
    // separate date and time checks would.
    Parsed parsed;
    ParseTimeText(t + 1, n - dateLength - 1, parsed);
    parsed.type = dt_dateTime;
    parsed.year = datePart.year;
    parsed.month = datePart.month;
    parsed.day = datePart.day;
    *this = Build(parsed);
}

}  // namespace KvXmlLib10
