#include "server/tool_dispatch.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "journal/entry.h"
#include "tools/list_recent.h"
#include "tools/read_entry.h"
#include "tools/search_entries.h"

namespace halvane {
namespace {

std::string textArgument(const JsonValue& arguments, const char* name) {
  const JsonValue* argument = arguments.find(name);
  const std::string* text = argument == nullptr ? nullptr : argument->text();
  return text == nullptr ? std::string() : *text;
}

// A number from 1 to `most`. What is no whole number takes the default, not the nearest whole one.
std::int64_t numberArgument(const JsonValue& arguments, const char* name, std::int64_t otherwise,
                            std::int64_t most) {
  const JsonValue* argument = arguments.find(name);
  const std::optional<std::int64_t> number = argument == nullptr ? std::nullopt : argument->wholeNumber();
  return std::clamp<std::int64_t>(number.value_or(otherwise), 1, most);
}

// The tag to filter by. One without a canonical form filters nothing: all entries are looked at, as without
// it.
std::optional<std::string> tagArgument(const JsonValue& arguments) {
  return Entry::normalizeTag(textArgument(arguments, "tag"));
}

}  // namespace

std::string callTool(const std::string& name, const JsonValue& arguments) {
  if (name == "search_entries") {
    return searchEntries(textArgument(arguments, "query"), tagArgument(arguments),
                         numberArgument(arguments, "limit", 10, 50));
  }
  if (name == "read_entry") return readEntry(textArgument(arguments, "path"));
  if (name == "list_recent") {
    return listRecent(numberArgument(arguments, "days", 7, 365), tagArgument(arguments));
  }
  return "Unknown tool: " + name;
}

}  // namespace halvane
