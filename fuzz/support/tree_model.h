#pragma once

#include <map>
#include <string>
#include <vector>

namespace VYX::Fuzz {

/// The plain model of a property tree's value: ordered maps and vectors, copied as they are.
struct TreeModel {
  enum class Kind { Boolean, Number, String, Array, Object };

  Kind kind = Kind::Object;
  bool boolean = false;
  double number = 0;
  std::string text;
  std::vector<TreeModel> elements;
  std::map<std::string, TreeModel> members;

  static TreeModel OfBoolean(bool iValue);
  static TreeModel OfNumber(double iValue);
  static TreeModel OfString(std::string iValue);
  static TreeModel OfArray(std::vector<TreeModel> iElements);

  /// The compact text that the tree has to write.
  std::string Text() const;
};

}  // namespace VYX::Fuzz
