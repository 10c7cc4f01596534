// ReadXmlBench.cpp - loading a ~50 MB document into CXmlDocument, as XML text and as Fast Infoset,
// against bare expat on the same text.
//
// The document is KVXML_BENCH_XML (e.g. the output of the purchase-order
// generator) when set, else a generated one of KVXML_BENCH_MB megabytes
// (default 50) in the same shape: namespaces, attributes, short texts, some
// non-ASCII. Throughput is MB/s of input; a load iteration includes deleting
// its tree (BM_DeleteTree times that alone). The peak C++ heap of one extra
// load, beyond what was live before it (so never the input), is reported in
// MB and as a multiple of the input; expat's own mallocs are not counted.
// The Fast Infoset form is KVXML_BENCH_FI when set (the same document
// converted, e.g. by `kvxml convert`), else the loaded tree written by the
// Fast Infoset writer; its throughput is counted in bytes of the XML text,
// so the two loads compare directly.
#include <benchmark/benchmark.h>

#include <clocale>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "BenchSupport.h"
#include "kvxml/dom/XmlDocument.h"
#include "kvxml/fastinfoset/FastInfosetWriter.h"
#include "kvxml/output/BinaryStream.h"

using namespace KvXmlLib10;

using benchsupport::MeasurePeak;

namespace {

// ---- the document ----

class Lcg {
public:
    uint32_t Next(uint32_t bound) {
        m_state = m_state * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<uint32_t>(m_state >> 33) % bound;
    }

private:
    uint64_t m_state = 20240601;
};

std::string Generate(std::size_t bytes) {
    static const char* const kNames[] = {"Alice Smith", "Jos\xC3\xA9 Garc\xC3\xAD" "a", "Zo\xC3\xAB M\xC3\xBCller",
                                         "Mei Nakamura", "Brown &amp; Sons", "\xE7\x94\xB0\xE4\xB8\xAD"};
    static const char* const kProducts[] = {"Lawnmower", "Baby Monitor", "Nuts &amp; Bolts", "Caf\xC3\xA9 cr\xC3\xA8me",
                                            "Hex key set", "Size &lt;XL&gt; jacket"};
    static const char* const kStatus[] = {"ordered", "shipped", "backordered", "cancelled"};
    Lcg random;
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<purchaseOrders xmlns=\"urn:example:bench:po\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n";
    text.reserve(bytes + 4096);
    char line[256];
    for (uint32_t order = 0; text.size() < bytes; ++order) {
        std::snprintf(line, sizeof line, "  <purchaseOrder orderId=\"%u\" orderDate=\"2024-%02u-%02uT10:%02u:00Z\">\n",
                      10000000 + order, 1 + random.Next(12), 1 + random.Next(28), random.Next(60));
        text += line;
        text += "    <shipTo country=\"US\">\n      <name>";
        text += kNames[random.Next(6)];
        std::snprintf(line, sizeof line,
                      "</name>\n      <street>%u Maple Street</street>\n      <city>Mill Valley</city>\n"
                      "      <zip>%05u</zip>\n    </shipTo>\n    <items>\n",
                      1 + random.Next(999), random.Next(99999));
        text += line;
        const uint32_t items = 1 + random.Next(20);
        for (uint32_t item = 1; item <= items; ++item) {
            std::snprintf(line, sizeof line, "      <item partNum=\"%03u-%c%c\" line=\"%u\">\n        <productName>",
                          random.Next(1000), 'A' + random.Next(26), 'A' + random.Next(26), item);
            text += line;
            text += kProducts[random.Next(6)];
            std::snprintf(line, sizeof line,
                          "</productName>\n        <quantity>%u</quantity>\n        <unitPrice>%u.%02u</unitPrice>\n"
                          "        <status>%s</status>\n        <digest>%08X%08X</digest>\n",
                          1 + random.Next(9), random.Next(5000), random.Next(100), kStatus[random.Next(4)],
                          random.Next(0x7FFFFFFF), random.Next(0x7FFFFFFF));
            text += line;
            if (random.Next(10) == 0) text += "        <comment xsi:nil=\"true\"/>\n";
            text += "      </item>\n";
        }
        text += "    </items>\n  </purchaseOrder>\n";
    }
    text += "</purchaseOrders>\n";
    return text;
}

const std::string& Document() {
    static const std::string document = [] {
        if (const char* path = std::getenv("KVXML_BENCH_XML")) {
            std::ifstream in(path, std::ios::binary);
            return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        }
        const char* mb = std::getenv("KVXML_BENCH_MB");
        return Generate(static_cast<std::size_t>(mb ? std::atof(mb) * 1e6 : 50e6));
    }();
    return document;
}

// The tree of Document() through the Fast Infoset writer, element text
// first, then the children.
std::string WriteFastInfoset(const CXmlElement* root) {
    CFastInfosetContext context;
    CBinaryStream stream;
    CFastInfosetWriter writer(context, stream);
    writer.WriteStartDocument(FInfoDecl_None);
    struct Frame {
        const CXmlElement* element;
        bool started;
    };
    std::vector<Frame> pending{{root, false}};
    std::vector<const CXmlElement*> children;
    while (!pending.empty()) {
        Frame& frame = pending.back();
        if (frame.started) {
            writer.WriteEndElement();
            pending.pop_back();
            continue;
        }
        frame.started = true;
        const CXmlElement* element = frame.element;
        writer.WriteStartElement(element->GetLocalName(), element->GetNamespaceURI());
        for (const CXmlAttribute* attribute : element->GetAttributes())
            writer.WriteAttributeString(attribute->GetLocalName(), attribute->GetNamespaceURI(), attribute->GetValue(),
                                        ItemType::string);
        writer.WriteString(element->GetText(), ItemType::string);
        children.clear();
        for (const CXmlElement* child = element->GetFirstElement(); child; child = child->GetNextSiblingElement())
            children.push_back(child);
        for (auto child = children.rbegin(); child != children.rend(); ++child) pending.push_back({*child, false});
    }
    writer.WriteEndDocument();
    writer.Close();
    const CBinaryData& bytes = stream.GetBinaryStream();
    return std::string(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetLength());
}

const std::string& FastInfosetDocument() {
    static const std::string document = [] {
        if (const char* path = std::getenv("KVXML_BENCH_FI")) {
            std::ifstream in(path, std::ios::binary);
            return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        }
        CXmlDocument tree;
        tree.LoadXml(Document().c_str());
        return WriteFastInfoset(tree.GetDocumentElement());
    }();
    return document;
}

// ---- reporting ----

void SetThroughput(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(Document().size()));
}

