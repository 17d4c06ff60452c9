#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

/**
 * The contract for the library that reads and writes the container of zip archives.
 *
 * It takes an archive as bytes and hands out entries by index; it trusts what the archive says. Whether an archive is
 * sound and its names are safe is for the caller to find out. One object belongs to one thread at a time.
 */
namespace VYX::Adapters {

/// The bytes of an archive that is read. It keeps the cause of a failure for its owner.
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  virtual std::uint64_t GetSize() const noexcept = 0;
  /// Reads exactly iSize bytes; false when that fails.
  virtual bool ReadAt(std::uint64_t iOffset, void* oBuffer, std::size_t iSize) noexcept = 0;
};

/// Where the bytes of an archive that is written go. It keeps the cause of a failure for its owner.
class ByteSink {
 public:
  virtual ~ByteSink() = default;
  /// Writes all bytes; false when that fails.
  virtual bool WriteAt(std::uint64_t iOffset, const void* iData, std::size_t iSize) noexcept = 0;
};

/// What the directory of an archive says about an entry.
struct ZipFigures {
  std::uint64_t size = 0;
  std::uint64_t compressedSize = 0;
  std::uint32_t crc = 0;
  std::uint16_t method = 0;

  bool operator==(const ZipFigures&) const = default;
};

/// Why an entry could not be read.
enum class ZipFailure : std::uint8_t { None, Corrupt, WrongChecksum };

/// Reads an archive.
class ZipReader {
 public:
  ZipReader();
  ~ZipReader();
  ZipReader(const ZipReader&) = delete;
  ZipReader& operator=(const ZipReader&) = delete;

  /// Reads the directory of an archive; the source must outlive the reader. False and the reason when that fails.
  bool Open(ByteSource& iSource, std::string& oReason);

  /// Number of entries.
  std::uint64_t GetCount() const noexcept;

  /// What the directory says about an entry; false where it cannot be had.
  bool Describe(std::uint64_t iIndex, ZipFigures& oFigures) const;

  /// Goes to the start of an entry, to be read as it is stored (compressed) or as content. False when that fails.
  bool OpenEntry(std::uint64_t iIndex, bool iIsCompressed);

  /// Reads the next bytes of the entry, at most iSize, and their number: 0 at its end. Content has the right checksum
  /// and size when its end was reached without failure.
  ZipFailure ReadEntry(char* oBuffer, std::size_t iSize, std::size_t& oRead);

  void CloseEntry() noexcept;

 private:
  struct State;
  std::unique_ptr<State> _state;
};

/// The content of an entry that is written. It keeps the cause of a failure for its owner.
class ZipContent {
 public:
  virtual ~ZipContent() = default;

  /// Makes the content ready and describes it: method 8 where Read gives a deflate stream, 0 where it gives the bytes
  /// themselves (compressedSize and crc then do not count). Called once. False when that fails.
  virtual bool Open(ZipFigures& oFigures) noexcept = 0;

  /// Reads the next bytes, at most iSize, and their number: 0 at the end. False when that fails.
  virtual bool Read(char* oBuffer, std::size_t iSize, std::size_t& oRead) noexcept = 0;

  /// Frees what Open and Read took.
  virtual void Close() noexcept = 0;
};

/// How an entry is stored.
struct ZipEntryTraits {
  std::int64_t lastWriteSeconds = 0;  ///< since 1970-01-01 UTC; brought into the years that an archive can say
  std::uint32_t permissions = 0;      ///< of the host; 0 for unknown
  bool isCompressed = true;           ///< deflated
};

/// Writes an archive.
class ZipWriter {
 public:
  ZipWriter();
  ~ZipWriter();
  ZipWriter(const ZipWriter&) = delete;
  ZipWriter& operator=(const ZipWriter&) = delete;

  /// Begins an archive; the sink must outlive the writer. False and the reason when that fails.
  bool Open(ByteSink& iSink, std::string& oReason);

  /// Adds an entry by its UTF-8 name; the content is asked for in Finish. False and the reason when that fails.
  bool Add(const std::string& iName, const ZipEntryTraits& iTraits, std::unique_ptr<ZipContent> ioContent,
           std::string& oReason);

  /// Writes the archive. False and the reason when that fails. An archive without entries writes nothing.
  bool Finish(std::string& oReason);

 private:
  struct State;
  std::unique_ptr<State> _state;
};

}  // namespace VYX::Adapters
