#include "Quillbase/Paths.h"

#include <string_view>

#include "platform/os/native_path.h"

namespace QB {
namespace {

bool IsDriveLetter(std::string_view iEntry) noexcept {
  return iEntry.size() == 1 && ((iEntry[0] >= 'a' && iEntry[0] <= 'z') || (iEntry[0] >= 'A' && iEntry[0] <= 'Z'));
}

}  // namespace

Paths::Paths(const KORUnicodeString& iSearchPaths) {
  const std::string_view text = iSearchPaths.ToStringView();
  const bool isColonSeparator = VYX::Os::IsColonListSeparator();
  std::size_t start = 0;
  for (std::size_t end = 0; end <= text.size(); ++end) {
    const std::string_view entry = text.substr(start, end - start);
    const bool isSeparated =
        end == text.size() || text[end] == ';' || (text[end] == ':' && isColonSeparator && !IsDriveLetter(entry));
    if (!isSeparated) {
      continue;
    }
    if (!entry.empty()) {
      _entries.emplace_back(entry);
    }
    start = end + 1;
  }
}

}  // namespace QB
