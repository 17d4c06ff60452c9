#pragma once

#include "VYXExport.h"

/**
 * @file
 * The environment of the process.
 */

/**
 * The value of an environment variable as narrow text, or null where it is not set or iName is null.
 *
 * The text belongs to the environment and is valid until the variable is changed. May be called from any thread while
 * none changes the environment.
 */
VYX_EXPORT const char* KORGetEnv(const char* iName) noexcept;
