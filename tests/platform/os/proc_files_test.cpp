#include "platform/os/linux/proc_files.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "support/injected_faults.h"
#include "support/temporary_folder.h"

namespace VYX::Test {
namespace {

using Os::Linux::ParseProcessFacts;
using Os::Linux::ProcessFacts;

std::string LineOf(const std::string& iName, const std::string& iState) {
  return "42 (" + iName + ") " + iState + " 7 1 1 0 -1 4194560 100 0 0 0 1 2 3 4 20 0 1 0 123456789 5000 600 1\n";
}

TEST(ProcFiles, AProcessIsReadWhateverItsName) {
  for (const std::string name : {"plain", "two words", "a) S 1 (b", "((", "))", "", "\xFF\n"}) {
    ProcessFacts facts;
    ASSERT_TRUE(ParseProcessFacts(LineOf(name, "S"), facts)) << name;
    EXPECT_EQ(facts.name, name);
    EXPECT_EQ(facts.parent, 7);
    EXPECT_EQ(facts.startTime, 123'456'789U);
    EXPECT_FALSE(facts.hasEnded);
  }
}

TEST(ProcFiles, DeadProcessesAreKnown) {
  struct Row {
    const char* state;
    bool hasEnded;
  };
  const Row kRows[] = {{"R", false}, {"S", false}, {"D", false}, {"T", false}, {"Z", true}, {"X", true}};
  for (const Row& row : kRows) {
    ProcessFacts facts;
    ASSERT_TRUE(ParseProcessFacts(LineOf("x", row.state), facts));
    EXPECT_EQ(facts.hasEnded, row.hasEnded) << row.state;
  }
}

TEST(ProcFiles, OtherTextsAreRefused) {
  const std::string whole = LineOf("name", "S");
  ProcessFacts facts;
  facts.parent = -3;
  for (std::size_t length = 0; length < whole.find("123456789"); ++length) {
    EXPECT_FALSE(ParseProcessFacts(whole.substr(0, length), facts)) << length;
  }
  for (const char* const text : {")(", ") S 1", "1 (a)", "1 (a) ", "1 (a) S x 1 1 1"}) {
    EXPECT_FALSE(ParseProcessFacts(text, facts)) << text;
  }
  EXPECT_EQ(facts.parent, -3);
}

TEST(ProcFiles, AProcessThatIsGoneIsToldSo) {
  ProcessFacts facts;
  EXPECT_EQ(Os::Linux::ReadProcessFacts(2'000'000'000, facts).GetNative(), ESRCH);
  ASSERT_TRUE(Os::Linux::ReadProcessFacts(::getpid(), facts).IsOk());
  EXPECT_EQ(facts.parent, ::getppid());
}

TEST(ProcFiles, FilesAreReadWholeAlsoInShortPieces) {
  const TemporaryFolder folder;
  for (const std::size_t size : {0U, 1U, 4095U, 4096U, 4097U, 12288U, 20000U}) {
    const std::string content(size, 'x');
    const std::string path = folder.MakeFile("file", content);
    const ShortTransfers transfers(1000);
    std::string text = "untouched";
    EXPECT_TRUE(Os::Linux::ReadProcFile(path, text).IsOk());
    EXPECT_EQ(text, content) << size;
  }
}

TEST(ProcFiles, FailuresLeaveTheOutput) {
  const TemporaryFolder folder;
  const std::string path = folder.MakeFile("file", "content");
  for (int call = 1; call <= 3; ++call) {
    std::string text = "untouched";
    const InjectedFaults faults(call, EIO, false);
    EXPECT_EQ(Os::Linux::ReadProcFile(path, text).GetNative(), EIO) << call;
    EXPECT_EQ(text, "untouched") << call;
  }
}

TEST(ProcFiles, TheMarkOfARemovedFileIsNoPartOfItsPath) {
  const TemporaryFolder folder;
  const std::string marked = folder.MakeFile("there (deleted)", "");
  std::string target;
  EXPECT_TRUE(Os::Linux::ReadProcLink(folder.MakeLink("link1", marked), target).IsOk());
  EXPECT_EQ(target, marked) << "a file may be called so";
  EXPECT_TRUE(Os::Linux::ReadProcLink(folder.MakeLink("link2", folder.Native("gone (deleted)")), target).IsOk());
  EXPECT_EQ(target, folder.Native("gone"));
  EXPECT_EQ(Os::Linux::ReadProcLink(folder.Native("no link"), target).GetNative(), ENOENT);
}

}  // namespace
}  // namespace VYX::Test
