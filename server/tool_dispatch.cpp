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

// A number from 1 to `largest`. Anything but a whole number takes the default, not the nearest whole number.
std::int64_t numberArgument(const JsonValue& arguments, const char* name, std::int64_t fallback,
                            std::int64_t largest) {
  const JsonValue* argument = arguments.find(name);
  const std::optional<std::int64_t> number = argument == nullptr ? std::nullopt : argument->wholeNumber();
  return std::clamp<std::int64_t>(number.value_or(fallback), 1, largest);
}

// The tag to filter by; nothing for a tag without a canonical form, and then all entries are searched.
std::optional<std::string> tagArgument(const JsonValue& arguments) {
  return Entry::normalizeTag(arguments.textIn("tag").value_or(""));
}

}  // namespace

std::string callTool(std::string_view name, const JsonValue& arguments) {
  if (name == "search_entries") {
    return searchEntries(arguments.textIn("query").value_or(""), tagArgument(arguments),
                         numberArgument(arguments, "limit", 10, 50));
  }
  if (name == "read_entry") return readEntry(arguments.textIn("path").value_or(""));
  if (name == "list_recent") {
    return listRecent(numberArgument(arguments, "days", 7, 365), tagArgument(arguments));
  }
  return std::string("Unknown tool: ").append(name);
}

}  // namespace halvane
