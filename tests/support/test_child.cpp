// What tests of processes start: does what its first argument says.

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "KORSysBase/KORProcess.h"
#include "VYXInfSystemUtil.h"
#include "support/test_child_host.h"

namespace VYX::Test {
namespace {

// Each argument with the zero behind it.
int Echo(const KORListValKORUnicodeString& iArguments) {
  for (const KORUnicodeString& argument : iArguments) {
    std::fwrite(argument.CastToCharPtr(), 1, argument.ToStringView().size() + 1, stdout);
  }
  return 0;
}

int TellFolder() {
  KORUnicodeString folder;
  const long code = VYXInfSystemUtil::GetExecutablePath(folder);
  std::fputs(folder.CastToCharPtr(), stdout);
  return code < 0 ? 1 : 0;
}

[[noreturn]] void Die() {
  if (VYXInfSystemUtil::KillProcessFromChild(VYXInfSystemUtil::GetPID()) < 0) {
    std::_Exit(3);
  }
  WaitForTheEnd();
}

int RunMode(std::string_view iMode, const char* iValue) {
  if (iMode == "exit") {
    return std::atoi(iValue);
  }
  if (iMode == "signal") {
    RaiseFault(std::atoi(iValue));
  }
  if (iMode == "pause") {
    WaitForTheEnd();
  }
  if (iMode == "descriptors") {
    return TellInherited(std::atoll(iValue));
  }
  if (iMode == "signals") {
    return TellSignals();
  }
  if (iMode == "folder") {
    return TellFolder();
  }
  if (iMode == "die") {
    Die();
  }
  return 2;
}

int Main(const KORListValKORUnicodeString& iArguments) {
  MakeOutputBinary();
  const int count = iArguments.Size();
  const std::string_view mode = count > 1 ? iArguments[2].ToStringView() : std::string_view();
  return mode == "echo" ? Echo(iArguments) : RunMode(mode, count > 2 ? iArguments[3].CastToCharPtr() : "0");
}

}  // namespace
}  // namespace VYX::Test

int main(int iCount, char** iArguments) {
  return VYX::Test::Main(KORGetProgramArguments(iCount, iArguments));
}
