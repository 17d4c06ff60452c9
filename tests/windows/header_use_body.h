#pragma once

/// The body of the three functions of header_use.h: included behind each order of headers, with the name of its
/// function.
HeaderUse VYX_HEADER_USE(const std::string& iFile) {
  HeaderUse use = {};
  use.deletion = VYXInfSystemUtil::DeleteFile(KORUnicodeString(iFile));
  use.severity = ERROR;
  use.qualified = VYXInfLogLevel::ERROR;
  use.success = S_OK;
  use.failure = E_FAIL;
  VYXInfUri uri;
  uri.SetPort(8080);
  use.port = uri.GetPort();
  use.isFiltered = VYXInfLog::GetDefaultLogger()->IsFiltered(ERROR);
#ifdef VYX_HAS_WINDOWS
  ::SetLastError(42);
  use.systemCalls = static_cast<long>(::GetLastError());
  static_assert(RGN_ERROR == 0);
#else
  use.systemCalls = 42;
#endif
  return use;
}
