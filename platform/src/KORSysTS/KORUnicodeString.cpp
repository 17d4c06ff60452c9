#include "KORSysTS/KORUnicodeString.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <istream>
#include <new>
#include <ostream>

#include "number_text.h"
#include "text_storage.h"
#include "utf8.h"

namespace {

constexpr int kFailed = 1;
constexpr std::size_t kStreamChunk = 64 * 1024;

int AsInt(std::size_t iCount) noexcept {
  return iCount > INT_MAX ? INT_MAX : static_cast<int>(iCount);
}

std::size_t RepeatedSize(std::size_t iSize, std::size_t iCount) {
  if (iCount > static_cast<std::size_t>(PTRDIFF_MAX) / iSize) {
    throw std::bad_alloc();
  }
  return iSize * iCount;
}

// Reads up to iCount bytes, all when it is negative, without trusting the count with an allocation.
bool ReadBytes(std::istream& ioStream, int iCount, std::string& oBytes) {
  if (!ioStream.good()) {
    return false;
  }
  std::size_t left = iCount < 0 ? SIZE_MAX : static_cast<std::size_t>(iCount);
  while (left > 0 && ioStream.good()) {
    const std::size_t wanted = std::min(left, std::max(kStreamChunk, oBytes.size()));
    const std::size_t before = oBytes.size();
    oBytes.resize(before + wanted);
    ioStream.read(oBytes.data() + before, static_cast<std::streamsize>(wanted));
    const auto got = static_cast<std::size_t>(ioStream.gcount());
    oBytes.resize(before + got);
    left -= got;
  }
  if (ioStream.bad()) {
    return false;
  }
  if (ioStream.eof()) {
    ioStream.clear(std::ios_base::eofbit);  // reaching the end is no failure here
  }
  return true;
}

}  // namespace

KORUnicodeString::KORUnicodeString(const char* iText) : KORUnicodeString(AsView(iText)) {}

KORUnicodeString::KORUnicodeString(std::string_view iText) : KORUnicodeString(Joined(iText, {})) {}

KORUnicodeString::KORUnicodeString(const KORUnicodeChar& iChar, std::size_t iCount) {
  ResetToInline();
  const std::string bytes = iChar.ConvertToChar();
  const std::size_t size = RepeatedSize(bytes.size(), iCount);
  KORUnicodeString text = Access::WithCapacity(size);
  char* const target = Access::Bytes(text);
  if (bytes.size() == 1) {
    std::memset(target, static_cast<unsigned char>(bytes.front()), size);
  } else {
    for (std::size_t offset = 0; offset < size; offset += bytes.size()) {
      std::memcpy(target + offset, bytes.data(), bytes.size());
    }
  }
  Access::SetSize(text, size);
  Swap(text);
}

KORUnicodeString::KORUnicodeString(Borrowed, const char* iText, std::size_t iLength) noexcept {
  ResetToInline();
  if (iText != nullptr) {
    _storage.large.text = const_cast<char*>(iText);
    _storage.large.size = iLength;
    _storage.large.tag = kBorrowedTag;
  }
}

// Runs while the storage is still a bare copy of the other's.
void KORUnicodeString::CopyLong(const KORUnicodeString& iOther) {
  ResetToInline();
  Joined(iOther.ToStringView(), {}).Swap(*this);
  if (IsOwned() && iOther.IsOwned()) {
    const std::uint64_t count = Access::HeaderOf(iOther).charCount.load(std::memory_order_relaxed);
    Access::HeaderOf(*this).charCount.store(count, std::memory_order_relaxed);
  }
}

void KORUnicodeString::Free(char* ioText) noexcept {
  ::operator delete(reinterpret_cast<Access::Header*>(ioText) - 1);
}

KORUnicodeString& KORUnicodeString::operator=(const KORUnicodeString& iOther) {
  return this == &iOther ? *this : Assign(iOther.ToStringView());
}

KORUnicodeString& KORUnicodeString::Assign(std::string_view iText) {
  if (iText.size() > Access::Capacity(*this)) {
    KORUnicodeString copy(iText);
    Swap(copy);
  } else {
    if (!iText.empty()) {
      std::memmove(Access::Bytes(*this), iText.data(), iText.size());
    }
    Access::SetSize(*this, iText.size());
  }
  return *this;
}

void KORUnicodeString::Reset() noexcept {
  KORUnicodeString().Swap(*this);
}

int KORUnicodeString::BuildFromUTF8(const char* iText, std::size_t iLength) {
  const bool isGiven = iText != nullptr || iLength == 0;
  if (!isGiven || !VYX::Platform::IsWellFormed({iText, iLength})) {
    Reset();
    return kFailed;
  }
  Assign({iText, iLength});
  return 0;
}

int KORUnicodeString::BuildFromNum(double iNumber, const char* iFormat) {
  std::string text;
  const bool isFormatted = iFormat != nullptr && VYX::Platform::FormatNumber(iNumber, iFormat, text);
  isFormatted ? static_cast<void>(Assign(text)) : Reset();
  return isFormatted ? 0 : kFailed;
}

int KORUnicodeString::BuildFromStream(std::istream& ioStream, int iCount) {
  std::string bytes;
  if (!ReadBytes(ioStream, iCount, bytes)) {
    Reset();
    return kFailed;
  }
  return BuildFromUTF8(bytes.data(), bytes.size());
}

void KORUnicodeString::ConvertToUTF8(char* oBuffer, std::size_t* oLength) const {
  if (oBuffer != nullptr) {
    std::memcpy(oBuffer, Data(), ByteCount());
  }
  if (oLength != nullptr) {
    *oLength = ByteCount();
  }
}

int KORUnicodeString::GetLengthInChar() const noexcept {
  return AsInt(Access::CharCount(*this));
}

KORUnicodeChar KORUnicodeString::CharAt(std::size_t iPosition) const noexcept {
  const std::string_view bytes = ToStringView();
  const std::size_t offset = Access::OffsetOf(*this, iPosition);
  if (offset >= bytes.size()) {
    return KORUnicodeChar();
  }
  const std::size_t length = VYX::Platform::SequenceLength(bytes.data() + offset, bytes.size() - offset);
  return length == 0 ? KORUnicodeChar(bytes[offset])
                     : KORUnicodeChar(VYX::Platform::DecodeSequence(bytes.data() + offset, length));
}

KORUnicodeString KORUnicodeString::SubString(int iStart, int iCount) const {
  std::size_t begin = 0;
  std::size_t end = 0;
  if (!Access::FindRange(*this, iStart, iCount, begin, end)) {
    return {};
  }
  return KORUnicodeString(ToStringView().substr(begin, end - begin));
}

int KORUnicodeString::SearchSubString(const KORUnicodeString& iText, int iStart, KORSearchMode iMode) const noexcept {
  const std::size_t from =
      iStart < 0 ? std::string_view::npos : Access::OffsetOf(*this, static_cast<std::size_t>(iStart));
  if (from == std::string_view::npos || iText.IsEmpty()) {
    return -1;
  }
  const std::size_t found = iMode == KORSearchMode::Backward
                                ? Access::FindLastFrom(ToStringView(), iText.ToStringView(), from)
                                : Access::FindFrom(ToStringView(), iText.ToStringView(), from);
  if (found == std::string_view::npos) {
    return -1;
  }
  const std::size_t position = Access::PositionOf(*this, found);
  return position > INT_MAX ? -1 : static_cast<int>(position);
}

std::ostream& operator<<(std::ostream& ioStream, const KORUnicodeString& iText) {
  return ioStream << iText.ToStringView();
}
