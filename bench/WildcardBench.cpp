// WildcardBench.cpp - a 10 MB document kept as wildcard content: copied into a CElement tree and written back, against
// LoadXml and bare expat on the same bytes.
//
// The document (KVXML_BENCH_MB megabytes, default 10) is what extension points
// carry: namespaced elements with attributes and short texts, some nesting.
// Throughput is MB/s of that XML. Copying starts from a loaded document and
// includes freeing the tree; the peak C++ heap of the finished tree is reported
// in MB and as a multiple of the document.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "BenchSupport.h"
#include "kvxml/dom/XmlDocument.h"
#include "kvxml/metadata/AnyElement.h"

using namespace KvXmlLib10;

namespace {

std::string Generate(std::size_t bytes) {
    std::string text =
        "<ext:feed xmlns:ext=\"urn:example:bench:ext\" xmlns:m=\"urn:example:bench:meta\" version=\"2\">\n";
    text.reserve(bytes + 1024);
    char line[512];
    for (unsigned entry = 0; text.size() < bytes; ++entry) {
        std::snprintf(line, sizeof line,
                      "  <ext:entry id=\"e%u\" m:rank=\"%u\">\n    <ext:title>Entry number %u</ext:title>\n"
                      "    <m:meta created=\"2024-05-%02uT10:00:00Z\" by=\"user%u\"><m:tag>t%u</m:tag>"
                      "<m:tag>shared</m:tag></m:meta>\n    <ext:body>Text with &amp; escapes &lt;%u&gt;</ext:body>\n"
                      "  </ext:entry>\n",
                      entry, entry % 97, entry, 1 + entry % 28, entry % 1000, entry % 50, entry);
        text += line;
    }
    text += "</ext:feed>\n";
    return text;
}

const std::string& Document() {
    static const std::string document = [] {
        const char* mb = std::getenv("KVXML_BENCH_MB");
        return Generate(static_cast<std::size_t>(mb ? std::atof(mb) * 1e6 : 10e6));
    }();
    return document;
}

const CXmlDocument& Loaded() {
    static const CXmlDocument* document = [] {
        auto* loaded = new CXmlDocument;
        loaded->LoadXml(Document().c_str());
        return loaded;
    }();
    return *document;
}

void SetThroughput(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(Document().size()));
}

void BM_ExpatOnly(benchmark::State& state) {
    for (auto _ : state)
        if (const char* error = benchsupport::ParseWithExpat(Document())) state.SkipWithError(error);
    SetThroughput(state);
}
BENCHMARK(BM_ExpatOnly)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_LoadXml(benchmark::State& state) {
    for (auto _ : state) {
        CXmlDocument document;
        document.LoadXml(Document().c_str());
        benchmark::DoNotOptimize(document.GetDocumentElement());
    }
    SetThroughput(state);
}
BENCHMARK(BM_LoadXml)->Unit(benchmark::kMillisecond)->UseRealTime();

// Document tree to wrapper tree; the tree's peak heap beyond the document's.
void BM_CopyIntoElement(benchmark::State& state) {
    const CXmlElement* root = Loaded().GetDocumentElement();
    for (auto _ : state) {
        CElement element("AnyElement");
        element.CopyXmlElement(root);
        benchmark::DoNotOptimize(element.GetElements());
    }
    SetThroughput(state);
    const int64_t peak = benchsupport::MeasurePeak([&] {
        CElement element("AnyElement");
        element.CopyXmlElement(root);
    });
    state.counters["peak_heap_MB"] = static_cast<double>(peak) / 1e6;
    state.counters["peak_x_input"] = static_cast<double>(peak) / static_cast<double>(Document().size());
}
BENCHMARK(BM_CopyIntoElement)->Unit(benchmark::kMillisecond)->UseRealTime();

// Text to wrapper tree through the element's own reading (parse included).
void BM_ElementFromXml(benchmark::State& state) {
    for (auto _ : state) {
        CElement element("AnyElement");
        element.FromXml(Document().c_str());
        benchmark::DoNotOptimize(element.GetElements());
    }
    SetThroughput(state);
}
BENCHMARK(BM_ElementFromXml)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_ElementToXml(benchmark::State& state) {
    CElement element("AnyElement");
    element.CopyXmlElement(Loaded().GetDocumentElement());
    for (auto _ : state) {
        std::string text = element.ToXml(false, true);
        benchmark::DoNotOptimize(text.data());
    }
    SetThroughput(state);
}
BENCHMARK(BM_ElementToXml)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
