#include "server/tool_dispatch.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>

#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"

namespace halvane {
namespace {

// The text of a call of `tool` with `arguments`, a JSON object.
std::string call(const std::string& tool, const std::string& arguments) {
  constexpr std::array<std::string_view, 1> keptMembers = {"arguments"};
  const std::optional<JsonValue> request = JsonValue::parse("{\"arguments\":" + arguments + "}", keptMembers);
  return callTool(tool, *request->find("arguments"));
}

struct Case {
  const char* arguments;
  const char* text;
};

class ToolDispatch : public testing::Test {
 protected:
  const TemporaryHome home_;
};

TEST_F(ToolDispatch, SaysThatAToolIsUnknown) {
  for (const char* name : {"", "search", "search_entries ", "SEARCH_ENTRIES", "Read_Entry", "list-recent"}) {
    EXPECT_EQ(call(name, "{}"), std::string("Unknown tool: ") + name);
  }
}

TEST_F(ToolDispatch, KeepsANulInTheNameOfAnUnknownTool) {
  const std::string name("read_entry\0", 11);
  EXPECT_EQ(call(name, "{}"), "Unknown tool: " + name);
}

TEST_F(ToolDispatch, PassesTheQueryOnAsItIs) {
  const std::vector<Case> cases = {
      {R"({"query":"harbour"})", "No entries match \"harbour\"."},
      {R"({"query":"  Harbour\n"})", "No entries match \"  Harbour\n\"."},
      {R"({"query":" "})", "No entries match \" \"."},
      {R"({"query":"\"#\""})", "No entries match \"\"#\"\"."},
  };
  for (const Case& one : cases) EXPECT_EQ(call("search_entries", one.arguments), one.text);
}

TEST_F(ToolDispatch, TakesAQueryThatIsNoTextForTheEmptyOne) {
  for (const char* arguments : {"{}", R"({"query":null})", R"({"query":5})", R"({"query":true})",
                                R"({"query":["a"]})", R"({"query":{"query":"a"}})", R"({"Query":"a"})"}) {
    EXPECT_EQ(call("search_entries", arguments), "No entries match \"\".") << arguments;
  }
}

