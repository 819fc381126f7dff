#pragma once

// What a person can do about a journal that can't be read, on this system.

#include <string>
#include <system_error>

namespace halvane {

/// What helps a person to whom the system says `error` about the journal folder; no error for a folder that
/// it lets us read. Empty where there is nothing to add.
std::string advice(const std::error_code& error);

}  // namespace halvane
