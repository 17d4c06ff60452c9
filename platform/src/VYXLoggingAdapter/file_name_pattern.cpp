#include "platform/src/VYXLoggingAdapter/file_name_pattern.h"

#include <algorithm>
#include <cstddef>

#include "KORSysBase/KORTime.h"

namespace VYX::Logging {

namespace {

// The %N or %<digits>N at a percent sign.
struct NumberPlace {
  std::size_t length = 0;  // 0 where there is none
  std::size_t width = 0;
};

NumberPlace NumberPlaceAt(std::string_view iText) {
  std::size_t end = 1;
  std::size_t width = 0;
  while (end < iText.size() && iText[end] >= '0' && iText[end] <= '9' && end < 3) {
    width = width * 10 + static_cast<std::size_t>(iText[end] - '0');
    ++end;
  }
  if (end < iText.size() && iText[end] == 'N') {
    return {end + 1, width};
  }
  return {};
}

}  // namespace

FileNamePattern FileNamePattern::Literal(std::string_view iText) {
  std::string escaped;
  for (const char character : iText) {
    escaped.append(character == '%' ? 2 : 1, character);
  }
  return FileNamePattern(escaped);
}

bool FileNamePattern::HasNumber() const {
  for (std::size_t i = 0; i + 1 < _text.size(); ++i) {
    if (_text[i] != '%') {
      continue;
    }
    if (NumberPlaceAt(std::string_view(_text).substr(i)).length != 0) {
      return true;
    }
    ++i;
  }
  return false;
}

std::string FileNamePattern::Expand(std::uint64_t iNumber, const Os::WallTime& iTime) const {
  std::string format;
  for (std::size_t i = 0; i < _text.size();) {
    const NumberPlace place = _text[i] == '%' ? NumberPlaceAt(std::string_view(_text).substr(i)) : NumberPlace();
    if (place.length != 0) {
      const std::string digits = std::to_string(iNumber);
      format.append(place.width > digits.size() ? place.width - digits.size() : 0, '0').append(digits);
      i += place.length;
      continue;
    }
    const std::size_t length = _text[i] == '%' ? std::min<std::size_t>(2, _text.size() - i) : 1;
    format.append(_text, i, length);
    i += length;
  }
  const KORTime time(iTime.seconds, iTime.nanoseconds);
  return time.ConvertToString(KORUnicodeString(std::string_view(format))).ConvertToChar();
}

}  // namespace VYX::Logging
