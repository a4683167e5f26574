// Speed of the QQ operations on the converter's hot path: numbers read from the input
// (conversion from dbl_t), comparisons and subtractions of coefficients, and writing; and the
// cost of making, copying and destroying the values a vector holds, with the heap they take.

#include <benchmark/benchmark.h>
#include <gmp.h>

#include <cstddef>
#include <cstdlib>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <lpconv/numbers/qq.h>
#include <lpconv/util/full_precision.h>

namespace lpconv {
namespace {

constexpr std::size_t kCount = 4096;

// Every limb block GMP takes from the heap, counted through its memory functions (the only heap
// a QQ uses besides its own 80 bytes).
struct HeapCount {
  std::size_t blocks = 0;
  std::size_t bytes = 0;
};
HeapCount heapCount;
void* (*gmpAllocate)(std::size_t);
void* (*gmpReallocate)(void*, std::size_t, std::size_t);
void (*gmpFree)(void*, std::size_t);

void* countedAllocate(std::size_t n) {
  ++heapCount.blocks;
  heapCount.bytes += n;
  return gmpAllocate(n);
}
void* countedReallocate(void* p, std::size_t oldSize, std::size_t newSize) {
  heapCount.bytes += newSize - oldSize;
  return gmpReallocate(p, oldSize, newSize);
}

[[maybe_unused]] const bool kCounting = [] {
  mp_get_memory_functions(&gmpAllocate, &gmpReallocate, &gmpFree);
  mp_set_memory_functions(countedAllocate, countedReallocate, gmpFree);
  return true;
}();

// Blocks and bytes taken per QQ while `make` builds `count` of them.
template <typename Make>
void reportHeapPerValue(benchmark::State& state, std::size_t count, Make make) {
  const HeapCount before = heapCount;
  make();
  state.counters["heap_blocks_per_QQ"] =
      static_cast<double>(heapCount.blocks - before.blocks) / static_cast<double>(count);
  state.counters["heap_bytes_per_QQ"] =
      static_cast<double>(heapCount.bytes - before.bytes) / static_cast<double>(count);
}

// Coefficients as an LP file holds them: mostly short decimals, some integers, a few long ones.
std::vector<dbl_t> inputNumbers() {
  std::mt19937_64 engine(7);
  std::vector<dbl_t> values;
  values.reserve(kCount);
  for (std::size_t i = 0; i < kCount; ++i) {
    std::string text;
    switch (engine() % 4) {
      case 0:
        text = std::to_string(engine() % 1000);
        break;
      case 1:
        text = std::to_string(engine() % 100) + "." + std::to_string(engine() % 100);
        break;
      case 2:
        text = "0." + std::to_string(engine() % 1000000);
        break;
      default:
        text = std::to_string(engine() % 100000) + "." + std::to_string(engine() % 10000) + "e" +
               std::to_string(static_cast<int>(engine() % 12) - 6);
        break;
    }
    if (engine() % 2 == 0) text = "-" + text;
    values.push_back(std::strtod(text.c_str(), nullptr));
  }
  return values;
}

std::vector<QQ> coefficients() {
  std::vector<QQ> result;
  for (const dbl_t v : inputNumbers()) result.push_back(fromDbl(v));
  return result;
}

std::vector<QQ> smallFractions() {
  std::mt19937_64 engine(8);
  std::vector<QQ> result;
  for (std::size_t i = 0; i < kCount; ++i) {
    result.emplace_back(static_cast<long>(engine() % 2001) - 1000,
                        static_cast<long>(engine() % 12) + 1);
  }
  return result;
}

void BM_FromDbl(benchmark::State& state) {
  const std::vector<dbl_t> values = inputNumbers();
  std::size_t i = 0;
  for (auto _ : state) {
    QQ q = fromDbl(values[i++ % kCount]);
    benchmark::DoNotOptimize(q);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_FromDbl);

void BM_FromDblWholeNumbers(benchmark::State& state) {
  std::vector<dbl_t> values;
  for (std::size_t i = 0; i < kCount; ++i) values.push_back(static_cast<dbl_t>(i * 37 % 1000));
  std::size_t i = 0;
  for (auto _ : state) {
    QQ q = fromDbl(values[i++ % kCount]);
    benchmark::DoNotOptimize(q);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_FromDblWholeNumbers);

// The route fromDbl must agree with, for scale.
void BM_FromDblThroughStream(benchmark::State& state) {
  const std::vector<dbl_t> values = inputNumbers();
  std::size_t i = 0;
  for (auto _ : state) {
    std::ostringstream out;
    setFullPrecision(out);
    out << values[i++ % kCount];
    QQ q(out.str());
    benchmark::DoNotOptimize(q);
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_FromDblThroughStream);

void BM_CompareCoefficients(benchmark::State& state) {
  const std::vector<QQ> values = coefficients();
  std::size_t i = 0;
  for (auto _ : state) {
    const std::int64_t c = compare(values[i % kCount], values[(i + 1) % kCount]);
    benchmark::DoNotOptimize(c);
    ++i;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_CompareCoefficients);

void BM_CompareEqualIntegers(benchmark::State& state) {
  const QQ a(123456);
  const QQ b(123456);
  for (auto _ : state) {
    benchmark::DoNotOptimize(compare(a, b));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_CompareEqualIntegers);

void BM_SubtractCoefficients(benchmark::State& state) {
  const std::vector<QQ> values = coefficients();
  QQ r;
  std::size_t i = 0;
  for (auto _ : state) {
    sub(r, values[i % kCount], values[(i + 1) % kCount]);
    benchmark::DoNotOptimize(r);
    ++i;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SubtractCoefficients);

void BM_SubtractSmallFractions(benchmark::State& state) {
  const std::vector<QQ> values = smallFractions();
  QQ r;
  std::size_t i = 0;
  for (auto _ : state) {
    sub(r, values[i % kCount], values[(i + 1) % kCount]);
    benchmark::DoNotOptimize(r);
    ++i;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SubtractSmallFractions);

void BM_SubtractOperatorIntoNewValue(benchmark::State& state) {
  const std::vector<QQ> values = smallFractions();
  std::size_t i = 0;
  for (auto _ : state) {
    QQ r = values[i % kCount] - values[(i + 1) % kCount];
    benchmark::DoNotOptimize(r);
    ++i;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SubtractOperatorIntoNewValue);

void BM_MultiplySmallFractions(benchmark::State& state) {
  const std::vector<QQ> values = smallFractions();
  QQ r;
  std::size_t i = 0;
  for (auto _ : state) {
    mul(r, values[i % kCount], values[(i + 1) % kCount]);
    benchmark::DoNotOptimize(r);
    ++i;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_MultiplySmallFractions);

void BM_AppendText(benchmark::State& state) {
  const std::vector<QQ> values = coefficients();
  std::string out;
  std::size_t i = 0;
  for (auto _ : state) {
    if (out.size() > (1u << 20)) out.clear();
    appendText(out, values[i++ % kCount]);
    out.push_back(',');
  }
  benchmark::DoNotOptimize(out);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_AppendText);

constexpr std::size_t kMillion = 1000000;

// Builds and destroys a million values in storage reserved once, as a vector reader fills them;
// the heap counters are those of one filling.
template <typename Make>
void constructAndDestroy(benchmark::State& state, Make make) {
  std::vector<QQ> values;
  values.reserve(kMillion);
  reportHeapPerValue(state, kMillion, [&] {
    for (std::size_t i = 0; i < kMillion; ++i) values.push_back(make());
  });
  values.clear();
  for (auto _ : state) {
    for (std::size_t i = 0; i < kMillion; ++i) values.push_back(make());
    benchmark::DoNotOptimize(values.data());
    values.clear();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kMillion));
}

void BM_ConstructDestroyDefault(benchmark::State& state) {
  constructAndDestroy(state, [] { return QQ(); });
}
BENCHMARK(BM_ConstructDestroyDefault)->Unit(benchmark::kMillisecond);

void BM_ConstructDestroyZero(benchmark::State& state) {
  constructAndDestroy(state, [] { return QQ(0L); });
}
BENCHMARK(BM_ConstructDestroyZero)->Unit(benchmark::kMillisecond);

void BM_ConstructDestroy42(benchmark::State& state) {
  constructAndDestroy(state, [] { return QQ(42L); });
}
BENCHMARK(BM_ConstructDestroy42)->Unit(benchmark::kMillisecond);

void BM_ConstructDestroyInfinity(benchmark::State& state) {
  constructAndDestroy(state, [] { return QQ(true); });
}
BENCHMARK(BM_ConstructDestroyInfinity)->Unit(benchmark::kMillisecond);

// Copies a million values of one kind into reserved storage and destroys the copies.
void copyMillion(benchmark::State& state, const QQ& value) {
  const std::vector<QQ> source(kMillion, value);
  std::vector<QQ> copies;
  copies.reserve(kMillion);
  reportHeapPerValue(state, kMillion, [&] { copies.assign(source.begin(), source.end()); });
  copies.clear();
  for (auto _ : state) {
    copies.insert(copies.end(), source.begin(), source.end());
    benchmark::DoNotOptimize(copies.data());
    copies.clear();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kMillion));
}

void BM_CopyZero(benchmark::State& state) { copyMillion(state, QQ(0L)); }
BENCHMARK(BM_CopyZero)->Unit(benchmark::kMillisecond);

void BM_Copy42(benchmark::State& state) { copyMillion(state, QQ(42L)); }
BENCHMARK(BM_Copy42)->Unit(benchmark::kMillisecond);

void BM_CopyHalf(benchmark::State& state) { copyMillion(state, QQ(1L, 2L)); }
BENCHMARK(BM_CopyHalf)->Unit(benchmark::kMillisecond);

// A million integers and fractions through the text parser, as a reader meets them.
void BM_ParseMillion(benchmark::State& state) {
  const char* const texts[] = {"0", "42", "-7", "1", "3:1/2", "1/3", "inf", "12.5"};
  std::vector<QQ> values;
  values.reserve(kMillion);
  reportHeapPerValue(state, kMillion, [&] {
    for (std::size_t i = 0; i < kMillion; ++i) values.emplace_back(texts[i % 8]);
  });
  values.clear();
  for (auto _ : state) {
    for (std::size_t i = 0; i < kMillion; ++i) values.emplace_back(texts[i % 8]);
    benchmark::DoNotOptimize(values.data());
    values.clear();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kMillion));
}
BENCHMARK(BM_ParseMillion)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lpconv