void Report(benchmark::State& state, int64_t peakBeyond) {
    SetThroughput(state);
    const double size = static_cast<double>(Document().size());
    state.counters["peak_heap_MB"] = static_cast<double>(peakBeyond) / 1e6;
    state.counters["peak_x_input"] = static_cast<double>(peakBeyond) / size;
}

class ScopedLocale {
public:
    explicit ScopedLocale(const char* name) : m_saved(std::setlocale(LC_ALL, nullptr)) {
        std::setlocale(LC_ALL, name);
    }
    ~ScopedLocale() { std::setlocale(LC_ALL, m_saved.c_str()); }

private:
    std::string m_saved;
};

// ---- benchmarks ----

// The baseline: expat alone on the same bytes (BenchSupport.h).
void BM_ExpatOnly(benchmark::State& state) {
    const std::string& text = Document();
    for (auto _ : state)
        if (const char* error = benchsupport::ParseWithExpat(text)) state.SkipWithError(error);
    SetThroughput(state);
}
BENCHMARK(BM_ExpatOnly)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

// Tree load from a string. Deleting the tree is part of each iteration
// (reported separately by BM_DeleteTree) so that the allocator starts every
// load in the same state.
void LoadXml(benchmark::State& state, const char* locale) {
    ScopedLocale scoped(locale);
    const std::string& text = Document();
    for (auto _ : state) {
        CXmlDocument document;
        document.LoadXml(text.c_str());
        benchmark::DoNotOptimize(document.GetDocumentElement());
    }
    Report(state, MeasurePeak([&] {
               CXmlDocument document;
               document.LoadXml(text.c_str());
           }));
}
BENCHMARK_CAPTURE(LoadXml, C_locale, "C")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK_CAPTURE(LoadXml, UTF8_locale, "C.UTF-8")
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

// The same from a byte stream (checked for compression first).
void BM_LoadXmlStream(benchmark::State& state) {
    std::string bytes = Document();
    auto load = [&bytes] {
        CXmlDocument document;
        document.LoadXmlStream(reinterpret_cast<unsigned char*>(bytes.data()), static_cast<uint32_t>(bytes.size()));
        benchmark::DoNotOptimize(document.GetDocumentElement());
    };
    for (auto _ : state) load();
    Report(state, MeasurePeak(load));
}
BENCHMARK(BM_LoadXmlStream)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

// The same document as Fast Infoset bytes: the tree the text load builds.
void BM_LoadFastInfosetStream(benchmark::State& state) {
    std::string bytes = FastInfosetDocument();
    auto load = [&bytes] {
        CXmlDocument document;
        document.LoadXmlStream(reinterpret_cast<unsigned char*>(bytes.data()), static_cast<uint32_t>(bytes.size()));
        benchmark::DoNotOptimize(document.GetDocumentElement());
    };
    for (auto _ : state) load();
    Report(state, MeasurePeak(load));
    state.counters["fi_MB"] = static_cast<double>(bytes.size()) / 1e6;
}
BENCHMARK(BM_LoadFastInfosetStream)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

// Only the destruction of a loaded tree.
void BM_DeleteTree(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto* document = new CXmlDocument;
        document->LoadXml(Document().c_str());
        state.ResumeTiming();
        delete document;
    }
    SetThroughput(state);
}
BENCHMARK(BM_DeleteTree)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

// Streaming: every element below the root is dropped once complete, so
// the tree never holds more than one record.
bool DropBelowRoot(CXmlElement*) { return true; }

void BM_LoadXmlCallbackDropping(benchmark::State& state) {
    const std::string& text = Document();
    auto load = [&text] {
        CXmlDocument document(DropBelowRoot);
        document.LoadXml(text.c_str());
        benchmark::DoNotOptimize(document.GetDocumentElement());
    };
    for (auto _ : state) load();
    Report(state, MeasurePeak(load));
}
BENCHMARK(BM_LoadXmlCallbackDropping)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

// Walks a loaded tree without recursion, as a consumer would.
void BM_WalkLoadedTree(benchmark::State& state) {
    CXmlDocument document;
    document.LoadXml(Document().c_str());
    for (auto _ : state) {
        std::size_t elements = 0;
        std::size_t textBytes = 0;
        std::vector<CXmlElement*> pending{document.GetDocumentElement()};
        while (!pending.empty()) {
            CXmlElement* element = pending.back();
            pending.pop_back();
            ++elements;
            textBytes += element->GetText().size();
            for (CXmlElement* child = element->GetFirstElement(); child; child = child->GetNextSiblingElement())
                pending.push_back(child);
        }
        benchmark::DoNotOptimize(elements);
        benchmark::DoNotOptimize(textBytes);
        state.counters["elements"] = static_cast<double>(elements);
    }
    SetThroughput(state);
}
BENCHMARK(BM_WalkLoadedTree)->Unit(benchmark::kMillisecond);

}  // namespace
