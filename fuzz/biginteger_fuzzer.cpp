// biginteger_fuzzer.cpp - CBigInteger parsing of arbitrary text, round trips and arithmetic identities.
//
// The whole input is parsed and printed back; pieces of it are parsed as
// two operands whose sums, products, quotients and roots are cross-checked.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "kvxml/foundation/KvException.h"
#include "kvxml/values/BigInteger.h"

using KvXmlLib10::CBigInteger;
using KvXmlLib10::CKvInvalidValueException;

namespace {

// Quadratic operations are only checked on operands of this many characters.
constexpr size_t kMaxOperandText = 3000;

void Check(bool ok) {
    if (!ok) std::abort();
}

bool TryParse(const std::string& text, CBigInteger& value) {
    try {
        value.Parse(text.c_str());
        return true;
    } catch (const CKvInvalidValueException&) {
        return false;
    }
}

void CheckRoundTrip(const CBigInteger& value) {
    const std::string printed = value.ToString();
    Check(!printed.empty() && printed != "-0");
    const size_t first = printed[0] == '-' ? 1 : 0;
    Check(printed.size() > first && (printed[first] != '0' || printed.size() == first + 1));
    const CBigInteger again(printed.c_str());
    Check(again == value && again.ToString() == printed);
}

void CheckSmall(const CBigInteger& a, const CBigInteger& b) {
    // Against 64-bit arithmetic where both fit in 32 bits.
    int x = 0, y = 0;
    try {
        x = static_cast<int>(a);
        y = static_cast<int>(b);
    } catch (const CKvInvalidValueException&) {
        return;
    }
    const int64_t lx = x, ly = y;
    Check((a + b).ToString() == std::to_string(lx + ly));
    Check((a - b).ToString() == std::to_string(lx - ly));
    Check((a * b).ToString() == std::to_string(lx * ly));
    if (ly != 0) {
        Check((a / b).ToString() == std::to_string(lx / ly));
        Check((a % b).ToString() == std::to_string(lx % ly));
    }
}

void CheckPair(const CBigInteger& a, const CBigInteger& b) {
    CheckSmall(a, b);
    Check(a + b - b == a);
    Check(a - b + b == a);
    Check((a < b) == (b > a) && (a == b) == !(a != b) && (a <= b) == !(a > b));
    if (b == CBigInteger(0)) return;
    Check(a * b / b == a);
    Check(a * b % b == CBigInteger(0));
    const CBigInteger q = a / b, r = a % b;
    Check(q * b + r == a);
    Check(r.GetAbs() < b.GetAbs());
    Check(r == CBigInteger(0) || r.GetNegative() == a.GetNegative());
}

void CheckRoot(const CBigInteger& a) {
    if (a.GetNegative()) return;
    const CBigInteger root = a.SquareRoot();
    const CBigInteger next = root + CBigInteger(1);
    Check(root * root <= a && next * next > a);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    CBigInteger whole;
    if (TryParse(input, whole)) CheckRoundTrip(whole);

    // Operands from pieces of the input: at a '|' if there is one, else in the middle.
    size_t split = input.find('|');
    const size_t skip = split == std::string::npos ? 0 : 1;
    if (split == std::string::npos) split = input.size() / 2;
    const std::string left = input.substr(0, split), right = input.substr(split + skip);
    if (left.size() > kMaxOperandText || right.size() > kMaxOperandText) return 0;
    CBigInteger a, b;
    if (!TryParse(left, a) || !TryParse(right, b)) return 0;
    if (a.ToString().size() > kMaxOperandText || b.ToString().size() > kMaxOperandText) return 0;
    CheckRoundTrip(a);
    CheckRoundTrip(b);
    CheckPair(a, b);
    CheckPair(b, a);
    CheckRoot(a);
    return 0;
}
