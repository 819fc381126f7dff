#include <gtest/gtest.h>
#include <sys/resource.h>

#include <filesystem>

#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/units.h"
#include "tests/wire/messages.h"
#include "tests/wire/process_state.h"
#include "tests/wire/server_process.h"

// The system has no more memory to give. The message that needs it goes unanswered, and the next one is
// served.

namespace halvane {
namespace {

class MemoryRefused : public testing::Test {
 protected:
  MemoryRefused() { path_ = home_.write("a.md", EntryFile{.body = "Walked to the harbour."}.text()); }

  Surroundings surroundings() const {
    return {.home = home_.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}};
  }
  std::string search() const { return toolCall("search_entries", R"({"query":"harbour"})"); }
  std::string hit() const { return "[Nov 3, 2025 at 9:14 AM] " + path_ + "\n…Walked to the harbour.…"; }

  std::optional<std::string> searchAnswer(ServerProcess& server) const {
    server.send(search());
    return answerBefore(server);
  }
  // The answer to the last request; nothing when a later message is answered first.
  static std::optional<std::string> answerBefore(ServerProcess& server) {
    server.send(R"({"id":"later","method":"ping"})");
    const std::string first = server.receive().value_or("");
    if (first.find("later") != std::string::npos) return std::nullopt;
    EXPECT_NE(server.receive().value_or("").find("later"), std::string::npos);
    return resultText(first);
  }

  static void allowMore(const ServerProcess& server, std::size_t bytes) {
    const rlimit limit{addressSpace(server.id()) + bytes, RLIM_INFINITY};
    ASSERT_EQ(prlimit(server.id(), RLIMIT_AS, &limit, nullptr), 0);
  }
  static void allowAll(const ServerProcess& server) {
    const rlimit limit{RLIM_INFINITY, RLIM_INFINITY};
    ASSERT_EQ(prlimit(server.id(), RLIMIT_AS, &limit, nullptr), 0);
  }

  const TemporaryHome home_;
  std::string path_;
};

TEST_F(MemoryRefused, ForALineLeavesItUnanswered) {
  ServerProcess server(surroundings());
  ASSERT_EQ(searchAnswer(server), hit());
  allowMore(server, 16 * mebibyte);
  server.send(toolCall("search_entries", "{\"query\":\"" + std::string(64 * mebibyte, 'x') + "\"}"));
  EXPECT_TRUE(answersPing(server));
  EXPECT_EQ(searchAnswer(server), hit());
  EXPECT_EQ(server.finish(), quietEnding);
}

TEST_F(MemoryRefused, ForAReplyLeavesItUnanswered) {
  ServerProcess server(surroundings());
  ASSERT_TRUE(answersPing(server));
  allowMore(server, 64 * mebibyte);
  server.send(toolCall(std::string(30 * mebibyte, 'x'), "{}"));
  EXPECT_TRUE(answersPing(server));
  EXPECT_EQ(server.finish(), quietEnding);
}

// An answer without the entry would say that the entry doesn't exist.
TEST_F(MemoryRefused, ForAFileLeavesTheWholeCallUnanswered) {
  const EntryFile ofTheFuture{.date = "2100-01-01T00:00:00Z", .body = std::string(64 * mebibyte, 'x')};
  const std::string large = home_.write("large.md", ofTheFuture.text());
  ServerProcess server(surroundings());
  ASSERT_TRUE(answersPing(server));
  allowMore(server, 16 * mebibyte);
  server.send(search());
  server.send(toolCall("list_recent", R"({"days":365})"));
  server.send(toolCall("read_entry", "{\"path\":" + jsonString(large) + "}"));
  EXPECT_TRUE(answersPing(server));

  std::filesystem::remove(large);
  EXPECT_EQ(searchAnswer(server), hit());
  EXPECT_EQ(server.finish(), quietEnding);
}

// The first entry is so large that the C library takes smaller blocks from a store of its own from then on.
TEST_F(MemoryRefused, LeavesTheServerNothingOfWhatTheMessageTook) {
  ServerProcess server(surroundings());
  const auto isAnswered = [&](std::size_t size) {
    const std::string path = home_.write("large.md", EntryFile{.body = std::string(size, 'x')}.text());
    server.send(toolCall("read_entry", "{\"path\":" + jsonString(path) + "}"));
    return answerBefore(server).has_value();
  };
  ASSERT_TRUE(isAnswered(24 * mebibyte));
  const std::size_t before = residentMemory(server.id());
  allowMore(server, 24 * mebibyte);
  EXPECT_FALSE(isAnswered(12 * mebibyte));
  EXPECT_LE(residentMemory(server.id()), before + mebibyte);
  EXPECT_EQ(server.finish(), quietEnding);
}

// However little there is: an answer is the right one or none, and once there is memory again all is well.
class HardlyAnyMemory : public MemoryRefused, public testing::WithParamInterface<const char*> {
 protected:
  // The answer to a call of the tool; nothing when the next message is answered first.
  std::optional<std::string> answer(ServerProcess& server) const {
    server.send(toolCall(GetParam(),
                         R"({"query":"stra\u00dfe","tag":"\u00dcn\u00ef_Code","path":")" + path_ + "\"}"));
    return answerBefore(server);
  }
};

TEST_P(HardlyAnyMemory, MakesNoAnswerWrongAndNoLaterOneMissing) {
  home_.setJournalRoot("app.halvane.Halvane", "~/Documents/Halvane");
  for (const char* name : {"a.md", "b.md", "c.md", "2025/d.md", "2025/e.md"}) {
    const std::string body = "STRASSE e\u0301 " + std::string(5000, 'x');
    home_.write(name, EntryFile{.date = "2099-11-03T09:14:00Z", .tags = "ÜNÏ code", .body = body}.text());
  }
  ServerProcess withEnough(surroundings());
  const std::optional<std::string> right = answer(withEnough);
  ASSERT_TRUE(right);
  int answered = 0;
  int unanswered = 0;
  for (std::size_t most = 0; most <= 4 * mebibyte; most += 64 << 10) {
    SCOPED_TRACE("with " + std::to_string(most) + " bytes more");
    ServerProcess server(surroundings());
    ASSERT_TRUE(answersPing(server));
    allowMore(server, most);
    const std::optional<std::string> given = answer(server);
    EXPECT_EQ(given.value_or(*right), *right);
    ++(given ? answered : unanswered);

    allowAll(server);
    EXPECT_EQ(answer(server), right);
    EXPECT_EQ(server.finish(), quietEnding);
  }
  EXPECT_GT(answered, 0) << "there was never enough memory";
  EXPECT_GT(unanswered, 0) << "there was always enough memory";
}

INSTANTIATE_TEST_SUITE_P(Tools, HardlyAnyMemory,
                         testing::Values("search_entries", "read_entry", "list_recent"),
                         [](const auto& tool) { return tool.param; });

}  // namespace
}  // namespace halvane
