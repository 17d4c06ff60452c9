#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/os/status.h"

namespace VYX::Os::Linux {

/// The whole of a file below /proc, whose size is not known before it was read. On failure oText is untouched.
Status ReadProcFile(const std::string& iPath, std::string& oText);

/// Where a link leads, of whatever length. A program file that was removed meanwhile keeps its path.
Status ReadProcLink(const std::string& iPath, std::string& oTarget);

/// What the host tells everybody about a process.
struct ProcessFacts {
  std::int32_t parent = 0;
  bool hasEnded = false;        ///< it waits for its parent to hear of its end
  std::uint64_t startTime = 0;  ///< in the host's ticks since it was started itself
  std::string name;             ///< the program's name, cut after 15 bytes
};

/// Reads /proc/<id>/stat. A process that is gone is the failure ESRCH.
Status ReadProcessFacts(std::int32_t iProcess, ProcessFacts& oFacts);

/// The same from the file's text; false for a text that is none.
bool ParseProcessFacts(std::string_view iText, ProcessFacts& oFacts);

}  // namespace VYX::Os::Linux
