#pragma once

#include <cstdint>
#include <string_view>

#include "VYXExport.h"

/**
 * Base64 as RFC 4648 section 4 has it: the standard alphabet, with padding, in one line.
 *
 * ```cpp
 * char* text = nullptr;
 * if (QRMSysConverter::ConvertToBase64("abc", 3, &text) >= 0) {
 *   std::cout << text << "\n";  // YWJj
 *   std::free(text);
 * }
 * ```
 *
 * Vectorised; the instruction set is chosen at run time. Every failure leaves a pending error. Safe to use from any
 * thread.
 */
class VYX_EXPORT QRMSysConverter {
 public:
  QRMSysConverter() = delete;

  /**
   * Encodes bytes.
   *
   * @param iData the bytes; may be null when there are none.
   * @param iSize number of bytes.
   * @param oText receives a new zero-terminated text, which the caller frees with the C library's `free`; untouched on
   * failure.
   * @return S_OK; E_INVALIDARG for a null oText, or null iData with a size; 0x8007000E when there is no memory for the
   * text.
   */
  static long ConvertToBase64(const char* iData, std::uint64_t iSize, char** oText) noexcept;

  /**
   * Decodes a zero-terminated text, strictly: no white space, no other alphabet, exactly the padding that is due, and
   * no unused bits other than zero. So each sequence of bytes has one text only.
   *
   * @param iText the text; the empty text gives no bytes.
   * @param oBuffer receives a new array, never null, which the caller frees with QB::deallocateArrayChar; untouched on
   * failure.
   * @param oSize receives the number of bytes; untouched on failure.
   * @return S_OK; E_INVALIDARG for a null pointer; E_FAIL for a text that is no Base64, with the place of the fault in
   * the pending error; 0x8007000E when there is no memory for the bytes.
   */
  static long ConvertFromBase64(const char* iText, char** oBuffer, std::uint64_t* oSize) noexcept;

  /// The same for a text of known length; a zero byte in it is a character outside the alphabet.
  static long ConvertFromBase64(std::string_view iText, char** oBuffer, std::uint64_t* oSize) noexcept;
};
