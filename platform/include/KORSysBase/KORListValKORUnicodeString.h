#pragma once

#include <vector>

#include "KORSysBase/KORCollec.h"
#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

/**
 * A list of texts, held by value, positions counted from 1.
 *
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

  void Append(const KORUnicodeString& iText) { _texts.push_back(iText); }
  void Append(KORUnicodeString&& ioText) { _texts.push_back(std::move(ioText)); }

  /// Number of texts.
  int Size() const noexcept { return static_cast<int>(_texts.size()); }

  KORUnicodeString& operator[](int iPosition) noexcept { return _texts[Index(iPosition)]; }
  const KORUnicodeString& operator[](int iPosition) const noexcept { return _texts[Index(iPosition)]; }

  /// The first position, from iStart on, that holds the text; 0 when there is none.
  int Locate(const KORUnicodeString& iText, int iStart = 1) const noexcept;

  /// Removes the first element equal to the text and answers the position that it had; 0 when there is none.
  int RemoveValue(const KORUnicodeString& iText);

  /// Removes the element at a position; later ones move up by one.
  void RemovePosition(int iPosition);

  /// Removes every element and keeps or releases the storage.
  void RemoveAll(KORCollec::MemoryHandling iHandling = KORCollec::MemoryHandling::ReleaseMemory);

  bool operator==(const KORListValKORUnicodeString& iOther) const = default;

  // For range-based loops and the standard algorithms.
  using value_type = KORUnicodeString;
  using reference = KORUnicodeString&;
  using const_reference = const KORUnicodeString&;
  using iterator = std::vector<KORUnicodeString>::iterator;
  using const_iterator = std::vector<KORUnicodeString>::const_iterator;
  const_iterator begin() const noexcept { return _texts.begin(); }
  const_iterator end() const noexcept { return _texts.end(); }
  iterator begin() noexcept { return _texts.begin(); }
  iterator end() noexcept { return _texts.end(); }

 private:
  std::size_t Index(int iPosition) const noexcept {
    return VYX::Platform::CheckedIndex("KORListValKORUnicodeString", iPosition, Size());
  }

  std::vector<KORUnicodeString> _texts;
};
