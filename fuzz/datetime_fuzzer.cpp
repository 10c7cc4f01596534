// datetime_fuzzer.cpp - fuzzes CDateTime::ParseXSDDateTime: full dateTime texts.
#include "DateTimeFuzzCommon.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    kvxml_fuzz::RoundTripDate(data, size, kvxml_fuzz::DateParser::DateTime);
    return 0;
}
