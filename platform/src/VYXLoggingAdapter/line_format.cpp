#include "platform/src/VYXLoggingAdapter/line_format.h"

#include <charconv>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "KORSysBase/KORTime.h"
#include "platform/src/VYXLoggingAdapter/escape_line.h"
#include "platform/src/VYXLoggingAdapter/severity.h"

namespace VYX::Logging {

namespace {

constexpr std::string_view kSecondFormat = "%Y-%m-%d %H:%M:%S";

// The text of the last second that a thread has shown: most lines of a thread share it.
struct SecondText {
  std::int64_t second;
  std::uint32_t length;
  char text[28];
};
static_assert(std::is_trivially_destructible_v<SecondText>);
constinit thread_local SecondText tLastSecond{INT64_MIN, 0, {}};

template <class Integer>
void AppendNumber(Integer iNumber, std::string& ioLine) {
  char digits[24];
  ioLine.append(digits, std::to_chars(digits, digits + sizeof digits, iNumber).ptr);
}

void AppendSecond(std::int64_t iSecond, std::string& ioLine) {
  if (tLastSecond.second != iSecond) {
    const KORUnicodeString text = KORTime(iSecond).ConvertToString(KORUnicodeString(kSecondFormat));
    const std::string_view bytes = text.ToStringView().substr(0, sizeof tLastSecond.text);
    std::memcpy(tLastSecond.text, bytes.data(), bytes.size());
    tLastSecond.length = static_cast<std::uint32_t>(bytes.size());
    tLastSecond.second = iSecond;
  }
  ioLine.append(tLastSecond.text, tLastSecond.length);
}

void AppendTimeStamp(const Os::WallTime& iTime, const std::string& iFormat, std::string& ioLine) {
  if (!iFormat.empty()) {
    const KORTime time(iTime.seconds, iTime.nanoseconds);
    AppendEscapedLine(time.ConvertToString(KORUnicodeString(std::string_view(iFormat))).ToStringView(), ioLine);
    return;
  }
  AppendSecond(iTime.seconds, ioLine);
  char fraction[7] = {'.', '0', '0', '0', '0', '0', '0'};
  std::int32_t microseconds = iTime.nanoseconds / 1000;
  for (int digit = 6; digit >= 1; --digit) {
    fraction[digit] = static_cast<char>('0' + microseconds % 10);
    microseconds /= 10;
  }
  ioLine.append(fraction, sizeof fraction);
}

}  // namespace

// One pass over the text of a format.
class LineFormatParser {
 public:
  LineFormatParser(std::string_view iText, ParseError& oError) : _text(iText), _error(oError) {}

  std::optional<LineFormat> Parse() {
    while (_position < _text.size()) {
      if (_text[_position] == '%') {
        if (!AddPlaceholder()) {
          return std::nullopt;
        }
        continue;
      }
      if (_text[_position] == '\\' && _position + 1 < _text.size()) {
        ++_position;
      }
      AddText(_text[_position++]);
    }
    return std::move(_format);
  }

 private:
  using Kind = LineFormat::Kind;

  bool Fail(std::size_t iPosition, std::string iReason) {
    _error = {iPosition + 1, std::move(iReason)};
    return false;
  }

  void AddText(char iCharacter) {
    if (_format._pieces.empty() || _format._pieces.back().kind != Kind::Text) {
      _format._pieces.push_back({Kind::Text, {}});
    }
    _format._pieces.back().text.push_back(iCharacter);
  }

  bool AddPlaceholder() {
    const std::size_t start = _position++;
    const std::size_t end = _text.find_first_of("%(", _position);
    if (end == std::string_view::npos) {
      return Fail(start, "a placeholder without its closing percent sign");
    }
    const std::string_view name = _text.substr(_position, end - _position);
    const std::optional<Kind> kind = KindOf(name);
    if (!kind) {
      return Fail(start, "the placeholder '" + std::string(name) + "' is unknown");
    }
    _position = end;
    std::string timeFormat;
    if (_text[end] == '(' && !ReadTimeFormat(*kind, timeFormat)) {
      return false;
    }
    if (_position >= _text.size() || _text[_position] != '%') {
      return Fail(start, "a placeholder without its closing percent sign");
    }
    ++_position;
    _format._pieces.push_back({*kind, std::move(timeFormat)});
    return true;
  }

  // (format="...")
  bool ReadTimeFormat(LineFormat::Kind iKind, std::string& oFormat) {
    constexpr std::string_view kStart = "(format=\"";
    const std::size_t start = _position;
    const std::size_t end = _text.find("\")", _position + kStart.size());
    if (iKind != Kind::TimeStamp || !_text.substr(_position).starts_with(kStart) || end == std::string_view::npos) {
      return Fail(start, "only %TimeStamp(format=\"...\")% takes an argument");
    }
    oFormat = _text.substr(start + kStart.size(), end - start - kStart.size());
    _position = end + 2;
    return true;
  }

  static std::optional<Kind> KindOf(std::string_view iName) {
    constexpr std::pair<std::string_view, Kind> kNames[] = {
        {"TimeStamp", Kind::TimeStamp}, {"ThreadID", Kind::ThreadId}, {"ProcessID", Kind::ProcessId},
        {"Channel", Kind::Channel},     {"Severity", Kind::Severity}, {"Message", Kind::Message}};
    for (const auto& [name, kind] : kNames) {
      if (name == iName) {
        return kind;
      }
    }
    return std::nullopt;
  }

  std::string_view _text;
  ParseError& _error;
  std::size_t _position = 0;
  LineFormat _format;
};

std::optional<LineFormat> LineFormat::Parse(std::string_view iText, ParseError& oError) {
  return LineFormatParser(iText, oError).Parse();
}

void LineFormat::Append(const Record& iRecord, std::string& ioLine) const {
  for (const Piece& piece : _pieces) {
    switch (piece.kind) {
      case Kind::Text:
        AppendEscapedLine(piece.text, ioLine);
        break;
      case Kind::TimeStamp:
        AppendTimeStamp(iRecord.time, piece.text, ioLine);
        break;
      case Kind::ThreadId:
        AppendNumber(iRecord.threadId, ioLine);
        break;
      case Kind::ProcessId:
        AppendNumber(iRecord.processId, ioLine);
        break;
      case Kind::Channel:
        AppendEscapedLine(iRecord.channel, ioLine);
        break;
      case Kind::Severity:
        ioLine.append(SeverityName(iRecord.level));
        break;
      case Kind::Message:
        AppendEscapedLine(iRecord.message, ioLine);
        break;
    }
  }
}

}  // namespace VYX::Logging
