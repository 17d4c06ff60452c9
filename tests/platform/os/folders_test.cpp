#include "platform/os/folders.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <map>
#include <vector>

#include "support/injected_faults.h"
#include "support/temporary_folder.h"

namespace VYX::Os {
namespace {

using VYX::Test::TemporaryFolder;

std::map<std::string, EntryKind> List(const std::string& iPath) {
  std::map<std::string, EntryKind> entries;
  FolderReader reader;
  EXPECT_TRUE(reader.Open(iPath).IsOk());
  FolderEntry entry;
  bool isAtEnd = false;
  while (reader.Read(entry, isAtEnd).IsOk() && !isAtEnd) {
    entries.emplace(entry.name, entry.kind);
  }
  EXPECT_TRUE(isAtEnd);
  EXPECT_TRUE(reader.Close().IsOk());
  return entries;
}

TEST(Folders, ListingGivesEveryNameAndItsKindWhereItIsKnown) {
  const TemporaryFolder folder;
  folder.MakeFile("f", "");
  folder.MakeFolder("d");
  folder.MakeLink("l", "d");
  ASSERT_EQ(::mkfifo(folder.Native("p").c_str(), 0600), 0);
  folder.MakeFile("not_\xff\xfe_utf8", "");
  const auto entries = List(folder.Native());
  ASSERT_EQ(entries.size(), 7U);
  EXPECT_EQ(entries.count("."), 1U);
  EXPECT_EQ(entries.count(".."), 1U);
  EXPECT_EQ(entries.count("not_\xff\xfe_utf8"), 1U);
  EXPECT_EQ(entries.at("l"), EntryKind::Unknown) << "a link has to be asked";
  EXPECT_NE(entries.at("f"), EntryKind::Folder);
  EXPECT_NE(entries.at("d"), EntryKind::Regular);
  EXPECT_NE(entries.at("p"), EntryKind::Regular);
}

TEST(Folders, ReaderReportsWhatItCannotDo) {
  const TemporaryFolder folder;
  FolderReader reader;
  FolderEntry entry;
  bool isAtEnd = false;
  EXPECT_EQ(reader.Read(entry, isAtEnd).GetNative(), EBADF);
  EXPECT_EQ(reader.Open(folder.Native("none")).GetNative(), ENOENT);
  EXPECT_EQ(reader.Open(folder.MakeFile("f", "")).GetNative(), ENOTDIR);
  EXPECT_TRUE(reader.Close().IsOk());
  ASSERT_TRUE(reader.Open(folder.Native()).IsOk());
  const VYX::Test::InjectedFaults faults(1, EIO, true);
  EXPECT_EQ(reader.Read(entry, isAtEnd).GetNative(), EIO);
}

TEST(Folders, CreatingAFolderThatExistsSucceeds) {
  const TemporaryFolder folder;
  EXPECT_TRUE(CreateFolder(folder.Native("a")).IsOk());
  EXPECT_TRUE(CreateFolder(folder.Native("a")).IsOk());
  EXPECT_TRUE(CreateFolder(folder.MakeLink("l", "a")).IsOk());
  EXPECT_EQ(CreateFolder(folder.MakeFile("f", "")).GetNative(), EEXIST);
  EXPECT_EQ(CreateFolder(folder.Native("x/y")).GetNative(), ENOENT);
  EXPECT_EQ(CreateFolder(folder.Native("f/y")).GetNative(), ENOTDIR);
}

TEST(Folders, CurrentFolderIsAbsolute) {
  std::string path;
  ASSERT_TRUE(CurrentFolder(path).IsOk());
  EXPECT_EQ(path, std::filesystem::current_path().string());
}

}  // namespace
}  // namespace VYX::Os
