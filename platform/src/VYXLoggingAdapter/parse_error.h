#pragma once

#include <cstddef>
#include <string>

namespace VYX::Logging {

/// Why a format or filter text is unreadable, and where: the byte position counts from 1.
struct ParseError {
  std::size_t position = 0;
  std::string reason;
};

}  // namespace VYX::Logging
