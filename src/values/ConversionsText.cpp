// ConversionsText.cpp - CConversions for boolean, char, string, hexBinary and base64Binary.
#include "detail/ConversionsCore.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Conversions.h"

namespace KvXmlLib10 {

namespace {

using Rule = CWhitespaceUtils::WhitespaceRule;

char LowerAscii(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

// strcasecmp in the "C" locale: byte-wise, ASCII case folding only, up to
// the first NUL. lower is already lower case.
bool EqualsIgnoringCase(const char* text, const char* lower) {
    for (; *text != '\0' && *lower != '\0'; ++text, ++lower)
        if (LowerAscii(*text) != *lower) return false;
    return *text == *lower;
}

}  // namespace

bool CConversions::booleanFromString(const std::string& text, Rule rule) {
    std::string storage;
    const std::string& t = detail::ApplyRuleCheap(rule, text, storage);
    const char* c = t.c_str();
    if (EqualsIgnoringCase(c, "true")) return true;
    if (EqualsIgnoringCase(c, "false")) return false;
    if (EqualsIgnoringCase(c, "1")) return true;
    if (EqualsIgnoringCase(c, "0")) return false;
    throw CKvInvalidValueException(FormatString(
        "A Boolean Value read from an XML document was invalid [%s]. Valid values are 'true', 'false', '1', or '0'",
        c));
}

std::string CConversions::booleanToString(bool value) { return value ? "true" : "false"; }

char CConversions::charFromString(const std::string& text, Rule rule) {
    std::string storage;
    const std::string& t = detail::ApplyRuleCheap(rule, text, storage);
    if (t.size() != 1)
        throw CKvInvalidValueException(FormatString(
            "The value [%s] can not be a char as it is either empty of greater than 1 char long", t.c_str()));
    return t[0];
}

std::string CConversions::charToString(char value) { return std::string(1, value); }

std::string CConversions::stringFromString(const std::string& text, Rule rule) {
    std::string storage;
    return detail::ApplyRuleCheap(rule, text, storage);
}

std::string CConversions::stringToString(const std::string& value) { return value; }

CBinaryData CConversions::hexBinaryFromString(const std::string& text, Rule rule) {
    std::string storage;
    CBinaryData value;
    value.SetAsHexString(detail::ApplyRuleCheap(rule, text, storage).c_str());
    return value;
}

std::string CConversions::hexBinaryToString(const CBinaryData& value) { return value.GetAsHexString(); }

CBinaryData CConversions::base64BinaryFromString(const std::string& text, Rule rule) {
    std::string storage;
    CBinaryData value;
    value.SetAsBase64(detail::ApplyRuleCheap(rule, text, storage).c_str());
    return value;
}

std::string CConversions::base64BinaryToString(const CBinaryData& value) { return value.GetAsBase64(); }

}  // namespace KvXmlLib10
