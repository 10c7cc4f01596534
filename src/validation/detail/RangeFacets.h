// RangeFacets.h - the four range facets of ordered types, tried in their fixed order.
//
// Each facet is written as the condition a value must meet, not the one that
// breaks it, so a value that cannot be ordered against the bound (a NaN, an
// incomparable date or duration) fails whichever facet it meets.
#pragma once

#include <string>

#include "kvxml/validation/PrimitiveRestrictions.h"

namespace KvXmlLib10 {
namespace detail {

enum class Ordering { Less, Equal, Greater, Incomparable };

// For types whose operators give a total order (a NaN answers false to all).
template <typename T>
Ordering OrderOf(const T& value, const T& bound) {
    if (value < bound) return Ordering::Less;
    if (bound < value) return Ordering::Greater;
    if (value == bound) return Ordering::Equal;
    return Ordering::Incomparable;
}

// The 0 equal / 1 less / 2 greater / 3 incomparable codes of CompareTo.
inline Ordering OrderFromCompareTo(int code) {
    switch (code) {
        case 0: return Ordering::Equal;
        case 1: return Ordering::Less;
        case 2: return Ordering::Greater;
        default: return Ordering::Incomparable;
    }
}

// True when the value meets minInclusive, maxInclusive, minExclusive and
// maxExclusive (each only when set). A bound is parsed only when its facet is
// reached, so after the first failing facet no later bound is read. parse
// takes the bound text and throws the conversion's exception; order compares
// the value with a parsed bound.
template <typename T, typename Parse, typename Order>
bool RangeFacetsHold(const T& value, const CPrimitiveRestrictions& r, Parse parse, Order order) {
    auto meets = [&](const std::string& text, bool allowLess, bool allowEqual, bool allowGreater) {
        if (text.empty()) return true;
        switch (order(value, parse(text))) {
            case Ordering::Less: return allowLess;
            case Ordering::Equal: return allowEqual;
            case Ordering::Greater: return allowGreater;
            case Ordering::Incomparable: break;
        }
        return false;
    };
    return meets(r.minInclusive, false, true, true) && meets(r.maxInclusive, true, true, false) &&
           meets(r.minExclusive, false, false, true) && meets(r.maxExclusive, true, false, false);
}

}  // namespace detail
}  // namespace KvXmlLib10
