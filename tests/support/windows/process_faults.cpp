#include "support/windows/process_faults.h"

#include "platform/os/windows/windows_api.h"

namespace VYX::Test {

void FailWith(std::uint32_t iError) {
  ::SetLastError(iError);
}

void* OpenNothing() {
  return ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
}

std::uint32_t OwnPriorityClass() {
  return ::GetPriorityClass(::GetCurrentProcess());
}

void* OpenInheritable(const wchar_t* iPath) {
  SECURITY_ATTRIBUTES inheritable = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  return ::CreateFileW(iPath, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &inheritable,
                       OPEN_EXISTING, 0, nullptr);
}

void CloseHandleOf(void* iHandle) {
  ::CloseHandle(iHandle);
}

}  // namespace VYX::Test
