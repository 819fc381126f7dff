#include "server/replies.h"

#include <unistd.h>

#include <string_view>
#include <utility>

#include "system/streams.h"

namespace halvane {
namespace {

// The rest of a reply whose writing failed half-way. It is written before the next reply: otherwise the two
// would form one torn line, and both would be lost.
std::string unwritten;

void writeLine(std::string line) {
  line += '\n';
  unwritten.erase(0, writeWhole(STDOUT_FILENO, unwritten));
  if (!unwritten.empty()) return;
  const std::size_t written = writeWhole(STDOUT_FILENO, line);
  if (written == 0 || written == line.size()) return;
  line.erase(0, written);
  unwritten = std::move(line);
}

void send(const char* name, JsonValue content, const JsonValue& id) {
  const JsonValue reply =
      object(member("jsonrpc", "2.0"), member("id", id), member(name, std::move(content)));
  writeLine(reply.serialise());
}

}  // namespace

void sendResult(JsonValue result, const JsonValue& id) {
  send("result", std::move(result), id);
}

void sendError(std::int64_t code, std::string message, const JsonValue& id) {
  send("error", object(member("code", code), member("message", std::move(message))), id);
}

}  // namespace halvane
