#include "platform/os/thread_slot.h"

#include <new>

#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {
namespace {

// What the host keeps for a thread. It calls back for all threads when a slot is given up, where only the values of
// threads that end are to be destroyed: the destructor is taken away before.
struct Entry {
  const ThreadSlot::Destructor* destructor;
  void* value;
};

void WINAPI EndEntry(void* iEntry) {
  auto* const entry = static_cast<Entry*>(iEntry);
  if (entry == nullptr) {
    return;
  }
  void* const value = entry->value;
  const ThreadSlot::Destructor destructor = *entry->destructor;
  delete entry;
  if (value != nullptr && destructor != nullptr) {
    destructor(value);
  }
}

DWORD IndexOf(std::uintptr_t iStored) noexcept {
  return static_cast<DWORD>(iStored);
}

}  // namespace

ThreadSlot::ThreadSlot(Destructor iDestructor) noexcept : _destructor(iDestructor) {
  const DWORD index = FlsAlloc(EndEntry);
  _isUsable = index != FLS_OUT_OF_INDEXES;
  _key = index;
}

ThreadSlot::~ThreadSlot() {
  if (!_isUsable) {
    return;
  }
  void* const value = Get();
  const Destructor destructor = _destructor;
  _destructor = nullptr;
  FlsFree(IndexOf(_key));
  if (value != nullptr && destructor != nullptr) {
    destructor(value);
  }
}

void* ThreadSlot::Get() const noexcept {
  const auto* const entry = _isUsable ? static_cast<const Entry*>(FlsGetValue(IndexOf(_key))) : nullptr;
  return entry == nullptr ? nullptr : entry->value;
}

bool ThreadSlot::Set(void* iValue) noexcept {
  if (!_isUsable) {
    return false;
  }
  if (auto* const entry = static_cast<Entry*>(FlsGetValue(IndexOf(_key))); entry != nullptr) {
    entry->value = iValue;
    return true;
  }
  auto* const entry = new (std::nothrow) Entry{&_destructor, iValue};
  if (entry == nullptr || FlsSetValue(IndexOf(_key), entry) == 0) {
    delete entry;
    return false;
  }
  return true;
}

}  // namespace VYX::Os
