#include "support/child_process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <io.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "platform/os/windows/handle.h"
#include "platform/os/windows/wide_text.h"
#include "support/host.h"
#include "support/replay.h"

namespace VYX::Test {

namespace {

namespace fs = std::filesystem;
using Os::Windows::Handle;
using Os::Windows::ToReadableWide;

// The second process finds what it has to do here: the folder of the files that the two exchange, and which call of
// the test it was started for.
constexpr const char* kFolderVariable = "VYX_TEST_REPLAY_FOLDER";
constexpr const char* kCallVariable = "VYX_TEST_REPLAY_CALL";

// The state of the running test: its name, its calls so far and the folders it has made.
struct Replay {
  std::string test;
  int calls = 0;
  std::vector<std::string> folders;
};

std::string NameOfRunningTest() {
  const ::testing::TestInfo* const test = ::testing::UnitTest::GetInstance()->current_test_info();
  return test == nullptr ? "" : std::string(test->test_suite_name()) + "." + test->name();
}

Replay& OfRunningTest() {
  static Replay replay;
  if (std::string test = NameOfRunningTest(); test != replay.test) {
    replay = {std::move(test), 0, {}};
  }
  return replay;
}

fs::path FolderOfParent() {
  const char* const folder = std::getenv(kFolderVariable);
  return folder == nullptr ? fs::path() : fs::path(folder);
}

std::string ContentOf(const fs::path& iPath) {
  std::ifstream file(iPath, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

fs::path PathOf(const fs::path& iFolder, int iCall, const char* iKind) {
  return iFolder / (std::to_string(iCall) + iKind);
}

// Standard output or standard error into a file of the parent.
void Redirect(std::FILE* ioStream, const fs::path& iPath) {
  std::fflush(ioStream);
  const int file = ::_wopen(iPath.c_str(), _O_WRONLY | _O_CREAT | _O_APPEND | _O_BINARY, 0600);
  ::_dup2(file, ::_fileno(ioStream));
  ::_close(file);
}

[[noreturn]] void RunBody(const std::function<void()>& iBody,
                          const std::vector<std::pair<std::string, const char*>>& iEnvironment, const fs::path& iFolder,
                          int iCall) {
  Redirect(stdout, PathOf(iFolder, iCall, ".out"));
  Redirect(stderr, PathOf(iFolder, iCall, ".err"));
  SetVariable(kFolderVariable, nullptr);
  SetVariable(kCallVariable, nullptr);
  for (const auto& [name, value] : iEnvironment) {
    SetVariable(name, value);
  }
  try {
    iBody();
  } catch (...) {
    std::_Exit(99);
  }
  std::exit(0);
}

ChildResult ReadResult(const fs::path& iFolder, int iCall) {
  ChildResult result;
  result.code = std::atoi(ContentOf(PathOf(iFolder, iCall, ".code")).c_str());
  // A process that the host ends for a fault has a code beyond those of programs.
  result.hasExited = result.code >= 0;
  result.output = ContentOf(PathOf(iFolder, iCall, ".out"));
  result.error = ContentOf(PathOf(iFolder, iCall, ".err"));
  return result;
}

// The folder for the exchange of the process's tests, gone with the process.
class ExchangeFolder {
 public:
  ExchangeFolder() : _path(fs::temp_directory_path() / ("vyx_replay_" + std::to_string(OwnProcess()))) {
    fs::create_directories(_path);
  }
  ~ExchangeFolder() {
    std::error_code ignored;
    fs::remove_all(_path, ignored);
  }
  ExchangeFolder(const ExchangeFolder&) = delete;
  ExchangeFolder& operator=(const ExchangeFolder&) = delete;

  const fs::path& Path() const { return _path; }

 private:
  fs::path _path;
};

// The program anew, with the test alone and its outputs nowhere; answers its exit code.
int RunAnew(const std::string& iTest) {
  wchar_t program[MAX_PATH * 4] = {};
  ::GetModuleFileNameW(nullptr, program, MAX_PATH * 4);
  std::wstring line = L"\"" + std::wstring(program) + L"\" --gtest_filter=" + ToReadableWide(iTest);
  const HANDLE nowhere = ::CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                       nullptr, OPEN_EXISTING, 0, nullptr);
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = start.hStdOutput = start.hStdError = nowhere;
  ::SetHandleInformation(nowhere, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
  PROCESS_INFORMATION process = {};
  const BOOL isStarted =
      ::CreateProcessW(program, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process);
  ::CloseHandle(nowhere);
  if (isStarted == 0) {
    throw std::runtime_error("cannot start the test program anew");
  }
  const Handle child(process.hProcess);
  ::CloseHandle(process.hThread);
  ::WaitForSingleObject(child.Get(), INFINITE);
  DWORD code = 0;
  ::GetExitCodeProcess(child.Get(), &code);
  return static_cast<int>(code);
}

void WriteFolders(const fs::path& iFolder, const std::vector<std::string>& iFolders) {
  std::ofstream file(iFolder / "folders", std::ios::binary | std::ios::trunc);
  for (const std::string& folder : iFolders) {
    file << folder << '\n';
  }
}

}  // namespace

std::string TakeFolderOfParent() {
  const fs::path exchange = FolderOfParent();
  if (exchange.empty()) {
    return {};
  }
  std::vector<std::string>& made = OfRunningTest().folders;
  std::ifstream file(exchange / "folders", std::ios::binary);
  std::string line;
  for (std::size_t count = 0; count <= made.size(); ++count) {
    if (!std::getline(file, line)) {
      return {};
    }
  }
  made.push_back(line);
  return line;
}

void RememberFolder(const std::string& iPath) {
  OfRunningTest().folders.push_back(iPath);
}

ChildResult RunInChild(const std::function<void()>& iBody,
                       const std::vector<std::pair<std::string, const char*>>& iEnvironment) {
  Replay& test = OfRunningTest();
  const int call = ++test.calls;
  if (const fs::path exchange = FolderOfParent(); !exchange.empty()) {
    const char* const wanted = std::getenv(kCallVariable);
    if (wanted != nullptr && std::atoi(wanted) == call) {
      RunBody(iBody, iEnvironment, exchange, call);
    }
    return ReadResult(exchange, call);
  }
  static const ExchangeFolder exchange;
  WriteFolders(exchange.Path(), test.folders);
  SetVariable(kFolderVariable, exchange.Path().string().c_str());
  SetVariable(kCallVariable, std::to_string(call).c_str());
  fs::remove(PathOf(exchange.Path(), call, ".out"));
  fs::remove(PathOf(exchange.Path(), call, ".err"));
  const int code = RunAnew(test.test);
  SetVariable(kFolderVariable, nullptr);
  SetVariable(kCallVariable, nullptr);
  if (!fs::exists(PathOf(exchange.Path(), call, ".err"))) {
    throw std::runtime_error("the test did not reach the child's body again, and exited with " + std::to_string(code));
  }
  std::ofstream(PathOf(exchange.Path(), call, ".code")) << code;
  return ReadResult(exchange.Path(), call);
}

}  // namespace VYX::Test
