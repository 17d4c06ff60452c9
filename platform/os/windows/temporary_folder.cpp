#include "platform/os/temporary_folder.h"

#include <array>

#include "platform/os/windows/path_text.h"
#include "platform/os/windows/windows_api.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {

std::string UsualTemporaryFolder() {
  std::array<wchar_t, MAX_PATH + 1> buffer;
  const DWORD length = GetTempPathW(static_cast<DWORD>(buffer.size()), buffer.data());
  if (length == 0 || length >= buffer.size()) {
    return {};
  }
  std::string path = Windows::ToPathText({buffer.data(), length});
  constexpr std::size_t kDriveRoot = 3;
  if (path.size() > kDriveRoot && path.ends_with('\\')) {
    path.pop_back();
  }
  return path;
}

}  // namespace VYX::Os
