// decimal_fuzzer.cpp - CDecimal parsing of arbitrary text, with round trips and arithmetic identities.
//
// Any text either parses or throws CKvInvalidValueException. A parsed value
// prints to text that parses back to the same value, rounds within half a
// unit of the last printed digit, and survives exact identities.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Decimal.h"

using KvXmlLib10::CBigInteger;
using KvXmlLib10::CDecimal;
using KvXmlLib10::CKvInvalidValueException;
using KvXmlLib10::CKvOverFlowException;

namespace {

void Check(bool ok) {
    if (!ok) std::abort();
}

CDecimal Abs(CDecimal value) {
    if (value.GetNegative()) value.Negate();
    return value;
}

void CheckRounding(const CDecimal& value, int digits) {
    const std::string text = value.ToString(digits);
    const CDecimal rounded(text.c_str());
    const CDecimal half(CBigInteger(), CBigInteger(5), digits + 1);
    const CDecimal error = Abs(value - rounded);
    Check(error <= half);
    if (error == half) Check(Abs(rounded) > Abs(value));  // ties go away from zero
}

void CheckConversions(const CDecimal& value) {
    const std::string whole = value.ToBigInteger().ToString();
    try {
        Check(std::to_string(value.ToLongLong()) == whole);
    } catch (const CKvOverFlowException&) {
        Check(whole.size() >= 19);
    }
    try {
        (void)value.ToDouble();
    } catch (const CKvOverFlowException&) {
        Check(whole.size() >= 309);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // The parser takes a C string, so an embedded NUL ends the text.
    const std::string input(reinterpret_cast<const char*>(data), size);
    CDecimal value;
    try {
        value.Parse(input.c_str());
    } catch (const CKvInvalidValueException&) {
        return 0;
    }

    const std::string printed = value.ToString();
    const CDecimal again(printed.c_str());
    Check(again == value);
    const std::string reprinted = again.ToString();
    Check(CDecimal(reprinted.c_str()).ToString() == reprinted);

    for (int digits : {0, 1, 2, 7, 31}) CheckRounding(value, digits);
    CheckConversions(value);

    if (printed.size() <= 4000) {
        const CDecimal one(1);
        Check(value + one - one == value);
        Check(value * one == value);
        Check(value - value == CDecimal());
        if (value != CDecimal()) {
            // Exact: the quotient has no more fraction digits than value.
            Check(value * value / value == value);
            Check(value / value == one);
        }
    }
    return 0;
}
