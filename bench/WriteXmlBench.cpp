// WriteXmlBench.cpp - throughput of the XML text writer on a large namespaced document.
//
// One million elements with attributes (one namespaced, some needing
// escaping), text and a few invented prefixes go through CXmlTextWriter
// into a CTextStream, and the whole text is taken out with GetText.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "kvxml/output/Encoder.h"
#include "kvxml/output/TextStream.h"
#include "kvxml/output/XmlTextWriter.h"

using namespace KvXmlLib10;

namespace {

const std::string kDefault = "urn:example:orders";
const std::string kLines = "urn:example:order-lines";
const std::string kExtra = "urn:example:extensions";
const std::string kTypes = "urn:example:types";
const std::string kXsi = "http://www.w3.org/2001/XMLSchema-instance";

// Values cycled through so that building them stays out of the measurement.
struct Values {
    Values() {
        for (int i = 0; i < kCount; ++i) {
            const std::string n = std::to_string(100000 + i * 7);
            ids.push_back(n);
            names.push_back("Item " + n + " & \"co\"");
            codes.push_back("ABC-" + n);
            texts.push_back("Some text for item " + n + " <ok>\nsecond line");
        }
    }
    static constexpr int kCount = 1024;
    std::vector<std::string> ids, names, codes, texts;
};

std::string WriteDocument(int64_t elements, const Values& values) {
    static const std::string item = "item", orders = "orders", id = "id", name = "name", code = "code",
                             none;
    const std::string* uris[3] = {&kDefault, &kLines, &kExtra};
    CTextStream stream(Encoding_UTF8);
    CXmlTextWriter writer(stream);
    writer.Open();
    writer.WriteStartDocument();
    writer.SetDefaultNamespace(kDefault);
    writer.AddNamespace("l", kLines);
    writer.AddNamespace("x", kExtra);
    writer.AddNamespace("xsi", kXsi);
    writer.WriteStartElement(orders, kDefault);
    for (int64_t i = 0; i < elements; ++i) {
        const size_t v = static_cast<size_t>(i % Values::kCount);
        writer.WriteStartElement(item, *uris[i % 3]);
        writer.WriteAttributeString(id, none, values.ids[v], ItemType::i4);
        writer.WriteAttributeString(name, none, values.names[v], ItemType::string);
        writer.WriteAttributeString(code, kExtra, values.codes[v], ItemType::string);
        // Now and then a type from an unannounced namespace: an invented
        // prefix and a scope of the element's own.
        if (i % 100 == 0) writer.WriteAttributeType(kTypes, "SpecialItem", ItemType::string);
        writer.WriteString(values.texts[v], ItemType::string);
        writer.WriteEndElement();
    }
    writer.WriteEndElement();
    writer.Close();
    return stream.GetText();
}

void BM_WriteLargeDocument(benchmark::State& state) {
    const Values values;
    int64_t bytes = 0;
    size_t documentSize = 0;
    for (auto _ : state) {
        std::string text = WriteDocument(state.range(0), values);
        documentSize = text.size();
        bytes += static_cast<int64_t>(text.size());
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(bytes);
    state.counters["document_MB"] = static_cast<double>(documentSize) / 1e6;
}
BENCHMARK(BM_WriteLargeDocument)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();

// The same text encoded for a UTF-8 stream (ASCII: the pass-through path).
void BM_EncodeLargeDocumentUtf8(benchmark::State& state) {
    const Values values;
    CTextStream stream(WriteDocument(state.range(0), values), Encoding_UTF8);
    int64_t bytes = 0;
    for (auto _ : state) {
        CBinaryData data = stream.GetEncodedStream();
        bytes += data.GetLength();
        benchmark::DoNotOptimize(data.GetData());
    }
    state.SetBytesProcessed(bytes);
}
BENCHMARK(BM_EncodeLargeDocumentUtf8)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
