#pragma once

#include "KORSysTS/KORUnicodeString.h"
#include "VYXPropertyTree/value.h"

namespace VYX::Internal {

/// The compact text of what a view designates: "null" for a view of nothing, empty after a failure, which is traced.
KORUnicodeString TextOfDesignated(const json::Value* iDesignated);

}  // namespace VYX::Internal
