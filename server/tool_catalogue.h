#pragma once

// Describes the tools to clients.

#include "server/json.h"

namespace halvane {

/// The descriptions of the three tools, as the Model Context Protocol's "tools/list" returns them: an array
/// of objects with a name, a description for the model that chooses among the tools, and a JSON Schema of the
/// arguments. The schema is advice to the client. The server doesn't enforce it.
extern const JsonValue toolDefinitions;

}  // namespace halvane
