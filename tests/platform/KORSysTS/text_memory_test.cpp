#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <new>
#include <string>

#include "KORSysTS/KORUnicodeString.h"

// This program's allocations can be made to fail: a text that could not be changed is as it was.

namespace {

thread_local int allocationsLeft = -1;  // negative: no limit
thread_local int allocationCount = 0;

void* Allocate(std::size_t iSize) {
  if (allocationsLeft == 0) {
    throw std::bad_alloc();
  }
  allocationsLeft -= allocationsLeft > 0 ? 1 : 0;
  ++allocationCount;
  void* const memory = std::malloc(iSize == 0 ? 1 : iSize);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

}  // namespace

void* operator new(std::size_t iSize) {
  return Allocate(iSize);
}
void* operator new[](std::size_t iSize) {
  return Allocate(iSize);
}
void operator delete(void* ioMemory) noexcept {
  std::free(ioMemory);
}
void operator delete[](void* ioMemory) noexcept {
  std::free(ioMemory);
}
void operator delete(void* ioMemory, std::size_t) noexcept {
  std::free(ioMemory);
}
void operator delete[](void* ioMemory, std::size_t) noexcept {
  std::free(ioMemory);
}

namespace {

using Change = std::function<void(KORUnicodeString&)>;

// Lets the first, second, ... allocation of a change fail until it goes through. Answers how often it failed.
int FailEverywhere(const std::string& iContent, const Change& iChange) {
  for (int granted = 0;; ++granted) {
    KORUnicodeString text(iContent);
    bool isDone = true;
    allocationsLeft = granted;
    try {
      iChange(text);
    } catch (const std::bad_alloc&) {
      isDone = false;
    }
    allocationsLeft = -1;
    if (isDone) {
      return granted;
    }
    EXPECT_EQ(text.ConvertToChar(), iContent);
    EXPECT_STREQ(text.CastToCharPtr(), iContent.c_str());
  }
}

TEST(TextMemory, AFailedChangeLeavesTheTextAsItWas) {
  const KORUnicodeString extra('e', 500);
  const KORUnicodeString mixed(KORUnicodeChar(U'\u023A'), 100);
  const std::string contents[] = {"short", std::string(100, 'x'), mixed.ConvertToChar()};
  for (const std::string& content : contents) {
    EXPECT_GT(FailEverywhere(content, [&](KORUnicodeString& ioText) { ioText += extra; }), 0);
    EXPECT_GT(FailEverywhere(content, [&](KORUnicodeString& ioText) { ioText = extra; }), 0);
    EXPECT_GT(FailEverywhere(content, [&](KORUnicodeString& ioText) { ioText = extra.CastToCharPtr(); }), 0);
    EXPECT_GT(FailEverywhere(content, [&](KORUnicodeString& ioText) { ioText.Insert(1, extra); }), 0);
    EXPECT_GT(FailEverywhere(content, [&](KORUnicodeString& ioText) { ioText.ReplaceSubString(1, 2, extra); }), 0);
    EXPECT_GT(FailEverywhere(content, [&](KORUnicodeString& ioText) { ioText.Reserve(1000); }), 0);
    EXPECT_GT(FailEverywhere(content, [&](KORUnicodeString& ioText) { ioText = ioText + extra; }), 0);
  }
  EXPECT_GT(FailEverywhere(contents[1], [&](KORUnicodeString& ioText) { ioText.ReplaceAll("x", "yyy"); }), 0);
  EXPECT_GT(FailEverywhere(contents[2], [](KORUnicodeString& ioText) { ioText.ToLower(); }), 0);
}

int AllocationsOf(const std::function<void()>& iWork) {
  const int before = allocationCount;
  iWork();
  return allocationCount - before;
}

TEST(TextMemory, ShortTextsAllocateNothing) {
  EXPECT_EQ(AllocationsOf([] {
              KORUnicodeString text("twenty-two bytes: 1234");
              KORUnicodeString copy(text);
              KORUnicodeString moved(std::move(copy));
              moved.ToUpper();
              moved.Insert(3, "").Remove(0, 12);
              moved += "a";
              EXPECT_EQ(moved.Compare(text), 0);
              EXPECT_EQ(text.SearchSubString("1234"), 18);
              EXPECT_EQ(text.SubString(18, 4), "1234");
              EXPECT_EQ(text.WildMatch("*12*", '*', '\\'), 1);
            }),
            0);
}

TEST(TextMemory, ComparingAndReadingAllocateNothing) {
  const KORUnicodeString upper(KORUnicodeChar(U'\u0416'), 500);
  const KORUnicodeString lower(KORUnicodeChar(U'\u0436'), 500);
  EXPECT_EQ(AllocationsOf([&] {
              EXPECT_EQ(upper.Compare(lower), 1);
              EXPECT_FALSE(upper == lower);
              EXPECT_TRUE(upper < lower);
              EXPECT_TRUE(upper[250] == U'\u0416');
              EXPECT_EQ(upper.SearchSubString(lower), -1);
            }),
            0);
}

TEST(TextMemory, GrowingAllocatesNowAndThen) {
  EXPECT_LT(AllocationsOf([] {
              KORUnicodeString text;
              for (int index = 0; index < 1'000'000; ++index) {
                text += 'x';
              }
            }),
            50);
}

TEST(TextMemory, CopiesAndSumsAllocateOnce) {
  const KORUnicodeString text('x', 1000);
  EXPECT_EQ(AllocationsOf([&] { const KORUnicodeString copy(text); }), 1);
  EXPECT_EQ(AllocationsOf([&] { const KORUnicodeString sum = text + text; }), 1);
  EXPECT_EQ(AllocationsOf([&] { const KORUnicodeString part = text.SubString(1, 900); }), 1);
}

}  // namespace
