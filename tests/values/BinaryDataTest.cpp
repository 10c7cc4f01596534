// BinaryDataTest.cpp - CBinaryData: sharing, copy-on-write, appends, indexing, and its hex and base64 text.
#include <thread>

#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

std::string Bytes(const unsigned char* data, uint32_t length) {
    return std::string(reinterpret_cast<const char*>(data), length);
}

std::string Bytes(const CBinaryData& value) { return Bytes(value.GetData(), value.GetLength()); }

const unsigned char* U(const char* text) { return reinterpret_cast<const unsigned char*>(text); }

std::string Encode(const std::string& bytes) { return CBase64().Encode(U(bytes.c_str()), static_cast<int>(bytes.size())); }

std::string Decoded(const std::string& text) {
    CBinaryData value;
    value.SetAsBase64(text.c_str());
    return Bytes(value);
}

}  // namespace

TEST(BinaryDataConstruct, CopiesOrAdoptsBytesAndComparesThem) {
    EXPECT_EQ(CBinaryData().GetData(), nullptr);
    EXPECT_EQ(CBinaryData(static_cast<const char*>(nullptr)).GetLength(), 0u);
    EXPECT_EQ(CBinaryData("").GetData(), nullptr);
    unsigned char source[] = {1, 2, 3};
    CBinaryData copied(source, 3, false);
    source[0] = 9;
    EXPECT_EQ(copied[0], 1);
    auto* adopted = new unsigned char[2]{7, 8};
    CBinaryData owner(adopted, 2, true);
    EXPECT_EQ(owner.GetData(), adopted);
    EXPECT_EQ(owner.GetLength(), 2u);
    // A zero-length adopted array is freed at once (ASan reports a leak otherwise).
    EXPECT_EQ(CBinaryData(new unsigned char[4], 0, true).GetData(), nullptr);
    EXPECT_KV_THROW(CBinaryData(nullptr, 3, false), CKvException, "Binary data pointer is NULL");
    EXPECT_TRUE(CBinaryData("abc") == CBinaryData("abc") && CBinaryData() == CBinaryData(""));
    EXPECT_TRUE(CBinaryData("abc") != CBinaryData("abd") && CBinaryData("abc") != CBinaryData("ab"));
}

TEST(BinaryDataCopy, SharesUntilFirstWriteOrRelease) {
    CBinaryData original("hello"), copy(original), assigned;
    assigned = original;
    EXPECT_EQ(copy.GetData(), original.GetData());
    EXPECT_EQ(assigned.GetData(), original.GetData());
    copy[0] = 'j';
    assigned.Append("!");
    EXPECT_EQ(Bytes(original), "hello");
    EXPECT_EQ(Bytes(copy), "jello");
    EXPECT_EQ(Bytes(assigned), "hello!");
    // A value that is not shared is written in place.
    const unsigned char* before = copy.GetData();
    copy[1] = 'a';
    EXPECT_EQ(copy.GetData(), before);
    CBinaryData& alias = copy;
    copy = alias;
    EXPECT_EQ(Bytes(copy), "jallo");
    // Clear and ReleaseData leave the other copies alone.
    CBinaryData again(original);
    original.Clear();
    EXPECT_EQ(original.GetLength(), 0u);
    CBinaryData third(again);
    again.ReleaseData();
    EXPECT_EQ(again.GetData(), nullptr);
    EXPECT_EQ(Bytes(third), "hello");
    third.SetBuffer("new");
    EXPECT_EQ(Bytes(third), "new");
    third.SetBuffer(nullptr, 0);
    EXPECT_EQ(third.GetLength(), 0u);
    copy = original;  // an empty value replaces the bytes, which are released
    EXPECT_EQ(copy.GetLength(), 0u);
}

TEST(BinaryDataIndex, ThrowsPastTheEnd) {
    CBinaryData value("abc");
    const CBinaryData& constValue = value;
    EXPECT_EQ(constValue[2], 'c');
    EXPECT_KV_THROW(value[3], CKvException, "Index Out of range [3]");
    EXPECT_KV_THROW(constValue[100], CKvException, "Index Out of range [100]");
    CBinaryData empty;
    EXPECT_KV_THROW(empty[0], CKvException, "Index Out of range [0]");
}

TEST(BinaryDataAppend, AddsEveryKindOfInput) {
    CBinaryData value;
    value.Append(U("ab"), 2);
    value.Append("cd");
    value.Append(std::string("e\0f", 3));
    value.Append('g');
    value.Append(static_cast<unsigned char>(0xFF));
    value.Append(CBinaryData("hi"));
    value.Append(CBinaryData());
    value.Append(static_cast<const char*>(nullptr));
    value.Append(nullptr, 0);
    EXPECT_EQ(Bytes(value), std::string("abcde\0fg\xFFhi", 11));
    EXPECT_KV_THROW(value.Append(nullptr, 1), CKvException, "Binary data pointer is NULL");
}

