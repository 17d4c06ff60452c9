#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/support/memory_file.h"
#include "fuzz/support/require.h"
#include "platform/os/posix/system_calls.h"
#include "platform/src/VYXLoggingAdapter/settings_file.h"

// Any settings file. Log files that it names are not made: the host refuses everything but to read the settings.

namespace {

using namespace VYX::Fuzz;
namespace Posix = VYX::Os::Posix;

MemoryFile& Settings() {
  static MemoryFile file;
  return file;
}

const Posix::SystemCalls& RealCalls() {
  static const Posix::SystemCalls calls = Posix::Calls();
  return calls;
}

int OpenSettingsOnly(const char* iPath, int iFlags, mode_t iMode) {
  if (iPath == Settings().Path()) {
    return RealCalls().Open(iPath, iFlags, iMode);
  }
  errno = EACCES;
  return -1;
}

int MakeNoFolder(const char*, mode_t) {
  errno = EACCES;
  return -1;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  static_cast<void>(RealCalls());
  Posix::Calls().Open = OpenSettingsOnly;
  Posix::Calls().MakeFolder = MakeNoFolder;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  Settings().Write({reinterpret_cast<const char*>(iData), iSize});
  VYX::Logging::SettingsFile settings;
  std::string error;
  if (!settings.Read(Settings().Path(), error)) {
    Require(error.find(Settings().Path()) != std::string::npos, "the message names the file");
    Require(error.find("line ") != std::string::npos, "the message names the line");
    return 0;
  }
  const VYX::Logging::Filter filter = settings.TakeFilter();
  for (const auto& sink : settings.TakeSinks()) {
    Require(sink != nullptr, "every sink is one");
  }
  static_cast<void>(filter.Accepts(3, "default"));
  return 0;
}
