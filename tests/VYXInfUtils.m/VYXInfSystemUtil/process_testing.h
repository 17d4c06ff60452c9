#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "VYXInfSystemUtil.h"
#include "support/captured_stdout.h"
#include "support/host.h"

/// What the tests of processes share: the program that they start, which does what its first argument says.
namespace VYX::Test {

inline KORListValKORUnicodeString ListOf(const std::vector<std::string>& iTexts) {
  KORListValKORUnicodeString list;
  for (const std::string& text : iTexts) {
    list.Append(KORUnicodeString(std::string_view(text)));
  }
  return list;
}

/// The file name of the program, as listings of processes show it.
inline std::string ChildName() {
  const std::string path = VYX_TEST_CHILD;
  return path.substr(path.rfind('/') + 1);
}

/// Starts the program without waiting for it; answers its number.
inline int StartChild(const std::vector<std::string>& iArguments) {
  int pid = 0;
  int exitCode = 0;
  EXPECT_EQ(VYXInfSystemUtil::StartProcess(VYX_TEST_CHILD, ListOf(iArguments), false, &pid, &exitCode), KORLibSuccess);
  return pid;
}

constexpr int kUntouched = -77;

/// What a program came to that was waited for; what it printed is caught.
struct Started {
  KORLibStatus status;
  int pid = kUntouched;
  int exitCode = kUntouched;
  std::string output = {};
};

inline Started RunProgram(const std::string& iProgram, const std::vector<std::string>& iArguments) {
  CapturedStdout captured;
  Started started{KORLibSuccess};
  started.status = VYXInfSystemUtil::StartProcess(KORUnicodeString(std::string_view(iProgram)), ListOf(iArguments),
                                                  true, &started.pid, &started.exitCode);
  started.output = captured.Text();
  return started;
}

/// A child that runs until the object dies.
class PausedChild {
 public:
  PausedChild() : _pid(StartChild({"pause"})) {}
  ~PausedChild() {
    EndProcess(_pid);
    WaitForEnd(_pid);
    std::vector<VYXInfSystemUtil::ProcessInfo> none;
    VYXInfSystemUtil::GetSubProcesses(none, _pid, "*");  // hears of the end
  }
  PausedChild(const PausedChild&) = delete;
  PausedChild& operator=(const PausedChild&) = delete;

  int Pid() const { return _pid; }

 private:
  int _pid;
};

}  // namespace VYX::Test
