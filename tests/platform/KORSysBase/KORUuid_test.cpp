#include "KORSysBase/KORUuid.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cerrno>
#include <cstring>
#include <string>

#include "KORSysBase/KORResult.h"
#include "support/injected_faults.h"
#include "support/pending_error.h"

namespace VYX::Test {
namespace {

std::string TextOf(const KORUuid& iUuid) {
  char text[KORUuid::kTextLength + 2];
  std::memset(text, '#', sizeof text);
  iUuid.UUID_to_chaine(text, 0);
  EXPECT_EQ(text[KORUuid::kTextLength], '\0');
  EXPECT_EQ(text[KORUuid::kTextLength + 1], '#') << "nothing is written behind the zero";
  return std::string(text, KORUuid::kTextLength);
}

TEST(KORUuid, TextIsVersionFourInLowerCase) {
  for (int count = 0; count < 200; ++count) {
    const std::string text = TextOf(KORUuid());
    for (std::size_t index = 0; index < text.size(); ++index) {
      const bool isHyphen = index == 8 || index == 13 || index == 18 || index == 23;
      const auto digit = static_cast<unsigned char>(text[index]);
      EXPECT_TRUE(isHyphen ? digit == '-' : std::isxdigit(digit) != 0 && std::isupper(digit) == 0) << text;
    }
    EXPECT_EQ(text[14], '4') << text;
    EXPECT_NE(std::string("89ab").find(text[19]), std::string::npos) << text;
  }
}

TEST(KORUuid, EachIsNew) {
  const KORUuid first;
  const KORUuid second;
  const KORUuid& same = first;
  EXPECT_FALSE(first.IsNil());
  EXPECT_NE(TextOf(first), TextOf(second));
  EXPECT_EQ(first, same);
  EXPECT_FALSE(first == second);
}

TEST(KORUuid, ANullBufferDoesNothing) {
  KORUuid().UUID_to_chaine(nullptr, 0);
}

TEST(KORUuid, InterruptedAndShortAnswersAreCompleted) {
  const SavedSystemCalls saved;
  static int sCalls = 0;
  sCalls = 0;
  Os::Posix::Calls().Random = [](void* oBuffer, std::size_t) -> ssize_t {
    if (++sCalls % 2 == 1) {
      errno = EINTR;
      return -1;
    }
    *static_cast<unsigned char*>(oBuffer) = 0xFF;
    return 1;
  };
  EXPECT_EQ(TextOf(KORUuid()), "ffffffff-ffff-4fff-bfff-ffffffffffff");
  EXPECT_EQ(sCalls, 32);
}

TEST(KORUuid, WithoutRandomNumbersItIsNil) {
  const SavedSystemCalls saved;
  Os::Posix::Calls().Random = [](void*, std::size_t) -> ssize_t {
    errno = ENOSYS;
    return -1;
  };
  const KORUuid uuid;
  EXPECT_TRUE(uuid.IsNil());
  EXPECT_EQ(TextOf(uuid), "00000000-0000-0000-0000-000000000000");
  EXPECT_EQ(TakePendingError(E_FAIL), "Cannot make 'UUID' from random numbers: Function not implemented");
}

}  // namespace
}  // namespace VYX::Test
