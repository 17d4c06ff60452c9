#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/support/fuzz_input.h"
#include "fuzz/support/require.h"
#include "platform/src/VYXLoggingAdapter/filter.h"

// Filters: any text is read or refused with a place, and expressions that are made here mean what they were made for.

namespace {

using namespace VYX::Fuzz;
namespace Logging = VYX::Logging;

constexpr std::string_view kChannels[] = {"", "a", "net", "Net", "z z", "default"};
constexpr std::string_view kOperators[] = {"=", "!=", "<", "<=", ">", ">="};

template <class Value>
bool Compare(std::size_t iOperator, const Value& iLeft, const Value& iRight) {
  switch (iOperator) {
    case 0:
      return iLeft == iRight;
    case 1:
      return iLeft != iRight;
    case 2:
      return iLeft < iRight;
    case 3:
      return iLeft <= iRight;
    case 4:
      return iLeft > iRight;
    default:
      return iLeft >= iRight;
  }
}

// An expression as text, and its answer for one record.
class Expression {
 public:
  Expression(FuzzInput& ioInput, int iLevel, std::string_view iChannel)
      : _input(ioInput), _level(iLevel), _channel(iChannel) {}

  bool Make(int iDepth) {
    switch (iDepth == 0 ? _input.Below(2) : _input.Below(5)) {
      case 0:
        return MakeSeverity();
      case 1:
        return MakeChannel();
      case 2: {
        text += _input.Flag() ? "!(" : " not (";
        const bool answer = !Make(iDepth - 1);
        text += ")";
        return answer;
      }
      case 3:
        return MakeJoined(iDepth, true);
      default:
        return MakeJoined(iDepth, false);
    }
  }

  std::string text;

 private:
  bool MakeSeverity() {
    const std::size_t comparison = _input.Below(std::size(kOperators));
    const auto number = static_cast<int>(_input.Below(8)) - 1;
    text +=
        "%Severity%" + Blanks() + std::string(kOperators[comparison]) + Blanks() + std::to_string(number) + Blanks();
    return Compare(comparison, _level, number);
  }

  bool MakeChannel() {
    const std::size_t comparison = _input.Below(std::size(kOperators));
    const std::string_view name = kChannels[_input.Below(std::size(kChannels))];
    text += "%Channel%" + Blanks() + std::string(kOperators[comparison]) + Blanks() + "\"" + std::string(name) + "\"";
    return Compare(comparison, _channel, name);
  }

  bool MakeJoined(int iDepth, bool iIsAnd) {
    text += "(";
    const bool left = Make(iDepth - 1);
    text += iIsAnd ? (_input.Flag() ? "&" : " and ") : (_input.Flag() ? "|" : " or ");
    const bool right = Make(iDepth - 1);
    text += ")";
    return iIsAnd ? left && right : left || right;
  }

  std::string Blanks() { return std::string(_input.Below(3), ' '); }

  FuzzInput& _input;
  int _level;
  std::string_view _channel;
};

void CheckAnyText(std::string_view iText) {
  Logging::ParseError error;
  if (const auto filter = Logging::Filter::Parse(iText, error)) {
    for (int level = -1; level <= 6; ++level) {
      static_cast<void>(filter->Accepts(level, "net"));
    }
    return;
  }
  Require(error.position >= 1 && error.position <= iText.size() + 1, "the place of the error");
  Require(!error.reason.empty(), "the reason of the error");
}

void CheckExpression(FuzzInput& ioInput) {
  const auto level = static_cast<int>(ioInput.Below(8)) - 1;
  const std::string_view channel = kChannels[ioInput.Below(std::size(kChannels))];
  Expression expression(ioInput, level, channel);
  const bool expected = expression.Make(5);
  Logging::ParseError error;
  const std::optional<Logging::Filter> filter = Logging::Filter::Parse(expression.text, error);
  Require(filter.has_value(), "a right expression is read");
  Require(filter->Accepts(level, channel) == expected, "an expression means what it says");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  FuzzInput input(iData, iSize);
  CheckAnyText(FuzzInput(input).Rest());
  CheckExpression(input);
  return 0;
}
