#include "VYXInfLog.h"

namespace {

struct LogsAround {
  explicit LogsAround(const char* iName) : _name(iName) { VYXInfLog::GetDefaultLogger()->Log(INFO, iName); }
  ~LogsAround() { VYXInfLog::GetDefaultLogger()->Log(INFO, _name); }
  LogsAround(const LogsAround&) = delete;
  LogsAround& operator=(const LogsAround&) = delete;

  const char* _name;
};

const LogsAround kGlobal("global");

}  // namespace

// Logs before main, in it, after closing and while static objects are destroyed.
int main() {
  static const LogsAround local("local");
  VYXInfLog::Init(ERROR, "", "");
  VYXInfLog::Close();
  VYXInfLog::GetDefaultLogger()->Log(INFO, "after close");
  return 0;
}
