#pragma once

#include <functional>

namespace halvane {

/// Waits until `condition` holds, ten seconds at most; whether it does.
bool waitUntil(const std::function<bool()>& condition);

}  // namespace halvane
