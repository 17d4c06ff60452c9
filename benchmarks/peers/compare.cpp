#include "compare.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string_view>
#include <utility>
#include <vector>

namespace Compare {

namespace {

constexpr std::string_view kResults = "--results=";

std::vector<Case>& Cases() {
  static std::vector<Case> cases;
  return cases;
}

int WriteResults(const std::filesystem::path& iFolder) {
  for (const Case& one : Cases()) {
    std::string name = one.name;
    std::replace(name.begin(), name.end(), '/', '.');
    std::ofstream file(iFolder / name, std::ios::binary);
    file << one.result();
    if (!file.flush()) {
      std::cerr << "cannot write " << iFolder / name << '\n';
      return 1;
    }
  }
  return 0;
}

}  // namespace

void Add(Case iCase) {
  Cases().push_back(std::move(iCase));
}

int Run(int iCount, char** iArguments) {
  const std::string_view first = iCount > 1 ? iArguments[1] : "";
  if (first.starts_with(kResults)) {
    return WriteResults(first.substr(kResults.size()));
  }
  for (const Case& one : Cases()) {
    benchmark::RegisterBenchmark(one.name.c_str(), one.run);
  }
  benchmark::Initialize(&iCount, iArguments);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace Compare
