#include "Quillbase/Binary.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

int releases = 0;
const char* released = nullptr;

void CountingRelease(char* ioData) {
  ++releases;
  released = ioData;
}

class BinaryTest : public ::testing::Test {
 protected:
  BinaryTest() {
    releases = 0;
    released = nullptr;
  }
  char _data[5] = {'a', 'b', 'c', '\0', 'e'};
};

TEST_F(BinaryTest, EmptyHasNoData) {
  const QB::Binary empty;
  EXPECT_EQ(empty.GetData(), nullptr);
  EXPECT_EQ(empty.GetSize(), 0u);
  EXPECT_TRUE(empty.IsEmpty());
}

TEST_F(BinaryTest, FreesItsDataOnce) {
  {
    const QB::Binary binary(_data, sizeof(_data), &CountingRelease);
    EXPECT_EQ(binary.GetData(), _data);
    EXPECT_EQ(binary.GetSize(), 5u);
    EXPECT_FALSE(binary.IsEmpty());
    EXPECT_EQ(releases, 0);
  }
  EXPECT_EQ(releases, 1);
  EXPECT_EQ(released, _data);
}

TEST_F(BinaryTest, CopiesShareAndTheLastOneFrees) {
  {
    QB::Binary assigned;
    {
      const QB::Binary binary(_data, sizeof(_data), &CountingRelease);
      const QB::Binary copy(binary);
      assigned = copy;
      EXPECT_EQ(copy.GetData(), _data);
    }
    EXPECT_EQ(releases, 0);
    EXPECT_EQ(assigned.GetData(), _data);
    EXPECT_EQ(assigned.GetSize(), 5u);
  }
  EXPECT_EQ(releases, 1);
}

TEST_F(BinaryTest, MovesHandOver) {
  {
    QB::Binary source(_data, sizeof(_data), &CountingRelease);
    QB::Binary target(std::move(source));
    EXPECT_EQ(source.GetData(), nullptr);
    EXPECT_EQ(source.GetSize(), 0u);
    QB::Binary assigned;
    assigned = std::move(target);
    EXPECT_TRUE(target.IsEmpty());
    EXPECT_EQ(assigned.GetData(), _data);
    EXPECT_EQ(releases, 0);
  }
  EXPECT_EQ(releases, 1);
}

TEST_F(BinaryTest, AssignmentFreesWhatWasThere) {
  char other[1] = {'o'};
  QB::Binary binary(_data, sizeof(_data), &CountingRelease);
  binary = QB::Binary(other, 1, &CountingRelease);
  EXPECT_EQ(releases, 1);
  EXPECT_EQ(released, _data);
  binary = QB::Binary();
  EXPECT_EQ(releases, 2);
}

TEST_F(BinaryTest, AssignsItself) {
  QB::Binary binary(_data, sizeof(_data), &CountingRelease);
  QB::Binary& same = binary;
  binary = same;
  binary = std::move(same);
  EXPECT_EQ(releases, 0);
  EXPECT_EQ(binary.GetData(), _data);
}

TEST_F(BinaryTest, WithoutAReleaseFunctionTheDataStaysTheCallers) {
  {
    const QB::Binary binary(_data, sizeof(_data), nullptr);
    const QB::Binary copy(binary);
    EXPECT_EQ(copy.GetData(), _data);
  }
  EXPECT_EQ(_data[0], 'a');
}

TEST_F(BinaryTest, PlatformArraysAreFreedByThePlatform) {
  char* const data = QB::allocateArrayChar(100);
  std::memset(data, 'x', 100);
  const QB::Binary binary(data, 100, &QB::deallocateArrayChar);
  const QB::Binary fromNew(new char[10](), 10, &QB::deallocateArrayChar);
  EXPECT_EQ(binary.GetData()[99], 'x');
  EXPECT_EQ(fromNew.GetData()[9], '\0');
  QB::deallocateArrayChar(nullptr);
}

std::atomic<int> concurrentReleases{0};

TEST_F(BinaryTest, OwnersOnSeveralThreadsFreeOnce) {
  concurrentReleases = 0;
  {
    const QB::Binary binary(_data, sizeof(_data), [](char*) { ++concurrentReleases; });
    std::vector<std::thread> owners;
    for (int number = 0; number < 4; ++number) {
      owners.emplace_back([copy = binary] {
        for (int round = 0; round < 500; ++round) {
          QB::Binary other(copy);
          QB::Binary third;
          third = other;
        }
      });
    }
    for (std::thread& owner : owners) {
      owner.join();
    }
    EXPECT_EQ(concurrentReleases.load(), 0);
  }
  EXPECT_EQ(concurrentReleases.load(), 1);
}

TEST_F(BinaryTest, SliceReadsTheData) {
  const QB::Binary binary(_data, sizeof(_data), nullptr);
  const QB::BinarySlice slice(binary);
  EXPECT_EQ(slice.GetData(), _data);
  EXPECT_EQ(slice.GetSize(), 5u);
  EXPECT_EQ(QB::BinarySlice(QB::Binary()).GetData(), nullptr);
}

}  // namespace
