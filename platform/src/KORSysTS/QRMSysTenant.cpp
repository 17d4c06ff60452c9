#include "KORSysTS/QRMSysTenant.h"

#include <string>
#include <string_view>
#include <utility>

#include "KORSysBase/KORResult.h"
#include "pending_error.h"
#include "platform/adapters/json_reader.h"
#include "platform/os/environment.h"
#include "platform/src/KORSysBase/small_text_file.h"

namespace {

using VYX::Adapters::JsonDocument;
using VYX::Adapters::JsonFailure;
using VYX::Adapters::JsonKind;
using VYX::Adapters::JsonNode;
using VYX::Adapters::JsonWalk;

constexpr long kFileNotFound = VYX::ResultCode(0x80070002U);

struct TenantFile {
  bool isCloud = false;
  KORUnicodeString tenant;
  std::map<KORUnicodeString, KORUnicodeString> services;
};

// The functions below answer what is wrong, and the empty text for success.

std::string TakeServices(const JsonNode& iServices, TenantFile& ioFile) {
  if (iServices.Kind() != JsonKind::Object) {
    return "'services' is no object";
  }
  for (JsonWalk walk(iServices); walk.Next();) {
    if (walk.Value().Kind() != JsonKind::String) {
      return "the address of service '" + std::string(walk.Key()) + "' is no text";
    }
    ioFile.services.insert_or_assign(KORUnicodeString(walk.Key()), KORUnicodeString(walk.Value().Text()));
  }
  return {};
}

std::string TakeMember(std::string_view iKey, const JsonNode& iValue, TenantFile& ioFile) {
  if (iKey == "services") {
    return TakeServices(iValue, ioFile);
  }
  if (iKey == "cloud") {
    ioFile.isCloud = iValue.Kind() == JsonKind::Boolean && iValue.Boolean();
    return iValue.Kind() == JsonKind::Boolean ? "" : "'cloud' is no truth value";
  }
  if (iKey == "tenant") {
    ioFile.tenant = KORUnicodeString(iValue.Kind() == JsonKind::String ? iValue.Text() : std::string_view());
    return iValue.Kind() == JsonKind::String ? "" : "'tenant' is no text";
  }
  return {};
}

std::string ParseTenantFile(std::string_view iText, TenantFile& ioFile) {
  JsonDocument document;
  JsonFailure failure;
  if (!document.Parse(iText, failure)) {
    return "line " + std::to_string(failure.line) + ", column " + std::to_string(failure.column) + ": " +
           failure.reason;
  }
  if (document.Root().Kind() != JsonKind::Object) {
    return "it holds no object";
  }
  std::string problem;
  for (JsonWalk walk(document.Root()); problem.empty() && walk.Next();) {
    problem = TakeMember(walk.Key(), walk.Value(), ioFile);
  }
  return problem;
}

std::string ReadTenantFile(const char* iPath, TenantFile& oFile) {
  std::string text;
  VYX::Os::Status host;
  std::string problem = VYX::Platform::ReadSmallTextFile(iPath, text, host);
  return problem.empty() ? ParseTenantFile(text, oFile) : problem;
}

// The named file; null where none is named.
const char* TenantFileName() {
  const char* const name = VYX::Os::EnvironmentValue("QRMSysTenantFile");
  return name == nullptr || *name == '\0' ? nullptr : name;
}

}  // namespace

KORUnicodeString QRMSysTenantData::GetMappedService(MappedServices iService) const {
  const auto found = _services.find(KORUnicodeString(std::to_string(static_cast<std::int32_t>(iService))));
  return found == _services.end() ? KORUnicodeString() : found->second;
}

long QRMSysGetCurrentTenantData(QRMSysTenantData& oData) {
  const char* const name = TenantFileName();
  if (name == nullptr) {
    return VYX::Platform::FailWith(
        kFileNotFound, {"Cannot read the tenant's data: the environment variable QRMSysTenantFile names no file"});
  }
  TenantFile file;
  if (const std::string problem = ReadTenantFile(name, file); !problem.empty()) {
    return VYX::Platform::FailWith(E_FAIL, {"Cannot read the tenant's data in '", name, "': ", problem});
  }
  oData._tenant = std::move(file.tenant);
  oData._services = std::move(file.services);
  return S_OK;
}

bool QRMSysIsCloud() {
  if (const char* const flag = VYX::Os::EnvironmentValue("QRMSysCloud"); flag != nullptr) {
    return std::string_view(flag) == "1" || std::string_view(flag) == "true";
  }
  TenantFile file;
  const char* const name = TenantFileName();
  return name != nullptr && ReadTenantFile(name, file).empty() && file.isCloud;
}
