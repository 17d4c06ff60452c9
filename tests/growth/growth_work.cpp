// Does one piece of work of a size, for a count of its instructions: growth_work NAME SIZE [PATH].

#include <cstdlib>
#include <iostream>
#include <memory>
#include <vector>

#include "VYXInfSystemUtil.h"
#include "VYXInfTransferableFactory.h"
#include "growth/workloads.h"

namespace VYX::Growth {
namespace {

Work ListArchive(std::size_t iSize, const std::string& iPath) {
  return [iSize, path = KORUnicodeString(std::string_view(iPath))] {
    KORListValKORUnicodeString names;
    if (VYXInfSystemUtil::BrowseZipArchive(path, names) < 0 || static_cast<std::size_t>(names.Size()) != iSize) {
      std::abort();
    }
  };
}

Work WalkFolder(std::size_t iSize, const std::string& iPath) {
  return [iSize, path = KORUnicodeString(std::string_view(iPath))] {
    constexpr unsigned int kFlags = VYXInfSystemUtil::ENUM_FILES | VYXInfSystemUtil::ENUM_RECURSIVE;
    if (VYXInfSystemUtil::EnumDirectories(path, "", kFlags, {}).size() != iSize) {
      std::abort();
    }
  };
}

// Registers so many types and makes an object of each.
Work FillFactory(std::size_t iSize, const std::string&) {
  std::vector<KORUnicodeString> types;
  for (std::size_t number = 0; number < iSize; ++number) {
    types.emplace_back(("Some::Namespace::Type" + std::to_string(number)).c_str());
  }
  return [types] {
    for (const KORUnicodeString& type : types) {
      Inf::TransferableFactory::Register(type, [] { return std::unique_ptr<Inf::ITransferable>(); });
    }
    for (const KORUnicodeString& type : types) {
      Inf::TransferableFactory::Create(type);
    }
  };
}

}  // namespace

std::map<std::string, Prepare> Workloads() {
  std::map<std::string, Prepare> workloads;
  AddTreeWorkloads(workloads);
  AddTextWorkloads(workloads);
  workloads["zip-list"] = ListArchive;
  workloads["enum-directories"] = WalkFolder;
  workloads["factory"] = FillFactory;
  return workloads;
}

}  // namespace VYX::Growth

/// The instructions inside are counted, those around are not; the name is how the counter finds it.
extern "C" [[gnu::noinline]] void GrowthMeasured(const VYX::Growth::Work& iWork) {
  iWork();
}

int main(int iCount, char** iArguments) {
  const auto workloads = VYX::Growth::Workloads();
  const auto found = iCount < 3 ? workloads.end() : workloads.find(iArguments[1]);
  if (found == workloads.end()) {
    std::cerr << "growth_work NAME SIZE [PATH]; the names are";
    for (const auto& [name, prepare] : workloads) {
      std::cerr << " " << name;
    }
    std::cerr << "\n";
    return 2;
  }
  const VYX::Growth::Work work =
      found->second(std::strtoull(iArguments[2], nullptr, 10), iCount > 3 ? iArguments[3] : "");
  GrowthMeasured(work);
  return 0;
}
