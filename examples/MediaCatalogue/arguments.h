#pragma once

#include <filesystem>
#include <string>

#include "VYXInfLog.h"

namespace MediaCatalogue {

/// What a user asked for on the command line.
struct Arguments {
  std::filesystem::path folder;              ///< the folder to catalogue
  std::filesystem::path out = "build/demo";  ///< where the results go
  std::filesystem::path catalogue;           ///< the catalogue to verify; empty to make one
  std::filesystem::path log;                 ///< the log file; empty for that of this run
  VYXInfLogLevel logLevel = INFO;            ///< of the log file
  bool wantsHelp = false;
};

/// The text of --help.
extern const char* const kHelp;

/// Reads the command line. False, with the reason in oProblem, when it is no request that the program understands.
bool ParseArguments(int iCount, const char* const* iValues, Arguments& oArguments, std::string& oProblem);

}  // namespace MediaCatalogue
