#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The strict, slower reading of a JSON text that tells what the fast reader does not: the place of an error, and the
/// value of well-formed texts that the fast reader cannot take.
namespace VYX::Adapters {

/// What the strict reading found.
struct JsonDiagnosis {
  bool isWellFormed = false;
  std::size_t offset = 0;   ///< of the error, in bytes
  std::string_view reason;  ///< of the error; a literal
  bool isRewritten = false;
  std::string rewritten;  ///< the same document in the fast reader's language, where that differs from the text
};

/**
 * Reads a text (without a byte order mark) from start to end, in linear time and without recursion.
 *
 * A well-formed text is rewritten where it holds control characters that are tolerated in strings (they become
 * escapes), integers beyond 64 bits (they become doubles of 17 digits) or the integer "-0" (it becomes "-0.0").
 */
JsonDiagnosis DiagnoseJson(std::string_view iText);

/// True when the text may hold the integer "-0"; false is certain. Costs little beside parsing.
bool MayHoldNegativeZero(std::string_view iText) noexcept;

}  // namespace VYX::Adapters
