#include "module.h"

#include <string>

#include "VYXInfMediaContainer.h"
#include "VYXInfUri.h"

namespace Module {
namespace {

class Album final : public VYX::Inf::MediaContainer {
 public:
  KORUnicodeString GetType() const override { return "Module::Album"; }
};

}  // namespace

std::shared_ptr<VYXInfLog> DefaultLogger() {
  return VYXInfLog::GetDefaultLogger();
}

KORListValKORUnicodeString MakeTexts(int iCount) {
  KORListValKORUnicodeString texts;
  for (int number = 1; number <= iCount; ++number) {
    texts.Append(KORUnicodeString(std::to_string(number) + " is longer than what a text holds inside itself"));
  }
  return texts;
}

void Append(KORUnicodeString& ioText, KORListValKORUnicodeString& ioTexts, KORListValVYXInfError& ioErrors) {
  ioText.Append(" and a long text that the module has appended to it");
  ioTexts.Append(ioText);
  ioErrors.Append(VYXInfError(-1));
}

bool RegisterAlbum(const char* iType) {
  return VYX::Inf::TransferableFactory::Register(iType, [] { return std::make_unique<Album>(); });
}

std::unique_ptr<VYX::Inf::ITransferable> Make(const char* iType) {
  return VYX::Inf::TransferableFactory::Create(iType);
}

void RaiseInLibrary() {
  VYXInfUri uri;
  uri.Set("http://host:99999999999999999999/");
}

}  // namespace Module
