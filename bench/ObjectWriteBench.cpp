// ObjectWriteBench.cpp - an object's ToXmlStream, plain and compressed, and inflating it again.
#include <benchmark/benchmark.h>

#include <cstring>
#include <string>

#include <kvxml/kvxml.h>

using namespace KvXmlLib10;

namespace {

// Writes `count` purchase-order items the way a generated class would.
class ItemBatch : public CXmlObjectBase {
public:
    explicit ItemBatch(int count) : m_count(count) { SetElementName("items"); }
    CXmlObjectBase* GetBase() override { return this; }
    std::string GetTargetNamespace() const override { return "urn:example:bench:po"; }
    std::string GetNamespace() const override { return "urn:example:bench:po"; }

protected:
    void ToXml_Int(CXmlWriter* writer, bool, const char* ns, const CXmlSerializationContext&, bool) const override {
        writer->AddNamespace("po", ns);
        writer->WriteStartElement("items", ns);
        char number[32];
        for (int i = 0; i < m_count; ++i) {
            std::snprintf(number, sizeof number, "%d-AA", i % 1000);
            writer->WriteStartElement("item", ns);
            writer->WriteAttributeString("partNum", "", number, KvXmlLib10::string);
            writer->WriteStartElement("productName", ns);
            writer->WriteString("Nuts & Bolts (assorted)", KvXmlLib10::string);
            writer->WriteEndElement();
            writer->WriteStartElement("quantity", ns);
            writer->WriteString(number, ui4);
            writer->WriteEndElement();
            writer->WriteStartElement("USPrice", ns);
            writer->WriteString("148.95", decimal);
            writer->WriteEndElement();
            writer->WriteEndElement();
        }
        writer->WriteEndElement();
    }
    CXmlElement* FromXml_Int(CXmlElement*, CXmlElement* c, const CXmlSerializationContext&, bool) override {
        return c;
    }

private:
    int m_count;
};

// About 50 MB of UTF-8 text.
constexpr int kItems = 380000;

void ToXmlStreamBench(benchmark::State& state) {
    ItemBatch batch(kItems);
    auto compression = static_cast<CompressionType>(state.range(0));
    uint64_t plainBytes = 0;
    for (auto _ : state) {
        CBinaryData data = batch.ToXmlStream(true, true, Encoding_UTF8, EOL_LF,
                                             CXmlSerializationContext::m_defaultContext, compression);
        benchmark::DoNotOptimize(data.GetData());
        if (compression == Compression_None) plainBytes = data.GetLength();
        state.counters["output_MB"] = data.GetLength() / 1e6;
    }
    if (plainBytes == 0) plainBytes = batch.ToXmlStream().GetLength();
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * plainBytes));
}
BENCHMARK(ToXmlStreamBench)->Arg(Compression_None)->Arg(Compression_GZip)->Arg(Compression_Zlib)
    ->Unit(benchmark::kMillisecond)->Iterations(3);

void DecompressGzipBench(benchmark::State& state) {
    ItemBatch batch(kItems);
    CBinaryData packed = batch.ToXmlStream(true, true, Encoding_UTF8, EOL_LF,
                                           CXmlSerializationContext::m_defaultContext, Compression_GZip);
    uint64_t inflatedBytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        uint32_t length = packed.GetLength();
        unsigned char* bytes = new unsigned char[length];
        std::memcpy(bytes, packed.GetData(), length);
        state.ResumeTiming();
        CKvZip::Decompress(&bytes, &length);
        inflatedBytes = length;
        delete[] bytes;
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * inflatedBytes));
}
BENCHMARK(DecompressGzipBench)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
