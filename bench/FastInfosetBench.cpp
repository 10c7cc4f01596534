// FastInfosetBench.cpp - the converter both ways and Fast Infoset loading, against bare expat, in one run.
//
// KVXML_BENCH_XML names the document (the purchase-order generator's
// output). Every throughput is MB/s of that XML text, so the figures
// compare directly: bare expat is the floor (with and without namespace
// processing), "kvxml convert" XML -> Fast Infoset and back run the
// command's own code with output to /dev/null, and the two loads build the same CXmlDocument from either form. The
// Fast Infoset sizes with the default and with 32 as both maximum add
// lengths are reported as counters. Times are elapsed: the converter runs
// expat on a thread of its own when it may use two CPUs; the CPU column is
// the whole process's.
#include <benchmark/benchmark.h>
#include <expat.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "Convert.h"
#include "kvxml/dom/XmlDocument.h"
#include "kvxml/output/Encoder.h"

using namespace KvXmlLib10;

namespace {

const char* XmlPath() { return std::getenv("KVXML_BENCH_XML"); }

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

const std::string& Xml() {
    static const std::string text = ReadFile(XmlPath());
    return text;
}

// The document as Fast Infoset, written once by the converter.
const std::string& FastInfosetPath(uint32_t maxAddLength) {
    static std::string paths[2];
    std::string& path = paths[maxAddLength == 32];
    if (path.empty()) {
        path = std::string(std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "/tmp") + "/kvxml-bench-" +
               std::to_string(maxAddLength) + ".fi";
        kvxml_cli::ConvertOptions options;
        options.in = XmlPath();
        options.out = path;
        options.maxAddLength = maxAddLength;
        kvxml_cli::Convert(options);
    }
    return path;
}

bool Ready(benchmark::State& state) {
    if (XmlPath()) return true;
    state.SkipWithError("set KVXML_BENCH_XML to a document, e.g. the purchase-order generator's output");
    return false;
}

void Report(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * Xml().size()));
}

// Without namespace processing (the lowest floor), and with it, as any
// namespace-aware consumer (the converter, the document reader) runs expat.
void ExpatFloor(benchmark::State& state, bool namespaces) {
    if (!Ready(state)) return;
    const std::string& xml = Xml();
    for (auto _ : state) {
        XML_Parser parser = namespaces ? XML_ParserCreateNS(nullptr, '|') : XML_ParserCreate(nullptr);
        XML_SetElementHandler(parser, [](void*, const XML_Char*, const XML_Char**) {}, [](void*, const XML_Char*) {});
        XML_SetCharacterDataHandler(parser, [](void*, const XML_Char*, int) {});
        benchmark::DoNotOptimize(XML_Parse(parser, xml.data(), static_cast<int>(xml.size()), 1));
        XML_ParserFree(parser);
    }
    Report(state);
}

void BM_ExpatFloor(benchmark::State& state) { ExpatFloor(state, false); }
void BM_ExpatFloorNamespaces(benchmark::State& state) { ExpatFloor(state, true); }

void BM_ConvertXmlToFastInfoset(benchmark::State& state) {
    if (!Ready(state)) return;
    kvxml_cli::ConvertOptions options;
    options.in = XmlPath();
    options.out = "/dev/null";
    options.to = "fi";
    for (auto _ : state) kvxml_cli::Convert(options);
    Report(state);
    state.counters["fi_MB_default"] = static_cast<double>(ReadFile(FastInfosetPath(0)).size()) / 1e6;
    state.counters["fi_MB_add32"] = static_cast<double>(ReadFile(FastInfosetPath(32)).size()) / 1e6;
    state.counters["xml_MB"] = static_cast<double>(Xml().size()) / 1e6;
}

void BM_ConvertFastInfosetToXml(benchmark::State& state) {
    if (!Ready(state)) return;
    kvxml_cli::ConvertOptions options;
    options.in = FastInfosetPath(0);
    options.out = "/dev/null";
    options.to = "xml";
    for (auto _ : state) kvxml_cli::Convert(options);
    Report(state);
}

void Load(benchmark::State& state, const std::string& bytes) {
    for (auto _ : state) {
        CXmlDocument document;
        document.LoadXmlStream(reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data())),
                               static_cast<uint32_t>(bytes.size()));
        benchmark::DoNotOptimize(document.GetDocumentElement());
    }
    Report(state);
}

void BM_LoadXmlText(benchmark::State& state) {
    if (Ready(state)) Load(state, Xml());
}

void BM_LoadFastInfoset(benchmark::State& state) {
    if (Ready(state)) Load(state, ReadFile(FastInfosetPath(0)));
}

// The converter keeps text as UTF-8 bytes; so do the loads here.
const bool kAsciiOnly = (ASCIIOnly(true), true);

}  // namespace

BENCHMARK(BM_ExpatFloor)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(BM_ExpatFloorNamespaces)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(BM_ConvertXmlToFastInfoset)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(BM_ConvertFastInfosetToXml)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(BM_LoadXmlText)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(BM_LoadFastInfoset)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
