#pragma once

#include <compare>
#include <vector>

#include "KORSysBase/KORCollec.h"
#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

/**
 * A list of texts, held by value, positions counted from 1.
 *
 * ```cpp
 * KORListValKORUnicodeString names;
 * names.Append("Oslo");
 * names.Append("Bergen");
 * names[1];                // "Oslo"
 * names.Locate("Bergen");  // 2
 * names;                   // "Oslo", "Bergen"
 * ```
 *
 * What has to allocate throws std::bad_alloc when there is no memory left; the list is then as it was.
 * A position outside 1 to Size() stops the program. One object belongs to one thread at a time.
 */
class VYX_EXPORT KORListValKORUnicodeString {
 public:
  /// An empty list.
  KORListValKORUnicodeString() = default;

  /// An empty list with room for iCapacity texts; the second hint, a growth step, is accepted and not needed.
  explicit KORListValKORUnicodeString(int iCapacity, int iGrowth = 0);

  /// Copies of the iCount texts of an array.
  KORListValKORUnicodeString(const KORUnicodeString* iTexts, int iCount);

  /// Appends a copy of a text.
  void Append(const KORUnicodeString& iText) { _texts.push_back(iText); }
  /// Appends a text by taking its content over.
  void Append(KORUnicodeString&& ioText) { _texts.push_back(std::move(ioText)); }

  /// Number of texts.
  int Size() const noexcept { return static_cast<int>(_texts.size()); }

  /// The text at a position of 1 to Size(), to be changed in place; valid until a text is appended or removed.
  KORUnicodeString& operator[](int iPosition) noexcept { return _texts[Index(iPosition)]; }
  /// The text at a position of 1 to Size(); valid until a text is appended or removed.
  const KORUnicodeString& operator[](int iPosition) const noexcept { return _texts[Index(iPosition)]; }

  /// The first position, from iStart on, that holds the text; 0 when there is none.
  int Locate(const KORUnicodeString& iText, int iStart = 1) const noexcept;

  /// Removes the first element equal to the text and answers the position that it had; 0 when there is none.
  int RemoveValue(const KORUnicodeString& iText);

  /// Removes the element at a position; later ones move up by one.
  void RemovePosition(int iPosition);

  /// Removes every element and keeps or releases the storage.
  void RemoveAll(KORCollec::MemoryHandling iHandling = KORCollec::MemoryHandling::ReleaseMemory);

  /// True for equal texts in the same order, compared byte for byte.
  bool operator==(const KORListValKORUnicodeString& iOther) const = default;
  /// The order of the first texts that differ; of two lists that begin alike the shorter one comes first.
  std::strong_ordering operator<=>(const KORListValKORUnicodeString& iOther) const = default;

  /// @{
  /// For range-based loops and the standard algorithms; iterators count from 0, as everywhere, and end with the next
  /// change of the list.
  using value_type = KORUnicodeString;
  using reference = KORUnicodeString&;
  using const_reference = const KORUnicodeString&;
  using iterator = std::vector<KORUnicodeString>::iterator;
  using const_iterator = std::vector<KORUnicodeString>::const_iterator;
  const_iterator begin() const noexcept { return _texts.begin(); }
  const_iterator end() const noexcept { return _texts.end(); }
  iterator begin() noexcept { return _texts.begin(); }
  iterator end() noexcept { return _texts.end(); }
  /// @}

 private:
  std::size_t Index(int iPosition) const noexcept {
    return VYX::Platform::CheckedIndex("KORListValKORUnicodeString", iPosition, Size());
  }

  std::vector<KORUnicodeString> _texts;
};
