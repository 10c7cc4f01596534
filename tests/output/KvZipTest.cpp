// KvZipTest.cpp - gzip/zlib compression and the pass-through rules of Decompress.
#include <random>

#include "support/Fixtures.h"

using namespace KvXmlTest;
using namespace KvXmlLib10;

namespace {

// A caller-owned new[] buffer, as the pointer API expects.
struct Buffer {
    explicit Buffer(const Bytes& bytes)
        : data(new unsigned char[bytes.size() + 1]), length(static_cast<uint32_t>(bytes.size())) {
        std::copy(bytes.begin(), bytes.end(), data);
    }
    ~Buffer() { delete[] data; }
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;
    Bytes Contents() const { return Bytes(data, data + length); }

    unsigned char* data;
    uint32_t length;
};

// Runs `call` on a buffer holding `input`; the same array must hold the same bytes after.
template <class Call>
void ExpectUntouched(const Bytes& input, Call call) {
    Buffer buffer(input);
    unsigned char* before = buffer.data;
    call(buffer);
    EXPECT_EQ(buffer.data, before);
    EXPECT_EQ(buffer.Contents(), input);
}

Bytes FromHex(const char* hex) {
    Bytes out;
    for (size_t i = 0; hex[i] && hex[i + 1]; i += 2)
        out.push_back(static_cast<unsigned char>(std::stoi(std::string(hex + i, 2), nullptr, 16)));
    return out;
}

Bytes Noise(size_t size, unsigned seed) {
    std::mt19937 random(seed);
    Bytes noise(size);
    for (unsigned char& byte : noise) byte = static_cast<unsigned char>(random());
    return noise;
}

CBinaryData Value(const Bytes& bytes) {
    CBinaryData value;
    value.SetBuffer(bytes.data(), static_cast<uint32_t>(bytes.size()));
    return value;
}

// Decompress and report what the buffer holds afterwards.
Bytes Inflated(const Bytes& input) {
    Buffer buffer(input);
    CKvZip::Decompress(&buffer.data, &buffer.length);
    return buffer.Contents();
}

}  // namespace

TEST(KvZipCompress, RoundTripsCarryingTheWrapperHeader) {
    // Large enough to inflate through many 64 KiB chunks.
    const Bytes plain = ToBytes(SampleXml(3 * 1024 * 1024));
    const struct {
        CompressionType type;
        Bytes header;
    } cases[] = {{Compression_GZip, {0x1F, 0x8B, 0x08}},  // gzip magic, deflate method
                 {Compression_Zlib, {0x78, 0x01}}};       // zlib, fastest level
    for (const auto& c : cases) {
        const Bytes packed = Compressed(plain, c.type);
        ASSERT_GE(packed.size(), 18u);
        EXPECT_LT(packed.size() * 10, plain.size()) << c.type;
        EXPECT_EQ(Bytes(packed.begin(), packed.begin() + c.header.size()), c.header) << c.type;
        EXPECT_EQ(Inflated(packed), plain) << c.type;
    }
}

TEST(KvZipCompress, InputThatCannotShrinkThrowsAndKeepsData) {
    const struct { Bytes input; CompressionType type; const char* message; } cases[] = {
        // The gzip header alone fills the output, so finishing makes no progress.
        {ToBytes("<a/>"), Compression_GZip, "Failed to compress data. [Error Code: -5]"},
        {ToBytes("<a/>"), Compression_Zlib, "Failed to compress data. [Error Code: 0]"},
        {Bytes(), Compression_GZip, "Failed to compress data. [Error Code: -5]"},
        {Bytes(), Compression_Zlib, "Failed to compress data. [Error Code: -5]"},
        {Noise(4096, 7), Compression_Zlib, "Failed to compress data. [Error Code: 0]"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.input.size()) + " bytes, type " + std::to_string(c.type));
        ExpectUntouched(c.input, [&](Buffer& b) {
            EXPECT_KV_THROW(CKvZip::Compress(&b.data, &b.length, c.type), CKvException, c.message);
        });
    }
}

TEST(KvZipCompress, NoneAndUnknownTypesLeaveDataUntouched) {
    const Bytes plain = ToBytes(SampleXml(5000));
    // 3 is the only unnamed value the enumeration can hold without a fixed underlying type.
    for (CompressionType type : {Compression_None, static_cast<CompressionType>(3)}) {
        SCOPED_TRACE(type);
        ExpectUntouched(plain, [&](Buffer& b) { CKvZip::Compress(&b.data, &b.length, type); });
        CBinaryData value = Value(plain);
        CKvZip::CompressData(value, type);
        EXPECT_EQ(Contents(value), plain);
    }
}

