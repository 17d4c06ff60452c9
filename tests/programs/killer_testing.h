#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "KORSysBase/KORProcess.h"
#include "support/host.h"

/// What the tests of the helper share.
namespace VYX::Test {

/// Starts a program; answers its exit code, or its number where it is not waited for.
inline int Start(const char* iProgram, const std::vector<std::string>& iArguments, bool iWait) {
  std::vector<char*> arguments = {const_cast<char*>(iProgram)};
  for (const std::string& argument : iArguments) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  int pid = -1;
  int exitCode = -1;
  EXPECT_EQ(KORStartProcess(iProgram, arguments.data(), iWait, &pid, &exitCode), KORLibSuccess);
  return iWait ? exitCode : pid;
}

/// Starts the helper; answers its exit code.
inline int RunKiller(const std::vector<std::string>& iArguments) {
  static const std::string killer =
      std::string(VYX_TEST_CHILD).substr(0, std::string(VYX_TEST_CHILD).rfind('/')) + "/VYXInfParentProcessKiller.exe";
  return Start(killer.c_str(), iArguments, true);
}

}  // namespace VYX::Test
