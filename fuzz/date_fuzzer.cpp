// date_fuzzer.cpp - fuzzes CDateTime::ParseXSDDate: every date form (date, gYear, gYearMonth, gMonth, gMonthDay, gDay) with zones.
#include "DateTimeFuzzCommon.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    kvxml_fuzz::RoundTripDate(data, size, kvxml_fuzz::DateParser::Date);
    return 0;
}
