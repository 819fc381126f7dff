#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/figures/figure.h"
#include "tests/figures/rounds.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// For ten seconds, the companion application, or another program that keeps the journal, never rests.

namespace halvane {
namespace {

constexpr int untouched = 40;
constexpr int changing = 10;  // of each kind

// An entry whose body is `version` followed by letters of that version. Each version has another length.
std::string entryOfVersion(int version) {
  const char letter = static_cast<char>('a' + version % 26);
  return EntryFile{
      .date = "2099-11-03T09:14:00Z",
      .body = "changing\n" + std::string(20000 + 17000 * static_cast<std::size_t>(version % 5), letter)}
      .text();
}

class ChangingJournal : public testing::Test {
 protected:
  ChangingJournal() {
    for (int entry = 0; entry < untouched; ++entry)
      home_.write(std::to_string(entry % 4) + "/untouched " + std::to_string(entry) + ".md",
                  EntryFile{.date = "2098-11-03T09:14:00Z", .body = untouchedBody(entry)}.text());
    for (int file = 0; file < changing; ++file) writeFile(saved(file), entryOfVersion(0));
  }

  static std::string untouchedBody(int entry) { return "untouched " + std::to_string(entry) + "."; }
  std::string path(int file, const std::string& kind) const {
    return home_.journal() + "/" + std::to_string(file % 4) + "/" + kind + " " + std::to_string(file) + ".md";
  }
  // Replaced by renaming, so it exists at any moment
  std::string saved(int file) const { return path(file, "saved"); }

  // Rewrites, cuts, renames and removes.
  void change(int version) const {
    for (int file = 0; file < changing; ++file) {
      const std::string text = entryOfVersion(version + file);
      writeFile(saved(file) + ".new", text);
      std::filesystem::rename(saved(file) + ".new", saved(file));
      writeFile(path(file, "rewritten"), text);
      std::filesystem::resize_file(path(file, "rewritten"), text.size() / 2);
      std::filesystem::rename(path(file, "rewritten"), path(file, "renamed"));
      if (version % 2 == 0) std::filesystem::remove(path(file, "renamed"));
    }
  }

  std::string search(const std::string& query) {
    return askTool(server_, "search_entries", "{\"query\":" + jsonString(query) + ",\"limit\":50}");
  }
  std::string read(const std::string& file) {
    return askTool(server_, "read_entry", "{\"path\":" + jsonString(file) + "}");
  }

  const TemporaryHome home_;
  ServerProcess server_{{.home = home_.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}}};
};

constexpr std::string_view allLetters("abcdefghijklmnopqrstuvwxyz\0", 27);
const std::string head = "Date: Nov 3, 2099 at 9:14 AM\nDuration: 0s\nCleaned: false\n\nchanging\n";

// Whether the text of an entry is all of one version.
bool isWhole(std::string_view text) {
  if (!text.starts_with(head) || text.size() == head.size()) return false;
  const std::string_view letters = text.substr(head.size());
  return letters.size() % 17000 == 20000 % 17000 &&
         letters.find_first_not_of(letters[0]) == std::string_view::npos;
}

// Whether the text could be read of a file that is rewritten in place meanwhile: nothing but letters of its
// versions, from the start. Within one read the system may mix two versions, and show zeros where the file is
// being cut.
bool isOfVersions(std::string_view text) {
  if (text.starts_with("No entry found at ")) return true;
  if (!text.starts_with(head)) return false;
  const std::string_view letters = text.substr(head.size());
  return letters.size() <= 88000 && letters.find_first_not_of(allLetters) == std::string_view::npos;
}

TEST_F(ChangingJournal, HasEveryUntouchedEntryInEveryAnswerAndShowsNoMixture) {
  std::atomic<bool> stopped = false;
  std::thread application([&] {
    for (int version = 0; !stopped; ++version) change(version);
  });
  int missing = 0;
  int mixed = 0;
  int shown = 0;
  int foreign = 0;
  int answers = 0;
  for (const Stopwatch watch; watch.seconds() < 10; ++answers) {
    const std::string found = search("untouched");
    for (int entry = 0; entry < untouched; ++entry)
      missing += found.find("…" + untouchedBody(entry) + "…") == std::string::npos ? 1 : 0;
    mixed += isWhole(read(saved(answers % changing))) ? 0 : 1;
    for (const char* kind : {"rewritten", "renamed"}) {
      const std::string text = read(path(answers % changing, kind));
      shown += text.starts_with(head) ? 1 : 0;
      foreign += isOfVersions(text) ? 0 : 1;
    }
  }
  stopped = true;
  application.join();
  EXPECT_EQ(server_.finish(), quietEnding);
  EXPECT_GT(answers, 100);
  EXPECT_GT(shown, answers / 10) << "the rewritten files were almost never found";
  expectExactly("untouched entries missed in 10 s of changes", missing, "entries", 0);
  expectExactly("files saved by renaming that were missed or mixed", mixed, "answers", 0);
  expectExactly("files rewritten in place that were shown half old and half new", foreign, "answers", 0);
}

}  // namespace
}  // namespace halvane
