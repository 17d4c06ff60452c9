#include "platform/os/environment.h"

#include <exception>
#include <mutex>
#include <set>

#include "platform/os/lock.h"
#include "platform/os/windows/path_text.h"
#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {
namespace {

constinit Lock gLock;

// The host hands values out as copies in UTF-16, the contract as texts that stay. What was asked for once is kept: the
// values are few, and each is kept once.
const char* Keep(std::string iValue) {
  static std::set<std::string>* const values = new std::set<std::string>;
  const std::lock_guard guard(gLock);
  return values->insert(std::move(iValue)).first->c_str();
}

bool Query(const std::wstring& iName, std::wstring& oValue) {
  std::wstring value(256, L'\0');
  for (;;) {
    SetLastError(ERROR_SUCCESS);
    const DWORD length = GetEnvironmentVariableW(iName.c_str(), value.data(), static_cast<DWORD>(value.size()));
    if (length == 0 && GetLastError() != ERROR_SUCCESS) {
      return false;
    }
    const bool isWhole = length < value.size();
    value.resize(length);
    if (isWhole) {
      oValue = std::move(value);
      return true;
    }
  }
}

}  // namespace

const char* EnvironmentValue(const char* iName) noexcept {
  try {
    std::wstring name;
    std::wstring value;
    if (iName == nullptr || !Windows::ToWideName(iName, name) || !Query(name, value)) {
      return nullptr;
    }
    return Keep(Windows::ToNameText(value));
  } catch (const std::exception&) {
    return nullptr;  // no memory for the copy
  }
}

const char* TrustedEnvironmentValue(const char* iName) noexcept {
  // A program does not get more privileges than who starts it has.
  return EnvironmentValue(iName);
}

std::vector<std::string> EnvironmentEntries() {
  std::vector<std::string> entries;
  wchar_t* const block = GetEnvironmentStringsW();
  if (block == nullptr) {
    return entries;
  }
  for (std::wstring_view entry = block; !entry.empty(); entry = entry.data() + entry.size() + 1) {
    // Names that begin with "=" are the host's own notes about the drives' current folders.
    if (entry.front() != L'=') {
      entries.push_back(Windows::ToNameText(entry));
    }
  }
  FreeEnvironmentStringsW(block);
  return entries;
}

}  // namespace VYX::Os
