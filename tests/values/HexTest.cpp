// HexTest.cpp - hexadecimal text of CBinaryData.
#include <memory>
#include <string>

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

TEST(HexParse, RejectsOddLength) {
    CBinaryData value;
    EXPECT_KV_THROW(value.SetAsHexString("ABC"), CKvException, "Invalid length in hex string");
    // Length is judged before characters.
    EXPECT_KV_THROW(value.SetAsHexString("G"), CKvException, "Invalid length in hex string");
}

TEST(HexParse, RejectsNonHexCharacters) {
    CBinaryData value;
    EXPECT_KV_THROW(value.SetAsHexString("0G"), CKvException, "Invalid char in hex string [G]");
    EXPECT_KV_THROW(value.SetAsHexString("G0"), CKvException, "Invalid char in hex string [G]");
    EXPECT_KV_THROW(value.SetAsHexString("00 1"), CKvException, "Invalid char in hex string [ ]");
    EXPECT_KV_THROW(value.SetAsHexString("0x1F"), CKvException, "Invalid char in hex string [x]");
    EXPECT_KV_THROW(value.SetAsHexString("ab\ncd"), CKvException, "Invalid length in hex string");
    EXPECT_KV_THROW(value.SetAsHexString("ab\n\ncd"), CKvException, "Invalid char in hex string [\n]");
}

TEST(HexParse, FailureKeepsPreviousValue) {
    CBinaryData value;
    value.SetAsHexString("CAFE");
    EXPECT_THROW(value.SetAsHexString("CAFEZZ"), CKvException);
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
}

TEST(HexConvert, ReturnsNewArrayAndLength) {
    unsigned char* out = reinterpret_cast<unsigned char*>(1);
    EXPECT_EQ(CBinaryData::ConvertToHexData("", &out), 0u);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(CBinaryData::ConvertToHexData(nullptr, &out), 0u);

    ASSERT_EQ(CBinaryData::ConvertToHexData("00ff7A", &out), 3u);
    std::unique_ptr<unsigned char[]> owned(out);
    EXPECT_EQ(out[0], 0x00);
    EXPECT_EQ(out[1], 0xFF);
    EXPECT_EQ(out[2], 0x7A);

    EXPECT_EQ(CBinaryData::GetAsHexString(nullptr, 5), "");
}
