#include "platform/src/VYXLoggingAdapter/escape_line.h"

#include <algorithm>
#include <cstddef>

#include "platform/src/VYXLoggingAdapter/utf8_sequence.h"

namespace VYX::Logging {

namespace {

bool IsPlain(char iByte) {
  const auto byte = static_cast<unsigned char>(iByte);
  return (byte >= 0x20 && byte < 0x7F) || byte == '\t';
}

void AppendByteEscape(unsigned char iByte, std::string& ioLine) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  ioLine.append("\\x");
  ioLine.push_back(kDigits[iByte >> 4]);
  ioLine.push_back(kDigits[iByte & 0xF]);
}

// Appends the escape or the well-formed sequence at the start of iText and answers its length.
std::size_t AppendOther(std::string_view iText, std::string& ioLine) {
  if (iText[0] == '\n' || iText[0] == '\r') {
    ioLine.append(iText[0] == '\n' ? "\\n" : "\\r");
    return 1;
  }
  const std::size_t length = Utf8SequenceLength(iText);
  const std::string_view sequence = iText.substr(0, length);
  if (length <= 1) {
    AppendByteEscape(static_cast<unsigned char>(iText[0]), ioLine);
    return 1;
  }
  if (sequence == "\xE2\x80\xA8" || sequence == "\xE2\x80\xA9") {
    ioLine.append(sequence == "\xE2\x80\xA8" ? "\\u2028" : "\\u2029");
  } else if (length == 2 && static_cast<unsigned char>(sequence[0]) == 0xC2 &&
             static_cast<unsigned char>(sequence[1]) < 0xA0) {
    ioLine.append("\\u00");
    constexpr char kDigits[] = "0123456789ABCDEF";
    ioLine.push_back(kDigits[static_cast<unsigned char>(sequence[1]) >> 4]);
    ioLine.push_back(kDigits[static_cast<unsigned char>(sequence[1]) & 0xF]);
  } else {
    ioLine.append(sequence);
  }
  return length;
}

}  // namespace

void AppendEscapedLine(std::string_view iText, std::string& ioLine) {
  while (!iText.empty()) {
    const auto plainEnd = std::find_if_not(iText.begin(), iText.end(), IsPlain);
    const auto plain = static_cast<std::size_t>(plainEnd - iText.begin());
    ioLine.append(iText.substr(0, plain));
    iText.remove_prefix(plain);
    if (!iText.empty()) {
      iText.remove_prefix(AppendOther(iText, ioLine));
    }
  }
}

}  // namespace VYX::Logging
