#pragma once

#include <functional>
#include <string>
#include <vector>

namespace halvane {

/// The path of every file and folder that this process opens, or tries to open, during `work`, absolute and
/// as the C library is given it. It stands in for the library's own functions, so that what ICU opens is seen
/// too.
std::vector<std::string> pathsOpenedBy(const std::function<void()>& work);

}  // namespace halvane
