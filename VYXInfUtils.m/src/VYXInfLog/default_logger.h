#pragma once

#include "VYXInfLog.h"

namespace VYX::Internal {

/// Remembers the newest logger with a back end as open, and registers the exit callback, once per process.
void NoteBackEndOpened(const VYXInfLog* iLogger);

/// A logger with a back end dies: logging is no longer open, unless a newer logger has been opened since. Registers the
/// exit callback where that failed so far.
void NoteBackEndClosed(const VYXInfLog* iLogger);

}  // namespace VYX::Internal
