#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/src/VYXLoggingAdapter/parse_error.h"
#include "platform/src/VYXLoggingAdapter/record.h"

namespace VYX::Logging {

/**
 * How a record becomes a line, parsed once: text with placeholders between percent signs.
 *
 * `%TimeStamp%` local time with microseconds ("2019-03-05 14:07:09.000042"), or in a format of strftime's with
 * `%TimeStamp(format="%H:%M:%S")%`; `%ThreadID%`, `%ProcessID%` decimal; `%Channel%`; `%Severity%` the level's name;
 * `%Message%`. A backslash makes the next character plain text.
 *
 * Immutable once parsed; may be used by several threads at once.
 */
class LineFormat {
 public:
  /// The parsed format; where the text is unreadable nothing, and oError says why.
  static std::optional<LineFormat> Parse(std::string_view iText, ParseError& oError);

  /// Appends the record's line, without a line end. Whatever would end or disturb a line is escaped, so that one record
  /// is one line.
  void Append(const Record& iRecord, std::string& ioLine) const;

 private:
  enum class Kind { Text, TimeStamp, ThreadId, ProcessId, Channel, Severity, Message };
  struct Piece {
    Kind kind;
    std::string text;  // the text itself, or the time's format
  };
  friend class LineFormatParser;

  std::vector<Piece> _pieces;
};

}  // namespace VYX::Logging
