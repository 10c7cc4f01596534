// DateTimeSpan.cpp - CDateTimeSpan: parsing, printing and the partial order of durations.
#include "kvxml/values/DateTimeSpan.h"

#include <cstring>

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Conversions.h"
#include "kvxml/values/DateTime.h"
#include "values/detail/DateTimeCore.h"

namespace KvXmlLib10 {

CDateTimeSpan::CDateTimeSpan() = default;

CDateTimeSpan::CDateTimeSpan(uint16_t years, uint32_t months, uint32_t days, uint32_t hours, uint64_t minutes,
                             uint64_t seconds, uint16_t milliSeconds, uint16_t microSeconds, uint16_t nanoSeconds) {
    SetDateTimeSpan(years, months, days, hours, minutes, seconds, milliSeconds, microSeconds, nanoSeconds);
}

CDateTimeSpan::CDateTimeSpan(uint16_t years, uint32_t months, uint32_t days, uint32_t hours, uint64_t minutes,
                             uint64_t seconds) {
    SetDateTimeSpan(years, months, days, hours, minutes, seconds);
}

CDateTimeSpan::CDateTimeSpan(uint32_t days, uint64_t minutes, uint64_t seconds) {
    SetDateTimeSpan(days, minutes, seconds);
}

CDateTimeSpan::~CDateTimeSpan() = default;

void CDateTimeSpan::SetDateTimeSpan(uint16_t years, uint32_t months, uint32_t days, uint32_t hours, uint64_t minutes,
                                    uint64_t seconds, uint16_t milliSeconds, uint16_t microSeconds,
                                    uint16_t nanoSeconds) {
    m_years = years;
    m_months = months;
    m_days = days;
    m_hours = hours;
    m_minutes = minutes;
    m_seconds = seconds;
    m_milliSeconds = milliSeconds;
    m_microSeconds = microSeconds;
    m_nanoSeconds = nanoSeconds;
}

void CDateTimeSpan::SetDateTimeSpan(uint16_t years, uint32_t months, uint32_t days, uint32_t hours, uint64_t minutes,
                                    uint64_t seconds) {
    SetDateTimeSpan(years, months, days, hours, minutes, seconds, 0, 0, 0);
}

void CDateTimeSpan::SetDateTimeSpan(uint32_t days, uint64_t minutes, uint64_t seconds) {
    SetDateTimeSpan(0, 0, days, 0, minutes, seconds, 0, 0, 0);
}

void CDateTimeSpan::Clear() { *this = CDateTimeSpan(); }

CDateTimeSpan CDateTimeSpan::GetAsNegative() const {
    CDateTimeSpan copy(*this);
    copy.Negate();
    return copy;
}

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Digit runs behave like a signed 32-bit accumulator that wraps: the sum is
// kept in uint32_t (defined wrap-around) and read back as int32_t.
int32_t AsInt32(uint32_t accumulator) { return static_cast<int32_t>(accumulator); }

// A 32-bit run widened to a 64-bit field sign-extends, as a signed long would.
uint64_t Widen(uint32_t accumulator) { return static_cast<uint64_t>(static_cast<int64_t>(AsInt32(accumulator))); }

}  // namespace

