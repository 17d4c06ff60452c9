#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"

namespace {

using namespace std::string_view_literals;

const std::string_view kIllFormed[] = {"\x80"sv,
                                       "\xC0\xAF"sv,
                                       "a\xE2\x82"sv,
                                       "\xED\xA0\x80"sv,
                                       "\xF4\x90\x80\x80"sv,
                                       "\xF0\x8F\xBF\xBF"sv,
                                       "\xFF"sv,
                                       "a long text whose last byte is no character\xC3"sv};
const std::string_view kWellFormed[] = {""sv,
                                        "abc"sv,
                                        "a\0b"sv,
                                        "\xEF\xBB\xBF"
                                        "bom"sv,
                                        "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF"sv,
                                        "a long text that lives in an allocation \xC3\xA9"sv};

TEST(BuildFromUTF8, TakesWellFormedText) {
  for (const std::string_view bytes : kWellFormed) {
    KORUnicodeString text("before");
    EXPECT_EQ(text.BuildFromUTF8(bytes.data(), bytes.size()), 0);
    EXPECT_EQ(text.ToStringView(), bytes);
  }
}

TEST(BuildFromUTF8, RefusesIllFormedTextAndLeavesNothing) {
  for (const std::string_view bytes : kIllFormed) {
    KORUnicodeString text("before");
    EXPECT_NE(text.BuildFromUTF8(bytes.data(), bytes.size()), 0) << bytes;
    EXPECT_TRUE(text.IsEmpty());
  }
  KORUnicodeString text("before");
  EXPECT_NE(text.BuildFromUTF8(nullptr, 1), 0);
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_EQ(text.BuildFromUTF8(nullptr, 0), 0);
}

TEST(BuildFromUTF8, TakesAPartOfItself) {
  KORUnicodeString text("a text that is long enough for an allocation");
  EXPECT_EQ(text.BuildFromUTF8(text.CastToCharPtr() + 2, 4), 0);
  EXPECT_EQ(text, "text");
}

TEST(ConvertToUTF8, WritesBytesAndCount) {
  const KORUnicodeString text("a\xC3\xA9\0z"sv);
  std::size_t length = 0;
  text.ConvertToUTF8(nullptr, &length);
  ASSERT_EQ(length, 5u);
  std::string buffer(length + 1, '#');
  text.ConvertToUTF8(buffer.data(), &length);
  EXPECT_EQ(buffer, "a\xC3\xA9\0z#"sv);
  text.ConvertToUTF8(buffer.data(), nullptr);
  EXPECT_EQ(length, 5u);
}

TEST(Wide, RoundTrip) {
  for (const std::string_view bytes : kWellFormed) {
    const KORUnicodeString text(bytes);
    const int count = text.ConvertToWChar(nullptr);
    std::vector<wchar_t> wide(static_cast<std::size_t>(count) + 2, L'#');
    EXPECT_EQ(text.ConvertToWChar(wide.data()), count);
    EXPECT_EQ(wide[static_cast<std::size_t>(count)], L'\0');
    EXPECT_EQ(wide[static_cast<std::size_t>(count) + 1], L'#');
    if (bytes.find('\0') == std::string_view::npos) {
      KORUnicodeString back("before");
      EXPECT_EQ(back.BuildFromWChar(wide.data()), 0);
      EXPECT_EQ(back, text);
    }
  }
}

TEST(Wide, TakesLiterals) {
  KORUnicodeString text;
  EXPECT_EQ(text.BuildFromWChar(L"a\u00E9\u20AC\U0001F600"), 0);
  EXPECT_EQ(text, "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(text.ConvertToWChar(nullptr), sizeof(wchar_t) == 2 ? 5 : 4);
  EXPECT_EQ(text.BuildFromWChar(L""), 0);
  EXPECT_TRUE(text.IsEmpty());
  text = "before";
  EXPECT_EQ(text.BuildFromWChar(nullptr), 0);
  EXPECT_TRUE(text.IsEmpty());
}

TEST(Wide, RefusesLoneSurrogatesAndLeavesNothing) {
  const wchar_t high[] = {L'a', static_cast<wchar_t>(0xD800), L'b', L'\0'};
  const wchar_t low[] = {static_cast<wchar_t>(0xDC00), L'\0'};
  const wchar_t last[] = {static_cast<wchar_t>(0xDBFF), L'\0'};
  for (const wchar_t* wide : {high, low, last}) {
    KORUnicodeString text("before");
    EXPECT_NE(text.BuildFromWChar(wide), 0);
    EXPECT_TRUE(text.IsEmpty());
  }
  if (sizeof(wchar_t) == 4) {
    const wchar_t beyond[] = {static_cast<wchar_t>(0x7FFFFFFF), L'\0'};
    EXPECT_NE(KORUnicodeString().BuildFromWChar(beyond), 0);
  }
}

TEST(Wide, BytesOfIllFormedTextBecomeReplacements) {
  wchar_t wide[4];
  EXPECT_EQ(KORUnicodeString("\xE2\x82z").ConvertToWChar(wide), 3);
  EXPECT_EQ(std::wstring(wide), L"\uFFFD\uFFFDz");
}

TEST(BuildFromStream, ReadsAllOrSoManyBytes) {
  const std::string content = "first\nsecond \xC3\xA9";
  KORUnicodeString text;
  std::istringstream whole(content);
  EXPECT_EQ(text.BuildFromStream(whole, -1), 0);
  EXPECT_EQ(text.ConvertToChar(), content);
  EXPECT_FALSE(whole.fail());

  std::istringstream part(content);
  EXPECT_EQ(text.BuildFromStream(part, 5), 0);
  EXPECT_EQ(text, "first");
  EXPECT_EQ(text.BuildFromStream(part, 0), 0);
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_EQ(text.BuildFromStream(part, 1'000'000), 0);
  EXPECT_EQ(text, "\nsecond \xC3\xA9");
}

TEST(BuildFromStream, ReadsMoreThanOneChunk) {
  const std::string content(1'000'003, 'x');
  std::istringstream stream(content);
  KORUnicodeString text;
  EXPECT_EQ(text.BuildFromStream(stream, -1), 0);
  EXPECT_EQ(text.ConvertToChar(), content);
}

TEST(BuildFromStream, RefusesIllFormedBytes) {
  for (const std::string_view bytes : kIllFormed) {
    std::istringstream stream{std::string(bytes)};
    KORUnicodeString text("before");
    EXPECT_NE(text.BuildFromStream(stream, -1), 0);
    EXPECT_TRUE(text.IsEmpty());
  }
  std::istringstream cut("\xC3\xA9");
  EXPECT_NE(KORUnicodeString().BuildFromStream(cut, 1), 0);
}

class BrokenBuffer : public std::streambuf {
 protected:
  int_type underflow() override { throw 1; }
};

TEST(BuildFromStream, FailsWithTheStream) {
  KORUnicodeString text("before");
  std::ifstream absent("/nonexistent/file");
  EXPECT_NE(text.BuildFromStream(absent, -1), 0);
  EXPECT_TRUE(text.IsEmpty());
  text = "before";
  BrokenBuffer buffer;
  std::istream broken(&buffer);
  EXPECT_NE(text.BuildFromStream(broken, -1), 0);
  EXPECT_TRUE(text.IsEmpty());
}

}  // namespace
