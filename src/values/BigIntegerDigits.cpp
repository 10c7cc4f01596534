// BigIntegerDigits.cpp - the limb array and the magnitude arithmetic under CBigInteger.
//
// Limbs hold nine decimal digits each (base 10^9), so decimal text maps to
// limbs chunk by chunk and printing never needs a base conversion.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <new>
#include <utility>

#include "kvxml/foundation/KvException.h"
#include "kvxml/values/BigInteger.h"

namespace KvXmlLib10 {

namespace {

using Digits = CBigInteger::CDigitArray;
constexpr uint32_t kBase = Digits::kBase;
constexpr unsigned kLimbDigits = Digits::kDigitsPerLimb;
constexpr uint32_t kPow10[10] = {1,      10,      100,      1000,      10000,
                                 100000, 1000000, 10000000, 100000000, 1000000000};

// Length without high zero limbs.
size_t Len(const Digits& a) {
    size_t n = a.size();
    const uint32_t* d = a.data();
    while (n > 0 && d[n - 1] == 0) --n;
    return n;
}

unsigned DecimalWidth(uint32_t limb) {
    unsigned width = 1;
    while (width < kLimbDigits && limb >= kPow10[width]) ++width;
    return width;
}

// Divides a by one non-zero limb in place; returns the remainder.
uint32_t DivideByLimb(Digits& a, uint32_t divisor) {
    uint64_t rem = 0;
    uint32_t* d = a.data();
    for (size_t i = a.size(); i-- > 0;) {
        uint64_t cur = rem * kBase + d[i];
        d[i] = static_cast<uint32_t>(cur / divisor);
        rem = cur % divisor;
    }
    CBigInteger::Clean(a);
    return static_cast<uint32_t>(rem);
}

}  // namespace

// ---- CDigitArray ------------------------------------------------------------

CBigInteger::CDigitArray::CDigitArray(const CDigitArray& other) {
    reserve(other.m_size);
    if (other.m_size > 0) std::memcpy(data(), other.data(), other.m_size * sizeof(uint32_t));
    m_size = other.m_size;
}

CBigInteger::CDigitArray::CDigitArray(CDigitArray&& other) noexcept {
    swap(other);
}

CBigInteger::CDigitArray& CBigInteger::CDigitArray::operator=(const CDigitArray& other) {
    if (this == &other) return *this;
    m_size = 0;
    reserve(other.m_size);
    if (other.m_size > 0) std::memcpy(data(), other.data(), other.m_size * sizeof(uint32_t));
    m_size = other.m_size;
    return *this;
}

CBigInteger::CDigitArray& CBigInteger::CDigitArray::operator=(CDigitArray&& other) noexcept {
    if (this != &other) {
        CDigitArray empty;
        swap(empty);  // releases our storage when `empty` goes out of scope
        swap(other);
    }
    return *this;
}

CBigInteger::CDigitArray::~CDigitArray() {
    if (!IsInline()) delete[] m_heap;
}

void CBigInteger::CDigitArray::reserve(size_t n) {
    if (n <= m_capacity) return;
    if (n > UINT32_MAX) throw std::bad_alloc();
    size_t grown = static_cast<size_t>(m_capacity) * 2;
    size_t capacity = std::min<size_t>(std::max(n, grown), UINT32_MAX);
    uint32_t* fresh = new uint32_t[capacity];
    if (m_size > 0) std::memcpy(fresh, data(), m_size * sizeof(uint32_t));
    if (!IsInline()) delete[] m_heap;
    m_heap = fresh;  // overwrites the inline limbs only after they were copied
    m_capacity = static_cast<uint32_t>(capacity);
}

void CBigInteger::CDigitArray::resize(size_t n) {
    reserve(n);
    if (n > m_size) std::memset(data() + m_size, 0, (n - m_size) * sizeof(uint32_t));
    m_size = static_cast<uint32_t>(n);
}

void CBigInteger::CDigitArray::push_back(uint32_t limb) {
    reserve(static_cast<size_t>(m_size) + 1);
    data()[m_size++] = limb;
}

void CBigInteger::CDigitArray::swap(CDigitArray& other) noexcept {
    // Each union holds limbs or a pointer; only the active member is read.
    if (IsInline() && other.IsInline()) {
        std::swap(m_inline, other.m_inline);
    } else if (!IsInline() && !other.IsInline()) {
        std::swap(m_heap, other.m_heap);
    } else {
        CDigitArray& small = IsInline() ? *this : other;
        CDigitArray& large = IsInline() ? other : *this;
        uint32_t* heap = large.m_heap;
        uint32_t limbs[kInline];
        std::memcpy(limbs, small.m_inline, sizeof limbs);
        for (uint32_t i = 0; i < kInline; ++i) large.m_inline[i] = limbs[i];  // m_inline becomes active
        small.m_heap = heap;
    }
    std::swap(m_size, other.m_size);
    std::swap(m_capacity, other.m_capacity);
}

// ---- magnitude helpers ------------------------------------------------------

int CBigInteger::Compare(const CDigitArray& a, const CDigitArray& b) {
    size_t la = Len(a), lb = Len(b);
    if (la != lb) return la < lb ? -1 : 1;
    const uint32_t* x = a.data();
    const uint32_t* y = b.data();
    for (size_t i = la; i-- > 0;) {
        if (x[i] != y[i]) return x[i] < y[i] ? -1 : 1;
    }
    return 0;
}

void CBigInteger::Add(const CDigitArray& a, const CDigitArray& b, CDigitArray& result) {
    size_t la = Len(a), lb = Len(b);
    const CDigitArray& longer = la >= lb ? a : b;
    const CDigitArray& shorter = la >= lb ? b : a;
    size_t nl = std::max(la, lb), ns = std::min(la, lb);
    CDigitArray sum;
    sum.resize(nl + 1);
    uint32_t* s = sum.data();
    const uint32_t* x = longer.data();
    const uint32_t* y = shorter.data();
    uint32_t carry = 0;
    for (size_t i = 0; i < nl; ++i) {
        uint32_t digit = x[i] + (i < ns ? y[i] : 0) + carry;  // < 2 * 10^9 + 1, no wrap
        carry = digit >= kBase;
        s[i] = carry ? digit - kBase : digit;
    }
    s[nl] = carry;
    Clean(sum);
    result = std::move(sum);
}

void CBigInteger::Subtract(const CDigitArray& a, const CDigitArray& b, CDigitArray& result) {
    // Larger minus smaller, whichever order they come in.
    const bool swapped = Compare(a, b) < 0;
    const CDigitArray& big = swapped ? b : a;
    const CDigitArray& small = swapped ? a : b;
    size_t nb = Len(big), ns = Len(small);
    CDigitArray diff;
    diff.resize(nb);
    uint32_t* d = diff.data();
    const uint32_t* x = big.data();
    const uint32_t* y = small.data();
    uint32_t borrow = 0;
    for (size_t i = 0; i < nb; ++i) {
        uint32_t sub = (i < ns ? y[i] : 0) + borrow;
        if (x[i] >= sub) {
            d[i] = x[i] - sub;
            borrow = 0;
        } else {
            d[i] = x[i] + kBase - sub;
            borrow = 1;
        }
    }
    Clean(diff);
    result = std::move(diff);
}

void CBigInteger::Multiply(const CDigitArray& a, uint32_t limb, CDigitArray& result) {
    size_t la = Len(a);
    CDigitArray product;
    if (la == 0 || limb == 0) {
        result = std::move(product);
        return;
    }
    product.resize(la + 2);  // a limb may exceed the base: up to two extra limbs
    uint32_t* p = product.data();
    const uint32_t* x = a.data();
    uint64_t carry = 0;
    for (size_t i = 0; i < la; ++i) {
        uint64_t cur = static_cast<uint64_t>(x[i]) * limb + carry;
        p[i] = static_cast<uint32_t>(cur % kBase);
        carry = cur / kBase;
    }
    p[la] = static_cast<uint32_t>(carry % kBase);
    p[la + 1] = static_cast<uint32_t>(carry / kBase);
    Clean(product);
    result = std::move(product);
}

void CBigInteger::Multiply(const CDigitArray& a, const CDigitArray& b, CDigitArray& result) {
    size_t la = Len(a), lb = Len(b);
    CDigitArray product;
    if (la == 0 || lb == 0) {
        result = std::move(product);
        return;
    }
    product.resize(la + lb);
    uint32_t* p = product.data();
    const uint32_t* x = a.data();
    const uint32_t* y = b.data();
    for (size_t i = 0; i < la; ++i) {
        uint64_t carry = 0;
        const uint64_t xi = x[i];
        if (xi == 0) continue;
        for (size_t j = 0; j < lb; ++j) {
            // At most (10^9 - 1)^2 + 2 * 10^9: well inside 64 bits.
            uint64_t cur = p[i + j] + xi * y[j] + carry;
            p[i + j] = static_cast<uint32_t>(cur % kBase);
            carry = cur / kBase;
        }
        p[i + lb] = static_cast<uint32_t>(carry);
    }
    Clean(product);
    result = std::move(product);
}

void CBigInteger::Divide(const CDigitArray& a, const CDigitArray& b, CDigitArray& quotient,
                         CDigitArray& remainder) {
    const size_t n = Len(b);
    if (n == 0) throw CKvInvalidValueException("ERROR: Overflow in operator/.");
    const size_t la = Len(a);
    if (Compare(a, b) < 0) {
        CDigitArray rem(a);
        Clean(rem);
        quotient.clear();
        remainder = std::move(rem);
        return;
    }
    if (n == 1) {
        CDigitArray q(a);
        Clean(q);
        uint32_t rem = DivideByLimb(q, b[0]);
        CDigitArray r;
        if (rem != 0) r.push_back(rem);
        quotient = std::move(q);
        remainder = std::move(r);
        return;
    }

    // Long division with one base-10^9 limb per quotient digit. Scaling both
    // operands so the divisor's top limb is at least half the base makes the
    // two-limb estimate of each quotient limb at most one too large.
    const uint32_t scale = kBase / (b[n - 1] + 1);
    CDigitArray u, v;
    Multiply(a, scale, u);
    Multiply(b, scale, v);
    u.resize(la + 1);
    v.resize(n);
    const size_t m = la - n;
    CDigitArray q;
    q.resize(m + 1);
    uint32_t* ud = u.data();
    const uint32_t* vd = v.data();
    const uint64_t vTop = vd[n - 1], vNext = vd[n - 2];
    for (size_t j = m + 1; j-- > 0;) {
        uint64_t num = static_cast<uint64_t>(ud[j + n]) * kBase + ud[j + n - 1];
        uint64_t qhat = num / vTop;
        uint64_t rhat = num % vTop;
        while (qhat >= kBase || qhat * vNext > rhat * kBase + ud[j + n - 2]) {
            --qhat;
            rhat += vTop;
            if (rhat >= kBase) break;
        }
        // u[j .. j+n] -= qhat * v
        uint64_t carry = 0;
        uint32_t borrow = 0;
        for (size_t i = 0; i < n; ++i) {
            uint64_t prod = qhat * vd[i] + carry;
            carry = prod / kBase;
            uint32_t sub = static_cast<uint32_t>(prod % kBase) + borrow;
            if (ud[i + j] >= sub) {
                ud[i + j] -= sub;
                borrow = 0;
            } else {
                ud[i + j] = ud[i + j] + kBase - sub;
                borrow = 1;
            }
        }
        uint64_t sub = carry + borrow;
        if (ud[j + n] >= sub) {
            ud[j + n] = static_cast<uint32_t>(ud[j + n] - sub);
        } else {
            // qhat was one too large: add the divisor back once. The top
            // limb wraps back to zero, so it is simply cleared.
            --qhat;
            uint32_t c = 0;
            for (size_t i = 0; i < n; ++i) {
                uint32_t digit = ud[i + j] + vd[i] + c;
                c = digit >= kBase;
                ud[i + j] = c ? digit - kBase : digit;
            }
            ud[j + n] = 0;
        }
        q[j] = static_cast<uint32_t>(qhat);
    }
    u.resize(n);
    Clean(u);
    DivideByLimb(u, scale);  // exact: undoes the scaling of the remainder
    Clean(q);
    quotient = std::move(q);
    remainder = std::move(u);
}

void CBigInteger::ShiftLeft(CDigitArray& a, unsigned int n) {
    Clean(a);
    if (a.empty() || n == 0) return;
    if (n % kLimbDigits != 0) Multiply(a, kPow10[n % kLimbDigits], a);
    size_t limbs = n / kLimbDigits;
    if (limbs == 0) return;
    size_t old = a.size();
    a.resize(old + limbs);
    uint32_t* d = a.data();
    std::memmove(d + limbs, d, old * sizeof(uint32_t));
    std::memset(d, 0, limbs * sizeof(uint32_t));
}

size_t CBigInteger::Position(const CDigitArray& a) {
    size_t n = Len(a);
    if (n == 0) return 0;
    return (n - 1) * kLimbDigits + DecimalWidth(a[n - 1]) - 1;
}

void CBigInteger::Clean(CDigitArray& a) {
    while (!a.empty() && a.back() == 0) a.pop_back();
}

void CBigInteger::Build(unsigned int value, CDigitArray& result) {
    BuildDWORDLONG(value, result);
}

void CBigInteger::BuildDWORDLONG(unsigned long long value, CDigitArray& result) {
    result.clear();
    while (value != 0) {
        result.push_back(static_cast<uint32_t>(value % kBase));
        value /= kBase;
    }
}

void CBigInteger::BuildDouble(double value, CDigitArray& result) {
    result.clear();
    if (!std::isfinite(value)) return;
    // Fixed notation with no fraction prints the exact integral value of a
    // whole double; the largest needs 309 digits.
    char text[400];
    auto printed = std::to_chars(text, text + sizeof text, std::trunc(std::fabs(value)),
                                 std::chars_format::fixed, 0);
    BuildFromChars(text, static_cast<size_t>(printed.ptr - text), result);
}

void CBigInteger::Build(const std::string& text, CDigitArray& result) {
    size_t end = text.size(), start = end;
    while (start > 0 && text[start - 1] >= '0' && text[start - 1] <= '9') --start;
    BuildFromChars(text.data() + start, end - start, result);
}

void CBigInteger::Pow10(unsigned int n, CDigitArray& result) {
    result.clear();
    result.resize(static_cast<size_t>(n / kLimbDigits) + 1);
    result[result.size() - 1] = kPow10[n % kLimbDigits];
}

// ---- private digit helpers --------------------------------------------------

bool CBigInteger::IsZero(const CDigitArray& a) {
    return Len(a) == 0;
}

void CBigInteger::BuildFromChars(const char* first, size_t count, CDigitArray& result) {
    while (count > 0 && *first == '0') {
        ++first;
        --count;
    }
    result.clear();
    result.resize((count + kLimbDigits - 1) / kLimbDigits);
    uint32_t* d = result.data();
    // Chunks of nine characters from the end; the first chunk may be short.
    size_t limb = 0;
    const char* end = first + count;
    while (end > first) {
        const char* start = end - std::min<size_t>(kLimbDigits, static_cast<size_t>(end - first));
        uint32_t value = 0;
        for (const char* c = start; c < end; ++c) value = value * 10 + static_cast<uint32_t>(*c - '0');
        d[limb++] = value;
        end = start;
    }
}

void CBigInteger::AppendMagnitude(std::string& out, const CDigitArray& a, size_t minWidth) {
    size_t n = Len(a);
    const uint32_t* d = a.data();
    unsigned topWidth = n == 0 ? 1 : DecimalWidth(d[n - 1]);
    size_t digits = (n == 0 ? 0 : (n - 1) * kLimbDigits) + topWidth;
    size_t pad = minWidth > digits ? minWidth - digits : 0;
    size_t at = out.size();
    out.resize(at + pad + digits);
    char* p = &out[at];
    std::memset(p, '0', pad);
    p += pad;
    uint32_t top = n == 0 ? 0 : d[n - 1];
    for (unsigned i = topWidth; i-- > 0;) {
        p[i] = static_cast<char>('0' + top % 10);
        top /= 10;
    }
    p += topWidth;
    for (size_t limb = n - (n == 0 ? 0 : 1); limb-- > 0;) {
        uint32_t value = d[limb];
        for (unsigned i = kLimbDigits; i-- > 0;) {
            p[i] = static_cast<char>('0' + value % 10);
            value /= 10;
        }
        p += kLimbDigits;
    }
}

void CBigInteger::SplitAt(const CDigitArray& a, size_t n, CDigitArray* high, CDigitArray* low) {
    const size_t len = Len(a);
    const size_t whole = n / kLimbDigits;
    const uint32_t part = kPow10[n % kLimbDigits];
    const uint32_t* d = a.data();
    CDigitArray lo, hi;
    if (low != nullptr) {
        size_t keep = std::min(whole, len);
        lo.resize(keep + 1);
        if (keep > 0) std::memcpy(lo.data(), d, keep * sizeof(uint32_t));
        lo[keep] = whole < len ? d[whole] % part : 0;
        Clean(lo);
    }
    if (high != nullptr && whole < len) {
        hi.resize(len - whole);
        uint32_t* h = hi.data();
        const uint32_t upper = kBase / part;  // weight of a carried-down part
        for (size_t i = whole; i < len; ++i) {
            uint32_t value = d[i] / part;
            if (i + 1 < len) value += (d[i + 1] % part) * upper;
            h[i - whole] = value;
        }
        Clean(hi);
    }
    if (low != nullptr) *low = std::move(lo);
    if (high != nullptr) *high = std::move(hi);
}

size_t CBigInteger::TrailingZeros(const CDigitArray& a) {
    size_t n = Len(a);
    if (n == 0) return 0;
    const uint32_t* d = a.data();
    size_t zeros = 0, i = 0;
    while (d[i] == 0) {
        zeros += kLimbDigits;
        ++i;
    }
    for (uint32_t value = d[i]; value % 10 == 0; value /= 10) ++zeros;
    return zeros;
}

}  // namespace KvXmlLib10
