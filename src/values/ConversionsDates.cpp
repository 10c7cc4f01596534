// ConversionsDates.cpp - CConversions for durations and the date and time types.
//
// The date parser decides the type from the text's shape, so each date
// conversion checks that the shape is its own: "2001-05" is a gYearMonth and
// is refused as a date, and gYear, gMonth and gDay accept only their forms.
#include <charconv>

#include "detail/ConversionsCore.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Conversions.h"

namespace KvXmlLib10 {

namespace {

using Rule = CWhitespaceUtils::WhitespaceRule;

CDateTime ParseDateOfType(const std::string& text, Rule rule, CDateTime::DTType expected) {
    std::string storage;
    const std::string& t = detail::ApplyRuleCheap(rule, text, storage);
    CDateTime value(expected);
    value.ParseXSDDate(t.c_str());
    if (value.GetType() != expected)
        throw CKvInvalidValueException(
            FormatString("Invalid XSD %s [%s]", CDateTime::GetTypeAsString(expected).c_str(), t.c_str()));
    return value;
}

// prefix, then value in at least two digits ("--%02u", "---%02u").
std::string PrintPadded(const char* prefix, unsigned value) {
    char buffer[10];
    char* out = buffer;
    while (*prefix != '\0') *out++ = *prefix++;
    if (value < 10) *out++ = '0';
    const auto result = std::to_chars(out, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

}  // namespace

CDateTimeSpan CConversions::durationFromString(const std::string& text, Rule rule) {
    std::string storage;
    CDateTimeSpan value;
    value.ParseXSDDuration(detail::ApplyRuleCheap(rule, text, storage).c_str());
    return value;
}

std::string CConversions::durationToString(const CDateTimeSpan& value) { return value.ToString(); }

CDateTime CConversions::yearMonthFromString(const std::string& text, Rule rule) {
    return ParseDateOfType(text, rule, CDateTime::dt_gYearMonth);
}

CDateTime CConversions::monthDayFromString(const std::string& text, Rule rule) {
    return ParseDateOfType(text, rule, CDateTime::dt_gMonthDay);
}

CDateTime CConversions::dateFromString(const std::string& text, Rule rule) {
    return ParseDateOfType(text, rule, CDateTime::dt_date);
}

CDateTime CConversions::datetimeFromString(const std::string& text, Rule rule) {
    std::string storage;
    CDateTime value(CDateTime::dt_dateTime);
    value.ParseXSDDateTime(detail::ApplyRuleCheap(rule, text, storage).c_str());
    return value;
}

CDateTime CConversions::timeFromString(const std::string& text, Rule rule) {
    std::string storage;
    CDateTime value(CDateTime::dt_time);
    value.ParseXSDTime(detail::ApplyRuleCheap(rule, text, storage).c_str());
    return value;
}

std::string CConversions::yearMonthToString(const CDateTime& value) { return value.ToString("s"); }
std::string CConversions::monthDayToString(const CDateTime& value) { return value.ToString("s"); }
std::string CConversions::dateToString(const CDateTime& value) { return value.ToString("s"); }
std::string CConversions::datetimeToString(const CDateTime& value) { return value.ToString("s"); }
std::string CConversions::timeToString(const CDateTime& value) { return value.ToString("s"); }

uint16_t CConversions::yearFromString(const std::string& text, Rule rule) {
    // A negative year keeps its bits in the unsigned field ("-0044" is 65492).
    return static_cast<uint16_t>(ParseDateOfType(text, rule, CDateTime::dt_gYear).GetYear());
}

uint8_t CConversions::monthFromString(const std::string& text, Rule rule) {
    return ParseDateOfType(text, rule, CDateTime::dt_gMonth).GetMonth();
}

uint8_t CConversions::dayFromString(const std::string& text, Rule rule) {
    return ParseDateOfType(text, rule, CDateTime::dt_gDay).GetDay();
}

std::string CConversions::yearToString(uint16_t value) {
    char buffer[10];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, unsigned{value});
    return std::string(buffer, result.ptr);
}

std::string CConversions::monthToString(uint8_t value) { return PrintPadded("--", value); }

std::string CConversions::dayToString(uint8_t value) { return PrintPadded("---", value); }

}  // namespace KvXmlLib10
