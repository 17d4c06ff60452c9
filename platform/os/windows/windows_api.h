#pragma once

// The one place that includes windows.h: without its rarely used parts and without its macros min and max, with the
// wide functions behind every name, for Windows 10 and later.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef UNICODE
#define UNICODE
#endif
#undef _WIN32_WINNT
#define _WIN32_WINNT 0x0A00
// windows.h comes before those that build on it.
#include <windows.h>

#include <aclapi.h>
#include <bcrypt.h>
#include <psapi.h>
#include <tlhelp32.h>

// Names of our contracts that windows.h defines as macros; its functions are called by their full names (CreateFileW).
#undef CreateFile
#undef CreateProcess
#undef MoveFile
#undef WriteConsole
