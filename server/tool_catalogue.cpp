#include "server/tool_catalogue.h"

#include <utility>
#include <vector>

namespace halvane {
namespace {

struct Argument {
  const char* name;
  const char* type;
  const char* description;
  bool required;
};

struct Tool {
  const char* name;
  const char* description;
  std::vector<Argument> arguments;
};

const char* const tagDescription = "Only entries with this tag, e.g. work";

JsonValue schemaOf(const std::vector<Argument>& arguments) {
  JsonValue::Object properties;
  JsonValue::Array required;
  for (const Argument& argument : arguments) {
    JsonValue::Object property;
    property.push_back({"type", JsonValue(argument.type)});
    property.push_back({"description", JsonValue(argument.description)});
    properties.push_back({argument.name, JsonValue(std::move(property))});
    if (argument.required) required.push_back(JsonValue(argument.name));
  }
  JsonValue::Object schema;
  schema.push_back({"type", JsonValue("object")});
  schema.push_back({"properties", JsonValue(std::move(properties))});
  schema.push_back({"required", JsonValue(std::move(required))});
  return JsonValue(std::move(schema));
}

JsonValue definitionsOf(const std::vector<Tool>& tools) {
  JsonValue::Array definitions;
  for (const Tool& tool : tools) {
    JsonValue::Object definition;
    definition.push_back({"name", JsonValue(tool.name)});
    definition.push_back({"description", JsonValue(tool.description)});
    definition.push_back({"inputSchema", schemaOf(tool.arguments)});
    definitions.push_back(JsonValue(std::move(definition)));
  }
  return JsonValue(std::move(definitions));
}

}  // namespace

const JsonValue toolDefinitions = definitionsOf({
    {"search_entries",
     "Full-text search across all journal entries, optionally limited to one tag. Returns matching entries "
     "with "
     "date, tags, file path, and a snippet around the match.",
     {{"query", "string", "Text to search for (case-insensitive). Empty with a tag lists that tag's entries.",
       true},
      {"tag", "string", tagDescription, false},
      {"limit", "integer", "Maximum results, default 10", false}}},
    {"read_entry",
     "Read one full journal entry by its file path (as returned by search_entries or list_recent).",
     {{"path", "string", "Absolute path to the entry .md file", true}}},
    {"list_recent",
     "List journal entries from the last N days with date, tags and first line, optionally limited to one "
     "tag.",
     {{"days", "integer", "How many days back to look, default 7", false},
      {"tag", "string", tagDescription, false}}},
});

}  // namespace halvane
