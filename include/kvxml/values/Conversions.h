// Conversions.h - CConversions: the text forms of the primitive value types.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

/// Static conversions between values and their XML lexical forms.
class KVXML_API CConversions {
public:
    CConversions() = delete;

    /// Base-10 integer printers ("C" locale, no padding, "-" for negatives).
    static std::string i1ToString(int8_t value);
    static std::string i2ToString(int16_t value);
    static std::string i4ToString(int32_t value);
    static std::string i8ToString(int64_t value);
    static std::string ui1ToString(uint8_t value);
    static std::string ui2ToString(uint16_t value);
    static std::string ui4ToString(uint32_t value);
    static std::string ui8ToString(uint64_t value);
};

}  // namespace KvXmlLib10
