#pragma once

#include <cstdint>

#include "platform/os/windows/process_calls.h"

/// Windows: how tests make calls about processes fail, without the host's header.
namespace VYX::Test {

inline constexpr std::uint32_t kFileNotFound = 2;
inline constexpr std::uint32_t kTooManyOpenFiles = 4;
inline constexpr std::uint32_t kAccessDenied = 5;

/// Keeps the table of calls as it is, to put it back when the object dies. Tests replace entries meanwhile.
class SavedProcessCalls {
 public:
  SavedProcessCalls() : _saved(Os::Windows::gProcessCalls) {}
  ~SavedProcessCalls() { Os::Windows::gProcessCalls = _saved; }
  SavedProcessCalls(const SavedProcessCalls&) = delete;
  SavedProcessCalls& operator=(const SavedProcessCalls&) = delete;

 private:
  Os::Windows::ProcessCalls _saved;
};

/// Leaves a cause behind as a failing call does.
void FailWith(std::uint32_t iError);

/// A handle that may be closed and is of no use.
void* OpenNothing();

/// The priority class of the running process as the host tells it.
std::uint32_t OwnPriorityClass();

/// An inheritable handle of a file, as careless code may leave one open; the caller closes it with CloseHandleOf.
void* OpenInheritable(const wchar_t* iPath);
void CloseHandleOf(void* iHandle);

}  // namespace VYX::Test
