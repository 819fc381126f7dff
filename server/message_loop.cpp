#include "server/message_loop.h"

#include <unistd.h>

#include <array>
#include <cstdint>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "server/json.h"
#include "server/replies.h"
#include "server/server_version.h"
#include "server/tool_catalogue.h"
#include "server/tool_dispatch.h"
#include "system/free_memory.h"
#include "system/streams.h"
#include "text/utf8.h"

namespace halvane {
namespace {

constexpr const char* protocolVersion = "2025-06-18";
constexpr std::int64_t methodNotFound = -32601;

// Bytes that a tool may need besides the journal. ICU loads its data at the first use. If memory runs out
// during that, ICU remembers the failure for good. So a tool begins only if this much memory is free.
constexpr std::size_t toolMemory = 2 << 20;

// The object called `name` in `value`; an empty one when there is none.
const JsonValue& objectIn(const JsonValue& value, const char* name) {
  static const JsonValue empty = object();
  const JsonValue* member = value.find(name);
  return member != nullptr && member->isObject() ? *member : empty;
}

// We accept every version that the client names, because none of our answers differs between versions.
JsonValue initializeResult(const JsonValue& params) {
  return object(member("protocolVersion", params.textIn("protocolVersion").value_or(protocolVersion)),
                member("capabilities", object(member("tools", object()))),
                member("serverInfo", object(member("name", "Halvane"), member("version", serverVersion))));
}

JsonValue toolResult(std::string text) {
  return object(member("content", array(object(member("type", "text"), member("text", std::move(text))))),
                member("isError", false));
}

JsonValue callToolWith(const JsonValue& params) {
  return toolResult(callTool(params.textIn("name").value_or(""), objectIn(params, "arguments")));
}

// The line as JSON; nothing when it is not JSON. Bytes that are not UTF-8 are replaced, so the request still
// gets its answer.
std::optional<JsonValue> parseLine(std::string_view line) {
  constexpr std::array<std::string_view, 3> membersThatCount = {"method", "id", "params"};
  const std::string_view text = withoutByteOrderMark(line);
  return isUtf8(text) ? JsonValue::parse(text, membersThatCount)
                      : JsonValue::parse(repairUtf8(text), membersThatCount);
}

void handleLine(std::string_view line) {
  const std::optional<JsonValue> message = parseLine(line);
  const std::optional<std::string_view> method = message ? message->textIn("method") : std::nullopt;
  if (!method) return;
  // To JSON-RPC, a request without an "id" is a notification, and gets no answer. We answer initialize, ping,
  // tools/list and tools/call all the same, with an id of null.
  static const JsonValue null;
  const JsonValue* given = message->find("id");
  const JsonValue& id = given != nullptr ? *given : null;
  const JsonValue& params = objectIn(*message, "params");

  if (*method == "initialize") {
    sendResult(initializeResult(params), id);
  } else if (*method == "notifications/initialized" || *method == "notifications/cancelled") {
    // Nothing to do: there is no state to set up and no call to interrupt.
  } else if (*method == "ping") {
    sendResult(object(), id);
  } else if (*method == "tools/list") {
    sendResult(object(member("tools", toolDefinitions)), id);
  } else if (*method == "tools/call") {
    requireMemory(toolMemory);
    sendResult(callToolWith(params), id);
    giveBackFreeMemory();
  } else if (given != nullptr) {
    sendError(methodNotFound, std::string("Method not found: ").append(*method), id);
  }
}

}  // namespace

void serveMessages() {
  LineReader lines(STDIN_FILENO);
  while (const std::optional<std::string_view> line = lines.next()) {
    try {
      handleLine(*line);
    } catch (const std::bad_alloc&) {
      // This message goes unanswered. Its memory is free again for the next one.
      giveBackFreeMemory();
    }
  }
}

}  // namespace halvane
