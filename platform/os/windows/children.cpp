#include "platform/os/windows/children.h"

#include <algorithm>
#include <exception>
#include <mutex>
#include <utility>
#include <vector>

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os::Windows {
namespace {

struct Child {
  std::uint32_t id;
  Handle process;
  bool isWaitedFor;
};

std::mutex& Lock() {
  static std::mutex lock;
  return lock;
}

std::vector<Child>& Children() {
  static std::vector<Child> children;
  return children;
}

bool HasEnded(const Child& iChild) noexcept {
  return ::WaitForSingleObject(iChild.process.Get(), 0) == WAIT_OBJECT_0;
}

}  // namespace

void KeepChild(std::uint32_t iId, Handle iChild, bool iIsWaitedFor) noexcept {
  try {
    const std::lock_guard guard(Lock());
    Children().push_back({iId, std::move(iChild), iIsWaitedFor});
  } catch (const std::exception&) {
    // No memory is left: the handle goes with the argument.
  }
}

Handle TakeChild(std::uint32_t iId) noexcept {
  const std::lock_guard guard(Lock());
  std::vector<Child>& children = Children();
  const auto found = std::find_if(children.begin(), children.end(),
                                  [=](const Child& iChild) { return iChild.isWaitedFor && iChild.id == iId; });
  if (found == children.end()) {
    return {};
  }
  Handle process = std::move(found->process);
  children.erase(found);
  return process;
}

void HearOfEndedChildren() noexcept {
  const std::lock_guard guard(Lock());
  std::erase_if(Children(), [](const Child& iChild) { return !iChild.isWaitedFor && HasEnded(iChild); });
}

}  // namespace VYX::Os::Windows
