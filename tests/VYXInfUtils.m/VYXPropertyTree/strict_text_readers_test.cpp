#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include "KORSysBase/KORResult.h"
#include "VYXPropertyTree.h"
#include "support/temporary_folder.h"
#include "tree_testing.h"

// What a strict reader outside the library makes of the strict text.

namespace VYX::Test {
namespace {

/// Random values of every alternative, with the texts and numbers that writers stumble over.
class HostileValues {
 public:
  json::Value Next(int iDepth) {
    switch (_random() % (iDepth > 0 ? 6U : 4U)) {
      case 0:
        return json::Value();
      case 1:
        return json::Value(_random() % 2 == 0);
      case 2:
        return json::Value(NextNumber());
      case 3:
        return json::Value(NextText());
      case 4: {
        json::Array array;
        for (auto count = _random() % 5; count > 0; --count) {
          array.Append(Next(iDepth - 1));
        }
        return json::Value(std::move(array));
      }
      default: {
        json::Object object;
        for (auto count = _random() % 5; count > 0; --count) {
          object.Set(NextText(), Next(iDepth - 1));
        }
        return json::Value(std::move(object));
      }
    }
  }

 private:
  double NextNumber() {
    static constexpr double kNumbers[] = {0,
                                          -0.0,
                                          0.1,
                                          1e17,
                                          -1e300,
                                          5e-324,
                                          2.2250738585072011e-308,
                                          1e22,
                                          1e-300,
                                          123456,
                                          1 / 3.,
                                          9007199254740992.0,
                                          1.7976931348623157e308};
    return kNumbers[_random() % std::size(kNumbers)];
  }

  KORUnicodeString NextText() {
    static constexpr char32_t kCharacters[] = {0,    1,    8,      9,      0xA,    0xB,     0x1E,    0x1F, '"',
                                               '\\', '/',  0x7F,   0x80,   0xE9,   0x2028,  0x2029,  'a',  '0',
                                               '{',  '\'', 0xFEFF, 0xD7FF, 0xFFFD, 0x10000, 0x10FFFF};
    KORUnicodeString text;
    for (auto count = _random() % 6; count > 0; --count) {
      text += KORUnicodeChar(kCharacters[_random() % std::size(kCharacters)]);
    }
    return text;
  }

  std::mt19937 _random{7};
};

VYXPropertyTree NestedTo(int iDepth) {
  VYXPropertyTree tree;
  for (int level = 1; level < iDepth; ++level) {
    VYXPropertyTree outer;
    outer.SetPropertyTree("k", std::move(tree));
    tree = std::move(outer);
  }
  return tree;
}

/// Adds the texts of a tree that are compared, each with a separator that cannot stand in it.
void AddTexts(const VYXPropertyTree& iTree, std::string& ioStrict, std::string& ioIndented, std::string& ioCompact) {
  ioStrict += VYXPropertyTreeUtils::StringifyStrict(iTree).ConvertToChar() + '\x1E';
  ioIndented += VYXPropertyTreeUtils::StringifyStrict(iTree, 3).ConvertToChar() + '\x1E';
  ioCompact += TextOf(iTree) + '\n';  // a line feed is escaped there, U+001E is not
}

TEST(StringifyStrict, IsReadByPythonAndMeansTheSame) {
  if (std::string_view(VYX_PYTHON).empty()) {
    GTEST_SKIP() << "no python3 was found when the build was configured";
  }
  std::string strict;
  std::string indented;
  std::string compact;
  AddTexts(NestedTo(500), strict, indented, compact);
  HostileValues values;
  for (int count = 0; count < 2000; ++count) {
    VYXPropertyTree tree;
    Put(tree, "k", values.Next(4));
    AddTexts(tree, strict, indented, compact);
  }
  const TemporaryFolder folder;
  const std::string command = std::string("'" VYX_PYTHON "' -B '" VYX_READ_STRICT_JSON "' 2001") + " '" +
                              folder.MakeFile("compact", compact) + "' '" + folder.MakeFile("strict", strict) + "' '" +
                              folder.MakeFile("indented", indented) + "'";
  EXPECT_EQ(std::system(command.c_str()), 0);
}

}  // namespace
}  // namespace VYX::Test
