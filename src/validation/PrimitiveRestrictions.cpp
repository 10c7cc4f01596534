// PrimitiveRestrictions.cpp - construction of facet sets.
#include "kvxml/validation/PrimitiveRestrictions.h"

#include "foundation/detail/OrEmpty.h"

namespace KvXmlLib10 {

CPrimitiveRestrictions::CPrimitiveRestrictions() = default;

CPrimitiveRestrictions::CPrimitiveRestrictions(const char* pattern_, int32_t minLength_, int32_t maxLength_,
                                               const char* minInclusive_, const char* maxInclusive_,
                                               const char* minExclusive_, const char* maxExclusive_, int32_t length_)
    : pattern(detail::OrEmpty(pattern_)),
      minLength(minLength_),
      maxLength(maxLength_),
      minInclusive(detail::OrEmpty(minInclusive_)),
      maxInclusive(detail::OrEmpty(maxInclusive_)),
      minExclusive(detail::OrEmpty(minExclusive_)),
      maxExclusive(detail::OrEmpty(maxExclusive_)),
      length(length_) {}

// Out of line so the vtable and typeinfo have one home in the library.
CPrimitiveRestrictions::~CPrimitiveRestrictions() = default;

}  // namespace KvXmlLib10
