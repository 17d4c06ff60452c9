#include "KORSysBase/KORError.h"

#include <new>
#include <utility>

#include "KORSysBase/KORResult.h"
#include "platform/os/thread_slot.h"

namespace {

// Constructed on first use, never destroyed: threads may fail until the process is gone. It needs no memory, because
// running out of that is what may have to be reported first.
VYX::Os::ThreadSlot& PendingSlot(void (*iDestroy)(void*)) {
  alignas(VYX::Os::ThreadSlot) static unsigned char memory[sizeof(VYX::Os::ThreadSlot)];
  static VYX::Os::ThreadSlot* const slot = new (memory) VYX::Os::ThreadSlot(iDestroy);
  return *slot;
}

}  // namespace

void KORError::Destroy(void* iError) noexcept {
  delete static_cast<KORError*>(iError);
}

namespace {

// Made now rather than at the first failure, which another thread may meet while this process is forked.
[[maybe_unused]] const bool gIsSlotMade = (KORError::KORCleanLastError(), true);

}  // namespace

KORError* KORError::KORGetLastError(long iCode, IUnknown*) noexcept {
  auto* const pending = static_cast<KORError*>(PendingSlot(&Destroy).Get());
  if (pending == nullptr || (iCode != E_FAIL && iCode != pending->_code)) {
    return nullptr;
  }
  return pending;
}

void KORError::KORCleanLastError() noexcept {
  VYX::Os::ThreadSlot& slot = PendingSlot(&Destroy);
  Destroy(slot.Get());
  slot.Set(nullptr);
}

long KORError::KORSetLastError(long iCode, KORUnicodeString iMessage) noexcept {
  KORCleanLastError();
  auto* const pending = new (std::nothrow) KORError(iCode, std::move(iMessage));
  if (!PendingSlot(&Destroy).Set(pending)) {
    Destroy(pending);
  }
  return iCode;
}
