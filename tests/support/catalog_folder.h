#pragma once

#include <cstdlib>
#include <fstream>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "support/host.h"
#include "support/temporary_folder.h"

namespace VYX::Test {

/// Sets environment variables while the object lives; an empty value takes a variable away.
class Environment {
 public:
  explicit Environment(const std::map<std::string, std::string>& iValues) {
    for (const auto& [name, value] : iValues) {
      const char* const old = std::getenv(name.c_str());
      _saved[name] = old == nullptr ? std::nullopt : std::optional<std::string>(old);
      SetVariable(name, value.empty() ? nullptr : value.c_str());
    }
  }
  ~Environment() {
    for (const auto& [name, value] : _saved) {
      SetVariable(name, value ? value->c_str() : nullptr);
    }
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  std::map<std::string, std::optional<std::string>> _saved;
};

/// An installation folder of its own for message catalogs, gone with the object.
class CatalogFolder {
 public:
  CatalogFolder() { _folder.MakeFolder(kPlace); }

  std::string Root() const { return _folder.Native(); }
  std::string PathOf(const std::string& iFile) const { return _folder.Native(kPlace + ("/" + iFile)); }
  void Write(const std::string& iFile, std::string_view iText) const {
    std::ofstream(PathOf(iFile), std::ios::binary) << iText;
  }

 private:
  static constexpr const char* kPlace = "resources/msgcatalog";
  TemporaryFolder _folder;
};

/// The environment of a user: installation folders and language settings, and nothing else that says a language.
inline std::map<std::string, std::string> UserOf(const std::string& iInstallPath, const std::string& iLang = "",
                                                 const std::string& iLanguage = "") {
  return {
      {"KORInstallPath", iInstallPath}, {"LC_ALL", ""}, {"LC_MESSAGES", ""}, {"LANG", iLang}, {"LANGUAGE", iLanguage}};
}

}  // namespace VYX::Test
