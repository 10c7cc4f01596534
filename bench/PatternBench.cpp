// PatternBench.cpp - pattern facet checks per second through TestRegEx.
//
// Every call rewrites and compiles the pattern again (no cache is kept), so
// the figure is mostly PCRE2 compile time; the match itself is a few
// characters long.
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

}  // namespace

BENCHMARK(BM_TestRegExMatching);
BENCHMARK(BM_TestRegExNameEscapes);
