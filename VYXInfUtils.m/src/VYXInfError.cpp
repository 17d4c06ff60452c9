#include "VYXInfError.h"

#include <charconv>
#include <cstdint>
#include <ostream>
#include <string>

#include "KORSysBase/KORError.h"

template class KORListVal<VYXInfError>;

VYXInfError::VYXInfError(long iCode) : _hresult(static_cast<std::int32_t>(iCode)) {
  if (_hresult == 0) {
    return;
  }
  KORError* const pending = KORError::KORGetLastError(_hresult, nullptr);
  if (pending == nullptr) {
    _message = std::string("Unknown error with code ").append(std::to_string(_hresult)).c_str();
    return;
  }
  _message = pending->GetMessageText();
  pending->Release();
  KORError::KORCleanLastError();
}

VYXInfError::~VYXInfError() = default;

int VYXInfError::operator==(const VYXInfError& iOther) const noexcept {
  return (_hresult == iOther._hresult && _message.Compare(iOther._message) >= 2) ? 1 : 0;
}

KORUnicodeString VYXInfError::ErrorListToString(KORListValVYXInfError iList) {
  KORUnicodeString text;
  for (int position = 1; position <= iList.Size(); ++position) {
    text += iList[position].GetErrorMessage();
    text += "\n";
  }
  return text;
}

std::ostream& operator<<(std::ostream& ioStream, const VYXInfError& iError) {
  char digits[8];
  char* const end = std::to_chars(digits, digits + sizeof digits, static_cast<std::uint32_t>(iError._hresult), 16).ptr;
  const std::string code(&digits[0], end);
  return ioStream << (iError._hresult == 0 ? KORUnicodeString("no error") : iError._message) << " (0x"
                  << std::string(sizeof digits - code.size(), '0') << code << ')';
}
