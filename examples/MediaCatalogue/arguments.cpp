#include "arguments.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace MediaCatalogue {

const char* const kHelp =
    "Usage: MediaCatalogue [--out FOLDER] [--log FILE] [--log-level LEVEL] FOLDER\n"
    "       MediaCatalogue --verify FILE [--log FILE] [--log-level LEVEL]\n"
    "\n"
    "Catalogues every regular file below FOLDER, the results' own folder left out: size, time of the last write,\n"
    "CRC-32, SHA-256 and media type, and totals by type. The catalogue is written as JSON, read back and compared.\n"
    "The files are packed into a zip archive, and every entry is read back and held against the catalogue.\n"
    "What the run took in time and memory is written, too.\n"
    "\n"
    "--verify loads every file of a catalogue from where it was, and reports each that is gone or has another size or\n"
    "SHA-256 than catalogued. A file that was added since is not reported.\n"
    "\n"
    "  --out FOLDER       where catalogue.json, catalogue.zip and performance.json go; build/demo under the\n"
    "                     current folder unless given\n"
    "  --verify FILE      the catalogue.json to verify\n"
    "  --log FILE         the log; unless given, a file of this run beside the results, and none for --verify\n"
    "  --log-level LEVEL  what the log holds: FATAL, ERROR, WARN, INFO (unless given), DEBUG or TRACE\n"
    "  --help             this text\n"
    "  --                 what follows is FOLDER, even if it begins with a dash\n"
    "\n"
    "Warnings and failures are shown on standard output, too. Of the environment variables, VYX_LOG_LEVEL sets the\n"
    "level of both, VYX_LOG_CONFIG_FILE names a settings file, VYX_LOG_OUTPUT is CONSOLE or a folder for a log that\n"
    "takes all standard output. With either of the last two there is a file of this run only as --log asks.\n"
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

// False for a text that names no level.
bool TakeLevel(const char* iValue, VYXInfLogLevel& oLevel) {
  oLevel = VYXInfLog::LevelFromString(iValue, FATAL);
  return oLevel == VYXInfLog::LevelFromString(iValue, TRACE);
}

// Takes an option and its value, at which ioIndex stands then.
bool TakeOption(int iCount, const char* const* iValues, int& ioIndex, Arguments& ioArguments, std::string& oProblem) {
  const std::string option = iValues[ioIndex];
  const struct {
    const char* option;
    const char* value;
    std::filesystem::path* target;  // null for the level
  } options[] = {
      {"--out", "folder", &ioArguments.out},
      {"--verify", "file", &ioArguments.catalogue},
      {"--log", "file", &ioArguments.log},
      {"--log-level", "level", nullptr},
  };
  const auto* const found = std::ranges::find(options, option, [](const auto& iRow) { return iRow.option; });
  if (found == std::end(options)) {
    oProblem = "unknown option '" + option + "'";
    return false;
  }
  if (ioIndex + 1 == iCount || *iValues[ioIndex + 1] == '\0') {
    oProblem = option + " needs a " + found->value;
    return false;
  }
  const char* const value = iValues[++ioIndex];
  if (found->target != nullptr) {
    *found->target = value;
  } else if (!TakeLevel(value, ioArguments.logLevel)) {
    oProblem = "'" + std::string(value) + "' is no level";
    return false;
  }
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
