#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace VYX::Fuzz {

/// Takes an input apart from its front: small numbers that steer a target, and pieces of text. Behind the end there are
/// zeros and empty texts.
class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* iData, std::size_t iSize) noexcept
      : _rest(reinterpret_cast<const char*>(iData), iSize) {}

  bool IsEmpty() const noexcept { return _rest.empty(); }

  std::uint8_t Byte() noexcept {
    const std::string_view taken = Take(1);
    return taken.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(taken.front());
  }

  /// A number below iLimit, which is at most 256.
  std::size_t Below(std::size_t iLimit) noexcept { return iLimit == 0 ? 0 : Byte() % iLimit; }

  bool Flag() noexcept { return (Byte() & 1U) != 0; }

  /// A piece of at most iMost bytes, 255 of them at the most: its length stands before it.
  std::string_view Piece(std::size_t iMost = 255) noexcept { return Take(Below(iMost + 1)); }

  /// All that is left.
  std::string_view Rest() noexcept { return Take(_rest.size()); }

  /// The bytes of a number.
  template <class Number>
  Number Value() noexcept {
    Number value = {};
    const std::string_view taken = Take(sizeof value);
    std::copy_n(taken.data(), taken.size(), reinterpret_cast<char*>(&value));
    return value;
  }

 private:
  std::string_view Take(std::size_t iCount) noexcept {
    const std::string_view taken = _rest.substr(0, iCount);
    _rest.remove_prefix(taken.size());
    return taken;
  }

  std::string_view _rest;
};

}  // namespace VYX::Fuzz
