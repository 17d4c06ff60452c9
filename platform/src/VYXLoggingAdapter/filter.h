#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/src/VYXLoggingAdapter/parse_error.h"

namespace VYX::Logging {

/**
 * Which records a sink takes, parsed once: comparisons of `%Severity%` (a number from 0 FATAL to 5 TRACE, or a level's
 * name) and `%Channel%` (a text) with = != < <= > >=, joined by & or "and", | or "or", ! or "not", and brackets. Of the
 * joins "not" binds closest and "or" least. Texts may stand in double quotes. The empty text takes everything.
 *
 * Immutable once parsed; may be used by several threads at once.
 */
class Filter {
 public:
  /// Takes everything.
  Filter() = default;

  /// The parsed filter; where the text is unreadable nothing, and oError says why.
  static std::optional<Filter> Parse(std::string_view iText, ParseError& oError);

  /// True when a record of this level on this channel passes.
  bool Accepts(int iLevel, std::string_view iChannel) const;

 private:
  friend class FilterParser;

  enum class Operation { And, Or, Not, Severity, Channel };
  enum class Comparison { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual };

  // The expression in postfix order.
  struct Step {
    Operation operation;
    Comparison comparison = Comparison::Equal;
    std::int64_t number = 0;
    std::string text;
  };
  template <class Value>
  static bool Compare(Comparison iComparison, const Value& iLeft, const Value& iRight);

  std::vector<Step> _steps;
};

}  // namespace VYX::Logging
