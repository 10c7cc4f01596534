// BuiltInTypes.h - the XML Schema built-in simple types as the runtime carries them.
#pragma once

#include <string>
#include <unordered_map>

#include "SchemaModel.h"

namespace kvxsd {

/// Item type, whitespace rule and the bounds a built-in implies
/// (positiveInteger: minInclusive 1); null bounds are unset.
struct BuiltIn {
    Item item;
    Whitespace whitespace;
    const char* minInclusive;
    const char* maxInclusive;
};

/// By local name in the XML Schema namespace ("int", "NMTOKENS"...).
const std::unordered_map<std::string, BuiltIn>& BuiltIns();

}  // namespace kvxsd
