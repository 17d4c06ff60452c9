#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"
#include "Quillbase/JSON/JIStream.h"
#include "VYXExport.h"

namespace JSON {

/**
 * Writes a JSON object (RFC 8259): members in the order in which they were added, without white space.
 *
 * ```cpp
 * JSON::JOStream writer;
 * writer.Add("Name", "Fjord");
 * writer.Add("Size", 42U);
 * std::cout << writer.Stringify() << "\n";  // {"Name":"Fjord","Size":42}
 * ```
 *
 * The text is always valid: quotation marks, backslashes and control characters are escaped, and a byte that belongs to
 * no well-formed UTF-8 sequence becomes U+FFFD. A key added twice is written twice. A null key or text counts as empty.
 * An object is changed by one thread only. Where memory runs out, std::bad_alloc is thrown.
 */
class VYX_EXPORT JOStream {
 public:
  /// The empty object.
  JOStream() noexcept = default;

  /// An object that was read, member by member: integers of 64 bits exactly, other numbers as the shortest text that
  /// reads back the same. A stream that holds no object gives the empty object.
  JOStream(const JIStream& iStream);

  /// @{
  /// Copies are independent; a writer that was moved from may only be assigned to and destroyed.
  JOStream(const JOStream& iOther) = default;
  JOStream(JOStream&& ioOther) noexcept = default;
  JOStream& operator=(const JOStream& iOther) = default;
  JOStream& operator=(JOStream&& ioOther) noexcept = default;
  /// @}
  ~JOStream() = default;

  /// @{
  /// Adds an unsigned number.
  void Add(const char* iKey, std::uint64_t iNumber);
  template <std::unsigned_integral Number>
  void Add(const char* iKey, Number iNumber) {
    Add(iKey, static_cast<std::uint64_t>(iNumber));
  }
  /// @}

  /// Adds a truth value.
  void Add(const char* iKey, bool iBoolean);

  /// @{
  /// Adds a text.
  void Add(const char* iKey, const KORUnicodeString& iText);
  void Add(const char* iKey, const char* iText);
  /// @}

  /// Adds an object as it stands now; a copy of this writer's own object, too.
  void Add(const KORUnicodeString& iKey, const JOStream& iObject);

  /// The text of the object; "{}" for the empty one.
  KORUnicodeString Stringify() const;

 private:
  void BeginMember(std::string_view iKey);

  std::string _members;
};

}  // namespace JSON
