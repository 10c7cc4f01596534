// KvZipTest.cpp - gzip/zlib compression and the pass-through rules of Decompress.
#include "kvxml/output/KvZip.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "kvxml/values/BinaryData.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

using Bytes = std::vector<unsigned char>;

// A caller-owned new[] buffer, as the pointer API expects.
struct Buffer {
    explicit Buffer(const Bytes& bytes) : length(static_cast<uint32_t>(bytes.size())) {
        data = new unsigned char[bytes.empty() ? 1 : bytes.size()];
        if (!bytes.empty()) std::memcpy(data, bytes.data(), bytes.size());
    }
    ~Buffer() { delete[] data; }
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;
    Bytes Contents() const { return Bytes(data, data + length); }

    unsigned char* data;
    uint32_t length;
};

Bytes ToBytes(const std::string& text) { return Bytes(text.begin(), text.end()); }

Bytes FromHex(const char* hex) {
    Bytes out;
    for (size_t i = 0; hex[i] && hex[i + 1]; i += 2)
        out.push_back(static_cast<unsigned char>(std::stoi(std::string(hex + i, 2), nullptr, 16)));
    return out;
}

// A compressible document of roughly the given size.
Bytes SampleXml(size_t approximateSize) {
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<orders>\n";
    for (int i = 0; text.size() < approximateSize; ++i)
        text += "\t<order id=\"" + std::to_string(i) + "\"><item>widget</item><qty>" +
                std::to_string(i % 17) + "</qty></order>\n";
    text += "</orders>\n";
    return ToBytes(text);
}

Bytes Compressed(const Bytes& plain, CompressionType type) {
    Buffer buffer(plain);
    CKvZip::Compress(&buffer.data, &buffer.length, type);
    return buffer.Contents();
}

// Decompress and report what the buffer holds afterwards.
Bytes Inflated(const Bytes& input) {
    Buffer buffer(input);
    CKvZip::Decompress(&buffer.data, &buffer.length);
    return buffer.Contents();
}

class KvZipLimit : public ::testing::Test {
protected:
    void TearDown() override { CKvZip::SetMaxDecompressedSize(0); }
};

}  // namespace

TEST(KvZipCompress, GzipRoundTripCarriesGzipMagic) {
    const Bytes plain = SampleXml(20000);
    const Bytes packed = Compressed(plain, Compression_GZip);
    ASSERT_GE(packed.size(), 18u);
    EXPECT_LT(packed.size(), plain.size());
    EXPECT_EQ(packed[0], 0x1F);
    EXPECT_EQ(packed[1], 0x8B);
    EXPECT_EQ(packed[2], 0x08);  // deflate method
    EXPECT_EQ(Inflated(packed), plain);
}

TEST(KvZipCompress, ZlibRoundTripCarriesLevelOneHeader) {
    const Bytes plain = SampleXml(20000);
    const Bytes packed = Compressed(plain, Compression_Zlib);
    ASSERT_GE(packed.size(), 6u);
    EXPECT_LT(packed.size(), plain.size());
    EXPECT_EQ(packed[0], 0x78);
    EXPECT_EQ(packed[1], 0x01);  // fastest level
    EXPECT_EQ(Inflated(packed), plain);
}

TEST(KvZipCompress, InputTooSmallToShrinkThrowsAndKeepsData) {
    struct Case {
        const char* text;
        CompressionType type;
        const char* message;
    };
    const Case cases[] = {
        // The gzip header alone fills the output, so finishing makes no progress.
        {"<a/>", Compression_GZip, "Failed to compress data. [Error Code: -5]"},
        {"<a/>", Compression_Zlib, "Failed to compress data. [Error Code: 0]"},
        {"", Compression_GZip, "Failed to compress data. [Error Code: -5]"},
        {"", Compression_Zlib, "Failed to compress data. [Error Code: -5]"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.text) + " type " + std::to_string(c.type));
        Buffer buffer(ToBytes(c.text));
        unsigned char* before = buffer.data;
        EXPECT_KV_THROW(CKvZip::Compress(&buffer.data, &buffer.length, c.type), CKvException,
                        c.message);
        EXPECT_EQ(buffer.data, before);
        EXPECT_EQ(buffer.Contents(), ToBytes(c.text));
    }
}

TEST(KvZipCompress, RandomBytesDoNotShrinkAndThrow) {
    std::mt19937 random(7);
    Bytes noise(4096);
    for (unsigned char& byte : noise) byte = static_cast<unsigned char>(random());
    Buffer buffer(noise);
    EXPECT_KV_THROW(CKvZip::Compress(&buffer.data, &buffer.length, Compression_Zlib), CKvException,
                    "Failed to compress data. [Error Code: 0]");
    EXPECT_EQ(buffer.Contents(), noise);
}

TEST(KvZipCompress, NoneAndUnknownTypesLeaveDataUntouched) {
    const Bytes plain = SampleXml(5000);
    // 3 is the only unnamed value the enumeration can hold without a fixed underlying type.
    for (int type : {0, 3}) {
        Buffer buffer(plain);
        unsigned char* before = buffer.data;
        CKvZip::Compress(&buffer.data, &buffer.length, static_cast<CompressionType>(type));
        EXPECT_EQ(buffer.data, before) << type;
        EXPECT_EQ(buffer.Contents(), plain) << type;

        CBinaryData value;
        value.SetBuffer(plain.data(), static_cast<uint32_t>(plain.size()));
        CKvZip::CompressData(value, static_cast<CompressionType>(type));
        EXPECT_EQ(Bytes(value.GetData(), value.GetData() + value.GetLength()), plain) << type;
    }
}

