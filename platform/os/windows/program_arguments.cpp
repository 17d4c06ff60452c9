#include "platform/os/program_arguments.h"

#include "platform/os/windows/wide_text.h"

#if !defined(_WIN32)
#error "this source is for Windows"
#endif

namespace VYX::Os {

extern "C" {
// The run-time's own start-up function, which no header declares.
struct StartUpInformation {
  int newMode;
};
int __wgetmainargs(int* oCount, wchar_t*** oArguments, wchar_t*** oEnvironment, int iExpandsWildcards,
                   StartUpInformation* iInformation);
}

std::vector<std::string> ProgramArguments(int iCount, const char* const* iArguments) {
  int count = 0;
  wchar_t** arguments = nullptr;
  wchar_t** environment = nullptr;
  StartUpInformation information = {};
  if (__wgetmainargs(&count, &arguments, &environment, 0, &information) < 0 || arguments == nullptr) {
    return {iArguments, iArguments + iCount};
  }
  std::vector<std::string> texts;
  for (int index = 0; index < count; ++index) {
    texts.push_back(Windows::ToUtf8(arguments[index]));
  }
  return texts;
}

}  // namespace VYX::Os
