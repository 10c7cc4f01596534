// EmitTypes.h - how each runtime item type is held, passed and carried in generated code.
#pragma once

#include <string>
#include <vector>

namespace kvxsd {

struct EmitValueType {
    const char* itemType;  ///< runtime ItemType enumerator name
    const char* cppType;   ///< member type in generated classes
    const char* variant;   ///< KvVariant Get<x>/Set<x> suffix
    const char* reset;     ///< value of a new object
    bool byReference;      ///< passed as const reference
    const char* header;    ///< extra header the member type needs, or null
};

/// The row of itemType; unknown names fall back to string (held as text).
const EmitValueType& ItemRow(const std::string& itemType);

/// A C++ string literal for text, escaped so any byte survives.
std::string Literal(const std::string& text);

/// A Makefile-syntax dependency line, "outputs: inputs", for build tools that
/// rerun the compiler when an included schema changes. Spaces in paths are escaped.
std::string DepfileText(const std::vector<std::string>& outputs, const std::vector<std::string>& inputs);

}  // namespace kvxsd
