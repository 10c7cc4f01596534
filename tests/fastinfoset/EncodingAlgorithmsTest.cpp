// EncodingAlgorithmsTest.cpp - text to algorithm octets and back.
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

std::string Octets(const CBinaryData& data) {
    return std::string(reinterpret_cast<const char*>(data.GetData()), data.GetLength());
}

CFastInfosetBinaryData FromOctets(const std::string& octets) {
    return CFastInfosetBinaryData(reinterpret_cast<unsigned char*>(const_cast<char*>(octets.data())),
                                  static_cast<uint32_t>(octets.size()), false);
}

struct EncodeCase { uint32_t algorithm; const char* text; std::string octets; };

struct DecodeCase { uint32_t algorithm; std::string octets; const char* text; };

}  // namespace

TEST(FastInfosetBinaryData, EncodesOneValuePerAlgorithm) {
    const EncodeCase cases[] = {
        {1, "CAFE", "\xCA\xFE"}, {2, "3q0=", "\xDE\xAD"}, {3, "-2", "\xFF\xFE"}, {4, "1", std::string("\0\0\0\1", 4)},
        {5, "1", std::string("\0\0\0\0\0\0\0\1", 8)}, {6, "true", "\x38"}, {6, "false", "\x30"},
        {7, "1.5", std::string("\x3F\xC0\0\0", 4)}, {8, "-0.25", std::string("\xBF\xD0\0\0\0\0\0\0", 8)},
        {9, "00112233445566778899AABBCCDDEEFF",
         std::string("\x00\x11\x22\x33\x44\x55\x66\x77\x88\x99\xAA\xBB\xCC\xDD\xEE\xFF", 16)},
        {10, "a<b", "a<b"},
    };
    for (const EncodeCase& c : cases) {
        CFastInfosetBinaryData data("stale");
        data.SetAsEncodedString(c.algorithm, c.text);
        EXPECT_EQ(Octets(data), c.octets) << c.algorithm << " " << c.text;
    }
    CFastInfosetBinaryData data;
    EXPECT_KV_THROW(data.SetAsEncodedString(11, "1"), CKvException, "Unknown byte encoding.");
    EXPECT_KV_THROW(data.SetAsEncodedString(0, "1"), CKvException, "Unknown byte encoding.");
    EXPECT_KV_THROW(data.SetAsEncodedString(4, "1 2"), CKvInvalidValueException,
                    "The value [1 2] can not be converted to a i4");  // one value only
}

TEST(FastInfosetBinaryData, DecodesItemsJoinedBySpaces) {
    const DecodeCase cases[] = {
        {1, "\xCA\xFE", "CAFE"}, {2, "\xDE\xAD", "3q0="}, {3, "\xFF\xFF\x01\x02", "-1 258"},
        {4, std::string("\0\0\0\1\0\0\0\2", 8), "1 2"},
        {4, std::string("\0\0\0\1\xFF\xFF\xFF\xFE\0\0\1\x2C", 12), "1 -2 300"},
        {5, std::string("\0\0\0\0\0\0\0\1", 8), "1"}, {6, "\x38", "true"}, {6, "\x1A", "true false true"},
        {6, "\x3C\xB8", "true true false false true false true true true"},
        {6, "\x7F\xFF\x80", "true true true true true true true true true true true true true"},  // seven unused bits
        {7, std::string("\x3F\xC0\0\0", 4), "1.5"}, {8, std::string("\xBF\xD0\0\0\0\0\0\0", 8), "-0.25"},
        {9, std::string(16, '\x01') + std::string(16, '\xAB'),
         "01010101010101010101010101010101 ABABABABABABABABABABABABABABABAB"},
        {10, "a<b", "a<b"}, {4, "", ""},
    };
    for (const DecodeCase& c : cases) EXPECT_EQ(FromOctets(c.octets).GetAsString(c.algorithm), c.text) << c.algorithm;
}

TEST(FastInfosetBinaryData, RefusesDataOfTheWrongSize) {
    const struct { uint32_t algorithm; std::string octets; const char* message; } cases[] = {
        {3, "abc", "Invalid value for SHORT byte encoding."}, {4, "abcde", "Invalid value for INT byte encoding."},
        {5, "abcd", "Invalid value for LONG byte encoding."}, {7, "ab", "Invalid value for FLOAT byte encoding."},
        {8, "abcdefghi", "Invalid value for DOUBLE byte encoding."},
        {9, "abcdefgh", "Invalid value for UUID byte encoding."}, {6, "", "Invalid value for BOOLEAN byte encoding."},
        {6, "\x80", "Invalid value for BOOLEAN byte encoding."},  // more unused bits than an octet holds
        {6, "\x50", "Invalid value for BOOLEAN byte encoding."},  // five unused of four
        {0, "a", "Unknown byte encoding."}, {11, "a", "Unknown byte encoding."},
    };
    for (const auto& c : cases) EXPECT_KV_THROW(FromOctets(c.octets).GetAsString(c.algorithm), CKvException, c.message);
}
