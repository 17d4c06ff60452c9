#pragma once

#include <cstdint>
#include <unordered_set>
#include <vector>

#include "KORSysBase/KORListValKORUnicodeString.h"
#include "KORSysBase/KORResult.h"
#include "KORSysTS/KORString.h"
#include "KORSysTS/KORUnicodeString.h"
#include "Quillbase/Binary.h"
#include "VYXExport.h"

/**
 * Everyday work on texts: comparing, cutting, joining, replacing, case styles, UTF-8, Base64, digests, escaping.
 *
 * ```cpp
 * VYXInfStringUtil::Split("a,,b", ",");                       // "a", "b"
 * VYXInfStringUtil::ConvertSnakeToCamel("my_variable_NAME");  // "myVariableNAME"
 * VYXInfStringUtil::EncodeURIComponent("a b");                // "a%20b"
 * ```
 *
 * All functions are static and keep no state. They leave their arguments as they are and give new values; each may be
 * called from any number of threads at once, provided nobody changes an argument meanwhile. Positions and lengths count
 * characters (code points) from 0; platform lists count from 1. Letter case follows Unicode's simple mappings, never
 * the locale.
 *
 * Unless a function says otherwise it does not fail and logs nothing. Those with a result code answer S_OK,
 * E_INVALIDARG or E_FAIL; test the sign. What "a failure trace" is: the line "FAILURE RETURN (source:line)" at ERROR in
 * the default logger's output, after the pending platform error's message where one is due. Every log line is left out
 * when its level is filtered. None of the functions with a result code lets an exception pass.
 */
class VYX_EXPORT VYXInfStringUtil {
 public:
  VYXInfStringUtil() = delete;

  /// What StringMatchesByCriterion examines.
  enum class CompareStringCondition : std::int32_t {
    Contains = 0,    ///< the criterion stands anywhere; wildcards in it count
    StartsWith = 1,  ///< the examined text begins with the criterion, in the same case
    EndsWith = 2,    ///< the examined text ends with the criterion, in the same case
    Equal = 3,       ///< the two are identical
    WildMatch = 4    ///< the criterion is a wildcard pattern for the whole examined text
  };

  /// The digests of Base64Hash. The numbering never changes.
  enum class HashAlgo : std::int32_t {
    MD5 = 0,     ///< RFC 1321; no longer withstands attacks
    SHA1 = 1,    ///< FIPS 180-4; no longer withstands attacks
    SHA256 = 2,  ///< FIPS 180-4
    SHA512 = 3   ///< FIPS 180-4
  };

  /**
   * Orders texts by their lower-case forms, code point by code point: a strict weak ordering for containers that
   * disregard letter case.
   *
   * ```cpp
   * std::map<KORUnicodeString, int, VYXInfStringUtil::VYXStringLessIgnoreCase> counts;
   * counts["Oslo"] += 1;
   * counts["OSLO"] += 1;
   * counts.size();  // 1
   * ```
   */
  struct VYX_EXPORT VYXStringLessIgnoreCase {
    /// True when lower-cased iLeft stands before lower-cased iRight.
    bool operator()(const KORUnicodeString& iLeft, const KORUnicodeString& iRight) const;
  };

  // Comparing and matching.

  /// True when the texts are identical or, unless iCaseSensitive, differ in letter case only
  /// (KORUnicodeString::Compare).
  static bool Compare(const KORUnicodeString& iLeft, const KORUnicodeString& iRight, bool iCaseSensitive);

  /// True when the text begins with the prefix, compared as Compare does. An empty prefix is never found.
  static bool StartsWith(const KORUnicodeString& iText, const KORUnicodeString& iPrefix, bool iCaseSensitive);

  /// True when the text ends with the suffix, compared as Compare does. An empty suffix is never found.
  static bool EndsWith(const KORUnicodeString& iText, const KORUnicodeString& iSuffix, bool iCaseSensitive);

  /// True when the text ends with one of the suffixes; false for an empty list.
  static bool EndsWith(const KORUnicodeString& iText, const KORListValKORUnicodeString& iSuffixes, bool iCaseSensitive);

  /// True when one of the text's characters, narrowed to a `char` (KORUnicodeChar), is in the set. A character outside
  /// ASCII narrows to U+001A.
  static bool StringContainsAnyOf(const KORUnicodeString& iText, const std::unordered_set<char>& iCharacters);

