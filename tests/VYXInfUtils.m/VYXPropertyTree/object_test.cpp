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
  MemberCursor members = MembersOf(iObject);
  while (const Member member = members.Next()) {
    keys.push_back(member.key->ConvertToChar());
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
    for (const std::string& key : shuffled) {
      object.Set(Key(key), VYX::Test::Text(key));
      if (round % 2 == 1 && object.Size() == shuffled.size() / 2) {
        object = Object(object);  // a copy has the other form
      }
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
  explicit ObjectModel(unsigned iSeed) : _random(iSeed) {}

  /// Goes on with a copy, which has another form than what was inserted one by one.
  void Copy() { _object = Object(_object); }

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
    MemberCursor members = MembersOf(_object);
    while (const Member member = members.Next()) {
      ASSERT_NE(expected, _model.end());
      ASSERT_EQ(member.key->ToStringView(), expected->first);
      ASSERT_EQ(member.value->GetNumber(), expected->second);
      ASSERT_EQ(std::as_const(_object).Find(*member.key), member.value);
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
      ObjectModel model(static_cast<unsigned>(range));
      for (int step = 0; step < 4 * range; ++step) {
        model.Step(range, prefix);
        if (step % range == 0) {
          model.Compare();
          model.Copy();
        }
      }
      model.Compare();
    }
  }
}

TEST(Object, KeepsAddressesWhileOthersComeAndGo) {
  constexpr int kOthers = 100'000;
  Object object;
  object.Set("m-copied", Value(1.0));
  object.Set("m-second", Value(2.0));
  object = Object(object);
  const Value* const copied = object.Find("m-copied");
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
  EXPECT_EQ(moved.Find("m-copied"), copied);
  EXPECT_EQ(moved.Find("m-single"), single);
  EXPECT_EQ(copied->GetNumber(), 1.0);
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
  MemberCursor members = MembersOf(object);
  double expected = 0;
  while (const Member member = members.Next()) {
    ASSERT_EQ(member.value->GetNumber(), expected++);
  }
  EXPECT_EQ(expected, kCount);
}

TEST(Object, ReusesTheRoomOfErasedMembers) {
  Object object;
  object.Set("a", Value(1.0));
  const Value* const second = &object.Set("b", Value(2.0));
  EXPECT_TRUE(object.Erase("b"));
  EXPECT_FALSE(object.Erase("b"));
  EXPECT_EQ(&object.Set("c", Value(3.0)), second);
  EXPECT_EQ(KeysOf(object), (std::vector<std::string>{"a", "c"}));
}

TEST(Object, SetsAgainWhatWasErasedFromACopy) {
  Object source;
  for (const char* const key : {"a", "b", "c"}) {
    source.Set(key, VYX::Test::Text("a text that is too long to stand in the object itself"));
  }
  Object copy(source);
  const Value* const place = std::as_const(copy).Find("b");
  EXPECT_TRUE(copy.Erase("b"));
  EXPECT_FALSE(copy.Erase("b"));
  EXPECT_EQ(copy.Find("b"), nullptr);
  EXPECT_EQ(KeysOf(copy), (std::vector<std::string>{"a", "c"}));
  EXPECT_FALSE(HaveEqualText(copy, source));
  EXPECT_EQ(KeysOf(Object(copy)), KeysOf(copy));
  EXPECT_TRUE(HaveEqualText(Object(copy), copy));
  EXPECT_EQ(&copy.Set("b", Value(2.0)), place);
  EXPECT_EQ(copy.Size(), 3U);
  EXPECT_FALSE(HaveEqualText(copy, source));
  copy.Set("b", Value(source.Find("b")->GetString()));
  EXPECT_TRUE(HaveEqualText(copy, source));
}

TEST(Object, MergedMembersOutliveWhereTheyCameFrom) {
  const char* const longText = "a text that is too long to stand in the object itself";
  Object inner;
  inner.Set("long", VYX::Test::Text(longText));
  Object source;
  source.Set("object", Value(std::move(inner)));
  source.Set("text", VYX::Test::Text(longText));
  source.Set("list", VYX::Test::ArrayOf(VYX::Test::Text(longText)));
  Object target;
  target.Set("list", Value(1.0));
  target.Set("other", Value(true));
  target.Merge(Object(source));
  EXPECT_EQ(KeysOf(target), (std::vector<std::string>{"list", "object", "other", "text"}));
  EXPECT_EQ(target.Find("text")->GetString(), longText);
  EXPECT_EQ(target.Find("object")->GetObject().Find("long")->GetString(), longText);
  target.Find("list")->GetArray().Append(VYX::Test::Text(longText));
  target.Erase("object");
  EXPECT_EQ(target.Find("list")->GetArray().begin()->GetString(), longText);
}

}  // namespace
}  // namespace json
