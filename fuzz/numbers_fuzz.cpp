#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXPropertyTree/number_text.h"
#include "fuzz/support/fuzz_input.h"
#include "fuzz/support/require.h"
#include "platform/adapters/json_reader.h"

// Numbers to text against the C library's printf, and text to numbers against its strtod, in the "C" locale.

namespace {

using namespace VYX::Fuzz;

std::string Printed(const std::string& iFormat, double iNumber) {
  const int length = std::snprintf(nullptr, 0, iFormat.c_str(), iNumber);
  std::vector<char> text(static_cast<std::size_t>(length) + 1);
  std::snprintf(text.data(), text.size(), iFormat.c_str(), iNumber);
  return {text.data(), static_cast<std::size_t>(length)};
}

bool AreSame(double iLeft, double iRight) {
  return std::memcmp(&iLeft, &iRight, sizeof iLeft) == 0;
}

void CheckTreeText(double iNumber) {
  char text[json::kNumberTextSize];
  const std::string_view written(text, static_cast<std::size_t>(json::WriteNumber(text, iNumber) - text));
  RequireEqual(written, Printed("%.17g", iNumber), "a tree's number is written as %.17g");
  if (std::isfinite(iNumber)) {
    const std::string zeroEnded(written);
    Require(AreSame(std::strtod(zeroEnded.c_str(), nullptr), iNumber), "the text means the number");
  }
}

// A format that is built from parts, each of them legal.
std::string BuiltFormat(FuzzInput& ioInput) {
  constexpr std::string_view kFlags[] = {"", "-", "+", " ", "#", "0", "-#", "+0", " 0", "#0", "+-#"};
  constexpr std::string_view kKinds = "efgaEFGA";
  std::string format = ioInput.Flag() ? "<%%>%" : "%";
  format += kFlags[ioInput.Below(std::size(kFlags))];
  if (ioInput.Flag()) {
    format += std::to_string(ioInput.Below(60) + 1);
  }
  if (ioInput.Flag()) {
    format += "." + (ioInput.Flag() ? std::to_string(ioInput.Below(60)) : "");
  }
  return format + kKinds[ioInput.Below(kKinds.size())];
}

void CheckFormat(double iNumber, const std::string& iFormat) {
  KORUnicodeString text;
  Require(text.BuildFromNum(iNumber, iFormat.c_str()) == 0, "a legal format is taken");
  const bool isHexadecimal = iFormat.back() == 'a' || iFormat.back() == 'A';
  // How hexadecimal digits are normalised is each library's own choice: only their value is compared.
  if (!isHexadecimal) {
    RequireEqual(text.ToStringView(), Printed(iFormat, iNumber), "the format's text is printf's");
  } else if (std::isfinite(iNumber) && iFormat.find('.') == std::string::npos && iFormat.front() == '%' &&
             iFormat.find("%%") == std::string::npos) {
    Require(AreSame(std::strtod(text.CastToCharPtr(), nullptr), iNumber), "hexadecimal digits mean the number");
  }
}

// Any text: what the reader takes as a number is what strtod makes of it.
void CheckReading(std::string_view iText) {
  VYX::Adapters::JsonDocument document;
  VYX::Adapters::JsonFailure failure;
  if (!document.Parse(iText, failure) || document.Root().Kind() != VYX::Adapters::JsonKind::Number) {
    return;
  }
  const std::string zeroEnded(iText.substr(std::min(iText.find_first_not_of("\xEF\xBB\xBF \t\n\r"), iText.size())));
  const double expected = std::strtod(zeroEnded.c_str(), nullptr);
  Require(AreSame(document.Root().Number(), expected), "a number is read as the nearest double");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  FuzzInput input(iData, iSize);
  CheckReading(FuzzInput(input).Rest());
  const auto number = input.Value<double>();
  CheckTreeText(number);
  CheckFormat(number, BuiltFormat(input));
  const std::string anyFormat(input.Rest());
  KORUnicodeString text;
  static_cast<void>(text.BuildFromNum(number, anyFormat.c_str()));
  return 0;
}
