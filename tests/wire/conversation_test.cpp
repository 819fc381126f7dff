#include "tests/wire/conversation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"
#include "tests/wire/clock.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

namespace halvane {
namespace {

const std::filesystem::path folderOfAll = HALVANE_SOURCE_FOLDER "/tests/wire/conversations";

std::vector<std::string> namesOfAll() {
  std::vector<std::string> names;
  for (const auto& file : std::filesystem::directory_iterator(folderOfAll)) {
    if (file.path().extension() == ".txt") names.push_back(file.path().stem());
  }
  std::sort(names.begin(), names.end());
  return names;
}

// One of the conversations, with a home for it.
class ConversationTest : public testing::TestWithParam<std::string> {
 protected:
  ConversationTest()
      : path_(folderOfAll / (GetParam() + ".txt")),
        conversation_(readConversation(path_)),
        home_(folder_.below(conversation_.home)) {
    makeFolder(home_);
    if (!conversation_.copied.empty()) copyBelow(home_, conversation_.copied);
    for (const auto& [name, content] : conversation_.files) writeFile(home_ + "/" + name, inPlace(content));
  }

  static void copyBelow(const std::string& home, const std::string& folder) {
    const std::filesystem::path source = HALVANE_SOURCE_FOLDER;
    std::filesystem::copy(source / folder, home, std::filesystem::copy_options::recursive);
  }

  Surroundings surroundings() const {
    Surroundings found{.home = home_, .currentFolder = home_ + "/" + conversation_.folder};
    if (!conversation_.clock.empty()) found.variables = clockAt(secondsOf(conversation_.clock));
    for (const std::string& variable : conversation_.variables) found.variables.push_back(inPlace(variable));
    return found;
  }

  std::string inPlace(std::string_view text) const { return withHome(text, home_); }

  void expectAnswer(ServerProcess& server, const Conversation::Turn& turn) const {
    const std::string expected = inPlace(turn.line);
    ASSERT_TRUE(canonicalJson(expected))
        << path_ << ":" << turn.lineNumber << ": the expected line is not JSON";
    const std::optional<std::string> answer = server.receive();
    ASSERT_TRUE(answer) << path_ << ":" << turn.lineNumber << ": no answer";
    EXPECT_EQ(canonicalJson(*answer), canonicalJson(expected))
        << path_ << ":" << turn.lineNumber << ": the answer is another one: " << *answer;
  }

  const std::string path_;
  const Conversation conversation_;
  const TemporaryFolder folder_;
  const std::string home_;
};

TEST_P(ConversationTest, GoesAsWritten) {
  ServerProcess server(surroundings());
  for (const Conversation::Turn& turn : conversation_.turns) {
    if (turn.sent) {
      server.send(inPlace(turn.line));
    } else {
      ASSERT_NO_FATAL_FAILURE(expectAnswer(server, turn));
    }
  }
  EXPECT_EQ(server.finish(), quietEnding);
}

// A client need not wait for an answer before it goes on, nor until the server listens.
TEST_P(ConversationTest, GoesAsWrittenWhenAllIsSentAtOnce) {
  ServerProcess server(surroundings());
  std::string all;
  for (const Conversation::Turn& turn : conversation_.turns) {
    if (turn.sent) all += inPlace(turn.line) + "\n";
  }
  server.write(all);
  server.closeInput();
  for (const Conversation::Turn& turn : conversation_.turns) {
    if (turn.sent) continue;
    ASSERT_NO_FATAL_FAILURE(expectAnswer(server, turn));
  }
  EXPECT_EQ(server.finish(), quietEnding);
}

INSTANTIATE_TEST_SUITE_P(Conversations, ConversationTest, testing::ValuesIn(namesOfAll()),
                         [](const auto& name) { return name.param; });

}  // namespace
}  // namespace halvane
