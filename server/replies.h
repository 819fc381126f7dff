#pragma once

// Writes replies, and is the only code that writes to standard output.

#include <cstdint>
#include <string>

#include "server/json.h"

namespace halvane {

// Each reply is a JSON-RPC 2.0 response on one line, and is written before the call returns. A reply that
// can't be written is lost.

/// Answers the request identified by `id` with `result`, a JSON object.
void sendResult(JsonValue result, const JsonValue& id);

/// Answers the request identified by `id` with an error: a JSON-RPC code and a text, UTF-8.
void sendError(std::int64_t code, std::string message, const JsonValue& id);

}  // namespace halvane
