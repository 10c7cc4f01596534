// StringUtils.h - small string helpers shared by the conversions and the date code.
#pragma once

#include <string>

#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

/// Prints value zero-padded to at least width digits, as printf "%0<width>d"
/// would (a negative value keeps its "-" inside the width: PadZero(-5, 3) is "-05").
KVXML_API std::string PadZero(int value, unsigned char width);

/// Drops trailing '0' characters but never the first character:
/// "120" gives "12", "000" gives "0", "" stays "".
KVXML_API std::string TrimTrainingZeros(std::string text);

/// Upper-cases a NUL-terminated string in place ("C" locale rules for bytes
/// above 0x7F: left as they are); returns its argument, null included.
KVXML_API char* strupr(char* text);

/// Replaces every occurrence of find by with, searching again from the start
/// after each replacement. A with that contains find never terminates, so
/// callers must not pass such a pair; an empty find leaves s unchanged.
KVXML_API void FindReplace(std::string& s, const std::string& find, const std::string& with);
KVXML_API void FindReplace(std::wstring& s, const std::wstring& find, const std::wstring& with);

}  // namespace KvXmlLib10
