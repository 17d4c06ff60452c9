#pragma once

#include <cstddef>

#include "VYXPropertyTree/object.h"
#include "platform/adapters/json_tape.h"

namespace json {

/**
 * The object at a place of a tape, made at once in an arena of its own. Of equal keys the last one wins; members that
 * are null are left out. Takes no stack for the depth. Throws std::bad_alloc.
 *
 * @param iExpected about how many bytes the object takes.
 */
Object BuildObject(const VYX::Adapters::JsonTape& iTape, std::size_t iPlace, std::size_t iExpected);

}  // namespace json
