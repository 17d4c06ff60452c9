#include "internal/escape_js.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace {

using VYX::Internal::AppendEscapedForJS;
using VYX::Internal::FindEscapedForJS;

std::string Escaped(std::string_view iText) {
  std::string out;
  AppendEscapedForJS(out, iText);
  return out;
}

// The rule as it is stated: one replacement after another over the whole text.
std::string ReplacedOneByOne(std::string iText) {
  constexpr std::pair<char, const char*> kSteps[] = {{'\\', "\\\\"}, {'"', "\\\""}, {'\b', "\\b"}, {'\f', "\\f"},
                                                     {'\n', "\\n"},  {'\r', "\\r"}, {'\t', "\\t"}};
  for (const auto& [what, with] : kSteps) {
    std::string next;
    for (const char character : iText) {
      character == what ? next.append(with) : next.append(1, character);
    }
    iText = std::move(next);
  }
  return iText;
}

TEST(EscapeJs, EveryByteAtEveryPlaceOfABlock) {
  for (int value = 0; value < 256; ++value) {
    for (std::size_t length = 1; length <= 17; ++length) {
      for (std::size_t place = 0; place < length; ++place) {
        std::string text(length, 'x');
        text[place] = static_cast<char>(value);
        ASSERT_EQ(Escaped(text), ReplacedOneByOne(text)) << "byte " << value << " at " << place << " of " << length;
      }
    }
  }
}

TEST(EscapeJs, AppendsBehindWhatIsThere) {
  std::string out = "a\n";
  AppendEscapedForJS(out, "b\n");
  EXPECT_EQ(out, "a\nb\\n");
  AppendEscapedForJS(out, "");
  EXPECT_EQ(out, "a\nb\\n");
}

TEST(EscapeJs, FindsTheFirstCharacterThatIsEscaped) {
  EXPECT_EQ(FindEscapedForJS(""), 0U);
  EXPECT_EQ(FindEscapedForJS("abc"), 3U);
  EXPECT_EQ(FindEscapedForJS("0123456789\t\t"), 10U);
  EXPECT_EQ(FindEscapedForJS("0123456789\t\t", 11), 11U);
  EXPECT_EQ(FindEscapedForJS("0123456789\t\t", 12), 12U);
  EXPECT_EQ(FindEscapedForJS("\x01\x0b\x1f'/\x7f\x80\xff\"", 0), 8U);
}

TEST(EscapeJs, ZeroBytesStay) {
  const std::string text("a\0b\0\"", 5);
  EXPECT_EQ(Escaped(text), std::string("a\0b\0\\\"", 6));
}

}  // namespace
