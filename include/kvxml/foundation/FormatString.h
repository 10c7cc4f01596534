// FormatString.h - printf-style formatting into a std::string.
#pragma once

#include <cstdarg>
#include <string>

#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

/// Formats like vsnprintf, never truncated. The "I64" size prefix marks a
/// 64-bit integer; "%n" prints its (integer) argument instead of storing
/// through it.
/// (No printf format attribute: those two extensions would trip it.)
KVXML_API std::string FormatString(const char* format, ...);
KVXML_API std::string FormatV(const char* format, va_list args);

}  // namespace KvXmlLib10
