#include "zip_names.h"

#include <algorithm>
#include <array>

#include "KORSysTS/KORUnicodeString.h"
#include "platform/adapters/crc32.h"
#include "zip_bytes.h"

namespace VYX::Platform {
namespace {

// Code page 437 from 0x80 on, as Unicode's mapping table CP437.TXT has it.
constexpr std::u16string_view kCodePage437 =
    u"\u00C7\u00FC\u00E9\u00E2\u00E4\u00E0\u00E5\u00E7\u00EA\u00EB\u00E8\u00EF\u00EE\u00EC\u00C4\u00C5"
    u"\u00C9\u00E6\u00C6\u00F4\u00F6\u00F2\u00FB\u00F9\u00FF\u00D6\u00DC\u00A2\u00A3\u00A5\u20A7\u0192"
    u"\u00E1\u00ED\u00F3\u00FA\u00F1\u00D1\u00AA\u00BA\u00BF\u2310\u00AC\u00BD\u00BC\u00A1\u00AB\u00BB"
    u"\u2591\u2592\u2593\u2502\u2524\u2561\u2562\u2556\u2555\u2563\u2551\u2557\u255D\u255C\u255B\u2510"
    u"\u2514\u2534\u252C\u251C\u2500\u253C\u255E\u255F\u255A\u2554\u2569\u2566\u2560\u2550\u256C\u2567"
    u"\u2568\u2564\u2565\u2559\u2558\u2552\u2553\u256B\u256A\u2518\u250C\u2588\u2584\u258C\u2590\u2580"
    u"\u03B1\u00DF\u0393\u03C0\u03A3\u03C3\u00B5\u03C4\u03A6\u0398\u03A9\u03B4\u221E\u03C6\u03B5\u2229"
    u"\u2261\u00B1\u2265\u2264\u2320\u2321\u00F7\u2248\u00B0\u2219\u00B7\u221A\u207F\u00B2\u25A0\u00A0";
static_assert(kCodePage437.size() == 128);

constexpr std::uint16_t kUnicodePathId = 0x7075;

bool IsAscii(std::string_view iText) noexcept {
  return std::all_of(iText.begin(), iText.end(), [](char iChar) { return static_cast<unsigned char>(iChar) < 0x80; });
}

bool IsUtf8(std::string_view iText) {
  return KORUnicodeString().BuildFromUTF8(iText.data(), iText.size()) == 0;
}

std::string FromCodePage437(std::string_view iText) {
  std::string text;
  for (const char narrow : iText) {
    const auto byte = static_cast<unsigned char>(narrow);
    text += byte < 0x80 ? std::string(1, narrow)
                        : KORUnicodeChar(char32_t{kCodePage437[byte - std::size_t{0x80}]}).ConvertToChar();
  }
  return text;
}

// The field counts only while it was made for the name that stands beside it.
bool FindUnicodePath(const ZipEntry& iEntry, std::string& oName) {
  constexpr std::size_t kHeaderSize = 5;
  std::string_view field;
  if (!FindExtra(iEntry.extra, kUnicodePathId, field) || field.size() < kHeaderSize || field[0] != 1) {
    return false;
  }
  const std::string_view name = field.substr(kHeaderSize);
  const bool isCurrent = ZipBytes(field).Get32(1) == Adapters::Crc32(0, iEntry.rawName.data(), iEntry.rawName.size());
  if (!isCurrent || !IsUtf8(name)) {
    return false;
  }
  oName = name;
  return true;
}

char UpperAscii(char iChar) noexcept {
  return iChar >= 'a' && iChar <= 'z' ? static_cast<char>(iChar - 'a' + 'A') : iChar;
}

bool IsNumberedDevice(std::string_view iStem) noexcept {
  if (!iStem.starts_with("COM") && !iStem.starts_with("LPT")) {
    return false;
  }
  const std::string_view number = iStem.substr(3);
  const bool isDigit = number.size() == 1 && number[0] >= '0' && number[0] <= '9';
  // The superscripts one to three count as digits.
  return isDigit || number == "\xC2\xB9" || number == "\xC2\xB2" || number == "\xC2\xB3";
}

bool IsDevice(std::string_view iComponent) {
  constexpr std::array<std::string_view, 7> kDevices = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$", "CLOCK$"};
  std::string stem(iComponent.substr(0, iComponent.find('.')));
  stem.resize(stem.find_last_not_of(' ') + 1);
  std::transform(stem.begin(), stem.end(), stem.begin(), UpperAscii);
  return IsNumberedDevice(stem) || std::find(kDevices.begin(), kDevices.end(), stem) != kDevices.end();
}

const char* FindUnportable(std::string_view iComponent) {
  if (iComponent.find(':') != std::string_view::npos) {
    return "its name holds a colon";
  }
  if (iComponent.back() == '.' || iComponent.back() == ' ') {
    return "its name ends with a blank or a full stop";
  }
  if (std::any_of(iComponent.begin(), iComponent.end(), [](char iChar) { return iChar >= 0 && iChar < ' '; })) {
    return "its name holds a control character";
  }
  return IsDevice(iComponent) ? "it has the name of a device" : nullptr;
}

const char* FindUnsafe(std::string_view iComponent, const ZipNameRules& iRules) {
  constexpr std::size_t kMaxComponentSize = 255;
  if (iComponent == "..") {
    return "its path leads out of its folder";
  }
  if (iComponent.size() > kMaxComponentSize) {
    return "a part of its name is longer than 255 bytes";
  }
  return iRules.arePortableNamesRequired ? FindUnportable(iComponent) : nullptr;
}

const char* FindUnsafeStart(std::string_view iName) {
  constexpr std::size_t kMaxPathSize = 4096;
  const auto isLetter = [](char iChar) { return UpperAscii(iChar) >= 'A' && UpperAscii(iChar) <= 'Z'; };
  if (iName.empty()) {
    return "its name is empty";
  }
  if (iName.size() > kMaxPathSize) {
    return "its name is longer than 4096 bytes";
  }
  if (iName.find('\0') != std::string_view::npos) {
    return "its name holds a zero byte";
  }
  if (iName[0] == '/') {
    return "its path is absolute";
  }
  if (iName.size() > 1 && iName[1] == ':' && isLetter(iName[0])) {
    return "its path names a drive";
  }
  return IsUtf8(iName) ? nullptr : "its name is no well-formed UTF-8";
}

// Separators sort before everything else, so that what is below a path follows it at once.
constexpr char kLowest = '\0';

struct SortedTarget {
  std::string key;
  std::size_t position;
  bool isFolder;

