#pragma once

#include <vector>

#include "faults/scenario.h"

namespace VYX::Test {

/// Work in memory: trees are parsed, printed and copied, texts are edited and encoded.
std::vector<NamedScenario> MemoryScenarios();

}  // namespace VYX::Test
