#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

#include "KORSysTS/KORUnicodeChar.h"
#include "VYXExport.h"

namespace QB {
class StringView;
}

/**
 * A Unicode text: the type of every textual argument and result.
 *
 * The text is held as UTF-8, zero-terminated, in 24 bytes of which 22 hold short texts without an allocation. Copies
 * are deep; moves leave the empty text and never throw.
 *
 * - A character is one code point (KORUnicodeChar); positions and counts of characters start at 0 and are `int`s.
 * - A byte that stands in no well-formed sequence is a character of its own: text built from `const char*` keeps its
 * bytes, whatever they are, because file names are not always UTF-8.
 * - The narrow form is the UTF-8 itself: getting at it costs nothing. A zero byte inside a text is kept; whoever hands
 * the narrow form to an interface that ends at the first zero has to check for it.
 * - Order and equality compare bytes, which is the order of code points. Letter case follows Unicode's simple mappings
 *   (utf8proc), never the locale.
 *
 * ```cpp
 * const KORUnicodeString folder("C:\\Notes");
 * KORUnicodeString path = folder + "/" + "Today.txt";
 * if (path.WildMatch("*.txt", '*', '\\') == 1) {
 *   path.ReplaceAll("\\", "/").ToLower();
 * }
 * path;                           // "c:/notes/today.txt"
 * path.SearchSubString("notes");  // 3
 * ```
 *
 * What has to allocate throws std::bad_alloc when there is no memory left; the text is then as it was. Arguments may be
 * the text itself or a part of it. Pointers and views into a text end with its next change.
 *
 * One object may be read by several threads at once, and is changed by one only. Walking a long text by position from
 * one end to the other is linear overall.
 */
class VYX_EXPORT KORUnicodeString {
 public:
  /// How SearchSubString looks for a text.
  enum class KORSearchMode : std::int32_t {
    Forward = 0,  ///< the first occurrence at or after the start
    Backward = 1  ///< the last occurrence at or after the start
  };

  /// The empty text.
  KORUnicodeString() noexcept { ResetToInline(); }

  /// A copy of a zero-terminated UTF-8 text, byte for byte; null gives the empty text.
  KORUnicodeString(const char* iText);

  /// A copy of the bytes of a view, zero bytes included.
  explicit KORUnicodeString(std::string_view iText);

  /// A character repeated; a count of 0 gives the empty text.
  explicit KORUnicodeString(const KORUnicodeChar& iChar, std::size_t iCount = 1);

  /// A copy of its own.
  KORUnicodeString(const KORUnicodeString& iOther) : _storage(iOther._storage) {
    if (!iOther.IsInline()) {
      CopyLong(iOther);
    }
  }
  /// Takes the other's content over and leaves it empty.
  KORUnicodeString(KORUnicodeString&& ioOther) noexcept : _storage(ioOther._storage) { ioOther.ResetToInline(); }
  ~KORUnicodeString() {
    if (IsOwned()) {
      Free(_storage.large.text);
    }
  }

  /// Becomes a copy; the memory at hand is used where it is enough.
  KORUnicodeString& operator=(const KORUnicodeString& iOther);
  /// Takes the other's content over and leaves it empty; also right for the text itself.
  KORUnicodeString& operator=(KORUnicodeString&& ioOther) noexcept {
    Storage taken = ioOther._storage;
    ioOther.ResetToInline();
    std::swap(_storage, taken);
    if (taken.small.tag == kOwnedTag) {
      Free(taken.large.text);
    }
    return *this;
  }
  /// Becomes a copy of a zero-terminated text, empty for null.
  KORUnicodeString& operator=(const char* iText) { return Assign(AsView(iText)); }
  /// Becomes a copy of the bytes of a view.
  KORUnicodeString& operator=(std::string_view iText) { return Assign(iText); }

  /// Makes the text empty and gives its memory back.
  void Reset() noexcept;

  /// Exchanges two texts.
  void Swap(KORUnicodeString& ioOther) noexcept { std::swap(_storage, ioOther._storage); }
  /// The same, for the standard algorithms.
  friend void swap(KORUnicodeString& ioLeft, KORUnicodeString& ioRight) noexcept { ioLeft.Swap(ioRight); }

  // Building from other forms.

  /**
   * Takes over a UTF-8 text, zero bytes included.
   *
   * @return 0 on success. Ill-formed UTF-8 (or a null pointer with a length) is refused: the answer is not 0 and the
   * text is left empty.
   */
  int BuildFromUTF8(const char* iText, std::size_t iLength);

  /**
   * Takes over a zero-terminated wide text: UTF-16 where `wchar_t` has 16 bits, UTF-32 elsewhere. Null gives the empty
   * text.
   *
   * @return 0 on success; not 0 for a lone surrogate or a value beyond U+10FFFF, and the text is left empty.
   */
  int BuildFromWChar(const wchar_t* iText);

