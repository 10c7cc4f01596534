// NestingGuard.h - counts how deeply generated classes nest on this thread while they are read or written.
#pragma once

#include <cstdint>

namespace KvXmlLib10 {

class CXmlSerializationContext;

namespace detail {

/// One level of the walk. The depth is per thread because the walk's
/// signatures carry no state of their own; reading and writing share it, as
/// both recurse on the same stack.
class NestingGuard {
public:
    /// Throws CKvValidationException when this level would pass the
    /// context's maximum nesting depth.
    explicit NestingGuard(const CXmlSerializationContext& context);
    ~NestingGuard();
    NestingGuard(const NestingGuard&) = delete;
    NestingGuard& operator=(const NestingGuard&) = delete;
};

}  // namespace detail
}  // namespace KvXmlLib10
