#pragma once

#include "KORSysTS/KORUnicodeString.h"
#include "VYXPropertyTree/value.h"

namespace json {

/// The compact JSON text of a value or an object: no white space, members in ascending key order. Takes no stack for
/// the nesting depth.
KORUnicodeString CompactText(const Value& iValue);
KORUnicodeString CompactText(const Object& iObject);

}  // namespace json
