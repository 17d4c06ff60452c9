// What is read or copied stands in an arena; what is set afterwards does not. Both have to go together.

#include "VYXPropertyTree/arena.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "KORSysBase/KORListValKORUnicodeString.h"
#include "KORSysBase/KORResult.h"
#include "VYXListAccess.h"
#include "VYXPropertyAccess.h"
#include "VYXPropertyTree.h"
#include "tree_testing.h"

namespace VYX::Test {
namespace {

constexpr const char* kLong = "a text that is too long to stand in the object itself";

/// Small random numbers.
class Random {
 public:
  explicit Random(unsigned iSeed) : _source(iSeed) {}
  unsigned operator()() { return static_cast<unsigned>(_source()); }

 private:
  std::mt19937 _source;
};

/// The text of a random object; texts and keys on both sides of what stands in an object, nulls, repeated keys.
std::string RandomObject(Random& ioRandom, int iDepth);

std::string RandomValue(Random& ioRandom, int iDepth) {
  switch (ioRandom() % (iDepth > 0 ? 8 : 5)) {
    case 0:
      return "null";
    case 1:
      return ioRandom() % 2 == 0 ? "true" : "false";
    case 2:
      return std::to_string(static_cast<int>(ioRandom() % 1000) - 500);
    case 3:
      return "\"" + std::string(ioRandom() % 60, 'x') + "\"";
    case 4:
      return ioRandom() % 2 == 0 ? "[]" : "{}";
    case 5:
      return RandomObject(ioRandom, iDepth - 1);
    default:
      break;
  }
  std::string text = "[";
  for (unsigned left = ioRandom() % 5; left > 0; --left) {
    text += RandomValue(ioRandom, iDepth - 1) + (left > 1 ? "," : "");
  }
  return text + "]";
}

std::string RandomObject(Random& ioRandom, int iDepth) {
  std::string text = "{";
  const unsigned count = ioRandom() % 7;
  for (unsigned index = 0; index < count; ++index) {
    const unsigned key = ioRandom() % 4 == 0 ? ioRandom() % 7 : index;
    text += "\"" + std::string(key % 3 == 2 ? 30 : key % 3, 'k') + std::to_string(key) + "\":";
    text += RandomValue(ioRandom, iDepth) + (index + 1 < count ? "," : "");
  }
  return text + "}";
}

VYXPropertyTree Parsed(const std::string& iText) {
  VYXPropertyTree tree;
  EXPECT_EQ(tree.Parse(iText.c_str()), S_OK) << iText;
  return tree;
}

TEST(Arena, TreesFromTextAreTheirTextsTrees) {
  Random random(3);
  for (int round = 0; round < 2000; ++round) {
    const std::string text = RandomObject(random, 4);
    const VYXPropertyTree tree = Parsed(text);
    const std::string written = TextOf(tree);
    ASSERT_EQ(TextOf(Parsed(written)), written) << text;
    const VYXPropertyTree copy(tree);
    ASSERT_EQ(TextOf(copy), written) << text;
    ASSERT_TRUE(copy == tree) << text;
    ASSERT_TRUE(Parsed(written) == tree) << text;
  }
}

/// Changes a tree in one of many ways.
void Change(VYXPropertyTree& ioTree, Random& ioRandom) {
  KORListValKORUnicodeString keys;
  ioTree.GetKeys(keys);
  const KORUnicodeString key = keys.Size() > 0 && ioRandom() % 4 != 0
                                   ? keys[static_cast<int>(ioRandom() % static_cast<unsigned>(keys.Size())) + 1]
                                   : KORUnicodeString(std::to_string(ioRandom() % 9).c_str());
  VYXPropertyAccess object;
  VYXListAccess list;
  const bool isObject = ioTree.IsPropertyTree(key) && ioTree.GetPropertyAccess(key, object, false) == S_OK;
  const bool isList = !isObject && ioTree.IsStringList(key) && ioTree.GetListAccess(key, list, false) == S_OK;
  switch (ioRandom() % 6) {
    case 0:
      ioTree.SetString(key, kLong);
      break;
    case 1:
      if (ioTree.HasKey(key)) {
        ioTree.RemoveKey(key);
      }
      break;
    case 2:
      ioTree.SetPropertyTree(key, VYXPropertyTree(ioTree));
      break;
    case 3:
      ioTree.Parse(RandomObject(ioRandom, 2).c_str());
      break;
    default:
      isObject ? object.SetString("new", kLong) : isList ? list.AddString(kLong) : ioTree.SetInteger(key, 1);
      break;
  }
}

TEST(Arena, ChangesLeaveTheRestAsItIs) {
  Random random(4);
  for (int round = 0; round < 300; ++round) {
    VYXPropertyTree tree = Parsed(RandomObject(random, 3));
    VYXPropertyTree copy(tree);
    for (int step = 0; step < 12; ++step) {
      const std::string before = TextOf(copy);
      Change(tree, random);
      ASSERT_EQ(TextOf(copy), before);
      ASSERT_TRUE(Parsed(TextOf(tree)) == tree) << TextOf(tree);
      copy = tree;
    }
  }
}

TEST(Arena, ListsFromTextGrow) {
  VYXPropertyTree tree = Parsed(std::string("{\"list\":[\"") + kLong + "\",{\"a\":[\"" + kLong + "\"]}]}");
  VYXListAccess list;
  ASSERT_EQ(tree.GetListAccess("list", list, false), S_OK);
  for (int index = 0; index < 100; ++index) {
    ASSERT_EQ(list.AddInteger(index), S_OK);
  }
  VYXPropertyTree other;
  other.SetBoolean("other", true);
  ASSERT_EQ(other.Parse(TextOf(tree).c_str()), S_OK);
  ASSERT_EQ(other.GetListAccess("list", list, false), S_OK);
  tree = VYXPropertyTree();
  ASSERT_EQ(list.AddString(kLong), S_OK);
  VYXPropertyAccess object;
  ASSERT_EQ(list.GetPropertyAccess(1, object), S_OK);
  KORUnicodeString text;
  ASSERT_EQ(list.GetString(0, text), S_OK);
  EXPECT_EQ(text, kLong);
  EXPECT_EQ(object.Stringify(), KORUnicodeString((std::string("{\"a\":[\"") + kLong + "\"]}").c_str()));
}

TEST(Arena, TextsAreTextsLikeAnyOther) {
  const std::string wide = "\xC3\xA9t\xC3\xA9 et encore une fois l'\xC3\xA9t\xC3\xA9";
  const VYXPropertyTree tree = Parsed("{\"" + wide + "\":\"" + wide + "\"}");
  KORListValKORUnicodeString keys;
  ASSERT_EQ(tree.GetKeys(keys), S_OK);
  KORUnicodeString text;
  ASSERT_EQ(tree.GetString(keys[1], text), S_OK);
  EXPECT_EQ(text.GetLengthInChar(), 28);
  EXPECT_EQ(text.SubString(25, 3), "\xC3\xA9t\xC3\xA9");
  EXPECT_EQ(text, keys[1]);
  text.Append(text).ToUpper();
  EXPECT_EQ(text.GetLengthInChar(), 56);
  EXPECT_TRUE(tree.HasKey(wide.c_str()));
}

}  // namespace
}  // namespace VYX::Test
