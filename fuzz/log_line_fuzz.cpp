#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/support/characters.h"
#include "fuzz/support/fuzz_input.h"
#include "fuzz/support/require.h"
#include "platform/src/VYXLoggingAdapter/file_name_pattern.h"
#include "platform/src/VYXLoggingAdapter/line_format.h"

// Any format and any record: one record is one line, of well-formed text, that no terminal takes for a command.

namespace {

using namespace VYX::Fuzz;
namespace Logging = VYX::Logging;

bool IsHarmless(char32_t iCharacter) {
  const bool isControl = (iCharacter < 0x20 && iCharacter != '\t') || (iCharacter >= 0x7F && iCharacter < 0xA0);
  return !isControl && iCharacter != 0x2028 && iCharacter != 0x2029 && iCharacter < kFirstByte;
}

void CheckLine(const std::string& iLine) {
  for (const char32_t character : Characters(iLine)) {
    Require(IsHarmless(character), "nothing ends or disturbs a line");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  FuzzInput input(iData, iSize);
  const auto level = static_cast<int>(input.Below(8)) - 1;
  // Years 1902 to 2106: what clocks show.
  const VYX::Os::WallTime time{static_cast<std::int64_t>(input.Value<std::uint32_t>()) - INT32_MAX, 999'999'999};
  const std::string_view format = input.Piece(120);
  const std::string_view channel = input.Piece(20);
  const Logging::Record record{level, channel, input.Rest(), time, 4711, 42};

  Logging::ParseError error;
  const std::optional<Logging::LineFormat> parsed = Logging::LineFormat::Parse(format, error);
  if (parsed) {
    std::string line;
    parsed->Append(record, line);
    CheckLine(line);
  } else {
    Require(error.position >= 1 && error.position <= format.size() + 1, "the place of the error");
    Require(!error.reason.empty(), "the reason of the error");
  }
  const std::string name = Logging::FileNamePattern(format).Expand(7, time);
  Require(name.size() <= 100 * (format.size() + 1), "a file name of bounded length");
  return 0;
}
