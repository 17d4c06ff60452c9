#include "VYXPropertyTree/object.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "VYXPropertyTree/object_body.h"
#include "tree_testing.h"

namespace json {
namespace {

std::vector<std::string> KeysOf(const Object& iObject) {
  std::vector<std::string> keys;
  SlotTable::Cursor members = MembersOf(iObject);
  while (const Entry* const member = members.Next()) {
    keys.push_back(member->key.ConvertToChar());
  }
  return keys;
}

KORUnicodeString Key(std::string_view iText) {
  return KORUnicodeString(iText);
}

/// Keys whose order is easily got wrong: prefixes of one another, zero bytes, bytes above ASCII, equal first eight
/// bytes.
std::vector<std::string> AwkwardKeys() {
  using std::string_literals::operator""s;
  std::vector<std::string> keys = {
      "",          "\0"s,        "\0\0"s,    "a",           "a\0"s,      "a\0b"s,        "ab",
      "abcdefg",   "abcdefg\0"s, "abcdefgh", "abcdefgh\0"s, "abcdefghi", "abcdefgh1",    "abcdefgh10",
      "abcdefgh2", "B",          "b",        "\x7F",        "\xC3\xA9",  "\xE2\x82\xAC", "\xF0\x9F\x98\x80",
      "\xFF",      "\xFF\xFF",   "zz"};
  std::sort(keys.begin(), keys.end(), [](const std::string& iLeft, const std::string& iRight) {
    return std::string_view(iLeft) < std::string_view(iRight);
  });
  return keys;
}

TEST(Object, KeepsAwkwardKeysInByteOrder) {
  const std::vector<std::string> sorted = AwkwardKeys();
  std::vector<std::string> shuffled = sorted;
  std::mt19937 random(7);
  for (int round = 0; round < 20; ++round) {
    std::shuffle(shuffled.begin(), shuffled.end(), random);
    Object object;
    if (round % 2 == 1) {
      object.Reserve(shuffled.size() / 2);
    }
    for (const std::string& key : shuffled) {
      object.Set(Key(key), VYX::Test::Text(key));
    }
    ASSERT_EQ(KeysOf(object), sorted);
    for (const std::string& key : sorted) {
      const Value* const value = object.Find(Key(key));
      ASSERT_NE(value, nullptr);
      EXPECT_EQ(value->GetString(), Key(key));
      EXPECT_EQ(object.Find(Key(key + "\x01")), nullptr);
    }
  }
}

TEST(Object, OrderIsTheTextsOwn) {
  const std::vector<std::string> sorted = AwkwardKeys();
  for (std::size_t index = 1; index < sorted.size(); ++index) {
    EXPECT_TRUE(Key(sorted[index - 1]) < Key(sorted[index])) << index;
  }
}

/// Does the same to an object and to a std::map and compares them.
class ObjectModel {
 public:
  ObjectModel(unsigned iSeed, std::size_t iReserved) : _random(iSeed) { _object.Reserve(iReserved); }

  void Step(int iKeyRange, const char* iPrefix) {
    const std::string key = iPrefix + std::to_string(static_cast<int>(_random()) % iKeyRange);
    if (_random() % 3 == 0) {
      EXPECT_EQ(_object.Erase(Key(key)), _model.erase(key) == 1) << key;
    } else {
      const double number = static_cast<double>(_random() % 1000);
      _object.Set(Key(key), Value(number));
      _model[key] = number;
    }
  }

  void Compare() const {
    ASSERT_EQ(_object.Size(), _model.size());
    auto expected = _model.begin();
    SlotTable::Cursor members = MembersOf(_object);
    while (const Entry* const member = members.Next()) {
      ASSERT_NE(expected, _model.end());
      ASSERT_EQ(member->key.ToStringView(), expected->first);
      ASSERT_EQ(member->value.GetNumber(), expected->second);
      ASSERT_EQ(_object.Find(member->key), &member->value);
      ++expected;
    }
    ASSERT_EQ(expected, _model.end());
  }

 private:
  Object _object;
  std::map<std::string, double> _model;
  std::mt19937 _random;
};

TEST(Object, BehavesAsASortedMap) {
  for (const int range : {5, 100, 3000}) {
    for (const char* const prefix : {"", "k", "a prefix longer than eight bytes "}) {
      SCOPED_TRACE(std::string(prefix) + std::to_string(range));
      ObjectModel model(static_cast<unsigned>(range), range == 100 ? 60 : 0);
      for (int step = 0; step < 4 * range; ++step) {
        model.Step(range, prefix);
        if (step % range == 0) {
          model.Compare();
        }
      }
      model.Compare();
    }
  }
}

TEST(Object, KeepsAddressesWhileOthersComeAndGo) {
  constexpr int kOthers = 100'000;
  Object object;
  object.Reserve(2);
  const Value* const reserved = &object.Set("m-reserved", Value(1.0));
  object.Set("m-second", Value(2.0));
  const Value* const single = &object.Set("m-single", Value(3.0));
  std::vector<int> order(kOthers);
  for (int index = 0; index < kOthers; ++index) {
    order[static_cast<std::size_t>(index)] = index;
  }
  std::mt19937 random(11);
  std::shuffle(order.begin(), order.end(), random);
  for (const int index : order) {
    object.Set(Key((index % 2 == 0 ? "a" : "z") + std::to_string(index)), Value(0.0));
  }
  Object moved(std::move(object));
  std::shuffle(order.begin(), order.end(), random);
  for (const int index : order) {
    ASSERT_TRUE(moved.Erase(Key((index % 2 == 0 ? "a" : "z") + std::to_string(index))));
  }
  EXPECT_EQ(moved.Find("m-reserved"), reserved);
  EXPECT_EQ(moved.Find("m-single"), single);
  EXPECT_EQ(reserved->GetNumber(), 1.0);
  EXPECT_EQ(single->GetNumber(), 3.0);
  EXPECT_EQ(moved.Size(), 3U);
}

TEST(Object, HoldsAMillionShuffledKeys) {
  constexpr int kCount = 1'000'000;
  std::vector<int> order(kCount);
  for (int index = 0; index < kCount; ++index) {
    order[static_cast<std::size_t>(index)] = index;
  }
  std::shuffle(order.begin(), order.end(), std::mt19937(5));
  Object object;
  for (const int index : order) {
    object.Set(Key(std::to_string(kCount + index)), Value(static_cast<double>(index)));
  }
  ASSERT_EQ(object.Size(), static_cast<std::size_t>(kCount));
  SlotTable::Cursor members = MembersOf(object);
  double expected = 0;
  while (const Entry* const member = members.Next()) {
    ASSERT_EQ(member->value.GetNumber(), expected++);
  }
  EXPECT_EQ(expected, kCount);
}

TEST(Object, ReusesAndKeepsReservedMembers) {
  Object object;
  object.Reserve(4);
  const Value* const first = &object.Set("a", Value(1.0));
  EXPECT_TRUE(object.Erase("a"));
  EXPECT_TRUE(object.IsEmpty());
  EXPECT_EQ(&object.Set("b", Value(2.0)), first);
  object.Reserve(100);
  for (const char* const key : {"c", "d", "e", "f", "g"}) {
    object.Set(key, Value(3.0));
  }
  EXPECT_EQ(object.Find("b"), first);
  EXPECT_FALSE(object.Erase("a"));
  EXPECT_EQ(KeysOf(object), (std::vector<std::string>{"b", "c", "d", "e", "f", "g"}));
  EXPECT_THROW(Object().Reserve(static_cast<std::size_t>(-1) / 8), std::bad_alloc);
}

}  // namespace
}  // namespace json
