#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "platform/adapters/json_reader.h"

using VYX::Adapters::JsonDocument;
using VYX::Adapters::JsonFailure;
using VYX::Adapters::JsonWalk;

namespace {

std::string NumbersUpTo(int iCount) {
  std::string text = "[0";
  for (int i = 1; i < iCount; ++i) {
    text += "," + std::to_string(i);
  }
  return text + "]";
}

double SumOf(const JsonDocument& iDocument) {
  double sum = 0;
  for (JsonWalk walk(iDocument.Root()); walk.Next();) {
    sum += walk.Value().Number();
  }
  return sum;
}

TEST(JsonReaderThreads, ParsesInManyThreadsWithSharedMemory) {
  std::vector<std::thread> threads;
  std::vector<int> failures(16, 0);
  for (int worker = 0; worker < 16; ++worker) {
    threads.emplace_back([worker, &failures] {
      for (int round = 0; round < 60; ++round) {
        const int count = 1 + (worker * 131 + round * 977) % 3000;
        JsonDocument first;
        JsonDocument second;
        JsonFailure failure;
        const bool isRead =
            first.Parse(NumbersUpTo(count), failure) && second.Parse("[123456789012345678901]", failure);
        const bool isRefused = !JsonDocument().Parse("[1,\n}", failure) && failure.line == 2;
        const bool isRight = isRead && isRefused && SumOf(first) == count * (count - 1.0) / 2;
        failures[static_cast<std::size_t>(worker)] += isRight ? 0 : 1;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(failures, std::vector<int>(16, 0));
}

TEST(JsonReaderThreads, ReadsOneDocumentInManyThreads) {
  JsonDocument document;
  JsonFailure failure;
  ASSERT_TRUE(document.Parse(NumbersUpTo(1000), failure));
  std::vector<double> sums(8, 0);
  std::vector<std::thread> threads;
  for (double& sum : sums) {
    threads.emplace_back([&document, &sum] { sum = SumOf(document); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(sums, std::vector<double>(8, 499500.0));
}

}  // namespace
