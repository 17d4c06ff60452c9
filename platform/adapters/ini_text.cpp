#include "platform/adapters/ini_text.h"

#include <algorithm>

namespace VYX::Adapters {

namespace {

constexpr std::string_view kBlanks = " \t\r\v\f";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view Trim(std::string_view iText) noexcept {
  const std::size_t first = iText.find_first_not_of(kBlanks);
  return first == std::string_view::npos ? std::string_view()
                                         : iText.substr(first, iText.find_last_not_of(kBlanks) - first + 1);
}

// A semicolon begins a comment at the start of a line and behind a blank.
std::string_view WithoutComment(std::string_view iLine) noexcept {
  for (std::size_t at = iLine.find(';'); at != std::string_view::npos; at = iLine.find(';', at + 1)) {
    if (at == 0 || kBlanks.find(iLine[at - 1]) != std::string_view::npos) {
      return iLine.substr(0, at);
    }
  }
  return iLine;
}

std::string_view TakeLine(std::string_view& ioText) noexcept {
  const std::string_view line = ioText.substr(0, ioText.find('\n'));
  ioText.remove_prefix(std::min(line.size() + 1, ioText.size()));
  return line;
}

// False for a line that is neither empty nor a section nor a setting.
bool ReadLine(std::string_view iLine, std::size_t iNumber, std::string& ioSection, std::vector<IniEntry>& oEntries) {
  const std::string_view line = Trim(WithoutComment(Trim(iLine)));
  if (line.empty() || line.front() == '#') {
    return true;
  }
  if (line.find('\0') != std::string_view::npos) {
    return false;
  }
  if (line.front() == '[') {
    const std::size_t end = line.find(']');
    ioSection = line.substr(1, end == std::string_view::npos ? end : end - 1);
    return end != std::string_view::npos;
  }
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) {
    return false;
  }
  oEntries.push_back(
      {ioSection, std::string(Trim(line.substr(0, equals))), std::string(Trim(line.substr(equals + 1))), iNumber});
  return true;
}

}  // namespace

std::size_t ReadIniText(std::string_view iText, std::vector<IniEntry>& oEntries) {
  if (iText.starts_with(kByteOrderMark)) {
    iText.remove_prefix(kByteOrderMark.size());
  }
  std::string section;
  for (std::size_t number = 1; !iText.empty(); ++number) {
    if (!ReadLine(TakeLine(iText), number, section, oEntries)) {
      return number;
    }
  }
  return 0;
}

}  // namespace VYX::Adapters
