#include "KORSysTS/KORString.h"

#include <ostream>

KORString::KORString(const char* iText) : _text(iText == nullptr ? "" : iText) {}

std::ostream& operator<<(std::ostream& ioStream, const KORString& iText) {
  return ioStream << iText.ToStringView();
}
