#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace VYX::Platform {

/// What the environment says about the language of messages; empty where a variable is not set.
struct LanguageSettings {
  std::string_view lcAll;
  std::string_view lcMessages;
  std::string_view lang;
  std::string_view language;
};

/// The settings of the process's environment; all empty where the program runs with raised privileges.
LanguageSettings LanguagesOfEnvironment() noexcept;

/**
 * The languages to look for, best first: each in full ("fr_CA") and by its first part ("fr"), without repetition. Names
 * that are no language ("../x", one of 65 characters) are passed over, and at most 16 are taken from a list.
 */
std::vector<std::string> PreferredLanguages(const LanguageSettings& iSettings);

}  // namespace VYX::Platform
