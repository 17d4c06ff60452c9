#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <iostream>
#include <random>
#include <stdexcept>
#include <string>

#include "KORSysBase/KORSysZipFile.h"
#include "VYXInfSystemUtil.h"
#include "support/temporary_folder.h"

namespace VYX::Test {
namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int kKills = 50;  // a fork of a sanitized process takes long, and nothing is found in the one that is killed
#else
constexpr int kKills = 1000;
#endif

// A forked child that repeats some work until it is killed.
class Worker {
 public:
  explicit Worker(const std::function<void(int)>& iWork) {
    int ends[2];
    if (::pipe(ends) != 0 || (_process = ::fork()) < 0) {
      throw std::runtime_error("no child process");
    }
    if (_process == 0) {
      static_cast<void>(::write(ends[1], "!", 1));
      for (int round = 0;; ++round) {
        iWork(round);
      }
    }
    char started = 0;
    ::close(ends[1]);
    _hasStarted = ::read(ends[0], &started, 1) == 1;
    ::close(ends[0]);
  }
  ~Worker() {
    ::kill(_process, SIGKILL);
    ::waitpid(_process, nullptr, 0);
  }
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  bool HasStarted() const { return _hasStarted; }

 private:
  pid_t _process = 0;
  bool _hasStarted = false;
};

// Kills a worker after a random time, again and again; after each kill iCheck looks at what it left. Answers how often
// work was under way, which shows by a second file in the folder.
int KillAgainAndAgain(const TemporaryFolder& iFolder, const std::function<void(int)>& iWork,
                      const std::function<void()>& iCheck) {
  std::mt19937 random(4711);
  std::uniform_int_distribution<useconds_t> delay(0, 3000);
  int hits = 0;
  for (int kill = 0; kill < kKills && !::testing::Test::HasFailure(); ++kill) {
    {
      const Worker worker(iWork);
      EXPECT_TRUE(worker.HasStarted());
      ::usleep(delay(random));
    }
    iCheck();
    for (const std::string& name : iFolder.Names()) {
      if (name.ends_with(".tmp")) {
        ++hits;
        ::unlink(iFolder.Native(name).c_str());
      }
    }
  }
  std::cout << kKills << " kills, " << hits << " of them while a file was being written\n";
  return hits;
}

// A content that shows by itself whether it is whole.
std::string ContentOfRound(int iRound) {
  return std::string(200'000, static_cast<char>('a' + iRound % 26));
}

bool IsWhole(const std::string& iContent) {
  return iContent.size() == 200'000 &&
         std::all_of(iContent.begin(), iContent.end(), [&](char iChar) { return iChar == iContent.front(); });
}

TEST(Kill, AtomicSaveLeavesTheOldFileOrTheNewOne) {
  const TemporaryFolder folder;
  folder.MakeFile("f", ContentOfRound(0));
  const KORUnicodeString path = folder.Path("f");
  const auto save = [&path](int iRound) {
    const KORUnicodeString content{std::string_view(ContentOfRound(iRound))};
    VYXInfSystemUtil::SaveToFile(path, content, VYXInfSystemUtil::ATOMIC | VYXInfSystemUtil::OVERWRITE);
  };
  const int hits = KillAgainAndAgain(folder, save, [&folder] { EXPECT_TRUE(IsWhole(ContentOf(folder.Native("f")))); });
  EXPECT_GT(hits, 0);
}

// Reading an entry verifies its checksum.
void ExpectWholeArchive(const KORUnicodeString& iArchive) {
  for (const char* const name : {"in/one", "in/two"}) {
    QB::Binary content;
    ASSERT_EQ(VYXInfSystemUtil::ReadFileFromZipArchive(iArchive, name, content, true), S_OK) << name;
    ASSERT_TRUE(IsWhole(std::string(content.GetData(), content.GetSize()))) << name;
  }
}

TEST(Kill, ZipCreationLeavesTheOldArchiveOrTheNewOne) {
  const TemporaryFolder folder;
  folder.MakeFolder("in");
  folder.MakeFile("in/one", ContentOfRound(1));
  folder.MakeFile("in/two", ContentOfRound(2));
  const KORUnicodeString archive = folder.Path("a.zip");
  const KORUnicodeString base = folder.Path();
  const KORUnicodeString files[] = {folder.Path("in/one"), folder.Path("in/two")};
  const auto create = [&](int) {
    KORSysZipFile zip;
    zip.OpenZip(archive, KORSysZipOpenMode::Create, 0);
    for (const KORUnicodeString& file : files) {
      zip.AddFile(&file, 1, 0, &base, 0);
    }
    zip.Close(0);
  };
  create(0);
  const int hits = KillAgainAndAgain(folder, create, [&archive] { ExpectWholeArchive(archive); });
  EXPECT_GT(hits, 0);
}

}  // namespace
}  // namespace VYX::Test
