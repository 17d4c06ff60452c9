#pragma once

#include <memory>

#include "VYXInfLog.h"

namespace VYX::Internal {

/// Remembers the newest logger with a back end as open, and registers the exit callback, once per process.
void NoteBackEndOpened(const VYXInfLog* iLogger);

/// A logger with a back end dies: logging is no longer open, unless a newer logger has been opened since. Registers the
/// exit callback where that failed so far.
void NoteBackEndClosed(const VYXInfLog* iLogger);

/// The default logger, or null where there is none: none is made.
std::shared_ptr<VYXInfLog> CurrentDefaultLogger();

/// Asks the default logger anew which levels it takes; to be called when its sinks have changed.
void RefreshAcceptedLevels();

}  // namespace VYX::Internal
