#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "KORSysBase/KORDirectory.h"
#include "Quillbase/Paths.h"
#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"
#include "internal/missing_path.h"
#include "path_text.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::IsSurelyMissing;
using VYX::Internal::kPathSeparator;
using VYX::Internal::ToText;

namespace {

using Filter = std::function<bool(const KORUnicodeString&)>;

std::string WithTrailingSeparator(std::string_view iPath) {
  std::string path(iPath);
  if (!path.empty() && path.back() != kPathSeparator) {
    path += kPathSeparator;
  }
  return path;
}

std::string NormalizedSubFolder(const KORUnicodeString& iSubFolder) {
  std::string_view subFolder = iSubFolder.ToStringView();
  if (subFolder.starts_with(kPathSeparator)) {
    subFolder.remove_prefix(1);
  }
  return WithTrailingSeparator(subFolder);
}

// One walk over several roots; what is found gathers in discovery order.
class Walk {
 public:
  Walk(unsigned int iFlags, const Filter& iFilter, bool iHasSeveralRoots)
      : _flags(iFlags), _filter(iFilter), _hasSeveralRoots(iHasSeveralRoots) {}

  // Goes down without recursion, however deep the folders are.
  void Run(std::string iRoot) {
    _root = std::move(iRoot);
    Enter({});
    while (!_branch.empty()) {
      Level& level = _branch.back();
      if (level.next > level.folders.Size()) {
        _branch.pop_back();
        continue;
      }
      std::string relative = level.relative;
      relative += level.folders[level.next++].ToStringView();
      relative += kPathSeparator;
      if (Has(VYXInfSystemUtil::ENUM_FOLDERS)) {
        Report(relative);
      }
      if (Has(VYXInfSystemUtil::ENUM_RECURSIVE)) {
        Enter(std::move(relative));
      }
    }
  }

  std::vector<KORUnicodeString> TakeFound() { return std::move(_found); }

 private:
  // A folder on the way down: its sub-folders and which of them is next, and what tells it from every other folder.
  struct Level {
    std::string relative;
    KORListValKORUnicodeString folders;
    int next = 1;
    std::uint64_t device = 0;
    std::uint64_t file = 0;
  };

  bool Has(unsigned int iFlag) const noexcept { return (_flags & iFlag) != 0; }

  void Enter(std::string iRelative) {
    const KORUnicodeString path = ToText(_root + iRelative);
    Level level{std::move(iRelative), {}, 1, 0, 0};
    if (IsSurelyMissing(path) || !Identify(path, level)) {
      return;
    }
    const KORListValKORUnicodeString files = VYXInfSystemUtil::ListFileNamesFromDirectory(path, {}, &level.folders);
    if (Has(VYXInfSystemUtil::ENUM_FILES)) {
      for (const KORUnicodeString& name : files) {
        AddFile(level.relative, name);
      }
    }
    _branch.push_back(std::move(level));
  }

  // False for a folder that the walk is in already, which a link leads back to.
  bool Identify(const KORUnicodeString& iPath, Level& oLevel) const {
    KORFileInfo info;
    if (!Has(VYXInfSystemUtil::ENUM_RECURSIVE) || KORGetFileInfo(iPath, &info) != 0) {
      return true;
    }
    oLevel.device = info.device;
    oLevel.file = info.file;
    return std::none_of(_branch.begin(), _branch.end(),
                        [&](const Level& iOther) { return iOther.device == info.device && iOther.file == info.file; });
  }

  void AddFile(const std::string& iRelative, const KORUnicodeString& iName) {
    if (iName.IsEmpty()) {
      return;
    }
    std::string key = iRelative;
    key += iName.ToStringView();
    // Within one root no path comes twice.
    if (_hasSeveralRoots && _keys.contains(key)) {
      return;
    }
    if (_filter && !_filter(iName)) {
      return;
    }
    Report(key);
    if (_hasSeveralRoots) {
      _keys.insert(std::move(key));
    }
  }

  void Report(const std::string& iRelative) {
    _found.push_back(ToText(Has(VYXInfSystemUtil::ENUM_RELATIVE) ? iRelative : _root + iRelative));
  }

  const unsigned int _flags;
  const Filter& _filter;
  const bool _hasSeveralRoots;
  std::string _root;
  std::vector<Level> _branch;
  std::unordered_set<std::string> _keys;
  std::vector<KORUnicodeString> _found;
};

}  // namespace

std::vector<KORUnicodeString> VYXInfSystemUtil::EnumDirectories(const KORUnicodeString& iSearchPaths,
                                                                const KORUnicodeString& iSubFolder, unsigned int iFlags,
                                                                Filter iFilter) {
  return CatchAtBoundary(VYX_HERE, std::vector<KORUnicodeString>(), [&]() -> std::vector<KORUnicodeString> {
    if ((iFlags & (ENUM_FILES | ENUM_FOLDERS)) == 0) {
      return {};
    }
    const std::string subFolder = NormalizedSubFolder(iSubFolder);
    const QB::Paths entries(iSearchPaths);
    Walk walk(iFlags, iFilter, entries.Size() > 1);
    for (const QB::StringView entry : entries) {
      walk.Run(WithTrailingSeparator(entry.ToStringView()) + subFolder);
    }
    return walk.TakeFound();
  });
}
