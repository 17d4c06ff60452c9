#include "KORSysBase/KORMsgCatalog.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "KORSysBase/KOREnvironment.h"
#include "KORSysBase/KORError.h"
#include "message_file.h"
#include "message_languages.h"

namespace {

using VYX::Platform::FindMessageFile;
using VYX::Platform::LanguagesOfEnvironment;
using VYX::Platform::MessageFile;
using VYX::Platform::PreferredLanguages;

constexpr std::size_t kMaxNameLength = 200;

bool IsCatalogName(std::string_view iName) {
  const auto isBad = [](char iChar) {
    return iChar == '/' || iChar == '\\' || iChar == ':' || static_cast<unsigned char>(iChar) < 0x20;
  };
  return !iName.empty() && iName.size() <= kMaxNameLength && iName.find("..") == std::string_view::npos &&
         std::none_of(iName.begin(), iName.end(), isBad);
}

// The names of a catalog's files, best language first.
std::vector<std::string> FileNames(std::string_view iCatalog) {
  std::vector<std::string> names;
  for (const std::string& language : PreferredLanguages(LanguagesOfEnvironment())) {
    names.push_back(std::string(iCatalog).append(".").append(language).append(".json"));
  }
  names.push_back(std::string(iCatalog).append(".json"));
  return names;
}

// Looks a message up; leaves a pending error for the first file that cannot be used.
long FindText(const KORString& iCatalog, const KORString& iKey, KORUnicodeString& oText) {
  if (!IsCatalogName(iCatalog.ToStringView())) {
    return S_FALSE;
  }
  const char* const folders = KORGetEnv("KORInstallPath");
  if (folders == nullptr) {
    return S_FALSE;
  }
  long failure = S_OK;
  for (const std::string& name : FileNames(iCatalog.ToStringView())) {
    const std::shared_ptr<const MessageFile> file = FindMessageFile(name, folders);
    if (file == nullptr) {
      continue;
    }
    if (!file->problem.empty() && failure == S_OK) {
      failure =
          KORError::KORSetLastError(KORMsgCatalog::kUnusableFile, KORUnicodeString(std::string_view(file->problem)));
    }
    if (const auto found = file->texts.find(iKey.ToStringView()); found != file->texts.end()) {
      oText = found->second;
      return failure;
    }
  }
  return failure < 0 ? failure : S_FALSE;
}

// The number of a place "{n}" at the start of a text, and its length in bytes; a length of 0 for anything else.
std::size_t ReadPlace(std::string_view iText, int& oNumber) {
  const char* const end = iText.data() + iText.size();
  if (iText.size() < 3 || iText[0] != '{' || iText[1] < '0' || iText[1] > '9') {
    return 0;
  }
  const auto [stop, error] = std::from_chars(iText.data() + 1, end, oNumber);
  if (error != std::errc() || stop == end || *stop != '}') {
    return 0;
  }
  return static_cast<std::size_t>(stop - iText.data()) + 1;
}

KORUnicodeString Fill(const KORUnicodeString& iText, const KORUnicodeString* iParameters, int iCount) {
  KORUnicodeString result;
  std::string_view rest = iText.ToStringView();
  while (!rest.empty()) {
    const std::size_t plain = std::min(rest.find('{'), rest.size());
    result.Append(rest.substr(0, plain));
    rest.remove_prefix(plain);
    int number = 0;
    const std::size_t length = ReadPlace(rest, number);
    if (length != 0 && number < iCount) {
      result.Append(iParameters[number]);
      rest.remove_prefix(length);
    } else if (!rest.empty()) {
      result.Append(rest.substr(0, 1));
      rest.remove_prefix(1);
    }
  }
  return result;
}

}  // namespace

KORUnicodeString KORMsgCatalog::BuildMessage(const KORString& iCatalog, const KORString& iKey,
                                             const KORUnicodeString* iParameters, int iParameterCount,
                                             const KORUnicodeString& iDefaultMessage, long* oResult) {
  KORUnicodeString text = iDefaultMessage;
  const long result = FindText(iCatalog, iKey, text);
  if (oResult != nullptr) {
    *oResult = result;
  }
  if (iParameters == nullptr || iParameterCount <= 0) {
    return text;
  }
  return Fill(text, iParameters, iParameterCount);
}
