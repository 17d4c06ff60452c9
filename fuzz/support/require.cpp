#include "fuzz/support/require.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace VYX::Fuzz {

namespace {

[[noreturn]] void Report(const char* iRule, std::string_view iDetails) {
  std::fprintf(stderr, "\nfuzz: broken rule: %s\n%.*s", iRule, static_cast<int>(iDetails.size()), iDetails.data());
  std::abort();
}

std::string Shown(std::string_view iText) {
  std::string shown;
  for (const char character : iText.substr(0, 2000)) {
    const auto byte = static_cast<unsigned char>(character);
    char escaped[8];
    std::snprintf(escaped, sizeof escaped, byte < 0x20 || byte >= 0x7F ? "\\x%02X" : "%c", byte);
    shown += escaped;
  }
  return shown;
}

}  // namespace

void Require(bool iIsMet, const char* iRule) {
  if (!iIsMet) {
    Report(iRule, "");
  }
}

void RequireEqual(std::string_view iActual, std::string_view iExpected, const char* iRule) {
  if (iActual != iExpected) {
    Report(iRule, "  is:        " + Shown(iActual) + "\n  should be: " + Shown(iExpected) + "\n");
  }
}

}  // namespace VYX::Fuzz
