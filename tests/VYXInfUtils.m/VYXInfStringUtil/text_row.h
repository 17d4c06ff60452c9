#pragma once

#include <ostream>
#include <string_view>

namespace VYX::Test {

/// One row of a table for an operation that makes a text of a text.
struct TextRow {
  std::string_view text;
  std::string_view result;
};

inline void PrintTo(const TextRow& iRow, std::ostream* ioStream) {
  *ioStream << '"' << iRow.text << '"';
}

}  // namespace VYX::Test
