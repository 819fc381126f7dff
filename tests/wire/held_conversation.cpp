#include "tests/wire/held_conversation.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/temporary_folder.h"
#include "tests/support/user_settings.h"
#include "tests/support/written_file.h"
#include "tests/wire/clock.h"
#include "tests/wire/conversation.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

namespace halvane {
namespace {

const std::filesystem::path project = HALVANE_SOURCE_FOLDER;

// A conversation and a home for it.
class HeldConversation {
 public:
  explicit HeldConversation(const std::string& path)
      : path_(path), conversation_(readConversation(path)), home_(folder_.below(conversation_.home)) {
    makeFolder(home_);
    if (!conversation_.copied.empty()) {
      std::filesystem::copy(project / conversation_.copied, home_, std::filesystem::copy_options::recursive);
    }
    for (const Conversation::File& file : conversation_.files) {
      const std::string place = file.areSettings ? settingsFile(home_, file.name) : home_ + "/" + file.name;
      writeFile(place, inPlace(file.content));
    }
  }

  Surroundings surroundings() const {
    Surroundings found{.home = home_, .currentFolder = home_ + "/" + conversation_.folder};
    if (!conversation_.clock.empty()) found.variables = clockAt(secondsOf(conversation_.clock));
    if (!conversation_.locale.empty()) {
      for (const std::string& variable : chooseLocale(home_, conversation_.locale))
        found.variables.push_back(variable);
    }
    if (!conversation_.zone.empty()) found.variables.push_back("TZ=" + conversation_.zone);
    for (const std::string& variable : conversation_.variables) found.variables.push_back(inPlace(variable));
    return found;
  }

  const std::vector<Conversation::Turn>& turns() const { return conversation_.turns; }
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

 private:
  const std::string path_;
  const Conversation conversation_;
  const TemporaryFolder folder_;
  const std::string home_;
};

}  // namespace

std::vector<std::string> conversationsIn(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& file : std::filesystem::directory_iterator(project / folder)) {
    if (file.path().extension() == ".txt") names.push_back(file.path().stem());
  }
  std::sort(names.begin(), names.end());
  return names;
}

void holdConversation(const std::filesystem::path& path) {
  const HeldConversation held(project / path);
  ServerProcess server(held.surroundings());
  for (const Conversation::Turn& turn : held.turns()) {
    if (turn.sent) {
      server.send(held.inPlace(turn.line));
    } else {
      ASSERT_NO_FATAL_FAILURE(held.expectAnswer(server, turn));
    }
  }
  EXPECT_EQ(server.finish(), quietEnding);
}

void holdConversationAtOnce(const std::filesystem::path& path) {
  const HeldConversation held(project / path);
  ServerProcess server(held.surroundings());
  std::string all;
  for (const Conversation::Turn& turn : held.turns()) {
    if (turn.sent) all += held.inPlace(turn.line) + "\n";
  }
  server.write(all);
  server.closeInput();
  for (const Conversation::Turn& turn : held.turns()) {
    if (turn.sent) continue;
    ASSERT_NO_FATAL_FAILURE(held.expectAnswer(server, turn));
  }
  EXPECT_EQ(server.finish(), quietEnding);
}

}  // namespace halvane
