// DateTimeSpan.h - CDateTimeSpan: an XML Schema duration.
//
// The fields are kept as written, not normalised: "PT90M" holds 90 minutes
// and prints back as "PT90M".
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

/// A sign and separate counts of years, months, days, hours, minutes, seconds
/// and a fraction of a second (three groups of three digits).
class KVXML_API CDateTimeSpan {
public:
    /// Zero, positive.
    CDateTimeSpan();
    CDateTimeSpan(const CDateTimeSpan& other) = default;
    CDateTimeSpan& operator=(const CDateTimeSpan& other) = default;
    CDateTimeSpan(uint16_t years, uint32_t months, uint32_t days, uint32_t hours, uint64_t minutes,
                  uint64_t seconds, uint16_t milliSeconds, uint16_t microSeconds, uint16_t nanoSeconds);
    CDateTimeSpan(uint16_t years, uint32_t months, uint32_t days, uint32_t hours, uint64_t minutes,
                  uint64_t seconds);
    CDateTimeSpan(uint32_t days, uint64_t minutes, uint64_t seconds);
    virtual ~CDateTimeSpan();

    /// Setters do not validate; they keep the sign.
    void SetDateTimeSpan(uint16_t years, uint32_t months, uint32_t days, uint32_t hours, uint64_t minutes,
                         uint64_t seconds, uint16_t milliSeconds, uint16_t microSeconds, uint16_t nanoSeconds);
    void SetDateTimeSpan(uint16_t years, uint32_t months, uint32_t days, uint32_t hours, uint64_t minutes,
                         uint64_t seconds);
    /// The other fields become 0.
    void SetDateTimeSpan(uint32_t days, uint64_t minutes, uint64_t seconds);
    /// Zero, positive.
    void Clear();

    uint16_t GetYears() const { return m_years; }
    void SetYears(uint16_t years) { m_years = years; }
    uint32_t GetMonths() const { return m_months; }
    void SetMonths(uint32_t months) { m_months = months; }
    uint32_t GetDays() const { return m_days; }
    void SetDays(uint32_t days) { m_days = days; }
    uint32_t GetHours() const { return m_hours; }
    void SetHours(uint32_t hours) { m_hours = hours; }
    uint64_t GetMinutes() const { return m_minutes; }
    void SetMinutes(uint64_t minutes) { m_minutes = minutes; }
    uint64_t GetSeconds() const { return m_seconds; }
    void SetSeconds(uint64_t seconds) { m_seconds = seconds; }
    uint16_t GetMilliSeconds() const { return m_milliSeconds; }
    void SetMilliSeconds(uint16_t milliSeconds) { m_milliSeconds = milliSeconds; }
    uint16_t GetMicroSeconds() const { return m_microSeconds; }
    void SetMicroSeconds(uint16_t microSeconds) { m_microSeconds = microSeconds; }
    uint16_t GetNanoSeconds() const { return m_nanoSeconds; }
    void SetNanoSeconds(uint16_t nanoSeconds) { m_nanoSeconds = nanoSeconds; }

    bool IsNegative() const { return m_negative; }
    /// Flips the sign.
    void Negate() { m_negative = !m_negative; }
    /// A copy with the sign flipped.
    CDateTimeSpan GetAsNegative() const;

    /// Reads [-]P[nY][nM][nD][T[nH][nM][n[.fff]S]]; throws CKvInvalidValueException
    /// and leaves the value cleared on failure. Digit runs wrap modulo 2^32.
    void ParseXSDDuration(const char* text);
    /// The lexical form; a zero span prints "P" (or "-P"), which does not parse.
    std::string ToString() const;

    /// 0 equal, 1 less, 2 greater, 3 incomparable: both spans are added to
    /// 1696-09-01, 1697-02-01, 1903-03-01 and 1903-07-01 (midnight) and the
    /// four results compared; they must all agree. Never throws.
    int CompareTo(const CDateTimeSpan& other) const;
    bool operator==(const CDateTimeSpan& other) const;
    bool operator!=(const CDateTimeSpan& other) const;
    bool operator<(const CDateTimeSpan& other) const;
    bool operator>(const CDateTimeSpan& other) const;

private:
    uint16_t m_years = 0;
    uint32_t m_months = 0;
    uint32_t m_days = 0;
    uint32_t m_hours = 0;
    uint64_t m_minutes = 0;
    uint64_t m_seconds = 0;
    uint16_t m_milliSeconds = 0;
    uint16_t m_microSeconds = 0;
    uint16_t m_nanoSeconds = 0;
    bool m_negative = false;
};

}  // namespace KvXmlLib10
