// Base64Test.cpp - base64 text of CBinaryData and the CBase64 codec.
#include <string>
#include <vector>

#include "kvxml/values/Base64.h"
#include "kvxml/values/BinaryData.h"
#include "support/KvTestSupport.h"

using KvXmlLib10::CBinaryData;

namespace {

std::string Bytes(const CBinaryData& value) {
    return std::string(reinterpret_cast<const char*>(value.GetData()), value.GetLength());
}

std::string Encode(const std::string& bytes) {
    CBase64 codec;
    return codec.Encode(reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<int>(bytes.size()));
}

std::string Decoded(const char* text) {
    CBinaryData value;
    value.SetAsBase64(text);
    return Bytes(value);
}

}  // namespace

TEST(Base64Encode, MatchesRfc4648Vectors) {
    // RFC 4648, section 10.
    const std::pair<const char*, const char*> vectors[] = {
        {"", ""},         {"f", "Zg=="},         {"fo", "Zm8="},         {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="}, {"fooba", "Zm9vYmE="}, {"foobar", "Zm9vYmFy"},
    };
    for (const auto& [plain, encoded] : vectors) {
        EXPECT_EQ(Encode(plain), encoded) << plain;
        EXPECT_EQ(CBinaryData(plain).GetAsBase64(), encoded) << plain;
        EXPECT_EQ(Decoded(encoded), plain) << encoded;
    }
}

TEST(Base64Encode, PadsShortLastGroup) {
    EXPECT_EQ(CBinaryData("AB").GetAsBase64(), "QUI=");
    unsigned char ff = 0xFF;
    EXPECT_EQ(CBinaryData(&ff, 1, false).GetAsBase64(), "/w==");
    EXPECT_EQ(CBinaryData().GetAsBase64(), "");
    CBase64 codec;
    EXPECT_EQ(codec.Encode(&ff, -1), "");
    EXPECT_EQ(codec.Encode(nullptr, 3), "");
}

TEST(Base64Encode, LengthIsWholeGroupsWithoutLineBreaks) {
    std::string input;
    for (size_t n = 0; n < 200; ++n) {
        const std::string text = Encode(input);
        EXPECT_EQ(text.size(), (n + 2) / 3 * 4) << n;
        EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos);
        input += static_cast<char>(n * 7);
    }
}

TEST(Base64RoundTrip, KeepsAllByteValues) {
    std::string all;
    for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
    // Every length 0..256 exercises every tail shape with every byte value.
    for (size_t n = 0; n <= all.size(); ++n) {
        const std::string part = all.substr(all.size() - n);
        EXPECT_EQ(Decoded(Encode(part).c_str()), part) << n;
    }
    // Each single byte on its own.
    for (int c = 0; c < 256; ++c) {
        const std::string one(1, static_cast<char>(c));
        EXPECT_EQ(Decoded(Encode(one).c_str()), one) << c;
    }
}

TEST(Base64Decode, SkipsWhitespaceAndPaddingAnywhere) {
    EXPECT_EQ(Decoded("QUJD"), "ABC");
    EXPECT_EQ(Decoded("QU JD\n"), "ABC");
    EXPECT_EQ(Decoded("\tQ\r\nU=J=D=="), "ABC");
    EXPECT_EQ(Decoded("Zm9v=YmFy"), "foobar");
    EXPECT_EQ(Decoded("===="), "");

    // A skipped character at every position of a long text, across the
    // switch between whole-group and one-by-one decoding.
    std::string plain;
    for (int i = 0; i < 100; ++i) plain += static_cast<char>(i * 37 + 11);
    const std::string text = Encode(plain);
    for (size_t at = 0; at <= text.size(); ++at) {
        for (const char* skip : {" ", "\n", "=", " \t"}) {
            std::string spaced = text;
            spaced.insert(at, skip);
            EXPECT_EQ(Decoded(spaced.c_str()), plain) << at;
        }
    }
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
    // The codec is reusable after a refusal.
    EXPECT_EQ(codec.Decode("Zm9v", out), 3);
}

TEST(Base64Decode, HighBitBytesCountAsAsciiBelow) {
    // 0xD1 = 'Q' | 0x80, 0xBD = '=' | 0x80, 0xA0 = ' ' | 0x80.
    EXPECT_EQ(Decoded("\xD1UJD"), "ABC");
    EXPECT_EQ(Decoded("QUI\xBD"), "AB");
    EXPECT_EQ(Decoded("QU\xA0JD"), "ABC");
}

TEST(Base64Decode, DropsLeftoverBits) {
    EXPECT_EQ(Decoded("QUJDR"), "ABC");
    EXPECT_EQ(Decoded("QUJDRA"), "ABCD");
    EXPECT_EQ(Decoded("Q"), "");
    CBase64 codec;
    unsigned char out[8];
    EXPECT_EQ(codec.Decode("QUI", out), 2);
    EXPECT_EQ(codec.Decode("", out), 0);
}