void CDateTimeSpan::ParseXSDDuration(const char* text) {
    Clear();
    if (!text) throw CKvInvalidValueException("Invalid XSD Duration (Null String)");
    if (!*text) throw CKvInvalidValueException("Invalid XSD Duration (Empty String)");

    CDateTimeSpan parsed;
    const char* p = text;
    bool valid = true;
    if (*p == '-') {
        parsed.m_negative = true;
        ++p;
    }
    if (*p == 'P')
        ++p;
    else
        valid = false;
    // 0 start, 1 Y, 2 months, 3 D, 4 T, 5 H, 6 minutes, 7 S.
    int state = 0;
    while (valid && *p) {
        uint32_t run = 0;
        while (IsDigit(*p)) run = run * 10u + static_cast<uint32_t>(*p++ - '0');
        switch (*p) {
        case 'Y':
            parsed.m_years = static_cast<uint16_t>(run);
            state = 1;
            break;
        case 'M':
            // After the date part, or a second time, "M" counts minutes.
            if (state < 2) {
                parsed.m_months = run;
                state = 2;
            } else {
                parsed.m_minutes = Widen(run);
                state = 6;
            }
            break;
        case 'D':
            if (state > 2) valid = false;
            parsed.m_days = run;
            state = 3;
            break;
        case 'T':
            if (state > 3) valid = false;
            state = 4;
            break;
        case 'H':
            if (state != 4) valid = false;
            parsed.m_hours = run;
            state = 5;
            break;
        case 'S':
            parsed.m_seconds = Widen(run);
            state = 7;
            break;
        case '.': {
            parsed.m_seconds = Widen(run);
            ++p;
            static const uint16_t kWeights[3] = {100, 10, 1};
            // A fraction fills the three groups afresh, even when an earlier one was read.
            parsed.m_milliSeconds = parsed.m_microSeconds = parsed.m_nanoSeconds = 0;
            int digits = 0;
            for (; IsDigit(*p); ++p, ++digits) {
                uint16_t digit = static_cast<uint16_t>(*p - '0');
                if (digits < 3) {
                    parsed.m_milliSeconds = static_cast<uint16_t>(parsed.m_milliSeconds + digit * kWeights[digits]);
                } else if (digits < 6) {
                    parsed.m_microSeconds = static_cast<uint16_t>(parsed.m_microSeconds + digit * kWeights[digits - 3]);
                } else if (digits < 9) {
                    // Each of these digits replaces the last: only the ninth survives a full fraction.
                    parsed.m_nanoSeconds = digit;
                } else {
                    throw CKvInvalidValueException(
                        FormatString("Invalid XSD Duration [%s] Fraction part too long", text));
                }
            }
            if (*p != 'S') valid = false;
            state = 7;
            break;
        }
        default:  // an unknown character, or digits running into the end
            valid = false;
            break;
        }
        if (valid) ++p;
    }
    if (!valid || state == 0 || state == 4)
        throw CKvInvalidValueException(
            FormatString("Invalid XSD Duration [%s] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]", text));
    *this = parsed;
}

std::string CDateTimeSpan::ToString() const {
    std::string text = m_negative ? "-P" : "P";
    if (m_years != 0) text += CConversions::ui2ToString(m_years) + "Y";
    if (m_months != 0) text += CConversions::ui4ToString(m_months) + "M";
    if (m_days != 0) text += CConversions::ui4ToString(m_days) + "D";
    bool hasFraction = m_milliSeconds != 0 || m_microSeconds != 0 || m_nanoSeconds != 0;
    if (m_hours != 0 || m_minutes != 0 || m_seconds != 0 || hasFraction) {
        text += 'T';
        if (m_hours != 0) text += CConversions::ui4ToString(m_hours) + "H";
        if (m_minutes != 0) text += CConversions::ui8ToString(m_minutes) + "M";
        if (m_seconds != 0 || hasFraction) {
            text += CConversions::ui8ToString(m_seconds);
            text += CDateTime::ToFracString(m_milliSeconds, m_microSeconds, m_nanoSeconds);
            text += 'S';
        }
    }
    return text;
}

int CDateTimeSpan::CompareTo(const CDateTimeSpan& other) const {
    static const int16_t kReferences[4][3] = {{1696, 9, 1}, {1697, 2, 1}, {1903, 3, 1}, {1903, 7, 1}};
    const detail::SpanParts mine = detail::Decompose(*this);
    const detail::SpanParts theirs = detail::Decompose(other);
    int first = 3;
    for (int i = 0; i < 4; ++i) {
        detail::DateFields a;
        a.type = CDateTime::dt_dateTime;
        a.year = kReferences[i][0];
        a.month = kReferences[i][1];
        a.day = kReferences[i][2];
        detail::DateFields b = a;
        // The sums run on 64-bit years, so no span is too large to compare.
        detail::AddParts(a, mine);
        detail::AddParts(b, theirs);
        int result = detail::CompareFields(a, b);
        if (i == 0) {
            if (result == 3) return 3;
            first = result;
        } else if (result != first) {
            return 3;
        }
    }
    return first;
}

bool CDateTimeSpan::operator==(const CDateTimeSpan& other) const { return CompareTo(other) == 0; }
bool CDateTimeSpan::operator!=(const CDateTimeSpan& other) const { return CompareTo(other) != 0; }
bool CDateTimeSpan::operator<(const CDateTimeSpan& other) const { return CompareTo(other) == 1; }
bool CDateTimeSpan::operator>(const CDateTimeSpan& other) const { return CompareTo(other) == 2; }

}  // namespace KvXmlLib10
