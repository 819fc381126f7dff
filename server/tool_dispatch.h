#pragma once

// Calls the tool that a client names, with the arguments that it gives.

#include <string>
#include <string_view>

#include "server/json.h"

namespace halvane {

/// Calls the tool called `name` (UTF-8) with the members of `arguments`, a JSON object, and returns its text,
/// UTF-8. A missing argument or one of the wrong type takes its default, and a number is brought into its
/// range: nothing that a client sends makes this fail. A name that no tool has gets a text that says so.
std::string callTool(std::string_view name, const JsonValue& arguments);

}  // namespace halvane
