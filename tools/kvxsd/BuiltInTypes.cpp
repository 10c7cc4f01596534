// BuiltInTypes.cpp - the table of XML Schema built-in simple types.
#include "BuiltInTypes.h"

namespace kvxsd {

const std::unordered_map<std::string, BuiltIn>& BuiltIns() {
    const Whitespace c = Whitespace::Collapse;
    static const std::unordered_map<std::string, BuiltIn> table = {
        {"string", {Item::String, Whitespace::Preserve, nullptr, nullptr}},
        {"anySimpleType", {Item::String, Whitespace::Preserve, nullptr, nullptr}},
        {"anyAtomicType", {Item::String, Whitespace::Preserve, nullptr, nullptr}},
        {"normalizedString", {Item::String, Whitespace::Replace, nullptr, nullptr}},
        {"token", {Item::String, c, nullptr, nullptr}},
        {"language", {Item::String, c, nullptr, nullptr}},
        {"Name", {Item::String, c, nullptr, nullptr}},
        {"NCName", {Item::String, c, nullptr, nullptr}},
        {"ID", {Item::String, c, nullptr, nullptr}},
        {"IDREF", {Item::String, c, nullptr, nullptr}},
        {"IDREFS", {Item::String, c, nullptr, nullptr}},
        {"ENTITY", {Item::String, c, nullptr, nullptr}},
        {"ENTITIES", {Item::String, c, nullptr, nullptr}},
        {"NMTOKEN", {Item::String, c, nullptr, nullptr}},
        {"NMTOKENS", {Item::String, c, nullptr, nullptr}},
        {"anyURI", {Item::String, c, nullptr, nullptr}},
        {"QName", {Item::String, c, nullptr, nullptr}},
        {"NOTATION", {Item::String, c, nullptr, nullptr}},
        {"boolean", {Item::Boolean, c, nullptr, nullptr}},
        {"decimal", {Item::Decimal, c, nullptr, nullptr}},
        {"integer", {Item::Integer, c, nullptr, nullptr}},
        {"nonPositiveInteger", {Item::Integer, c, nullptr, "0"}},
        {"negativeInteger", {Item::Integer, c, nullptr, "-1"}},
        {"nonNegativeInteger", {Item::Integer, c, "0", nullptr}},
        {"positiveInteger", {Item::Integer, c, "1", nullptr}},
        {"long", {Item::I8, c, nullptr, nullptr}},
        {"int", {Item::I4, c, nullptr, nullptr}},
        {"short", {Item::I2, c, nullptr, nullptr}},
        {"byte", {Item::I1, c, nullptr, nullptr}},
        {"unsignedLong", {Item::UI8, c, nullptr, nullptr}},
        {"unsignedInt", {Item::UI4, c, nullptr, nullptr}},
        {"unsignedShort", {Item::UI2, c, nullptr, nullptr}},
        {"unsignedByte", {Item::UI1, c, nullptr, nullptr}},
        {"float", {Item::R4, c, nullptr, nullptr}},
        {"double", {Item::R8, c, nullptr, nullptr}},
        {"duration", {Item::Duration, c, nullptr, nullptr}},
        {"dayTimeDuration", {Item::Duration, c, nullptr, nullptr}},
        {"yearMonthDuration", {Item::Duration, c, nullptr, nullptr}},
        {"dateTime", {Item::DateTime, c, nullptr, nullptr}},
        {"dateTimeStamp", {Item::DateTime, c, nullptr, nullptr}},
        {"time", {Item::Time, c, nullptr, nullptr}},
        {"date", {Item::Date, c, nullptr, nullptr}},
        {"gYearMonth", {Item::YearMonth, c, nullptr, nullptr}},
        {"gYear", {Item::Year, c, nullptr, nullptr}},
        {"gMonthDay", {Item::MonthDay, c, nullptr, nullptr}},
        {"gDay", {Item::Day, c, nullptr, nullptr}},
        {"gMonth", {Item::Month, c, nullptr, nullptr}},
        {"hexBinary", {Item::HexBinary, c, nullptr, nullptr}},
        {"base64Binary", {Item::Base64Binary, c, nullptr, nullptr}},
    };
    return table;
}

}  // namespace kvxsd
