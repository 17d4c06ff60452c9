#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "KORSysTS/QRMSysHash.h"
#include "VYXInfLog.h"
#include "VYXInfStringUtil.h"
#include "support/captured_stdout.h"
#include "support/pending_error.h"

namespace {

using ::testing::ElementsAre;
using Util = VYXInfStringUtil;
using VYX::Test::CapturedStdout;
using VYX::Test::ConsoleLevel;
using VYX::Test::FailureReturnIn;
using VYX::Test::Line;
using VYX::Test::TakePendingError;

// Makes the cryptographic library offer validated algorithms only, of which there are none. It reads its configuration
// at first use, so this program runs with nothing else in it.
class OnlyValidatedAlgorithms : public ::testing::Environment {
 public:
  void SetUp() override {
    const char* const folder = std::getenv("TMPDIR");
    _path = std::string(folder == nullptr ? "/tmp" : folder) + "/crypto_XXXXXX";
    const int file = ::mkstemp(_path.data());
    ASSERT_GE(file, 0) << _path;
    const std::string text =
        "openssl_conf = start\n[start]\nalg_section = algorithms\n[algorithms]\ndefault_properties = fips=yes\n";
    ASSERT_EQ(::write(file, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    ::close(file);
    ::setenv("OPENSSL_CONF", _path.c_str(), 1);
  }
  void TearDown() override { ::unlink(_path.c_str()); }

 private:
  std::string _path;
};

const auto* const kEnvironment = ::testing::AddGlobalTestEnvironment(new OnlyValidatedAlgorithms);

TEST(DigestRefused, InitNamesTheAlgorithm) {
  constexpr const char* kNames[] = {"MD5", "SHA-1", "SHA-256", "SHA-512"};
  for (std::uint32_t algorithm = 0; algorithm < 4; ++algorithm) {
    QRMSysHashContext context;
    EXPECT_EQ(QRMSysHash_Init(algorithm, context), E_FAIL);
    EXPECT_EQ(TakePendingError(E_FAIL),
              std::string("Cannot begin a digest: the cryptographic library does not offer ") + kNames[algorithm]);
    EXPECT_EQ(QRMSysHash_Update(context, "a", 1), E_FAIL);
    EXPECT_EQ(TakePendingError(E_FAIL), "Cannot continue a digest: none was begun");
  }
}

TEST(DigestRefused, Base64HashTracesItAndLeavesTheTargetAlone) {
  CapturedStdout captured;
  KORUnicodeString hash("before");
  EXPECT_EQ(Util::Base64Hash("abc", Util::HashAlgo::SHA256, hash), E_FAIL);
  EXPECT_EQ(hash, "before");
  EXPECT_THAT(captured.LogLines(),
              ElementsAre(Line("ERROR", "Cannot begin a digest: the cryptographic library does not offer SHA-256"),
                          FailureReturnIn("VYXInfStringUtil/digest.cpp")));
  EXPECT_EQ(TakePendingError(E_FAIL), "(none)");
}

TEST(DigestRefused, IsSilentWhereErrorsAreFiltered) {
  const ConsoleLevel level(FATAL);
  CapturedStdout captured;
  KORUnicodeString hash("before");
  EXPECT_EQ(Util::Base64Hash("abc", Util::HashAlgo::MD5, hash), E_FAIL);
  EXPECT_EQ(hash, "before");
  EXPECT_EQ(captured.Text(), "");
}

}  // namespace
