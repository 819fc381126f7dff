#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace halvane {

/// The judge of Entry::normalizeTag: the same, step by step and only by ICU's own functions.
std::optional<std::string> plainTag(std::string_view text);

}  // namespace halvane
