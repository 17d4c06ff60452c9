#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "VYXPropertyTree.h"
#include "VYXPropertyTree/tree_access.h"
#include "VYXPropertyTree/value.h"
#include "support/captured_stdout.h"

namespace VYX::Test {

/// The compact text of a tree.
inline std::string TextOf(const VYXPropertyTree& iTree) {
  return VYXPropertyTreeUtils::Stringify(iTree).ConvertToChar();
}

/// What the console logger writes during an operation. Checks stand outside, so that their own words are not caught.
template <class Operation>
std::vector<LogLine> LinesOf(Operation&& iOperation) {
  CapturedStdout captured;
  iOperation();
  return captured.LogLines();
}

/// A tree that found no memory for its root.
inline VYXPropertyTree RootlessTree() {
  VYXPropertyTree tree;
  Internal::TreeAccess::DropRoot(tree);
  return tree;
}

/// Stores any value, also those that no setter makes.
inline void Put(VYXPropertyTree& ioTree, const char* iKey, json::Value iValue) {
  Internal::TreeAccess::Root(ioTree)->Set(iKey, std::move(iValue));
}

inline json::Value Text(std::string_view iText) {
  return json::Value(KORUnicodeString(iText));
}

template <class... Values>
json::Value ArrayOf(Values... iValues) {
  json::Array array;
  (array.Append(std::move(iValues)), ...);
  return json::Value(std::move(array));
}

inline json::Value ObjectOf(std::initializer_list<std::pair<const char*, double>> iMembers) {
  json::Object object;
  for (const auto& [key, number] : iMembers) {
    object.Set(key, json::Value(number));
  }
  return json::Value(std::move(object));
}

}  // namespace VYX::Test
