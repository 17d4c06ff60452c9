#include <benchmark/benchmark.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"

// What texts do all day, beside std::string doing the same on bytes. Arguments are sizes in bytes.

namespace {

std::string Ascii(std::size_t iSize) {
  std::string text(iSize, '\0');
  for (std::size_t index = 0; index < iSize; ++index) {
    text[index] = static_cast<char>('a' + index * 7 % 26);
  }
  return text;
}

std::string Cyrillic(std::size_t iSize) {
  std::string text;
  for (std::size_t index = 0; text.size() + 2 <= iSize; ++index) {
    text += KORUnicodeChar(static_cast<char32_t>(0x410 + index * 7 % 64)).ConvertToChar();
  }
  return text;
}

std::size_t Size(const benchmark::State& iState) {
  return static_cast<std::size_t>(iState.range(0));
}

template <class Text>
void Construct(benchmark::State& ioState) {
  const std::string content = Ascii(Size(ioState));
  for (auto _ : ioState) {
    benchmark::DoNotOptimize(Text(content.c_str()));
  }
}
BENCHMARK_TEMPLATE(Construct, KORUnicodeString)->Arg(8)->Arg(20)->Arg(100);
BENCHMARK_TEMPLATE(Construct, std::string)->Arg(8)->Arg(20)->Arg(100);

template <class Text>
void Copy(benchmark::State& ioState) {
  const Text text(Ascii(Size(ioState)));
  for (auto _ : ioState) {
    benchmark::DoNotOptimize(Text(text));
  }
}
BENCHMARK_TEMPLATE(Copy, KORUnicodeString)->Arg(8)->Arg(20)->Arg(100);
BENCHMARK_TEMPLATE(Copy, std::string)->Arg(8)->Arg(20)->Arg(100);

template <class Text>
void AppendBytes(benchmark::State& ioState) {
  for (auto _ : ioState) {
    Text text;
    for (std::int64_t index = 0; index < ioState.range(0); ++index) {
      text += 'x';
    }
    benchmark::DoNotOptimize(text);
  }
  ioState.SetItemsProcessed(ioState.iterations() * ioState.range(0));
}
BENCHMARK_TEMPLATE(AppendBytes, KORUnicodeString)->Arg(16)->Arg(4096);
BENCHMARK_TEMPLATE(AppendBytes, std::string)->Arg(16)->Arg(4096);

template <class Text>
void Sum(benchmark::State& ioState) {
  const Text text(Ascii(Size(ioState)));
  for (auto _ : ioState) {
    benchmark::DoNotOptimize("/" + text + "/");
  }
}
BENCHMARK_TEMPLATE(Sum, KORUnicodeString)->Arg(8)->Arg(100);
BENCHMARK_TEMPLATE(Sum, std::string)->Arg(8)->Arg(100);

void WalkByPosition(benchmark::State& ioState, const std::string& iContent) {
  const KORUnicodeString text(iContent);
  const int count = text.GetLengthInChar();
  for (auto _ : ioState) {
    for (int position = 0; position < count; ++position) {
      benchmark::DoNotOptimize(text[position]);
    }
  }
  ioState.SetItemsProcessed(ioState.iterations() * count);
}
BENCHMARK_CAPTURE(WalkByPosition, ascii_short, Ascii(20));
BENCHMARK_CAPTURE(WalkByPosition, ascii, Ascii(100'000));
BENCHMARK_CAPTURE(WalkByPosition, cyrillic, Cyrillic(100'000));

void Count(benchmark::State& ioState, const std::string& iContent) {
  KORUnicodeString text;
  for (auto _ : ioState) {
    text = iContent;
    benchmark::DoNotOptimize(text.GetLengthInChar());
  }
  ioState.SetBytesProcessed(ioState.iterations() * static_cast<std::int64_t>(iContent.size()));
}
BENCHMARK_CAPTURE(Count, ascii, Ascii(100'000));
BENCHMARK_CAPTURE(Count, cyrillic, Cyrillic(100'000));

void Compare(benchmark::State& ioState, const std::string& iContent) {
  const KORUnicodeString lower(iContent);
  const KORUnicodeString upper = KORUnicodeString(iContent).ToUpper();
  for (auto _ : ioState) {
    benchmark::DoNotOptimize(lower.Compare(upper));
  }
  ioState.SetBytesProcessed(ioState.iterations() * static_cast<std::int64_t>(iContent.size()));
}
BENCHMARK_CAPTURE(Compare, ascii_short, Ascii(12));
BENCHMARK_CAPTURE(Compare, ascii, Ascii(10'000));
BENCHMARK_CAPTURE(Compare, cyrillic, Cyrillic(10'000));

void ToUpper(benchmark::State& ioState, const std::string& iContent) {
  KORUnicodeString text(iContent);
  for (auto _ : ioState) {
    benchmark::DoNotOptimize(text.ToUpper());
    benchmark::ClobberMemory();
  }
  ioState.SetBytesProcessed(ioState.iterations() * static_cast<std::int64_t>(iContent.size()));
}
BENCHMARK_CAPTURE(ToUpper, ascii, Ascii(10'000));
BENCHMARK_CAPTURE(ToUpper, cyrillic, Cyrillic(10'000));

void ToUpperOfStdString(benchmark::State& ioState) {
  std::string text = Ascii(10'000);
  for (auto _ : ioState) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char iByte) { return static_cast<char>(std::toupper(iByte)); });
    benchmark::ClobberMemory();
  }
  ioState.SetBytesProcessed(ioState.iterations() * 10'000);
}
BENCHMARK(ToUpperOfStdString);

void Search(benchmark::State& ioState) {
  const KORUnicodeString text(Ascii(100'000) + "needle");
  for (auto _ : ioState) {
    benchmark::DoNotOptimize(text.SearchSubString("needle"));
  }
  ioState.SetBytesProcessed(ioState.iterations() * 100'000);
}
BENCHMARK(Search);

void SearchInStdString(benchmark::State& ioState) {
  const std::string text(Ascii(100'000) + "needle");
  for (auto _ : ioState) {
    benchmark::DoNotOptimize(text.find("needle"));
  }
  ioState.SetBytesProcessed(ioState.iterations() * 100'000);
}
BENCHMARK(SearchInStdString);

void ReplaceAll(benchmark::State& ioState) {
  const KORUnicodeString text(Ascii(100'000));
  for (auto _ : ioState) {
    KORUnicodeString replaced(text);
    benchmark::DoNotOptimize(replaced.ReplaceAll("ah", "--"));
  }
  ioState.SetBytesProcessed(ioState.iterations() * 100'000);
}
BENCHMARK(ReplaceAll);

void WildMatch(benchmark::State& ioState) {
  const KORUnicodeString name("a_file_name_of_common_length.txt");
  const KORUnicodeString pattern("*_name_*.txt");
  for (auto _ : ioState) {
    benchmark::DoNotOptimize(name.WildMatch(pattern, '*', '\\'));
  }
}
BENCHMARK(WildMatch);

}  // namespace

BENCHMARK_MAIN();
