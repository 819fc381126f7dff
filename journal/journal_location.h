#pragma once

#include <optional>
#include <string>

#include "journal/entry.h"
#include "platform/preferences.h"

namespace halvane {

/// The settings kept under the bundle identifier `suite`: this process's own when that is what it runs under;
/// nothing when there are none.
std::optional<Preferences> appDefaults(const std::string& suite);

/// The folder that holds the journal, absolute but neither standardised nor resolved, and perhaps not there:
/// what the companion application's settings name, otherwise Documents/Halvane in the home directory. Asked
/// afresh at each call, so that a change of the settings shows at once.
FileUrl journalRoot();

}  // namespace halvane