TEST(BinaryDataAppend, AcceptsItsOwnBytes) {
    CBinaryData value("abcd");
    value.Append(value);
    CBinaryData shared(value);
    value.Append(value);
    EXPECT_EQ(Bytes(value), "abcdabcdabcdabcd");
    EXPECT_EQ(Bytes(shared), "abcdabcd");
    // An adopted buffer has no spare room, so this append reallocates while
    // reading from the old array.
    CBinaryData tight(new unsigned char[4]{'w', 'x', 'y', 'z'}, 4, true);
    tight.Append(tight.GetData() + 1, 3);
    EXPECT_EQ(Bytes(tight), "wxyzxyz");
    value.SetBuffer(value.GetData() + 12, 4);
    EXPECT_EQ(Bytes(value), "abcd");
}

TEST(BinaryDataAppend, GrowsGeometricallyUpToFourGigabytes) {
    CBinaryData value("x");
    const unsigned char* last = value.GetData();
    int moves = 0;
    for (int i = 0; i < 200000; ++i) {
        value.Append('y');
        moves += value.GetData() != last;
        last = value.GetData();
    }
    EXPECT_EQ(value.GetLength(), 200001u);
    EXPECT_LE(moves, 6);
    // The holder claims 4 GB - 1 but owns one byte: the refusal must come
    // before anything is read or copied.
    CBinaryData huge(new unsigned char[1]{0}, UINT32_MAX, true);
    EXPECT_KV_THROW(huge.Append('x'), CKvException, "Binary data would exceed 4294967295 bytes");
    EXPECT_EQ(huge.GetLength(), UINT32_MAX);
}

TEST(BinaryDataHolder, AppendNeedsSoleOwnership) {
    auto* holder = new CBinaryData::CDataHolder(const_cast<unsigned char*>(U("ab")), 2, false);
    holder->AddRef();
    EXPECT_KV_THROW(holder->Append(U("c"), 1), CKvException, "Failed to append. [RefCount=2]");
    holder->Release(true);
    holder->Append(U("c"), 1);
    EXPECT_EQ(Bytes(holder->GetData(), holder->GetLength()), "abc");
    holder->Release(true);
}

TEST(BinaryDataThreads, SharedValueSurvivesConcurrentCopies) {
    const CBinaryData shared("the shared bytes");
    std::atomic<int> mismatches{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < 6; ++t) {
        threads.emplace_back([&shared, &mismatches, t] {
            for (int i = 0; i < 3000; ++i) {
                CBinaryData copy(shared), other;
                other = copy;
                if ((i + t) % 3 == 0) {
                    other[0] = 'T';  // private copy; nobody else may see it
                    other.Append('!');
                    if (other.GetLength() != 17 || other[0] != 'T') ++mismatches;
                }
                if (copy != shared || copy[4] != 's') ++mismatches;
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(mismatches.load(), 0);
    EXPECT_EQ(Bytes(shared), "the shared bytes");
}

TEST(HexText, ParsesBothCasesPrintsUpperCaseAndRejectsOddLengthBeforeBadCharacters) {
    unsigned char all[256];
    std::string printed;
    for (int c = 0; c < 256; ++c) {
        all[c] = static_cast<unsigned char>(c);
        printed += "0123456789ABCDEF"[c >> 4];
        printed += "0123456789ABCDEF"[c & 15];
    }
    EXPECT_EQ(CBinaryData::GetAsHexString(all, 256), printed);
    EXPECT_EQ(CBinaryData::GetAsHexString(nullptr, 5), "");
    CBinaryData value;
    for (const auto& [text, shown] : {std::pair<std::string, std::string>{"0aFf", "0AFF"}, {"", ""},
                                      {"0123456789abcdefABCDEF", "0123456789ABCDEFABCDEF"}, {printed, printed}}) {
        value.SetAsHexString(text.c_str());
        EXPECT_EQ(value.GetAsHexString(), shown);
    }
    EXPECT_EQ(value, CBinaryData(all, 256, false));
    const std::pair<const char*, const char*> bad[] = {
        {"ABC", "Invalid length in hex string"},     {"G", "Invalid length in hex string"},
        {"ab\ncd", "Invalid length in hex string"},  {"0G", "Invalid char in hex string [G]"},
        {"G0", "Invalid char in hex string [G]"},    {"00 1", "Invalid char in hex string [ ]"},
        {"0x1F", "Invalid char in hex string [x]"},  {"ab\n\ncd", "Invalid char in hex string [\n]"},
        {"CAFEZZ", "Invalid char in hex string [Z]"},
    };
    value.SetAsHexString("CAFE");
    for (const auto& [text, message] : bad) EXPECT_KV_THROW(value.SetAsHexString(text), CKvException, message);
    EXPECT_EQ(value.GetAsHexString(), "CAFE");  // a refused text keeps the value

    unsigned char* out = reinterpret_cast<unsigned char*>(1);
    EXPECT_EQ(CBinaryData::ConvertToHexData("", &out), 0u);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(CBinaryData::ConvertToHexData(nullptr, &out), 0u);
    ASSERT_EQ(CBinaryData::ConvertToHexData("00ff7A", &out), 3u);
    std::unique_ptr<unsigned char[]> owned(out);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(out), 3), std::string("\x00\xFF\x7A", 3));
}

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
