// EmitTypes.cpp - the value-type table of the emitter.
#include "EmitTypes.h"

#include <cstdio>
#include <cstring>

namespace kvxsd {

namespace {

const char* const kDateHeader = "kvxml/values/DateTime.h";
const char* const kBinaryHeader = "kvxml/values/BinaryData.h";

const EmitValueType kTypes[] = {
    {"string", "std::string", "String", "std::string()", true, nullptr},
    {"hexBinary", "KvXmlLib10::CBinaryData", "HexBinary", "KvXmlLib10::CBinaryData()", true, kBinaryHeader},
    {"base64Binary", "KvXmlLib10::CBinaryData", "Base64Binary", "KvXmlLib10::CBinaryData()", true, kBinaryHeader},
    {"i1", "int8_t", "I1", "0", false, nullptr},
    {"i2", "int16_t", "I2", "0", false, nullptr},
    {"i4", "int32_t", "I4", "0", false, nullptr},
    {"i8", "int64_t", "I8", "0", false, nullptr},
    {"ui1", "uint8_t", "UI1", "0", false, nullptr},
    {"ui2", "uint16_t", "UI2", "0", false, nullptr},
    {"ui4", "uint32_t", "UI4", "0", false, nullptr},
    {"ui8", "uint64_t", "UI8", "0", false, nullptr},
    {"r4", "float", "R4", "0", false, nullptr},
    {"r8", "double", "R8", "0", false, nullptr},
    {"duration", "KvXmlLib10::CDateTimeSpan", "Duration", "KvXmlLib10::CDateTimeSpan()", true,
     "kvxml/values/DateTimeSpan.h"},
    {"yearMonth", "KvXmlLib10::CDateTime", "YearMonth", "KvXmlLib10::CDateTime()", true, kDateHeader},
    {"monthDay", "KvXmlLib10::CDateTime", "MonthDay", "KvXmlLib10::CDateTime()", true, kDateHeader},
    {"year", "uint16_t", "Year", "0", false, nullptr},
    {"month", "uint8_t", "Month", "0", false, nullptr},
    {"day", "uint8_t", "Day", "0", false, nullptr},
    {"date", "KvXmlLib10::CDateTime", "Date", "KvXmlLib10::CDateTime()", true, kDateHeader},
    {"datetime", "KvXmlLib10::CDateTime", "DateTime", "KvXmlLib10::CDateTime()", true, kDateHeader},
    {"time", "KvXmlLib10::CDateTime", "Time", "KvXmlLib10::CDateTime()", true, kDateHeader},
    {"boolean", "bool", "Boolean", "false", false, nullptr},
    {"decimal", "KvXmlLib10::CDecimal", "Decimal", "KvXmlLib10::CDecimal()", true, "kvxml/values/Decimal.h"},
    {"integer", "KvXmlLib10::CBigInteger", "Integer", "KvXmlLib10::CBigInteger()", true, "kvxml/values/BigInteger.h"},
};

}  // namespace

const EmitValueType& ItemRow(const std::string& itemType) {
    for (const EmitValueType& row : kTypes)
        if (itemType == row.itemType) return row;
    return kTypes[0];
}

std::string Literal(const std::string& text) {
    std::string out = "\"";
    for (unsigned char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += static_cast<char>(c);
        } else if (c < 0x20 || c >= 0x7f || c == '?') {
            // Octal escapes stop after three digits, so a following digit cannot join them;
            // '?' is escaped so no trigraph forms.
            char buffer[8];
            std::snprintf(buffer, sizeof buffer, "\\%03o", c);
            out += buffer;
        } else {
            out += static_cast<char>(c);
        }
    }
    return out + "\"";
}

namespace {

std::string DepPath(const std::string& path) {
    std::string out;
    for (char c : path) {
        if (c == ' ' || c == '#') out += '\\';
        if (c == '$') out += '$';
        out += c;
    }
    return out;
}

}  // namespace

std::string DepfileText(const std::vector<std::string>& outputs, const std::vector<std::string>& inputs) {
    std::string text;
    for (size_t i = 0; i < outputs.size(); ++i) text += (i ? " " : "") + DepPath(outputs[i]);
    text += ":";
    for (const std::string& input : inputs) text += " \\\n  " + DepPath(input);
    return text + "\n";
}

}  // namespace kvxsd
