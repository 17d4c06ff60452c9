#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "Quillbase/Binary.h"

namespace {

std::string Rest(QB::BinaryReader& ioReader) {
  std::string rest;
  for (char next = '\0'; ioReader.ReadChar(next);) {
    rest += next;
  }
  return rest;
}

TEST(BinaryReader, ReadsEveryByteInOrder) {
  char data[] = {'a', '\0', '\xFF', 'd'};
  const QB::Binary binary(data, sizeof(data), nullptr);
  QB::BinaryReader reader(binary);
  EXPECT_EQ(Rest(reader), std::string(data, sizeof(data)));
}

TEST(BinaryReader, TheEndLeavesTheOutputAlone) {
  const QB::Binary empty;
  QB::BinaryReader reader(empty);
  char next = 'x';
  EXPECT_FALSE(reader.ReadChar(next));
  EXPECT_EQ(next, 'x');
  EXPECT_TRUE(reader.Seek(0));
  EXPECT_FALSE(reader.Seek(1));
}

TEST(BinaryReader, SeeksInsideAndToTheEnd) {
  char data[] = {'a', 'b', 'c', 'd'};
  const QB::Binary binary(data, sizeof(data), nullptr);
  QB::BinaryReader reader(binary);
  EXPECT_TRUE(reader.Seek(2));
  EXPECT_EQ(Rest(reader), "cd");
  EXPECT_TRUE(reader.Seek(0));
  EXPECT_EQ(Rest(reader), "abcd");
  EXPECT_TRUE(reader.Seek(4));
  EXPECT_EQ(Rest(reader), "");
  EXPECT_TRUE(reader.Seek(1));
  EXPECT_FALSE(reader.Seek(5));
  EXPECT_FALSE(reader.Seek(UINT64_MAX));
  EXPECT_EQ(Rest(reader), "bcd");
}

}  // namespace