TEST(KvZipCompressData, CompressesValueInPlaceAndSkipsEmpty) {
    const Bytes plain = SampleXml(8000);
    CBinaryData value;
    value.SetBuffer(plain.data(), static_cast<uint32_t>(plain.size()));
    const CBinaryData shared = value;  // a copy must keep the original bytes
    CKvZip::CompressData(value, Compression_GZip);
    const Bytes packed(value.GetData(), value.GetData() + value.GetLength());
    ASSERT_GE(packed.size(), 2u);
    EXPECT_EQ(packed[0], 0x1F);
    EXPECT_EQ(Inflated(packed), plain);
    EXPECT_EQ(Bytes(shared.GetData(), shared.GetData() + shared.GetLength()), plain);

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
    EXPECT_EQ(Inflated(FromHex("1f8b0800000000000403cb48cdc9c9070086a6103605000000")),
              ToBytes("hello"));
    // A complete gzip stream of no bytes inflates to nothing.
    EXPECT_EQ(Inflated(FromHex("1f8b080000000000020303000000000000000000")), Bytes());
}

TEST(KvZipDecompress, LeavesAnythingButACompleteStreamExactlyAsItWas) {
    const Bytes packed = Compressed(SampleXml(20000), Compression_GZip);
    Bytes badCrc = packed;
    badCrc[badCrc.size() - 8] ^= 0x01;
    Bytes hugeClaimedSize = packed;  // the trailer's size field is checked, never trusted
    for (size_t i = hugeClaimedSize.size() - 4; i < hugeClaimedSize.size(); ++i) hugeClaimedSize[i] = 0xFF;
    Bytes corruptBody = Compressed(SampleXml(20000), Compression_Zlib);
    for (size_t i = 10; i < 40; ++i) corruptBody[i] = 0xFF;
    std::mt19937 random(11);
    Bytes noise(10000);
    for (unsigned char& byte : noise) byte = static_cast<unsigned char>(random());

    const std::vector<std::pair<const char*, Bytes>> cases = {
        {"plain XML", ToBytes("<?xml version=\"1.0\"?><a>text</a>")},
        {"Fast Infoset header", FromHex("e0000001000000")},
        {"truncated gzip", Bytes(packed.begin(), packed.begin() + packed.size() / 2)},
        {"gzip without trailer", Bytes(packed.begin(), packed.end() - 8)},
        {"gzip magic only", FromHex("1f8b")},
        {"zlib header only", FromHex("789c")},
        {"zlib header with preset dictionary", FromHex("78bb00000001cb48cdc9c90700")},
        {"bad CRC", badCrc},
        {"huge claimed size", hugeClaimedSize},
        {"corrupt body", corruptBody},
        {"random bytes", noise},
        {"single byte", FromHex("78")},
    };
    for (const auto& [name, input] : cases) {
        Buffer buffer(input);
        unsigned char* before = buffer.data;
        CKvZip::Decompress(&buffer.data, &buffer.length);
        EXPECT_EQ(buffer.data, before) << name;
        EXPECT_EQ(buffer.Contents(), input) << name;
    }
}

TEST(KvZipDecompress, IgnoresEmptyAndNullInput) {
    unsigned char* data = nullptr;
    uint32_t length = 0;
    CKvZip::Decompress(&data, &length);
    EXPECT_EQ(data, nullptr);
    EXPECT_EQ(length, 0u);

    Buffer empty{Bytes()};
    unsigned char* before = empty.data;
    CKvZip::Decompress(&empty.data, &empty.length);
    EXPECT_EQ(empty.data, before);
    EXPECT_EQ(empty.length, 0u);

    CKvZip::Decompress(nullptr, nullptr);
}

TEST(KvZipDecompress, InflatesOutputSpanningManyChunks) {
    // Several 64 KiB scratch chunks and accumulator growths.
    const Bytes plain = SampleXml(3 * 1024 * 1024);
    const Bytes packed = Compressed(plain, Compression_Zlib);
    EXPECT_LT(packed.size() * 10, plain.size());
    EXPECT_EQ(Inflated(packed), plain);
}

TEST_F(KvZipLimit, OutputPastTheLimitIsTreatedAsNotCompressed) {
    EXPECT_EQ(CKvZip::GetMaxDecompressedSize(), 0u);  // off by default

    const Bytes plain(4 * 1024 * 1024, 'a');
    const Bytes packed = Compressed(plain, Compression_GZip);

    CKvZip::SetMaxDecompressedSize(100000);
    EXPECT_EQ(CKvZip::GetMaxDecompressedSize(), 100000u);
    EXPECT_EQ(Inflated(packed), packed);

    CKvZip::SetMaxDecompressedSize(plain.size() - 1);
    EXPECT_EQ(Inflated(packed), packed);

    CKvZip::SetMaxDecompressedSize(plain.size());  // exactly at the limit is allowed
    EXPECT_EQ(Inflated(packed), plain);

    CKvZip::SetMaxDecompressedSize(0);
    EXPECT_EQ(Inflated(packed), plain);
}
