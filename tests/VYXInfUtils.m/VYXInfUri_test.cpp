#include "VYXInfUri.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "KORSysBase/KORResult.h"
#include "support/captured_stdout.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using VYX::Test::CapturedStdout;
using VYX::Test::Detail;
using VYX::Test::FailureReturnIn;

constexpr const char* kSource = "VYXInfUri.cpp";

struct Components {
  std::string scheme;
  std::string host;
  std::int32_t port = -1;
  std::string path;
  std::string query;
  std::string fragment;

  bool operator==(const Components&) const = default;
};

void PrintTo(const Components& iValue, std::ostream* ioStream) {
  *ioStream << "{" << iValue.scheme << "|" << iValue.host << "|" << iValue.port << "|" << iValue.path << "|"
            << iValue.query << "|" << iValue.fragment << "}";
}

Components Split(const VYXInfUri& iUri) {
  return {iUri.GetScheme().ConvertToChar(), iUri.GetHost().ConvertToChar(),  iUri.GetPort(),
          iUri.GetPath().ConvertToChar(),   iUri.GetQuery().ConvertToChar(), iUri.GetFragment().ConvertToChar()};
}

KORUnicodeString Text(std::string_view iText) {
  return KORUnicodeString(iText);
}

// The text of the exception that an operation throws; empty when it throws none.
template <class Exception, class Operation>
std::string WhatOf(Operation&& iOperation) {
  try {
    std::forward<Operation>(iOperation)();
  } catch (const Exception& exception) {
    return exception.what();
  }
  return {};
}

