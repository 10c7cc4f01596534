// PatternBench.cpp - pattern facet checks per second through TestRegEx.
//
// Every call rewrites and compiles the pattern again (no cache is kept), so
// for short values the figure is mostly PCRE2 compile time. The long-value
// cases show the JIT path: a repeated group over the whole value, and a
// pathological pattern that gives up at the scaled backtracking limit.
#include <benchmark/benchmark.h>

#include <string>

#include "kvxml/validation/RegEx.h"

namespace {

void BM_TestRegExMatching(benchmark::State& state) {
    const std::string pattern = "[0-9]{3}-[A-Z]{2}";
    const std::string value = "123-AB";
    for (auto _ : state) benchmark::DoNotOptimize(KvXmlLib10::TestRegEx(pattern, value));
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
}

// The name pattern, whose escapes are rewritten into groups before compiling.
void BM_TestRegExNameEscapes(benchmark::State& state) {
    const std::string pattern = "\\i\\c*";
    const std::string value = "xs:complexType";
    for (auto _ : state) benchmark::DoNotOptimize(KvXmlLib10::TestRegEx(pattern, value));
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
}

// \c* takes one backtracking level per character of the value.
void BM_TestRegExLongValue(benchmark::State& state) {
    const std::string value(static_cast<size_t>(state.range(0)), 'n');
    for (auto _ : state) benchmark::DoNotOptimize(KvXmlLib10::TestRegEx("\\c*", value));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}

// (a+)+b on a run of a's never matches; the work stops at the match limit.
void BM_TestRegExCatastrophic(benchmark::State& state) {
    const std::string value(static_cast<size_t>(state.range(0)), 'a');
    for (auto _ : state) benchmark::DoNotOptimize(KvXmlLib10::TestRegEx("(a+)+b", value));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}

}  // namespace

BENCHMARK(BM_TestRegExMatching);
BENCHMARK(BM_TestRegExNameEscapes);
BENCHMARK(BM_TestRegExLongValue)->Arg(200000)->Arg(10000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_TestRegExCatastrophic)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);
