// PurchaseOrderBench.cpp - the purchase-order binding read and written whole, against bare expat on the same bytes.
//
// The large document is KVXML_BENCH_PO when set, else the 32 MB output of the
// purchase-order generator (gen.py 32, default seed), made on first use; the
// small one is the generator's single-order document (gen.py 0.001).
// FromXml is parse, tree and bind through the public entry point; ToXml
// writes the bound objects back (facet checks included) as UTF-8 bytes; the
// Generated* pair does the same through the classes kvxsd makes of po.xsd.
// Throughput is MB/s of the document either way. For the small document
// the time splits into parse (bare expat), tree (document load) and bind
// (FromXmlElement on a loaded tree). Reported counters: objects bound per
// second and the peak C++ heap of one FromXml beyond what was live before,
// in MB and as a multiple of the document. The program runs under the
// C.UTF-8 locale, as a service reading these documents would: the names in
// them are not ASCII.
#include <benchmark/benchmark.h>

#include <clocale>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "BenchSupport.h"
#include "PurchaseOrder.h"
#include "kvxml/dom/XmlDocument.h"
#include "po.h"

using namespace KvXmlLib10;

namespace {

const bool g_utf8 = std::setlocale(LC_ALL, "C.UTF-8") != nullptr;

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

// Runs the generator for a document of the given size, once per process.
std::string Generated(const char* megabytes) {
    const std::string path = std::string("/tmp/kvxml-po-") + megabytes + ".xml";
    std::string text = ReadFile(path);
    if (!text.empty()) return text;
    const std::string command =
        std::string("python3 ") + KVXML_PO_GENERATOR + " " + megabytes + " " + path + " > /dev/null";
    if (std::system(command.c_str()) != 0) std::fprintf(stderr, "generator failed: %s\n", command.c_str());
    return ReadFile(path);
}

const std::string& Large() {
    static_cast<void>(g_utf8);
    static const std::string text = [] {
        const char* path = std::getenv("KVXML_BENCH_PO");
        return path ? ReadFile(path) : Generated("32");
    }();
    return text;
}

const std::string& Small() {
    static const std::string text = Generated("0.001");
    return text;
}

// Generated objects in a bound batch: orders, addresses, payments, item lists, items.
int64_t CountObjects(const kvbind::CPurchaseOrders& batch) {
    int64_t objects = 1;
    for (int32_t i = 0; i < const_cast<kvbind::CPurchaseOrders&>(batch).PurchaseOrder().GetCount(); ++i) {
        kvbind::CPurchaseOrder* order = batch.GetPurchaseOrder(i);
        objects += 5 + (order->GetBillTo() ? 1 : 0) + order->Items().Item().GetCount();
    }
    return objects;
}

void Load(kvbind::CPurchaseOrders& batch, const std::string& text) {
    batch.FromXmlStream(reinterpret_cast<unsigned char*>(const_cast<char*>(text.data())),
                        static_cast<uint32_t>(text.size()));
}

void Throughput(benchmark::State& state, const std::string& text) {
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
}

void Expat(benchmark::State& state, const std::string& text) {
    for (auto _ : state)
        if (const char* error = benchsupport::ParseWithExpat(text)) state.SkipWithError(error);
    Throughput(state, text);
}

// A fresh batch per iteration; its destruction is not timed.
void FromXml(benchmark::State& state, const std::string& text) {
    int64_t objects = 0;
    for (auto _ : state) {
        auto* batch = new kvbind::CPurchaseOrders;
        batch->AddRef();
        Load(*batch, text);
        state.PauseTiming();
        objects = CountObjects(*batch);
        batch->Release();
        state.ResumeTiming();
    }
    Throughput(state, text);
    state.counters["objects_per_s"] =
        benchmark::Counter(static_cast<double>(objects), benchmark::Counter::kIsIterationInvariantRate);
    const int64_t peak = benchsupport::MeasurePeak([&] {
        kvbind::CPurchaseOrders batch;
        Load(batch, text);
    });
    state.counters["peak_heap_MB"] = static_cast<double>(peak) / 1e6;
    state.counters["peak_x_doc"] = static_cast<double>(peak) / static_cast<double>(text.size());
}

void ToXml(benchmark::State& state, const std::string& text) {
    kvbind::CPurchaseOrders batch;
    Load(batch, text);
    for (auto _ : state) {
        CBinaryData bytes = batch.ToXmlStream(true, true, Encoding_UTF8, EOL_LF);
        benchmark::DoNotOptimize(bytes.GetData());
    }
    Throughput(state, text);
}

// The tree alone: expat plus building the document.
void Tree(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        CXmlDocument document;
        document.LoadXmlStream(reinterpret_cast<unsigned char*>(const_cast<char*>(text.data())),
                               static_cast<uint32_t>(text.size()));
        benchmark::DoNotOptimize(document.GetDocumentElement());
    }
    Throughput(state, text);
}

