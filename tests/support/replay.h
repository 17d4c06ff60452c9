#pragma once

#include <string>

/**
 * How a test goes on in a second process on a host without fork: the test program is started anew with that test
 * alone, which runs up to the same place. What it made on the way there is the parent's: its folders are named in the
 * order in which the test makes them.
 */
namespace VYX::Test {

/// In the second process, the folder that the test has made at this place in the first one; else empty.
std::string TakeFolderOfParent();

/// In the first process, remembers a folder that the running test has made.
void RememberFolder(const std::string& iPath);

}  // namespace VYX::Test
