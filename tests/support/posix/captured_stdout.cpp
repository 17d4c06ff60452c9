#include "support/captured_stdout.h"

#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace VYX::Test {

namespace {

int OpenAnonymousFile() {
  const char* const folder = std::getenv("TMPDIR");
  std::string name = std::string(folder == nullptr ? "/tmp" : folder) + "/captured_XXXXXX";
  const int file = ::mkstemp(name.data());
  if (file < 0) {
    throw std::runtime_error("no file to capture standard output in " + name);
  }
  ::unlink(name.c_str());
  return file;
}

}  // namespace

CapturedStdout::CapturedStdout() {
  std::fflush(stdout);
  _file = OpenAnonymousFile();
  _saved = ::dup(STDOUT_FILENO);
  ::dup2(_file, STDOUT_FILENO);
}

CapturedStdout::~CapturedStdout() {
  std::fflush(stdout);
  ::dup2(_saved, STDOUT_FILENO);
  ::close(_saved);
  ::close(_file);
}

std::string CapturedStdout::Text() {
  std::fflush(stdout);
  std::string text(static_cast<std::size_t>(::lseek(_file, 0, SEEK_END)), '\0');
  const ssize_t count = ::pread(_file, text.data(), text.size(), 0);
  text.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  return text;
}

}  // namespace VYX::Test
