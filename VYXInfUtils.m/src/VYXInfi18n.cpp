#include "VYXInfi18n.h"

#include "KORSysBase/KORError.h"
#include "KORSysBase/KORMsgCatalog.h"
#include "internal/FailureTrace.h"

namespace VYXInfi18n {

namespace {

using VYX::Internal::FailureLog;
using VYX::Internal::LogPendingError;

KORString Narrow(const KORUnicodeString& iText) {
  return KORString(iText.ToStringView());
}

// The catalog tells of a file that it cannot use by its pending error.
void ReportUnusableFile() {
  if (KORError::KORGetLastError(KORMsgCatalog::kUnusableFile, nullptr) != nullptr) {
    LogPendingError(KORMsgCatalog::kUnusableFile);
    FailureLog(VYX_HERE);
  }
}

void Replace(KORUnicodeString& ioText, const char* iPlace, const KORUnicodeString& iParameter) {
  if (!iParameter.IsEmpty()) {
    ioText.ReplaceAll(iPlace, iParameter);
  }
}

}  // namespace

KORUnicodeString GetLocalizedString(const KORUnicodeString& iCatalog, const KORUnicodeString& iKey,
                                    const KORUnicodeString& iFirst, const KORUnicodeString& iSecond,
                                    const KORUnicodeString& iThird) {
  KORUnicodeString text =
      KORMsgCatalog::BuildMessage(Narrow(iCatalog), Narrow(iKey), nullptr, 0, KORUnicodeString(), nullptr);
  ReportUnusableFile();
  Replace(text, "{0}", iFirst);
  Replace(text, "{1}", iSecond);
  Replace(text, "{2}", iThird);
  return text;
}

LocalizedString::LocalizedString(const char* iCatalog, const char* iKey) : _catalog(iCatalog), _key(iKey) {}

LocalizedString::operator KORUnicodeString() const {
  return GetLocalizedString(_catalog, _key);
}

LocalizedString::operator KORString() const {
  return Narrow(GetLocalizedString(_catalog, _key));
}

KORUnicodeString LocalizedString::operator()(const KORUnicodeString& iFirst, const KORUnicodeString& iSecond,
                                             const KORUnicodeString& iThird) const {
  return GetLocalizedString(_catalog, _key, iFirst, iSecond, iThird);
}

}  // namespace VYXInfi18n
