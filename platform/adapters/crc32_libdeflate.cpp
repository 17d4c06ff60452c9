#include <libdeflate.h>

#include "platform/adapters/crc32.h"

namespace VYX::Adapters {

std::uint32_t Crc32(std::uint32_t iCrc, const char* iData, std::size_t iSize) noexcept {
  // A null buffer asks the library for the start value, which would drop iCrc.
  return iSize == 0 ? iCrc : libdeflate_crc32(iCrc, iData, iSize);
}

}  // namespace VYX::Adapters
