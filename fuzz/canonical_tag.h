#pragma once

#include <string_view>

namespace halvane {

/// Whether `tag` looks as a canonical tag must, to ICU: UTF-8, only letters, marks, 0 to 9 and "-", none of
/// the last at either end, nothing that lower case would change, 1 to 30 user-perceived characters.
bool looksCanonical(std::string_view tag);

}  // namespace halvane
