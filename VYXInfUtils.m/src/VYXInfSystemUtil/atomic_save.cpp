#include "atomic_save.h"

#include <array>
#include <atomic>
#include <string>
#include <string_view>

#include "KORSysBase/KORError.h"
#include "platform/os/clock.h"
#include "platform/os/files.h"
#include "platform/os/native_path.h"
#include "platform/os/process_identity.h"

namespace VYX::Internal {
namespace {

// A file of the host that is closed, and removed by its name, unless it was kept.
class TemporaryFile {
 public:
  TemporaryFile() = default;
  ~TemporaryFile() { Discard(); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  // Creates a file of an unused name in a folder, for its owner only where iIsOwnerOnly.
  Os::Status Create(const std::string& iFolder, bool iIsOwnerOnly) {
    constexpr int kAttempts = 100;
    const Os::OpenMode mode = iIsOwnerOnly ? Os::OpenMode::WriteOwner : Os::OpenMode::WriteNew;
    Os::Status status;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
      _path = iFolder + UnusedName();
      status = Os::OpenFile(_path, mode, _file);
      if (status.IsOk() || !status.IsAlreadyThere()) {
        break;
      }
    }
    _isNamed = status.IsOk();
    return status;
  }

  Os::FileDescriptor Get() const noexcept { return _file; }

  Os::Status Close() {
    const Os::FileDescriptor file = _file;
    _file = 0;
    return Os::CloseFile(file);
  }

  Os::Status RenameTo(const std::string& iPath, bool iIsNew) {
    const Os::Status status = iIsNew ? Os::RenameNew(_path, iPath) : Os::RenameOver(_path, iPath);
    _isNamed = _isNamed && !status.IsOk();
    return status;
  }

 private:
  static std::string UnusedName() {
    static std::atomic<std::uint32_t> counter{0};
    return ".vyx-" + std::to_string(Os::CurrentProcessId()) + "-" + std::to_string(Os::MonotonicCounter()) + "-" +
           std::to_string(counter.fetch_add(1, std::memory_order_relaxed)) + ".tmp";
  }

  void Discard() noexcept {
    if (_file != 0) {
      static_cast<void>(Close());
    }
    if (_isNamed) {
      static_cast<void>(Os::RemoveFile(_path));
    }
  }

  std::string _path;
  Os::FileDescriptor _file = 0;
  bool _isNamed = false;
};

// The file as it is before the save.
struct Target {
  std::string path;
  Os::FileInfo info;
  bool isThere = false;
};

Os::Status FindTarget(const KORUnicodeString& iPath, Target& oTarget) {
  Os::Status status = Os::ToNativePath(iPath.ToStringView(), oTarget.path);
  if (!status.IsOk()) {
    return status;
  }
  status = Os::DescribePath(oTarget.path, oTarget.info);
  if (status.IsNotThere()) {
    return {};
  }
  if (!status.IsOk()) {
    return status;
  }
  oTarget.isThere = true;
  if (!oTarget.info.IsRegular()) {
    return Os::Failure::AccessDenied();
  }
  // Renaming asks for no permission on the file itself, writing it would.
  status = Os::TestWritability(oTarget.path);
  return status.IsOk() ? Os::ResolveLinks(oTarget.path, oTarget.path) : status;
}

// The folder of a path, with the separator at its end; empty for a bare name.
std::string FolderOf(const std::string& iPath) {
  return iPath.substr(0, iPath.rfind(Os::NativeSeparator()) + 1);
}

Os::Status WriteAll(Os::FileDescriptor iFile, const void* iData, std::size_t iSize) {
  std::size_t written = 0;
  return Os::WriteFully(iFile, iData, iSize, written);
}

Os::Status CopyAll(Os::FileDescriptor iFrom, Os::FileDescriptor iTo) {
  std::array<char, 64 * 1024> buffer;
  for (;;) {
    std::size_t count = 0;
    Os::Status status = Os::ReadFully(iFrom, buffer.data(), buffer.size(), count);
    if (status.IsOk()) {
      status = WriteAll(iTo, buffer.data(), count);
    }
    if (!status.IsOk() || count < buffer.size()) {
      return status;
    }
  }
}

Os::Status CopyOldContent(const std::string& iPath, Os::FileDescriptor iTo) {
  Os::FileDescriptor old = 0;
  Os::Status status = Os::OpenFile(iPath, Os::OpenMode::Read, old);
  if (status.IsOk()) {
    status = CopyAll(old, iTo);
    static_cast<void>(Os::CloseFile(old));
  }
  return status;
}

Os::Status Fill(const Target& iTarget, const FileContent& iContent, const AtomicSaveOptions& iOptions,
                TemporaryFile& ioFile) {
  Os::Status status;
  if (iTarget.isThere && iOptions.isAppended) {
    status = CopyOldContent(iTarget.path, ioFile.Get());
  }
  if (status.IsOk()) {
    status = WriteAll(ioFile.Get(), iContent.data, static_cast<std::size_t>(iContent.size));
  }
  if (status.IsOk() && iTarget.isThere) {
    status = Os::TakeOverPermissions(ioFile.Get(), iTarget.info);
  }
  if (status.IsOk()) {
    status = Os::FlushFile(ioFile.Get());
  }
  const Os::Status closed = ioFile.Close();
  return status.IsOk() ? closed : status;
}

long Fail(const Os::Status& iStatus, const KORUnicodeString& iPath) {
  const std::string message = "Cannot save '" + iPath.ConvertToChar() + "': " + iStatus.Describe();
  return KORError::KORSetLastError(iStatus.ToResultCode(), KORUnicodeString(std::string_view(message)));
}

}  // namespace

long SaveAtomically(const KORUnicodeString& iPath, const FileContent& iContent, const AtomicSaveOptions& iOptions,
                    AtomicSaveStep& oStep) {
  Target target;
  TemporaryFile file;
  Os::Status status = FindTarget(iPath, target);
  const std::string folder = FolderOf(target.path);
  if (status.IsOk()) {
    status = file.Create(folder, target.isThere);
  }
  if (!status.IsOk()) {
    oStep = AtomicSaveStep::Open;
    return Fail(status, iPath);
  }
  status = Fill(target, iContent, iOptions, file);
  if (status.IsOk()) {
    status = file.RenameTo(target.path, iOptions.isNew);
  }
  if (status.IsOk()) {
    status = Os::FlushFolder(folder.empty() ? "." : folder);
  }
  if (!status.IsOk()) {
    oStep = AtomicSaveStep::Write;
    return Fail(status, iPath);
  }
  return 0;
}

}  // namespace VYX::Internal
