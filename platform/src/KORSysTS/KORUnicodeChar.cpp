#include "KORSysTS/KORUnicodeChar.h"

#include <ostream>

#include "utf8.h"

std::string KORUnicodeChar::ConvertToChar() const {
  if (IsByte()) {
    return std::string(1, static_cast<char>(NarrowByte()));
  }
  char bytes[4];
  return std::string(bytes, VYX::Platform::EncodeCodePoint(_value, bytes));
}

std::ostream& operator<<(std::ostream& ioStream, const KORUnicodeChar& iChar) {
  return ioStream << iChar.ConvertToChar();
}
