// EncodingAlgorithms.cpp - text to algorithm octets and back, big-endian throughout.
#include "fastinfoset/detail/EncodingAlgorithms.h"

#include <cstring>

#include "kvxml/foundation/KvException.h"
#include "kvxml/output/Encoder.h"
#include "kvxml/values/Base64.h"
#include "kvxml/values/BinaryData.h"
#include "kvxml/values/Conversions.h"

namespace KvXmlLib10::detail {

namespace {

constexpr auto kNoWhitespace = static_cast<CWhitespaceUtils::WhitespaceRule>(0);
constexpr std::size_t kUuidSize = 16;

[[noreturn]] void ThrowUnknown() { throw CKvException("Unknown byte encoding."); }

void PutBigEndian(uint64_t value, std::size_t octets, std::string& out) {
    for (std::size_t i = octets; i-- > 0;) out.push_back(static_cast<char>((value >> (8 * i)) & 0xFF));
}

uint64_t GetBigEndian(const unsigned char* data, std::size_t octets) {
    uint64_t value = 0;
    for (std::size_t i = 0; i < octets; ++i) value = (value << 8) | data[i];
    return value;
}

// Items of a fixed size, rendered one by one and joined by single spaces.
template <class Render>
void DecodeItems(const unsigned char* data, std::size_t length, std::size_t size, const char* invalid, std::string& out,
                 Render&& render) {
    if (length % size != 0) throw CKvException(invalid);
    for (std::size_t at = 0; at < length; at += size) {
        if (at != 0) out.push_back(' ');
        out += render(data + at);
    }
}

// One 4-bit count of unused trailing bits, then one bit per value.
void DecodeBooleans(const unsigned char* data, std::size_t length, std::string& out) {
    const std::size_t unused = length == 0 ? 8 : data[0] >> 4;
    if (length == 0 || unused > 7 || 8 * length - 4 < unused) {
        throw CKvException("Invalid value for BOOLEAN byte encoding.");
    }
    const std::size_t count = 8 * length - 4 - unused;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t bit = i + 4;
        if (i != 0) out.push_back(' ');
        out += CConversions::booleanToString(((data[bit / 8] >> (7 - bit % 8)) & 1) != 0);
    }
}

void DecodeBase64(const unsigned char* data, std::size_t length, std::string& out) {
    // Whole groups of three per call keep the text the same as in one call.
    constexpr std::size_t kPiece = std::size_t{3} << 24;
    CBase64 codec;
    for (std::size_t done = 0; done < length;) {
        const std::size_t piece = length - done < kPiece ? length - done : kPiece;
        out += codec.Encode(data + done, static_cast<int>(piece));
        done += piece;
    }
}

}  // namespace

void EncodeAlgorithm(uint32_t algorithm, const char* text, std::string& out) {
    const std::string value(text ? text : "");
    switch (algorithm) {
    case kAlgorithmHexadecimal:
    case kAlgorithmUuid: {
        CBinaryData bytes;
        bytes.SetAsHexString(value.c_str());
        out.append(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetLength());
        return;
    }
    case kAlgorithmBase64: {
        CBinaryData bytes;
        bytes.SetAsBase64(value.c_str());
        out.append(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetLength());
        return;
    }
    case kAlgorithmShort:
        PutBigEndian(static_cast<uint16_t>(CConversions::i2FromString(value, kNoWhitespace)), 2, out);
        return;
    case kAlgorithmInt:
        PutBigEndian(static_cast<uint32_t>(CConversions::i4FromString(value, kNoWhitespace)), 4, out);
        return;
    case kAlgorithmLong:
        PutBigEndian(static_cast<uint64_t>(CConversions::i8FromString(value, kNoWhitespace)), 8, out);
        return;
    case kAlgorithmBoolean:
        // Three unused bits in the high nibble, the value in the next bit.
        out.push_back(CConversions::booleanFromString(value, kNoWhitespace) ? '\x38' : '\x30');
        return;
    case kAlgorithmFloat: {
        const float number = CConversions::r4FromString(value, kNoWhitespace);
        uint32_t bits;
        std::memcpy(&bits, &number, sizeof bits);
        PutBigEndian(bits, 4, out);
        return;
    }
    case kAlgorithmDouble: {
        const double number = CConversions::r8FromString(value, kNoWhitespace);
        uint64_t bits;
        std::memcpy(&bits, &number, sizeof bits);
        PutBigEndian(bits, 8, out);
        return;
    }
    case kAlgorithmCdata: {
        const CBinaryData utf8 = CEncoder::LocalCodePageToUtf8Binary(value);
        out.append(reinterpret_cast<const char*>(utf8.GetData()), utf8.GetLength());
        return;
    }
    default:
        ThrowUnknown();
    }
}

void DecodeAlgorithm(uint32_t algorithm, const unsigned char* data, std::size_t length, std::string& out) {
    switch (algorithm) {
    case kAlgorithmHexadecimal:
        out += CBinaryData::GetAsHexString(data, static_cast<uint32_t>(length));
        return;
    case kAlgorithmBase64:
        DecodeBase64(data, length, out);
        return;
    case kAlgorithmShort:
        DecodeItems(data, length, 2, "Invalid value for SHORT byte encoding.", out, [](const unsigned char* item) {
            return CConversions::i2ToString(static_cast<int16_t>(GetBigEndian(item, 2)));
        });
        return;
    case kAlgorithmInt:
        DecodeItems(data, length, 4, "Invalid value for INT byte encoding.", out, [](const unsigned char* item) {
            return CConversions::i4ToString(static_cast<int32_t>(GetBigEndian(item, 4)));
        });
        return;
    case kAlgorithmLong:
        DecodeItems(data, length, 8, "Invalid value for LONG byte encoding.", out, [](const unsigned char* item) {
            return CConversions::i8ToString(static_cast<int64_t>(GetBigEndian(item, 8)));
        });
        return;
    case kAlgorithmBoolean:
        DecodeBooleans(data, length, out);
        return;
    case kAlgorithmFloat:
        DecodeItems(data, length, 4, "Invalid value for FLOAT byte encoding.", out, [](const unsigned char* item) {
            const uint32_t bits = static_cast<uint32_t>(GetBigEndian(item, 4));
            float number;
            std::memcpy(&number, &bits, sizeof number);
            return CConversions::r4ToString(number, std::string());
        });
        return;
    case kAlgorithmDouble:
        DecodeItems(data, length, 8, "Invalid value for DOUBLE byte encoding.", out, [](const unsigned char* item) {
            const uint64_t bits = GetBigEndian(item, 8);
            double number;
            std::memcpy(&number, &bits, sizeof number);
            return CConversions::r8ToString(number, std::string());
        });
        return;
    case kAlgorithmUuid:
        DecodeItems(data, length, kUuidSize, "Invalid value for UUID byte encoding.", out,
                    [](const unsigned char* item) { return CBinaryData::GetAsHexString(item, kUuidSize); });
        return;
    case kAlgorithmCdata:
        out += CEncoder::Utf8ToLocalCodePage(reinterpret_cast<const char*>(data), length);
        return;
    default:
        ThrowUnknown();
    }
}

}  // namespace KvXmlLib10::detail
