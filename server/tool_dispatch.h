#pragma once

// Calls the tool that a client names, with the arguments that it gives.

#include <string>
#include <string_view>

#include "server/json.h"

namespace halvane {

/// Calls the tool called `name` (UTF-8) with the members of `arguments`, a JSON object, and returns its text,
/// UTF-8. A missing argument or one of the wrong type takes its default, and a number is moved into its
/// range, so no arguments make this fail. An unknown name gives a text that says so.
std::string callTool(std::string_view name, const JsonValue& arguments);

}  // namespace halvane
