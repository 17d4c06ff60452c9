#pragma once

#include "KORSysBase/KORResult.h"
#include "KORSysTS/KORString.h"
#include "KORSysTS/KORUnicodeString.h"
#include "VYXExport.h"

/**
 * Message catalogs: display texts by key, in the user's language.
 *
 * A catalog is a set of JSON files (RFC 8259), one per language and one for no language:
 *
 * ```text
 * <catalog>.<language>.json    MediaCatalogue.fr_CA.json, MediaCatalogue.fr.json
 * <catalog>.json               what the others do not hold
 * ```
 *
 * Each holds one object of texts, { "NoSuchFolder": "There is no folder {0}" }, and stands in "resources/msgcatalog"
 * under one of the installation folders, the list in the environment variable KORInstallPath; the first folder that has
 * the file counts. A file has at most 16 MiB and is read once; what is read stays until the program ends.
 *
 * The languages are those of the environment: LC_ALL, else LC_MESSAGES, else LANG (the first that is not empty) names
 * one, such as "fr_CA.UTF-8"; the list in LANGUAGE, "fr_CA:en", takes its place. Each is looked up in full ("fr_CA")
 * and by its first part ("fr"), then comes the file for no language; a message is taken from the first file that has
 * it. "C" and "POSIX" know only the file for no language, and so do programs that run with raised privileges.
 *
 * ```cpp
 * const KORUnicodeString folder("/photos");
 * KORMsgCatalog::BuildMessage("MediaCatalogue", "NoSuchFolder", &folder, 1, "?");  // "There is no folder /photos"
 * ```
 *
 * All operations may be called from any thread while none changes the environment.
 */
class VYX_EXPORT KORMsgCatalog {
 public:
  /// The code of a catalog file that is there but cannot be used: 0x8007000D, "the data is invalid".
  static constexpr long kUnusableFile = VYX::ResultCode(0x8007000DU);

  /**
   * The text of a message.
   *
   * @param iCatalog the catalog's name. One that is empty, has more than 200 bytes or holds a separator, a colon, "..",
   * a control character or a zero byte is unknown: it never leads out of the folder.
   * @param iKey the message's key.
   * @param iParameters what takes the places of "{0}", "{1}" and so on, in one pass; null for none.
   * @param iParameterCount the number of parameters; a place without a parameter stays as it is.
   * @param iDefaultMessage stands in for the text where catalog or key is unknown.
   * @param oResult null, or S_OK for a message that was found, S_FALSE for one that is unknown, and kUnusableFile where
   * a file of the catalog could not be used; another file may have given the message all the same. kUnusableFile leaves
   * a pending error that names file and cause.
   * @return the text with its parameters.
   */
  static KORUnicodeString BuildMessage(const KORString& iCatalog, const KORString& iKey,
                                       const KORUnicodeString* iParameters, int iParameterCount,
                                       const KORUnicodeString& iDefaultMessage, long* oResult = nullptr);
};
