#include "platform/os/posix/child_registry.h"

#include <sys/wait.h>

#include <exception>
#include <mutex>
#include <vector>

#include "platform/os/fork_hooks.h"
#include "platform/os/posix/system_calls.h"

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

namespace VYX::Os::Posix {
namespace {

struct Child {
  pid_t id;
  std::uint64_t startTime;
};

struct Registry {
  std::mutex mutex;
  std::vector<Child> children;
};

// There from the start and never destroyed: processes are started until the program is gone.
union Immortal {
  constexpr Immortal() : registry() {}
  ~Immortal() {}  // NOLINT(modernize-use-equals-default): the default would be deleted

  Registry registry;
};
constinit Immortal gChildren;

// A forked child finds the lock free; the children remembered are not its own, and so are forgotten at its first look.
[[maybe_unused]] const bool gIsForkNoticed =
    (RegisterForkHooks(
         ForkRank::Inner, [] { gChildren.registry.mutex.lock(); }, [] { gChildren.registry.mutex.unlock(); }),
     true);

enum class ChildState { Running, Ended, Gone };

ChildState StateOf(idtype_t iKind, pid_t iChild) noexcept {
  siginfo_t info = {};
  const int options = WEXITED | WNOHANG | WNOWAIT;
  const int result = Uninterrupted([&] { return Calls().WaitId(iKind, static_cast<id_t>(iChild), &info, options); });
  if (result != 0) {
    return ChildState::Gone;
  }
  return info.si_pid == 0 ? ChildState::Running : ChildState::Ended;
}

bool IsToBeForgotten(const Child& iChild, std::uint64_t (*iStartTimeOf)(pid_t iChild)) noexcept {
  const ChildState state = StateOf(P_PID, iChild.id);
  if (state == ChildState::Ended) {
    const std::uint64_t startTime = iStartTimeOf(iChild.id);
    if (iChild.startTime == 0 || startTime == 0 || startTime == iChild.startTime) {
      siginfo_t info = {};
      Uninterrupted([&] { return Calls().WaitId(P_PID, static_cast<id_t>(iChild.id), &info, WEXITED | WNOHANG); });
    }
  }
  return state != ChildState::Running;
}

}  // namespace

void RememberChild(pid_t iChild, std::uint64_t iStartTime) noexcept {
  try {
    const std::scoped_lock lock(gChildren.registry.mutex);
    gChildren.registry.children.push_back({iChild, iStartTime});
  } catch (const std::exception&) {
    // Not remembered, the child is heard of when the program ends.
  }
}

void HearOfEndedChildren(std::uint64_t (*iStartTimeOf)(pid_t iChild)) noexcept {
  Registry& registry = gChildren.registry;
  const std::scoped_lock lock(registry.mutex);
  // One call tells whether any child has ended at all, so that many that run cost little.
  if (registry.children.empty() || StateOf(P_ALL, 0) == ChildState::Running) {
    return;
  }
  std::erase_if(registry.children, [&](const Child& iChild) { return IsToBeForgotten(iChild, iStartTimeOf); });
}

}  // namespace VYX::Os::Posix
