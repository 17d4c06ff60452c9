#include "platform/os/windows/module_path.h"

#include "platform/os/windows/process_calls.h"
#include "platform/os/windows/wide_text.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os::Windows {

Status ModulePath(void* iProcess, std::string& oPath) {
  constexpr std::size_t kLongest = 32768;  // of any path of the host, in UTF-16 units
  std::wstring path(260, L'\0');
  for (;;) {
    const std::uint32_t length =
        gProcessCalls.ModulePath(iProcess, path.data(), static_cast<std::uint32_t>(path.size()));
    if (length == 0) {
      return Status::OfLastCall();
    }
    // A path that fills the buffer may have been cut.
    if (length < path.size() - 1 || path.size() >= kLongest) {
      oPath = ToUtf8(std::wstring_view(path).substr(0, length));
      return {};
    }
    path.resize(path.size() * 2);
  }
}

}  // namespace VYX::Os::Windows
