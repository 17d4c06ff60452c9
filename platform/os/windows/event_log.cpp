#include "platform/os/event_log.h"

#include <algorithm>
#include <utility>

#include "platform/os/windows/wide_text.h"
#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {
namespace {

WORD ToEventType(EventKind iKind) noexcept {
  switch (iKind) {
    case EventKind::Error:
      return EVENTLOG_ERROR_TYPE;
    case EventKind::Warning:
      return EVENTLOG_WARNING_TYPE;
    case EventKind::Information:
      return EVENTLOG_INFORMATION_TYPE;
  }
  return EVENTLOG_INFORMATION_TYPE;
}

// Cuts between two characters, and at a zero, where the host would.
void CutToLongest(std::wstring& ioText) {
  constexpr std::size_t kLongest = 31'839;
  ioText.resize(std::min(ioText.find(L'\0'), ioText.size()));
  if (ioText.size() <= kLongest) {
    return;
  }
  const bool isInsidePair = (ioText[kLongest] & 0xFC00) == 0xDC00;
  ioText.resize(isInsidePair ? kLongest - 1 : kLongest);
}

}  // namespace

bool EventLog::IsAvailable() noexcept {
  return true;
}

Status EventLog::Open(const std::string& iSource) {
  Close();
  std::wstring source;
  if (!Windows::ToWide(iSource, source)) {
    return Failure::BadName();
  }
  _log = ::RegisterEventSourceW(nullptr, source.c_str());
  return _log == nullptr ? Status::OfLastCall() : Status();
}

Status EventLog::Write(EventKind iKind, std::string_view iText) {
  std::wstring text = Windows::ToReadableWide(iText);
  CutToLongest(text);
  LPCWSTR texts[] = {text.c_str()};
  const BOOL isWritten = ::ReportEventW(_log, ToEventType(iKind), 0, 0, nullptr, 1, 0, texts, nullptr);
  return isWritten == 0 ? Status::OfLastCall() : Status();
}

void EventLog::Close() noexcept {
  if (_log != nullptr) {
    ::DeregisterEventSource(std::exchange(_log, nullptr));
  }
}

}  // namespace VYX::Os
