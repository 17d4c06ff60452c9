#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXInfSystemUtil.h"
#include "fuzz/support/fuzz_input.h"
#include "fuzz/support/require.h"
#include "platform/os/native_path.h"

// What path functions promise for any text.

namespace {

using namespace VYX::Fuzz;
using Util = VYXInfSystemUtil;

constexpr std::string_view kIllegal = "\\/:*?\"<>|";

std::string WithBackslashes(std::string_view iPath) {
  std::string path(iPath);
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

bool IsRooted(std::string_view iPath) {
  return iPath.starts_with('\\') || iPath.starts_with('/');
}

void CheckResolving(const KORUnicodeString& iPath, bool iWithSeparator) {
  const KORUnicodeString resolved = Util::ResolvePath(iPath, iWithSeparator);
  const std::string_view path = resolved.ToStringView();
  Require(path.find("\\\\") == std::string_view::npos && path.find('/') == std::string_view::npos, "one separator");
  Require(iPath.IsEmpty() || path.ends_with('\\') == iWithSeparator, "the separator at the end");
  Require(Util::ResolvePath(resolved, iWithSeparator) == resolved, "resolving twice changes nothing");
  Require(IsRooted(iPath.ToStringView()) || !IsRooted(path), "a relative path stays relative");
}

// Folder and name make the path again, up to the separator between them.
void CheckSplitting(const KORUnicodeString& iPath) {
  KORUnicodeString folder;
  KORUnicodeString file;
  const std::string path = WithBackslashes(iPath.ToStringView());
  const bool isSplit = Util::SplitFilePath(iPath, &folder, &file) >= 0;
  Require(isSplit == (!path.empty() && path.find('\0') == std::string::npos), "all but empty and zero bytes is split");
  if (!isSplit) {
    return;
  }
  const std::string joined = folder.ConvertToChar() + file.ConvertToChar();
  const std::string separated = folder.ConvertToChar() + "\\" + file.ConvertToChar();
  Require(joined == path || separated == path, "the parts make the path");
  Require(file.ToStringView().find_first_of("\\/") == std::string_view::npos, "a file name holds no separator");
  Require(Util::GetFileNameFromPath(iPath) == file, "the file name alone");
  KORUnicodeString name;
  KORUnicodeString extension;
  Util::SplitFileNameExt(file, name, extension);
  const bool hasDot = file.ToStringView().find('.') != std::string_view::npos;
  RequireEqual(name.ConvertToChar() + (hasDot ? "." : "") + extension.ConvertToChar(), file.ToStringView(),
               "name and extension make the file name");
  Require(extension.ToStringView().find('.') == std::string_view::npos, "an extension holds no dot");
}

void CheckNames(const KORUnicodeString& iName) {
  const KORUnicodeString removed = Util::RemoveFileNameIllegalChars(iName);
  const KORUnicodeString replaced = Util::ReplaceFileNameIllegalChars(iName);
  Require(!Util::DoesFileNameContainIllegalChars(removed), "nothing illegal is left after removing");
  Require(!Util::DoesFileNameContainIllegalChars(replaced), "nothing illegal is left after replacing");
  Require(replaced.GetLengthInByte() == iName.GetLengthInByte(), "one for one");
  const bool isIllegal = iName.ToStringView().find_first_of(kIllegal) != std::string_view::npos;
  Require(Util::DoesFileNameContainIllegalChars(iName) == isIllegal, "the nine characters and no other");
}

void CheckParts(const KORUnicodeString& iPath, std::string_view iOther) {
  const KORUnicodeString last = Util::GetLastNameFromPath(iPath);
  Require(last.ToStringView().find_first_of("\\/") == std::string_view::npos, "a last name holds no separator");
  const std::string path = WithBackslashes(iPath.ToStringView());
  const std::size_t separator = path.rfind('\\');
  RequireEqual(Util::GetParentDir(iPath).ToStringView(),
               separator == std::string::npos ? "" : path.substr(0, separator), "the parent");
  const std::vector<KORUnicodeString> parts{iPath, KORUnicodeString(iOther)};
  RequireEqual(Util::ConcatenateAsPath(parts).ToStringView(), iPath.ConvertToChar() + "\\" + std::string(iOther),
               "parts in one path");
}

void CheckNative(const KORUnicodeString& iPath) {
  std::string native = "untouched";
  if (!VYX::Os::ToNativePath(iPath.ToStringView(), native).IsOk()) {
    RequireEqual(native, "untouched", "a refused path gives nothing");
    return;
  }
  Require(native.find('\0') == std::string::npos, "the host gets no zero byte");
  Require(VYX::Os::IsAbsolute(native) == IsRooted(iPath.ToStringView()), "a path is absolute as it was written");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
  FuzzInput input(iData, iSize);
  const std::string_view other = input.Piece(20);
  const KORUnicodeString path(input.Rest());
  CheckResolving(path, true);
  CheckResolving(path, false);
  CheckSplitting(path);
  CheckNames(path);
  CheckParts(path, other);
  CheckNative(path);
  RequireEqual(Util::FixFilePath(path).ToStringView(), WithBackslashes(path.ToStringView()), "backslashes for slashes");
  return 0;
}
