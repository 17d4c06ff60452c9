#include "platform/os/processes.h"
#include "platform/os/windows/process_calls.h"
#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {
namespace {

std::uint32_t ToPriorityClass(ProcessClass iClass) noexcept {
  switch (iClass) {
    case ProcessClass::High:
      return HIGH_PRIORITY_CLASS;
    case ProcessClass::AboveNormal:
      return ABOVE_NORMAL_PRIORITY_CLASS;
    case ProcessClass::Normal:
      return NORMAL_PRIORITY_CLASS;
    case ProcessClass::BelowNormal:
      return BELOW_NORMAL_PRIORITY_CLASS;
    case ProcessClass::Idle:
      return IDLE_PRIORITY_CLASS;
  }
  return NORMAL_PRIORITY_CLASS;
}

}  // namespace

Status SetProcessClass(ProcessClass iClass) {
  return Windows::gProcessCalls.SetPriority(ToPriorityClass(iClass)) ? Status() : Status::OfLastCall();
}

}  // namespace VYX::Os
