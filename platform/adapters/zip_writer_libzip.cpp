#include <ctime>
#include <utility>

#include "platform/adapters/zip_archive.h"
#include "platform/adapters/zip_source_libzip.h"

namespace VYX::Adapters {
namespace {

// Where the archive goes, with the position that libzip expects it to have.
struct Cursor {
  ByteSink* sink = nullptr;
  zip_uint64_t position = 0;
  zip_uint64_t end = 0;
  Libzip::Error error;
};

zip_int64_t Write(Cursor& ioCursor, const void* iData, zip_uint64_t iLength) {
  if (!ioCursor.sink->WriteAt(ioCursor.position, iData, iLength)) {
    return -1;
  }
  ioCursor.position += iLength;
  ioCursor.end = std::max(ioCursor.end, ioCursor.position);
  return static_cast<zip_int64_t>(iLength);
}

zip_int64_t SeekWrite(Cursor& ioCursor, void* iData, zip_uint64_t iLength) {
  const zip_int64_t position =
      zip_source_seek_compute_offset(ioCursor.position, ioCursor.end, iData, iLength, ioCursor.error.Get());
  if (position < 0) {
    return -1;
  }
  ioCursor.position = static_cast<zip_uint64_t>(position);
  return 0;
}

zip_int64_t AnswerArchive(void* ioState, void* ioData, zip_uint64_t iLength, zip_source_cmd_t iCommand) {
  Cursor& cursor = *static_cast<Cursor*>(ioState);
  switch (iCommand) {
    case ZIP_SOURCE_BEGIN_WRITE:
      cursor.position = cursor.end = 0;
      return 0;
    case ZIP_SOURCE_WRITE:
      return Write(cursor, ioData, iLength);
    case ZIP_SOURCE_SEEK_WRITE:
      return SeekWrite(cursor, ioData, iLength);
    case ZIP_SOURCE_TELL_WRITE:
      return static_cast<zip_int64_t>(cursor.position);
    case ZIP_SOURCE_STAT: {
      auto& stat = *static_cast<zip_stat_t*>(ioData);
      zip_stat_init(&stat);
      stat.valid = ZIP_STAT_SIZE;
      stat.size = 0;
      return sizeof stat;
    }
    case ZIP_SOURCE_ERROR:
      return Libzip::GiveError(ioData, iLength, ZIP_ER_WRITE);
    case ZIP_SOURCE_SUPPORTS:
      return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                                            ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL,
                                            ZIP_SOURCE_SUPPORTS, ZIP_SOURCE_REMOVE, ZIP_SOURCE_BEGIN_WRITE,
                                            ZIP_SOURCE_COMMIT_WRITE, ZIP_SOURCE_ROLLBACK_WRITE, ZIP_SOURCE_WRITE,
                                            ZIP_SOURCE_SEEK_WRITE, ZIP_SOURCE_TELL_WRITE, -1);
    default:
      return 0;
  }
}

// One entry on its way into the archive.
struct Entry {
  std::unique_ptr<ZipContent> content;
  ZipEntryTraits traits;
  ZipFigures figures;
  bool isOpen = false;
};

// An archive says years from 1980 to 2107, in local time; a day is left to either side.
std::time_t ToArchiveTime(std::int64_t iSeconds) noexcept {
  constexpr std::int64_t kFirst = 315'619'200;   // 1980-01-02
  constexpr std::int64_t kLast = 4'354'732'800;  // 2107-12-31
  return static_cast<std::time_t>(std::clamp(iSeconds, kFirst, kLast));
}

// libzip asks for the figures when the entry's turn has come, twice; the content is made ready the first time.
zip_int64_t Describe(Entry& ioEntry, zip_stat_t& oStat) {
  if (!ioEntry.isOpen && !ioEntry.content->Open(ioEntry.figures)) {
    return -1;
  }
  ioEntry.isOpen = true;
  const ZipFigures& figures = ioEntry.figures;
  zip_stat_init(&oStat);
  oStat.size = figures.size;
  oStat.mtime = ToArchiveTime(ioEntry.traits.lastWriteSeconds);
  oStat.valid = ZIP_STAT_SIZE | ZIP_STAT_MTIME;
  if (figures.method == ZIP_CM_DEFLATE) {
    oStat.comp_size = figures.compressedSize;
    oStat.crc = figures.crc;
    oStat.comp_method = ZIP_CM_DEFLATE;
    oStat.encryption_method = ZIP_EM_NONE;
    oStat.valid |= ZIP_STAT_COMP_SIZE | ZIP_STAT_CRC | ZIP_STAT_COMP_METHOD | ZIP_STAT_ENCRYPTION_METHOD;
  }
  return sizeof oStat;
}

zip_int64_t ReadContent(Entry& ioEntry, void* oData, zip_uint64_t iLength) {
  std::size_t count = 0;
  return ioEntry.content->Read(static_cast<char*>(oData), iLength, count) ? static_cast<zip_int64_t>(count) : -1;
}

zip_int64_t AnswerEntry(void* ioState, void* ioData, zip_uint64_t iLength, zip_source_cmd_t iCommand) {
  auto* const entry = static_cast<Entry*>(ioState);
  switch (iCommand) {
    case ZIP_SOURCE_READ:
      return ReadContent(*entry, ioData, iLength);
    case ZIP_SOURCE_CLOSE:
      entry->content->Close();
      return 0;
    case ZIP_SOURCE_STAT:
      return Describe(*entry, *static_cast<zip_stat_t*>(ioData));
    case ZIP_SOURCE_ERROR:
      return Libzip::GiveError(ioData, iLength, ZIP_ER_READ);
    case ZIP_SOURCE_FREE:
      delete entry;
      return 0;
    case ZIP_SOURCE_SUPPORTS:
      return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                                            ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, ZIP_SOURCE_SUPPORTS, -1);
    default:
      return 0;
  }
}