TEST(VYXInfUri, SplitsTextAndComposesIt) {
  const struct {
    const char* text;
    Components components;
    const char* composed;
  } rows[] = {
      {"ftp://h:8080/p/q?a=1&b=2#f", {"ftp", "h", 8080, "/p/q", "a=1&b=2", "f"}, "ftp://h:8080/p/q?a=1&b=2#f"},
      {"", {"", "", -1, "", "", ""}, ""},
      {":", {"", "", -1, "", "", ""}, ""},
      {"http:", {"http", "", -1, "", "", ""}, "http:"},
      {"h:80", {"h", "", -1, "80", "", ""}, "h:80"},
      {"C:\\dir", {"C", "", -1, "\\dir", "", ""}, "C:\\dir"},
      {"a/b:c", {"a/b", "", -1, "c", "", ""}, "a/b:c"},
      {"news:comp.lang", {"news", "", -1, "comp.lang", "", ""}, "news:comp.lang"},
      {"file:///C:/x", {"file", "", -1, "/C:/x", "", ""}, "file:///C:/x"},
      {"FILE:///x", {"FILE", "", -1, "/x", "", ""}, "FILE:/x"},
      {"//h/p", {"", "h", -1, "/p", "", ""}, "//h/p"},
      {"/p", {"", "", -1, "/p", "", ""}, "/p"},
      {"x://h?q", {"x", "h", -1, "", "q", ""}, "x://h?q"},
      {"x://h#f", {"x", "h", -1, "", "", "f"}, "x://h#f"},
      {"x://h", {"x", "h", -1, "", "", ""}, "x://h"},
      {"x://", {"x", "", -1, "", "", ""}, "x:"},
      {"x:?q#f", {"x", "", -1, "", "q", "f"}, "x:?q#f"},
      {"x:p#f?g#h", {"x", "", -1, "p", "", "f?g#h"}, "x:p#f?g#h"},
      {"x:p?q?r", {"x", "", -1, "p", "q?r", ""}, "x:p?q?r"},
      {"x:p?#", {"x", "", -1, "p", "", ""}, "x:p"},
      {"x:p?", {"x", "", -1, "p", "", ""}, "x:p"},
      {"x:p#", {"x", "", -1, "p", "", ""}, "x:p"},
      {"http://a@b:80@c/", {"http", "a@b", 80, "/", "", ""}, "http://a@b:80/"},
      {"http://a@b/", {"http", "a@b", -1, "/", "", ""}, "http://a@b/"},
      {"x:////h", {"x", "", -1, "//h", "", ""}, "x://h"},
      {"x:\xC3\xA4?\xFF#\xE2\x82\xAC",
       {"x", "", -1, "\xC3\xA4", "\xFF", "\xE2\x82\xAC"},
       "x:\xC3\xA4?\xFF#\xE2\x82\xAC"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    VYXInfUri uri;
    EXPECT_EQ(uri.Set(row.text), S_OK);
    EXPECT_EQ(Split(uri), row.components);
    EXPECT_EQ(uri.GetString(), row.composed);
    EXPECT_TRUE(VYXInfUri(row.text) == uri);
  }
}

TEST(VYXInfUri, KeepsComponentsThatTheTextDoesNotContain) {
  VYXInfUri uri("ftp://h:21/p?q#f");
  EXPECT_EQ(uri.Set(""), S_OK);
  EXPECT_EQ(Split(uri), (Components{"ftp", "h", 21, "/p", "q", "f"}));
  EXPECT_EQ(uri.Set("news:comp"), S_OK);
  EXPECT_EQ(Split(uri), (Components{"news", "h", 21, "comp", "q", "f"}));
  EXPECT_EQ(uri.Set("//g"), S_OK);
  EXPECT_EQ(Split(uri), (Components{"news", "g", -1, "comp", "q", "f"}));
  EXPECT_EQ(uri.Set("#z"), S_OK);
  EXPECT_EQ(Split(uri), (Components{"news", "g", -1, "", "q", "z"}));
}

TEST(VYXInfUri, KeepsZeroBytes) {
  VYXInfUri uri(Text(std::string_view("x:a\0b?c\0d", 9)));
  EXPECT_EQ(uri.GetPath(), Text(std::string_view("a\0b", 3)));
  EXPECT_EQ(uri.GetQuery(), Text(std::string_view("c\0d", 3)));
  EXPECT_EQ(uri.GetString(), Text(std::string_view("x:a\0b?c\0d", 9)));
}

TEST(VYXInfUri, SplitsHugeText) {
  const std::string part(1 << 20, 'a');
  const std::string text = "x://" + part + "/" + part + "?" + part + "#" + part;
  const VYXInfUri uri{Text(text)};
  EXPECT_EQ(uri.GetHost().GetLengthInByte(), part.size());
  EXPECT_EQ(uri.GetFragment().GetLengthInByte(), part.size());
  EXPECT_EQ(uri.GetString(), Text(text));
}

TEST(VYXInfUri, ReadsPortsAsUnsigned32BitNumbers) {
  const struct {
    const char* text;
    std::int32_t port;
  } rows[] = {
      {"0", 0},
      {"80", 80},
      {"0080", 80},
      {"65536", 65536},
      {" 80", 80},
      {"\t\n+80", 80},
      {"80x", 80},
      {"80 81", 80},
      {"80:90", 80},
      {"0x10", 0},
      {"-1", -1},
      {"-2", -2},
      {"-4294967295", 1},
      {"2147483647", 2147483647},
      {"8.5", 8},
      {"-0", 0},
      {"4294967295", -1},
      {"4294967294", -2},
      {"2147483648", -2147483648},
      {"00000000000000000000000000000000001", 1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    VYXInfUri uri;
    EXPECT_EQ(uri.Set(Text(std::string("x://h:") + row.text + "/p")), S_OK);
    EXPECT_EQ(uri.GetPort(), row.port);
    EXPECT_EQ(uri.GetPath(), "/p");
  }
}

TEST(VYXInfUri, RaisesTheStandardErrorsOfBadPorts) {
  const struct {
    const char* text;
    const char* invalid;
    const char* outOfRange;
  } rows[] = {
      {"", "invalid stoul argument", ""},
      {"x", "invalid stoul argument", ""},
      {" ", "invalid stoul argument", ""},
      {"-", "invalid stoul argument", ""},
      {"+-1", "invalid stoul argument", ""},
      {"- 1", "invalid stoul argument", ""},
      {":80", "invalid stoul argument", ""},
      {":1]:80", "invalid stoul argument", ""},
      {"4294967296", "", "stoul argument out of range"},
      {"-4294967296", "", "stoul argument out of range"},
      {"99999999999999999999999999", "", "stoul argument out of range"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    const KORUnicodeString text = Text(std::string("x://h:") + row.text + "/p");
    CapturedStdout captured;
    VYXInfUri uri("y:old");
    EXPECT_EQ(WhatOf<std::invalid_argument>(
                  [&] { EXPECT_EQ(WhatOf<std::out_of_range>([&] { uri.Set(text); }), row.outOfRange); }),
              row.invalid);
    EXPECT_EQ(Split(uri), (Components{"x", "h", -1, "old", "", ""}));
    EXPECT_THROW(VYXInfUri{text}, std::logic_error);
    EXPECT_THAT(captured.LogLines(), IsEmpty());
  }
}

TEST(VYXInfUri, TrySetAnswersACodeInsteadOfRaising) {
  VYXInfUri uri("ftp://h:21/p?q#f");
  const VYXInfUri before = uri;
  CapturedStdout captured;
  EXPECT_EQ(uri.TrySet("x://g:y"), E_INVALIDARG);
  EXPECT_EQ(uri.TrySet("x://g:4294967296"), E_INVALIDARG);
  EXPECT_TRUE(uri == before);
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource), Detail("invalid stoul argument"),
                                               FailureReturnIn(kSource), Detail("stoul argument out of range")));
  EXPECT_EQ(uri.TrySet("x://g:1"), S_OK);
  EXPECT_EQ(Split(uri), (Components{"x", "g", 1, "/p", "q", "f"}));
}

