// BinaryDataBench.cpp - throughput of base64 and hex coding and UTF-8 decoding.
//
// Inputs are 64 MB of bytes from a fixed-seed generator. Every figure counts
// the binary side (64 MB per iteration), so encode and decode compare directly.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "kvxml/values/Base64.h"
#include "kvxml/values/BinaryData.h"
#include "kvxml/values/UnicodeConversion.h"

using KvXmlLib10::CBinaryData;

namespace {

constexpr size_t kSize = 64u << 20;

const std::vector<unsigned char>& Input() {
    static const std::vector<unsigned char> bytes = [] {
        std::vector<unsigned char> v(kSize);
        std::mt19937 random(20240601);
        for (auto& b : v) b = static_cast<unsigned char>(random());
        return v;
    }();
    return bytes;
}

void BM_Base64Encode(benchmark::State& state) {
    const auto& input = Input();
    CBase64 codec;
    for (auto _ : state) {
        std::string text = codec.Encode(input.data(), static_cast<int>(input.size()));
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(kSize));
}

void BM_Base64Decode(benchmark::State& state) {
    const auto& input = Input();
    CBase64 codec;
    const std::string text = codec.Encode(input.data(), static_cast<int>(input.size()));
    std::unique_ptr<unsigned char[]> out(new unsigned char[text.size()]);
    for (auto _ : state) {
        benchmark::DoNotOptimize(codec.Decode(text.c_str(), out.get()));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(kSize));
}

// Text with a line break every 76 characters, as MIME writes it.
void BM_Base64DecodeWrapped(benchmark::State& state) {
    const auto& input = Input();
    CBase64 codec;
    const std::string flat = codec.Encode(input.data(), static_cast<int>(input.size()));
    std::string text;
    text.reserve(flat.size() + flat.size() / 76 * 2 + 2);
    for (size_t i = 0; i < flat.size(); i += 76) text.append(flat, i, 76).append("\r\n");
    std::unique_ptr<unsigned char[]> out(new unsigned char[text.size()]);
    for (auto _ : state) {
        benchmark::DoNotOptimize(codec.Decode(text.c_str(), out.get()));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(kSize));
}

// The CBinaryData round trip as the conversions use it (allocation included).
void BM_BinaryDataBase64RoundTrip(benchmark::State& state) {
    const auto& input = Input();
    const CBinaryData value(const_cast<unsigned char*>(input.data()), static_cast<uint32_t>(input.size()), false);
    for (auto _ : state) {
        const std::string text = value.GetAsBase64();
        CBinaryData back;
        back.SetAsBase64(text.c_str());
        benchmark::DoNotOptimize(back.GetData());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(kSize));
}

void BM_HexEncode(benchmark::State& state) {
    const auto& input = Input();
    for (auto _ : state) {
        std::string text = CBinaryData::GetAsHexString(input.data(), static_cast<uint32_t>(input.size()));
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(kSize));
}

void BM_HexDecode(benchmark::State& state) {
    const auto& input = Input();
    const std::string text = CBinaryData::GetAsHexString(input.data(), static_cast<uint32_t>(input.size()));
    for (auto _ : state) {
        unsigned char* bytes = nullptr;
        benchmark::DoNotOptimize(CBinaryData::ConvertToHexData(text.c_str(), &bytes));
        delete[] bytes;
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(kSize));
}

// Mostly ASCII with some 2-, 3- and 4-byte characters, about 64 MB of UTF-8.
void BM_Utf8ToUnicode(benchmark::State& state) {
    const char* pieces[] = {"plain ascii text ", "caf\xC3\xA9 ", "\xE2\x82\xAC 12 ", "\xF0\x9F\x98\x80 "};
    std::string text;
    std::mt19937 random(7);
    while (text.size() < kSize) text += pieces[random() % 4];
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    const auto length = static_cast<uint32_t>(text.size());
    std::vector<wchar_t> wide(text.size());
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            KvXmlLib10::UTF8ToUnicode(bytes, length, wide.data(), static_cast<uint32_t>(wide.size())));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(length));
}

}  // namespace

BENCHMARK(BM_Base64Encode)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Base64Decode)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Base64DecodeWrapped)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BinaryDataBase64RoundTrip)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HexEncode)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HexDecode)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Utf8ToUnicode)->Unit(benchmark::kMillisecond);