TEST(KvZipCompressData, CompressesValueInPlaceAndSkipsEmpty) {
    const Bytes plain = ToBytes(SampleXml(8000));
    CBinaryData value = Value(plain);
    const CBinaryData shared = value;  // a copy must keep the original bytes
    CKvZip::CompressData(value, Compression_GZip);
    EXPECT_EQ(value.GetData()[0], 0x1F);
    EXPECT_EQ(Inflated(Contents(value)), plain);
    EXPECT_EQ(Contents(shared), plain);

    CBinaryData empty;
    CKvZip::CompressData(empty, Compression_Zlib);
    EXPECT_EQ(empty.GetLength(), 0u);
    CBinaryData tiny("<a/>");
    EXPECT_KV_THROW(CKvZip::CompressData(tiny, Compression_Zlib), CKvException,
                    "Failed to compress data. [Error Code: 0]");
    EXPECT_EQ(tiny, CBinaryData("<a/>"));
}

TEST(KvZipDecompress, InflatesStreamsFromOtherProducers) {
    // zlib default level and gzip level 1 of "hello", as other tools write them.
    EXPECT_EQ(Inflated(FromHex("789ccb48cdc9c90700062c0215")), ToBytes("hello"));
    EXPECT_EQ(Inflated(FromHex("1f8b0800000000000403cb48cdc9c9070086a6103605000000")), ToBytes("hello"));
    // A complete gzip stream of no bytes inflates to nothing.
    EXPECT_EQ(Inflated(FromHex("1f8b080000000000020303000000000000000000")), Bytes());
    // Concatenated gzip members inflate to all their contents, as zcat reads
    // them; bytes after the last member are dropped.
    EXPECT_EQ(Inflated(FromHex("1f8b0800000000000403cb48cdc9c9070086a6103605000000"
                               "1f8b080000000000020303000000000000000000"
                               "1f8b0800000000000403cb48cdc9c9070086a6103605000000ffff")),
              ToBytes("hellohello"));
}

TEST(KvZipDecompress, LeavesAnythingButACompleteStreamExactlyAsItWasAndIgnoresNullInput) {
    const Bytes packed = Compressed(ToBytes(SampleXml(20000)), Compression_GZip);
    Bytes badCrc = packed;
    badCrc[badCrc.size() - 8] ^= 0x01;
    Bytes hugeClaimedSize = packed;  // the trailer's size field is checked, never trusted
    for (size_t i = hugeClaimedSize.size() - 4; i < hugeClaimedSize.size(); ++i) hugeClaimedSize[i] = 0xFF;
    Bytes corruptBody = Compressed(ToBytes(SampleXml(20000)), Compression_Zlib);
    for (size_t i = 10; i < 40; ++i) corruptBody[i] = 0xFF;

    const std::vector<std::pair<const char*, Bytes>> cases = {
        {"plain XML", ToBytes("<?xml version=\"1.0\"?><a>text</a>")},
        {"Fast Infoset header", FromHex("e0000001000000")},
        {"truncated gzip", Bytes(packed.begin(), packed.begin() + packed.size() / 2)},
        {"gzip without trailer", Bytes(packed.begin(), packed.end() - 8)},
        {"truncated second member", FromHex("1f8b0800000000000403cb48cdc9c9070086a6103605000000" "1f8b0800")},
        {"gzip magic only", FromHex("1f8b")}, {"zlib header only", FromHex("789c")},
        {"zlib header with preset dictionary", FromHex("78bb00000001cb48cdc9c90700")}, {"bad CRC", badCrc},
        {"huge claimed size", hugeClaimedSize}, {"corrupt body", corruptBody}, {"random bytes", Noise(10000, 11)},
        {"single byte", FromHex("78")}, {"empty", Bytes()},
    };
    for (const auto& [name, input] : cases) {
        SCOPED_TRACE(name);
        ExpectUntouched(input, [](Buffer& b) { CKvZip::Decompress(&b.data, &b.length); });
    }
    unsigned char* data = nullptr;
    uint32_t length = 0;
    CKvZip::Decompress(&data, &length);
    EXPECT_EQ(data, nullptr);
    EXPECT_EQ(length, 0u);
    CKvZip::Decompress(nullptr, nullptr);
}

TEST(KvZipDecompress, OutputPastTheLimitIsTreatedAsNotCompressed) {
    EXPECT_EQ(CKvZip::GetMaxDecompressedSize(), uint64_t{1} << 30);  // 1 GiB by default
    const Bytes plain(4 * 1024 * 1024, 'a');
    const Bytes packed = Compressed(plain, Compression_GZip);
    const struct {
        uint64_t limit;
        const Bytes& expected;
    } cases[] = {{100000, packed}, {plain.size() - 1, packed}, {plain.size(), plain},  // the limit itself is allowed
                 {0, plain}};
    for (const auto& c : cases) {
        CKvZip::SetMaxDecompressedSize(c.limit);
        EXPECT_EQ(Inflated(packed), c.expected) << c.limit;
    }
    CKvZip::SetMaxDecompressedSize(uint64_t{1} << 30);
}
