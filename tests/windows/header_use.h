#pragma once

#include <string>

/// What three sources that differ in nothing but the place of windows.h find through the exported headers.
struct HeaderUse {
  long deletion;     ///< of VYXInfSystemUtil::DeleteFile for the file that was given
  int severity;      ///< ERROR
  int qualified;     ///< VYXInfLogLevel::ERROR
  long success;      ///< S_OK
  long failure;      ///< E_FAIL
  bool isFiltered;   ///< ERROR, by the default logger
  int port;          ///< what VYXInfUri::SetPort has set
  long systemCalls;  ///< of windows.h itself: GetLastError after SetLastError(42); 42 where it is not included
};

HeaderUse UseWithWindowsFirst(const std::string& iFile);
HeaderUse UseWithWindowsLast(const std::string& iFile);
HeaderUse UseWithoutWindows(const std::string& iFile);
