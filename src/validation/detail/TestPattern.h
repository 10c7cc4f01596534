// TestPattern.h - TestRegEx without the copies of its by-value arguments.
#pragma once

#include <string>

namespace KvXmlLib10 {
namespace detail {

/// What TestRegEx(pattern, value) answers (and throws), for callers that
/// hold both strings already.
bool TestPattern(const std::string& pattern, const std::string& value);

}  // namespace detail
}  // namespace KvXmlLib10
