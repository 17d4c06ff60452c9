#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"

namespace {

constexpr int kThreads = 4;
constexpr int kCount = 2000;

TEST(TextThreads, SeveralReadersOfOneText) {
  KORUnicodeString text;
  for (int index = 0; index < kCount; ++index) {
    text += KORUnicodeChar(static_cast<char32_t>(0x400 + index % 64));
  }
  const KORUnicodeString shared(std::string_view(text.ToStringView()));
  std::atomic<int> wrong{0};
  std::vector<std::thread> readers;
  for (int reader = 0; reader < kThreads; ++reader) {
    readers.emplace_back([&shared, &wrong, reader] {
      for (int step = 0; step < kCount; ++step) {
        const int position = reader % 2 == 0 ? step : kCount - 1 - step;
        const auto expected = static_cast<char32_t>(0x400 + position % 64);
        const bool isRight = shared[position] == expected && shared.GetLengthInChar() == kCount &&
                             shared.SubString(position, 1)[0] == expected;
        wrong += isRight ? 0 : 1;
      }
      wrong += shared.SearchSubString(shared) == 0 ? 0 : 1;
    });
  }
  for (std::thread& reader : readers) {
    reader.join();
  }
  EXPECT_EQ(wrong.load(), 0);
}

}  // namespace
