// CheckRestrictionNumbers.cpp - range facets of the integer, floating, big integer and decimal types.
#include <cstdint>
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

// The plain numeric order, NaN included (it is incomparable with everything).
template <typename T>
detail::Ordering Numeric(const T& value, const T& bound) {
    return detail::OrderOf(value, bound);
}

// Types whose message shows the value with "%d". printed is the value as the
// 32-bit int the message reads (a ui4 above 2^31-1 shows negative).
template <typename T>
void CheckPrintedAsInt(const char* name, T value, int32_t printed, const CPrimitiveRestrictions& r,
                       T (*parser)(const std::string&, Rule)) {
    auto parse = [parser](const std::string& text) { return parser(text, Rule::Collapse); };
    if (!detail::RangeFacetsHold(value, r, parse, Numeric<T>)) {
        throw CKvException(FormatString("Invalid Value for %s [%d]", detail::OrEmpty(name), printed));
    }
}

template <typename T>
void CheckPrintedAsDouble(const char* name, T value, const CPrimitiveRestrictions& r,
                          T (*parser)(const std::string&, Rule)) {
    auto parse = [parser](const std::string& text) { return parser(text, Rule::Collapse); };
    if (!detail::RangeFacetsHold(value, r, parse, Numeric<T>)) {
        throw CKvException(
            FormatString("Invalid Value for %s [%f]", detail::OrEmpty(name), static_cast<double>(value)));
    }
}

// Types whose message shows a printed text, built only when a facet fails.
template <typename T, typename Parsed, typename Print>
void CheckPrintedAsText(const char* name, const T& value, const CPrimitiveRestrictions& r,
                        Parsed (*parser)(const std::string&, Rule), Print print) {
    auto parse = [parser](const std::string& text) { return parser(text, Rule::Collapse); };
    if (!detail::RangeFacetsHold(value, r, parse, Numeric<T>)) {
        throw CKvException(FormatString("Invalid Value for %s [%s]", detail::OrEmpty(name), print(value).c_str()));
    }
}

// Two's-complement reading of a 32-bit unsigned value, without relying on
// implementation-defined narrowing.
int32_t AsSigned32(uint32_t value) {
    return value <= INT32_MAX ? static_cast<int32_t>(value) : static_cast<int32_t>(value - 0x80000000u) + INT32_MIN;
}

}  // namespace

void CXmlObjectHelper::CheckRestrictionFori1(const char* name, int8_t value, const CPrimitiveRestrictions& r) {
    CheckPrintedAsInt(name, value, value, r, &CConversions::i1FromString);
}

void CXmlObjectHelper::CheckRestrictionFori2(const char* name, int16_t value, const CPrimitiveRestrictions& r) {
    CheckPrintedAsInt(name, value, value, r, &CConversions::i2FromString);
}

void CXmlObjectHelper::CheckRestrictionFori4(const char* name, int32_t value, const CPrimitiveRestrictions& r) {
    CheckPrintedAsInt(name, value, value, r, &CConversions::i4FromString);
}

void CXmlObjectHelper::CheckRestrictionForui1(const char* name, uint8_t value, const CPrimitiveRestrictions& r) {
    CheckPrintedAsInt(name, value, value, r, &CConversions::ui1FromString);
}

void CXmlObjectHelper::CheckRestrictionForui2(const char* name, uint16_t value, const CPrimitiveRestrictions& r) {
    CheckPrintedAsInt(name, value, value, r, &CConversions::ui2FromString);
}

void CXmlObjectHelper::CheckRestrictionForui4(const char* name, uint32_t value, const CPrimitiveRestrictions& r) {
    CheckPrintedAsInt(name, value, AsSigned32(value), r, &CConversions::ui4FromString);
}

void CXmlObjectHelper::CheckRestrictionForyear(const char* name, uint16_t value, const CPrimitiveRestrictions& r) {
    CheckPrintedAsInt(name, value, value, r, &CConversions::yearFromString);
}

void CXmlObjectHelper::CheckRestrictionFormonth(const char* name, uint8_t value, const CPrimitiveRestrictions& r) {
    CheckPrintedAsInt(name, value, value, r, &CConversions::monthFromString);
}

void CXmlObjectHelper::CheckRestrictionForday(const char* name, uint8_t value, const CPrimitiveRestrictions& r) {
    CheckPrintedAsInt(name, value, value, r, &CConversions::dayFromString);
}

void CXmlObjectHelper::CheckRestrictionFori8(const char* name, int64_t value, const CPrimitiveRestrictions& r) {
    CheckPrintedAsText(name, value, r, &CConversions::i8FromString, &CConversions::i8ToString);
}

void CXmlObjectHelper::CheckRestrictionForui8(const char* name, uint64_t value, const CPrimitiveRestrictions& r) {
    CheckPrintedAsText(name, value, r, &CConversions::ui8FromString, &CConversions::ui8ToString);
}

void CXmlObjectHelper::CheckRestrictionForr4(const char* name, float value, const CPrimitiveRestrictions& r) {
    CheckPrintedAsDouble(name, value, r, &CConversions::r4FromString);
}

void CXmlObjectHelper::CheckRestrictionForr8(const char* name, double value, const CPrimitiveRestrictions& r) {
    CheckPrintedAsDouble(name, value, r, &CConversions::r8FromString);
}

void CXmlObjectHelper::CheckRestrictionForinteger(const char* name, const CBigInteger& value,
                                                  const CPrimitiveRestrictions& r) {
    CheckPrintedAsText(name, value, r, &CConversions::integerFromString,
                       [](const CBigInteger& v) { return v.ToString(); });
}

void CXmlObjectHelper::CheckRestrictionFordecimal(const char* name, const CDecimal& value,
                                                  const CPrimitiveRestrictions& r) {
    CheckPrintedAsText(name, value, r, &CConversions::decimalFromString,
                       [](const CDecimal& v) { return v.ToString(); });
}

}  // namespace KvXmlLib10
