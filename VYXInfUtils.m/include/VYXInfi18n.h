#pragma once

#include "KORSysTS/KORString.h"
#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

/**
 * Display texts in the user's language, from message catalogs (KORMsgCatalog tells where those are and how the language
 * is chosen).
 *
 * ```cpp
 * const VYXInfi18n::LocalizedString kNoSuchFolder("MediaCatalogue", "NoSuchFolder");
 * std::cout << kNoSuchFolder("/photos") << "\n";  // There is no folder /photos
 * ```
 *
 * All of it may be used from any thread.
 */
namespace VYXInfi18n {

/**
 * The text of a message with its parameters in the places of "{0}", "{1}" and "{2}".
 *
 * The parameters are put in one after the other, so that a "{1}" that iFirst brings in is a place for iSecond; an empty
 * parameter leaves its places in the text.
 *
 * @param iCatalog, iKey the names of catalog and message.
 * @param iFirst, iSecond, iThird what takes the places.
 * @return the text; empty where catalog or key is unknown. A catalog file that cannot be used is written to the log,
 * with a failure log, and counts as one that does not know the key.
 */
VYX_EXPORT KORUnicodeString GetLocalizedString(const KORUnicodeString& iCatalog, const KORUnicodeString& iKey,
                                               const KORUnicodeString& iFirst = KORUnicodeString(),
                                               const KORUnicodeString& iSecond = KORUnicodeString(),
                                               const KORUnicodeString& iThird = KORUnicodeString());

/**
 * A message to be shown: it remembers catalog and key, and becomes text where it is used. A value, cheap to copy;
 * looked up anew each time.
 */
class VYX_EXPORT LocalizedString {
 public:
  /// A message of a catalog; null stands for the empty name.
  LocalizedString(const char* iCatalog, const char* iKey);

  /// @{
  /// A value: copies are independent, and what was moved from may only be assigned to and destroyed.
  LocalizedString(const LocalizedString&) = default;
  LocalizedString(LocalizedString&&) noexcept = default;
  LocalizedString& operator=(const LocalizedString&) = default;
  LocalizedString& operator=(LocalizedString&&) noexcept = default;
  /// @}
  ~LocalizedString() = default;

  /// The text without parameters: its places stay visible.
  operator KORUnicodeString() const;

  /// The same text in narrow form.
  operator KORString() const;

  /// The text with parameters, as GetLocalizedString puts them in.
  KORUnicodeString operator()(const KORUnicodeString& iFirst, const KORUnicodeString& iSecond = KORUnicodeString(),
                              const KORUnicodeString& iThird = KORUnicodeString()) const;

 private:
  KORUnicodeString _catalog;
  KORUnicodeString _key;
};

}  // namespace VYXInfi18n
