#pragma once

#include <string>

#include "platform/os/status.h"

namespace VYX::Os::Windows {

/**
 * Joins arguments to the one text that the host hands to a program, so that the C run-time takes it apart into the same
 * arguments again. What an argument holds is never taken as quoted already.
 *
 * @param iArguments UTF-8, null-terminated, the first being the program's own name.
 * @return a failure, with oLine untouched, for a text that is no UTF-8, for a quote in the program's name, which no
 * command line can hold, and for more than the host's 32,766 UTF-16 units.
 */
Status JoinArguments(char* const iArguments[], std::wstring& oLine);

}  // namespace VYX::Os::Windows
