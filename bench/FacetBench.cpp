// FacetBench.cpp - facet checks per second: an i4 against two bounds, a string against a pattern.
//
// Bounds are parsed again and patterns compiled again on every check (no
// cache), so the pattern figure is mostly the cost of compiling
// "[0-9]{3}-[A-Z]{2}"; items_per_second is the figure for both.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "kvxml/core/XmlObjectHelper.h"
#include "kvxml/validation/PrimitiveRestrictions.h"

using namespace KvXmlLib10;

namespace {

void BM_CheckI4TwoBounds(benchmark::State& state) {
    const CPrimitiveRestrictions r(nullptr, -1, -1, "-1000", "1000", nullptr, nullptr, -1);
    int32_t value = -1000;
    for (auto _ : state) {
        CXmlObjectHelper::CheckRestrictionFori4("age", value, r);
        value = value == 1000 ? -1000 : value + 1;
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
}
BENCHMARK(BM_CheckI4TwoBounds);

void BM_CheckStringPattern(benchmark::State& state) {
    const CPrimitiveRestrictions r("[0-9]{3}-[A-Z]{2}", -1, -1, nullptr, nullptr, nullptr, nullptr, -1);
    const std::string values[] = {"123-AB", "907-ZX", "555-QQ", "000-AA"};
    size_t i = 0;
    for (auto _ : state) {
        CXmlObjectHelper::CheckRestrictionForstring("code", values[i], r);
        i = (i + 1) % 4;
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
}
BENCHMARK(BM_CheckStringPattern);

}  // namespace
