#include "text_storage.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <new>

#include "byte_search.h"
#include "utf8.h"

namespace {

using VYX::Platform::IsCharacterBoundary;

constexpr std::size_t kNone = std::string_view::npos;

// A character is at most so much longer than its first byte: changes beyond do not reach it.
constexpr std::size_t kReach = 3;

void CopyBytes(char* oTarget, std::string_view iBytes) noexcept {
  if (!iBytes.empty()) {
    std::memmove(oTarget, iBytes.data(), iBytes.size());
  }
}

bool CoversWholeCharacters(std::string_view iText, std::size_t iOffset, std::size_t iSize) noexcept {
  return IsCharacterBoundary(iText, iOffset) && IsCharacterBoundary(iText, iOffset + iSize);
}

std::size_t SizeAfter(std::size_t iKept, std::size_t iAdded) {
  if (iAdded > static_cast<std::size_t>(PTRDIFF_MAX) - iKept) {
    throw std::bad_alloc();
  }
  return iKept + iAdded;
}

}  // namespace

KORUnicodeString::Access::Header& KORUnicodeString::Access::HeaderOf(const KORUnicodeString& iText) noexcept {
  return reinterpret_cast<Header*>(iText._storage.large.text)[-1];
}

std::size_t KORUnicodeString::Access::Capacity(const KORUnicodeString& iText) noexcept {
  return iText.IsOwned() ? HeaderOf(iText).capacity : kInlineCapacity;
}

char* KORUnicodeString::Access::Bytes(KORUnicodeString& ioText) noexcept {
  return ioText.IsInline() ? ioText._storage.small.text : ioText._storage.large.text;
}

KORUnicodeString KORUnicodeString::Access::WithCapacity(std::size_t iCapacity) {
  KORUnicodeString text;
  if (iCapacity <= kInlineCapacity) {
    return text;
  }
  if (iCapacity > static_cast<std::size_t>(PTRDIFF_MAX) - sizeof(Header) - 1) {
    throw std::bad_alloc();
  }
  void* const block = ::operator new(sizeof(Header) + iCapacity + 1);
  auto* const header = new (block) Header{0, kUnknown, iCapacity};
  text._storage.large.text = reinterpret_cast<char*>(header + 1);
  text._storage.large.tag = kOwnedTag;
  SetSize(text, 0);
  return text;
}

void KORUnicodeString::Access::SetSize(KORUnicodeString& ioText, std::size_t iSize) noexcept {
  if (ioText.IsInline()) {
    ioText._storage.small.tag = static_cast<std::uint8_t>(iSize);
  } else {
    ioText._storage.large.size = iSize;
    Header& header = HeaderOf(ioText);
    header.cursor.store(0, std::memory_order_relaxed);
    header.charCount.store(kUnknown, std::memory_order_relaxed);
  }
  Bytes(ioText)[iSize] = '\0';
}

std::size_t KORUnicodeString::Access::GrownCapacity(const KORUnicodeString& iText, std::size_t iNeeded) {
  const std::size_t capacity = Capacity(iText);
  return iNeeded <= capacity ? capacity : std::max(iNeeded, capacity + capacity / 2 + kInlineCapacity);
}

void KORUnicodeString::Access::Append(KORUnicodeString& ioText, std::string_view iBytes) {
  const std::size_t oldSize = ioText.ByteCount();
  const std::size_t newSize = SizeAfter(oldSize, iBytes.size());
  if (newSize <= Capacity(ioText)) {
    CopyBytes(Bytes(ioText) + oldSize, iBytes);
  } else {
    KORUnicodeString grown = WithCapacity(GrownCapacity(ioText, newSize));
    CopyBytes(Bytes(grown), ioText.ToStringView());
    CopyBytes(Bytes(grown) + oldSize, iBytes);
    if (ioText.IsOwned()) {
      const Header& old = HeaderOf(ioText);
      HeaderOf(grown).cursor.store(old.cursor.load(std::memory_order_relaxed), std::memory_order_relaxed);
      HeaderOf(grown).charCount.store(old.charCount.load(std::memory_order_relaxed), std::memory_order_relaxed);
    }
    ioText.Swap(grown);
  }
  NoteAppended(ioText, oldSize, newSize);
}

void KORUnicodeString::Access::AppendByte(KORUnicodeString& ioText, char iByte) {
  const std::size_t size = ioText.ByteCount();
  if (size == Capacity(ioText)) {
    return Append(ioText, {&iByte, 1});
  }
  Bytes(ioText)[size] = iByte;
  NoteAppended(ioText, size, size + 1);
}

