#include "platform/os/windows/command_line.h"

#include <string_view>
#include <utility>

#include "platform/os/windows/wide_text.h"
#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os::Windows {
namespace {

// The run-time parts arguments at blanks and tabs, and expands the two wildcards where they stand outside quotes.
bool NeedsQuotes(std::wstring_view iArgument) noexcept {
  return iArgument.empty() || iArgument.find_first_of(L" \t\n\v\r\f\"*?") != std::wstring_view::npos;
}

// Backslashes count as escapes only before a quote: there each is doubled, and the quote gets one of its own.
void AppendQuoted(std::wstring_view iArgument, std::wstring& ioLine) {
  std::size_t backslashes = 0;
  ioLine.push_back(L'"');
  for (const wchar_t unit : iArgument) {
    if (unit == L'"') {
      ioLine.append(backslashes + 1, L'\\');
    }
    backslashes = unit == L'\\' ? backslashes + 1 : 0;
    ioLine.push_back(unit);
  }
  ioLine.append(backslashes, L'\\').push_back(L'"');
}

// The program's own name is taken up to the next quote as it is: backslashes are plain there.
Status AppendName(std::wstring_view iName, std::wstring& ioLine) {
  if (iName.find(L'"') != std::wstring_view::npos) {
    return Failure::BadName();
  }
  ioLine.append(1, L'"').append(iName).push_back(L'"');
  return {};
}

}  // namespace

Status JoinArguments(char* const iArguments[], std::wstring& oLine) {
  constexpr std::size_t kLongest = 32'766;
  std::wstring line;
  std::wstring argument;
  for (std::size_t index = 0; iArguments[index] != nullptr; ++index) {
    if (!ToWide(iArguments[index], argument)) {
      return Status(ERROR_NO_UNICODE_TRANSLATION);
    }
    if (index == 0) {
      if (const Status status = AppendName(argument, line); !status.IsOk()) {
        return status;
      }
      continue;
    }
    line.push_back(L' ');
    NeedsQuotes(argument) ? AppendQuoted(argument, line) : static_cast<void>(line.append(argument));
  }
  if (line.size() > kLongest) {
    return Status(ERROR_FILENAME_EXCED_RANGE);
  }
  oLine = std::move(line);
  return {};
}

}  // namespace VYX::Os::Windows
