#include "zip_creation.h"

#include <algorithm>
#include <new>
#include <string_view>
#include <utility>

#include "KORSysBase/KORSysZipFile.h"
#include "KORSysTS/KORUnicodeString.h"
#include "platform/adapters/crc32.h"
#include "zip_layout.h"

namespace VYX::Platform {
namespace {

ZipProblem Problem(long iCode, const std::string& iEntry, std::string_view iCause) {
  return {iCode, iEntry, std::string(iCause)};
}

}  // namespace

struct ZipCreation::Work {
  std::uint64_t maxInMemory = 0;
  ZipFileSink sink;
  Adapters::ZipWriter writer;
  std::unique_ptr<Adapters::Deflater> deflater;
  ZipProblem contentProblem;
};

namespace {

// A file on its way into an archive: compressed in one go, or handed on piece by piece.
class FileContent final : public Adapters::ZipContent {
 public:
  FileContent(std::string iPath, std::string iName, bool iIsCompressed, std::uint64_t iMaxInMemory,
              std::unique_ptr<Adapters::Deflater>& ioDeflater, ZipProblem& oProblem)
      : _path(std::move(iPath)),
        _name(std::move(iName)),
        _isCompressed(iIsCompressed),
        _maxInMemory(iMaxInMemory),
        _deflater(ioDeflater),
        _problem(oProblem) {}
  ~FileContent() override { Close(); }
  FileContent(const FileContent&) = delete;
  FileContent& operator=(const FileContent&) = delete;

  bool Open(Adapters::ZipFigures& oFigures) noexcept override {
    try {
      return OpenFile(oFigures);
    } catch (const std::bad_alloc&) {
      return Fail(Os::Failure::OutOfMemory());
    }
  }

  bool Read(char* oBuffer, std::size_t iSize, std::size_t& oRead) noexcept override {
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(iSize, _rest));
    if (_packed.data != nullptr) {
      std::copy_n(_packed.data.get() + (_packed.size - static_cast<std::size_t>(_rest)), wanted, oBuffer);
      oRead = wanted;
    } else if (const Os::Status status = Os::ReadFully(_file, oBuffer, wanted, oRead); !status.IsOk()) {
      return Fail(status);
    } else if (oRead < wanted) {
      return Fail(Os::Failure::InvalidParameter(), "it was cut short while it was read");
    }
    _rest -= oRead;
    return true;
  }

  void Close() noexcept override {
    _packed = {};
    if (_file != 0) {
      static_cast<void>(Os::CloseFile(std::exchange(_file, 0)));
    }
  }

 private:
  bool OpenFile(Adapters::ZipFigures& oFigures) {
    Os::FileInfo info;
    Os::Status status = Os::OpenFile(_path, Os::OpenMode::Read, _file);
    if (status.IsOk()) {
      status = Os::DescribeFile(_file, info);
    }
    if (!status.IsOk()) {
      return Fail(status);
    }
    oFigures.size = _rest = info.size;
    return !_isCompressed || info.size > _maxInMemory || Pack(oFigures);
  }

  // What the file holds by now is what is stored, be it shorter than it was.
  bool Pack(Adapters::ZipFigures& ioFigures) {
    auto size = static_cast<std::size_t>(ioFigures.size);
    const auto content = std::make_unique_for_overwrite<char[]>(size);
    if (const Os::Status status = Os::ReadFully(_file, content.get(), size, size); !status.IsOk()) {
      return Fail(status);
    }
    if (_deflater == nullptr) {
      _deflater = std::make_unique<Adapters::Deflater>();
    }
    _packed = _deflater->Deflate(content.get(), size);
    _rest = _packed.size;
    ioFigures = {size, _packed.size, Adapters::Crc32(0, content.get(), size), ZipEntry::kDeflated};
    static_cast<void>(Os::CloseFile(std::exchange(_file, 0)));
    return true;
  }

  bool Fail(const Os::Status& iStatus, const char* iCause = nullptr) noexcept {
    try {
      _problem = Problem(iStatus.ToResultCode(), _name, iCause == nullptr ? iStatus.Describe() : iCause);
    } catch (const std::bad_alloc&) {
      _problem.code = iStatus.ToResultCode();
    }
    return false;
  }

  std::string _path;
  std::string _name;
  bool _isCompressed;
  std::uint64_t _maxInMemory;
  std::unique_ptr<Adapters::Deflater>& _deflater;
  ZipProblem& _problem;
  Os::FileDescriptor _file = 0;
  Adapters::ByteArray _packed;
  std::uint64_t _rest = 0;
};

// What is asked of a file when it is added: that it is one and can be read.
Os::Status TryFile(const std::string& iPath, Os::FileInfo& oInfo) {
  Os::FileDescriptor file = 0;
  Os::Status status = Os::OpenFile(iPath, Os::OpenMode::Read, file);
  if (!status.IsOk()) {
    return status;
  }
  status = Os::DescribeFile(file, oInfo);
  static_cast<void>(Os::CloseFile(file));
  return status.IsOk() && !oInfo.IsRegular() ? Os::Failure::InvalidParameter() : status;
}

}  // namespace

ZipCreation::ZipCreation(std::uint64_t iMaxInMemory) : _work(std::make_unique<Work>()) {
  _work->maxInMemory = iMaxInMemory;
}

ZipCreation::~ZipCreation() = default;

ZipProblem ZipCreation::Open(const std::string& iNativePath) {
  if (const Os::Status status = _work->sink.Open(iNativePath); !status.IsOk()) {
    return ToProblem(status);
  }
  std::string reason;
  return _work->writer.Open(_work->sink, reason) ? ZipProblem() : Problem(E_FAIL, {}, reason);
}

ZipProblem ZipCreation::Add(const std::string& iNativeFile, const std::string& iName) {
  Os::FileInfo info;
  if (const Os::Status status = TryFile(iNativeFile, info); !status.IsOk()) {
    return ToProblem(status, iName);
  }
  constexpr std::size_t kMaxNameSize = 0xFFFF;
  if (iName.size() > kMaxNameSize || KORUnicodeString().BuildFromUTF8(iName.data(), iName.size()) != 0) {
    return Problem(KORSysZipFile::kUnsafeEntry, iName, "its name is no well-formed UTF-8, or too long");
  }
  if (!_names.insert(iName).second) {
    return Problem(KORSysZipFile::kDuplicateEntry, iName, "the archive has an entry of this name already");
  }
  // An empty file has nothing to compress.
  const Adapters::ZipEntryTraits traits{info.writeSeconds, info.permissions, info.size != 0};
  auto content = std::make_unique<FileContent>(iNativeFile, iName, traits.isCompressed, _work->maxInMemory,
                                               _work->deflater, _work->contentProblem);
  std::string reason;
  return _work->writer.Add(iName, traits, std::move(content), reason) ? ZipProblem() : Problem(E_FAIL, iName, reason);
}

ZipProblem ZipCreation::Finish() {
  // An archive of nothing is its end record.
  constexpr std::string_view kEmptyArchive("PK\5\6\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 22);
  std::string reason = "the archive cannot be written";
  const bool isWritten = _names.empty() ? _work->sink.WriteAt(0, kEmptyArchive.data(), kEmptyArchive.size())
                                        : _work->writer.Finish(reason);
  if (isWritten) {
    return ToProblem(_work->sink.Commit());
  }
  if (!_work->contentProblem.IsNone()) {
    return _work->contentProblem;
  }
  const Os::Status status = _work->sink.GetStatus();
  return status.IsOk() ? Problem(E_FAIL, {}, reason) : ToProblem(status);
}

}  // namespace VYX::Platform
