// DateTimeFuzzCommon.h - shared checks of the date, time and duration fuzz targets.
//
// A parse that succeeds must print a text that parses back to the very same
// fields; anything else is a bug and aborts.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>

#include "kvxml/foundation/KvException.h"
#include "kvxml/values/DateTime.h"
#include "kvxml/values/DateTimeSpan.h"

namespace kvxml_fuzz {

using KvXmlLib10::CDateTime;
using KvXmlLib10::CDateTimeSpan;
using KvXmlLib10::CKvException;

inline void Check(bool condition) {
    if (!condition) std::abort();
}

// The printed form of a valid value is one-to-one with its fields, so equal
// texts, types and zones mean equal values.
inline bool SameFields(const CDateTime& a, const CDateTime& b) {
    bool same = a.GetType() == b.GetType() && a.IsUTC() == b.IsUTC() && a.HasTimeZone() == b.HasTimeZone() &&
                a.ToString() == b.ToString() && KvXmlLib10::Compare(a, b) == 0 && KvXmlLib10::Compare(b, a) == 0;
    if (same && a.HasTimeZone()) same = a.GetZoneHour() == b.GetZoneHour() && a.GetZoneMinute() == b.GetZoneMinute();
    return same;
}

enum class DateParser { Date, Time, DateTime };

inline void Parse(CDateTime& value, DateParser parser, const char* text) {
    switch (parser) {
    case DateParser::Date: value.ParseXSDDate(text); break;
    case DateParser::Time: value.ParseXSDTime(text); break;
    case DateParser::DateTime: value.ParseXSDDateTime(text); break;
    }
}

// Parses, and on success prints, reparses and exercises the value's other operations.
inline void RoundTripDate(const uint8_t* data, size_t size, DateParser parser) {
    std::string text(reinterpret_cast<const char*>(data), size);  // stops at an embedded NUL for the parser
    CDateTime value;
    try {
        Parse(value, parser, text.c_str());
    } catch (const CKvException&) {
        Check(value.GetType() == CDateTime::dt_none);
        return;
    }
    std::string printed = value.ToString();
    CDateTime again;
    try {
        Parse(again, parser, printed.c_str());
    } catch (const CKvException&) {
        std::abort();
    }
    Check(SameFields(value, again));
    Check(again.ToString() == printed);
    Check(value.CompareTo(again) == 0);

    CDateTime normalized = value.GetNormalized();
    Check(normalized.IsUTC() == value.IsUTC());
    static const CDateTime reference("2004-02-29T12:00:00Z");
    int order = value.CompareTo(reference);
    Check(order >= 0 && order <= 3);
    try {
        CDateTimeSpan span(1, 13, 40, 30, 100000, 7, 1, 2, 3);
        CDateTime moved = value + span;
        moved.Validate();
        CDateTime back = moved - span;
        back.Validate();
    } catch (const CKvException&) {
        // leaving the year range is allowed to fail
    }
    if (value.GetType() == CDateTime::dt_dateTime || value.GetType() == CDateTime::dt_date) {
        CDateTime fromSeconds(value.GetTime());
        if (fromSeconds.GetType() != CDateTime::dt_none) Check(fromSeconds.GetTime() == value.GetTime());
    }
}

}  // namespace kvxml_fuzz
