// PrimitiveRestrictions.h - CPrimitiveRestrictions: the XML Schema facets of one primitive value.
//
// Generated code and descriptors build one per restricted element, attribute
// or collection item; CXmlObjectHelper::CheckRestriction tests values against it.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

/// A set of facets. Bounds are kept as text in the type's lexical form and
/// parsed again on every check. Unset markers: empty string, -1 for lengths.
/// The whitespace facet travels beside this set, not in it.
class KVXML_API CPrimitiveRestrictions {
public:
    /// All facets unset.
    CPrimitiveRestrictions();
    /// Every field in declaration order; a null string means unset (empty).
    CPrimitiveRestrictions(const char* pattern, int32_t minLength, int32_t maxLength, const char* minInclusive,
                           const char* maxInclusive, const char* minExclusive, const char* maxExclusive,
                           int32_t length);
    CPrimitiveRestrictions(const CPrimitiveRestrictions&) = default;
    CPrimitiveRestrictions(CPrimitiveRestrictions&&) = default;
    CPrimitiveRestrictions& operator=(const CPrimitiveRestrictions&) = default;
    CPrimitiveRestrictions& operator=(CPrimitiveRestrictions&&) = default;
    virtual ~CPrimitiveRestrictions();

    std::string pattern;       ///< XML Schema pattern; empty = no pattern facet
    int32_t minLength = -1;    ///< -1 = unset
    int32_t maxLength = -1;    ///< -1 = unset
    std::string minInclusive;  ///< empty = unset
    std::string maxInclusive;  ///< empty = unset
    std::string minExclusive;  ///< empty = unset
    std::string maxExclusive;  ///< empty = unset
    int32_t length = -1;       ///< -1 = unset
};

}  // namespace KvXmlLib10