  /**
   * Writes a number with a printf-style format that holds exactly one conversion of e, f, g or a (either case), flags,
   * width and precision included; other characters of the format are copied and "%%" gives "%". The decimal mark is
   * always a full stop.
   *
   * @return 0 on success; not 0 for any other format, for a width or precision above 65535 and for a null pointer, and
   * the text is left empty.
   */
  int BuildFromNum(double iNumber, const char* iFormat);

  /**
   * Reads UTF-8 text from a stream: at most iCount bytes, all that follow when iCount is negative.
   *
   * @return 0 on success; not 0 when the stream fails or the bytes are no well-formed UTF-8, and the text is left
   * empty.
   */
  int BuildFromStream(std::istream& ioStream, int iCount);

  // Converting out.

  /// The zero-terminated UTF-8 bytes, valid until the text changes or dies. Never null, never converted.
  operator const char*() const noexcept { return Data(); }
  /// The same by name, for where the conversion would be overlooked.
  const char* CastToCharPtr() const noexcept { return Data(); }

  /// The UTF-8 bytes as a view, valid until the text changes or dies.
  std::string_view ToStringView() const noexcept { return {Data(), ByteCount()}; }

  /// A narrow copy: the UTF-8 bytes, zero bytes included.
  std::string ConvertToChar() const { return std::string(ToStringView()); }

  /// Writes the UTF-8 bytes to oBuffer (no terminating zero) and their count to oLength; a null pointer skips its part.
  /// The buffer has to hold GetLengthInByte() bytes.
  void ConvertToUTF8(char* oBuffer, std::size_t* oLength) const;

  /**
   * Writes the text as wide characters with a terminating zero to oBuffer, which must hold one more than the answer;
   * null only counts. A byte of ill-formed text becomes U+FFFD.
   *
   * @return the number of wide characters without the terminating zero.
   */
  int ConvertToWChar(wchar_t* oBuffer) const;

  // Size.

  /// Number of characters, kept once it was counted, so that asking again costs nothing for texts outside the object.
  /// Beyond 2^31 - 1 characters the answer stays 2^31 - 1.
  int GetLengthInChar() const noexcept;

  /// Number of UTF-8 bytes, always at hand without counting.
  std::size_t GetLengthInByte() const noexcept { return ByteCount(); }

  /// True for a text of no bytes, which is a text of no characters.
  bool IsEmpty() const noexcept { return ByteCount() == 0; }

  // Access and editing.

  /// The character at a position; the zero character at or beyond the end and for a negative position.
  template <std::integral Position>
  KORUnicodeChar operator[](Position iPosition) const noexcept {
    return std::cmp_less(iPosition, 0) ? KORUnicodeChar() : CharAt(static_cast<std::size_t>(iPosition));
  }

  /// The iCount characters from iStart, fewer where the text ends before. A negative count, or a start outside the
  /// text, gives the empty text.
  KORUnicodeString SubString(int iStart, int iCount) const;

  /// The position of iText, searched from iStart to the end; -1 when it is absent, when iText is empty or when iStart
  /// is outside the text. Backward mode finds the last occurrence that does not begin before iStart. Whole characters
  /// are found only: a lone byte of ill-formed text is not found inside a character that contains it.
  int SearchSubString(const KORUnicodeString& iText, int iStart = 0,
                      KORSearchMode iMode = KORSearchMode::Forward) const noexcept;

  /// Puts iText in the place of iCount characters from iStart. A range that leaves the text is cut at its end; the
  /// position behind the last character is a start. A start outside the text or a negative count changes nothing.
  KORUnicodeString& ReplaceSubString(int iStart, int iCount, const KORUnicodeString& iText);

  /// Replaces every occurrence, found from left to right without overlap; the replacement is not searched again. An
  /// empty iWhat changes nothing.
  KORUnicodeString& ReplaceAll(const KORUnicodeString& iWhat, const KORUnicodeString& iWith);

  /// Inserts iText before a position; the text's length is the end. A position outside changes nothing.
  KORUnicodeString& Insert(int iPosition, const KORUnicodeString& iText);

  /// Removes iCount characters from iStart, under the rules of ReplaceSubString. What stood before and behind may join
  /// to one character where the text is ill-formed.
  KORUnicodeString& Remove(int iStart, int iCount);

