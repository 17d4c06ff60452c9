#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/**
 * The JSON reader: text in, a read-only document out.
 *
 *     JsonDocument document;
 *     JsonFailure failure;
 *     if (!document.Parse(text, failure)) { ... failure.line, failure.reason ... }
 *     for (JsonWalk walk(document.Root()); walk.Next();) { ... walk.Key(), walk.Value() ... }
 *
 * Accepted is what RFC 8259 accepts, in UTF-8 with at most one leading byte order mark, and one thing more: inside a
 * string the control characters below U+0020 may stand unescaped, except backspace, tab, line feed, form feed and
 * carriage return. Numbers of any length are read as the nearest double; one beyond the range of double is refused, one
 * too close to zero is zero. "-0" is the negative zero. Lone surrogate escapes and nesting deeper than kJsonMaxDepth
 * are refused. Members come in the order of the text, repeated keys included.
 */
namespace VYX::Adapters {

/// The deepest nesting of arrays and objects that is accepted.
inline constexpr std::size_t kJsonMaxDepth = 512;

/// The kind of a value.
enum class JsonKind : std::uint8_t { Null, Boolean, Number, String, Array, Object };

/// Why and where a text was refused.
struct JsonFailure {
  std::size_t line = 0;    ///< from 1; lines end with a line feed
  std::size_t column = 0;  ///< from 1, in code points; a byte order mark does not count
  std::size_t offset = 0;  ///< from 0, in bytes from the start of the text, the byte order mark included
  std::string reason;      ///< a phrase without a capital and without a full stop
};

/// One value of a document, which must outlive it. Copying costs two words.
class JsonNode {
 public:
  /// A null value of no document.
  JsonNode() noexcept = default;

  JsonKind Kind() const noexcept;

  /// The truth value; false for any other kind.
  bool Boolean() const noexcept;

  /// The number, as the nearest double; 0 for any other kind.
  double Number() const noexcept;

  /// Answers true and the number where it was written as an integer that fits; leaves oNumber alone otherwise.
  bool Unsigned(std::uint64_t& oNumber) const noexcept;
  bool Signed(std::int64_t& oNumber) const noexcept;

  /// The string, unescaped, in well-formed UTF-8 with a zero byte behind it; the empty text for any other kind.
  std::string_view Text() const noexcept;

  /// The number of elements or members; 0 for any other kind.
  std::size_t Count() const noexcept;

  /// The place of the value in its document, for JsonDocument::At.
  std::size_t Place() const noexcept { return _place; }

 private:
  friend class JsonDocument;
  friend class JsonWalk;
  JsonNode(const void* iTape, std::size_t iPlace) noexcept : _tape(iTape), _place(iPlace) {}

  const void* _tape = nullptr;
  std::size_t _place = 0;
};

/// Goes through the elements of an array or the members of an object, in the order of the text; there are none in any
/// other kind of value.
class JsonWalk {
 public:
  explicit JsonWalk(JsonNode iParent) noexcept;

  /// Steps to the first value, then to the next one; false when there is none.
  bool Next() noexcept;

  /// The key of a member, under the rules of JsonNode::Text; the empty text for an element.
  std::string_view Key() const noexcept { return _key; }
  JsonNode Value() const noexcept { return _value; }

 private:
  JsonNode _value;
  std::string_view _key;
  std::size_t _next = 0;
  std::size_t _end = 0;
  bool _hasKeys = false;
};

/// A parsed text, independent of the bytes it was parsed from. One object may be read by several threads at once.
/// Working memory is shared by all documents of the process and reused.
class JsonDocument {
 public:
  JsonDocument() noexcept;
  JsonDocument(JsonDocument&& ioOther) noexcept;
  JsonDocument& operator=(JsonDocument&& ioOther) noexcept;
  ~JsonDocument();

  /**
   * Parses a text in the place of what the document held; nodes of that become invalid.
   *
   * @return false for a text that is refused: oFailure tells where and why, and the document holds null.
   * @throw std::bad_alloc when memory runs out; the document holds null.
   */
  bool Parse(std::string_view iText, JsonFailure& oFailure);

  /// The value at the top.
  JsonNode Root() const noexcept;

  /// The value at a place that JsonNode::Place answered for a node of this document.
  JsonNode At(std::size_t iPlace) const noexcept;

 private:
  struct Memory;
  class Pool;
  struct ReturnToPool {
    void operator()(Memory* iMemory) const noexcept;
  };

  std::unique_ptr<Memory, ReturnToPool> _memory;
};

}  // namespace VYX::Adapters
