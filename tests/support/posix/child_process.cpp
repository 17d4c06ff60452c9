#include "support/child_process.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace VYX::Test {

namespace {

std::FILE* AnonymousFile() {
  std::FILE* const file = std::tmpfile();
  if (file == nullptr) {
    throw std::runtime_error("no temporary file for a child's output");
  }
  return file;
}

std::string TakeContent(std::FILE* ioFile) {
  std::string content;
  char buffer[4096];
  std::rewind(ioFile);
  for (std::size_t count; (count = std::fread(buffer, 1, sizeof buffer, ioFile)) > 0;) {
    content.append(buffer, count);
  }
  std::fclose(ioFile);
  return content;
}

[[noreturn]] void RunChild(const std::function<void()>& iBody,
                           const std::vector<std::pair<std::string, const char*>>& iEnvironment, std::FILE* iOutput,
                           std::FILE* iError) {
  ::dup2(::fileno(iOutput), STDOUT_FILENO);
  ::dup2(::fileno(iError), STDERR_FILENO);
  for (const auto& [name, value] : iEnvironment) {
    value == nullptr ? ::unsetenv(name.c_str()) : ::setenv(name.c_str(), value, 1);
  }
  try {
    iBody();
  } catch (...) {
    std::_Exit(99);
  }
  std::exit(0);
}

}  // namespace

ChildResult RunInChild(const std::function<void()>& iBody,
                       const std::vector<std::pair<std::string, const char*>>& iEnvironment) {
  std::fflush(stdout);
  std::fflush(stderr);
  std::FILE* const output = AnonymousFile();
  std::FILE* const error = AnonymousFile();
  const pid_t child = ::fork();
  if (child < 0) {
    throw std::runtime_error("cannot fork");
  }
  if (child == 0) {
    RunChild(iBody, iEnvironment, output, error);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  ChildResult result;
  result.hasExited = WIFEXITED(status);
  result.code = result.hasExited ? WEXITSTATUS(status) : WTERMSIG(status);
  result.output = TakeContent(output);
  result.error = TakeContent(error);
  return result;
}

}  // namespace VYX::Test
