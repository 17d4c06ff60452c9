#include "message_languages.h"

#include <algorithm>
#include <cstddef>

#include "platform/os/environment.h"

namespace VYX::Platform {

namespace {

constexpr std::size_t kMaxListed = 16;
constexpr std::size_t kMaxNameLength = 64;

std::string_view Value(const char* iName) noexcept {
  const char* const value = Os::TrustedEnvironmentValue(iName);
  return value == nullptr ? std::string_view() : std::string_view(value);
}

bool IsLetterOrDigit(char iChar) noexcept {
  return (iChar >= 'a' && iChar <= 'z') || (iChar >= 'A' && iChar <= 'Z') || (iChar >= '0' && iChar <= '9');
}

// The name becomes a part of a file name, so nothing but letters, digits and underscores passes.
bool IsLanguage(std::string_view iName) noexcept {
  return !iName.empty() && iName.size() <= kMaxNameLength && iName.front() != '_' &&
         std::all_of(iName.begin(), iName.end(), [](char iChar) { return IsLetterOrDigit(iChar) || iChar == '_'; });
}

// "fr_CA" of "fr_CA.UTF-8@euro"
std::string_view WithoutEncoding(std::string_view iLocale) noexcept {
  return iLocale.substr(0, iLocale.find_first_of(".@"));
}

std::string_view LocaleOf(const LanguageSettings& iSettings) noexcept {
  for (const std::string_view value : {iSettings.lcAll, iSettings.lcMessages, iSettings.lang}) {
    if (!value.empty()) {
      return WithoutEncoding(value);
    }
  }
  return {};
}

void AddOnce(std::vector<std::string>& ioNames, std::string_view iName) {
  if (std::find(ioNames.begin(), ioNames.end(), iName) == ioNames.end()) {
    ioNames.emplace_back(iName);
  }
}

void AddLanguage(std::vector<std::string>& ioNames, std::string_view iName) {
  if (!IsLanguage(iName)) {
    return;
  }
  AddOnce(ioNames, iName);
  AddOnce(ioNames, iName.substr(0, iName.find('_')));
}

}  // namespace

LanguageSettings LanguagesOfEnvironment() noexcept {
  return {Value("LC_ALL"), Value("LC_MESSAGES"), Value("LANG"), Value("LANGUAGE")};
}

std::vector<std::string> PreferredLanguages(const LanguageSettings& iSettings) {
  const std::string_view locale = LocaleOf(iSettings);
  std::vector<std::string> names;
  if (locale.empty() || locale == "C" || locale == "POSIX") {
    return names;
  }
  if (iSettings.language.empty()) {
    AddLanguage(names, locale);
    return names;
  }
  std::string_view rest = iSettings.language;
  for (std::size_t count = 0; count < kMaxListed && !rest.empty(); ++count) {
    const std::size_t end = std::min(rest.find(':'), rest.size());
    AddLanguage(names, WithoutEncoding(rest.substr(0, end)));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return names;
}

}  // namespace VYX::Platform
