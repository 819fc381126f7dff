#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/processor_time.h"
#include "tests/wire/server_process.h"

// Thousands of ways to ask for an entry outside the journal: none of them shows one, and none costs more than
// an ordinary path.

namespace halvane {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

// Ways up, and what a careless reader might take for one: encoded once or twice, with a backslash,
// full-width, longer than UTF-8 allows, with something before, after or in between.
const Texts waysUp = {
    "..",
    ".",
    "...",
    "....",
    "./..",
    "x/../..",
    "inside.md/..",
    "inside.md/../..",
    "..;",
    "%2e%2e",
    "%2E%2e",
    "%252e%252e",
    "..%00",
    "%c0%ae%c0%ae",
    "%u002e%u002e",
    "..\\",
    "\\..",
    "..\\..",
    "\uFF0E\uFF0E",
    "\u2024\u2024",
    "\u2025",
    "\xC0\xAE\xC0\xAE",
    "\xE0\x80\xAE\xE0\x80\xAE",
    "\xF0\x80\x80\xAE.",
    "..\xFF",
    ".\xFF.",
    "..\0"s,
    ".\0."s,
    "\0.."s,
    " ..",
    ".. ",
    "..\n",
    "..\u200B",
    ".\u00AD.",
    "\uFEFF..",
    "..\u0301",
    "..\u0338",
    "~",
    "~root",
};

// What stands between two steps, or might be taken for it.
const Texts separators = {"/", "//", "/./", "\\", "%2f", "\u2215", "\uFF0F", "\xC0\xAF"};

constexpr int repetitions[] = {1, 2, 3, 9};

class PathTraversal : public testing::Test {
 protected:
  PathTraversal() {
    home_.setJournalRoot(primarySuite, journal_);
    writeFile(journal_ + "/inside.md", EntryFile{.body = "Inside."}.text());
    for (const char* folder : {"", "Documents/", ".config/", "Documents/Caf\u00E9 Old/", "Documents/Cafe/",
                               "Documents/Cafe\u0301/", "Documents/CAF\u00C9/"})
      writeFile(home_.below(folder + "secret.md"s), EntryFile{.body = "OUTSIDE"}.text());
  }

  // Every beginning, a way up so many times, every end, and that with every separator.
  Texts payloads() const {
    Texts all;
    for (const std::string& separator : separators)
      for (const std::string& wayUp : waysUp)
        for (const int times : repetitions) {
          std::string way;
          for (int time = 0; time < times; ++time) way += wayUp + separator;
          for (const std::string& begin : beginnings_)
            for (const std::string& end : ends_) all.push_back(begin + way + end);
        }
    return all;
  }

  Texts answersTo(const Texts& paths) {
    for (const std::string& path : paths)
      server_.send(toolCall("read_entry", "{\"path\":" + jsonString(path) + "}"));
    Texts answers;
    for (std::size_t i = 0; i < paths.size(); ++i)
      answers.push_back(resultText(server_.receive().value_or("")));
    return answers;
  }

  double secondsFor(const Texts& paths) {
    const auto before = processorTime(server_.id());
    answersTo(paths);
    return std::chrono::duration<double>(processorTime(server_.id()) - before).count();
  }

  const TemporaryHome home_;
  const std::string journal_ = home_.below("Documents/Caf\u00E9");
  const std::string inside_ = "Date: Nov 3, 2025 at 9:14 AM\nDuration: 0s\nCleaned: false\n\nInside.";
  const Texts beginnings_ = {
      "", "/", "~/", journal_ + "/", "~/Documents/Cafe\u0301/", home_.path() + "/Documents/"};
  const Texts ends_ = {"secret.md", "Documents/secret.md", "inside.md", "Documents/Caf\u00E9 Old/secret.md",
                       home_.below("secret.md")};
  ServerProcess server_{
      {.home = home_.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}, .currentFolder = home_.path()}};
};

// The next so many payloads, from the `first`.
Texts batchOf(const Texts& payloads, std::size_t first) {
  constexpr std::size_t most = 100;  // more would fill the pipes
  const auto begin = payloads.begin() + static_cast<std::ptrdiff_t>(first);
  return {begin, begin + static_cast<std::ptrdiff_t>(std::min(most, payloads.size() - first))};
}

TEST_F(PathTraversal, ShowsNothingFromOutside) {
  const Texts all = payloads();
  ASSERT_GE(all.size(), 5000U);
  std::size_t refused = 0;
  std::size_t missing = 0;
  std::size_t shown = 0;
  for (std::size_t first = 0; first < all.size(); first += 100) {
    for (const std::string& answer : answersTo(batchOf(all, first))) {
      if (answer == "Refused: path is outside the journal.") {
        ++refused;
      } else if (answer.starts_with("No entry found at ")) {
        ++missing;
      } else {
        EXPECT_EQ(answer, inside_);
        ++shown;
      }
    }
  }
  EXPECT_GT(refused, all.size() / 4);
  EXPECT_GT(missing, all.size() / 10);
  EXPECT_GT(shown, 0U) << "some of them lead back in";
  EXPECT_EQ(server_.finish(), quietEnding);
}

// What must not be shown is an entry like any other, and shown where it belongs to the journal.
TEST_F(PathTraversal, WouldShowWhatIsOutsideIfItWereInside) {
  home_.setJournalRoot(primarySuite, home_.path());
  for (const char* path :
       {"~/secret.md", "~/Documents/Caf\u00E9/../secret.md", "Documents/Caf\u00E9 Old/secret.md"})
    EXPECT_TRUE(answersTo({path}).front().ends_with("OUTSIDE")) << path;
  EXPECT_EQ(server_.finish(), quietEnding);
}

TEST_F(PathTraversal, CostsWhatAnOrdinaryPathCosts) {
  if (!tellsProcessorTime()) GTEST_SKIP() << "the system tells no processor time";
  const Texts all = payloads();
  const Texts ordinary(100, journal_ + "/inside.md");
  std::vector<double> ratios;
  for (std::size_t first = 0; first + 100 <= all.size(); first += 1500)
    ratios.push_back(secondsFor(batchOf(all, first)) / secondsFor(ordinary));
  std::sort(ratios.begin(), ratios.end());
  EXPECT_LE(ratios.at(ratios.size() / 2), 2);
  EXPECT_LE(ratios.at(ratios.size() * 95 / 100), 4);
  EXPECT_EQ(server_.finish(), quietEnding);
}

}  // namespace
}  // namespace halvane
