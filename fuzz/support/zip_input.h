#pragma once

#include <string>

#include "fuzz/support/fuzz_input.h"

namespace VYX::Fuzz {

/// The bytes of an archive: those of the input as they are, or an archive that is put together from it, most of whose
/// parts fit together.
std::string MakeZip(FuzzInput& ioInput);

}  // namespace VYX::Fuzz
