#pragma once

#include "KORSysTS/KORUnicodeString.h"
#include "VYXPropertyTree/value.h"

namespace json {

/**
 * The text of an object in strict JSON (RFC 8259), members in ascending key order. Takes no stack for the nesting
 * depth.
 *
 * @param iIndent the spaces per level, at most 16; no white space at all when it is not positive.
 * @throw std::range_error where a value or key has no such text; what() tells its place as a JSON pointer.
 */
KORUnicodeString StrictText(const Object& iObject, int iIndent);

}  // namespace json
