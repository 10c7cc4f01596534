// ConversionsIntegers.cpp - CConversions printers for the eight integer types.
#include <charconv>

#include "kvxml/values/Conversions.h"

namespace KvXmlLib10 {

namespace {

// to_chars gives exactly the printf "%d"/"%u" digits, independent of locale.
template <typename Integer>
std::string PrintInteger(Integer value) {
    char buffer[24];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

}  // namespace

std::string CConversions::i1ToString(int8_t value) { return PrintInteger(static_cast<int>(value)); }
std::string CConversions::i2ToString(int16_t value) { return PrintInteger(static_cast<int>(value)); }
std::string CConversions::i4ToString(int32_t value) { return PrintInteger(value); }
std::string CConversions::i8ToString(int64_t value) { return PrintInteger(value); }
std::string CConversions::ui1ToString(uint8_t value) { return PrintInteger(static_cast<unsigned>(value)); }
std::string CConversions::ui2ToString(uint16_t value) { return PrintInteger(static_cast<unsigned>(value)); }
std::string CConversions::ui4ToString(uint32_t value) { return PrintInteger(value); }
std::string CConversions::ui8ToString(uint64_t value) { return PrintInteger(value); }

}  // namespace KvXmlLib10
