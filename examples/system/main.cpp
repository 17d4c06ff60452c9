// What a program can ask about the time, itself and the machine.

#include <iostream>

#include "KORSysBase/KORTime.h"
#include "VYXInfStringUtil.h"
#include "VYXInfSystemUtil.h"

static void Show(const char* iWhat, bool iIsPlausible) {
  std::cout << iWhat << (iIsPlausible ? ": known\n" : ": not known\n");
}

int main() {
  std::cout << KORTime(0).ConvertToString("%d.%m.%Y %H:%M:%S", KORTz::Utc) << "\n";
  Show("the present year", VYXInfSystemUtil::GetCurrentDateTimeString("%Y").GetLengthInChar() == 4);

  const std::uint64_t start = VYXInfSystemUtil::GetTimeInMicroseconds();
  VYXInfSystemUtil::GetUUIDString();
  Show("the duration of a call", VYXInfSystemUtil::GetTimeInMicroseconds() >= start);

  Show("the process", VYXInfSystemUtil::GetPID() > 0 && VYXInfSystemUtil::IsInMainThread());
  Show("the memory in use", VYXInfSystemUtil::GetCurrentMemoryUsage() > 0);
  Show("the machine's memory", VYXInfSystemUtil::GetPhysicalMemory() > 0);
  Show("the processors", VYXInfSystemUtil::GetCPUCount() > 0);
  Show("a new UUID", VYXInfSystemUtil::GetUUIDString() != VYXInfSystemUtil::GetUUIDString());

  KORUnicodeString folder;
  Show("the program's folder", VYXInfSystemUtil::GetExecutablePath(folder) >= 0);

  const auto isPath = [](const KORUnicodeString& iEntry) {
    return VYXInfStringUtil::StartsWith(iEntry, "PATH=", false);
  };
  Show("the environment", VYXInfSystemUtil::EnumEnvVars(isPath).size() == 1);

  KORUnicodeString url;
  Show("a cloud tenant", VYXInfSystemUtil::IsCloudClient() && VYXInfSystemUtil::GetDweldAuthoringUrl(url) >= 0);
  return 0;
}