  // Of equal keys files come first: whatever follows one of them is a clash.
  bool operator<(const SortedTarget& iOther) const noexcept {
    return key != iOther.key ? key < iOther.key : isFolder < iOther.isFolder;
  }
};

std::string KeyOf(const std::string& iPath, bool iIsCaseIgnored) {
  std::string key = iPath;
  if (iIsCaseIgnored) {
    key = KORUnicodeString(std::string_view(key)).ToUpper().ToLower().ToStringView();
  }
  std::replace(key.begin(), key.end(), '/', kLowest);
  return key;
}

}  // namespace

std::string DecodeName(const ZipEntry& iEntry, bool iIsUtf8Preferred) {
  std::string name;
  if (IsAscii(iEntry.rawName) || (iEntry.flags & ZipEntry::kUtf8Flag) != 0) {
    return std::string(iEntry.rawName);
  }
  if (FindUnicodePath(iEntry, name)) {
    return name;
  }
  return iIsUtf8Preferred && IsUtf8(iEntry.rawName) ? std::string(iEntry.rawName) : FromCodePage437(iEntry.rawName);
}

const char* ToTarget(std::string_view iName, const ZipNameRules& iRules, ZipTarget& oTarget) {
  std::string name(iName);
  std::replace(name.begin(), name.end(), '\\', '/');
  if (const char* const reason = FindUnsafeStart(name); reason != nullptr) {
    return reason;
  }
  ZipTarget target;
  target.isFolder = name.back() == '/';
  std::size_t begin = 0;
  while (begin < name.size()) {
    const std::size_t end = std::min(name.find('/', begin), name.size());
    const std::string_view component = std::string_view(name).substr(begin, end - begin);
    begin = end + 1;
    if (component.empty() || component == ".") {
      continue;
    }
    if (const char* const reason = FindUnsafe(component, iRules); reason != nullptr) {
      return reason;
    }
    target.path.append(target.path.empty() ? "" : "/").append(component);
  }
  const bool isDot = name == "." || name.ends_with("/.");
  if (!target.isFolder && isDot) {
    return "its name stands for a folder";
  }
  oTarget = std::move(target);
  return nullptr;
}

std::size_t FindClash(const std::vector<ZipTarget>& iTargets, bool iIsCaseIgnored) {
  std::vector<SortedTarget> sorted;
  sorted.reserve(iTargets.size());
  for (std::size_t position = 0; position < iTargets.size(); ++position) {
    if (!iTargets[position].path.empty()) {
      sorted.push_back({KeyOf(iTargets[position].path, iIsCaseIgnored), position, iTargets[position].isFolder});
    }
  }
  std::sort(sorted.begin(), sorted.end());
  for (std::size_t next = 1; next < sorted.size(); ++next) {
    const SortedTarget& first = sorted[next - 1];
    const SortedTarget& second = sorted[next];
    const bool isSame = first.key == second.key;
    const bool isBelow = second.key.size() > first.key.size() && second.key.starts_with(first.key) &&
                         second.key[first.key.size()] == kLowest;
    if (!first.isFolder && (isSame || isBelow)) {
      return std::max(first.position, second.position);
    }
  }
  return iTargets.size();
}

}  // namespace VYX::Platform
