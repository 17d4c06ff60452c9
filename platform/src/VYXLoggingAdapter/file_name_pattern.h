#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/os/clock.h"

namespace VYX::Logging {

/**
 * The name of a log file: text with %N for the number of the file (%3N pads it with zeros to three digits) and the date
 * and time conversions of strftime, filled in when the file is begun.
 */
class FileNamePattern {
 public:
  FileNamePattern() = default;
  explicit FileNamePattern(std::string_view iText) : _text(iText) {}

  /// A name that is taken as it stands.
  static FileNamePattern Literal(std::string_view iText);

  /// True where the name has a place for a number.
  bool HasNumber() const;

  /// The name of the file with a number, begun at a time.
  std::string Expand(std::uint64_t iNumber, const Os::WallTime& iTime) const;

 private:
  std::string _text;
};

}  // namespace VYX::Logging
