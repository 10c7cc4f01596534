// Base64Test.cpp - base64 text of CBinaryData and the CBase64 codec.
#include <string>
#include <utility>

#include "kvxml/values/Base64.h"
#include "kvxml/values/BinaryData.h"
#include "support/KvTestSupport.h"

using KvXmlLib10::CBinaryData;

namespace {

std::string Encode(const std::string& bytes) {
    return CBase64().Encode(reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<int>(bytes.size()));
}

std::string Decoded(const std::string& text) {
    CBinaryData value;
    value.SetAsBase64(text.c_str());
    return std::string(reinterpret_cast<const char*>(value.GetData()), value.GetLength());
}

}  // namespace

TEST(Base64Encode, MatchesRfc4648VectorsAndPadsTheLastGroup) {
    const std::pair<const char*, const char*> vectors[] = {
        {"", ""},         {"f", "Zg=="},         {"fo", "Zm8="},         {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="}, {"fooba", "Zm9vYmE="}, {"foobar", "Zm9vYmFy"}, {"AB", "QUI="},
    };
    for (const auto& [plain, encoded] : vectors) {
        EXPECT_EQ(Encode(plain), encoded) << plain;
        EXPECT_EQ(CBinaryData(plain).GetAsBase64(), encoded) << plain;
        EXPECT_EQ(Decoded(encoded), plain) << encoded;
    }
    unsigned char ff = 0xFF;
    EXPECT_EQ(CBinaryData(&ff, 1, false).GetAsBase64(), "/w==");
    EXPECT_EQ(CBase64().Encode(&ff, -1), "");
    EXPECT_EQ(CBase64().Encode(nullptr, 3), "");
}

TEST(Base64RoundTrip, KeepsAllByteValuesInWholeGroupsWithoutLineBreaks) {
    std::string all;
    for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
    // Every length 0..256 exercises every tail shape; each byte also stands alone.
    for (size_t n = 0; n <= all.size(); ++n) {
        const std::string part = all.substr(all.size() - n), text = Encode(part);
        EXPECT_EQ(text.size(), (n + 2) / 3 * 4) << n;
        EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos);
        EXPECT_EQ(Decoded(text), part) << n;
        const std::string one(1, static_cast<char>(n));
        EXPECT_EQ(Decoded(Encode(one)), one) << n;
    }
}

TEST(Base64Decode, SkipsWhitespaceAndPaddingAnywhereAndDropsLeftoverBits) {
    const std::pair<const char*, const char*> cases[] = {
        {"QUJD", "ABC"},     {"QU JD\n", "ABC"},  {"\tQ\r\nU=J=D==", "ABC"}, {"Zm9v=YmFy", "foobar"}, {"====", ""},
        {"QUJDR", "ABC"},    {"QUJDRA", "ABCD"},  {"Q", ""},
        // A byte with the high bit set counts as the ASCII character below it.
        {"\xD1UJD", "ABC"},  {"QUI\xBD", "AB"},   {"QU\xA0JD", "ABC"},
    };
    for (const auto& [text, plain] : cases) EXPECT_EQ(Decoded(text), plain) << text;

    // A skipped character at every position of a long text, across the
    // switch between whole-group and one-by-one decoding.
    std::string plain;
    for (int i = 0; i < 100; ++i) plain += static_cast<char>(i * 37 + 11);
    const std::string text = Encode(plain);
    for (size_t at = 0; at <= text.size(); ++at)
        for (const char* skip : {" ", "\n", "=", " \t"}) EXPECT_EQ(Decoded(std::string(text).insert(at, skip)), plain);
}

TEST(Base64Decode, InvalidTextGivesEmptyValue) {
    EXPECT_EQ(Decoded("QU*D"), "");
    CBinaryData value("kept");
    value.SetAsBase64("QUJD-");
    EXPECT_EQ(value.GetLength(), 0u);
    EXPECT_EQ(value.GetData(), nullptr);

    CBase64 codec;
    unsigned char out[16];
    for (const char* bad : {"QUJD\x01", "QUJ.", "Q\x7F", "-_", "QUJD\x80"}) EXPECT_EQ(codec.Decode(bad, out), 0) << bad;
    EXPECT_EQ(codec.Decode(nullptr, out), 0);
    EXPECT_EQ(codec.Decode("", out), 0);
    // The codec is reusable after a refusal.
    EXPECT_EQ(codec.Decode("Zm9v", out), 3);
    EXPECT_EQ(codec.Decode("QUI", out), 2);
}