  /// @{
  /// Appends a text, a zero-terminated text (nothing for null), a character or the bytes of a view. Bytes appended to a
  /// text that ends inside a character may complete it.
  KORUnicodeString& Append(const KORUnicodeString& iText);
  KORUnicodeString& Append(const char* iText);
  KORUnicodeString& Append(const KORUnicodeChar& iChar);
  KORUnicodeString& Append(std::string_view iText);
  /// @}
  /// @{
  /// The same as Append.
  KORUnicodeString& operator+=(const KORUnicodeString& iText) { return Append(iText); }
  KORUnicodeString& operator+=(const char* iText) { return Append(iText); }
  KORUnicodeString& operator+=(std::string_view iText) { return Append(iText); }
  KORUnicodeString& operator+=(const KORUnicodeChar& iChar) { return Append(iChar); }
  /// @}
  /// Appends one byte, the quick way to build a text byte by byte.
  KORUnicodeString& operator+=(char iChar) {
    if (_storage.small.tag >= kInlineCapacity) {
      return AppendByte(iChar);
    }
    _storage.small.text[_storage.small.tag] = iChar;
    _storage.small.text[++_storage.small.tag] = '\0';
    return *this;
  }

  /// Makes room for a text of so many bytes, so that growing up to it allocates no more.
  void Reserve(std::size_t iByteCount);

  /// @{
  /**
   * Maps every character to its simple lower (upper) case, in place; a locale never matters. One character stays one:
   * sharp s has no simple upper case and stays. The text may become longer or shorter in bytes. Bytes of ill-formed
   * text stay.
   */
  KORUnicodeString& ToLower();
  KORUnicodeString& ToUpper();
  /// @}

  // Comparison.

  /**
   * Graded comparison: 2 for identical texts, 1 for texts that are equal under Unicode's simple case folding (the lines
   * of status C and S of CaseFolding.txt), else 0. A case-insensitive match accepts 1 or more, a case-sensitive one
   * only 2. It is symmetric, allocates nothing and never asks the locale.
   */
  int Compare(const KORUnicodeString& iOther) const noexcept;

  /// 1 when the whole text matches the pattern, else 0. iAny matches any run of characters, the empty one included;
  /// iEscape makes the next pattern character literal (at the end of a pattern it stands for itself). The time is at
  /// most proportional to pattern times text.
  int WildMatch(const KORUnicodeString& iPattern, const KORUnicodeChar& iAny, const KORUnicodeChar& iEscape) const;

  /// @{
  /// Byte for byte; a null pointer equals the empty text.
  bool operator==(const KORUnicodeString& iOther) const noexcept { return ToStringView() == iOther.ToStringView(); }
  bool operator==(const char* iOther) const noexcept { return ToStringView() == AsView(iOther); }
  /// The same with the bytes of a view or a std::string, zero bytes included.
  bool operator==(std::string_view iOther) const noexcept { return ToStringView() == iOther; }
  /// @}
  /// @{
  /// The order of the bytes as unsigned numbers, which is the order of code points; letter case counts.
  std::strong_ordering operator<=>(const KORUnicodeString& iOther) const noexcept {
    return ToStringView() <=> iOther.ToStringView();
  }
  std::strong_ordering operator<=>(const char* iOther) const noexcept { return ToStringView() <=> AsView(iOther); }
  std::strong_ordering operator<=>(std::string_view iOther) const noexcept { return ToStringView() <=> iOther; }
  /// @}

  /// @{
  /// The order of operator<=>. Spelled out, although that implies them: the standard library's transparent comparators
  /// would otherwise take two texts for pointers, because texts convert to one.
  friend bool operator<(const KORUnicodeString& iLeft, const KORUnicodeString& iRight) noexcept {
    return iLeft.ToStringView() < iRight.ToStringView();
  }
  friend bool operator<(const KORUnicodeString& iLeft, const char* iRight) noexcept {
    return iLeft.ToStringView() < AsView(iRight);
  }
  friend bool operator<(const char* iLeft, const KORUnicodeString& iRight) noexcept {
    return AsView(iLeft) < iRight.ToStringView();
  }
  friend bool operator>(const KORUnicodeString& iLeft, const KORUnicodeString& iRight) noexcept {
    return iRight < iLeft;
  }
  friend bool operator>(const KORUnicodeString& iLeft, const char* iRight) noexcept { return iRight < iLeft; }
  friend bool operator>(const char* iLeft, const KORUnicodeString& iRight) noexcept { return iRight < iLeft; }
  friend bool operator<=(const KORUnicodeString& iLeft, const KORUnicodeString& iRight) noexcept {
    return !(iRight < iLeft);
  }
  friend bool operator<=(const KORUnicodeString& iLeft, const char* iRight) noexcept { return !(iRight < iLeft); }
  friend bool operator<=(const char* iLeft, const KORUnicodeString& iRight) noexcept { return !(iRight < iLeft); }
  friend bool operator>=(const KORUnicodeString& iLeft, const KORUnicodeString& iRight) noexcept {
    return !(iLeft < iRight);
  }
  friend bool operator>=(const KORUnicodeString& iLeft, const char* iRight) noexcept { return !(iLeft < iRight); }
  friend bool operator>=(const char* iLeft, const KORUnicodeString& iRight) noexcept { return !(iLeft < iRight); }
  /// @}