TEST(VYXInfUri, ComposesWhatItsSettersWereGiven) {
  VYXInfUri uri;
  uri.SetScheme("file");
  uri.SetPath("/x");
  EXPECT_EQ(uri.GetString(), "file:///x");
  uri.SetScheme("ftp");
  EXPECT_EQ(uri.GetString(), "ftp:/x");
  uri.SetPort(80);
  EXPECT_EQ(uri.GetString(), "ftp:/x") << "a port needs a host";
  uri.SetHost("h");
  EXPECT_EQ(uri.GetString(), "ftp://h:80/x");
  uri.SetPort(-7);
  EXPECT_EQ(uri.GetString(), "ftp://h:-7/x");
  uri.SetPort(VYXInfUri::kNoPort);
  uri.SetQuery("?&");
  uri.SetFragment("#");
  EXPECT_EQ(uri.GetString(), "ftp://h/x??&##");
}

TEST(VYXInfUri, FindsQueryParameters) {
  const struct {
    const char* query;
    const char* key;
    const char* value;
  } rows[] = {
      {"a=1&b=2&b=3", "b", "2"}, {"a=1&b=2", "c", ""}, {"a=1", "A", ""},       {"", "a", ""},
      {"&&a=1&", "a", "1"},      {"a&a=1", "a", "1"},  {"ab=1&b=2", "b", "2"}, {"a=", "a", ""},
      {"a=b=c", "a", "b=c"},     {"=1", "", "1"},      {"a=%41", "a", "%41"},  {"a=b=c", "a=b", "c"},
      {"a&b=1", "a&b", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.query) + " " + row.key);
    VYXInfUri uri;
    uri.SetQuery(row.query);
    EXPECT_EQ(uri.GetQuery(row.key), row.value);
  }
}

TEST(VYXInfUri, SetsQueryParametersInPlace) {
  const struct {
    const char* query;
    const char* key;
    const char* value;
    const char* result;
  } rows[] = {
      {"a=1&b=2", "b", "9", "a=1&b=9"},
      {"a=1&b=2", "c", "3", "a=1&b=2&c=3"},
      {"a=1&b=2&a=3", "a", "longer", "a=longer&b=2&a=3"},
      {"a=1&b=2", "a", "", "a=&b=2"},
      {"a=1", "A", "2", "a=1&A=2"},
      {"a=1", "b", "%&=", "a=1&b=%&="},
      {"&", "a", "1", "&&a=1"},
      // Empty parameters in front shift the place.
      {"&a=1", "a", "9", "&a91"},
      {"a=1&&b=2", "b", "9", "a=1&&b92"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.query) + " " + row.key);
    VYXInfUri uri;
    uri.SetQuery(row.query);
    uri.SetQuery(row.key, row.value);
    EXPECT_EQ(uri.GetQuery(), row.result);
    VYXInfUri other;
    other.SetQuery(row.query);
    EXPECT_EQ(other.TrySetQuery(row.key, row.value), S_OK);
    EXPECT_TRUE(other == uri);
  }
}

TEST(VYXInfUri, RaisesTheStandardErrorOfAnEmptyQuery) {
  VYXInfUri uri("x:p");
  const VYXInfUri before = uri;
  EXPECT_EQ(WhatOf<std::out_of_range>([&] { uri.SetQuery("a", "1"); }), "invalid string position");
  EXPECT_TRUE(uri == before);
  CapturedStdout captured;
  EXPECT_EQ(uri.TrySetQuery("a", "1"), E_FAIL);
  EXPECT_TRUE(uri == before);
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource), Detail("invalid string position")));
}

