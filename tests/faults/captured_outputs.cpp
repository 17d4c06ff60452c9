#include "faults/captured_outputs.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace VYX::Test {

CapturedOutputs::CapturedOutputs()
    : _file(::memfd_create("captured", MFD_CLOEXEC)), _output(::dup(STDOUT_FILENO)), _error(::dup(STDERR_FILENO)) {
  std::fflush(stdout);
  ::dup2(_file, STDOUT_FILENO);
  ::dup2(_file, STDERR_FILENO);
}

CapturedOutputs::~CapturedOutputs() {
  std::fflush(stdout);
  ::dup2(_output, STDOUT_FILENO);
  ::dup2(_error, STDERR_FILENO);
  ::close(_output);
  ::close(_error);
  ::close(_file);
}

std::string CapturedOutputs::Text() const {
  std::fflush(stdout);
  std::string text(static_cast<std::size_t>(::lseek(_file, 0, SEEK_END)), '\0');
  const ssize_t count = ::pread(_file, text.data(), text.size(), 0);
  text.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  return text;
}

}  // namespace VYX::Test