  /// @{
  /// The two texts in one, made with one allocation; null counts as empty.
  friend KORUnicodeString operator+(const KORUnicodeString& iLeft, const KORUnicodeString& iRight) {
    return Joined(iLeft.ToStringView(), iRight.ToStringView());
  }
  friend KORUnicodeString operator+(const KORUnicodeString& iLeft, const char* iRight) {
    return Joined(iLeft.ToStringView(), AsView(iRight));
  }
  friend KORUnicodeString operator+(const char* iLeft, const KORUnicodeString& iRight) {
    return Joined(AsView(iLeft), iRight.ToStringView());
  }
  friend KORUnicodeString operator+(const KORUnicodeString& iLeft, std::string_view iRight) {
    return Joined(iLeft.ToStringView(), iRight);
  }
  friend KORUnicodeString operator+(std::string_view iLeft, const KORUnicodeString& iRight) {
    return Joined(iLeft, iRight.ToStringView());
  }
  /// @}
  /// @{
  /// A sum that goes on growing keeps its memory.
  friend KORUnicodeString operator+(KORUnicodeString&& ioLeft, const KORUnicodeString& iRight) {
    ioLeft.Append(iRight);
    return std::move(ioLeft);
  }
  friend KORUnicodeString operator+(KORUnicodeString&& ioLeft, const char* iRight) {
    ioLeft.Append(iRight);
    return std::move(ioLeft);
  }
  /// @}
  /// @{
  /// A text and one character behind it.
  friend KORUnicodeString operator+(const KORUnicodeString& iLeft, const KORUnicodeChar& iRight) {
    return Joined(iLeft.ToStringView(), KORUnicodeString(iRight).ToStringView());
  }
  friend KORUnicodeString operator+(const KORUnicodeString& iLeft, char iRight) {
    return Joined(iLeft.ToStringView(), std::string_view(&iRight, 1));
  }
  /// @}
  /// @{
  /// A text and a number do not add: the built-in sum would be a pointer into the narrow form.
  template <std::integral Number>
  friend void operator+(const KORUnicodeString& iLeft, Number iRight) = delete;
  template <std::integral Number>
  friend void operator+(Number iLeft, const KORUnicodeString& iRight) = delete;
  /// @}

  /// Writes the UTF-8 bytes, padded as the stream's width asks.
  friend VYX_EXPORT std::ostream& operator<<(std::ostream& ioStream, const KORUnicodeString& iText);

 private:
  friend class QB::StringView;

  // Short texts stand in the object; the last byte tells which form is in force.
  struct Inline {
    char text[23];
    std::uint8_t tag;
  };
  struct Long {
    char* text;
    std::uint64_t size;
    char unused[7];
    std::uint8_t tag;
  };
  union Storage {
    Inline small;
    Long large;
  };
  static constexpr std::size_t kInlineCapacity = 22;
  static constexpr std::uint8_t kOwnedTag = 0x80;     // text points behind the header of an allocation of ours
  static constexpr std::uint8_t kBorrowedTag = 0x81;  // text belongs to somebody else; copies own theirs

  /// A text that borrows zero-terminated bytes; only QB::StringView makes one, and hands it out as const only.
  struct Borrowed {};
  KORUnicodeString(Borrowed, const char* iText, std::size_t iLength) noexcept;

  static std::string_view AsView(const char* iText) noexcept {
    return iText == nullptr ? std::string_view() : std::string_view(iText);
  }
  KORUnicodeString& Assign(std::string_view iText);
  KORUnicodeString& AppendByte(char iByte);
  void CopyLong(const KORUnicodeString& iOther);
  static KORUnicodeString Joined(std::string_view iLeft, std::string_view iRight);

  bool IsInline() const noexcept { return _storage.small.tag < kOwnedTag; }
  bool IsOwned() const noexcept { return _storage.small.tag == kOwnedTag; }
  void ResetToInline() noexcept {
    _storage.small.text[0] = '\0';
    _storage.small.tag = 0;
  }
  const char* Data() const noexcept { return IsInline() ? _storage.small.text : _storage.large.text; }
  std::size_t ByteCount() const noexcept {
    return IsInline() ? _storage.small.tag : static_cast<std::size_t>(_storage.large.size);
  }
  static void Free(char* ioText) noexcept;
  KORUnicodeChar CharAt(std::size_t iPosition) const noexcept;

  // The work on the storage, for the sources of this class.
  struct Access;

  Storage _storage;
};

static_assert(sizeof(KORUnicodeString) == 24);

/// Equal texts hash alike, so that texts are keys of the standard's unordered containers.
template <>
struct std::hash<KORUnicodeString> {
  /// The hash of the bytes.
  std::size_t operator()(const KORUnicodeString& iText) const noexcept {
    return std::hash<std::string_view>()(iText.ToStringView());
  }
};
