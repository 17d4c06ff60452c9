#include <all_exported_headers.h>

#include "header_use.h"

#define VYX_HEADER_USE UseWithoutWindows
#include "header_use_body.h"
