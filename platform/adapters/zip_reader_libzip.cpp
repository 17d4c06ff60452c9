#include <limits>

#include "platform/adapters/zip_archive.h"
#include "platform/adapters/zip_source_libzip.h"

namespace VYX::Adapters {
namespace {

// The archive's bytes with the position that libzip expects them to have.
struct Cursor {
  ByteSource* source = nullptr;
  zip_int64_t position = 0;
  Libzip::Error error;
};

zip_int64_t SizeOf(const Cursor& iCursor) noexcept {
  return static_cast<zip_int64_t>(iCursor.source->GetSize());
}

zip_int64_t Read(Cursor& ioCursor, void* oData, zip_uint64_t iLength) {
  const auto rest = static_cast<zip_uint64_t>(std::max<zip_int64_t>(SizeOf(ioCursor) - ioCursor.position, 0));
  const zip_uint64_t length = std::min(iLength, rest);
  if (!ioCursor.source->ReadAt(static_cast<std::uint64_t>(ioCursor.position), oData, length)) {
    return -1;
  }
  ioCursor.position += static_cast<zip_int64_t>(length);
  return static_cast<zip_int64_t>(length);
}

zip_int64_t Seek(Cursor& ioCursor, void* iData, zip_uint64_t iLength) {
  const zip_int64_t position =
      zip_source_seek_compute_offset(static_cast<zip_uint64_t>(ioCursor.position),
                                     static_cast<zip_uint64_t>(SizeOf(ioCursor)), iData, iLength, ioCursor.error.Get());
  if (position < 0) {
    return -1;
  }
  ioCursor.position = position;
  return 0;
}

zip_int64_t Answer(void* ioState, void* ioData, zip_uint64_t iLength, zip_source_cmd_t iCommand) {
  Cursor& cursor = *static_cast<Cursor*>(ioState);
  switch (iCommand) {
    case ZIP_SOURCE_OPEN:
      cursor.position = 0;
      return 0;
    case ZIP_SOURCE_READ:
      return Read(cursor, ioData, iLength);
    case ZIP_SOURCE_SEEK:
      return Seek(cursor, ioData, iLength);
    case ZIP_SOURCE_TELL:
      return cursor.position;
    case ZIP_SOURCE_STAT: {
      auto& stat = *static_cast<zip_stat_t*>(ioData);
      zip_stat_init(&stat);
      stat.valid = ZIP_STAT_SIZE;
      stat.size = static_cast<zip_uint64_t>(SizeOf(cursor));
      return sizeof stat;
    }
    case ZIP_SOURCE_ERROR:
      return Libzip::GiveError(ioData, iLength, ZIP_ER_READ);
    case ZIP_SOURCE_SUPPORTS:
      return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                                            ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL,
                                            ZIP_SOURCE_SUPPORTS, -1);
    default:
      return 0;
  }
}

struct CloseArchive {
  void operator()(zip_t* ioArchive) const noexcept { zip_discard(ioArchive); }
};
struct CloseFile {
  void operator()(zip_file_t* ioFile) const noexcept { zip_fclose(ioFile); }
};

}  // namespace

struct ZipReader::State {
  Cursor cursor;
  std::unique_ptr<zip_t, CloseArchive> archive;
  std::unique_ptr<zip_file_t, CloseFile> entry;
};

ZipReader::ZipReader() : _state(std::make_unique<State>()) {}
ZipReader::~ZipReader() = default;

bool ZipReader::Open(ByteSource& iSource, std::string& oReason) {
  _state->cursor.source = &iSource;
  Libzip::Error error;
  zip_source_t* const source = zip_source_function_create(Answer, &_state->cursor, error.Get());
  if (source != nullptr) {
    _state->archive.reset(zip_open_from_source(source, ZIP_RDONLY, error.Get()));
  }
  if (_state->archive == nullptr) {
    oReason = error.Text();
    zip_source_free(source);
    return false;
  }
  return true;
}

std::uint64_t ZipReader::GetCount() const noexcept {
  return static_cast<std::uint64_t>(zip_get_num_entries(_state->archive.get(), 0));
}

bool ZipReader::Describe(std::uint64_t iIndex, ZipFigures& oFigures) const {
  zip_stat_t stat;
  constexpr zip_uint64_t kNeeded = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_CRC | ZIP_STAT_COMP_METHOD;
  if (zip_stat_index(_state->archive.get(), iIndex, 0, &stat) != 0 || (stat.valid & kNeeded) != kNeeded) {
    return false;
  }
  oFigures = {stat.size, stat.comp_size, stat.crc, stat.comp_method};
  return true;
}

bool ZipReader::OpenEntry(std::uint64_t iIndex, bool iIsCompressed) {
  CloseEntry();
  _state->entry.reset(zip_fopen_index(_state->archive.get(), iIndex, iIsCompressed ? ZIP_FL_COMPRESSED : 0));
  return _state->entry != nullptr;
}

ZipFailure ZipReader::ReadEntry(char* oBuffer, std::size_t iSize, std::size_t& oRead) {
  // One read of the library covers no more than a signed number says.
  const zip_uint64_t size = std::min<zip_uint64_t>(iSize, std::numeric_limits<zip_int32_t>::max());
  const zip_int64_t count = zip_fread(_state->entry.get(), oBuffer, size);
  if (count < 0) {
    const int code = zip_error_code_zip(zip_file_get_error(_state->entry.get()));
    return code == ZIP_ER_CRC ? ZipFailure::WrongChecksum : ZipFailure::Corrupt;
  }
  oRead = static_cast<std::size_t>(count);
  return ZipFailure::None;
}

void ZipReader::CloseEntry() noexcept {
  _state->entry.reset();
}

}  // namespace VYX::Adapters
