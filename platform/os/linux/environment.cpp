#include "platform/os/environment.h"

#include <stdlib.h>
#include <unistd.h>

#if !defined(__linux__)
#error "this source is for Linux"
#endif

namespace VYX::Os {

const char* EnvironmentValue(const char* iName) noexcept {
  return iName == nullptr ? nullptr : getenv(iName);  // NOLINT(concurrency-mt-unsafe): the contract says when it is
}

const char* TrustedEnvironmentValue(const char* iName) noexcept {
  return iName == nullptr ? nullptr : secure_getenv(iName);
}

std::vector<std::string> EnvironmentEntries() {
  std::vector<std::string> entries;
  for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    entries.emplace_back(*entry);
  }
  return entries;
}

}  // namespace VYX::Os
