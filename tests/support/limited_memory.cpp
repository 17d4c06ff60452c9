#include "support/limited_memory.h"

#include <cstdlib>
#include <new>

namespace {

/// Allocations that still succeed; negative means all.
long allowedAllocations = VYX::Test::kUnlimited;
bool isOnce = false;
long failedAllocations = 0;

void* Allocate(std::size_t iSize) noexcept {
  if (allowedAllocations == 0) {
    ++failedAllocations;
    allowedAllocations = isOnce ? VYX::Test::kUnlimited : 0;
    return nullptr;
  }
  allowedAllocations -= allowedAllocations > 0 ? 1 : 0;
  return std::malloc(iSize == 0 ? 1 : iSize);
}

}  // namespace

void* operator new(std::size_t iSize) {
  if (void* const memory = Allocate(iSize)) {
    return memory;
  }
  throw std::bad_alloc();
}
void* operator new[](std::size_t iSize) {
  return ::operator new(iSize);
}
void* operator new(std::size_t iSize, const std::nothrow_t&) noexcept {
  return Allocate(iSize);
}
void* operator new[](std::size_t iSize, const std::nothrow_t&) noexcept {
  return Allocate(iSize);
}
void operator delete(void* iMemory) noexcept {
  std::free(iMemory);
}
void operator delete[](void* iMemory) noexcept {
  std::free(iMemory);
}
void operator delete(void* iMemory, std::size_t) noexcept {
  std::free(iMemory);
}
void operator delete[](void* iMemory, std::size_t) noexcept {
  std::free(iMemory);
}
void operator delete(void* iMemory, const std::nothrow_t&) noexcept {
  std::free(iMemory);
}
void operator delete[](void* iMemory, const std::nothrow_t&) noexcept {
  std::free(iMemory);
}

namespace VYX::Test {

void AllowAllocations(long iCount, bool iIsOnce) noexcept {
  allowedAllocations = iCount;
  isOnce = iIsOnce;
  failedAllocations = 0;
}

long CountFailedAllocations() noexcept {
  return failedAllocations;
}

}  // namespace VYX::Test
