// RegEx.h - TestRegEx: whole-value matching of XML Schema patterns.
#pragma once

#include <string>

#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

/// True when the whole value matches the XML Schema pattern. The value is
/// local code page text (converted to UTF-8, cut at its first NUL); \i, \I,
/// \c, \C and the Latin block escapes are rewritten, everything else is
/// PCRE2 syntax. The pattern is compiled on every call (no cache). A value
/// that is not valid UTF-8, or a match that runs into the backtracking
/// limits, does not match; the limits grow with the value's length, so
/// values of many megabytes still match patterns such as \c* or (a|b)*.
/// Throws CKvException "Invalid Regular Expression: <value> Error: '<reason>'"
/// when the pattern does not compile.
KVXML_API bool TestRegEx(std::string pattern, std::string value);

}  // namespace KvXmlLib10
