// NestingGuard.cpp - the per-thread nesting depth of the generated-class walk.
#include "core/detail/NestingGuard.h"

#include "kvxml/core/SerializationContext.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"

namespace KvXmlLib10 {
namespace detail {

namespace {
thread_local int32_t t_depth = 0;
}  // namespace

NestingGuard::NestingGuard(const CXmlSerializationContext& context) {
    const int32_t limit = context.GetMaxNestingDepth();
    if (t_depth >= limit)
        throw CKvValidationException(
            FormatString("The elements are nested deeper than the limit of %d levels", static_cast<int>(limit)));
    ++t_depth;
}

NestingGuard::~NestingGuard() {
    --t_depth;
}

}  // namespace detail
}  // namespace KvXmlLib10
