#pragma once

#include <string>
#include <vector>

namespace VYX::Os {

/// An environment variable's value, or null where it is not set. The text belongs to the environment and is valid until
/// the variable is changed. Safe to call from any thread while none changes the environment.
const char* EnvironmentValue(const char* iName) noexcept;

/// The same, but null for every variable where the program runs with raised privileges, so that who starts it cannot
/// steer it.
const char* TrustedEnvironmentValue(const char* iName) noexcept;

/// Every entry of the environment as a whole, "NAME=value", in the environment's order. Safe to call from any thread
/// while none changes the environment.
std::vector<std::string> EnvironmentEntries();

}  // namespace VYX::Os
