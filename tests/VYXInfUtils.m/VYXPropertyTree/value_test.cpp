#include "VYXPropertyTree/value.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>

#include "VYXPropertyTree/compact_text.h"
#include "tree_testing.h"

namespace json {
namespace {

using VYX::Test::ArrayOf;
using VYX::Test::ObjectOf;
using VYX::Test::Text;

std::string TextOf(const Value& iValue) {
  return CompactText(iValue).ConvertToChar();
}

Value Sample(Kind iKind) {
  switch (iKind) {
    case Kind::Null:
      return Value();
    case Kind::Boolean:
      return Value(true);
    case Kind::Number:
      return Value(2.5);
    case Kind::String:
      return Text("a text too long to stand in the object itself");
    case Kind::Array:
      return ArrayOf(Value(1.0), Text("x"), ArrayOf(Value()));
    case Kind::Object:
      return ObjectOf({{"a", 1.0}, {"b", 2.0}});
  }
  return Value();
}

constexpr Kind kKinds[] = {Kind::Null, Kind::Boolean, Kind::Number, Kind::String, Kind::Array, Kind::Object};

TEST(Value, AlternativesHaveTheirNumbers) {
  int number = 0;
  for (const Kind kind : kKinds) {
    EXPECT_EQ(static_cast<int>(kind), number++);
    EXPECT_EQ(Sample(kind).GetKind(), kind);
  }
}

TEST(Value, WrongAccessHasItsFixedText) {
  for (const Kind kind : kKinds) {
    const Value value = Sample(kind);
    const auto check = [&](Kind iRead, auto&& iAccess) {
      SCOPED_TRACE(static_cast<int>(kind));
      if (iRead == kind) {
        EXPECT_NO_THROW(iAccess());
        return;
      }
      try {
        iAccess();
        ADD_FAILURE() << "no exception when read as " << static_cast<int>(iRead);
      } catch (const std::bad_variant_access& exception) {
        EXPECT_STREQ(exception.what(), "bad variant access");
      }
    };
    check(Kind::Boolean, [&] { static_cast<void>(value.GetBoolean()); });
    check(Kind::Number, [&] { static_cast<void>(value.GetNumber()); });
    check(Kind::String, [&] { static_cast<void>(value.GetString()); });
    check(Kind::Array, [&] { static_cast<void>(value.GetArray()); });
    check(Kind::Object, [&] { static_cast<void>(value.GetObject()); });
  }
}

TEST(Value, CopiesAreDeepAndMovesLeaveTheAlternativeEmpty) {
  for (const Kind kind : kKinds) {
    SCOPED_TRACE(static_cast<int>(kind));
    Value source = Sample(kind);
    const std::string text = TextOf(source);
    Value copy(source);
    EXPECT_EQ(TextOf(copy), text);
    Value moved(std::move(source));
    EXPECT_EQ(TextOf(moved), text);
    EXPECT_EQ(source.GetKind(), kind);
    for (const Kind other : kKinds) {
      Value target = Sample(other);
      target = copy;
      EXPECT_EQ(TextOf(target), text);
    }
  }
  Value object = Sample(Kind::Object);
  const Value taken(std::move(object));
  EXPECT_TRUE(object.GetObject().IsEmpty());
  Value array = Sample(Kind::Array);
  const Value takenArray(std::move(array));
  EXPECT_TRUE(array.GetArray().IsEmpty());
}

TEST(Value, TakesItselfAndItsOwnPartsOver) {
  Value value = ArrayOf(ArrayOf(Value(1.0)), Value(2.0));
  Value& same = value;
  value = std::move(same);
  EXPECT_EQ(TextOf(value), "[[1],2]");
  value = std::move(value.GetArray().At(0));
  EXPECT_EQ(TextOf(value), "[1]");
  value = value.GetArray().At(0);
  EXPECT_EQ(TextOf(value), "1");
}

TEST(Array, ChecksItsIndexes) {
  Array array;
  for (int round = 0; round < 3; ++round) {
    for (const std::size_t index : {array.Size(), array.Size() + 1, static_cast<std::size_t>(-1)}) {
      try {
        array.At(index);
        ADD_FAILURE() << index;
      } catch (const std::out_of_range& exception) {
        EXPECT_STREQ(exception.what(), "invalid vector subscript");
      }
    }
    array.Append(Value(static_cast<double>(round)));
    EXPECT_EQ(array.At(array.Size() - 1).GetNumber(), round);
  }
}

TEST(Array, GrowsAndRefusesMoreThanMemoryHolds) {
  Array array;
  for (int index = 0; index < 1000; ++index) {
    array.Append(index % 2 == 0 ? Text("element number " + std::to_string(index) + " of a long list")
                                : Value(index * 1.0));
  }
  ASSERT_EQ(array.Size(), 1000U);
  EXPECT_EQ(array.At(998).GetString(), "element number 998 of a long list");
  EXPECT_EQ(array.At(999).GetNumber(), 999.0);
  EXPECT_THROW(array.Reserve(static_cast<std::size_t>(-1) / 8), std::bad_alloc);
  EXPECT_EQ(array.Size(), 1000U);
}

}  // namespace
}  // namespace json
