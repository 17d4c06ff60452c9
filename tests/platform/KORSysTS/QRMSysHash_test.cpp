#include "KORSysTS/QRMSysHash.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "KORSysBase/KORResult.h"
#include "support/pending_error.h"

namespace {

using VYX::Test::TakePendingError;

std::string Finished(QRMSysHashContext& ioContext) {
  char* digest = nullptr;
  std::uint64_t size = 0;
  if (QRMSysHash_Final(ioContext, digest, size) != S_OK) {
    return "(failed)";
  }
  const std::unique_ptr<char[]> owner(digest);
  std::string text;
  for (std::uint64_t i = 0; i < size; ++i) {
    char hex[3];
    std::snprintf(hex, sizeof hex, "%02x", static_cast<unsigned>(static_cast<unsigned char>(digest[i])));
    text += hex;
  }
  return text;
}

std::string DigestOf(std::uint32_t iAlgorithm, std::string_view iData) {
  QRMSysHashContext context;
  EXPECT_EQ(QRMSysHash_Init(iAlgorithm, context), S_OK);
  EXPECT_EQ(QRMSysHash_Update(context, iData.data(), iData.size()), S_OK);
  return Finished(context);
}

struct DigestRow {
  std::uint32_t algorithm;
  std::string data;
  std::string_view digest;
};
void PrintTo(const DigestRow& iRow, std::ostream* ioStream) {
  *ioStream << iRow.algorithm << " of " << iRow.data.size() << " bytes";
}

class DigestVector : public ::testing::TestWithParam<DigestRow> {};

TEST_P(DigestVector, InOneGo) {
  EXPECT_EQ(DigestOf(GetParam().algorithm, GetParam().data), GetParam().digest);
}

TEST_P(DigestVector, InStepsOfAnyLength) {
  for (const std::size_t step : {1U, 3U, 63U, 64U, 65U, 127U, 4096U}) {
    if (GetParam().data.size() > 100'000 && step < 63) {
      continue;
    }
    QRMSysHashContext context;
    ASSERT_EQ(QRMSysHash_Init(GetParam().algorithm, context), S_OK);
    for (std::size_t start = 0; start < GetParam().data.size(); start += step) {
      const std::string_view part = std::string_view(GetParam().data).substr(start, step);
      ASSERT_EQ(QRMSysHash_Update(context, part.data(), part.size()), S_OK);
    }
    EXPECT_EQ(Finished(context), GetParam().digest) << "steps of " << step;
  }
}

const std::string kTwoBlocks = "abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq";
const std::string kTwoLongBlocks =
    "abcdefghbcdefghicdefghijdefghijkefghijklfghijklmghijklmnhijklmnoijklmnopjklmnopqklmnopqrlmnopqrsmnopqrstnopqrstu";
const std::string kMillion(1'000'000, 'a');

// RFC 1321, appendix A.5.
INSTANTIATE_TEST_SUITE_P(
    Md5, DigestVector,
    ::testing::Values(DigestRow{0, "", "d41d8cd98f00b204e9800998ecf8427e"},
                      DigestRow{0, "a", "0cc175b9c0f1b6a831c399e269772661"},
                      DigestRow{0, "abc", "900150983cd24fb0d6963f7d28e17f72"},
                      DigestRow{0, "message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
                      DigestRow{0, "abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
                      DigestRow{0, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
                                "d174ab98d277d9f5a5611c2c9f419d9f"},
                      DigestRow{0, "12345678901234567890123456789012345678901234567890123456789012345678901234567890",
                                "57edf4a22be3c955ac49da2e2107b67a"}));

// FIPS 180-4, the examples published with it; the digests of nothing are those of the validation suite.
INSTANTIATE_TEST_SUITE_P(Sha1, DigestVector,
                         ::testing::Values(DigestRow{1, "", "da39a3ee5e6b4b0d3255bfef95601890afd80709"},
                                           DigestRow{1, "abc", "a9993e364706816aba3e25717850c26c9cd0d89d"},
                                           DigestRow{1, kTwoBlocks, "84983e441c3bd26ebaae4aa1f95129e5e54670f1"},
                                           DigestRow{1, kMillion, "34aa973cd4c4daa4f61eeb2bdbad27316534016f"}));
INSTANTIATE_TEST_SUITE_P(
    Sha256, DigestVector,
    ::testing::Values(DigestRow{2, "", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
                      DigestRow{2, "abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
                      DigestRow{2, kTwoBlocks, "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
                      DigestRow{2, kMillion, "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"}));
INSTANTIATE_TEST_SUITE_P(
    Sha512, DigestVector,
    ::testing::Values(DigestRow{3, "",
                                "cf83e1357eefb8bdf1542850d66d8007d620e4050b5715dc83f4a921d36ce9ce"
                                "47d0d13c5d85f2b0ff8318d2877eec2f63b931bd47417a81a538327af927da3e"},
                      DigestRow{3, "abc",
                                "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a"
                                "2192992a274fc1a836ba3c23a3feebbd454d4423643ce80e2a9ac94fa54ca49f"},
                      DigestRow{3, kTwoLongBlocks,
                                "8e959b75dae313da8cf4f72814fc143f8f7779c6eb9f7fa17299aeadb6889018"
                                "501d289e4900f7e4331b99dec4b5433ac7d329eeb6dd26545e96e55b874be909"}));

TEST(QRMSysHash, AContextServesOneDigestAfterAnother) {
  QRMSysHashContext context;
  for (const std::uint32_t algorithm : {2U, 0U, 3U, 1U, 2U}) {
    ASSERT_EQ(QRMSysHash_Init(algorithm, context), S_OK);
    ASSERT_EQ(QRMSysHash_Update(context, "ab", 2), S_OK);
    ASSERT_EQ(QRMSysHash_Update(context, "c", 1), S_OK);
    EXPECT_EQ(Finished(context), DigestOf(algorithm, "abc"));
  }
}

TEST(QRMSysHash, InitGivesUpAnUnfinishedDigest) {
  QRMSysHashContext context;
  ASSERT_EQ(QRMSysHash_Init(0, context), S_OK);
  ASSERT_EQ(QRMSysHash_Update(context, "lost", 4), S_OK);
  ASSERT_EQ(QRMSysHash_Init(0, context), S_OK);
  EXPECT_EQ(Finished(context), "d41d8cd98f00b204e9800998ecf8427e");
}

TEST(QRMSysHash, NoBytesChangeNothing) {
  QRMSysHashContext context;
  ASSERT_EQ(QRMSysHash_Init(0, context), S_OK);
  EXPECT_EQ(QRMSysHash_Update(context, nullptr, 0), S_OK);
  EXPECT_EQ(Finished(context), "d41d8cd98f00b204e9800998ecf8427e");
}

TEST(QRMSysHash, ABadAlgorithmLeavesTheContextAsItIs) {
  QRMSysHashContext context;
  ASSERT_EQ(QRMSysHash_Init(0, context), S_OK);
  ASSERT_EQ(QRMSysHash_Update(context, "a", 1), S_OK);
  for (const std::uint32_t algorithm : {4U, 5U, 0xFFFFFFFFU}) {
    EXPECT_EQ(QRMSysHash_Init(algorithm, context), E_INVALIDARG);
    EXPECT_EQ(TakePendingError(E_INVALIDARG),
              "Cannot begin a digest: there is no algorithm " + std::to_string(algorithm));
  }
  EXPECT_EQ(Finished(context), "0cc175b9c0f1b6a831c399e269772661");
}

TEST(QRMSysHash, NullDataWithACountIsRefused) {
  QRMSysHashContext context;
  ASSERT_EQ(QRMSysHash_Init(0, context), S_OK);
  EXPECT_EQ(QRMSysHash_Update(context, nullptr, 5), E_INVALIDARG);
  EXPECT_EQ(TakePendingError(E_INVALIDARG), "Cannot continue a digest: no data for a count of 5 bytes");
  EXPECT_EQ(Finished(context), "d41d8cd98f00b204e9800998ecf8427e");
}

void ExpectNothingBegun(QRMSysHashContext& ioContext) {
  char mark = 0;
  char* digest = &mark;
  std::uint64_t size = 7;
  EXPECT_EQ(QRMSysHash_Update(ioContext, "a", 1), E_FAIL);
  EXPECT_EQ(TakePendingError(E_FAIL), "Cannot continue a digest: none was begun");
  EXPECT_EQ(QRMSysHash_Final(ioContext, digest, size), E_FAIL);
  EXPECT_EQ(TakePendingError(E_FAIL), "Cannot end a digest: none was begun");
  EXPECT_EQ(digest, &mark);
  EXPECT_EQ(size, 7U);
}

TEST(QRMSysHash, OutOfTurn) {
  QRMSysHashContext context;
  ExpectNothingBegun(context);
  ASSERT_EQ(QRMSysHash_Init(1, context), S_OK);
  EXPECT_EQ(Finished(context), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
  ExpectNothingBegun(context);
}

TEST(QRMSysHash, MovingTakesTheComputationAlong) {
  QRMSysHashContext first;
  ASSERT_EQ(QRMSysHash_Init(0, first), S_OK);
  ASSERT_EQ(QRMSysHash_Update(first, "a", 1), S_OK);
  QRMSysHashContext second(std::move(first));
  QRMSysHashContext third;
  ASSERT_EQ(QRMSysHash_Init(1, third), S_OK);
  third = std::move(second);
  EXPECT_EQ(Finished(third), "0cc175b9c0f1b6a831c399e269772661");
}

TEST(QRMSysHash, ThreadsHashSideBySide) {
  std::vector<std::thread> threads;
  for (std::uint32_t algorithm = 0; algorithm < 4; ++algorithm) {
    threads.emplace_back([algorithm] {
      const std::string first = DigestOf(algorithm, "abc");
      for (int round = 0; round < 200; ++round) {
        EXPECT_EQ(DigestOf(algorithm, "abc"), first);
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
}

}  // namespace
