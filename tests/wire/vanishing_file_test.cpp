#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <functional>
#include <thread>

#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// The companion application goes on writing while the server reads.

namespace halvane {
namespace {

// Does `work` again and again beside us, until this ends.
class Meanwhile {
 public:
  explicit Meanwhile(const std::function<void()>& work)
      : thread_([this, work] {
          while (!stopped_) work();
        }) {}
  ~Meanwhile() {
    stopped_ = true;
    thread_.join();
  }
  Meanwhile(const Meanwhile&) = delete;
  Meanwhile& operator=(const Meanwhile&) = delete;

 private:
  std::atomic<bool> stopped_ = false;
  std::thread thread_;
};

class VanishingFile : public testing::Test {
 protected:
  VanishingFile() {
    home_.write("2025/steady.md", EntryFile{.body = "A steady entry."}.text());
    home_.write("2026/steady.md", EntryFile{.body = "Another steady entry."}.text());
  }

  std::string search() { return askTool(server_, "search_entries", R"({"query":"steady","limit":50})"); }

  void expectSteadyEntries(const std::string& text) {
    EXPECT_NE(text.find("…A steady entry.…"), std::string::npos) << text;
    EXPECT_NE(text.find("…Another steady entry.…"), std::string::npos) << text;
  }

  // Searches while `work` goes on beside it: the steady entries must be found each time.
  void searchWhile(const std::function<void()>& work) {
    {
      const Meanwhile meanwhile(work);
      for (int time = 0; time < 200; ++time) expectSteadyEntries(search());
    }
    EXPECT_EQ(server_.finish(), quietEnding);
  }

  const TemporaryHome home_;
  ServerProcess server_{{.home = home_.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}}};
};

TEST_F(VanishingFile, LeavesTheOthers) {
  const std::string path = home_.journal() + "/2025/now and then.md";
  searchWhile([&] {
    writeFile(path, EntryFile{.body = "Not so steady."}.text());
    std::filesystem::remove(path);
  });
}

TEST_F(VanishingFile, MayBeAFolder) {
  const std::string folder = home_.journal() + "/2025/now and then";
  searchWhile([&] {
    for (const char* name : {"a/b/1.md", "a/2.md", "3.md"}) {
      writeFile(folder + "/" + name, EntryFile{.body = "Not so steady."}.text());
    }
    std::filesystem::remove_all(folder);
  });
}

TEST_F(VanishingFile, MayBeReplacedByAFolderOfItsName) {
  const std::string path = home_.journal() + "/2025/either.md";
  searchWhile([&] {
    writeFile(path, EntryFile{.body = "Not so steady."}.text());
    std::filesystem::remove(path);
    makeFolder(path + "/in it");
    std::filesystem::remove_all(path);
  });
}

TEST_F(VanishingFile, MayOnlyShrinkAndGrow) {
  const std::string path = home_.journal() + "/2025/growing.md";
  const std::string longText = EntryFile{.body = std::string(1 << 20, 'x')}.text();
  searchWhile([&] {
    writeFile(path, longText);
    std::filesystem::resize_file(path, 100);
    std::filesystem::resize_file(path, 0);
  });
}

// An application that saves by renaming never shows half an entry, so neither does the server.
TEST_F(VanishingFile, ThatIsReplacedWholeIsShownWhole) {
  const std::string path = home_.journal() + "/2025/saved.md";
  const std::string even = EntryFile{.body = "steady even " + std::string(100000, 'e')}.text();
  const std::string odd = EntryFile{.body = "steady odd " + std::string(200000, 'o')}.text();
  writeFile(path, even);
  {
    const Meanwhile meanwhile([&] {
      for (const std::string& text : {odd, even}) {
        writeFile(path + ".new", text);
        std::filesystem::rename(path + ".new", path);
      }
    });
    for (int time = 0; time < 200; ++time) {
      const std::string text = askTool(server_, "read_entry", "{\"path\":" + jsonString(path) + "}");
      EXPECT_TRUE(text.ends_with("steady even " + std::string(100000, 'e')) ||
                  text.ends_with("steady odd " + std::string(200000, 'o')))
          << text.substr(0, 200);
    }
  }
  EXPECT_EQ(server_.finish(), quietEnding);
}

TEST_F(VanishingFile, IsGoneFromTheNextAnswer) {
  const std::string path =
      home_.write("2025/gone.md", EntryFile{.date = "2026-01-01T00:00:00Z", .body = "steady"}.text());
  EXPECT_TRUE(search().starts_with("[Jan 1, 2026 at 12:00 AM] " + path + "\n…steady…\n\n"));
  writeFile(path, EntryFile{.date = "2026-01-02T00:00:00Z", .body = "steady still"}.text());
  EXPECT_TRUE(search().starts_with("[Jan 2, 2026 at 12:00 AM] " + path + "\n…steady still…\n\n"));
  std::filesystem::remove(path);
  const std::string text = search();
  EXPECT_EQ(text.find(path), std::string::npos) << text;
  expectSteadyEntries(text);
  EXPECT_EQ(server_.finish(), quietEnding);
}

TEST_F(VanishingFile, MayBeTheWholeJournal) {
  const std::string away = home_.below("away");
  std::filesystem::rename(home_.journal(), away);
  EXPECT_EQ(search(), "No entries match \"steady\".");
  writeFile(home_.journal(), "a file where the folder was");
  EXPECT_EQ(search(), "No entries match \"steady\".");
  std::filesystem::remove(home_.journal());
  std::filesystem::rename(away, home_.journal());
  expectSteadyEntries(search());
  EXPECT_EQ(server_.finish(), quietEnding);
}

// Settings are looked up again for every call.
TEST_F(VanishingFile, MayBeTheSettings) {
  writeFile(home_.below("Elsewhere/a.md"), EntryFile{.body = "steady elsewhere"}.text());
  home_.setJournalRoot("app.halvane.Halvane", "~/Elsewhere");
  EXPECT_NE(search().find("…steady elsewhere…"), std::string::npos);
  std::filesystem::remove(home_.settings("app.halvane.Halvane"));
  expectSteadyEntries(search());
  EXPECT_EQ(server_.finish(), quietEnding);
}

// The folder that the server was started in may go; only a path that doesn't begin at the root needs it.
TEST_F(VanishingFile, MayBeTheCurrentFolder) {
  const std::string folder = home_.below("current");
  makeFolder(folder);
  ServerProcess server({.home = home_.path(), .currentFolder = folder});
  ASSERT_TRUE(answersPing(server));
  std::filesystem::remove(folder);
  EXPECT_NE(askTool(server, "search_entries", R"({"query":"steady"})").find("…A steady entry.…"),
            std::string::npos);
  EXPECT_EQ(askTool(server, "read_entry", R"({"path":"a.md"})"), "Refused: path is outside the journal.");
  EXPECT_EQ(server.finish(), quietEnding);
}

}  // namespace
}  // namespace halvane