struct DiscardArchive {
  void operator()(zip_t* ioArchive) const noexcept { zip_discard(ioArchive); }
};

bool SetTraits(zip_t* ioArchive, zip_uint64_t iIndex, const ZipEntryTraits& iTraits) noexcept {
  // libzip's zlib, for contents too large to be deflated in memory; a level of 0 would mean its slowest.
  constexpr zip_uint32_t kLevel = 6;
  constexpr zip_uint32_t kRegular = 0100000;
  const zip_int32_t method = iTraits.isCompressed ? ZIP_CM_DEFLATE : ZIP_CM_STORE;
  if (zip_set_file_compression(ioArchive, iIndex, method, kLevel) != 0) {
    return false;
  }
  const zip_uint32_t mode = kRegular | (iTraits.permissions & 0777U);
  return iTraits.permissions == 0 ||
         zip_file_set_external_attributes(ioArchive, iIndex, 0, ZIP_OPSYS_UNIX, mode << 16U) == 0;
}

}  // namespace

struct ZipWriter::State {
  Cursor cursor;
  std::unique_ptr<zip_t, DiscardArchive> archive;
};

ZipWriter::ZipWriter() : _state(std::make_unique<State>()) {}
ZipWriter::~ZipWriter() = default;

bool ZipWriter::Open(ByteSink& iSink, std::string& oReason) {
  _state->cursor.sink = &iSink;
  Libzip::Error error;
  zip_source_t* const source = zip_source_function_create(AnswerArchive, &_state->cursor, error.Get());
  if (source != nullptr) {
    _state->archive.reset(zip_open_from_source(source, ZIP_CREATE | ZIP_TRUNCATE, error.Get()));
  }
  if (_state->archive == nullptr) {
    oReason = error.Text();
    zip_source_free(source);
    return false;
  }
  return true;
}

bool ZipWriter::Add(const std::string& iName, const ZipEntryTraits& iTraits, std::unique_ptr<ZipContent> ioContent,
                    std::string& oReason) {
  zip_t* const archive = _state->archive.get();
  auto entry = std::make_unique<Entry>();
  entry->content = std::move(ioContent);
  entry->traits = iTraits;
  zip_source_t* const source = zip_source_function(archive, AnswerEntry, entry.get());
  if (source == nullptr) {
    oReason = zip_strerror(archive);
    return false;
  }
  static_cast<void>(entry.release());  // the source frees it
  const zip_int64_t index = zip_file_add(archive, iName.c_str(), source, ZIP_FL_ENC_UTF_8);
  if (index < 0) {
    oReason = zip_strerror(archive);
    zip_source_free(source);
    return false;
  }
  if (!SetTraits(archive, static_cast<zip_uint64_t>(index), iTraits)) {
    oReason = zip_strerror(archive);
    return false;
  }
  return true;
}

bool ZipWriter::Finish(std::string& oReason) {
  if (zip_close(_state->archive.get()) != 0) {
    oReason = zip_strerror(_state->archive.get());
    return false;
  }
  static_cast<void>(_state->archive.release());  // closing has freed it
  return true;
}

}  // namespace VYX::Adapters
