#include "KORSysBase/KORUuid.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <ostream>

#include "pending_error.h"
#include "platform/os/system_information.h"

KORUuid::KORUuid() noexcept {
  const VYX::Os::Status status = VYX::Os::RandomBytes(_bytes, sizeof _bytes);
  if (!status.IsOk()) {
    std::fill(std::begin(_bytes), std::end(_bytes), std::uint8_t{0});
    try {
      VYX::Platform::LeaveError(status, "Cannot make", "UUID", " from random numbers");
    } catch (const std::exception&) {
      // Without memory for the message there is none; the nil identifier tells the failure.
    }
    return;
  }
  _bytes[6] = static_cast<std::uint8_t>((_bytes[6] & 0x0F) | 0x40);
  _bytes[8] = static_cast<std::uint8_t>((_bytes[8] & 0x3F) | 0x80);
}

bool KORUuid::IsNil() const noexcept {
  return std::all_of(std::begin(_bytes), std::end(_bytes), [](std::uint8_t iByte) { return iByte == 0; });
}

void KORUuid::UUID_to_chaine(char* oText, unsigned int) const noexcept {
  if (oText == nullptr) {
    return;
  }
  constexpr char kDigits[] = "0123456789abcdef";
  for (std::size_t index = 0; index < sizeof _bytes; ++index) {
    if (index == 4 || index == 6 || index == 8 || index == 10) {
      *oText++ = '-';
    }
    *oText++ = kDigits[_bytes[index] >> 4];
    *oText++ = kDigits[_bytes[index] & 0x0F];
  }
  *oText = '\0';
}

std::ostream& operator<<(std::ostream& ioStream, const KORUuid& iUuid) {
  char text[KORUuid::kTextLength + 1];
  iUuid.UUID_to_chaine(text, 0);
  return ioStream << text;
}
