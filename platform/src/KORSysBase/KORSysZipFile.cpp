#include "KORSysBase/KORSysZipFile.h"

#include <string>

#include "platform/os/native_path.h"
#include "zip_guard.h"
#include "zip_session.h"

namespace {

namespace Os = VYX::Os;
using VYX::Platform::RunZipWork;
using VYX::Platform::WrongArgument;
using VYX::Platform::ZipArchive;
using VYX::Platform::ZipCreation;
using VYX::Platform::ZipProblem;
using VYX::Platform::ZipSession;

constinit KORSysZipLimits gDefaultLimits;

void Reset(ZipSession& ioSession) noexcept {
  ioSession.selection = {};
  ioSession.byName.clear();
  ioSession.archive.reset();
  ioSession.creation.reset();
}

ZipProblem Open(ZipSession& ioSession, KORSysZipOpenMode iMode) {
  std::string native;
  if (const Os::Status status = Os::ToNativePath(ioSession.path.ToStringView(), native); !status.IsOk()) {
    return VYX::Platform::ToProblem(status);
  }
  ZipProblem problem;
  switch (iMode) {
    case KORSysZipOpenMode::Create:
      ioSession.creation = std::make_unique<ZipCreation>(ioSession.limits.maxInMemory);
      problem = ioSession.creation->Open(native);
      break;
    case KORSysZipOpenMode::Browse:
    case KORSysZipOpenMode::Read:
      ioSession.archive = std::make_unique<ZipArchive>(ioSession.limits);
      problem = ioSession.archive->Open(native);
      break;
    default:
      problem = WrongArgument("the mode is unknown");
  }
  return problem;
}

}  // namespace

KORSysZipFile::KORSysZipFile(int) : _session(std::make_unique<ZipSession>()) {
  _session->limits = gDefaultLimits;
}

KORSysZipFile::~KORSysZipFile() = default;

void KORSysZipFile::SetDefaultLimits(const KORSysZipLimits& iLimits) {
  gDefaultLimits = iLimits;
}

KORSysZipLimits KORSysZipFile::GetDefaultLimits() {
  return gDefaultLimits;
}

void KORSysZipFile::SetLimits(const KORSysZipLimits& iLimits) {
  _session->limits = iLimits;
}

long KORSysZipFile::OpenZip(const KORUnicodeString& iPath, KORSysZipOpenMode iMode, int iOptions) {
  const bool isCreating = iMode == KORSysZipOpenMode::Create;
  const long result = RunZipWork(isCreating ? "create" : "open", "in", iPath, [&] {
    if (iOptions != 0 && iOptions != static_cast<int>(kUtf8Names)) {
      return WrongArgument("the options are unknown");
    }
    Reset(*_session);
    _session->path = iPath;
    _session->isUtf8Preferred = iOptions != 0;
    return Open(*_session, iMode);
  });
  if (result < 0) {
    Reset(*_session);
  }
  return result;
}

long KORSysZipFile::Close(int) {
  return RunZipWork("write", "in", _session->path, [&]() -> ZipProblem {
    if (_session->archive == nullptr && _session->creation == nullptr) {
      return {kWrongState, {}, "no archive is open"};
    }
    ZipProblem problem;
    if (_session->creation != nullptr) {
      problem = _session->creation->Finish();
    }
    Reset(*_session);
    return problem;
  });
}
