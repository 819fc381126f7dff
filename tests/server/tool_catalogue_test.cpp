#include "server/tool_catalogue.h"

#include <gtest/gtest.h>

#include <boost/json.hpp>

namespace halvane {
namespace {

// The order of members in an object means nothing, so the comparisons here don't look at it.
boost::json::array definitions() {
  return boost::json::parse(toolDefinitions.serialise()).as_array();
}

TEST(ToolDefinitions, AreThreeToolsInOrder) {
  std::vector<std::string> names;
  for (const boost::json::value& definition : definitions()) {
    names.emplace_back(definition.at("name").as_string().c_str());
  }
  EXPECT_EQ(names, (std::vector<std::string>{"search_entries", "read_entry", "list_recent"}));
}

// Sees that the tool at `place` is described so, with a schema like `schema`, and that nothing else is said.
void expectDefinition(std::size_t place, const char* description, const char* schema) {
  const boost::json::object definition = definitions().at(place).as_object();
  EXPECT_EQ(definition.size(), 3U);
  EXPECT_EQ(definition.at("description"), description);
  EXPECT_EQ(definition.at("inputSchema"), boost::json::parse(schema));
}

TEST(ToolDefinitions, OfferASearch) {
  expectDefinition(0,
                   "Full-text search across all journal entries, optionally limited to one tag. Returns "
                   "matching entries with date, tags, file path, and a snippet around the match.",
                   R"({
    "type": "object",
    "properties": {
      "query": {
        "type": "string",
        "description": "Text to search for (case-insensitive). Empty with a tag lists that tag's entries."
      },
      "tag": {"type": "string", "description": "Only entries with this tag, e.g. work"},
      "limit": {"type": "integer", "description": "Maximum results, default 10"}
    },
    "required": ["query"]
  })");
}

TEST(ToolDefinitions, OfferTheReadingOfOneEntry) {
  expectDefinition(1,
                   "Read one full journal entry by its file path (as returned by search_entries or "
                   "list_recent).",
                   R"({
    "type": "object",
    "properties": {"path": {"type": "string", "description": "Absolute path to the entry .md file"}},
    "required": ["path"]
  })");
}

TEST(ToolDefinitions, OfferAListOfTheLastDays) {
  expectDefinition(2,
                   "List journal entries from the last N days with date, tags and first line, optionally "
                   "limited to one tag.",
                   R"({
    "type": "object",
    "properties": {
      "days": {"type": "integer", "description": "How many days back to look, default 7"},
      "tag": {"type": "string", "description": "Only entries with this tag, e.g. work"}
    },
    "required": []
  })");
}

}  // namespace
}  // namespace halvane