// Ends a text behind what was appended and keeps what is known about it where that is still true.
void KORUnicodeString::Access::NoteAppended(KORUnicodeString& ioText, std::size_t iOldSize,
                                            std::size_t iNewSize) noexcept {
  if (ioText.IsInline()) {
    SetSize(ioText, iNewSize);
    return;
  }
  ioText._storage.large.size = iNewSize;
  ioText._storage.large.text[iNewSize] = '\0';
  Header& header = HeaderOf(ioText);
  const std::uint64_t known = header.charCount.load(std::memory_order_relaxed);
  const std::string_view bytes = ioText.ToStringView();
  if (known == kUnknown && LoadCursor(header).offset == 0) {
    return;
  }
  if (!VYX::Platform::EndsInsideSequence(bytes.substr(0, iOldSize))) {
    const std::uint64_t count = known + VYX::Platform::CountCharacters(bytes.substr(iOldSize));
    header.charCount.store(known == kUnknown ? kUnknown : count, std::memory_order_relaxed);
    return;
  }
  header.charCount.store(kUnknown, std::memory_order_relaxed);
  if (LoadCursor(header).offset + kReach > iOldSize) {
    header.cursor.store(0, std::memory_order_relaxed);
  }
}

bool KORUnicodeString::Access::IsOwn(const KORUnicodeString& iText, std::string_view iBytes) noexcept {
  const char* const begin = iText.Data();
  return std::greater_equal<>()(iBytes.data(), begin) && std::less_equal<>()(iBytes.data(), begin + iText.ByteCount());
}

void KORUnicodeString::Access::Splice(KORUnicodeString& ioText, std::size_t iBegin, std::size_t iEnd,
                                      std::string_view iBytes) {
  const std::string_view old = ioText.ToStringView();
  const std::size_t newSize = SizeAfter(old.size() - (iEnd - iBegin), iBytes.size());
  Mark cursor{0, 0};
  bool areSingleBytes = false;
  if (ioText.IsOwned()) {
    const std::uint64_t known = HeaderOf(ioText).charCount.load(std::memory_order_relaxed);
    // Where every character is a byte, what is left of an ill-formed text may still join to longer ones.
    areSingleBytes = known == old.size() && VYX::Platform::AsciiPrefix(iBytes) == iBytes.size() &&
                     (!iBytes.empty() || !VYX::Platform::EndsInsideSequence(old.substr(0, iBegin)));
    const Mark mark = LoadCursor(HeaderOf(ioText));
    cursor = mark.offset + kReach <= iBegin ? mark : cursor;
  }
  if (newSize <= Capacity(ioText) && !IsOwn(ioText, iBytes)) {
    char* const bytes = Bytes(ioText);
    CopyBytes(bytes + iBegin + iBytes.size(), old.substr(iEnd));
    CopyBytes(bytes + iBegin, iBytes);
  } else {
    KORUnicodeString built = WithCapacity(GrownCapacity(ioText, newSize));
    char* const bytes = Bytes(built);
    CopyBytes(bytes, old.substr(0, iBegin));
    CopyBytes(bytes + iBegin, iBytes);
    CopyBytes(bytes + iBegin + iBytes.size(), old.substr(iEnd));
    ioText.Swap(built);
  }
  SetSize(ioText, newSize);
  NoteSpliced(ioText, cursor, areSingleBytes);
}

void KORUnicodeString::Access::NoteSpliced(KORUnicodeString& ioText, Mark iCursor, bool iAreSingleBytes) noexcept {
  if (ioText.IsInline()) {
    return;
  }
  StoreCursor(HeaderOf(ioText), iCursor);
  if (iAreSingleBytes) {
    HeaderOf(ioText).charCount.store(ioText.ByteCount(), std::memory_order_relaxed);
  }
}

KORUnicodeString::Access::Mark KORUnicodeString::Access::LoadCursor(const Header& iHeader) noexcept {
  const std::uint64_t packed = iHeader.cursor.load(std::memory_order_relaxed);
  return {static_cast<std::size_t>(packed >> 32), static_cast<std::size_t>(packed & UINT32_MAX)};
}

