#include <algorithm>
#include <new>
#include <utility>

#include "create_folders.h"
#include "platform/os/file_guard.h"
#include "platform/os/folders.h"
#include "zip_session.h"
#include "zip_target_tree.h"

namespace VYX::Platform {
namespace {

constexpr std::uint32_t kTypeMask = 0170000;
constexpr std::uint32_t kFolderType = 0040000;
constexpr std::uint32_t kRegularType = 0100000;
constexpr std::uint32_t kLinkType = 0120000;
constexpr std::uint32_t kAnyRun = 0111;

ZipProblem Refused(long iCode, const ZipEntry& iEntry, std::string_view iCause) {
  return {iCode, ShownName(iEntry.rawName), std::string(iCause)};
}

const char* FindSpecialType(const ZipEntry& iEntry) noexcept {
  const std::uint32_t type = iEntry.unixMode & kTypeMask;
  if (type == kLinkType) {
    return "it is a link";
  }
  return type == 0 || type == kRegularType || type == kFolderType ? nullptr : "it is a special file";
}

// What is done after a failure is done after the want of memory, too. The cause is short enough to take none.
template <typename Work>
ZipProblem Guarded(Work iWork) {
  try {
    return iWork();
  } catch (const std::bad_alloc&) {
    return {Os::Failure::OutOfMemory().ToResultCode(), {}, "out of memory"};
  }
}

class Extraction {
 public:
  explicit Extraction(ZipArchive& ioArchive) noexcept : _archive(ioArchive) {}

  ZipProblem Plan(bool iIsUtf8Preferred) {
    const KORSysZipLimits& limits = _archive.Limits();
    std::uint64_t total = 0;
    for (const ZipEntry& entry : _archive.Entries()) {
      if (ZipProblem problem = PlanEntry(entry, iIsUtf8Preferred); !problem.IsNone()) {
        return problem;
      }
      if (entry.size > limits.maxTotalSize - total) {
        return Refused(KORSysZipFile::kLimitExceeded, entry,
                       "the archive has more than " + std::to_string(limits.maxTotalSize) + " bytes up to it");
      }
      total += entry.size;
    }
    if (IsBomb(total, _archive.Source().GetSize(), limits)) {
      return {KORSysZipFile::kLimitExceeded, {}, "it grows more than " + std::to_string(limits.maxRatio) + " times"};
    }
    if (const std::size_t clash = FindClash(_targets, limits.isCaseIgnored); clash != _targets.size()) {
      return Refused(KORSysZipFile::kDuplicateEntry, _archive.Entries()[clash], "another entry takes its place");
    }
    ZipProblem problem = _archive.Layout().CheckAllLocal(_archive.Source());
    return problem.IsNone() ? _archive.PrepareReader() : problem;
  }

  ZipProblem Run(const std::string& iTarget) {
    const NewFolders newFolders(iTarget);
    ZipProblem problem = Guarded([&] { return ToProblem(CreateFolders(iTarget, Os::CreateFolder)); });
    if (problem.IsNone()) {
      problem = Guarded([&] { return RunInside(iTarget); });
    }
    if (!problem.IsNone()) {
      newFolders.Remove();
    }
    return problem;
  }

 private:
  ZipProblem PlanEntry(const ZipEntry& iEntry, bool iIsUtf8Preferred) {
    const ZipNameRules rules{_archive.Limits().arePortableNamesRequired, _archive.Limits().isCaseIgnored};
    ZipTarget target;
    const char* unsafe = ToTarget(DecodeName(iEntry, iIsUtf8Preferred), rules, target);
    if (unsafe == nullptr) {
      unsafe = FindSpecialType(iEntry);
    }
    if (unsafe != nullptr) {
      return Refused(KORSysZipFile::kUnsafeEntry, iEntry, unsafe);
    }
    target.isFolder = target.isFolder || (iEntry.unixMode & kTypeMask) == kFolderType;
    if (target.isFolder && iEntry.size != 0) {
      return Refused(KORSysZipFile::kDamaged, iEntry, "it is a folder with content");
    }
    _targets.push_back(std::move(target));
    return _archive.CheckReadable(iEntry);
  }

  ZipProblem RunInside(const std::string& iTarget) {
    if (ZipProblem problem = _tree.Open(iTarget); !problem.IsNone()) {
      return problem;
    }
    Staging staging;
    ZipProblem problem = ToProblem(staging.Open(_tree.Root()));
    if (problem.IsNone()) {
      problem = UnpackAll(staging);
    }
    if (problem.IsNone()) {
      problem = ForEach([this](std::size_t iPosition) { return CheckPlace(iPosition); });
    }
    if (problem.IsNone()) {
      problem = Guarded([&] { return ForEach([&](std::size_t iPosition) { return Place(staging, iPosition); }); });
      if (problem.IsNone()) {
        staging.Forget();
      } else {
        _tree.TakeBack();
      }
    }
    return problem;
  }

  template <typename Step>
  ZipProblem ForEach(Step iStep) {
    for (std::size_t position = 0; position < _targets.size(); ++position) {
      ZipProblem problem = iStep(position);
      if (!problem.IsNone()) {
        if (problem.entry.empty()) {
          problem.entry = ShownName(_archive.Entries()[position].rawName);
        }
        return problem;
      }
    }
    return {};
  }

