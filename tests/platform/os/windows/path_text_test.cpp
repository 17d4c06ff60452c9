#include "platform/os/windows/path_text.h"

#include <gtest/gtest.h>

#include "platform/os/native_path.h"

namespace VYX::Os {
namespace {

using namespace std::string_view_literals;

TEST(PathText, IsAbsoluteAndWithoutLimit) {
  const struct {
    const char* path;
    const wchar_t* wide;
  } rows[] = {
      {"C:\\a\\b.txt", L"\\\\?\\C:\\a\\b.txt"},
      {"C:\\a\\..\\b\\.\\c", L"\\\\?\\C:\\b\\c"},
      {"\\\\server\\share\\f", L"\\\\?\\UNC\\server\\share\\f"},
      {"\\\\?\\C:\\a.\\b ", L"\\\\?\\C:\\a.\\b "},
      {"\\\\.\\pipe\\p", L"\\\\.\\pipe\\p"},
      {"C:\\a. ", L"\\\\?\\C:\\a"},
      {"C:\\\xC3\xA4\xF0\x9F\x98\x80", L"\\\\?\\C:\\\u00E4\xD83D\xDE00"},
  };
  for (const auto& row : rows) {
    std::wstring wide;
    EXPECT_TRUE(Windows::ToWidePath(row.path, wide).IsOk()) << row.path;
    EXPECT_EQ(wide, row.wide) << row.path;
  }
}

TEST(PathText, DeviceNameIsTheDevice) {
  std::wstring wide;
  EXPECT_TRUE(Windows::ToWidePath("NUL", wide).IsOk());
  EXPECT_EQ(wide, L"\\\\.\\NUL");
}

TEST(PathText, RefusesWhatIsNoPath) {
  for (const char* path : {"a\xFF", "\xC3", "\xE0\x80\x80", "\xED\xA0\xBD\xED\xB8\x80", "\xF5\x80\x80\x80"}) {
    std::wstring wide = L"untouched";
    EXPECT_EQ(Windows::ToWidePath(path, wide).ToErrorNumber(), 123) << path;
    EXPECT_EQ(wide, L"untouched");
  }
  std::wstring wide;
  EXPECT_EQ(Windows::ToWidePath("", wide).ToErrorNumber(), 3);
}

TEST(PathText, HalfASurrogatePairIsGivenBack) {
  const std::wstring names[] = {L"a\xD800z", L"\xDC00", L"\xDE00\xD83D", L"\xD83D\xDE00"};
  for (const std::wstring& name : names) {
    std::wstring back;
    EXPECT_TRUE(Windows::ToWideName(Windows::ToNameText(name), back));
    EXPECT_EQ(back, name);
  }
}

TEST(PathText, PrefixIsNotShown) {
  EXPECT_EQ(Windows::ToPathText(L"\\\\?\\C:\\x"), "C:\\x");
  EXPECT_EQ(Windows::ToPathText(L"\\\\?\\UNC\\s\\d"), "\\\\s\\d");
  EXPECT_EQ(Windows::ToPathText(L"C:\\x"), "C:\\x");
}

TEST(NativePath, BothSeparatorsAreBackslashesHere) {
  const struct {
    std::string_view path;
    std::string_view native;
  } rows[] = {{"/tmp/x", "\\tmp\\x"}, {"C:/a\\b", "C:\\a\\b"}, {"//s/d", "\\\\s\\d"}, {"", ""}};
  for (const auto& row : rows) {
    std::string native;
    EXPECT_TRUE(ToNativePath(row.path, native).IsOk()) << row.path;
    EXPECT_EQ(native, row.native);
  }
  std::string native = "untouched";
  EXPECT_EQ(ToNativePath("a\0b"sv, native).ToErrorNumber(), 123);
  EXPECT_EQ(native, "untouched");
}

TEST(NativePath, AbsolutePathsNameTheirDriveOrServer) {
  for (const char* path : {"C:\\", "z:\\x", "\\\\s\\d", "\\\\?\\C:\\x"}) {
    EXPECT_TRUE(IsAbsolute(path)) << path;
  }
  for (const char* path : {"", "x", "\\x", "C:", "C:x"}) {
    EXPECT_FALSE(IsAbsolute(path)) << path;
  }
}

}  // namespace
}  // namespace VYX::Os
