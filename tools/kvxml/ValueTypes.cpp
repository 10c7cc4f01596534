// ValueTypes.cpp - lossless type inference for --suggested.
#include "ValueTypes.h"

#include <cstring>

namespace kvxml_cli {

using namespace KvXmlLib10;

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Digits only, optionally after one '-', at least one digit.
bool IsIntegerText(std::string_view text, std::size_t& digitsFrom) {
    digitsFrom = !text.empty() && text[0] == '-' ? 1 : 0;
    if (digitsFrom == text.size()) return false;
    for (std::size_t i = digitsFrom; i < text.size(); ++i)
        if (!IsDigit(text[i])) return false;
    return true;
}

// The text is what the integer's decimal rendering would be.
bool IsCanonicalInteger(std::string_view text, std::size_t digitsFrom) {
    if (text.size() - digitsFrom > 1 && text[digitsFrom] == '0') return false;
    return !(digitsFrom == 1 && text == "-0");
}

bool FitsIn(std::string_view text, std::size_t digitsFrom, const char* maxPositive, const char* maxNegative) {
    const std::size_t digits = text.size() - digitsFrom;
    const char* limit = digitsFrom ? maxNegative : maxPositive;
    const std::size_t limitLength = std::strlen(limit);
    if (digits != limitLength) return digits < limitLength;
    return text.compare(digitsFrom, digits, limit) <= 0;
}

bool OnlyFrom(std::string_view text, const char* characters) {
    for (char c : text)
        if (!c || !std::strchr(characters, c)) return false;
    return true;
}

}  // namespace

ItemType InferItemType(std::string_view text) {
    if (text.empty() || text.size() > 64) return string;
    if (text == "true" || text == "false") return boolean;
    std::size_t digitsFrom = 0;
    if (IsIntegerText(text, digitsFrom)) {
        if (IsCanonicalInteger(text, digitsFrom)) {
            if (FitsIn(text, digitsFrom, "2147483647", "2147483648")) return i4;
            if (FitsIn(text, digitsFrom, "9223372036854775807", "9223372036854775808")) return i8;
        }
        return integer;
    }
    const std::size_t dot = text.find('.');
    if (dot != std::string_view::npos && dot > 0 && dot + 1 < text.size() &&
        OnlyFrom(text.substr(0, 1), "-0123456789") && OnlyFrom(text.substr(1), "0123456789.") &&
        text.find('.', dot + 1) == std::string_view::npos && IsDigit(text[dot - 1]))
        return decimal;
    if (text.size() >= 5 && IsDigit(text[0]) && OnlyFrom(text, "0123456789-:TZ") &&
        text.find_first_of("-:") != std::string_view::npos)
        return datetime;
    return string;
}

}  // namespace kvxml_cli
