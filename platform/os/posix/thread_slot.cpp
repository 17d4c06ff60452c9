#include "platform/os/thread_slot.h"

#include <pthread.h>

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

namespace VYX::Os {
namespace {

pthread_key_t KeyOf(std::uintptr_t iStored) noexcept {
  return static_cast<pthread_key_t>(iStored);
}

}  // namespace

ThreadSlot::ThreadSlot(Destructor iDestructor) noexcept : _destructor(iDestructor) {
  pthread_key_t key{};
  _isUsable = pthread_key_create(&key, iDestructor) == 0;
  _key = key;
}

ThreadSlot::~ThreadSlot() {
  if (!_isUsable) {
    return;
  }
  void* const value = Get();
  pthread_key_delete(KeyOf(_key));
  if (value != nullptr && _destructor != nullptr) {
    _destructor(value);
  }
}

void* ThreadSlot::Get() const noexcept {
  return _isUsable ? pthread_getspecific(KeyOf(_key)) : nullptr;
}

bool ThreadSlot::Set(void* iValue) noexcept {
  return _isUsable && pthread_setspecific(KeyOf(_key), iValue) == 0;
}

}  // namespace VYX::Os
