#pragma once

#include <array>
#include <string_view>

namespace halvane {

/// What an entry file begins with: the line that opens its front matter, perhaps behind a byte-order mark.
/// Whatever begins otherwise is no entry and need not be read on.
inline constexpr std::array<std::string_view, 2> entryOpenings = {"---\n", "\xEF\xBB\xBF---\n"};

}  // namespace halvane
