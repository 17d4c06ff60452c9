#include "VYXInfLog/default_logger.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <utility>

#include "KORSysBase/exit_callback.h"
#include "VYXInfLog/logger_access.h"
#include "VYXLoggingAdapter/ILogger.h"
#include "internal/FailureTrace.h"
#include "platform/os/fork_hooks.h"
#include "platform/os/lock.h"
#include "platform/os/output_redirection.h"

namespace VYX::Internal {

namespace {

// What a console logger lets pass, one bit a level, so that the library's own filter test is one load; 0 while it has
// to be asked of the default logger itself.
constexpr std::uint32_t kLevelCount = 6;
constexpr std::uint32_t kKnown = Logging::ILogger::kLevelsKnown;
constinit std::atomic<std::uint32_t> gAcceptedLevels{0};

// The process's logging.
struct DefaultLogger {
  Os::Lock lock;           // the logger lock: one replacement at a time
  Os::Lock referenceLock;  // guards the shared reference below for the moment of a copy
  std::shared_ptr<VYXInfLog> current;
  LoggerMode mode = LoggerMode::None;
  std::atomic<const VYXInfLog*> open{nullptr};  // the newest logger with a back end, until it dies
  Os::Lock exitLock;
  qrm::internal::v1::exit_callback::Handle exitHandle;
};

// Never destroyed, because static objects may log while they die; and there from the start instead of from its first
// use, because a child that was forked while another thread made it would wait for that thread for ever.
union Immortal {
  constexpr Immortal() : state() {}
  ~Immortal() {}  // NOLINT(modernize-use-equals-default): the default would be deleted

