// Where the pure functions of interfaces stand that no exported class implements: a table of the library shows their
// places only, and tests/abi/virtual_slots.txt therefore cannot tell them apart.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

#include "VYXLoggingAdapter/ILogger.h"
#include "VYXLoggingAdapter/ILoggerFactory.h"

namespace {

// The C++ ABI of the hosts represents a pointer to a virtual member by its distance in the table, plus one.
template <typename Member>
std::size_t SlotOf(Member iMember) {
  std::size_t place = 0;
  static_assert(sizeof(iMember) >= sizeof(place));
  std::memcpy(&place, &iMember, sizeof(place));
  return (place - 1) / sizeof(void*);
}

TEST(PureSlots, Logger) {
  using VYX::Logging::ILogger;
  EXPECT_EQ(SlotOf(&ILogger::IsFiltered), 2U);
  EXPECT_EQ(SlotOf(&ILogger::Write), 3U);
  EXPECT_EQ(SlotOf(&ILogger::AcceptedLevels), 4U);
}

TEST(PureSlots, LoggerFactory) {
  using VYX::Logging::ILoggerFactory;
  EXPECT_EQ(SlotOf(&ILoggerFactory::AddSink), 2U);
  EXPECT_EQ(SlotOf(&ILoggerFactory::Flush), 3U);
  EXPECT_EQ(SlotOf(&ILoggerFactory::CreateLogger), 4U);
}

}  // namespace
