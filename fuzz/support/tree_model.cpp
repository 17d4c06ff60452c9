#include "fuzz/support/tree_model.h"

#include <cstdio>
#include <string_view>
#include <utility>

namespace VYX::Fuzz {

namespace {

std::string Quoted(std::string_view iText) {
  constexpr std::string_view kMeant = "\\\"\b\f\n\r\t";
  constexpr std::string_view kShort = "\\\"bfnrt";
  std::string text = "\"";
  for (const char character : iText) {
    const std::size_t kind = kMeant.find(character);
    if (kind != std::string_view::npos) {
      text += '\\';
      text += kShort[kind];
    } else {
      text += character;
    }
  }
  return text + "\"";
}

std::string NumberText(double iNumber) {
  char text[40];
  std::snprintf(text, sizeof text, "%.17g", iNumber);
  return text;
}

}  // namespace

TreeModel TreeModel::OfBoolean(bool iValue) {
  TreeModel model;
  model.kind = Kind::Boolean;
  model.boolean = iValue;
  return model;
}

TreeModel TreeModel::OfNumber(double iValue) {
  TreeModel model;
  model.kind = Kind::Number;
  model.number = iValue;
  return model;
}

TreeModel TreeModel::OfString(std::string iValue) {
  TreeModel model;
  model.kind = Kind::String;
  model.text = std::move(iValue);
  return model;
}

TreeModel TreeModel::OfArray(std::vector<TreeModel> iElements) {
  TreeModel model;
  model.kind = Kind::Array;
  model.elements = std::move(iElements);
  return model;
}

std::string TreeModel::Text() const {
  std::string inner;
  switch (kind) {
    case Kind::Boolean:
      return boolean ? "true" : "false";
    case Kind::Number:
      return NumberText(number);
    case Kind::String:
      return Quoted(text);
    case Kind::Array:
      for (const TreeModel& element : elements) {
        inner += (inner.empty() ? "" : ",") + element.Text();
      }
      return "[" + inner + "]";
    case Kind::Object:
      for (const auto& [key, value] : members) {
        inner += (inner.empty() ? "" : ",") + Quoted(key) + ":" + value.Text();
      }
      return "{" + inner + "}";
  }
  return {};
}

}  // namespace VYX::Fuzz
