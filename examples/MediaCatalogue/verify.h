#pragma once

#include <filesystem>
#include <stdexcept>

namespace MediaCatalogue {

/// A catalogue that is not there, or is none.
class UnusableCatalogue : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/**
 * Rebuilds the media of a catalogue, loads each file's content from its location, and holds it against the size and the
 * SHA-256 that were catalogued. Every difference is printed as a line. A file that was added since is none.
 *
 * A catalogue may come from anybody. It names the files to be read, but nothing of what they hold is shown.
 *
 * @return the number of files that are not as catalogued.
 * @throws UnusableCatalogue with the reason.
 */
std::size_t VerifyCatalogue(const std::filesystem::path& iCatalogue);

}  // namespace MediaCatalogue
