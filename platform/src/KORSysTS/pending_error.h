#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace VYX::Platform {

/// Leaves a pending error whose message is the pieces, joined, and answers the code. Where there is no memory for the
/// message none is left.
long FailWith(long iCode, std::initializer_list<std::string_view> iPieces) noexcept;

/// A number in decimal, as a piece of a message.
class Decimal {
 public:
  explicit Decimal(std::uint64_t iNumber) noexcept;
  operator std::string_view() const noexcept { return {_digits, _length}; }

 private:
  char _digits[20];
  std::size_t _length;
};

}  // namespace VYX::Platform
