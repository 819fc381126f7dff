#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/entry_file.h"
#include "tests/support/file_names.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// Journals as nobody would keep one, on systems that give little: the good entries are found all the same.

namespace halvane {
namespace {

constexpr std::size_t longestName = 255;

std::string entryWithBody(const std::string& body) {
  return EntryFile{.body = body}.text();
}

std::string shownWithBody(const std::string& body) {
  return "Date: Nov 3, 2025 at 9:14 AM\nDuration: 0s\nCleaned: false\n\n" + body;
}

std::string found(const std::string& path, const std::string& body) {
  return "[Nov 3, 2025 at 9:14 AM] " + path + "\n…" + body + "…";
}

class UnrulyJournal : public testing::Test {
 protected:
  UnrulyJournal() { good_ = home_.write("good.md", entryWithBody("A good entry.")); }

  Surroundings surroundings() const {
    return {.home = home_.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}};
  }

  std::string search(const std::string& query) {
    return askTool(server_, "search_entries", "{\"query\":" + jsonString(query) + ",\"limit\":50}");
  }
  std::string read(const std::string& path) {
    return askTool(server_, "read_entry", "{\"path\":" + jsonString(path) + "}");
  }
  void expectGoodEntryAlone() {
    EXPECT_EQ(search("entry"), found(good_, "A good entry."));
    EXPECT_EQ(read(good_), shownWithBody("A good entry."));
  }
  void TearDown() override { EXPECT_EQ(server_.finish(), quietEnding); }

