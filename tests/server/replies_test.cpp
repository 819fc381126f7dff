#include "server/replies.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <boost/json.hpp>
#include <cstdint>
#include <functional>
#include <limits>

namespace halvane {
namespace {

// What `send` writes to standard output.
std::string outputOf(const std::function<void()>& send) {
  int ends[2];
  EXPECT_EQ(pipe(ends), 0);
  const int before = dup(STDOUT_FILENO);
  dup2(ends[1], STDOUT_FILENO);
  close(ends[1]);
  send();
  dup2(before, STDOUT_FILENO);
  close(before);
  std::string output;
  std::array<char, 4096> block;
  for (ssize_t count; (count = read(ends[0], block.data(), block.size())) > 0;) {
    output.append(block.data(), static_cast<std::size_t>(count));
  }
  close(ends[0]);
  return output;
}

JsonValue objectWith(const char* name, const char* text) {
  JsonValue::Object members;
  members.push_back({name, JsonValue(text)});
  return JsonValue(std::move(members));
}

// Sees that `output` is `json` on one compact line. The order of members means nothing.
void expectLine(const std::string& output, const std::string& json) {
  EXPECT_EQ(output.size(), json.size() + 1);
  ASSERT_TRUE(output.ends_with('\n'));
  EXPECT_EQ(boost::json::parse(output.substr(0, output.size() - 1)), boost::json::parse(json)) << output;
}

TEST(SendResult, WritesOneCompactLine) {
  expectLine(outputOf([] { sendResult(JsonValue(JsonValue::Object()), JsonValue(std::int64_t{1})); }),
             R"({"jsonrpc":"2.0","id":1,"result":{}})");
}

TEST(SendResult, EscapesWhatWouldBreakTheLine) {
  expectLine(outputOf([] { sendResult(objectWith("text", "one\ntwo\r\n\"three\""), JsonValue()); }),
             R"({"jsonrpc":"2.0","id":null,"result":{"text":"one\ntwo\r\n\"three\""}})");
}

TEST(SendResult, EscapesEverySlashInATextAndInAName) {
  expectLine(outputOf([] { sendResult(objectWith("a/b", "/a/b"), JsonValue("c/d")); }),
             R"({"jsonrpc":"2.0","id":"c\/d","result":{"a\/b":"\/a\/b"}})");
}

TEST(SendError, WritesTheCodeAndTheMessageAndNothingElse) {
  expectLine(outputOf([] { sendError(-32601, "Method not found: x", JsonValue()); }),
             R"({"jsonrpc":"2.0","id":null,"error":{"code":-32601,"message":"Method not found: x"}})");
}

TEST(SendError, WritesAnyCode) {
  expectLine(outputOf([] { sendError(std::numeric_limits<std::int64_t>::min(), "", JsonValue("x")); }),
             R"({"jsonrpc":"2.0","id":"x","error":{"code":-9223372036854775808,"message":""}})");
}

TEST(Replies, ComeInTheOrderInWhichTheyAreSent) {
  const std::string output = outputOf([] {
    sendError(1, "first", JsonValue());
    sendResult(objectWith("then", "second"), JsonValue());
  });
  EXPECT_LT(output.find("first"), output.find("second"));
  EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 2);
}

}  // namespace
}  // namespace halvane
