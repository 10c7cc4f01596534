// CheckRestrictionDates.cpp - range facets of durations and the CDateTime types.
//
// Dates and durations are only partially ordered; an incomparable bound
// (a zoneless value within fourteen hours of a zoned one, one month against
// thirty days) fails the facet rather than letting an unproven value through.
#include <string>

#include "detail/RangeFacets.h"
#include "kvxml/core/XmlObjectHelper.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/validation/PrimitiveRestrictions.h"
#include "kvxml/values/Conversions.h"
#include "foundation/detail/OrEmpty.h"

namespace KvXmlLib10 {

namespace {

using Rule = CWhitespaceUtils::WhitespaceRule;

template <typename T>
void CheckByCompareTo(const char* name, const T& value, const CPrimitiveRestrictions& r,
                      T (*parser)(const std::string&, Rule)) {
    auto parse = [parser](const std::string& text) { return parser(text, Rule::Collapse); };
    auto order = [](const T& v, const T& bound) { return detail::OrderFromCompareTo(v.CompareTo(bound)); };
    if (!detail::RangeFacetsHold(value, r, parse, order)) {
        throw CKvException(
            FormatString("Invalid Value for %s [%s]", detail::OrEmpty(name), value.ToString().c_str()));
    }
}

}  // namespace

void CXmlObjectHelper::CheckRestrictionForduration(const char* name, const CDateTimeSpan& value,
                                                   const CPrimitiveRestrictions& r) {
    CheckByCompareTo(name, value, r, &CConversions::durationFromString);
}

void CXmlObjectHelper::CheckRestrictionFordate(const char* name, const CDateTime& value,
                                               const CPrimitiveRestrictions& r) {
    CheckByCompareTo(name, value, r, &CConversions::dateFromString);
}

void CXmlObjectHelper::CheckRestrictionFordatetime(const char* name, const CDateTime& value,
                                                   const CPrimitiveRestrictions& r) {
    CheckByCompareTo(name, value, r, &CConversions::datetimeFromString);
}

void CXmlObjectHelper::CheckRestrictionFortime(const char* name, const CDateTime& value,
                                               const CPrimitiveRestrictions& r) {
    CheckByCompareTo(name, value, r, &CConversions::timeFromString);
}

void CXmlObjectHelper::CheckRestrictionForyearMonth(const char* name, const CDateTime& value,
                                                    const CPrimitiveRestrictions& r) {
    CheckByCompareTo(name, value, r, &CConversions::yearMonthFromString);
}

void CXmlObjectHelper::CheckRestrictionFormonthDay(const char* name, const CDateTime& value,
                                                   const CPrimitiveRestrictions& r) {
    CheckByCompareTo(name, value, r, &CConversions::monthDayFromString);
}

// No item type of its own: generated code for gYearMonth may call either name.
void CXmlObjectHelper::CheckRestrictionFormonthYear(const char* name, const CDateTime& value,
                                                    const CPrimitiveRestrictions& r) {
    CheckByCompareTo(name, value, r, &CConversions::yearMonthFromString);
}

}  // namespace KvXmlLib10
