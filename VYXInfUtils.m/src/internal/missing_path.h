#pragma once

#include "KORSysTS/KORUnicodeString.h"

namespace VYX::Internal {

/// True where there is surely nothing of the name: false also where the host cannot tell, so that who goes on meets the
/// failure and can report it.
bool IsSurelyMissing(const KORUnicodeString& iPath);

}  // namespace VYX::Internal
