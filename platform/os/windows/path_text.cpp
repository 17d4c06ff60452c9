#include "platform/os/windows/path_text.h"

#include "platform/os/windows/file_calls.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os::Windows {
namespace {

constexpr std::wstring_view kVerbatim = L"\\\\?\\";
constexpr std::wstring_view kVerbatimNetwork = L"\\\\?\\UNC\\";
constexpr std::wstring_view kDevice = L"\\\\.\\";
constexpr std::wstring_view kNetwork = L"\\\\";

constexpr char32_t kFirstSurrogate = 0xD800;
constexpr char32_t kFirstLowSurrogate = 0xDC00;
constexpr char32_t kLastSurrogate = 0xDFFF;
constexpr char32_t kFirstSupplementary = 0x10000;
constexpr char32_t kLastCodePoint = 0x10FFFF;

void AppendUtf8(char32_t iCodePoint, std::string& ioText) {
  const auto tail = [&](unsigned int iShift) { ioText += static_cast<char>(0x80 | (iCodePoint >> iShift & 0x3F)); };
  if (iCodePoint < 0x80) {
    ioText += static_cast<char>(iCodePoint);
  } else if (iCodePoint < 0x800) {
    ioText += static_cast<char>(0xC0 | iCodePoint >> 6);
    tail(0);
  } else if (iCodePoint < kFirstSupplementary) {
    ioText += static_cast<char>(0xE0 | iCodePoint >> 12);
    tail(6);
    tail(0);
  } else {
    ioText += static_cast<char>(0xF0 | iCodePoint >> 18);
    tail(12);
    tail(6);
    tail(0);
  }
}

// Takes one code point off the front, surrogates among them; false where there is none.
bool TakeCodePoint(std::string_view& ioText, char32_t& oCodePoint) {
  constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, kFirstSupplementary};
  const auto first = static_cast<unsigned char>(ioText[0]);
  const std::size_t size = first < 0x80 ? 1 : first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if ((first >= 0x80 && first < 0xC2) || first > 0xF4 || ioText.size() < size) {
    return false;
  }
  oCodePoint = size == 1 ? first : first & (0xFFU >> (size + 1));
  for (std::size_t i = 1; i < size; ++i) {
    const auto next = static_cast<unsigned char>(ioText[i]);
    if ((next & 0xC0U) != 0x80) {
      return false;
    }
    oCodePoint = oCodePoint << 6 | (next & 0x3FU);
  }
  ioText.remove_prefix(size);
  return oCodePoint >= kLeast[size] && oCodePoint <= kLastCodePoint;
}

// A pair has a spelling of its own; two halves would be a second name of the same file.
bool IsPairInHalves(const std::wstring& iBefore, char32_t iCodePoint) noexcept {
  return iCodePoint >= kFirstLowSurrogate && iCodePoint <= kLastSurrogate && !iBefore.empty() &&
         iBefore.back() >= kFirstSurrogate && iBefore.back() < kFirstLowSurrogate;
}

Status MakeFull(const std::wstring& iPath, std::wstring& oPath) {
  std::wstring full(iPath.size() + 260, L'\0');
  for (;;) {
    const std::uint32_t length =
        gFileCalls.FullPath(iPath.c_str(), static_cast<std::uint32_t>(full.size()), full.data());
    if (length == 0) {
      return Status::OfLastCall();
    }
    const bool isWhole = length < full.size();
    full.resize(length);
    if (isWhole) {
      oPath = std::move(full);
      return {};
    }
  }
}

}  // namespace

Status ToWidePath(const std::string& iPath, std::wstring& oPath) {
  std::wstring wide;
  if (!ToWideName(iPath, wide)) {
    return Failure::BadName();
  }
  if (wide.empty()) {
    return Failure::PathNotFound();
  }
  if (wide.starts_with(kVerbatim)) {
    oPath = std::move(wide);
    return {};
  }
  std::wstring full;
  const Status status = MakeFull(wide, full);
  if (!status.IsOk()) {
    return status;
  }
  if (full.starts_with(kDevice)) {
    oPath = std::move(full);
  } else if (full.starts_with(kNetwork)) {
    oPath = std::wstring(kVerbatimNetwork).append(full, kNetwork.size());
  } else {
    oPath = std::wstring(kVerbatim).append(full);
  }
  return {};
}

std::wstring Join(const std::wstring& iFolder, std::wstring_view iName) {
  std::wstring path = iFolder;
  if (!path.ends_with(L'\\')) {
    path += L'\\';
  }
  return path.append(iName);
}

std::string ToNameText(std::wstring_view iName) {
  std::string text;
  for (std::size_t i = 0; i < iName.size(); ++i) {
    char32_t codePoint = iName[i];
    const char32_t next = i + 1 < iName.size() ? iName[i + 1] : 0;
    if (codePoint >= kFirstSurrogate && codePoint < kFirstLowSurrogate && next >= kFirstLowSurrogate &&
        next <= kLastSurrogate) {
      codePoint = kFirstSupplementary + ((codePoint - kFirstSurrogate) << 10) + (next - kFirstLowSurrogate);
      ++i;
    }
    AppendUtf8(codePoint, text);
  }
  return text;
}

bool ToWideName(std::string_view iText, std::wstring& oName) {
  std::wstring name;
  name.reserve(iText.size());
  while (!iText.empty()) {
    char32_t codePoint = 0;
    if (!TakeCodePoint(iText, codePoint) || IsPairInHalves(name, codePoint)) {
      return false;
    }
    if (codePoint >= kFirstSupplementary) {
      name += static_cast<wchar_t>(kFirstSurrogate + ((codePoint - kFirstSupplementary) >> 10));
      name += static_cast<wchar_t>(kFirstLowSurrogate + ((codePoint - kFirstSupplementary) & 0x3FF));
    } else {
      name += static_cast<wchar_t>(codePoint);
    }
  }
  oName = std::move(name);
  return true;
}

std::string ToPathText(std::wstring_view iPath) {
  if (iPath.starts_with(kVerbatimNetwork)) {
    return "\\\\" + ToNameText(iPath.substr(kVerbatimNetwork.size()));
  }
  return ToNameText(iPath.starts_with(kVerbatim) ? iPath.substr(kVerbatim.size()) : iPath);
}

}  // namespace VYX::Os::Windows
