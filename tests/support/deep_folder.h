#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace halvane {

/// Makes `levels` folders called `name`, one in the other, below `path`, and the file `file` with `content`
/// in the innermost. Its path may become longer than the system takes in one call. The result is that path.
std::string writeFileDeepBelow(const std::string& path, const std::string& name, std::size_t levels,
                               const std::string& file, std::string_view content);

}  // namespace halvane
