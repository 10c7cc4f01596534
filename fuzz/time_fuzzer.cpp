// time_fuzzer.cpp - fuzzes CDateTime::ParseXSDTime: times with fractions and zones.
#include "DateTimeFuzzCommon.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    kvxml_fuzz::RoundTripDate(data, size, kvxml_fuzz::DateParser::Time);
    return 0;
}
