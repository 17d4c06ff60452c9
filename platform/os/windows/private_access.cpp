#include "platform/os/windows/private_access.h"

#include <array>
#include <new>

#include "platform/os/windows/handle.h"
#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os::Windows {
namespace {

// What the host allocated for an answer.
class HostMemory {
 public:
  HostMemory() noexcept = default;
  ~HostMemory() { LocalFree(_memory); }
  HostMemory(const HostMemory&) = delete;
  HostMemory& operator=(const HostMemory&) = delete;

  void** Receive() noexcept { return &_memory; }

 private:
  void* _memory = nullptr;
};

// The host itself needs no entry and may have one.
bool NamesOnly(PSID iUser, PACL iList) noexcept {
  if (iList == nullptr) {
    return false;  // no list lets everybody in
  }
  for (DWORD i = 0; i < iList->AceCount; ++i) {
    void* entry = nullptr;
    if (GetAce(iList, i, &entry) == 0) {
      return false;
    }
    auto* const allowed = static_cast<ACCESS_ALLOWED_ACE*>(entry);
    if (allowed->Header.AceType == ACCESS_ALLOWED_ACE_TYPE && EqualSid(&allowed->SidStart, iUser) == 0 &&
        IsWellKnownSid(&allowed->SidStart, WinLocalSystemSid) == 0) {
      return false;
    }
  }
  return true;
}

}  // namespace

struct PrivateAccess::Rights {
  alignas(TOKEN_USER) std::array<char, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user;
  alignas(ACL) std::array<char, sizeof(ACL) + sizeof(ACCESS_ALLOWED_ACE) + SECURITY_MAX_SID_SIZE> list;
  SECURITY_DESCRIPTOR descriptor;
  SECURITY_ATTRIBUTES attributes;

  PSID User() noexcept { return static_cast<TOKEN_USER*>(static_cast<void*>(user.data()))->User.Sid; }
  PACL List() noexcept { return static_cast<PACL>(static_cast<void*>(list.data())); }

  bool Fill() noexcept {
    HANDLE token = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) == 0) {
      return false;
    }
    const Handle owner(token);
    DWORD size = 0;
    constexpr DWORD kHandedDown = CONTAINER_INHERIT_ACE | OBJECT_INHERIT_ACE;
    attributes = {sizeof attributes, &descriptor, FALSE};
    return GetTokenInformation(token, TokenUser, user.data(), static_cast<DWORD>(user.size()), &size) != 0 &&
           InitializeAcl(List(), static_cast<DWORD>(list.size()), ACL_REVISION) != 0 &&
           AddAccessAllowedAceEx(List(), ACL_REVISION, kHandedDown, FILE_ALL_ACCESS, User()) != 0 &&
           InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) != 0 &&
           SetSecurityDescriptorOwner(&descriptor, User(), FALSE) != 0 &&
           SetSecurityDescriptorDacl(&descriptor, TRUE, List(), FALSE) != 0 &&
           SetSecurityDescriptorControl(&descriptor, SE_DACL_PROTECTED, SE_DACL_PROTECTED) != 0;
  }
};

PrivateAccess::PrivateAccess() noexcept : _rights(new (std::nothrow) Rights) {
  if (_rights == nullptr) {
    _status = Failure::OutOfMemory();
  } else if (!_rights->Fill()) {
    _status = Status::OfLastCall();
  }
}

PrivateAccess::~PrivateAccess() {
  delete _rights;
}

void* PrivateAccess::Get() noexcept {
  return &_rights->attributes;
}

bool PrivateAccess::IsThatOf(void* iFolder) const noexcept {
  PSID owner = nullptr;
  PACL list = nullptr;
  HostMemory memory;
  constexpr SECURITY_INFORMATION kAsked = OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
  return _status.IsOk() &&
         GetSecurityInfo(iFolder, SE_FILE_OBJECT, kAsked, &owner, nullptr, &list, nullptr, memory.Receive()) == 0 &&
         owner != nullptr && EqualSid(owner, _rights->User()) != 0 && NamesOnly(_rights->User(), list);
}

Status TakeOverAccess(void* iFile, void* iFrom) noexcept {
  PACL list = nullptr;
  HostMemory memory;
  if (iFrom != nullptr && GetSecurityInfo(iFrom, SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &list,
                                          nullptr, memory.Receive()) == 0) {
    // Entries that came from the folder come from there again.
    const DWORD failure =
        SetSecurityInfo(iFile, SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, list, nullptr);
    return Status(static_cast<int>(failure));
  }
  ACL none;
  if (InitializeAcl(&none, sizeof none, ACL_REVISION) == 0) {
    return Status::OfLastCall();
  }
  constexpr SECURITY_INFORMATION kHandedDown = DACL_SECURITY_INFORMATION | UNPROTECTED_DACL_SECURITY_INFORMATION;
  return Status(
      static_cast<int>(SetSecurityInfo(iFile, SE_FILE_OBJECT, kHandedDown, nullptr, nullptr, &none, nullptr)));
}

}  // namespace VYX::Os::Windows
