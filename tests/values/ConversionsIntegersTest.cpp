// ConversionsIntegersTest.cpp - the eight integer printers of CConversions.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "kvxml/values/Conversions.h"

using namespace KvXmlLib10;

TEST(ConversionsIntegerToString, PrintsFullRangeInBaseTen) {
    EXPECT_EQ(CConversions::i1ToString(std::numeric_limits<int8_t>::min()), "-128");
    EXPECT_EQ(CConversions::i1ToString(127), "127");
    EXPECT_EQ(CConversions::i2ToString(std::numeric_limits<int16_t>::min()), "-32768");
    EXPECT_EQ(CConversions::i4ToString(std::numeric_limits<int32_t>::min()), "-2147483648");
    EXPECT_EQ(CConversions::i4ToString(0), "0");
    EXPECT_EQ(CConversions::i8ToString(std::numeric_limits<int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(CConversions::i8ToString(std::numeric_limits<int64_t>::max()), "9223372036854775807");
    EXPECT_EQ(CConversions::ui1ToString(255), "255");
    EXPECT_EQ(CConversions::ui2ToString(65535), "65535");
    EXPECT_EQ(CConversions::ui4ToString(4294967295u), "4294967295");
    EXPECT_EQ(CConversions::ui8ToString(std::numeric_limits<uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(CConversions::ui8ToString(0), "0");
}
