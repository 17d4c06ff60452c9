#include "support/test_child_host.h"

#include <fcntl.h>
#include <io.h>

#include <cstdint>
#include <cstdio>

#include "platform/os/windows/wide_text.h"
#include "platform/os/windows/windows_api.h"

namespace VYX::Test {

void MakeOutputBinary() {
  ::_setmode(1, _O_BINARY);
}

void WaitForTheEnd() {
  for (;;) {
    ::Sleep(INFINITE);
  }
}

void RaiseFault(int iNumber) {
  ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(iNumber));
}

int TellInherited(long long iHandle) {
  wchar_t path[MAX_PATH * 4] = {};
  const DWORD length = ::GetFinalPathNameByHandleW(reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(iHandle)), path,
                                                   MAX_PATH * 4, FILE_NAME_NORMALIZED);
  std::fputs(Os::Windows::ToUtf8({path, length}).c_str(), stdout);
  return 0;
}

int TellSignals() {
  return 0;
}

}  // namespace VYX::Test
