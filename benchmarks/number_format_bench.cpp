// Which function writes doubles with 17 significant digits, as %.17g would.

#include <benchmark/benchmark.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <locale>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kCount = 4096;

enum class Numbers { RandomBits, SmallIntegers, Thousandths };

std::vector<double> Sample(Numbers iNumbers) {
  std::mt19937_64 random(3);
  std::vector<double> sample;
  while (sample.size() < kCount) {
    const std::uint64_t bits = random();
    const double any = std::bit_cast<double>(bits);
    if (iNumbers == Numbers::SmallIntegers) {
      sample.push_back(static_cast<double>(bits % 100000));
    } else if (iNumbers == Numbers::Thousandths) {
      sample.push_back(static_cast<double>(bits % 100000000) / 1000);
    } else if (std::isfinite(any)) {
      sample.push_back(any);
    }
  }
  return sample;
}

std::size_t ByToChars(double iNumber, std::string& ioText) {
  char buffer[32];
  char* const end = std::to_chars(buffer, buffer + sizeof buffer, iNumber, std::chars_format::general, 17).ptr;
  ioText.append(buffer, end);
  return ioText.size();
}

// Integers that 17 digits write without an exponent take the short cut of the integer writer.
std::size_t ByToCharsWithShortCut(double iNumber, std::string& ioText) {
  if (std::fabs(iNumber) < 1e15 && std::trunc(iNumber) == iNumber && !(iNumber == 0 && std::signbit(iNumber))) {
    char buffer[32];
    char* const end = std::to_chars(buffer, buffer + sizeof buffer, static_cast<std::int64_t>(iNumber)).ptr;
    ioText.append(buffer, end);
    return ioText.size();
  }
  return ByToChars(iNumber, ioText);
}

std::size_t BySnprintf(double iNumber, std::string& ioText) {
  char buffer[40];
  const int length = std::snprintf(buffer, sizeof buffer, "%.17g", iNumber);
  ioText.append(buffer, static_cast<std::size_t>(length));
  return ioText.size();
}

std::size_t ByNewStream(double iNumber, std::string& ioText) {
  std::ostringstream stream;
  stream.imbue(std::locale::classic());
  stream.precision(17);
  stream << iNumber;
  ioText.append(stream.str());
  return ioText.size();
}

std::size_t ByReusedStream(double iNumber, std::string& ioText) {
  static std::ostringstream stream = [] {
    std::ostringstream made;
    made.imbue(std::locale::classic());
    made.precision(17);
    return made;
  }();
  stream.str({});
  stream << iNumber;
  ioText.append(stream.view());
  return ioText.size();
}

template <std::size_t (*kWrite)(double, std::string&), Numbers kNumbers>
void Format(benchmark::State& ioState) {
  const std::vector<double> sample = Sample(kNumbers);
  std::string expected;
  std::string text;
  for (const double number : sample) {
    BySnprintf(number, expected);
    kWrite(number, text);
  }
  if (text != expected) {
    ioState.SkipWithError("the text differs from that of %.17g");
  }
  for ([[maybe_unused]] auto round : ioState) {
    text.clear();
    for (const double number : sample) {
      benchmark::DoNotOptimize(kWrite(number, text));
    }
  }
  ioState.counters["per_number"] =
      benchmark::Counter(kCount, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

}  // namespace

#define FORMAT_BENCHMARKS(Write)                             \
  BENCHMARK_TEMPLATE(Format, Write, Numbers::RandomBits);    \
  BENCHMARK_TEMPLATE(Format, Write, Numbers::SmallIntegers); \
  BENCHMARK_TEMPLATE(Format, Write, Numbers::Thousandths)

FORMAT_BENCHMARKS(ByToChars);
FORMAT_BENCHMARKS(ByToCharsWithShortCut);
FORMAT_BENCHMARKS(BySnprintf);
FORMAT_BENCHMARKS(ByNewStream);
FORMAT_BENCHMARKS(ByReusedStream);

BENCHMARK_MAIN();
