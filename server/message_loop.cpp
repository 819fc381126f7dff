#include "server/message_loop.h"

#include <unistd.h>

#include <array>
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

// What a tool may need besides the journal itself. ICU loads its data when they are first asked for, and
// where memory fails it in the midst of that it remembers the failure for good; so a tool is not begun
// without.
constexpr std::size_t toolMemory = 2 << 20;

// The object called `name` in `value`; an empty one when there is none.
const JsonValue& objectIn(const JsonValue& value, const char* name) {
  static const JsonValue empty{JsonValue::Object()};
  const JsonValue* member = value.find(name);
  return member != nullptr && member->isObject() ? *member : empty;
}

// The text called `name` in `value`; null when there is none.
const std::string* textIn(const JsonValue& value, const char* name) {
  const JsonValue* member = value.find(name);
  return member == nullptr ? nullptr : member->text();
}

JsonValue object(const char* name, JsonValue value) {
  JsonValue::Object members;
  members.push_back({name, std::move(value)});
  return JsonValue(std::move(members));
}

// Whatever version the client names is the one we speak: nothing that we say differs between them.
JsonValue initializeResult(const JsonValue& params) {
  const std::string* named = textIn(params, "protocolVersion");
  JsonValue::Object serverInfo;
  serverInfo.push_back({"name", JsonValue("Halvane")});
  serverInfo.push_back({"version", JsonValue(serverVersion)});
  JsonValue::Object result;
  result.push_back({"protocolVersion", named != nullptr ? JsonValue(*named) : JsonValue(protocolVersion)});
  result.push_back({"capabilities", object("tools", JsonValue(JsonValue::Object()))});
  result.push_back({"serverInfo", JsonValue(std::move(serverInfo))});
  return JsonValue(std::move(result));
}

JsonValue toolResult(std::string text) {
  JsonValue::Object item;
  item.push_back({"type", JsonValue("text")});
  item.push_back({"text", JsonValue(std::move(text))});
  JsonValue::Array content;
  content.push_back(JsonValue(std::move(item)));
  JsonValue::Object result;
  result.push_back({"content", JsonValue(std::move(content))});
  result.push_back({"isError", JsonValue(false)});
  return JsonValue(std::move(result));
}

JsonValue callToolWith(const JsonValue& params) {
  const std::string* name = textIn(params, "name");
  return toolResult(callTool(name != nullptr ? *name : std::string(), objectIn(params, "arguments")));
}

// The line as JSON; nothing when it is none. Bytes that are not UTF-8 are replaced, so that the request that
// holds them still gets its answer.
std::optional<JsonValue> parseLine(std::string_view line) {
  constexpr std::array<std::string_view, 3> wanted = {"method", "id", "params"};
  const std::string_view text = withoutByteOrderMark(line);
  return isUtf8(text) ? JsonValue::parse(text, wanted) : JsonValue::parse(repairUtf8(text), wanted);
}

void handleLine(std::string_view line) {
  const std::optional<JsonValue> message = parseLine(line);
  const std::string* method = message ? textIn(*message, "method") : nullptr;
  if (method == nullptr) return;
  // A request without an "id" is a notification to JSON-RPC. Only the error for unknown methods makes that
  // difference: the methods that we know are answered all the same, with an id of null.
  static const JsonValue null;
  const JsonValue* given = message->find("id");
  const JsonValue& id = given != nullptr ? *given : null;
  const JsonValue& params = objectIn(*message, "params");

  if (*method == "initialize") {
    sendResult(initializeResult(params), id);
  } else if (*method == "notifications/initialized" || *method == "notifications/cancelled") {
    // Accepted, and nothing to do: there is no state to begin and no call that could be interrupted.
  } else if (*method == "ping") {
    sendResult(JsonValue(JsonValue::Object()), id);
  } else if (*method == "tools/list") {
    sendResult(object("tools", toolDefinitions), id);
  } else if (*method == "tools/call") {
    requireMemory(toolMemory);
    sendResult(callToolWith(params), id);
    giveBackFreeMemory();
  } else if (given != nullptr) {
    sendError(methodNotFound, "Method not found: " + *method, id);
  }
}

}  // namespace

void serveMessages() {
  LineReader lines(STDIN_FILENO);
  while (const std::optional<std::string_view> line = lines.next()) {
    try {
      handleLine(*line);
    } catch (const std::bad_alloc&) {
      // This message goes unanswered; what it took is free again for the next one.
      giveBackFreeMemory();
    }
  }
}

}  // namespace halvane
