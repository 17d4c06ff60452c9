#include <cstddef>
#include <cstdint>
#include <iterator>

#include "VYXInfLog.h"

namespace {

constexpr const char* kLevelNames[] = {"FATAL", "ERROR", "WARN", "INFO", "DEBUG", "TRACE"};

}  // namespace

const char* VYXInfLog::LevelToString(VYXInfLogLevel iLevel) {
  const auto index = static_cast<std::uint32_t>(iLevel);
  return index < std::size(kLevelNames) ? kLevelNames[index] : kLevelNames[TRACE];
}

VYXInfLogLevel VYXInfLog::LevelFromString(const char* iText, VYXInfLogLevel iDefaultLevel) {
  if (iText == nullptr || *iText == '\0') {
    return iDefaultLevel;
  }
  const KORUnicodeString text(iText);
  for (std::size_t level = 0; level < std::size(kLevelNames); ++level) {
    if (text.Compare(kLevelNames[level]) >= 1) {
      return static_cast<VYXInfLogLevel>(level);
    }
  }
  return iDefaultLevel;
}
