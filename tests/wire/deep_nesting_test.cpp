#include <gtest/gtest.h>

#include "tests/support/temporary_home.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// JSON may be nested 512 levels deep, the message itself included. A deeper message is dropped.

namespace halvane {
namespace {

std::string repeated(std::size_t count, const std::string& text) {
  std::string all;
  for (std::size_t time = 0; time < count; ++time) all += text;
  return all;
}

std::string arrays(std::size_t levels) {
  return repeated(levels, "[") + repeated(levels, "]");
}

std::string objects(std::size_t levels) {
  return repeated(levels, R"({"a":)") + "1" + repeated(levels, "}");
}

class DeepNesting : public testing::Test {
 protected:
  void expectEcho(const std::string& id) {
    server_.send("{\"id\":" + id + ",\"method\":\"ping\"}");
    EXPECT_EQ(canonicalJson(server_.receive().value_or("")),
              "{\"id\":" + id + ",\"jsonrpc\":\"2.0\",\"result\":{}}");
  }

  void expectDropped(const std::string& line) {
    server_.send(line);
    EXPECT_TRUE(answersPing(server_)) << line.size() << " bytes";
  }

  void TearDown() override { EXPECT_EQ(server_.finish(), quietEnding); }

  const TemporaryHome home_;
  ServerProcess server_{{.home = home_.path()}};
};

TEST_F(DeepNesting, OfFiveHundredAndTwelveLevelsIsRead) {
  expectEcho(arrays(511));
  expectEcho(objects(511));
}

TEST_F(DeepNesting, OfOneLevelMoreIsDropped) {
  expectDropped("{\"id\":" + arrays(512) + ",\"method\":\"ping\"}");
  expectDropped("{\"id\":" + objects(512) + ",\"method\":\"ping\"}");
}

TEST_F(DeepNesting, CountsInMembersThatNobodyReads) {
  server_.send("{\"id\":1,\"method\":\"ping\",\"other\":" + arrays(511) + "}");
  EXPECT_TRUE(server_.receive());
  expectDropped("{\"id\":1,\"method\":\"ping\",\"other\":" + arrays(512) + "}");
}

TEST_F(DeepNesting, OfAMillionLevelsIsDropped) {
  constexpr std::size_t million = 1000000;
  expectDropped(arrays(million));
  expectDropped(objects(million));
  expectDropped(repeated(million, "["));
  expectDropped(R"({"id":1,"method":"tools/call","params":{"name":"none","arguments":)" + objects(million) +
                "}}");
}

}  // namespace
}  // namespace halvane
