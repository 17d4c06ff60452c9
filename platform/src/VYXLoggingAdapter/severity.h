#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace VYX::Logging {

/// Levels run from 0 FATAL to 5 TRACE; what is outside is shown and treated as TRACE.
inline constexpr int kLevelCount = 6;
inline constexpr std::string_view kLevelNames[kLevelCount] = {"FATAL", "ERROR", "WARN", "INFO", "DEBUG", "TRACE"};

inline std::string_view SeverityName(int iLevel) {
  return kLevelNames[iLevel >= 0 && iLevel < kLevelCount ? iLevel : kLevelCount - 1];
}

/// The level of a name in upper case.
inline std::optional<int> SeverityFromName(std::string_view iName) {
  for (int level = 0; level < kLevelCount; ++level) {
    if (kLevelNames[level] == iName) {
      return level;
    }
  }
  return std::nullopt;
}

}  // namespace VYX::Logging
