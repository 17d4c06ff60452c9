// What the property tree costs: whole documents (VYX_BENCH_DATA names a folder of *.json files), and single keys.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXPropertyTree.h"

namespace {

using benchmark::State;

std::vector<KORUnicodeString> ShuffledKeys(std::int64_t iCount) {
  std::vector<KORUnicodeString> keys;
  for (std::int64_t index = 0; index < iCount; ++index) {
    keys.emplace_back(std::string_view("key" + std::to_string(index * 7919 % 1'000'003)));
  }
  std::shuffle(keys.begin(), keys.end(), std::mt19937(1));
  return keys;
}

VYXPropertyTree TreeOf(const std::vector<KORUnicodeString>& iKeys) {
  VYXPropertyTree tree;
  for (const KORUnicodeString& key : iKeys) {
    tree.SetInteger(key, 1);
  }
  return tree;
}

/// Calls an operation for one key after the other.
template <class Operation>
void ForKeys(State& ioState, Operation&& iOperation) {
  const std::vector<KORUnicodeString> keys = ShuffledKeys(ioState.range(0));
  VYXPropertyTree tree = TreeOf(keys);
  std::size_t next = 0;
  for (auto _ : ioState) {
    iOperation(tree, keys[next]);
    next = next + 1 == keys.size() ? 0 : next + 1;
  }
}

void GetByKey(State& ioState) {
  ForKeys(ioState, [](const VYXPropertyTree& iTree, const KORUnicodeString& iKey) {
    std::int64_t value = 0;
    iTree.GetInteger(iKey, value);
    benchmark::DoNotOptimize(value);
  });
}
BENCHMARK(GetByKey)->Arg(8)->Arg(64)->Arg(4096);

void SetByKey(State& ioState) {
  ForKeys(ioState, [](VYXPropertyTree& ioTree, const KORUnicodeString& iKey) { ioTree.SetInteger(iKey, 2); });
}
BENCHMARK(SetByKey)->Arg(8)->Arg(64)->Arg(4096);

void RemoveAndSetByKey(State& ioState) {
  ForKeys(ioState, [](VYXPropertyTree& ioTree, const KORUnicodeString& iKey) {
    ioTree.RemoveKey(iKey);
    ioTree.SetInteger(iKey, 2);
  });
}
BENCHMARK(RemoveAndSetByKey)->Arg(8)->Arg(64)->Arg(4096);

void Parse(State& ioState, const KORUnicodeString& iText) {
  for (auto _ : ioState) {
    auto tree = std::make_unique<VYXPropertyTree>();
    if (tree->Parse(iText) < 0) {
      ioState.SkipWithError("refused");
      return;
    }
    ioState.PauseTiming();
    tree.reset();
    ioState.ResumeTiming();
  }
  ioState.SetBytesProcessed(ioState.iterations() * static_cast<std::int64_t>(iText.GetLengthInByte()));
}

void Stringify(State& ioState, const VYXPropertyTree& iTree) {
  for (auto _ : ioState) {
    KORUnicodeString text;
    iTree.Stringify(text);
    benchmark::DoNotOptimize(text);
  }
}

void CopyAndDestroy(State& ioState, const VYXPropertyTree& iTree) {
  for (auto _ : ioState) {
    VYXPropertyTree copy(iTree);
    benchmark::DoNotOptimize(copy);
  }
}

void Equality(State& ioState, const VYXPropertyTree& iTree) {
  const VYXPropertyTree copy(iTree);
  for (auto _ : ioState) {
    benchmark::DoNotOptimize(copy == iTree);
  }
}

void EqualityByText(State& ioState, const VYXPropertyTree& iTree) {
  const VYXPropertyTree copy(iTree);
  for (auto _ : ioState) {
    benchmark::DoNotOptimize(VYXPropertyTreeUtils::Stringify(copy) == VYXPropertyTreeUtils::Stringify(iTree));
  }
}

void RegisterDocument(const std::filesystem::path& iPath) {
  std::ifstream file(iPath, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  const KORUnicodeString text{std::string_view(bytes)};
  const auto tree = std::make_shared<VYXPropertyTree>();
  if (tree->Parse(text) < 0) {
    return;
  }
  const std::string name = "/" + iPath.stem().string();
  const auto add = [&](const char* iWhat, auto iFunction) {
    benchmark::RegisterBenchmark((iWhat + name).c_str(), iFunction)->Unit(benchmark::kMicrosecond);
  };
  add("Parse", [text](State& ioState) { Parse(ioState, text); });
  add("Stringify", [tree](State& ioState) { Stringify(ioState, *tree); });
  add("CopyAndDestroy", [tree](State& ioState) { CopyAndDestroy(ioState, *tree); });
  add("Equality", [tree](State& ioState) { Equality(ioState, *tree); });
  add("EqualityByText", [tree](State& ioState) { EqualityByText(ioState, *tree); });
}

}  // namespace

int main(int iCount, char** iArguments) {
  benchmark::Initialize(&iCount, iArguments);
  const char* const folder = std::getenv("VYX_BENCH_DATA");
  if (folder == nullptr || !std::filesystem::is_directory(folder)) {
    benchmark::AddCustomContext("documents", "none: VYX_BENCH_DATA names no folder");
  } else {
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().extension() == ".json") {
        RegisterDocument(entry.path());
      }
    }
  }
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
