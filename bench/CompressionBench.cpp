// CompressionBench.cpp - throughput of CKvZip on a ~50 MB generated XML document.
//
// Compression reports MB/s of input, decompression MB/s of inflated output.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "kvxml/output/KvZip.h"
#include "kvxml/values/BinaryData.h"

using namespace KvXmlLib10;

namespace {

constexpr size_t kDocumentSize = 50u * 1024 * 1024;

// Records with varying numbers and names, so the text compresses like real
// output rather than like one repeated line.
const CBinaryData& Document() {
    static const CBinaryData document = [] {
        static const char* const kNames[] = {"widget", "gadget", "sprocket", "flange", "gizmo",
                                             "bracket", "spindle", "washer"};
        std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<orders xmlns=\"urn:bench\">\n";
        text.reserve(kDocumentSize + 256);
        uint32_t state = 12345;
        for (uint32_t id = 0; text.size() < kDocumentSize; ++id) {
            state = state * 1664525u + 1013904223u;
            text += "\t<order id=\"";
            text += std::to_string(id);
            text += "\" date=\"2024-";
            text += std::to_string(1 + (state >> 8) % 12);
            text += "-";
            text += std::to_string(1 + (state >> 12) % 28);
            text += "\">\n\t\t<item>";
            text += kNames[(state >> 16) % 8];
            text += "</item>\n\t\t<qty>";
            text += std::to_string((state >> 20) % 1000);
            text += "</qty>\n\t\t<price>";
            text += std::to_string(state % 100000);
            text += ".";
            text += std::to_string((state >> 3) % 100);
            text += "</price>\n\t</order>\n";
        }
        text += "</orders>\n";
        return CBinaryData(text.c_str());
    }();
    return document;
}

void Compress(benchmark::State& state, CompressionType type) {
    const CBinaryData& source = Document();
    uint32_t packedLength = 0;
    for (auto _ : state) {
        CBinaryData data = source;  // shares; CompressData takes its own copy of the bytes
        CKvZip::CompressData(data, type);
        packedLength = data.GetLength();
        benchmark::DoNotOptimize(data.GetData());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * source.GetLength());
    state.counters["ratio"] = static_cast<double>(source.GetLength()) / packedLength;
}

void BM_CompressGzip(benchmark::State& state) { Compress(state, Compression_GZip); }
void BM_CompressZlib(benchmark::State& state) { Compress(state, Compression_Zlib); }

void BM_DecompressGzip(benchmark::State& state) {
    CBinaryData packed = Document();
    CKvZip::CompressData(packed, Compression_GZip);
    uint32_t inflatedLength = 0;
    for (auto _ : state) {
        state.PauseTiming();
        uint32_t length = packed.GetLength();
        unsigned char* data = new unsigned char[length];
        std::memcpy(data, packed.GetData(), length);
        state.ResumeTiming();
        CKvZip::Decompress(&data, &length);
        inflatedLength = length;
        benchmark::DoNotOptimize(data);
        delete[] data;
    }
    if (inflatedLength != Document().GetLength()) state.SkipWithError("round trip lost bytes");
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * inflatedLength);
}

}  // namespace

BENCHMARK(BM_CompressGzip)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CompressZlib)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DecompressGzip)->Unit(benchmark::kMillisecond);
