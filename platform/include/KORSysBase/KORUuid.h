#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string_view>

#include "VYXExport.h"

/**
 * A universally unique identifier (RFC 4122, version 4): 122 bits from the host's source of random numbers. A value; it
 * may be made and read by any thread. VYXInfSystemUtil::GetUUIDString gives the text of a new one in one call.
 */
class VYX_EXPORT KORUuid {
 public:
  /// Number of characters of the text form.
  static constexpr std::size_t kTextLength = 36;

  /// A new identifier. Where the host has no random numbers it is the nil one, and a pending error tells why.
  KORUuid() noexcept;

  /// True for the nil identifier, all of whose bits are 0.
  bool IsNil() const noexcept;

  /**
   * Writes the text form, "xxxxxxxx-xxxx-4xxx-yxxx-xxxxxxxxxxxx" in lower-case hexadecimal digits, and a zero behind
   * it.
   *
   * @param oText room for kTextLength + 1 characters; null does nothing.
   * @param iForm reserved; every value gives the same form.
   */
  void UUID_to_chaine(char* oText, unsigned int iForm) const noexcept;

  /// True for the same 128 bits.
  bool operator==(const KORUuid& iOther) const noexcept = default;
  /// The order of the bytes, which is that of the text forms.
  std::strong_ordering operator<=>(const KORUuid& iOther) const noexcept = default;

  /// Writes the text form.
  friend VYX_EXPORT std::ostream& operator<<(std::ostream& ioStream, const KORUuid& iUuid);

 private:
  friend struct std::hash<KORUuid>;

  std::uint8_t _bytes[16] = {};
};

/// Equal identifiers hash alike.
template <>
struct std::hash<KORUuid> {
  /// The hash of a value.
  std::size_t operator()(const KORUuid& iUuid) const noexcept {
    return std::hash<std::string_view>()({reinterpret_cast<const char*>(iUuid._bytes), sizeof iUuid._bytes});
  }
};
