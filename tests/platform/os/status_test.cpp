#include "platform/os/status.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

using VYX::Os::Status;

struct Row {
  int native;
  int windows;
};

TEST(Status, GivesTheWindowsNumberOfEveryNativeOne) {
  const Row kRows[] = {{ENOENT, 2},         {ENODEV, 3},   {EMFILE, 4},    {ENFILE, 4},   {EACCES, 5},
                       {EPERM, 5},          {EISDIR, 5},   {EBADF, 6},     {ENOMEM, 8},   {EXDEV, 17},
                       {EROFS, 19},         {EBUSY, 32},   {ETXTBSY, 32},  {ENOTSUP, 50}, {EINVAL, 87},
                       {EPIPE, 109},        {ENOSPC, 112}, {EILSEQ, 123},  {EEXIST, 183}, {ENOTEMPTY, 145},
                       {ENAMETOOLONG, 206}, {EFBIG, 223},  {ENOTDIR, 267}, {EIO, 1117}};
  for (const Row& row : kRows) {
    EXPECT_EQ(Status(row.native).ToErrorNumber(), row.windows) << "native " << row.native;
    EXPECT_EQ(Status(row.native).ToResultCode(), static_cast<int>(0x80070000U) + row.windows)
        << "native " << row.native;
  }
}

TEST(Status, ResultCodeIsTheSignExtended32BitNumber) {
  EXPECT_EQ(Status(ENOENT).ToResultCode(), -2147024894L);
  EXPECT_EQ(Status().ToResultCode(), 0);
}

TEST(Status, NumberWithoutACounterpartIsAFailureAllTheSame) {
  EXPECT_EQ(Status(ENOTTY).ToErrorNumber(), 31);
  EXPECT_LT(Status(ENOTTY).ToResultCode(), 0);
}

TEST(Status, DescribesInTheWordsOfTheHost) {
  EXPECT_EQ(Status(ENOENT).Describe(), "No such file or directory");
  EXPECT_EQ(Status(EACCES).Describe(), "Permission denied");
}

TEST(Status, TakesTheNumberOfTheLastCall) {
  errno = ENOSPC;
  EXPECT_EQ(Status::OfLastCall().GetNative(), ENOSPC);
}

}  // namespace
