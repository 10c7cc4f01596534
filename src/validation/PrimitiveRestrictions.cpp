// PrimitiveRestrictions.cpp - construction of facet sets.
#include "kvxml/validation/PrimitiveRestrictions.h"

namespace KvXmlLib10 {

namespace {
std::string OrEmpty(const char* text) { return text != nullptr ? std::string(text) : std::string(); }
}  // namespace

CPrimitiveRestrictions::CPrimitiveRestrictions() = default;

CPrimitiveRestrictions::CPrimitiveRestrictions(const char* pattern_, int32_t minLength_, int32_t maxLength_,
                                               const char* minInclusive_, const char* maxInclusive_,
                                               const char* minExclusive_, const char* maxExclusive_, int32_t length_)
    : pattern(OrEmpty(pattern_)),
      minLength(minLength_),
      maxLength(maxLength_),
      minInclusive(OrEmpty(minInclusive_)),
      maxInclusive(OrEmpty(maxInclusive_)),
      minExclusive(OrEmpty(minExclusive_)),
      maxExclusive(OrEmpty(maxExclusive_)),
      length(length_) {}

// Out of line so the vtable and typeinfo have one home in the library.
CPrimitiveRestrictions::~CPrimitiveRestrictions() = default;

}  // namespace KvXmlLib10
