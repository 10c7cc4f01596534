// ConversionsBench.cpp - values per second of the CConversions text forms, a million conversions each way.
//
// i4, r8, boolean, dateTime and decimal are parsed (under the Collapse rule,
// as element text is) and printed; each benchmark run converts one million
// values drawn from a fixed table, and items_per_second is the figure.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

#include "kvxml/values/Conversions.h"

using namespace KvXmlLib10;
using Rule = CWhitespaceUtils::WhitespaceRule;

namespace {

constexpr size_t kCount = 1000000;

const std::vector<std::string> kI4Texts = {"0",          "12",      "-2147483648", "2147483647", "42",
                                           " 100 ",      "-7",      "65536",       "123456789",  "-99"};
const std::vector<std::string> kR8Texts = {"0",      "1.5",     "-2.25e-3",    "3.141592653589793", "1e300",
                                           "INF",    "0.1",     "123456.789",  "-0",                "6.02214076e23"};
const std::vector<std::string> kBooleanTexts = {"true", "false", "1", "0", "TRUE", " false "};
const std::vector<std::string> kDateTimeTexts = {
    "2004-02-29T12:30:45Z",           "1999-12-31T23:59:59.999-05:00", "2023-07-14T08:00:00+02:00",
    "2010-01-01T00:00:00.5Z",         "1970-01-01T00:00:00",           "-0044-03-15T12:00:00Z",
    "2038-01-19T03:14:07.123456789Z", "2016-06-30T23:59:59.000001+14:00"};
const std::vector<std::string> kDecimalTexts = {"0",           "1.5",       "-0.25",          "123456789.123456789",
                                                "100",         "0.0001",    "-98765.4321",    "3.14159265358979",
                                                "42.000",      "999999999999999999.99"};

// Runs body(i) kCount times per benchmark iteration, i cycling the table.
template <typename Body>
void Run(benchmark::State& state, size_t tableSize, Body body) {
    for (auto _ : state) {
        for (size_t i = 0; i < kCount; ++i) body(i % tableSize);
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kCount));
}

void I4Parse(benchmark::State& state) {
    Run(state, kI4Texts.size(),
        [](size_t i) { benchmark::DoNotOptimize(CConversions::i4FromString(kI4Texts[i], Rule::Collapse)); });
}

void I4Print(benchmark::State& state) {
    std::vector<int32_t> values;
    for (const auto& text : kI4Texts) values.push_back(CConversions::i4FromString(text, Rule::Collapse));
    Run(state, values.size(), [&](size_t i) {
        std::string text = CConversions::i4ToString(values[i]);
        benchmark::DoNotOptimize(text);
    });
}

void R8Parse(benchmark::State& state) {
    Run(state, kR8Texts.size(),
        [](size_t i) { benchmark::DoNotOptimize(CConversions::r8FromString(kR8Texts[i], Rule::Collapse)); });
}

void R8Print(benchmark::State& state) {
    std::vector<double> values;
    for (const auto& text : kR8Texts) values.push_back(CConversions::r8FromString(text, Rule::Collapse));
    Run(state, values.size(), [&](size_t i) {
        std::string text = CConversions::r8ToString(values[i]);
        benchmark::DoNotOptimize(text);
    });
}

void BooleanParse(benchmark::State& state) {
    Run(state, kBooleanTexts.size(), [](size_t i) {
        benchmark::DoNotOptimize(CConversions::booleanFromString(kBooleanTexts[i], Rule::Collapse));
    });
}

void BooleanPrint(benchmark::State& state) {
    Run(state, 2, [](size_t i) {
        std::string text = CConversions::booleanToString(i == 0);
        benchmark::DoNotOptimize(text);
    });
}

void DateTimeParse(benchmark::State& state) {
    Run(state, kDateTimeTexts.size(), [](size_t i) {
        CDateTime value = CConversions::datetimeFromString(kDateTimeTexts[i], Rule::Collapse);
        benchmark::DoNotOptimize(value);
    });
}

void DateTimePrint(benchmark::State& state) {
    std::vector<CDateTime> values;
    for (const auto& text : kDateTimeTexts) values.push_back(CConversions::datetimeFromString(text, Rule::Collapse));
    Run(state, values.size(), [&](size_t i) {
        std::string text = CConversions::datetimeToString(values[i]);
        benchmark::DoNotOptimize(text);
    });
}

void DecimalParse(benchmark::State& state) {
    Run(state, kDecimalTexts.size(), [](size_t i) {
        CDecimal value = CConversions::decimalFromString(kDecimalTexts[i], Rule::Collapse);
        benchmark::DoNotOptimize(value);
    });
}

void DecimalPrint(benchmark::State& state) {
    std::vector<CDecimal> values;
    for (const auto& text : kDecimalTexts) values.push_back(CConversions::decimalFromString(text, Rule::Collapse));
    Run(state, values.size(), [&](size_t i) {
        std::string text = CConversions::decimalToString(values[i]);
        benchmark::DoNotOptimize(text);
    });
}

}  // namespace

BENCHMARK(I4Parse)->Unit(benchmark::kMillisecond);
BENCHMARK(I4Print)->Unit(benchmark::kMillisecond);
BENCHMARK(R8Parse)->Unit(benchmark::kMillisecond);
BENCHMARK(R8Print)->Unit(benchmark::kMillisecond);
BENCHMARK(BooleanParse)->Unit(benchmark::kMillisecond);
BENCHMARK(BooleanPrint)->Unit(benchmark::kMillisecond);
BENCHMARK(DateTimeParse)->Unit(benchmark::kMillisecond);
BENCHMARK(DateTimePrint)->Unit(benchmark::kMillisecond);
BENCHMARK(DecimalParse)->Unit(benchmark::kMillisecond);
BENCHMARK(DecimalPrint)->Unit(benchmark::kMillisecond);
