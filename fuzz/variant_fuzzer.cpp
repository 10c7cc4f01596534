// variant_fuzzer.cpp - KvVariant::FromString over every item type on the same bytes, with round trips.
//
// The first byte picks the whitespace rule, the rest is the text. For each
// type 1..26 the text either parses or throws a CKvException; anything else
// escapes and aborts. A parsed value prints, survives a copy, and, where the
// type's text form round-trips, parses back from its text to the same text.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Conversions.h"
#include "kvxml/values/Variant.h"

using namespace KvXmlLib10;
using Rule = CWhitespaceUtils::WhitespaceRule;

namespace {

void Check(bool ok) {
    if (!ok) std::abort();
}

// Printed floats carry 16 or 7 significant digits, so they come back close
// rather than exact.
void CheckFloating(const KvVariant& value, const std::string& printed, ItemType type, Rule rule) {
    KvVariant again;
    again.FromString(printed, type, rule);
    const double a = type == r4 ? value.GetR4() : value.GetR8();
    const double b = type == r4 ? again.GetR4() : again.GetR8();
    if (std::isnan(a)) return Check(std::isnan(b));
    if (std::isinf(a)) return Check(a == b);
    Check(std::fabs(a - b) <= std::fabs(a) * (type == r4 ? 1e-6 : 1e-15));
    (void)value.ToString("%.3e");
}

bool TextRoundTrips(const KvVariant& value, ItemType type, const std::string& printed) {
    switch (type) {
        case r4:
        case r8:
            return false;
        case duration:  // a zero span prints "P", which is not a duration
            return printed != "P" && printed != "-P";
        case year:  // "%u" has four digits only for 1000..9999
            return value.GetYear() >= 1000 && value.GetYear() <= 9999;
        default:
            return true;
    }
}

void CheckType(const std::string& text, ItemType type, Rule rule) {
    KvVariant value;
    try {
        value.FromString(text, type, rule);
    } catch (const CKvException&) {
        return;
    }
    Check(value.IsValid() && !value.IsNil());
    Check(value.GetType() == KvVariant(value).GetType());
    const std::string printed = value.ToString(nullptr);
    KvVariant copy;
    copy = value;
    Check(copy.ToString(nullptr) == printed);

    if (type == r4 || type == r8) return CheckFloating(value, printed, type, rule);
    if (type == decimal) (void)value.ToString("3");
    if (!TextRoundTrips(value, type, printed)) return;

    KvVariant again;
    again.FromString(printed, type, rule);  // must not throw
    // A decimal cut to 30 fraction digits keeps the zeros the cut leaves
    // ("1.500...0"); its reparse drops them, so only the value must agree.
    if (type != decimal) Check(again.ToString(nullptr) == printed);
    switch (type) {
        case decimal:
            Check(again.GetDecimal() == value.GetDecimal());
            break;
        case integer:
            Check(again.GetInteger() == value.GetInteger());
            break;
        case hexBinary:
        case base64Binary:
            Check(again.GetHexBinary() == value.GetHexBinary());
            break;
        case string:
            Check(again.GetString() == value.GetString());
            break;
        default:
            break;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const Rule rule = size > 0 ? static_cast<Rule>(data[0] & 3) : Rule::None;
    const std::string text = size > 0 ? std::string(reinterpret_cast<const char*>(data + 1), size - 1) : std::string();
    for (int32_t code = 1; code <= 26; ++code) CheckType(text, static_cast<ItemType>(code), rule);

    KvVariant invalid;
    try {
        invalid.FromString(text, static_cast<ItemType>(0), rule);
        std::abort();
    } catch (const CKvException&) {
    }
    return 0;
}
