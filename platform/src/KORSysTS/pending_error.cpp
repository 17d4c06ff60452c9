#include "pending_error.h"

#include <charconv>
#include <exception>
#include <string>

#include "KORSysBase/KORError.h"

namespace VYX::Platform {

long FailWith(long iCode, std::initializer_list<std::string_view> iPieces) noexcept {
  try {
    std::string message;
    for (const std::string_view piece : iPieces) {
      message.append(piece);
    }
    return KORError::KORSetLastError(iCode, KORUnicodeString(std::string_view(message)));
  } catch (const std::exception&) {
    return iCode;
  }
}

Decimal::Decimal(std::uint64_t iNumber) noexcept
    : _length(static_cast<std::size_t>(std::to_chars(_digits, _digits + sizeof _digits, iNumber).ptr - _digits)) {}

}  // namespace VYX::Platform
