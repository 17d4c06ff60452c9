#pragma once

#include <cstddef>

#include "platform/os/posix/system_calls.h"

namespace VYX::Test {

/// Keeps the table of host calls as it is, to put it back when the object dies. Tests replace entries meanwhile.
class SavedSystemCalls {
 public:
  SavedSystemCalls() : _saved(Os::Posix::Calls()) {}
  ~SavedSystemCalls() { Os::Posix::Calls() = _saved; }
  SavedSystemCalls(const SavedSystemCalls&) = delete;
  SavedSystemCalls& operator=(const SavedSystemCalls&) = delete;

  /// The entries as they were.
  const Os::Posix::SystemCalls& Real() const { return _saved; }

 private:
  Os::Posix::SystemCalls _saved;
};

/**
 * Makes host calls fail while the object lives: the iFirst-th call of all entries of the table (counted from 1), and
 * every later one too unless iIsOnce. With iFirst 0 none fails and the calls are counted only. Closing a file or a
 * folder is counted and fails like the others, but happens all the same, as on the host itself. The clock and the
 * console's writes are left alone. One object at a time, for single-threaded tests.
 */
class InjectedFaults {
 public:
  InjectedFaults(int iFirst, int iError, bool iIsOnce);
  ~InjectedFaults();
  InjectedFaults(const InjectedFaults&) = delete;
  InjectedFaults& operator=(const InjectedFaults&) = delete;

  /// Number of calls so far.
  int Count() const;

 private:
  SavedSystemCalls _saved;
};

/// While the object lives, every read and write of the host moves at most iMost bytes, and every other one is
/// interrupted.
class ShortTransfers {
 public:
  explicit ShortTransfers(std::size_t iMost);

 private:
  SavedSystemCalls _saved;
};

}  // namespace VYX::Test
