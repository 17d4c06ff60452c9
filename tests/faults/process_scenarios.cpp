#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>

#include "KORSysBase/KORResult.h"
#include "VYXInfSystemUtil.h"
#include "faults/scenario.h"

namespace VYX::Test {
namespace {

class Starting final : public Scenario {
 public:
  Starting() : _program(VYX_TEST_CHILD) {
    _arguments.Append("exit");
    _arguments.Append("7");
  }

  long Run() override {
    return VYXInfSystemUtil::StartProcess(_program, _arguments, true, &_id, &_exitCode) == KORLibSuccess ? S_OK
                                                                                                         : E_FAIL;
  }

  void Check(const Ending& iEnding) override {
    EXPECT_TRUE(iEnding.code < 0 || (_exitCode == 7 && _id > 0));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "no child is left";
    EXPECT_EQ(errno, ECHILD);
  }

 private:
  const KORUnicodeString _program;
  KORListValKORUnicodeString _arguments;
  int _id = 0;
  int _exitCode = 0;
};

}  // namespace

std::vector<NamedScenario> ProcessScenarios() {
  return {{"StartProcess", Maker<Starting>(), 3}};
}

}  // namespace VYX::Test
