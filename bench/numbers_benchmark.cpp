// Speed of the QQ operations on the converter's hot path: numbers read from the input
// (conversion from dbl_t), comparisons and subtractions of coefficients, and writing.

#include <benchmark/benchmark.h>

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

}  // namespace
}  // namespace lpconv