  ZipProblem UnpackAll(Staging& ioStaging) {
    return ForEach([&](std::size_t iPosition) {
      return _targets[iPosition].isFolder ? ZipProblem() : Unpack(ioStaging, iPosition);
    });
  }

  ZipProblem Unpack(Staging& ioStaging, std::size_t iPosition) {
    const ZipEntry& entry = _archive.Entries()[iPosition];
    Os::FileDescriptor file = 0;
    if (const Os::Status status = ioStaging.Create(iPosition, (entry.unixMode & kAnyRun) != 0, file); !status.IsOk()) {
      return ToProblem(status);
    }
    Os::FileGuard guard(file);
    ZipProblem problem = _archive.IsInMemory(entry) ? WriteWhole(entry, file) : WritePieces(entry, file);
    _archive.End();
    const Os::Status closed = guard.Close();
    return problem.IsNone() ? ToProblem(closed) : problem;
  }

  ZipProblem WriteWhole(const ZipEntry& iEntry, Os::FileDescriptor iFile) {
    char* const buffer = Buffer(std::max<std::uint64_t>(iEntry.size, 1));
    if (ZipProblem problem = _archive.ReadWhole(iEntry, buffer); !problem.IsNone()) {
      return problem;
    }
    std::size_t written = 0;
    return ToProblem(Os::WriteFully(iFile, buffer, static_cast<std::size_t>(iEntry.size), written));
  }

  ZipProblem WritePieces(const ZipEntry& iEntry, Os::FileDescriptor iFile) {
    constexpr std::size_t kPieceSize = std::size_t{256} << 10U;
    char* const buffer = Buffer(kPieceSize);
    ZipProblem problem = _archive.Begin(iEntry);
    // An entry of no content is read once as well, which verifies that there is none.
    std::uint64_t position = 0;
    while (problem.IsNone()) {
      std::size_t count = 0;
      std::size_t written = 0;
      problem = _archive.Next(iEntry, buffer, kPieceSize, count);
      if (problem.IsNone()) {
        problem = ToProblem(Os::WriteFully(iFile, buffer, count, written));
      }
      position += count;
      if (position == iEntry.size) {
        break;
      }
    }
    return problem;
  }

  // Finds out what stands in the way before anything is moved.
  ZipProblem CheckPlace(std::size_t iPosition) {
    const ZipTarget& target = _targets[iPosition];
    const auto [parent, name] = SplitLast(target.path, '/');
    const Os::FolderHandle* folder = nullptr;
    Os::Status status = _tree.Enter(parent, false, folder);
    Os::FolderHandle::Kind kind = Os::FolderHandle::Kind::Missing;
    if (status.IsOk() && folder != nullptr && !name.empty()) {
      status = folder->Query(name, kind);
    }
    if (!status.IsOk()) {
      return InTheWay(status);
    }
    const Os::FolderHandle::Kind wrong =
        target.isFolder ? Os::FolderHandle::Kind::Other : Os::FolderHandle::Kind::Folder;
    return kind == wrong ? InTheWay(Os::Failure::NotAFolder()) : ZipProblem();
  }

  static ZipProblem InTheWay(const Os::Status& iStatus) {
    ZipProblem problem = ToProblem(iStatus);
    if (iStatus.GetNative() == Os::Failure::NotAFolder().GetNative()) {
      problem.cause = "something else of that name, or a link, is in its place in the target folder";
    }
    return problem;
  }

  ZipProblem Place(const Staging& iStaging, std::size_t iPosition) {
    const ZipTarget& target = _targets[iPosition];
    const Os::FolderHandle* folder = nullptr;
    if (target.isFolder) {
      return InTheWay(_tree.Enter(target.path, true, folder));
    }
    const auto [parent, name] = SplitLast(target.path, '/');
    Os::Status status = _tree.Enter(parent, true, folder);
    Os::FolderHandle::Kind kind = Os::FolderHandle::Kind::Missing;
    if (status.IsOk()) {
      status = folder->Query(name, kind);
    }
    if (!status.IsOk()) {
      return InTheWay(status);
    }
    const bool isNew = kind == Os::FolderHandle::Kind::Missing;
    if (isNew) {
      _tree.NoteNew(target.path, false);
    }
    status = iStaging.MoveTo(iPosition, *folder, name);
    if (isNew && !status.IsOk()) {
      _tree.ForgetNewest();
    }
    return InTheWay(status);
  }

  char* Buffer(std::uint64_t iSize) {
    if (iSize > _bufferSize) {
      _buffer = std::make_unique_for_overwrite<char[]>(static_cast<std::size_t>(iSize));
      _bufferSize = iSize;
    }
    return _buffer.get();
  }

  ZipArchive& _archive;
  std::vector<ZipTarget> _targets;
  TargetTree _tree;
  std::unique_ptr<char[]> _buffer;
  std::uint64_t _bufferSize = 0;
};

}  // namespace

ZipProblem ExtractZip(ZipArchive& ioArchive, const std::string& iNativeTarget, bool iIsUtf8Preferred) {
  Extraction extraction(ioArchive);
  ZipProblem problem = extraction.Plan(iIsUtf8Preferred);
  return problem.IsNone() ? extraction.Run(iNativeTarget) : problem;
}

}  // namespace VYX::Platform