  const TemporaryHome home_;
  std::string good_;
  ServerProcess server_{surroundings()};
};

TEST_F(UnrulyJournal, MayHaveAFolderWithAnEntrysName) {
  const std::string inside = home_.write("x.md/y.md", entryWithBody("Inside."));
  home_.write("x.md/z.md/.md/hidden.md", entryWithBody("Inside."));
  EXPECT_EQ(search("inside"), found(inside, "Inside."));
  EXPECT_EQ(read(inside), shownWithBody("Inside."));
  EXPECT_EQ(read(home_.journal() + "/x.md"), "No entry found at " + home_.journal() + "/x.md.");
  expectGoodEntryAlone();
}

TEST_F(UnrulyJournal, MayHaveLinksInCircles) {
  const std::string journal = home_.journal();
  makeLink(journal + "/one.md", "two.md");
  makeLink(journal + "/two.md", "one.md");
  makeLink(journal + "/self.md", "self.md");
  makeLink(journal + "/folder", ".");
  makeFolder(journal + "/2025");
  makeLink(journal + "/2025/up", "..");
  makeLink(journal + "/2025/up.md", "..");
  expectGoodEntryAlone();
  EXPECT_EQ(read(journal + "/one.md"), "No entry found at " + journal + "/one.md.");
  EXPECT_EQ(read(journal + "/folder/2025/up/folder/good.md"), shownWithBody("A good entry."));
}

TEST_F(UnrulyJournal, MayHaveMoreLinksOnAPathThanTheSystemFollows) {
  std::string path = home_.journal();
  makeLink(home_.journal() + "/folder", ".");
  for (int link = 0; link < 100; ++link) path += "/folder";
  EXPECT_EQ(read(path + "/good.md"), "No entry found at " + path + "/good.md.");
  expectGoodEntryAlone();
}

TEST_F(UnrulyJournal, MayHaveLinksThatLeadNowhere) {
  const std::string journal = home_.journal();
  for (const char* target : {"missing.md", "/missing/a.md", "good.md/a.md", "../../../../../../missing"})
    makeLink(journal + "/to " + std::string(target).substr(0, 3) + ".md", target);
  makeLink(journal + "/2025", "/missing");
  expectGoodEntryAlone();
}

TEST_F(UnrulyJournal, MayHaveNamesAsLongAsTheyCanBe) {
  const std::string folder(longestName, 'f');
  const std::string file = std::string(longestName - 3, 'n') + ".md";
  const std::string path = home_.write(folder + "/" + folder + "/" + file, entryWithBody("Far away."));
  EXPECT_EQ(search("far away"), found(path, "Far away."));
  EXPECT_EQ(read(path), shownWithBody("Far away."));
  EXPECT_EQ(read(path + "x"), "No entry found at " + path + "x.") << "longer than a name can be";
  EXPECT_EQ(read(home_.journal() + "/" + std::string(100000, 'x')),
            "No entry found at " + home_.journal() + "/" + std::string(100000, 'x') + ".");
}

// A name that is text is shown as it is, and what a listing shows can be read.
TEST_F(UnrulyJournal, MayHaveNamesOfAnyCharacters) {
  for (const std::string name : {"line\nfeed",  "return\r", "\"quoted\"",    "it's",
                                 "back\\slash", "\\u0041",  "tab\t",         "\x01\x1F\x7F",
                                 " ",           "-rf",      "*?[a]",         "$(HOME)",
                                 "%2e%2e",      "…",        "\u202Edm",      "\u2028",
                                 "~",           "~root",    "a\u0301\u0327", "\U0001F469\u200D\U0001F467",
                                 "\uFEFF",      "\uFFFE",   "\U0010FFFF",    "<b>&amp;"}) {
    if (!takesName(name)) continue;
    const std::string path = home_.write(name + "/" + name + ".md", entryWithBody("Oddly named."));
    EXPECT_EQ(search("oddly"), found(path, "Oddly named.")) << name;
    EXPECT_EQ(read(path), shownWithBody("Oddly named.")) << name;
    std::filesystem::remove_all(home_.journal() + "/" + name);
  }
}

// A name that is not UTF-8 is shown with one replacement character for each ill-formed sequence.
TEST_F(UnrulyJournal, MayHaveNamesThatAreNoText) {
  if (!takesNamesThatAreNoText()) GTEST_SKIP() << "the file system takes no such names";
  struct Case {
    std::string name, shown;
  };
  for (const auto& [name, shown] :
       {Case{"\xFF\xFE", "\uFFFD\uFFFD"}, Case{"a\xC3", "a\uFFFD"}, Case{"\x80z", "\uFFFDz"},
        Case{"\xC0\xAE\xC0\xAE", "\uFFFD\uFFFD\uFFFD\uFFFD"}, Case{"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},
        Case{"\xE2\x82", "\uFFFD"}, Case{"\xF0\x9F\x91", "\uFFFD"},
        Case{"\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"}}) {
    home_.write(name + "/" + name + ".md", entryWithBody("Oddly named."));
    EXPECT_EQ(search("oddly"), found(home_.journal() + "/" + shown + "/" + shown + ".md", "Oddly named."));
    std::filesystem::remove_all(home_.journal() + "/" + name);
  }
}

TEST_F(UnrulyJournal, MayVanishAndComeBackBetweenCalls) {
  const std::string away = home_.below("away");
  for (int time = 0; time < 50; ++time) {
    expectGoodEntryAlone();
    std::filesystem::rename(home_.journal(), away);
    EXPECT_EQ(search("entry"), "No entries match \"entry\".");
    EXPECT_EQ(read(good_), "No entry found at " + good_ + ".");
    std::filesystem::rename(away, home_.journal());
  }
}

TEST_F(UnrulyJournal, MayBeAnotherOneUnderItsNameAtEveryCall) {
  const std::string journal = home_.journal();
  for (int time = 0; time < 20; ++time) {
    const std::string body = "entry of journal " + std::to_string(time) + ".";
    std::filesystem::remove_all(journal);
    if (time % 2 == 0) makeLink(journal, home_.below("elsewhere"));
    const std::string where = time % 2 == 0 ? home_.below("elsewhere") : journal;
    writeFile(where + "/good.md", entryWithBody(body));
    EXPECT_EQ(search("entry"), found(good_, body));
  }
}

// The journal again and again searched and read, while `work` goes on beside it.
class ChangingFile : public UnrulyJournal {
 protected:
  using Judge = std::function<bool(const std::string& text)>;

  // Reads the changing file while `work` goes on beside: it is either no entry or one that `isPossible`.
  void readWhile(const std::function<void()>& work, const Judge& isPossible) {
    std::atomic<bool> stopped = false;
    std::thread writer([&] {
      while (!stopped) work();
    });
    for (int time = 0; time < 200; ++time) {
      const std::string text = read(path_);
      EXPECT_TRUE(text == "No entry found at " + path_ + "." || isPossible(text)) << text.substr(0, 200);
      EXPECT_NE(search("good entry").find("…A good entry.…"), std::string::npos);
    }
    stopped = true;
    writer.join();
  }

  const std::string path_ = home_.journal() + "/changing.md";
};

// The entry with some letters x in its body, and nothing else. Where a file is cut short or grows in the
// middle of a page, the system may show a zero to who reads it at that moment.
bool isEntryOfLetters(std::string_view text) {
  const std::string start = shownWithBody("");
  return text.starts_with(start) &&
         text.substr(start.size()).find_first_not_of(std::string_view("x\0", 2)) == std::string_view::npos;
}

TEST_F(ChangingFile, ThatGrowsIsShownUpToWhereItWas) {
  const std::string start = entryWithBody("");
  readWhile(
      [&] {
        writeFile(path_, start);
        std::ofstream file(path_, std::ios::app);
        for (int piece = 0; piece < 200; ++piece) file << std::string(1000, 'x') << std::flush;
      },
      isEntryOfLetters);
}

TEST_F(ChangingFile, ThatShrinksIsShownUpToWhereItWas) {
  const std::string body(300000, 'x');
  writeFile(path_, entryWithBody(body));
  readWhile(
      [&] {
        for (const std::uintmax_t size : {200000U, 70000U, 5000U, 100U})
          std::filesystem::resize_file(path_, size);
        writeFile(path_, entryWithBody(body));
      },
      isEntryOfLetters);
}

TEST_F(ChangingFile, ThatIsReplacedIsTheOneOrTheOther) {
  const std::string first(100000, 'a');
  const std::string second(200000, 'b');
  readWhile(
      [&] {
        for (const std::string& body : {first, second}) {
          writeFile(path_ + ".new", entryWithBody(body));
          std::filesystem::rename(path_ + ".new", path_);
        }
      },
      [&](const std::string& text) { return text == shownWithBody(first) || text == shownWithBody(second); });
}

}  // namespace
}  // namespace halvane
