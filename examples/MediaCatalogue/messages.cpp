#include "messages.h"

#include <string>

#include "KORSysBase/KORMsgCatalog.h"
#include "VYXInfLog.h"
#include "file_facts.h"

namespace MediaCatalogue {

KORUnicodeString Say(const Message& iMessage, std::initializer_list<KORUnicodeString> iParameters) {
  long result = S_OK;
  KORUnicodeString text = KORMsgCatalog::BuildMessage("MediaCatalogue", iMessage.key, iParameters.begin(),
                                                      static_cast<int>(iParameters.size()), iMessage.english, &result);
  if (result < 0) {
    VYXInfLog::GetDefaultLogger()->Log(WARN, TakePendingMessage("A message catalog cannot be used"));
  }
  return text;
}

KORUnicodeString Number(std::int64_t iNumber) {
  return KORUnicodeString(std::to_string(iNumber));
}

}  // namespace MediaCatalogue
