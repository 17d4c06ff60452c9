#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "init_testing.h"

namespace VYX::Test {
namespace {

// A program that runs with the rights of its file's owner.
TEST_F(Init, RaisedPrivilegesIgnoreTheEnvironment) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << "only the superuser can hand out rights";
  }
  const std::string program = _folder.Native("raised");
  std::filesystem::copy_file(VYX_BEFORE_MAIN_PROGRAM, program);
  ASSERT_EQ(::chmod(_folder.Native().c_str(), 0755), 0);
  const std::string folder = _folder.MakeFolder("steered");
  const auto run = [&](mode_t iMode) {
    EXPECT_EQ(::chmod(program.c_str(), iMode), 0);
    return Run(
               [&program] {
                 constexpr uid_t kNobody = 65534;
                 if (::setgid(kNobody) == 0 && ::setuid(kNobody) == 0) {
                   ::execl(program.c_str(), program.c_str(), nullptr);
                 }
                 std::_Exit(98);
               },
               {{"VYX_LOG_LEVEL", "DEBUG"}, {"VYX_LOG_CONFIG_FILE", folder.c_str()}})
        .output;
  };
  EXPECT_THAT(run(0755), testing::HasSubstr("Config=<" + folder + ">"));
  EXPECT_THAT(run(04755), testing::Not(testing::HasSubstr(folder)));
}

TEST_F(Init, NeverWaitsForTheReaderOfAPipe) {
  const std::string pipe = _folder.Native("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const ChildResult child = Run([&pipe] {
    VYXInfLog::Init(INFO, KORUnicodeString(std::string_view(pipe)), "");
    Log(ERROR, "goes on");
    VYXInfLog::Close();
  });
  EXPECT_THAT(child.output + child.error, testing::HasSubstr("cannot open '" + pipe + "': No such device or address"));
}

TEST_F(Init, ItsFileIsNotReadableForOthersAndNoStrangersLink) {
  const std::string victim = _folder.MakeFile("victim", "precious");
  const std::string shared = _folder.MakeFolder("shared");
  _folder.MakeLink("shared/link.log", victim);
  ASSERT_EQ(::chmod(shared.c_str(), 01777), 0);
  for (const char* const name : {"shared/link.log", "shared/own.log"}) {
    Run([this, name] {
      ::umask(0);
      VYXInfLog::Init(INFO, _folder.Path(name), "");
      VYXInfLog::Close();
    });
  }
  EXPECT_EQ(ContentOf(victim), "precious");
  struct stat info {};
  ASSERT_EQ(::stat(_folder.Native("shared/own.log").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777U, 0640U);
}

}  // namespace
}  // namespace VYX::Test