TEST(VYXInfUri, ConvertsLocalPathsToUris) {
  const struct {
    const char* path;
    const char* text;
    Components components;
  } rows[] = {
      {"C:\\data\\a.txt", "file:///C:/data/a.txt", {"file", "", -1, "/C:/data/a.txt", "", ""}},
      {"z:/a", "file:///z:/a", {"file", "", -1, "/z:/a", "", ""}},
      {"/home/a.txt", "file:///home/a.txt", {"file", "", -1, "/home/a.txt", "", ""}},
      {"\\home\\a.txt", "file:///home/a.txt", {"file", "", -1, "/home/a.txt", "", ""}},
      {"dir/a.txt", "file://dir/a.txt", {"file", "dir", -1, "/a.txt", "", ""}},
      {"dir\\a.txt", "file://dir/a.txt", {"file", "dir", -1, "/a.txt", "", ""}},
      {"\\\\srv\\share\\a", "file:////srv/share/a", {"file", "", -1, "//srv/share/a", "", ""}},
      {"", "file://", {"file", "", -1, "", "", ""}},
      {"/", "file:///", {"file", "", -1, "/", "", ""}},
      {"/a?b#c", "file:///a?b#c", {"file", "", -1, "/a", "b", "c"}},
      {"1:/a", nullptr, {}},
      {"C:", nullptr, {}},
      {"C:x", nullptr, {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.path);
    if (row.text == nullptr) {
      EXPECT_EQ(WhatOf<std::invalid_argument>([&] { VYXInfUri::FromLocalPath(row.path); }), "invalid stoul argument");
      continue;
    }
    const VYXInfUri uri = VYXInfUri::FromLocalPath(row.path);
    EXPECT_EQ(Split(uri), row.components);
    // GetString gives the same text for all of them: an empty host is written with the scheme "file" only.
    EXPECT_EQ(uri.GetString(), row.text);
  }
}

TEST(VYXInfUri, ConvertsUrisToLocalPaths) {
  const struct {
    const char* text;
    const char* path;
  } rows[] = {
      {"file:///C:/x", "C:/x"},
      {"file:///home/u", "/home/u"},
      {"file://dir/a.txt", "dir/a.txt"},
      {"file:////srv/a", "//srv/a"},
      {"file:///C:", "C:"},
      {"file:///1:/x", "/1:/x"},
      {"file:///a%20b?q#f", "/a%20b"},
      {"file:", ""},
      {"file:///\xC3\xA4:", "/\xC3\xA4:"},
      {"file:x", "x"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    KORUnicodeString path("old");
    EXPECT_EQ(VYXInfUri(row.text).ToLocalPath(path), S_OK);
    EXPECT_EQ(path, row.path);
  }
}

TEST(VYXInfUri, RefusesLocalPathsOfOtherSchemes) {
  for (const char* text : {"ftp://h/x", "FILE:///x", "/x", ""}) {
    SCOPED_TRACE(text);
    const VYXInfUri uri(text);
    KORUnicodeString path("old");
    CapturedStdout captured;
    EXPECT_EQ(uri.ToLocalPath(path), E_FAIL);
    EXPECT_EQ(path, "old");
    EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn(kSource)));
  }
}

TEST(VYXInfUri, IsEmptyWithoutAnyComponent) {
  VYXInfUri uri;
  EXPECT_TRUE(uri.IsEmpty());
  uri.SetPort(0);
  EXPECT_FALSE(uri.IsEmpty());
  for (const char* text : {"s:", "//h", "p", "?q", "#f"}) {
    EXPECT_FALSE(VYXInfUri(text).IsEmpty()) << text;
  }
}

TEST(VYXInfUri, ComparesAllComponents) {
  const VYXInfUri uri("s://h:1/p?q#f");
  EXPECT_TRUE(uri == VYXInfUri("s://h:1/p?q#f"));
  for (const char* text :
       {"S://h:1/p?q#f", "s://H:1/p?q#f", "s://h:2/p?q#f", "s://h:1/P?q#f", "s://h:1/p?Q#f", "s://h:1/p?q#F"}) {
    EXPECT_FALSE(uri == VYXInfUri(text)) << text;
  }
}

TEST(VYXInfUri, CopiesAreIndependent) {
  VYXInfUri first("s://h:1/p?q#f");
  VYXInfUri second = first;
  first.SetHost("other");
  EXPECT_EQ(second.GetString(), "s://h:1/p?q#f");
  second = first;
  EXPECT_TRUE(second == first);
}

TEST(VYXInfUri, DebugPrintWritesSixLines) {
  CapturedStdout captured;
  VYXInfUri("ftp://h:8080/p?a=1#f").DebugPrint();
  VYXInfUri().DebugPrint();
  EXPECT_EQ(captured.Text(),
            "scheme:   ftp\nhost:     h\nport:     8080\npath:     /p\nquery:    a=1\nfragment: f\n"
            "scheme:   \nhost:     \nport:     -1\npath:     \nquery:    \nfragment: \n");
}

}  // namespace
