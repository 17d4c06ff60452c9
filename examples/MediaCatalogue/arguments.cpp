#include "arguments.h"

#include <string_view>

namespace MediaCatalogue {

const char* const kHelp =
    "Usage: MediaCatalogue [--out FOLDER] FOLDER\n"
    "\n"
    "Catalogues every regular file below FOLDER, the results' own folder left out: size, time of the last write,\n"
    "CRC-32, SHA-256 and media type, and totals by type. The catalogue is written as JSON, read back and compared.\n"
    "The files are packed into a zip archive, and every entry is read back and held against the catalogue.\n"
    "\n"
    "  --out FOLDER   where catalogue.json and catalogue.zip go; build/demo under the current folder unless given\n"
    "  --help         this text\n"
    "  --             what follows is FOLDER, even if it begins with a dash\n"
    "\n"
    "A file that cannot be read is reported, listed in the catalogue, and does not end the run.\n"
    "\n"
    "Exit status: 0 catalogue and archive are written and read back equal; 1 they are not; 2 the command line is\n"
    "wrong or FOLDER is not a folder that can be listed.\n";

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
    } else if (value == "--out" && index + 1 < iCount && *iValues[index + 1] != '\0') {
      oArguments.out = iValues[++index];
    } else {
      oProblem = value == "--out" ? "--out needs a folder" : "unknown option '" + std::string(value) + "'";
      return false;
    }
  }
  if (oArguments.folder.empty()) {
    oProblem = "FOLDER is missing";
    return false;
  }
  return true;
}

}  // namespace MediaCatalogue
