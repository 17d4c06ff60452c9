#include "platform/os/files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

#include "support/injected_faults.h"
#include "support/temporary_folder.h"
#include "support/unprivileged.h"

namespace VYX::Os {
namespace {

using VYX::Test::ContentOf;
using VYX::Test::TemporaryFolder;

class Files : public ::testing::Test {
 protected:
  TemporaryFolder _folder;
};

TEST_F(Files, WritesAndReadsWholeContents) {
  FileDescriptor file = 0;
  std::size_t count = 0;
  ASSERT_TRUE(OpenFile(_folder.Native("f"), OpenMode::Write, file).IsOk());
  EXPECT_TRUE(WriteFully(file, "hello", 5, count).IsOk());
  EXPECT_EQ(count, 5U);
  EXPECT_TRUE(FlushFile(file).IsOk());
  EXPECT_TRUE(CloseFile(file).IsOk());

  ASSERT_TRUE(OpenFile(_folder.Native("f"), OpenMode::Read, file).IsOk());
  char buffer[8] = {};
  EXPECT_TRUE(ReadFully(file, buffer, sizeof buffer, count).IsOk());
  EXPECT_EQ(std::string(buffer, count), "hello");
  EXPECT_TRUE(CloseFile(file).IsOk());
}

TEST_F(Files, ModesDecideOnCreatingEmptyingAndAppending) {
  struct Row {
    OpenMode mode;
    bool isThere;
    int error;
    const char* result;
  };
  const Row kRows[] = {{OpenMode::Write, true, 0, "new"},           {OpenMode::Write, false, 0, "new"},
                       {OpenMode::Append, true, 0, "oldnew"},       {OpenMode::Append, false, 0, "new"},
                       {OpenMode::WriteNew, true, EEXIST, "old"},   {OpenMode::WriteNew, false, 0, "new"},
                       {OpenMode::AppendNew, true, EEXIST, "old"},  {OpenMode::AppendNew, false, 0, "new"},
                       {OpenMode::WriteOwner, true, EEXIST, "old"}, {OpenMode::WriteOwner, false, 0, "new"}};
  for (const Row& row : kRows) {
    SCOPED_TRACE("mode " + std::to_string(static_cast<int>(row.mode)) + (row.isThere ? ", there" : ", missing"));
    const std::string path = _folder.Native("f");
    ::unlink(path.c_str());
    if (row.isThere) {
      _folder.MakeFile("f", "old");
    }
    FileDescriptor file = 0;
    std::size_t count = 0;
    const Status status = OpenFile(path, row.mode, file);
    EXPECT_EQ(status.GetNative(), row.error);
    if (status.IsOk()) {
      EXPECT_TRUE(WriteFully(file, "new", 3, count).IsOk());
      EXPECT_TRUE(CloseFile(file).IsOk());
    }
    EXPECT_EQ(ContentOf(path), row.result);
  }
}

TEST_F(Files, NewFileIsNotMadeThroughADanglingLink) {
  _folder.MakeLink("link", _folder.Native("elsewhere"));
  FileDescriptor file = 0;
  EXPECT_EQ(OpenFile(_folder.Native("link"), OpenMode::WriteNew, file).GetNative(), EEXIST);
  EXPECT_FALSE(TestExistence(_folder.Native("elsewhere")).IsOk());
}

TEST_F(Files, FileForItsOwnerIsPrivate) {
  FileDescriptor file = 0;
  FileInfo info;
  ASSERT_TRUE(OpenFile(_folder.Native("f"), OpenMode::WriteOwner, file).IsOk());
  EXPECT_TRUE(DescribeFile(file, info).IsOk());
  EXPECT_EQ(info.permissions, 0600U);
  EXPECT_TRUE(CloseFile(file).IsOk());
}

TEST_F(Files, FolderIsNoFile) {
  FileDescriptor file = 7;
  EXPECT_EQ(OpenFile(_folder.Native(), OpenMode::Read, file).GetNative(), EISDIR);
  EXPECT_EQ(OpenFile(_folder.Native(), OpenMode::Write, file).GetNative(), EISDIR);
  EXPECT_EQ(file, 7U) << "the output is touched on success only";
}

TEST_F(Files, PipeWithoutOtherEndDoesNotBlock) {
  ASSERT_EQ(::mkfifo(_folder.Native("pipe").c_str(), 0600), 0);
  FileDescriptor file = 0;
  EXPECT_EQ(OpenFile(_folder.Native("pipe"), OpenMode::Write, file).GetNative(), ENXIO);
  ASSERT_TRUE(OpenFile(_folder.Native("pipe"), OpenMode::Read, file).IsOk());
  char buffer[4];
  std::size_t count = 1;
  EXPECT_TRUE(ReadFully(file, buffer, sizeof buffer, count).IsOk());
  EXPECT_EQ(count, 0U);
  EXPECT_TRUE(CloseFile(file).IsOk());
}

TEST_F(Files, DescriptorsAreNotInherited) {
  FileDescriptor file = 0;
  ASSERT_TRUE(OpenFile(_folder.Native("f"), OpenMode::Write, file).IsOk());
  EXPECT_NE(::fcntl(static_cast<int>(file), F_GETFD) & FD_CLOEXEC, 0);
  EXPECT_TRUE(CloseFile(file).IsOk());
}

TEST_F(Files, NumbersOfTheStandardStreamsAreLeftAlone) {
  const std::string path = _folder.MakeFile("f", "x");
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(0);
    ::close(1);
    ::close(2);
    FileDescriptor file = 0;
    const bool isOpen = OpenFile(path, OpenMode::Read, file).IsOk();
    ::_exit(isOpen && file > 2 && ::fcntl(0, F_GETFD) == -1 ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

TEST_F(Files, ShortAndInterruptedTransfersAreCompleted) {
  const VYX::Test::ShortTransfers transfers(3);
  const std::string text(1000, 'x');
  FileDescriptor file = 0;
  std::size_t count = 0;
  ASSERT_TRUE(OpenFile(_folder.Native("f"), OpenMode::Write, file).IsOk());
  EXPECT_TRUE(WriteFully(file, text.data(), text.size(), count).IsOk());
  EXPECT_EQ(count, text.size());
  EXPECT_TRUE(CloseFile(file).IsOk());
  ASSERT_TRUE(OpenFile(_folder.Native("f"), OpenMode::Read, file).IsOk());
  std::string back(2000, ' ');
  EXPECT_TRUE(ReadFully(file, back.data(), back.size(), count).IsOk());
  EXPECT_EQ(back.substr(0, count), text);
  EXPECT_TRUE(CloseFile(file).IsOk());
}

TEST_F(Files, FullDeviceIsReported) {
  FileDescriptor file = 0;
  std::size_t count = 1;
  ASSERT_TRUE(OpenFile("/dev/full", OpenMode::Write, file).IsOk());
  EXPECT_EQ(WriteFully(file, "x", 1, count).GetNative(), ENOSPC);
  EXPECT_EQ(count, 0U);
  EXPECT_TRUE(CloseFile(file).IsOk());
}

TEST_F(Files, TypeBitsNeverOverlap) {
  struct Row {
    std::string path;
    std::uint32_t type;
  };
  ASSERT_EQ(::mkfifo(_folder.Native("pipe").c_str(), 0600), 0);
  const Row kRows[] = {{_folder.MakeFolder("d"), FileInfo::kFolder},
                       {_folder.MakeFile("f", "abc"), FileInfo::kRegular},
                       {_folder.MakeLink("to_d", "d"), FileInfo::kFolder},
                       {_folder.MakeLink("to_f", "f"), FileInfo::kRegular},
                       {_folder.Native("pipe"), 0},
                       {"/dev/null", 0}};
  for (const Row& row : kRows) {
    FileInfo info;
    EXPECT_TRUE(DescribePath(row.path, info).IsOk()) << row.path;
    EXPECT_EQ(info.type, row.type) << row.path;
  }
  FileInfo info;
  EXPECT_TRUE(DescribePath(_folder.Native("f"), info).IsOk());
  EXPECT_EQ(info.size, 3U);
  EXPECT_EQ(DescribePath(_folder.Native("none"), info).GetNative(), ENOENT);
}

TEST_F(Files, SizesGoBeyond32Bits) {
  const std::string path = _folder.MakeFile("big", "");
  if (::truncate(path.c_str(), off_t{5} << 30) != 0) {
    GTEST_SKIP() << "the file system takes no file of 5 GiB";
  }
  FileInfo info;
  EXPECT_TRUE(DescribePath(path, info).IsOk());
  EXPECT_EQ(info.size, std::uint64_t{5} << 30);
}

TEST_F(Files, RenamingReplacesOrRefuses) {
  const std::string from = _folder.MakeFile("from", "new");
  const std::string to = _folder.MakeFile("to", "old");
  EXPECT_EQ(RenameNew(from, to).GetNative(), EEXIST);
  EXPECT_EQ(ContentOf(to), "old");
  EXPECT_TRUE(RenameOver(from, to).IsOk());
  EXPECT_EQ(ContentOf(to), "new");
  EXPECT_TRUE(RenameNew(to, from).IsOk());
  EXPECT_EQ(_folder.Names(), std::vector<std::string>{"from"});
  EXPECT_TRUE(FlushFolder(_folder.Native()).IsOk());
}

TEST_F(Files, RemovingAFileNeverRemovesAFolder) {
  EXPECT_EQ(RemoveFile(_folder.MakeFolder("d")).GetNative(), EISDIR);
  EXPECT_TRUE(RemoveFile(_folder.MakeLink("l", _folder.MakeFile("f", "kept"))).IsOk());
  EXPECT_EQ(ContentOf(_folder.Native("f")), "kept");
  EXPECT_EQ(RemoveFile(_folder.Native("none")).GetNative(), ENOENT);
}

TEST_F(Files, LinksAreResolved) {
  const std::string target = _folder.MakeFile("f", "");
  std::string path = "untouched";
  EXPECT_EQ(ResolveLinks(_folder.Native("none"), path).GetNative(), ENOENT);
  EXPECT_EQ(path, "untouched");
  EXPECT_TRUE(ResolveLinks(_folder.MakeLink("l", target), path).IsOk());
  std::string resolvedTarget;
  EXPECT_TRUE(ResolveLinks(target, resolvedTarget).IsOk());
  EXPECT_EQ(path, resolvedTarget);
}

TEST_F(Files, PermissionsAreTestedForTheEffectiveUser) {
  ASSERT_EQ(::chmod(_folder.Native().c_str(), 0755), 0);
  const std::string path = _folder.MakeFile("f", "");
  ASSERT_EQ(::chmod(path.c_str(), 0444), 0);
  EXPECT_TRUE(TestExistence(path).IsOk());
  EXPECT_EQ(TestExistence(_folder.Native("none")).GetNative(), ENOENT);
  EXPECT_TRUE(VYX::Test::HoldsForOrdinaryUser([&] { return TestWritability(path).GetNative() == EACCES; }));
}

TEST_F(Files, PathOfADescriptorIsKnown) {
  FileDescriptor file = 0;
  ASSERT_TRUE(OpenFile(_folder.MakeFile("f", ""), OpenMode::Read, file).IsOk());
  std::string resolved;
  ASSERT_TRUE(ResolveLinks(_folder.Native("f"), resolved).IsOk());
  EXPECT_EQ(PathOf(file), resolved);
  EXPECT_TRUE(CloseFile(file).IsOk());
  EXPECT_EQ(PathOf(file), "");
}

TEST_F(Files, EveryFailingCallIsReportedAndLeaksNothing) {
  const int descriptors = VYX::Test::CountOpenDescriptors();
  for (const OpenMode mode : {OpenMode::Read, OpenMode::Write, OpenMode::WriteNew}) {
    int calls = 1;
    for (int k = 1; k <= calls; ++k) {
      SCOPED_TRACE("mode " + std::to_string(static_cast<int>(mode)) + ", call " + std::to_string(k));
      const std::string path = _folder.Native("f");
      ::unlink(path.c_str());
      if (mode == OpenMode::Read) {
        _folder.MakeFile("f", "x");
      }
      const VYX::Test::InjectedFaults faults(k, EIO, true);
      FileDescriptor file = 0;
      const Status opened = OpenFile(path, mode, file);
      const Status closed = opened.IsOk() ? CloseFile(file) : Status();
      EXPECT_EQ(opened.IsOk() ? closed.GetNative() : opened.GetNative(), EIO);
      if (mode == OpenMode::WriteNew && !opened.IsOk()) {
        EXPECT_EQ(::access(path.c_str(), F_OK), -1) << "a new name is left behind";
      }
      calls = opened.IsOk() ? calls : calls + 1;
    }
    EXPECT_GE(calls, 2);
  }
  EXPECT_EQ(VYX::Test::CountOpenDescriptors(), descriptors);
}

}  // namespace
}  // namespace VYX::Os
