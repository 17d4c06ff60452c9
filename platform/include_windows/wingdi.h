#pragma once

// Stands before the host's header of the same name for programs that use the library: windows.h defines ERROR as a
// macro there, which would hide the log's level of that name wherever windows.h comes after VYXInfLog.h.
#pragma GCC system_header
#include_next <wingdi.h>

#ifdef VYX_HAS_LEVEL_ERROR
#undef ERROR
#undef RGN_ERROR
#define RGN_ERROR 0
#endif
