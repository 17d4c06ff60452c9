#include "KORSysTS/KORSysCRC32.h"

#include "platform/adapters/crc32.h"

std::uint32_t KORSysCRC32(const char* iData, std::size_t iSize) noexcept {
  return VYX::Adapters::Crc32(0, iData, iSize);
}
