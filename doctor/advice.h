#pragma once

#include <string>
#include <system_error>

namespace halvane {

/// What helps a person whom the system gives this answer about the journal folder; no error is the answer for
/// a folder that it lets us read. Empty where there is nothing to add.
std::string advice(const std::error_code& answer);

}  // namespace halvane