TEST_F(ToolDispatch, PassesTheTagOnInItsUsualForm) {
  const std::vector<Case> cases = {
      {R"({"tag":"work"})", "No entries tagged work in the last 7 days."},
      {R"({"tag":"  #Work  "})", "No entries tagged work in the last 7 days."},
      {R"({"tag":"##Deep   Work"})", "No entries tagged deep-work in the last 7 days."},
      {R"({"tag":"snake_case"})", "No entries tagged snake-case in the last 7 days."},
      {R"({"tag":"a - b"})", "No entries tagged a---b in the last 7 days."},
      {R"({"tag":"Cafe\u0301"})", "No entries tagged caf\u00e9 in the last 7 days."},
      {R"({"tag":"ABCDEFGHIJKLMNOPQRSTUVWXYZABCD"})",
       "No entries tagged abcdefghijklmnopqrstuvwxyzabcd in the last 7 days."},
  };
  for (const Case& one : cases) EXPECT_EQ(call("list_recent", one.arguments), one.text) << one.arguments;
  EXPECT_EQ(call("search_entries", R"({"query":"x","tag":"#Work"})"), "No entries tagged work match \"x\".");
}

TEST_F(ToolDispatch, TakesATagWithoutAUsualFormForNone) {
  for (const char* tag : {"null", "5", "true", "[\"work\"]", "{}", "\"\"", "\"  \\t\"", "\"#\"", "\"!!!\"",
                          "\"---\"", "\"abcdefghijklmnopqrstuvwxyzabcde\""}) {
    const std::string arguments = std::string("{\"tag\":") + tag + "}";
    EXPECT_EQ(call("list_recent", arguments), "No entries in the last 7 days.") << tag;
    EXPECT_EQ(call("search_entries", arguments), "No entries match \"\".") << tag;
  }
}

TEST_F(ToolDispatch, BringsTheDaysIntoTheirRange) {
  const std::vector<std::pair<const char*, int>> cases = {
      {"1", 1},     {"30", 30},   {"365", 365},
      {"0", 1},     {"-5", 1},    {"-9223372036854775808", 1},
      {"366", 365}, {"400", 365}, {"9223372036854775807", 365},
      {"10.0", 10}, {"1e1", 10},  {"100e-1", 10},
      {"2.5", 7},   {"0.999", 7}, {"9223372036854775808", 7},
      {"1e400", 7}, {"\"5\"", 7}, {"null", 7},
      {"true", 7},  {"false", 7}, {"[5]", 7},
  };
  for (const auto& [days, number] : cases) {
    EXPECT_EQ(call("list_recent", std::string("{\"days\":") + days + "}"),
              "No entries in the last " + std::to_string(number) + " days.")
        << days;
  }
  EXPECT_EQ(call("list_recent", "{}"), "No entries in the last 7 days.");
}

TEST_F(ToolDispatch, BringsTheLimitIntoItsRange) {
  for (int file = 0; file < 60; ++file)
    home_.write(std::to_string(file) + ".md", EntryFile{.body = "harbour"}.text());
  const std::vector<std::pair<const char*, int>> cases = {
      {"1", 1},      {"20", 20},     {"50", 50},
      {"0", 1},      {"-5", 1},      {"-9223372036854775808", 1},
      {"51", 50},    {"1000", 50},   {"9223372036854775807", 50},
      {"12.0", 12},  {"2e1", 20},    {"2.5", 10},
      {"1e400", 10}, {"\"20\"", 10}, {"null", 10},
      {"true", 10},  {"false", 10},  {"9223372036854775808", 10},
  };
  const auto entriesIn = [](std::string_view text) {
    int count = 0;
    for (std::size_t at = 0; (at = text.find("…harbour…", at)) != std::string_view::npos; ++at) ++count;
    return count;
  };
  for (const auto& [limit, count] : cases) {
    const std::string text =
        call("search_entries", std::string(R"({"query":"harbour","limit":)") + limit + "}");
    EXPECT_EQ(entriesIn(text), count) << limit;
  }
  EXPECT_EQ(entriesIn(call("search_entries", R"({"query":"harbour"})")), 10);
}

TEST_F(ToolDispatch, PassesThePathOnAsItIs) {
  const std::string path = home_.write("a.md", EntryFile{.body = "The harbour."}.text());
  EXPECT_EQ(call("read_entry", "{\"path\":\"" + path + "\"}"),
            "Date: Nov 3, 2025 at 9:14 AM\nDuration: 0s\nCleaned: false\n\nThe harbour.");
  EXPECT_EQ(call("read_entry", R"({"path":"~/Documents/Halvane/ b.md "})"),
            "No entry found at ~/Documents/Halvane/ b.md .");
}

TEST_F(ToolDispatch, TakesAPathThatIsNoTextForTheEmptyOne) {
  for (const char* arguments :
       {"{}", R"({"path":null})", R"({"path":5})", R"({"path":["/"]})", R"({"path":""})"}) {
    EXPECT_EQ(call("read_entry", arguments), "Refused: path is outside the journal.") << arguments;
  }
}

TEST_F(ToolDispatch, LooksAtNoOtherArguments) {
  EXPECT_EQ(call("search_entries", R"({"query":"x","days":3,"path":"/","unknown":[1]})"),
            "No entries match \"x\".");
  EXPECT_EQ(call("list_recent", R"({"days":3,"query":"x","limit":1})"), "No entries in the last 3 days.");
}

TEST_F(ToolDispatch, TakesTheLastOfTwoArgumentsOfOneName) {
  EXPECT_EQ(call("list_recent", R"({"days":3,"days":4})"), "No entries in the last 4 days.");
}

}  // namespace
}  // namespace halvane
