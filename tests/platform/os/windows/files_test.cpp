#include "platform/os/files.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/os/folders.h"
#include "platform/os/random_access.h"
#include "platform/os/windows/file_calls.h"
#include "support/temporary_folder.h"

namespace VYX::Os {
namespace {

using VYX::Test::ContentOf;
using Windows::gFileCalls;

class WindowsFiles : public ::testing::Test {
 protected:
  // Writes a text and answers the outcome of opening.
  Status Write(const std::string& iPath, OpenMode iMode, std::string_view iText, bool iIsText = false) {
    FileDescriptor file = 0;
    std::size_t count = 0;
    const Status status = OpenFile(iPath, iMode, file, iIsText);
    if (status.IsOk()) {
      EXPECT_TRUE(WriteFully(file, iText.data(), iText.size(), count).IsOk());
      EXPECT_EQ(count, iText.size());
      EXPECT_TRUE(CloseFile(file).IsOk());
    }
    return status;
  }

  // Reads a file in text mode, in portions of a size.
  std::string ReadText(const std::string& iPath, std::size_t iPortion) {
    FileDescriptor file = 0;
    EXPECT_TRUE(OpenFile(iPath, OpenMode::Read, file, true).IsOk());
    std::string text;
    std::string buffer(iPortion, ' ');
    for (std::size_t count = iPortion; count == iPortion;) {
      EXPECT_TRUE(ReadFully(file, buffer.data(), iPortion, count).IsOk());
      text.append(buffer, 0, count);
    }
    EXPECT_TRUE(CloseFile(file).IsOk());
    return text;
  }

