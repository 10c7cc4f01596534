// HexTest.cpp - hexadecimal text of CBinaryData.
#include <memory>
#include <string>
#include <utility>

#include "kvxml/values/BinaryData.h"
#include "support/KvTestSupport.h"

using KvXmlLib10::CBinaryData;
using KvXmlLib10::CKvException;

TEST(HexParse, AcceptsBothCasesAndPrintsUpperCase) {
    CBinaryData value;
    value.SetAsHexString("0aFf");
    ASSERT_EQ(value.GetLength(), 2u);
    EXPECT_EQ(value[0], 0x0A);
    EXPECT_EQ(value[1], 0xFF);
    EXPECT_EQ(value.GetAsHexString(), "0AFF");
    value.SetAsHexString("0123456789abcdefABCDEF");
    EXPECT_EQ(value.GetAsHexString(), "0123456789ABCDEFABCDEF");
    value.SetAsHexString("");
    EXPECT_EQ(value.GetLength(), 0u);
    EXPECT_EQ(value.GetAsHexString(), "");
}

TEST(HexParse, RejectsOddLengthThenBadCharactersAndKeepsTheValue) {
    const std::pair<const char*, const char*> cases[] = {
        // Length is judged before characters.
        {"ABC", "Invalid length in hex string"},     {"G", "Invalid length in hex string"},
        {"ab\ncd", "Invalid length in hex string"},  {"0G", "Invalid char in hex string [G]"},
        {"G0", "Invalid char in hex string [G]"},    {"00 1", "Invalid char in hex string [ ]"},
        {"0x1F", "Invalid char in hex string [x]"},  {"ab\n\ncd", "Invalid char in hex string [\n]"},
        {"CAFEZZ", "Invalid char in hex string [Z]"},
    };
    CBinaryData value;
    value.SetAsHexString("CAFE");
    for (const auto& [text, message] : cases) EXPECT_KV_THROW(value.SetAsHexString(text), CKvException, message);
    EXPECT_EQ(value.GetAsHexString(), "CAFE");
}

TEST(HexRoundTrip, KeepsAllByteValues) {
    unsigned char all[256];
    for (int c = 0; c < 256; ++c) all[c] = static_cast<unsigned char>(c);
    const std::string text = CBinaryData::GetAsHexString(all, 256);
    ASSERT_EQ(text.size(), 512u);
    EXPECT_EQ(text.substr(0, 6), "000102");
    EXPECT_EQ(text.substr(0x7F * 2, 4), "7F80");
    EXPECT_EQ(text.substr(510), "FF");
    CBinaryData value;
    value.SetAsHexString(text.c_str());
    EXPECT_EQ(value, CBinaryData(all, 256, false));
    EXPECT_EQ(CBinaryData::GetAsHexString(nullptr, 5), "");
}

TEST(HexConvert, ReturnsNewArrayAndLength) {
    unsigned char* out = reinterpret_cast<unsigned char*>(1);
    EXPECT_EQ(CBinaryData::ConvertToHexData("", &out), 0u);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(CBinaryData::ConvertToHexData(nullptr, &out), 0u);
    ASSERT_EQ(CBinaryData::ConvertToHexData("00ff7A", &out), 3u);
    std::unique_ptr<unsigned char[]> owned(out);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(out), 3), std::string("\x00\xFF\x7A", 3));
}
