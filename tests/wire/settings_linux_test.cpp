#include <gtest/gtest.h>
#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "tests/support/entry_file.h"
#include "tests/support/property_list.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// The companion application's settings as the file that they are on Linux: as its own platform writes them,
// and what is no such file.

namespace halvane {
namespace {

// A binary property list: a dictionary with `value` as the journal's folder.
std::string binaryListOf(plist_t value) {
  constexpr std::string_view others =
      "<plist><dict><key>lastLaunch</key><date>2023-03-08T20:26:40Z</date></dict></plist>";
  plist_t list = nullptr;
  plist_from_xml(others.data(), static_cast<std::uint32_t>(others.size()), &list);
  plist_dict_set_item(list, "journalRoot", value);
  char* bytes = nullptr;
  std::uint32_t size = 0;
  plist_to_bin(list, &bytes, &size);
  const std::string file(bytes, size);
  std::free(bytes);
  plist_free(list);
  return file;
}

std::string binaryListOf(const char* folder) {
  return binaryListOf(plist_new_string(folder));
}

class SettingsFile : public testing::Test {
 protected:
  SettingsFile() {
    home_.write("a.md", EntryFile{.body = "The usual folder."}.text());
    writeFile(home_.below("Journal/a.md"), EntryFile{.body = "The folder from the settings."}.text());
    writeFile(home_.below("Earlier/a.md"), EntryFile{.body = "The folder from the earlier settings."}.text());
    writeFile(home_.below("Zoë's 日記/a.md"), EntryFile{.body = "The folder with a name."}.text());
  }

  void write(const std::string& content) const {
    writeFile(home_.below(".config/app.halvane.Halvane.plist"), content);
  }
  void writeEarlier(const std::string& content) const {
    writeFile(home_.below(".config/app.halvane.Journal.plist"), content);
  }

  // The first line of the one entry of the journal that is found.
  std::string found() const {
    ServerProcess server({.home = home_.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}});
    const std::string text = askTool(server, "search_entries", "{}");
    EXPECT_EQ(server.finish(), quietEnding);
    return text.substr(text.find('\n') + 1);
  }

  const TemporaryHome home_;
};

TEST_F(SettingsFile, MayBeBinary) {
  write(binaryListOf("~/Journal"));
  EXPECT_EQ(found(), "The folder from the settings.");
}

TEST_F(SettingsFile, MayBeBinaryWithANameInAnyScript) {
  write(binaryListOf("~/Zoë's 日記"));
  EXPECT_EQ(found(), "The folder with a name.");
}

TEST_F(SettingsFile, InBinaryWithAValueThatIsNoTextLeadOn) {
  writeEarlier(binaryListOf("~/Earlier"));
  for (const plist_t value :
       {plist_new_uint(5), plist_new_bool(1), plist_new_array(), plist_new_data("~/Journal", 9)}) {
    write(binaryListOf(value));
    EXPECT_EQ(found(), "The folder from the earlier settings.");
  }
}

TEST_F(SettingsFile, ThatAreNoPropertyListLeadOn) {
  writeEarlier(propertyListOfText("journalRoot", "~/Earlier"));
  for (const char* content :
       {"", "journalRoot=~/Journal", "bplist00", "bplist00\x01\x02\x03", "<plist>",
        "<?xml version=\"1.0\"?><plist version=\"1.0\"><string>~/Journal</string></plist>",
        "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>journalRoot</key>"}) {
    SCOPED_TRACE(content);
    write(content);
    EXPECT_EQ(found(), "The folder from the earlier settings.");
  }
}

TEST_F(SettingsFile, ThatAreEnormousLeadOn) {
  writeEarlier(propertyListOfText("journalRoot", "~/Earlier"));
  write(propertyListOfText("journalRoot", "~/Journal") + std::string(16 << 20, '\n'));
  EXPECT_EQ(found(), "The folder from the earlier settings.");
}

TEST_F(SettingsFile, ThatAreAFolderLeadOn) {
  makeFolder(home_.below(".config/app.halvane.Halvane.plist"));
  EXPECT_EQ(found(), "The usual folder.");
}

TEST_F(SettingsFile, MayBeALinkToThem) {
  writeFile(home_.below("dotfiles/settings"), propertyListOfText("journalRoot", "~/Journal"));
  makeLink(home_.below(".config/app.halvane.Halvane.plist"), home_.below("dotfiles/settings"));
  EXPECT_EQ(found(), "The folder from the settings.");
}

}  // namespace
}  // namespace halvane
