#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"

/**
 * The work on a text's storage.
 *
 * In front of the bytes of an allocation stand its capacity and what reading found out: the number of characters and
 * the place of the character read last. Readers on several threads may fill these in at once: each is one relaxed
 * atomic, and each value ever stored is true for the unchanged text.
 */
struct KORUnicodeString::Access {
  struct Header {
    std::atomic<std::uint64_t> cursor;     // character position and byte offset, 32 bits each
    std::atomic<std::uint64_t> charCount;  // equal to the byte count for ASCII, whose positions are offsets
    std::size_t capacity;
  };

  // A character's position and the offset of its first byte.
  struct Mark {
    std::size_t position;
    std::size_t offset;
  };

  static constexpr std::uint64_t kUnknown = UINT64_MAX;

  static Header& HeaderOf(const KORUnicodeString& iText) noexcept;
  static std::size_t Capacity(const KORUnicodeString& iText) noexcept;
  static char* Bytes(KORUnicodeString& ioText) noexcept;

  /// An empty text with room for so many bytes. @throws std::bad_alloc
  static KORUnicodeString WithCapacity(std::size_t iCapacity);

  /// Sets the size of a text whose bytes were written, ends it with a zero and forgets what was known about it.
  static void SetSize(KORUnicodeString& ioText, std::size_t iSize) noexcept;

  /// The capacity to allocate for a text that grows to iNeeded bytes. @throws std::bad_alloc
  static std::size_t GrownCapacity(const KORUnicodeString& iText, std::size_t iNeeded);

  /// Appends bytes, which may be the text's own.
  static void Append(KORUnicodeString& ioText, std::string_view iBytes);

  static void AppendByte(KORUnicodeString& ioText, char iByte);

  /// Puts bytes, which may be the text's own, in the place of those from iBegin to iEnd.
  static void Splice(KORUnicodeString& ioText, std::size_t iBegin, std::size_t iEnd, std::string_view iBytes);

  /// Number of characters.
  static std::size_t CharCount(const KORUnicodeString& iText) noexcept;

  /// Offset of the character at a position; the byte count for the position after the last one, npos beyond.
  static std::size_t OffsetOf(const KORUnicodeString& iText, std::size_t iPosition) noexcept;

  /// Position of the character that begins at an offset.
  static std::size_t PositionOf(const KORUnicodeString& iText, std::size_t iOffset) noexcept;

  /// The bytes that a range of characters covers, cut at the end of the text. False when the start is outside the text
  /// or the count is negative.
  static bool FindRange(const KORUnicodeString& iText, int iStart, int iCount, std::size_t& oBegin,
                        std::size_t& oEnd) noexcept;

  /// Offset of an occurrence that covers whole characters, at or after iFrom; npos when there is none.
  static std::size_t FindFrom(std::string_view iText, std::string_view iWhat, std::size_t iFrom) noexcept;
  static std::size_t FindLastFrom(std::string_view iText, std::string_view iWhat, std::size_t iFrom) noexcept;

 private:
  static Mark LoadCursor(const Header& iHeader) noexcept;
  static void StoreCursor(Header& ioHeader, Mark iMark) noexcept;
  static void NoteAppended(KORUnicodeString& ioText, std::size_t iOldSize, std::size_t iNewSize) noexcept;
  static void NoteSpliced(KORUnicodeString& ioText, Mark iCursor, bool iAreSingleBytes) noexcept;
  static bool IsOwn(const KORUnicodeString& iText, std::string_view iBytes) noexcept;
};
