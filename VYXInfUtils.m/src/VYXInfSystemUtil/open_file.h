#pragma once

#include "KORSysBase/KORFile.h"

namespace VYX::Internal {

/// An open file of the platform that is closed when it goes away.
class OpenFile {
 public:
  OpenFile() = default;
  ~OpenFile() {
    if (_descriptor != 0) {
      KORFClose(_descriptor);
    }
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  /// KORFOpen.
  long Open(const KORUnicodeString& iPath, const char* iMode) { return KORFOpen(iPath, iMode, &_descriptor); }

  /// KORFClose, once.
  long Close() {
    const unsigned int descriptor = _descriptor;
    _descriptor = 0;
    return KORFClose(descriptor);
  }

  /// The descriptor; 0 when none is open.
  unsigned int Get() const noexcept { return _descriptor; }

 private:
  unsigned int _descriptor = 0;
};

}  // namespace VYX::Internal
