#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstdint>

#include "VYXInfLog.h"
#include "VYXInfStringUtil.h"
#include "support/captured_stdout.h"
#include "support/pending_error.h"

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kIsSanitized = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
constexpr bool kIsSanitized = true;
#else
constexpr bool kIsSanitized = false;
#endif
#else
constexpr bool kIsSanitized = false;
#endif

// Limits the address space of the process while it lives.
class AddressSpaceLimit {
 public:
  explicit AddressSpaceLimit(rlim_t iBytes) {
    ::getrlimit(RLIMIT_AS, &_before);
    const rlimit limit{iBytes, _before.rlim_max};
    ::setrlimit(RLIMIT_AS, &limit);
  }
  ~AddressSpaceLimit() { ::setrlimit(RLIMIT_AS, &_before); }
  AddressSpaceLimit(const AddressSpaceLimit&) = delete;
  AddressSpaceLimit& operator=(const AddressSpaceLimit&) = delete;

 private:
  rlimit _before{};
};

// The text of 4 GiB less one byte does not fit, which shows before any byte is read.
TEST(EncodeToBase64, NoMemoryForTheText) {
  if (kIsSanitized) {
    GTEST_SKIP() << "the sanitizers reserve more address space than the limit allows";
  }
  char byte = 'a';
  const QB::Binary data(&byte, 0xFFFFFFFFU, nullptr);
  KORUnicodeString text("before");
  VYX::Test::CapturedStdout captured;
  long code = S_OK;
  {
    const AddressSpaceLimit limit(rlim_t{4} << 30);
    code = VYXInfStringUtil::EncodeToBase64(data, &text);
  }
  EXPECT_EQ(code, E_FAIL);
  EXPECT_EQ(text, "");
  EXPECT_THAT(captured.LogLines(), ::testing::ElementsAre(VYX::Test::Line(
                                       "ERROR", "The Base64 encoding failed. (input was 4294967295 BYTEs) ")));
  EXPECT_EQ(VYX::Test::TakePendingError(E_FAIL), "Cannot encode 4294967295 bytes as Base64: not enough memory");
}

}  // namespace
