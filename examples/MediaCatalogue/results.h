#pragma once

#include "KORSysTS/KORUnicodeString.h"
#include "VYXPropertyTree.h"

namespace MediaCatalogue {

/// Writes a text, replacing an earlier file as a whole. Throws std::runtime_error with the reason when it cannot.
void WriteText(const KORUnicodeString& iText, const KORUnicodeString& iPath);

/**
 * Writes the catalogue as JSON, replacing an earlier one as a whole, reads it back and compares.
 *
 * @return the number of bytes written.
 * @throws std::runtime_error with the reason, when the file cannot be written or reads back as anything else.
 */
std::size_t WriteAndVerify(const VYXPropertyTree& iTree, const KORUnicodeString& iPath);

}  // namespace MediaCatalogue
