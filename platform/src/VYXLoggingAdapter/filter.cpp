#include "platform/src/VYXLoggingAdapter/filter.h"

#include <charconv>
#include <utility>

#include "platform/src/VYXLoggingAdapter/severity.h"

namespace VYX::Logging {

namespace {

// Brackets and "not" nest this deep at most. On each level of them two answers may wait for an operator.
constexpr int kMaxDepth = 60;
constexpr std::size_t kMaxWaiting = 2 * kMaxDepth + 2;

bool IsBlank(char iCharacter) {
  return iCharacter == ' ' || iCharacter == '\t';
}

bool IsWordCharacter(char iCharacter) {
  return !IsBlank(iCharacter) && std::string_view("&|!()\"%<>=").find(iCharacter) == std::string_view::npos;
}

}  // namespace

// Recursive descent, one function a rule:
//   expression = term { ("|" | "or") term } ;  term = factor { ("&" | "and") factor } ;
//   factor = ("!" | "not") factor | "(" expression ")" | comparison ;  comparison = "%" name "%" operator value
class FilterParser {
 public:
  FilterParser(std::string_view iText, ParseError& oError) : _text(iText), _error(oError) {}

  std::optional<Filter> Parse() {
    SkipBlanks();
    if (AtEnd()) {
      return Filter();
    }
    if (!ReadExpression()) {
      return std::nullopt;
    }
    if (!AtEnd()) {
      Fail("nothing more was expected");
      return std::nullopt;
    }
    return std::move(_filter);
  }

 private:
  using Operation = Filter::Operation;
  using Comparison = Filter::Comparison;

  bool Fail(std::string iReason) {
    _error = {_position + 1, std::move(iReason)};
    return false;
  }
  bool AtEnd() const { return _position >= _text.size(); }
  void SkipBlanks() {
    while (!AtEnd() && IsBlank(_text[_position])) {
      ++_position;
    }
  }

  bool Take(std::string_view iToken) {
    if (!_text.substr(_position).starts_with(iToken)) {
      return false;
    }
    _position += iToken.size();
    SkipBlanks();
    return true;
  }

  bool TakeWord(std::string_view iWord) {
    const std::size_t end = _position + iWord.size();
    const bool endsHere = end >= _text.size() || !IsWordCharacter(_text[end]);
    return endsHere && Take(iWord);
  }

  bool ReadExpression() {
    if (!ReadTerm()) {
      return false;
    }
    while (Take("|") || TakeWord("or")) {
      if (!ReadTerm()) {
        return false;
      }
      _filter._steps.push_back({Operation::Or, Comparison::Equal, 0, {}});
    }
    return true;
  }

  bool ReadTerm() {
    if (!ReadFactor()) {
      return false;
    }
    while (Take("&") || TakeWord("and")) {
      if (!ReadFactor()) {
        return false;
      }
      _filter._steps.push_back({Operation::And, Comparison::Equal, 0, {}});
    }
    return true;
  }

  bool ReadFactor() {
    if (++_depth > kMaxDepth) {
      return Fail("brackets and negations nest too deeply");
    }
    const bool isRead = ReadNestedFactor();
    --_depth;
    return isRead;
  }

  bool ReadNestedFactor() {
    if (Take("!") || TakeWord("not")) {
      if (!ReadFactor()) {
        return false;
      }
      _filter._steps.push_back({Operation::Not, Comparison::Equal, 0, {}});
      return true;
    }
    if (Take("(")) {
      if (!ReadExpression()) {
        return false;
      }
      return Take(")") || Fail("a closing bracket is missing");
    }
    return ReadComparison();
  }

  bool ReadComparison() {
    Filter::Step step{Operation::Severity, Comparison::Equal, 0, {}};
    if (Take("%Channel%")) {
      step.operation = Operation::Channel;
    } else if (!Take("%Severity%")) {
      return Fail("%Severity% or %Channel% was expected");
    }
    if (!ReadOperator(step.comparison)) {
      return Fail("a comparison (= != < <= > >=) was expected");
    }
    const std::size_t start = _position;
    if (!ReadValue(step.text)) {
      return false;
    }
    if (step.operation == Operation::Severity && !ToLevel(step.text, step.number)) {
      _position = start;
      return Fail("'" + step.text + "' is no level");
    }
    _filter._steps.push_back(std::move(step));
    return true;
  }

  bool ReadOperator(Comparison& oComparison) {
    // The longer ones first.
    constexpr std::pair<std::string_view, Comparison> kOperators[] = {
        {"!=", Comparison::NotEqual}, {"<=", Comparison::LessOrEqual}, {">=", Comparison::GreaterOrEqual},
        {"=", Comparison::Equal},     {"<", Comparison::Less},         {">", Comparison::Greater}};
    for (const auto& [text, comparison] : kOperators) {
      if (Take(text)) {
        oComparison = comparison;
        return true;
      }
    }
    return false;
  }

  bool ReadValue(std::string& oValue) {
    if (!AtEnd() && _text[_position] == '"') {
      const std::size_t end = _text.find('"', _position + 1);
      if (end == std::string_view::npos) {
        return Fail("a closing quote is missing");
      }
      oValue = _text.substr(_position + 1, end - _position - 1);
      _position = end + 1;
      SkipBlanks();
      return true;
    }
    const std::size_t start = _position;
    while (!AtEnd() && IsWordCharacter(_text[_position])) {
      ++_position;
    }
    oValue = _text.substr(start, _position - start);
    SkipBlanks();
    return !oValue.empty() || Fail("a value was expected");
  }

  static bool ToLevel(const std::string& iText, std::int64_t& oLevel) {
    if (const std::optional<int> level = SeverityFromName(iText)) {
      oLevel = *level;
      return true;
    }
    const char* const end = iText.data() + iText.size();
    const auto [stop, failure] = std::from_chars(iText.data(), end, oLevel);
    return failure == std::errc() && stop == end;
  }

  std::string_view _text;
  ParseError& _error;
  std::size_t _position = 0;
  int _depth = 0;
  Filter _filter;
};

std::optional<Filter> Filter::Parse(std::string_view iText, ParseError& oError) {
  return FilterParser(iText, oError).Parse();
}

template <class Value>
bool Filter::Compare(Comparison iComparison, const Value& iLeft, const Value& iRight) {
  switch (iComparison) {
    case Comparison::Equal:
      return iLeft == iRight;
    case Comparison::NotEqual:
      return iLeft != iRight;
    case Comparison::Less:
      return iLeft < iRight;
    case Comparison::LessOrEqual:
      return iLeft <= iRight;
    case Comparison::Greater:
      return iLeft > iRight;
    case Comparison::GreaterOrEqual:
      return iLeft >= iRight;
  }
  return false;
}

bool Filter::Accepts(int iLevel, std::string_view iChannel) const {
  bool answers[kMaxWaiting] = {};
  std::size_t count = 0;
  for (const Step& step : _steps) {
    if (step.operation == Operation::Severity) {
      answers[count++] = Compare(step.comparison, static_cast<std::int64_t>(iLevel), step.number);
    } else if (step.operation == Operation::Channel) {
      answers[count++] = Compare(step.comparison, iChannel, std::string_view(step.text));
    } else if (step.operation == Operation::Not) {
      answers[count - 1] = !answers[count - 1];
    } else {
      const bool right = answers[--count];
      bool& left = answers[count - 1];
      left = step.operation == Operation::And ? (left && right) : (left || right);
    }
  }
  return count == 0 || answers[0];
}

}  // namespace VYX::Logging