  VYX::Test::TemporaryFolder _folder;
};

TEST_F(WindowsFiles, ModesDecideOnCreatingEmptyingAndAppending) {
  const struct {
    OpenMode mode;
    bool isThere;
    int error;
    const char* result;
  } rows[] = {{OpenMode::Write, true, 0, "new"},        {OpenMode::Write, false, 0, "new"},
              {OpenMode::Append, true, 0, "oldnew"},    {OpenMode::Append, false, 0, "new"},
              {OpenMode::WriteNew, true, 183, "old"},   {OpenMode::WriteNew, false, 0, "new"},
              {OpenMode::AppendNew, true, 183, "old"},  {OpenMode::AppendNew, false, 0, "new"},
              {OpenMode::WriteOwner, true, 183, "old"}, {OpenMode::WriteOwner, false, 0, "new"},
              {OpenMode::AppendLog, true, 0, "oldnew"}, {OpenMode::WriteLog, true, 0, "new"}};
  for (const auto& row : rows) {
    SCOPED_TRACE("mode " + std::to_string(static_cast<int>(row.mode)) + (row.isThere ? ", there" : ", missing"));
    const std::string path = _folder.Native("f");
    static_cast<void>(RemoveFile(path));
    if (row.isThere) {
      _folder.MakeFile("f", "old");
    }
    EXPECT_EQ(Write(path, row.mode, "new").GetNative(), row.error);
    EXPECT_EQ(ContentOf(path), row.result);
  }
}

TEST_F(WindowsFiles, TextModeConvertsLineEnds) {
  const struct {
    std::string_view bytes;
    std::string_view text;
  } rows[] = {{"a\r\nb\r\n", "a\nb\n"},
              {"a\rb\r\r\n", "a\rb\r\n"},
              {"\r\n\r\n", "\n\n"},
              {"a\r", "a\r"},
              {"a\x1A"
               "b\r\n",
               "a"},
              {"", ""},
              {"\r", "\r"},
              {"a\nb", "a\nb"}};
  for (const auto& row : rows) {
    for (const std::size_t portion : {std::size_t{1}, std::size_t{2}, std::size_t{3}, std::size_t{100}}) {
      EXPECT_EQ(ReadText(_folder.MakeFile("f", row.bytes), portion), row.text) << row.bytes << ", " << portion;
    }
  }
  EXPECT_TRUE(Write(_folder.Native("f"), OpenMode::Write, "a\nb\r\n\n", true).IsOk());
  EXPECT_EQ(ContentOf(_folder.Native("f")), "a\r\nb\r\r\n\r\n");
}

TEST_F(WindowsFiles, LongAndForeignNamesAreNames) {
  std::string relative;
  while (_folder.Native(relative).size() < 1000) {
    relative += (relative.empty() ? "" : "\\") + std::string(100, 'n') + "_\xC3\xA4\xE6\xBC\xA2\xF0\x9F\x98\x80";
    EXPECT_TRUE(CreateFolder(_folder.Native(relative)).IsOk()) << _folder.Native(relative).size();
    const std::string path = _folder.Native(relative + "\\f");
    FileInfo info;
    std::string resolved;
    EXPECT_TRUE(Write(path, OpenMode::WriteNew, "content").IsOk()) << path.size();
    EXPECT_EQ(ContentOf(path), "content");
    EXPECT_TRUE(DescribePath(path, info).IsOk());
    EXPECT_EQ(info.size, 7U);
    EXPECT_TRUE(RenameOver(path, path + "2").IsOk());
    // Wine cannot tell the path of an open file beyond the limit that other calls do not have.
    if (path.size() < 250) {
      EXPECT_TRUE(ResolveLinks(path + "2", resolved).IsOk());
      EXPECT_TRUE(resolved.ends_with(relative + "\\f2")) << resolved;
    }
    EXPECT_TRUE(RemoveFile(path + "2").IsOk());
  }
  RemovalReport report;
  EXPECT_TRUE(RemoveTree(_folder.Native(relative.substr(0, relative.find('\\'))), report).IsOk());
  EXPECT_TRUE(_folder.Names().empty());
}

TEST_F(WindowsFiles, OthersMayRenameAndRemoveWhatIsOpen) {
  FileDescriptor file = 0;
  const std::string path = _folder.MakeFile("f", "content");
  ASSERT_TRUE(OpenFile(path, OpenMode::Read, file).IsOk());
  EXPECT_TRUE(RenameNew(path, _folder.Native("g")).IsOk());
  EXPECT_TRUE(RemoveFile(_folder.Native("g")).IsOk());
  EXPECT_TRUE(CloseFile(file).IsOk());
  EXPECT_TRUE(_folder.Names().empty());
}

TEST_F(WindowsFiles, FailuresCarryTheHostsNumbers) {
  FileDescriptor file = 7;
  FileInfo info;
  EXPECT_EQ(OpenFile(_folder.Native("none"), OpenMode::Read, file).ToErrorNumber(), 2);
  EXPECT_EQ(OpenFile(_folder.Native("none\\f"), OpenMode::Write, file).ToErrorNumber(), 3);
  EXPECT_EQ(OpenFile(_folder.Native(), OpenMode::Read, file).ToErrorNumber(), 5);
  EXPECT_EQ(file, 7U) << "the output is touched on success only";
  EXPECT_EQ(DescribePath(_folder.Native("none"), info).ToErrorNumber(), 2);
  EXPECT_EQ(RemoveFile(_folder.MakeFolder("d")).ToErrorNumber(), 5);
  EXPECT_EQ(RenameNew(_folder.MakeFile("a", "1"), _folder.MakeFile("b", "2")).ToErrorNumber(), 183);
  EXPECT_EQ(ContentOf(_folder.Native("b")), "2");
  EXPECT_TRUE(RenameOver(_folder.Native("a"), _folder.Native("b")).IsOk());
  EXPECT_EQ(ContentOf(_folder.Native("b")), "1");
}

TEST_F(WindowsFiles, AnyPlaceIsReadAndWritten) {
  FileDescriptor file = 0;
  ASSERT_TRUE(OpenFile(_folder.Native("f"), OpenMode::WriteNew, file).IsOk());
  EXPECT_TRUE(WriteAt(file, 3, "def", 3).IsOk());
  EXPECT_TRUE(WriteAt(file, 0, "abc", 3).IsOk());
  EXPECT_TRUE(FlushFile(file).IsOk());
  EXPECT_TRUE(CloseFile(file).IsOk());
  ASSERT_TRUE(OpenFile(_folder.Native("f"), OpenMode::Read, file).IsOk());
  char buffer[8] = {};
  std::size_t read = 0;
  EXPECT_TRUE(ReadAt(file, 2, buffer, sizeof buffer, read).IsOk());
  EXPECT_EQ(std::string(buffer, read), "cdef");
  EXPECT_TRUE(ReadAt(file, 100, buffer, sizeof buffer, read).IsOk());
  EXPECT_EQ(read, 0U);
  EXPECT_TRUE(CloseFile(file).IsOk());
}

TEST_F(WindowsFiles, ShortTransfersAreCompleted) {
  static Windows::FileCalls real;
  real = gFileCalls;
  gFileCalls.Write = [](void* iFile, const void* iData, std::uint32_t iSize, const std::uint64_t* iOffset,
                        std::uint32_t* oWritten) {
    return real.Write(iFile, iData, std::min<std::uint32_t>(iSize, 3), iOffset, oWritten);
  };
  gFileCalls.Read = [](void* iFile, void* oBuffer, std::uint32_t iSize, const std::uint64_t* iOffset,
                       std::uint32_t* oRead) {
    return real.Read(iFile, oBuffer, std::min<std::uint32_t>(iSize, 3), iOffset, oRead);
  };
  const std::string text(1000, 'x');
  EXPECT_TRUE(Write(_folder.Native("f"), OpenMode::Write, text).IsOk());
  const std::string back = ReadText(_folder.Native("f"), 2000);
  gFileCalls = real;
  EXPECT_EQ(back, text);
}

TEST_F(WindowsFiles, PermissionsAreTakenOver) {
  const std::string old = _folder.MakeFile("old", "");
  FileInfo before;
  ASSERT_TRUE(DescribePath(old, before).IsOk());
  FileDescriptor file = 0;
  ASSERT_TRUE(OpenFile(_folder.Native("f"), OpenMode::WriteOwner, file).IsOk());
  EXPECT_TRUE(TakeOverPermissions(file, before).IsOk());
  EXPECT_TRUE(CloseFile(file).IsOk());
  EXPECT_EQ(ContentOf(_folder.Native("f")), "");
}

}  // namespace
}  // namespace VYX::Os
