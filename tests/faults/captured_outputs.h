#pragma once

#include <string>

namespace VYX::Test {

/// Catches what goes to standard output and standard error while the object lives; takes no descriptor beyond those
/// that it opens and closes.
class CapturedOutputs {
 public:
  CapturedOutputs();
  ~CapturedOutputs();
  CapturedOutputs(const CapturedOutputs&) = delete;
  CapturedOutputs& operator=(const CapturedOutputs&) = delete;

  /// Everything written so far, of both.
  std::string Text() const;

 private:
  int _file;
  int _output;
  int _error;
};

}  // namespace VYX::Test
