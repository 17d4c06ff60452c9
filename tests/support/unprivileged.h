#pragma once

#include <functional>

namespace VYX::Test {

/// Runs a check in a forked child that is not the superuser, who may do everything; true when the check answers true
/// there.
bool HoldsForOrdinaryUser(const std::function<bool()>& iCheck);

}  // namespace VYX::Test
