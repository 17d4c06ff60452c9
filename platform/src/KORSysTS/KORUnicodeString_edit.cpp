#include <cstring>

#include "KORSysTS/KORUnicodeString.h"
#include "text_storage.h"
#include "utf8.h"

namespace {

char* Write(char* oTarget, std::string_view iBytes) noexcept {
  if (!iBytes.empty()) {
    std::memcpy(oTarget, iBytes.data(), iBytes.size());
  }
  return oTarget + iBytes.size();
}

}  // namespace

KORUnicodeString KORUnicodeString::Joined(std::string_view iLeft, std::string_view iRight) {
  KORUnicodeString joined = Access::WithCapacity(iLeft.size() + iRight.size());
  Write(Write(Access::Bytes(joined), iLeft), iRight);
  Access::SetSize(joined, iLeft.size() + iRight.size());
  return joined;
}

KORUnicodeString& KORUnicodeString::Append(const KORUnicodeString& iText) {
  Access::Append(*this, iText.ToStringView());
  return *this;
}

KORUnicodeString& KORUnicodeString::Append(const char* iText) {
  Access::Append(*this, AsView(iText));
  return *this;
}

KORUnicodeString& KORUnicodeString::Append(const KORUnicodeChar& iChar) {
  if (iChar.IsByte() || iChar.IsAscii()) {
    return *this += static_cast<char>(iChar);
  }
  char bytes[4];
  Access::Append(*this, {bytes, VYX::Platform::EncodeCodePoint(iChar.GetCodePoint(), bytes)});
  return *this;
}

KORUnicodeString& KORUnicodeString::AppendByte(char iByte) {
  Access::AppendByte(*this, iByte);
  return *this;
}

KORUnicodeString& KORUnicodeString::Append(std::string_view iText) {
  Access::Append(*this, iText);
  return *this;
}

void KORUnicodeString::Reserve(std::size_t iByteCount) {
  if (iByteCount > Access::Capacity(*this)) {
    KORUnicodeString roomy = Access::WithCapacity(iByteCount);
    Access::Append(roomy, ToStringView());
    Swap(roomy);
  }
}

KORUnicodeString& KORUnicodeString::ReplaceSubString(int iStart, int iCount, const KORUnicodeString& iText) {
  std::size_t begin = 0;
  std::size_t end = 0;
  if (Access::FindRange(*this, iStart, iCount, begin, end)) {
    Access::Splice(*this, begin, end, iText.ToStringView());
  }
  return *this;
}

KORUnicodeString& KORUnicodeString::Insert(int iPosition, const KORUnicodeString& iText) {
  return ReplaceSubString(iPosition, 0, iText);
}

KORUnicodeString& KORUnicodeString::Remove(int iStart, int iCount) {
  return ReplaceSubString(iStart, iCount, KORUnicodeString());
}

KORUnicodeString& KORUnicodeString::ReplaceAll(const KORUnicodeString& iWhat, const KORUnicodeString& iWith) {
  const std::string_view text = ToStringView();
  const std::string_view what = iWhat.ToStringView();
  const std::string_view with = iWith.ToStringView();
  if (what.empty()) {
    return *this;
  }
  std::size_t count = 0;
  std::size_t found = Access::FindFrom(text, what, 0);
  const std::size_t first = found;
  for (; found != std::string_view::npos; found = Access::FindFrom(text, what, found + what.size())) {
    ++count;
  }
  if (count == 0) {
    return *this;
  }
  const std::size_t kept = text.size() - count * what.size();
  if (!with.empty() && count > (static_cast<std::size_t>(PTRDIFF_MAX) - kept) / with.size()) {
    throw std::bad_alloc();
  }
  const std::size_t size = kept + count * with.size();
  KORUnicodeString result = Access::WithCapacity(size);
  char* target = Access::Bytes(result);
  std::size_t copied = 0;
  for (found = first; found != std::string_view::npos; found = Access::FindFrom(text, what, copied)) {
    target = Write(Write(target, text.substr(copied, found - copied)), with);
    copied = found + what.size();
  }
  Write(target, text.substr(copied));
  Access::SetSize(result, size);
  Swap(result);
  return *this;
}
