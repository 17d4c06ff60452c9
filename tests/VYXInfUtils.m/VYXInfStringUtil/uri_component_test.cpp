#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <string_view>

#include "VYXInfStringUtil.h"
#include "support/captured_stdout.h"
#include "text_row.h"

namespace {

using Util = VYXInfStringUtil;
using VYX::Test::TextRow;
using namespace std::string_view_literals;

class EncodeRows : public ::testing::TestWithParam<TextRow> {};
TEST_P(EncodeRows, EncodeURIComponent) {
  EXPECT_EQ(Util::EncodeURIComponent(KORUnicodeString(GetParam().text)).ToStringView(), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(Rows, EncodeRows,
                         ::testing::Values(TextRow{"", ""}, TextRow{"a b/\u00E9", "a%20b%2F%C3%A9"},
                                           TextRow{"-_.~", "-_.~"}, TextRow{"*", "%2A"},
                                           TextRow{"!'()*", "%21%27%28%29%2A"}, TextRow{"\U0001F600", "%F0%9F%98%80"},
                                           TextRow{"100%", "100%25"}, TextRow{"a+b", "a%2Bb"},
                                           TextRow{"a\0b"sv, "a%00b"}, TextRow{"\xFF\x01", "%FF%01"}));

TEST(EncodeURIComponent, KeepsTheUnreservedBytesOnly) {
  constexpr std::string_view kUnreserved = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.~";
  for (int value = 0; value < 256; ++value) {
    const char text = static_cast<char>(value);
    char escaped[4];
    std::snprintf(escaped, sizeof escaped, "%%%02X", static_cast<unsigned>(value));
    const bool isKept = kUnreserved.find(text) != std::string_view::npos;
    EXPECT_EQ(Util::EncodeURIComponent(KORUnicodeString(std::string_view(&text, 1))).ToStringView(),
              isKept ? std::string_view(&text, 1) : std::string_view(escaped))
        << value;
  }
}

class DecodeRows : public ::testing::TestWithParam<TextRow> {};
TEST_P(DecodeRows, DecodeURIComponent) {
  EXPECT_EQ(Util::DecodeURIComponent(KORUnicodeString(GetParam().text)).ToStringView(), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(Rows, DecodeRows,
                         ::testing::Values(TextRow{"", ""}, TextRow{"%41%4a%4A", "AJJ"}, TextRow{"100%", "100"},
                                           TextRow{"%zz", "zz"}, TextRow{"a+b", "a+b"}, TextRow{"%G1", "G1"},
                                           TextRow{"%4", "4"}, TextRow{"%", ""},
                                           // The byte behind a dropped percent sign is copied as it stands.
                                           TextRow{"%%41", "%41"}, TextRow{"%%", "%"}, TextRow{"%%%41", "%A"},
                                           TextRow{"%4%41", "4A"}, TextRow{"%2541", "%41"}, TextRow{"%2F", "/"},
                                           TextRow{"%C3%A9", "\u00E9"}, TextRow{"%F0%9F%98%80", "\U0001F600"},
                                           TextRow{"\u00E9%20\U0001F600", "\u00E9 \U0001F600"},
                                           TextRow{"ab%00cd", "ab"}, TextRow{"%00", ""}, TextRow{"ab\0cd"sv, "ab"}));
// What is no well-formed UTF-8 gives the empty text; what follows a zero byte does not count.
INSTANTIATE_TEST_SUITE_P(IllFormed, DecodeRows,
                         ::testing::Values(TextRow{"a%FF", ""}, TextRow{"%C0%AF", ""}, TextRow{"%ED%A0%80", ""},
                                           TextRow{"%C3", ""}, TextRow{"a\xFF", ""}, TextRow{"a%00%FF", "a"}));

TEST(DecodeURIComponent, UndoesTheEncoding) {
  std::string text;
  for (int value = 1; value < 128; ++value) {
    text.push_back(static_cast<char>(value));
  }
  text += "\u00E9\u20AC\U0001F600";
  const KORUnicodeString whole{std::string_view(text)};
  EXPECT_EQ(Util::DecodeURIComponent(Util::EncodeURIComponent(whole)), whole);
}

class FileRows : public ::testing::TestWithParam<TextRow> {};
TEST_P(FileRows, URIFromLocalFile) {
  EXPECT_EQ(Util::URIFromLocalFile(KORUnicodeString(GetParam().text)).ToStringView(), GetParam().result);
}
INSTANTIATE_TEST_SUITE_P(
    Rows, FileRows,
    ::testing::Values(TextRow{"", "file:///"}, TextRow{"C:\\data\\a.txt", "file:///C:/data/a.txt"},
                      TextRow{"/home/a.txt", "file:///home/a.txt"}, TextRow{"\\home\\a.txt", "file:///home/a.txt"},
                      TextRow{"a b#c", "file:///a b#c"}, TextRow{"\\\\host\\share", "file:////host/share"},
                      TextRow{"\u00E9\\\U0001F600", "file:///\u00E9/\U0001F600"}, TextRow{"/", "file:///"}));

TEST(UriComponent, NothingIsLogged) {
  VYX::Test::CapturedStdout captured;
  Util::EncodeURIComponent("");
  Util::DecodeURIComponent("%");
  Util::DecodeURIComponent("%FF");
  Util::URIFromLocalFile("");
  EXPECT_EQ(captured.Text(), "");
}

}  // namespace
