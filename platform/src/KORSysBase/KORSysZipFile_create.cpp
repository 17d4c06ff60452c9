#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "KORSysBase/KORSysZipFile.h"
#include "platform/os/native_path.h"
#include "zip_guard.h"
#include "zip_session.h"

namespace {

namespace Os = VYX::Os;
using VYX::Platform::WrongArgument;
using VYX::Platform::ZipProblem;

struct Components {
  bool isAbsolute = false;
  std::vector<std::string_view> names;
};

Components Split(std::string_view iPath) {
  constexpr std::string_view kSeparators = "\\/";
  Components components{iPath.find_first_of(kSeparators) == 0, {}};
  while (!iPath.empty()) {
    const std::string_view name = iPath.substr(0, iPath.find_first_of(kSeparators));
    iPath.remove_prefix(std::min(iPath.size(), name.size() + 1));
    if (!name.empty() && name != ".") {
      components.names.push_back(name);
    }
  }
  return components;
}

// The file's path relative to the base folder, its last component without one. Empty where it is not below.
std::string RelativeName(std::string_view iFile, std::string_view iBase) {
  const Components file = Split(iFile);
  const Components base = Split(iBase);
  if (file.names.empty()) {
    return {};
  }
  std::size_t first = base.names.size();
  if (iBase.empty()) {
    first = file.names.size() - 1;
  } else if (file.isAbsolute != base.isAbsolute || first >= file.names.size() ||
             !std::equal(base.names.begin(), base.names.end(), file.names.begin())) {
    return {};
  }
  std::string name(file.names[first]);
  for (++first; first < file.names.size(); ++first) {
    name.append("/").append(file.names[first]);
  }
  return name;
}

ZipProblem Add(VYX::Platform::ZipCreation& ioCreation, std::string_view iFile, std::string_view iBase) {
  std::string file;
  std::string base;
  Os::Status status = Os::ToNativePath(iFile, file);
  if (status.IsOk()) {
    status = Os::ToNativePath(iBase, base);
  }
  if (!status.IsOk()) {
    return VYX::Platform::ToProblem(status);
  }
  const std::string name = RelativeName(file, base);
  if (name.empty()) {
    return WrongArgument("it is not below the base folder");
  }
  VYX::Platform::ZipTarget target;
  const char* const unsafe = VYX::Platform::ToTarget(name, {.arePortableNamesRequired = false}, target);
  return unsafe == nullptr ? ioCreation.Add(file, name)
                           : ZipProblem{KORSysZipFile::kUnsafeEntry, {}, std::string(unsafe)};
}

}  // namespace

long KORSysZipFile::AddFile(const KORUnicodeString* iFile, int iMethod, int iOptions,
                            const KORUnicodeString* iBaseFolder, int iReserved) {
  return VYX::Platform::RunZipWork("store", "in", _session->path, [&]() -> ZipProblem {
    if (_session->creation == nullptr) {
      return {kWrongState, {}, "no archive is being created"};
    }
    if (iFile == nullptr || iMethod != 1 || iOptions != 0 || iReserved != 0) {
      return WrongArgument("an argument is unknown");
    }
    const std::string_view base = iBaseFolder == nullptr ? std::string_view() : iBaseFolder->ToStringView();
    ZipProblem problem = Add(*_session->creation, iFile->ToStringView(), base);
    if (!problem.IsNone()) {
      problem.entry = iFile->ToStringView();
    }
    return problem;
  });
}