  /**
   * Examines a text by a criterion. In wildcard patterns "*" stands for any run of characters, and a backslash makes
   * the next character literal. Mind the order: the criterion comes first.
   *
   * @param iCondition how to compare. Any value without a name writes "Unknown condition." at ERROR, and the answer is
   * false.
   * @param iCriterion what is looked for.
   * @param iExamined the text that is looked at.
   */
  static bool StringMatchesByCriterion(CompareStringCondition iCondition, const KORUnicodeString& iCriterion,
                                       const KORUnicodeString& iExamined);

  /// True when none of ``| ; & $ > < ' " \ ! #`` stands in the text, which is what makes one dangerous in a command
  /// line or in markup. The empty text is safe.
  static bool IsXssSafe(const KORUnicodeString& iText);

  // Cutting and joining.

  /// The first iMaxLength characters; the whole text when it has no more.
  static KORUnicodeString Crop(const KORUnicodeString& iText, std::uint64_t iMaxLength);

  /// iCount characters from iStart, fewer where the text ends before; to the end when iCount is negative. Empty when
  /// iStart is outside the text.
  static KORUnicodeString SubString(const KORUnicodeString& iText, std::int32_t iStart, std::int32_t iCount);

  /// The pieces between the occurrences of the separator, in order, without the empty ones. An empty separator is found
  /// nowhere.
  static KORListValKORUnicodeString Split(const KORUnicodeString& iText, const KORUnicodeString& iSeparator);

  /// The same with the empty pieces, unless iSkipEmpty. A separator at the end has no piece behind it: ",a," gives ""
  /// and "a". The empty text gives no piece.
  static std::vector<KORUnicodeString> SplitV(const KORUnicodeString& iText, const KORUnicodeString& iSeparator,
                                              bool iSkipEmpty);

  /// The texts in order, with the separator between them.
  static KORUnicodeString Join(const std::vector<KORUnicodeString>& iTexts, const KORUnicodeString& iSeparator);

  /// The texts in order, with the separator between them.
  static KORUnicodeString Join(const KORListValKORUnicodeString& iTexts, const KORUnicodeString& iSeparator);

  /// Another name of Join.
  static KORUnicodeString Concatenate(const std::vector<KORUnicodeString>& iTexts, const KORUnicodeString& iSeparator);

  // Replacing and letter case.

  /// The text without its spaces U+0020, wherever they stand, inside the text too. Tabs and other white space stay.
  static KORUnicodeString Trim(const KORUnicodeString& iText);

  /// The text with each character that occurs in iCharacters replaced by the whole iReplacement, which is not searched
  /// again.
  static KORUnicodeString ReplaceCharacters(const KORUnicodeString& iText, const KORUnicodeString& iCharacters,
                                            const KORUnicodeString& iReplacement);

  /// The text with its first character in upper case. A text of two characters gives its first one alone: "ab" gives
  /// "A".
  static KORUnicodeString Capitalize(const KORUnicodeString& iText);

  /// Puts an underscore before each run of ASCII capitals that goes on with a word, as replacing `\B[A-Z]+` by `_$&`
  /// does. No letter changes case: "getXMLValue" gives "get_XMLValue", "HTML" gives "H_TML".
  static KORUnicodeString ConvertCamelToSnake(const KORUnicodeString& iText);

  /// Joins the pieces between underscores: the first in lower case, the others with their first character in upper case
  /// and the rest as it is. Of a single piece only the first character is lowered: "HELLO" gives "hELLO", "HELLO_world"
  /// "helloWorld".
  static KORUnicodeString ConvertSnakeToCamel(const KORUnicodeString& iText);

  // UTF-8.

  /**
   * The UTF-8 bytes of a text.
   *
   * The empty text is converted with the line "ConvertToUTF8 returned ZERO bytes. Original string is: " at WARN.
   *
   * @param iText the text.
   * @param oBuffer receives a new array of *oSize + 1 bytes, of which the last is zero; the caller frees it with
   * `delete[]`.
   * @param oSize receives the number of bytes without that zero.
   * @return false, with the line "invalid output params" at DEBUG, when a pointer is null; false with a failure trace
   * when there is no memory. The outputs are then untouched.
   */
  static bool ConvertToUTF8(const KORUnicodeString& iText, char** oBuffer, std::uint64_t* oSize);

  /// The UTF-8 bytes of a text in a buffer that owns them, under the rules of the other form; false without a line when
  /// oBinary is null.
  static bool ConvertToUTF8(const KORUnicodeString& iText, QB::Binary* oBinary);

  /// The text of a narrow one, zero bytes included.
  static KORUnicodeString From(const KORString& iText);

  // Base64: RFC 4648 section 4, with padding, strict on decoding.

