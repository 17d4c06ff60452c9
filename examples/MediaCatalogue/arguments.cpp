#include "arguments.h"

#include <string_view>

namespace MediaCatalogue {

const char* const kHelp =
    "Usage: MediaCatalogue [--out FOLDER] FOLDER\n"
    "       MediaCatalogue --verify FILE\n"
    "\n"
    "Catalogues every regular file below FOLDER, the results' own folder left out: size, time of the last write,\n"
    "CRC-32, SHA-256 and media type, and totals by type. The catalogue is written as JSON, read back and compared.\n"
    "The files are packed into a zip archive, and every entry is read back and held against the catalogue.\n"
    "\n"
    "--verify loads every file of a catalogue from where it was, and reports each that is gone or has another size or\n"
    "SHA-256 than catalogued. A file that was added since is not reported.\n"
    "\n"
    "  --out FOLDER   where catalogue.json and catalogue.zip go; build/demo under the current folder unless given\n"
    "  --verify FILE  the catalogue.json to verify\n"
    "  --help         this text\n"
    "  --             what follows is FOLDER, even if it begins with a dash\n"
    "\n"
    "A file that cannot be read is reported, listed in the catalogue, and does not end the run.\n"
    "\n"
    "Exit status: 0 catalogue and archive are written and read back equal, or all files are as catalogued; 1 they are\n"
    "not; 2 the command line is wrong, FOLDER is not a folder that can be listed, or FILE is no catalogue.\n";

namespace {

bool TakeFolder(std::string_view iValue, Arguments& ioArguments, std::string& oProblem) {
  if (iValue.empty()) {
    oProblem = "FOLDER is empty";
    return false;
  }
  if (!ioArguments.folder.empty()) {
    oProblem = "more than one FOLDER: '" + ioArguments.folder.string() + "' and '" + std::string(iValue) + "'";
    return false;
  }
  ioArguments.folder = iValue;
  return true;
}

// True when the value was an option with its value, which is consumed.
bool TakeOption(int iCount, const char* const* iValues, int& ioIndex, Arguments& ioArguments, std::string& oProblem) {
  const std::string_view option = iValues[ioIndex];
  std::filesystem::path* const target = option == "--out"      ? &ioArguments.out
                                        : option == "--verify" ? &ioArguments.catalogue
                                                               : nullptr;
  if (target == nullptr) {
    oProblem = "unknown option '" + std::string(option) + "'";
    return false;
  }
  if (ioIndex + 1 == iCount || *iValues[ioIndex + 1] == '\0') {
    oProblem = std::string(option) + (option == "--out" ? " needs a folder" : " needs a file");
    return false;
  }
  *target = iValues[++ioIndex];
  return true;
}

}  // namespace

bool ParseArguments(int iCount, const char* const* iValues, Arguments& oArguments, std::string& oProblem) {
  bool areOptionsOver = false;
  for (int index = 1; index < iCount; ++index) {
    const std::string_view value = iValues[index];
    if (areOptionsOver || !value.starts_with('-')) {
      if (!TakeFolder(value, oArguments, oProblem)) {
        return false;
      }
    } else if (value == "--") {
      areOptionsOver = true;
    } else if (value == "--help") {
      oArguments.wantsHelp = true;
      return true;
    } else if (!TakeOption(iCount, iValues, index, oArguments, oProblem)) {
      return false;
    }
  }
  if (oArguments.folder.empty() == oArguments.catalogue.empty()) {
    oProblem = oArguments.folder.empty() ? "FOLDER is missing" : "--verify takes no FOLDER";
    return false;
  }
  return true;
}

}  // namespace MediaCatalogue