// Binding alone, from a tree loaded once.
void Bind(benchmark::State& state, const std::string& text) {
    CXmlDocument document;
    document.LoadXmlStream(reinterpret_cast<unsigned char*>(const_cast<char*>(text.data())),
                           static_cast<uint32_t>(text.size()));
    kvbind::CPurchaseOrders batch;
    for (auto _ : state) batch.FromXmlElement(document.GetDocumentElement());
    Throughput(state, text);
    state.counters["objects_per_s"] =
        benchmark::Counter(static_cast<double>(CountObjects(batch)), benchmark::Counter::kIsIterationInvariantRate);
}

// The same reads and writes through the classes kvxsd generated from po.xsd.
void GeneratedFromXml(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        auto* batch = new kvgen_po::CPurchaseOrderBatch;
        batch->AddRef();
        batch->FromXmlStream(reinterpret_cast<unsigned char*>(const_cast<char*>(text.data())),
                             static_cast<uint32_t>(text.size()));
        state.PauseTiming();
        batch->Release();
        state.ResumeTiming();
    }
    Throughput(state, text);
}

void GeneratedToXml(benchmark::State& state, const std::string& text) {
    kvgen_po::CPurchaseOrderBatch batch;
    batch.FromXmlStream(reinterpret_cast<unsigned char*>(const_cast<char*>(text.data())),
                        static_cast<uint32_t>(text.size()));
    for (auto _ : state) {
        CBinaryData bytes = batch.ToXmlStream(true, true, Encoding_UTF8, EOL_LF);
        benchmark::DoNotOptimize(bytes.GetData());
    }
    Throughput(state, text);
}

}  // namespace

#define KVXML_PO_BENCH(Name, Action, Doc) \
    BENCHMARK_CAPTURE(Action, Name, Doc())->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime()

KVXML_PO_BENCH(po32MB, Expat, Large);
KVXML_PO_BENCH(po32MB, FromXml, Large);
KVXML_PO_BENCH(po32MB, ToXml, Large);
KVXML_PO_BENCH(po32MB, GeneratedFromXml, Large);
KVXML_PO_BENCH(po32MB, GeneratedToXml, Large);
KVXML_PO_BENCH(po32MB, Tree, Large);
KVXML_PO_BENCH(po32MB, Bind, Large);
KVXML_PO_BENCH(po1KB, Expat, Small)->Unit(benchmark::kMicrosecond);
KVXML_PO_BENCH(po1KB, Tree, Small)->Unit(benchmark::kMicrosecond);
KVXML_PO_BENCH(po1KB, Bind, Small)->Unit(benchmark::kMicrosecond);
KVXML_PO_BENCH(po1KB, FromXml, Small)->Unit(benchmark::kMicrosecond);
KVXML_PO_BENCH(po1KB, ToXml, Small)->Unit(benchmark::kMicrosecond);
