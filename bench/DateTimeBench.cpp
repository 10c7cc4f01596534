// DateTimeBench.cpp - parse and print throughput of dates with zones and of durations.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "kvxml/values/DateTime.h"
#include "kvxml/values/DateTimeSpan.h"

using namespace KvXmlLib10;

namespace {

const std::vector<std::string>& DateTexts() {
    static const std::vector<std::string> texts = {
        "2004-02-29T12:30:45Z",          "1999-12-31T23:59:59.999-05:00", "2023-07-14T08:00:00+02:00",
        "2010-01-01T00:00:00.5Z",        "1970-01-01T00:00:00",           "2004-02-29",
        "2001-05-17+09:30",              "-0044-03-15Z",                  "2038-01-19T03:14:07.123456789Z",
        "2016-06-30T23:59:59.000001+14:00"};
    return texts;
}

const std::vector<std::string>& DurationTexts() {
    static const std::vector<std::string> texts = {"P1Y2M3DT4H5M6.5S", "PT90M",  "-P1D",      "PT0.000001S",
                                                   "P30D",              "PT36H", "P1Y",       "PT1H30M15.25S",
                                                   "-P2Y6M",            "P400DT12H"};
    return texts;
}

// One parse and one print per iteration, values cycling through the table.
void DateParsePrint(benchmark::State& state) {
    const auto& texts = DateTexts();
    size_t i = 0;
    CDateTime value;
    for (auto _ : state) {
        const std::string& text = texts[i++ % texts.size()];
        if (text.find('T') != std::string::npos)
            value.ParseXSDDateTime(text.c_str());
        else
            value.ParseXSDDate(text.c_str());
        std::string printed = value.ToString();
        benchmark::DoNotOptimize(printed);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(DateParsePrint);

void DateParse(benchmark::State& state) {
    const auto& texts = DateTexts();
    size_t i = 0;
    CDateTime value;
    for (auto _ : state) {
        const std::string& text = texts[i++ % texts.size()];
        if (text.find('T') != std::string::npos)
            value.ParseXSDDateTime(text.c_str());
        else
            value.ParseXSDDate(text.c_str());
        benchmark::DoNotOptimize(value);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(DateParse);

void DatePrint(benchmark::State& state) {
    std::vector<CDateTime> values;
    for (const auto& text : DateTexts()) {
        CDateTime value;
        if (text.find('T') != std::string::npos)
            value.ParseXSDDateTime(text.c_str());
        else
            value.ParseXSDDate(text.c_str());
        values.push_back(value);
    }
    size_t i = 0;
    for (auto _ : state) {
        std::string printed = values[i++ % values.size()].ToString();
        benchmark::DoNotOptimize(printed);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(DatePrint);

void DurationParsePrint(benchmark::State& state) {
    const auto& texts = DurationTexts();
    size_t i = 0;
    CDateTimeSpan span;
    for (auto _ : state) {
        span.ParseXSDDuration(texts[i++ % texts.size()].c_str());
        std::string printed = span.ToString();
        benchmark::DoNotOptimize(printed);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(DurationParsePrint);

void DateCompareAndAdd(benchmark::State& state) {
    CDateTime a("2004-02-29T12:30:45+05:00");
    CDateTime b("2004-02-29T07:30:45Z");
    CDateTimeSpan span(1, 13, 40, 30, 100, 7);
    for (auto _ : state) {
        benchmark::DoNotOptimize(a.CompareTo(b));
        benchmark::DoNotOptimize(a + span);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(DateCompareAndAdd);

}  // namespace
