#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"

namespace VYX::Internal {

/**
 * Texts whose bytes stand in memory that belongs to a container, so that ending one costs nothing. Such a text must not
 * be moved out of its container; a copy owns its bytes as any other does.
 *
 * The forms of a text are those of KORUnicodeString: up to 22 bytes stand in the object and a last byte tells their
 * number; else address and size stand there, and a header of three words in front of the bytes. A test holds both sides
 * to that.
 */
struct PooledText {
  /// What a text takes beside its bytes where it does not fit into the object.
  static constexpr std::size_t kOverhead = 3 * sizeof(std::uint64_t) + 1;

  /// So many bytes behind the begin of a text's bytes are read, whatever its size.
  static constexpr std::size_t kReadBytes = 24;

  /// The place of the byte that tells the form of a text, and the first value that tells of no text.
  static constexpr std::size_t kTagOffset = 23;
  static constexpr std::uint8_t kFirstFreeTag = 0xF0;

  static bool FitsInline(std::size_t iSize) noexcept { return iSize <= kInlineCapacity; }

  /// Makes a text that fits inline. kReadBytes bytes have to be readable at iBytes.
  static void MakeInline(void* oPlace, const char* iBytes, std::size_t iSize) noexcept {
    const auto keep = [iSize](std::size_t iFirst) {
      const std::size_t count = iSize <= iFirst ? 0 : iSize - iFirst;
      return count >= 8 ? ~std::uint64_t{0} : (std::uint64_t{1} << (8 * count)) - 1;
    };
    Begin(oPlace, {Word(iBytes) & keep(0), Word(iBytes + 8) & keep(8), Word(iBytes + 16) & keep(16)},
          static_cast<std::uint8_t>(iSize));
  }

  /// Makes a text in a block of iSize + kOverhead bytes, aligned as a number of 64 bits is.
  static void MakeLong(void* oPlace, void* iBlock, const char* iBytes, std::size_t iSize) noexcept {
    auto* const header = static_cast<std::uint64_t*>(iBlock);
    header[0] = 0;
    header[1] = UINT64_MAX;  // the number of characters is not known
    header[2] = iSize;
    char* const bytes = reinterpret_cast<char*>(header + 3);
    std::memcpy(bytes, iBytes, iSize);
    bytes[iSize] = '\0';
    Begin(oPlace, {reinterpret_cast<std::uintptr_t>(bytes), iSize, 0}, kPooledTag);
  }

  /// Makes a text of any size; oPlace and the memory that iAllocate(size) answers belong to one container.
  template <class Allocate>
  static void Make(void* oPlace, std::string_view iText, Allocate&& iAllocate) {
    if (!FitsInline(iText.size())) {
      MakeLong(oPlace, iAllocate(iText.size() + kOverhead), iText.data(), iText.size());
      return;
    }
    char bytes[kReadBytes] = {};
    iText.copy(bytes, iText.size());
    MakeInline(oPlace, bytes, iText.size());
  }

  /// Makes a copy of a text.
  template <class Allocate>
  static void MakeCopy(void* oPlace, const KORUnicodeString& iText, Allocate&& iAllocate) {
    if (FitsInline(TagOf(iText))) {
      std::memcpy(oPlace, static_cast<const void*>(&iText), sizeof iText);
    } else {
      Make(oPlace, iText.ToStringView(), iAllocate);
    }
  }

  /// Equality, quick for texts that stand in their objects.
  static bool AreEqual(const KORUnicodeString& iLeft, const KORUnicodeString& iRight) noexcept {
    const std::uint8_t size = TagOf(iLeft);
    if (!FitsInline(size) || size != TagOf(iRight)) {
      return iLeft == iRight;
    }
    return HaveEqualBytes(iLeft.CastToCharPtr(), iRight.CastToCharPtr(), size);
  }

  /// Compares up to 24 bytes. Eight bytes are read at least.
  static bool HaveEqualBytes(const char* iLeft, const char* iRight, std::size_t iSize) noexcept {
    const std::uint64_t first = Word(iLeft) ^ Word(iRight);
    if (iSize <= 8) {
      return iSize == 0 || first << (64 - 8 * iSize) == 0;
    }
    const std::uint64_t last = Word(iLeft + iSize - 8) ^ Word(iRight + iSize - 8);
    return (first | last) == 0 && (iSize <= 16 || Word(iLeft + 8) == Word(iRight + 8));
  }

 private:
  struct Words {
    std::uint64_t words[3];
  };
  static constexpr std::size_t kInlineCapacity = 22;
  static constexpr std::uint8_t kPooledTag = 0x82;
  static_assert(sizeof(KORUnicodeString) == kReadBytes && sizeof(Words) == kReadBytes);

  static void Begin(void* oPlace, const Words& iWords, std::uint8_t iTag) noexcept {
    auto* const text = reinterpret_cast<char*>(new (oPlace) KORUnicodeString());
    std::memcpy(text, &iWords, sizeof iWords);
    std::memcpy(text + kTagOffset, &iTag, sizeof iTag);
  }

  static std::uint8_t TagOf(const KORUnicodeString& iText) noexcept {
    return reinterpret_cast<const std::uint8_t*>(&iText)[kTagOffset];
  }

  static std::uint64_t Word(const char* iBytes) noexcept {
    std::uint64_t word = 0;
    std::memcpy(&word, iBytes, sizeof word);
    return word;
  }
};

}  // namespace VYX::Internal
