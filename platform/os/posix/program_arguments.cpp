#include "platform/os/program_arguments.h"

#if !defined(__unix__)
#error "this source is for POSIX hosts"
#endif

namespace VYX::Os {

std::vector<std::string> ProgramArguments(int iCount, const char* const* iArguments) {
  return {iArguments, iArguments + iCount};
}

}  // namespace VYX::Os
