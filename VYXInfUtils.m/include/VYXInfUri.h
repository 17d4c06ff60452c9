#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

/**
 * A URI in its six components, convertible from and to URI text and local file paths.
 *
 * ```cpp
 * VYXInfUri uri("ftp://h:8080/p/q?a=1&b=2#f");
 * uri.GetPort();      // 8080
 * uri.GetQuery("b");  // "2"
 * VYXInfUri::FromLocalPath("C:\\data\\a.txt").GetString();  // "file:///C:/data/a.txt"
 * ```
 *
 * The split is simple on purpose (it is less than RFC 3986 has): nothing is validated, percent-encoded or
 * percent-decoded, and the authority is not taken apart further than host and port, so that user information stays a
 * part of the host. Percent-encoding is the caller's business (VYXInfStringUtil). Components are kept as UTF-8, byte
 * for byte, zero bytes included; each operation takes time proportional to the text.
 *
 * A plain value: distinct objects may be used by different threads, one object by one thread at a time.
 */
class VYX_EXPORT VYXInfUri {
 public:
  /// The port of a URI that names none.
  static constexpr std::int32_t kNoPort = -1;

  /// An empty URI.
  VYXInfUri() = default;

  /**
   * Parses a text as Set does. A failing code of Set is written as a failure log and the object keeps what was stored.
   *
   * @throw std::invalid_argument, std::out_of_range as Set does.
   */
  explicit VYXInfUri(const KORUnicodeString& iText);

  /// @{
  /// A value: copies are independent, and what was moved from may only be assigned to and destroyed.
  VYXInfUri(const VYXInfUri&) = default;
  VYXInfUri(VYXInfUri&&) noexcept = default;
  VYXInfUri& operator=(const VYXInfUri&) = default;
  VYXInfUri& operator=(VYXInfUri&&) noexcept = default;
  /// @}
  ~VYXInfUri() = default;

  /**
   * Splits a text into its components. One that the text does not contain keeps its value: the object is not cleared
   * first.
   *
   * - The scheme is what stands before the first ":" anywhere in the text (`C:\dir` has the scheme "C").
   * - Behind it, "//" begins the authority, which ends before the first "/", "?" or "#". What follows the first ":" in
   * it is the port, read as an unsigned 32-bit decimal number under the rules of std::stoul (leading white space and a
   *   sign are accepted, what follows the digits is ignored, a minus sign wraps around) and kept as a signed one. An
   *   authority without ":" has no port. A numeric IPv6 host is taken for a bad port.
   * - Then come the path, "?" and the query, "#" and the fragment.
   *
   * @return S_OK.
   * @throw std::invalid_argument "invalid stoul argument" for a port without digits ("host:", "host:x");
   *        std::out_of_range "stoul argument out of range" for one beyond 4294967295. Scheme and host are then stored.
   */
  long Set(const KORUnicodeString& iText);

  /**
   * Set for callers who want no exceptions.
   *
   * @return S_OK, or E_INVALIDARG with a failure trace that gives the reason; the object is then untouched.
   */
  long TrySet(const KORUnicodeString& iText);

  /// The URI as text. The authority is written when there is a host, and its "//" also for the scheme "file" without a
  /// host.
  KORUnicodeString GetString() const;

  // The components, without their delimiters.

  KORUnicodeString GetScheme() const;                      ///< what stands before the first ":"
  KORUnicodeString GetHost() const;                        ///< the authority up to the port
  std::int32_t GetPort() const noexcept { return _port; }  ///< the port; kNoPort for none
  KORUnicodeString GetPath() const;                        ///< from the end of the authority up to "?" or "#"
  KORUnicodeString GetQuery() const;                       ///< from "?" up to "#"
  KORUnicodeString GetFragment() const;                    ///< what stands behind "#"

  // Each replaces one component by the text as it is, without checks.

