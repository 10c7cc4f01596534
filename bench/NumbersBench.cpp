// NumbersBench.cpp - throughput of CDecimal and CBigInteger text forms and arithmetic.
//
// Typical values (decimals of up to 18 significant digits, integers of up
// to 30 digits) are parsed and printed a million at a time; big-number
// parse and print run at two sizes so their linear growth shows in one run.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "kvxml/values/BigInteger.h"
#include "kvxml/values/Decimal.h"

using KvXmlLib10::CBigInteger;
using KvXmlLib10::CDecimal;

namespace {

constexpr size_t kTypicalCount = 1000000;

class Generator {
public:
    explicit Generator(uint64_t seed) : m_state(seed) {}
    uint32_t Next(uint32_t bound) {
        m_state = m_state * 6364136223846793005ull + 1442695040888963407ull;
        return static_cast<uint32_t>((m_state >> 33) % bound);
    }
    std::string DigitString(size_t length, bool leadingNonZero) {
        std::string text;
        for (size_t i = 0; i < length; ++i) {
            char digit = static_cast<char>('0' + Next(10));
            if (i == 0 && leadingNonZero && digit == '0') digit = '1';
            text.push_back(digit);
        }
        return text;
    }

private:
    uint64_t m_state;
};

const std::vector<std::string>& TypicalDecimals() {
    static const std::vector<std::string> values = [] {
        Generator gen(20240601);
        std::vector<std::string> out;
        out.reserve(kTypicalCount);
        for (size_t i = 0; i < kTypicalCount; ++i) {
            const size_t significant = 1 + gen.Next(18);
            const size_t fraction = gen.Next(static_cast<uint32_t>(std::min<size_t>(significant, 8)) + 1);
            std::string digits = gen.DigitString(significant, true);
            std::string text = gen.Next(4) == 0 ? "-" : "";
            if (fraction == significant) {
                text += "0." + digits;
            } else {
                text += digits.substr(0, significant - fraction);
                if (fraction > 0) text += "." + digits.substr(significant - fraction);
            }
            out.push_back(std::move(text));
        }
        return out;
    }();
    return values;
}

const std::vector<std::string>& TypicalIntegers() {
    static const std::vector<std::string> values = [] {
        Generator gen(77);
        std::vector<std::string> out;
        out.reserve(kTypicalCount);
        for (size_t i = 0; i < kTypicalCount; ++i) {
            std::string text = gen.Next(4) == 0 ? "-" : "";
            out.push_back(text + gen.DigitString(1 + gen.Next(30), true));
        }
        return out;
    }();
    return values;
}

void BM_DecimalParsePrint(benchmark::State& state) {
    const auto& values = TypicalDecimals();
    for (auto _ : state) {
        for (const std::string& text : values) {
            CDecimal value(text.c_str());
            std::string printed = value.ToString();
            benchmark::DoNotOptimize(printed.data());
        }
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * values.size()));
}
BENCHMARK(BM_DecimalParsePrint)->Unit(benchmark::kMillisecond);

void BM_DecimalParse(benchmark::State& state) {
    const auto& values = TypicalDecimals();
    for (auto _ : state) {
        for (const std::string& text : values) {
            CDecimal value(text.c_str());
            benchmark::DoNotOptimize(&value);
        }
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * values.size()));
}
BENCHMARK(BM_DecimalParse)->Unit(benchmark::kMillisecond);

void BM_DecimalPrint(benchmark::State& state) {
    const auto& texts = TypicalDecimals();
    std::vector<CDecimal> values;
    for (size_t i = 0; i < 100000; ++i) values.emplace_back(texts[i].c_str());
    for (auto _ : state) {
        for (const CDecimal& value : values) {
            std::string printed = value.ToString();
            benchmark::DoNotOptimize(printed.data());
        }
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * values.size()));
}
BENCHMARK(BM_DecimalPrint)->Unit(benchmark::kMillisecond);

void BM_BigIntegerParsePrint(benchmark::State& state) {
    const auto& values = TypicalIntegers();
    for (auto _ : state) {
        for (const std::string& text : values) {
            CBigInteger value(text.c_str());
            std::string printed = value.ToString();
            benchmark::DoNotOptimize(printed.data());
        }
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * values.size()));
}
BENCHMARK(BM_BigIntegerParsePrint)->Unit(benchmark::kMillisecond);

void BM_BigIntegerMultiply(benchmark::State& state) {
    Generator gen(5);
    const CBigInteger a(gen.DigitString(static_cast<size_t>(state.range(0)), true).c_str());
    const CBigInteger b(gen.DigitString(static_cast<size_t>(state.range(0)), true).c_str());
    for (auto _ : state) {
        CBigInteger product = a * b;
        benchmark::DoNotOptimize(&product);
    }
}
BENCHMARK(BM_BigIntegerMultiply)->Arg(2000)->Unit(benchmark::kMicrosecond);

// The dividend is the product of two n-digit numbers, so the quotient has
// n digits (dividing two n-digit numbers has a one-digit quotient).
void BM_BigIntegerDivide(benchmark::State& state) {
    Generator gen(6);
    const CBigInteger b(gen.DigitString(static_cast<size_t>(state.range(0)), true).c_str());
    const CBigInteger a = CBigInteger(gen.DigitString(static_cast<size_t>(state.range(0)), true).c_str()) * b +
                          CBigInteger(12345);
    for (auto _ : state) {
        CBigInteger quotient = a / b;
        benchmark::DoNotOptimize(&quotient);
    }
}
BENCHMARK(BM_BigIntegerDivide)->Arg(2000)->Unit(benchmark::kMicrosecond);

void BM_BigIntegerDivideSameSize(benchmark::State& state) {
    Generator gen(7);
    const CBigInteger a(gen.DigitString(static_cast<size_t>(state.range(0)), true).c_str());
    const CBigInteger b(gen.DigitString(static_cast<size_t>(state.range(0)), true).c_str());
    for (auto _ : state) {
        CBigInteger quotient = a / b;
        benchmark::DoNotOptimize(&quotient);
    }
}
BENCHMARK(BM_BigIntegerDivideSameSize)->Arg(2000)->Unit(benchmark::kMicrosecond);

void BM_BigIntegerParseLong(benchmark::State& state) {
    Generator gen(8);
    const std::string text = gen.DigitString(static_cast<size_t>(state.range(0)), true);
    for (auto _ : state) {
        CBigInteger value(text.c_str());
        benchmark::DoNotOptimize(&value);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_BigIntegerParseLong)->Arg(50000)->Arg(100000)->Unit(benchmark::kMicrosecond);

void BM_BigIntegerPrintLong(benchmark::State& state) {
    Generator gen(9);
    const CBigInteger value(gen.DigitString(static_cast<size_t>(state.range(0)), true).c_str());
    for (auto _ : state) {
        std::string printed = value.ToString();
        benchmark::DoNotOptimize(printed.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * state.range(0)));
}
BENCHMARK(BM_BigIntegerPrintLong)->Arg(50000)->Arg(100000)->Unit(benchmark::kMicrosecond);

}  // namespace