void KORUnicodeString::Access::StoreCursor(Header& ioHeader, Mark iMark) noexcept {
  if (iMark.offset <= UINT32_MAX) {
    ioHeader.cursor.store(std::uint64_t{iMark.position} << 32 | iMark.offset, std::memory_order_relaxed);
  }
}

std::size_t KORUnicodeString::Access::CharCount(const KORUnicodeString& iText) noexcept {
  if (!iText.IsOwned()) {
    return VYX::Platform::CountCharacters(iText.ToStringView());
  }
  Header& header = HeaderOf(iText);
  std::uint64_t count = header.charCount.load(std::memory_order_relaxed);
  if (count == kUnknown) {
    count = VYX::Platform::CountCharacters(iText.ToStringView());
    header.charCount.store(count, std::memory_order_relaxed);
  }
  return static_cast<std::size_t>(count);
}

std::size_t KORUnicodeString::Access::OffsetOf(const KORUnicodeString& iText, std::size_t iPosition) noexcept {
  const std::string_view bytes = iText.ToStringView();
  if (!iText.IsOwned()) {
    return VYX::Platform::SkipCharacters(bytes, 0, iPosition);
  }
  const std::size_t count = CharCount(iText);
  if (iPosition > count) {
    return kNone;
  }
  if (count == bytes.size()) {
    return iPosition;
  }
  Mark mark = LoadCursor(HeaderOf(iText));
  const std::size_t distance = iPosition > mark.position ? iPosition - mark.position : mark.position - iPosition;
  if (iPosition < distance) {
    mark = {0, 0};
  } else if (count - iPosition < distance) {
    mark = {count, bytes.size()};
  }
  if (mark.position < iPosition) {
    mark.offset = VYX::Platform::SkipCharacters(bytes, mark.offset, iPosition - mark.position);
  } else {
    for (std::size_t left = mark.position - iPosition; left > 0; --left) {
      mark.offset = VYX::Platform::PreviousCharacter(bytes, mark.offset);
    }
  }
  StoreCursor(HeaderOf(iText), {iPosition, mark.offset});
  return mark.offset;
}

std::size_t KORUnicodeString::Access::PositionOf(const KORUnicodeString& iText, std::size_t iOffset) noexcept {
  const std::string_view bytes = iText.ToStringView();
  if (!iText.IsOwned()) {
    return VYX::Platform::CountCharacters(bytes.substr(0, iOffset));
  }
  if (CharCount(iText) == bytes.size()) {
    return iOffset;
  }
  Mark mark = LoadCursor(HeaderOf(iText));
  if (mark.offset > iOffset) {
    mark = {0, 0};
  }
  mark.position += VYX::Platform::CountCharacters(bytes.substr(mark.offset, iOffset - mark.offset));
  StoreCursor(HeaderOf(iText), {mark.position, iOffset});
  return mark.position;
}

bool KORUnicodeString::Access::FindRange(const KORUnicodeString& iText, int iStart, int iCount, std::size_t& oBegin,
                                         std::size_t& oEnd) noexcept {
  if (iStart < 0 || iCount < 0) {
    return false;
  }
  const std::size_t begin = OffsetOf(iText, static_cast<std::size_t>(iStart));
  if (begin == kNone) {
    return false;
  }
  const std::size_t end = OffsetOf(iText, static_cast<std::size_t>(iStart) + static_cast<std::size_t>(iCount));
  oBegin = begin;
  oEnd = std::min(end, iText.ByteCount());
  return true;
}

std::size_t KORUnicodeString::Access::FindFrom(std::string_view iText, std::string_view iWhat,
                                               std::size_t iFrom) noexcept {
  std::size_t found = VYX::Platform::FindFirst(iText, iWhat, iFrom);
  while (found != kNone && !CoversWholeCharacters(iText, found, iWhat.size())) {
    found = VYX::Platform::FindFirst(iText, iWhat, found + 1);
  }
  return found;
}

std::size_t KORUnicodeString::Access::FindLastFrom(std::string_view iText, std::string_view iWhat,
                                                   std::size_t iFrom) noexcept {
  std::string_view searched = iText.substr(iFrom);
  std::size_t found = VYX::Platform::FindLast(searched, iWhat);
  while (found != kNone && !CoversWholeCharacters(iText, iFrom + found, iWhat.size())) {
    searched.remove_suffix(searched.size() - (found + iWhat.size() - 1));
    found = VYX::Platform::FindLast(searched, iWhat);
  }
  return found == kNone ? kNone : iFrom + found;
}
