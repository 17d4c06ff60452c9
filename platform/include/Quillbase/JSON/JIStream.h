#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "KORSysTS/KORUnicodeString.h"
#include "Quillbase/StringView.h"
#include "VYXExport.h"

namespace VYX::Adapters {
class JsonDocument;
class JsonNode;
class JsonWalk;
}  // namespace VYX::Adapters

namespace JSON {

class JVisitor;

/// The kind of a JSON value.
enum class JKind : std::int32_t { Null = 0, Boolean = 1, Number = 2, String = 3, Array = 4, Object = 5 };

/**
 * A JSON value that was read: first the whole text, then, in visits and walks, the values inside it.
 *
 * ```cpp
 * class Names : public JSON::JVisitor {
 *  public:
 *   Names() : JVisitor(true) {}
 *   bool Visit(const QB::StringView& iKey, const QB::StringView& iText) override {
 *     std::cout << iKey.ToUnicode() << ": " << iText.ToUnicode() << "\n";
 *     return true;
 *   }
 *   using JVisitor::Visit;
 * };
 *
 * JSON::JIStream stream;
 * Names names;
 * if (!stream.Parse("{\"name\": \"Fjord\", \"width\": 1920}", false) || !stream.Apply(names, nullptr)) {
 *   return 1;  // KORError tells why
 * }
 * ```
 *
 * prints
 *
 * ```text
 * name: Fjord
 * ```
 *
 * A stream shares the ownership of the document it was read from: it stays valid, with all keys and texts that came
 * from it, while any stream of the document lives, also after Parse was called again on another one. Copying is cheap.
 * One stream may be read by several threads at once, and is changed by one only.
 */
class VYX_EXPORT JIStream {
 public:
  /// A stream of nothing, whose kind is Null.
  JIStream() noexcept;
  /// @{
  /// Copies share the document; a stream that was moved from holds nothing.
  JIStream(const JIStream& iOther) noexcept;
  JIStream(JIStream&& ioOther) noexcept;
  JIStream& operator=(const JIStream& iOther) noexcept;
  JIStream& operator=(JIStream&& ioOther) noexcept;
  /// @}
  ~JIStream();

  /**
   * Reads a JSON text (RFC 8259, UTF-8).
   *
   * Tolerated beyond the RFC are one leading byte order mark and, inside strings, unescaped control characters other
   * than backspace, tab, line feed, form feed and carriage return. Every number is read as the nearest double; one
   * beyond the range of double is refused, as are lone surrogate escapes, ill-formed UTF-8 and more than 512 levels of
   * nesting. Any kind of value may stand at the top.
   *
   * @param iText the text; it is not needed afterwards.
   * @param iReserved either value gives the same result.
   * @return true when the text is well-formed. False leaves a pending error (E_FAIL) with line, column, byte and
   * reason, and the stream as it was. Lines and columns count from 1 (columns in code points), bytes from 0.
   */
  bool Parse(const KORUnicodeString& iText, bool iReserved);

  /**
   * Calls the visitor once per member of the object that the stream holds, in the order of the text, repeated keys
   * included, and EndOfFile behind the last. Exceptions of the visitor pass.
   *
   * @param ioVisitor receives the members.
   * @param oRefused receives the key of the member whose visit answered false, valid while the document lives; may be
   * null.
   * @return true when all visits answered true. False when one did, which ends the visits, or when the stream holds no
   * object, which leaves a pending error (E_FAIL).
   */
  bool Apply(JVisitor& ioVisitor, QB::StringView* oRefused) const;

  /// The kind of the value.
  JKind Kind() const noexcept;

  /// The truth value; false for any other kind.
  bool GetBoolean() const noexcept;

  /// The number as the nearest double; 0 for any other kind.
  double GetNumber() const noexcept;

  /// The text without escapes; empty for any other kind. It is valid while the document lives.
  QB::StringView GetText() const noexcept;

  /// The number of elements or members; 0 for any other kind.
  std::size_t Size() const noexcept;

 private:
  friend class JCursor;
  friend class JOStream;
  class MemberVisits;

  JIStream(std::shared_ptr<const VYX::Adapters::JsonDocument> iDocument, std::size_t iPlace) noexcept;
  VYX::Adapters::JsonNode Node() const noexcept;

  std::shared_ptr<const VYX::Adapters::JsonDocument> _document;
  std::size_t _place = 0;
};

/**
 * Goes through the elements of an array or the members of an object in the order of the text; other kinds have none.
 *
 * ```cpp
 * JSON::JIStream stream;
 * stream.Parse("[1, \"two\", [3]]", false);
 * for (JSON::JCursor cursor(stream); cursor.Next();) {
 *   std::cout << static_cast<int>(cursor.Value().Kind()) << "\n";
 * }
 * ```
 *
 * prints the kinds
 *
 * ```text
 * 2
 * 3
 * 4
 * ```
 *
 * A cursor shares the ownership of the document, and belongs to one thread.
 */
class VYX_EXPORT JCursor {
 public:
  /// Stands before the first value of iParent.
  explicit JCursor(const JIStream& iParent);
  /// @{
  /// Goes on where the other cursor stands, which must not be used afterwards.
  JCursor(JCursor&& ioOther) noexcept;
  JCursor& operator=(JCursor&& ioOther) noexcept;
  /// @}
  ~JCursor();

  /// Steps to the next value; false when there is none.
  bool Next() noexcept;

  /// The key of the member; empty for an element. Valid while the document lives.
  QB::StringView Key() const noexcept;

  /// The value, until the next step; a copy stays.
  const JIStream& Value() const noexcept { return _value; }

 private:
  JIStream _value;
  std::unique_ptr<VYX::Adapters::JsonWalk> _walk;
};

}  // namespace JSON
