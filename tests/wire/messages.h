#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tests/wire/server_process.h"

namespace halvane {

/// A request to call `tool` with `arguments`, a JSON object, under the identifier `id`, a JSON value.
std::string toolCall(std::string_view tool, std::string_view arguments, std::string_view id = "1");

/// The text of a tool's result in the reply line `reply`. Throws when it is not such a reply.
std::string resultText(std::string_view reply);

/// Calls a tool and waits for its text. Throws when none comes.
std::string askTool(ServerProcess& server, std::string_view tool, std::string_view arguments);

/// Whether the server answers a ping with its reply and nothing else.
bool answersPing(ServerProcess& server);

/// `text` as a JSON string, with its quotation marks.
std::string jsonString(std::string_view text);

/// The JSON text `json` in the one form that all its equals share: members in the order of their names, one
/// way to write each string, no white space. Numbers keep their own text, so 1.10 is not 1.1. Nothing when
/// it is no JSON.
std::optional<std::string> canonicalJson(std::string_view json);

}  // namespace halvane
