#include "run_log.h"

#include <stdexcept>

#include "KORSysBase/KOREnvironment.h"
#include "KORSysBase/KORPath.h"

namespace MediaCatalogue {

namespace {

constexpr const char* kName = "MediaCatalogue";

bool IsSet(const char* iVariable) {
  const char* const value = KORGetEnv(iVariable);
  return value != nullptr && *value != '\0';
}

std::filesystem::path FileOfThisRun(const std::filesystem::path& iFolder) {
  KORUnicodeString name;
  KORUnicodeString native;
  if (!VYXInfLog::BuildLogFileName(name, kName, iFolder.string().c_str()) || KORNativePath(name, native) < 0) {
    throw std::runtime_error("The log file cannot be named; the trace above tells why");
  }
  return native.ConvertToChar();
}

std::filesystem::path ChooseFile(const Arguments& iArguments, const std::filesystem::path& iFolder) {
  if (!iArguments.log.empty()) {
    return std::filesystem::weakly_canonical(std::filesystem::absolute(iArguments.log));
  }
  const bool isLeftToEnvironment = IsSet("VYX_LOG_OUTPUT") || IsSet("VYX_LOG_CONFIG_FILE");
  return isLeftToEnvironment || iFolder.empty() ? std::filesystem::path() : FileOfThisRun(iFolder);
}

}  // namespace

RunLog::RunLog(const Arguments& iArguments, const std::filesystem::path& iFolder) {
  VYXInfLog::Init(WARN, "", kName);
  _file = ChooseFile(iArguments, iFolder);
  if (_file.empty()) {
    return;
  }
  const VYXInfLogLevel level = VYXInfLog::LevelFromString(KORGetEnv("VYX_LOG_LEVEL"), iArguments.logLevel);
  _sink = VYXInfLog::CreateFileLogger(_file.string().c_str(), level);
  if (_sink == nullptr) {
    VYXInfLog::Close();
    throw std::runtime_error("Cannot write the log file '" + _file.string() + "'; the trace above tells why");
  }
}

RunLog::~RunLog() {
  VYXInfLog::Close();
}

void RunLog::Write(VYXInfLogLevel iLevel, const KORUnicodeString& iText) {
  const std::shared_ptr<VYXInfLog> logger = VYXInfLog::GetDefaultLogger();
  if (!logger->IsFiltered(iLevel)) {
    logger->Log(iLevel, iText);
  }
}

}  // namespace MediaCatalogue