  void SetScheme(const KORUnicodeString& iScheme);  ///< replaces the scheme
  void SetHost(const KORUnicodeString& iHost);      ///< replaces the host
// A system header may define the name as a macro for one of the other two, before or after this header.
#pragma push_macro("SetPort")
#undef SetPort
  void SetPort(std::int32_t iPort) noexcept {
    _port = iPort;
  }  ///< replaces the port; kNoPort removes it
  void SetPortA(std::int32_t iPort) noexcept {
    SetPort(iPort);
  }  ///< SetPort, as callers of windows.h arrive at it
  void SetPortW(std::int32_t iPort) noexcept {
    SetPort(iPort);
  }  ///< the same
#pragma pop_macro("SetPort")
  void SetPath(const KORUnicodeString& iPath);          ///< replaces the path
  void SetQuery(const KORUnicodeString& iQuery);        ///< replaces the whole query
  void SetFragment(const KORUnicodeString& iFragment);  ///< replaces the fragment

  /// The value of the first query parameter of this name (letter case counts), not percent-decoded; empty when there is
  /// none.
  KORUnicodeString GetQuery(const KORUnicodeString& iKey) const;

  /**
   * Sets one query parameter: the value of the first of this name is replaced in its place, or "&", name, "=" and value
   * are appended. Nothing is percent-encoded. The place counts one "&" between neighbours, so that empty parameters in
   * front of it ("&a=1") shift it.
   *
   * @throw std::out_of_range "invalid string position" when the query is empty; a query is started by setting all of
   * it.
   */
  void SetQuery(const KORUnicodeString& iKey, const KORUnicodeString& iValue);

  /**
   * SetQuery for callers who want no exceptions.
   *
   * @return S_OK, or E_FAIL with a failure trace when the query is empty; the object is then untouched.
   */
  long TrySetQuery(const KORUnicodeString& iKey, const KORUnicodeString& iValue);

  /**
   * The "file" URI of a local path: backslashes become slashes, and "file:///" goes before a path that begins with
   * drive, colon and separator, "file://" before any other. The result is parsed by Set, with these consequences on
   * every host: the first folder of a relative path ("dir/a.txt") becomes the host, and "?" and "#" in a path begin
   * query and fragment.
   *
   * @throw std::invalid_argument, std::out_of_range as Set does, for a relative path with a colon in its first folder
   *        ("C:a.txt").
   */
  static VYXInfUri FromLocalPath(const KORUnicodeString& iPath);

  /**
   * The local path of a "file" URI: host and path joined, without the slash before a drive ("/C:/x" gives "C:/x").
   * Slashes stay, nothing is percent-decoded.
   *
   * @return S_OK, or E_FAIL with a failure trace for any scheme but exactly "file"; oPath is then untouched.
   */
  long ToLocalPath(KORUnicodeString& oPath) const;

  /// True when all five texts are empty and there is no port.
  bool IsEmpty() const noexcept;

  /// True when all six components are equal, the texts byte for byte.
  bool operator==(const VYXInfUri& iOther) const noexcept = default;
  /// The order of the first component that differs: scheme, host, port, path, query, fragment, texts by their bytes.
  std::strong_ordering operator<=>(const VYXInfUri& iOther) const noexcept = default;

  /// Writes the URI as GetString gives it.
  friend VYX_EXPORT std::ostream& operator<<(std::ostream& ioStream, const VYXInfUri& iUri);

  /// Writes six lines to the process's standard output: each component behind its name, padded to ten characters.
  void DebugPrint() const;

 private:
  friend struct std::hash<VYXInfUri>;

  std::size_t Hash() const noexcept;
  void SetAuthority(std::string_view iAuthority);

  std::string _scheme;
  std::string _host;
  std::int32_t _port = kNoPort;
  std::string _path;
  std::string _query;
  std::string _fragment;
};

/// Equal URIs hash alike.
template <>
struct std::hash<VYXInfUri> {
  /// The hash of a value.
  std::size_t operator()(const VYXInfUri& iUri) const noexcept { return iUri.Hash(); }
};