  /**
   * Encodes bytes. Content of 4 GiB or more is encoded in part only: its size counts modulo 2^32.
   *
   * Success writes "Encoded <bytes> BYTEs --to-- <characters> Base64 chars." at TRACE, nothing to encode
   * "The content to encode is ZERO Bytes => NOTHING to encode. " at DEBUG.
   *
   * @param iData the bytes.
   * @param oText receives the Base64 text; empty on failure.
   * @return S_OK; E_INVALIDARG with a failure trace when oText is null; E_FAIL with one when the data of a size is
   * missing; E_FAIL with "The Base64 encoding failed. (input was <bytes> BYTEs) " at ERROR when there is no memory.
   */
  static long EncodeToBase64(const QB::Binary& iData, KORUnicodeString* oText);

  /// Encodes the UTF-8 bytes of a text. A failure, E_FAIL, writes a failure trace besides what the parts write, and
  /// leaves oText empty.
  static long EncodeToBase64(const KORUnicodeString& iText, KORUnicodeString& oText);

  /**
   * Decodes Base64 text.
   *
   * Success writes "Decoded from <characters> Base64 chars --to-- <bytes> BYTEs." at TRACE, nothing to decode
   * "The content to decode is ZERO chars => NOTHING to decode. " at DEBUG.
   *
   * @param iText the Base64 text.
   * @param oData receives the bytes; empty on failure.
   * @return S_OK; E_INVALIDARG, silently, when oData is null; E_FAIL with
   *         "The Base64 decoding failed. (Base64 input was <characters> chars / " at ERROR for a text that is no
   * Base64, whose fault stays pending (KORError).
   */
  static long DecodeFromBase64(const KORUnicodeString& iText, QB::Binary* oData);

  /// Decodes Base64 of UTF-8 text. E_FAIL with a failure trace, and an empty oText, for a text that is no Base64 and
  /// for bytes that are no UTF-8.
  static long DecodeFromBase64(const KORUnicodeString& iText, KORUnicodeString& oText);

  // Digests and checksums.

  /**
   * The digest of a text, in Base64.
   *
   * Of the UTF-8 bytes as many are hashed as the text has characters: all of ASCII text, the leading ones of any other.
   * Stored digests depend on that rule.
   *
   * @param iText the text.
   * @param iAlgo the digest's kind.
   * @param oHash receives the digest; untouched on failure.
   * @return S_OK; E_INVALIDARG, silently, for an algorithm without a name; E_FAIL with a failure trace when the
   * platform's digest service fails.
   */
  static long Base64Hash(const KORUnicodeString& iText, HashAlgo iAlgo, KORUnicodeString& oHash);

  /// The CRC-32 (RFC 1952, section 8) of as many of the UTF-8 bytes as the text has characters.
  static std::uint32_t GetCRC32Value(const KORUnicodeString& iText);

  // Escaping.

  /// Percent-encodes the UTF-8 bytes of all characters but the unreserved ones of RFC 3986, section 2.3 (letters,
  /// digits, hyphen, underscore, full stop and tilde), with upper-case digits.
  static KORUnicodeString EncodeURIComponent(const KORUnicodeString& iText);

  /**
   * Undoes percent-encoding, once, with digits of either case. A percent sign without two hexadecimal digits is dropped
   * and the byte behind it copied as it stands; a plus sign stays one. The result ends before the first zero byte, so
   * "%00" cuts it, and is empty when the bytes are no well-formed UTF-8.
   */
  static KORUnicodeString DecodeURIComponent(const KORUnicodeString& iText);

  /// Escapes backslash, double quote, backspace, form feed, line feed, carriage return and tab by a backslash each, for
  /// a literal between double quotes in JavaScript. The apostrophe and all other characters stay.
  static KORUnicodeString EscapeStringForJS(const KORUnicodeString& iText);

  /// Puts the escape character before each occurrence of a character that does not stand behind one already; so
  /// escaping twice gives what escaping once does, unless the two are the same character, of which a run of two counts
  /// as escaped.
  static KORUnicodeString EscapeChar(const KORUnicodeString& iText, const KORUnicodeChar& iCharacter,
                                     const KORUnicodeChar& iEscapeCharacter);

  /// The "file" URI (RFC 8089) of a local path: its backslashes become slashes; nothing is percent-encoded. `C:\data`
  /// gives "file:///C:/data", "/home" gives "file:///home", the empty path "file:///".
  static KORUnicodeString URIFromLocalFile(const KORUnicodeString& iPath);
};
