#pragma once

#include <cstdint>
#include <string>

#include "support/injected_faults.h"

namespace VYX::Test {

/// What a call to the host may need; a fault hits the calls that need what is missing.
enum HostNeed : unsigned int {
  kRoom = 1,           ///< on the disk
  kPermission = 2,     ///< on a name, a file or a process
  kDescriptor = 4,     ///< a free one
  kDevice = 8,         ///< that works; everything that touches a disk
  kPatience = 16,      ///< the call may be interrupted
  kWholeTransfer = 32  ///< the call may move less than it was asked to
};

/// One way in which the host goes wrong.
struct HostFault {
  const char* name;
  int error;
  HostNeed missing;
};

/**
 * Makes the iFirst-th call (counted from 1) fail that needs what is missing, and every later one too unless iIsOnce,
 * while the object lives. Interrupted calls succeed when they are repeated; short transfers move half. Closing happens
 * all the same, and the standard streams are left alone. One object at a time, for single-threaded tests.
 */
class FaultyHost {
 public:
  FaultyHost(const HostFault& iFault, int iFirst, bool iIsOnce);
  ~FaultyHost();
  FaultyHost(const FaultyHost&) = delete;
  FaultyHost& operator=(const FaultyHost&) = delete;

  /// Number of calls that failed.
  int CountFailed() const;

  /// True where a call that removes something has failed.
  bool HasRemovalFailed() const;

  /// True where a call has failed without which a folder cannot be emptied.
  bool HasTreeWorkFailed() const;

 private:
  SavedSystemCalls _saved;
};

}  // namespace VYX::Test
