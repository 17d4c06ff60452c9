#include "platform/os/windows/spawn.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <utility>
#include <vector>

#include "platform/os/windows/command_line.h"
#include "platform/os/windows/process_calls.h"
#include "platform/os/windows/program_file.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os::Windows {
namespace {

// Copies of the three standard streams, which the child inherits. The originals need not be inheritable.
class StandardStreams {
 public:
  StandardStreams() noexcept {
    constexpr DWORD kNumbers[] = {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};
    for (std::size_t index = 0; index < _streams.size(); ++index) {
      const HANDLE stream = ::GetStdHandle(kNumbers[index]);
      HANDLE copy = nullptr;
      if (stream != nullptr && stream != INVALID_HANDLE_VALUE &&
          ::DuplicateHandle(::GetCurrentProcess(), stream, ::GetCurrentProcess(), &copy, 0, TRUE,
                            DUPLICATE_SAME_ACCESS) != 0) {
        _streams[index].Reset(copy);
      }
    }
  }

  HANDLE Get(std::size_t iIndex) const noexcept { return _streams[iIndex].Get(); }

  std::vector<HANDLE> All() const {
    std::vector<HANDLE> handles;
    for (const Handle& stream : _streams) {
      if (stream.IsOpen()) {
        handles.push_back(stream.Get());
      }
    }
    return handles;
  }

 private:
  std::array<Handle, 3> _streams;
};

// The list of what the child inherits: nothing else of the process, whatever other code opened as inheritable.
class InheritedHandles {
 public:
  explicit InheritedHandles(std::vector<HANDLE> iHandles) : _handles(std::move(iHandles)) {
    SIZE_T size = 0;
    ::InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    _memory.resize(size);
  }
  ~InheritedHandles() {
    if (_list != nullptr) {
      ::DeleteProcThreadAttributeList(_list);
    }
  }
  InheritedHandles(const InheritedHandles&) = delete;
  InheritedHandles& operator=(const InheritedHandles&) = delete;

  Status Make() noexcept {
    if (_handles.empty()) {
      return {};
    }
    SIZE_T size = _memory.size();
    auto* const list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(_memory.data());
    if (::InitializeProcThreadAttributeList(list, 1, 0, &size) == 0) {
      return Status::OfLastCall();
    }
    _list = list;
    const BOOL isSet = ::UpdateProcThreadAttribute(_list, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, _handles.data(),
                                                   _handles.size() * sizeof(HANDLE), nullptr, nullptr);
    return isSet == 0 ? Status::OfLastCall() : Status();
  }

  // Null where nothing is inherited.
  LPPROC_THREAD_ATTRIBUTE_LIST Get() const noexcept { return _list; }

 private:
  std::vector<HANDLE> _handles;
  std::vector<std::byte> _memory;
  LPPROC_THREAD_ATTRIBUTE_LIST _list = nullptr;
};

}  // namespace

Status Spawn(const std::string& iProgram, char* const iArguments[], Handle& oChild, std::uint32_t& oId) {
  std::wstring program;
  std::wstring commandLine;
  if (const Status status = FindProgram(iProgram, program); !status.IsOk()) {
    return status;
  }
  if (const Status status = JoinArguments(iArguments, commandLine); !status.IsOk()) {
    return status;
  }
  // What was printed before stands before what the child prints.
  std::fflush(stdout);
  const StandardStreams streams;
  InheritedHandles inherited(streams.All());
  if (const Status status = inherited.Make(); !status.IsOk()) {
    return status;
  }
  STARTUPINFOEXW start = {};
  start.StartupInfo.cb = sizeof start;
  start.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
  start.StartupInfo.hStdInput = streams.Get(0);
  start.StartupInfo.hStdOutput = streams.Get(1);
  start.StartupInfo.hStdError = streams.Get(2);
  start.lpAttributeList = inherited.Get();
  PROCESS_INFORMATION process = {};
  if (!gProcessCalls.CreateProcess(program.c_str(), commandLine.data(), &start, &process)) {
    return Status::OfLastCall();
  }
  ::CloseHandle(process.hThread);
  oChild.Reset(process.hProcess);
  oId = process.dwProcessId;
  return {};
}

}  // namespace VYX::Os::Windows
