#include <windows.h>

#include <all_exported_headers.h>

#include "header_use.h"

#define VYX_HAS_WINDOWS
#define VYX_HEADER_USE UseWithWindowsFirst
#include "header_use_body.h"
