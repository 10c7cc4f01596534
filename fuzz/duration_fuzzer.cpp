// duration_fuzzer.cpp - fuzzes CDateTimeSpan::ParseXSDDuration, printing, comparison and date addition.
#include "DateTimeFuzzCommon.h"

using kvxml_fuzz::CDateTime;
using kvxml_fuzz::CDateTimeSpan;
using kvxml_fuzz::CKvException;

namespace {

bool SameSpan(const CDateTimeSpan& a, const CDateTimeSpan& b) {
    return a.GetYears() == b.GetYears() && a.GetMonths() == b.GetMonths() && a.GetDays() == b.GetDays() &&
           a.GetHours() == b.GetHours() && a.GetMinutes() == b.GetMinutes() && a.GetSeconds() == b.GetSeconds() &&
           a.GetMilliSeconds() == b.GetMilliSeconds() && a.GetMicroSeconds() == b.GetMicroSeconds() &&
           a.GetNanoSeconds() == b.GetNanoSeconds() && a.IsNegative() == b.IsNegative();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using kvxml_fuzz::Check;
    std::string text(reinterpret_cast<const char*>(data), size);
    CDateTimeSpan span;
    try {
        span.ParseXSDDuration(text.c_str());
    } catch (const CKvException&) {
        Check(SameSpan(span, CDateTimeSpan()));
        return 0;
    }
    std::string printed = span.ToString();
    // A zero span prints as "P" or "-P", which is not valid input.
    if (printed != "P" && printed != "-P") {
        CDateTimeSpan again;
        try {
            again.ParseXSDDuration(printed.c_str());
        } catch (const CKvException&) {
            std::abort();
        }
        Check(SameSpan(span, again));
        Check(again.ToString() == printed);
    }
    Check(span.CompareTo(span) == 0);
    static const CDateTimeSpan day(1, 0, 0);
    int order = span.CompareTo(day);
    Check(order >= 0 && order <= 3);
    try {
        CDateTime date("2004-02-29T23:59:59.999999999+14:00");
        date += span;
        date.Validate();
        date -= span;
    } catch (const CKvException&) {
        // leaving the year range is allowed to fail
    }
    return 0;
}