  DefaultLogger state;
};
constinit Immortal gLogging;

DefaultLogger& State() {
  return gLogging.state;
}

std::uint32_t AcceptedLevels(const VYXInfLog* iLogger) {
  if (iLogger == nullptr) {
    return 0;
  }
  if (const Logging::ILogger* const channel = LoggerAccess::Channel(*iLogger)) {
    return channel->AcceptedLevels();
  }
  std::uint32_t accepted = kKnown;
  for (std::uint32_t level = 0; level < kLevelCount; ++level) {
    if (!iLogger->IsFiltered(static_cast<VYXInfLogLevel>(level))) {
      accepted |= 1U << level;
    }
  }
  return accepted;
}

// Answers the logger that was the default, so that it dies outside the locks.
std::shared_ptr<VYXInfLog> Install(std::shared_ptr<VYXInfLog> iLogger) {
  DefaultLogger& state = State();
  const std::lock_guard guard(state.referenceLock);
  gAcceptedLevels.store(AcceptedLevels(iLogger.get()), std::memory_order_relaxed);
  return std::exchange(state.current, std::move(iLogger));
}

std::shared_ptr<VYXInfLog> BuildConsole(const void* iSettings) {
  return LoggerAccess::MakeConsole(*static_cast<const VYXInfLogLevel*>(iSettings));
}

void CloseAtExit() {
  if (!LoggerAccess::IsOpen()) {
    return;
  }
  LogUnlessFiltered(WARN, "Abnormal end -> closing logging");
  VYXInfLog::Close();
}

// A forked child finds the locks free.
void LockAll() {
  DefaultLogger& state = State();
  state.lock.lock();
  state.exitLock.lock();
  state.referenceLock.lock();
}

void UnlockAll() {
  DefaultLogger& state = State();
  state.referenceLock.unlock();
  state.exitLock.unlock();
  state.lock.unlock();
}

[[maybe_unused]] const bool gIsForkNoticed = (Os::RegisterForkHooks(Os::ForkRank::Outer, &LockAll, &UnlockAll), true);

void RegisterExitCallback() {
  DefaultLogger& state = State();
  const std::lock_guard guard(state.exitLock);
  qrm::internal::v1::exit_callback::do_register(&CloseAtExit, 2, &std::atexit, state.exitHandle);
}

}  // namespace

std::shared_ptr<VYXInfLog> CurrentDefaultLogger() {
  DefaultLogger& state = State();
  const std::lock_guard guard(state.referenceLock);
  return state.current;
}

void RefreshAcceptedLevels() {
  DefaultLogger& state = State();
  const std::lock_guard guard(state.referenceLock);
  gAcceptedLevels.store(AcceptedLevels(state.current.get()), std::memory_order_relaxed);
}

bool IsFiltered(VYXInfLogLevel iLevel) {
  const std::uint32_t accepted = gAcceptedLevels.load(std::memory_order_relaxed);
  const auto level = static_cast<std::uint32_t>(iLevel);
  if ((accepted & kKnown) != 0 && level < kLevelCount) {
    return ((accepted >> level) & 1U) == 0;
  }
  return VYXInfLog::GetDefaultLogger()->IsFiltered(iLevel);
}

void NoteBackEndOpened(const VYXInfLog* iLogger) {
  State().open.store(iLogger);
  RegisterExitCallback();
}

void NoteBackEndClosed(const VYXInfLog* iLogger) {
  State().open.compare_exchange_strong(iLogger, nullptr);
  RegisterExitCallback();
}

bool LoggerAccess::IsOpen() noexcept {
  return State().open.load() != nullptr;
}

std::shared_ptr<VYXInfLog> LoggerAccess::MakeConsole(VYXInfLogLevel iLevel) {
  return std::shared_ptr<VYXInfLog>(new VYXInfLog(iLevel));
}

std::shared_ptr<VYXInfLog> LoggerAccess::MakeOver(std::shared_ptr<VYX::Logging::ILoggerFactory> iFactory,
                                                  VYXInfLogLevel iLevel) {
  return std::shared_ptr<VYXInfLog>(new VYXInfLog(std::move(iFactory), iLevel));
}

bool LoggerAccess::ReplaceDefault(LoggerMode iMode, Builder iBuild, const void* iSettings) {
  DefaultLogger& state = State();
  std::shared_ptr<VYXInfLog> old;
  const std::lock_guard guard(state.lock);
  const bool isRefused = iMode == LoggerMode::Console ? state.mode != LoggerMode::None : iMode == state.mode;
  if (isRefused) {
    return false;
  }
  const bool isRedirection = state.mode != LoggerMode::None && iMode != LoggerMode::None;
  old = CurrentDefaultLogger();
  if (isRedirection && old != nullptr) {
    old->Log(INFO, "Redirecting logging.");
  }
  Os::RestoreOutputs();
  std::shared_ptr<VYXInfLog> logger = iBuild == nullptr ? nullptr : iBuild(iSettings);
  if (isRedirection && logger != nullptr) {
    logger->Log(INFO, "Redirecting logging.");
  }
  if (old != nullptr) {
    Release(*old);
  }
  state.mode = iMode;
  Install(std::move(logger));
  return true;
}

void LoggerAccess::InstallConsole(VYXInfLogLevel iLevel) {
  DefaultLogger& state = State();
  const std::lock_guard guard(state.lock);
  state.mode = LoggerMode::Console;
  Install(MakeConsole(iLevel));
}

}  // namespace VYX::Internal

using VYX::Internal::LoggerAccess;
using VYX::Internal::LoggerMode;

std::shared_ptr<VYXInfLog> VYXInfLog::GetDefaultLogger() {
  std::shared_ptr<VYXInfLog> logger = VYX::Internal::CurrentDefaultLogger();
  while (logger == nullptr) {
    constexpr VYXInfLogLevel kLevel = INFO;
    LoggerAccess::ReplaceDefault(LoggerMode::Console, &VYX::Internal::BuildConsole, &kLevel);
    logger = VYX::Internal::CurrentDefaultLogger();
  }
  return logger;
}

void VYXInfLog::Close() {
  // Asking brings up the console default where there is none.
  VYX::Internal::LogUnlessFiltered(INFO, "VYXInfLog::Close");
  LoggerAccess::ReplaceDefault(LoggerMode::None, nullptr, nullptr);
}
