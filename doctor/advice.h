#pragma once

// What a person can do about a journal that can't be read, on this system.

#include <string>
#include <system_error>

namespace halvane {

/// Advice for a person when the system answers `error` for the journal folder, or no error if the folder can
/// be read. Empty when there is nothing to add.
std::string advice(const std::error_code& error);

}  // namespace halvane
