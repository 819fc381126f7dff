#include "server/tool_catalogue.h"

namespace halvane {
namespace {

JsonValue::Member argument(const char* name, const char* type, const char* description) {
  return member(name, object(member("type", type), member("description", description)));
}

const char* const tagDescription = "Only entries with this tag, e.g. work";

JsonValue searchEntriesDefinition() {
  return object(
      member("name", "search_entries"),
      member("description",
             "Full-text search across all journal entries, optionally limited to one tag. Returns matching "
             "entries with date, tags, file path, and a snippet around the match."),
      member("inputSchema",
             object(member("type", "object"),
                    member("properties",
                           object(argument("query", "string",
                                           "Text to search for (case-insensitive). Empty with a tag lists "
                                           "that tag's entries."),
                                  argument("tag", "string", tagDescription),
                                  argument("limit", "integer", "Maximum results, default 10"))),
                    member("required", array("query")))));
}

JsonValue readEntryDefinition() {
  return object(
      member("name", "read_entry"),
      member("description",
             "Read one full journal entry by its file path (as returned by search_entries or list_recent)."),
      member("inputSchema",
             object(member("type", "object"),
                    member("properties",
                           object(argument("path", "string", "Absolute path to the entry .md file"))),
                    member("required", array("path")))));
}

JsonValue listRecentDefinition() {
  return object(
      member("name", "list_recent"),
      member("description",
             "List journal entries from the last N days with date, tags and first line, optionally limited "
             "to one tag."),
      member("inputSchema",
             object(member("type", "object"),
                    member("properties",
                           object(argument("days", "integer", "How many days back to look, default 7"),
                                  argument("tag", "string", tagDescription))),
                    member("required", array()))));
}

}  // namespace

const JsonValue toolDefinitions =
    array(searchEntriesDefinition(), readEntryDefinition(), listRecentDefinition());

}  // namespace halvane
