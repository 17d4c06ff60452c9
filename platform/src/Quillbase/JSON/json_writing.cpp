#include "json_writing.h"

#include <charconv>
#include <cstdint>
#include <vector>

#include "platform/adapters/json_tokens.h"

namespace VYX::Platform {

using Adapters::JsonKind;
using Adapters::JsonNode;
using Adapters::JsonWalk;

namespace {

constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD";

bool IsPlain(char iByte) {
  return static_cast<std::uint8_t>(iByte) >= 0x20 && static_cast<std::uint8_t>(iByte) < 0x80 && iByte != '"' &&
         iByte != '\\';
}

void AppendEscape(std::string& ioOutput, char iByte) {
  constexpr std::string_view kNamed = "\"\\\b\f\n\r\t";
  constexpr std::string_view kNames = "\"\\bfnrt";
  ioOutput.push_back('\\');
  if (const std::size_t index = kNamed.find(iByte); index != std::string_view::npos) {
    ioOutput.push_back(kNames[index]);
    return;
  }
  const char* const hex = "0123456789abcdef";
  ioOutput.append("u00").append(1, hex[iByte >> 4]).append(1, hex[iByte & 15]);
}

template <class Number>
void AppendNumber(std::string& ioOutput, Number iNumber) {
  char digits[32];
  char* const end = std::to_chars(digits, digits + sizeof digits, iNumber).ptr;
  ioOutput.append(digits, end);
}

// A number, text, truth value or null.
void AppendScalar(std::string& ioOutput, JsonNode iNode) {
  std::uint64_t asUnsigned = 0;
  std::int64_t asSigned = 0;
  if (iNode.Kind() == JsonKind::String) {
    AppendJsonString(ioOutput, iNode.Text());
  } else if (iNode.Kind() == JsonKind::Boolean) {
    ioOutput.append(iNode.Boolean() ? "true" : "false");
  } else if (iNode.Kind() != JsonKind::Number) {
    ioOutput.append("null");
  } else if (iNode.Unsigned(asUnsigned)) {
    AppendNumber(ioOutput, asUnsigned);
  } else if (iNode.Signed(asSigned)) {
    AppendNumber(ioOutput, asSigned);
  } else {
    AppendNumber(ioOutput, iNode.Number());
  }
}

// An array or object whose values are being written.
struct Level {
  JsonWalk walk;
  bool isObject = false;
  bool isFirst = true;
};

// Writes the beginning of the level's next value; false at the end of the level.
bool BeginNext(std::string& ioOutput, Level& ioLevel) {
  if (!ioLevel.walk.Next()) {
    return false;
  }
  if (!ioLevel.isFirst) {
    ioOutput.push_back(',');
  }
  ioLevel.isFirst = false;
  if (ioLevel.isObject) {
    AppendJsonString(ioOutput, ioLevel.walk.Key());
    ioOutput.push_back(':');
  }
  return true;
}

}  // namespace

void AppendJsonString(std::string& ioOutput, std::string_view iText) {
  ioOutput.push_back('"');
  std::size_t at = 0;
  while (at < iText.size()) {
    std::size_t end = at;
    while (end < iText.size() && IsPlain(iText[end])) {
      ++end;
    }
    ioOutput.append(iText, at, end - at);
    at = end;
    if (at == iText.size()) {
      break;
    }
    if (static_cast<std::uint8_t>(iText[at]) < 0x80) {
      AppendEscape(ioOutput, iText[at++]);
    } else if (const std::size_t length = Adapters::Utf8SequenceLength(iText, at); length != 0) {
      ioOutput.append(iText, at, length);
      at += length;
    } else {
      ioOutput.append(kReplacementCharacter);
      ++at;
    }
  }
  ioOutput.push_back('"');
}

void AppendJsonMembers(std::string& ioOutput, JsonNode iObject) {
  if (iObject.Kind() != JsonKind::Object) {
    return;
  }
  std::vector<Level> levels;
  levels.push_back({JsonWalk(iObject), true});
  while (true) {
    if (!BeginNext(ioOutput, levels.back())) {
      const bool isObject = levels.back().isObject;
      levels.pop_back();
      if (levels.empty()) {
        return;
      }
      ioOutput.push_back(isObject ? '}' : ']');
      continue;
    }
    const JsonNode value = levels.back().walk.Value();
    if (value.Kind() == JsonKind::Array || value.Kind() == JsonKind::Object) {
      const bool isObject = value.Kind() == JsonKind::Object;
      ioOutput.push_back(isObject ? '{' : '[');
      levels.push_back({JsonWalk(value), isObject});
    } else {
      AppendScalar(ioOutput, value);
    }
  }
}

}  // namespace VYX::Platform
