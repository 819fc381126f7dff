#include <gtest/gtest.h>
#include <plist/plist.h>
#include <sys/stat.h>

#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "tests/support/child_process.h"
#include "tests/support/property_list.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "user/preferences.h"

namespace halvane {
namespace {

constexpr const char* suite = "org.example.app";
constexpr std::size_t longestList = 16 << 20;

std::string settingsFile(const TemporaryHome& home) {
  return home.below(".config/org.example.app.plist");
}

// "unreadable" where there are no settings, "none" where they hold no such text.
std::string valueOf(const std::string& key) {
  const std::optional<Preferences> preferences = Preferences::ofSuite(suite);
  return preferences ? preferences->string(key).value_or("none") : "unreadable";
}

// The binary form of an XML property list.
std::string inBinary(std::string_view xml) {
  plist_t list = nullptr;
  plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &list);
  char* bytes = nullptr;
  std::uint32_t size = 0;
  plist_to_bin(list, &bytes, &size);
  const std::string result(bytes, size);
  std::free(bytes);  // as the library's own functions for it do, which differ from version to version
  plist_free(list);
  return result;
}

TEST(Preferences, AreReadFromAnXmlPropertyList) {
  const TemporaryHome home;
  writeFile(settingsFile(home), propertyListOfText("journalRoot", "~/Journal"));
  EXPECT_EQ(valueOf("journalRoot"), "~/Journal");
  EXPECT_EQ(valueOf("other"), "none");
  EXPECT_EQ(valueOf("JournalRoot"), "none");
  EXPECT_EQ(valueOf(""), "none");
}

TEST(Preferences, AreReadFromABinaryPropertyList) {
  const TemporaryHome home;
  writeFile(settingsFile(home), inBinary(propertyListOfText("journalRoot", "~/Journal")));
  EXPECT_EQ(valueOf("journalRoot"), "~/Journal");
}

TEST(Preferences, TextsAreUtf8AndTakenAsTheyStand) {
  const TemporaryHome home;
  for (const std::string& text :
       {std::string(""), std::string(" "), std::string("  /a b  "), std::string("/Users/Zoë/日記/👍"),
        std::string("a<b>&\"c\"'"), std::string("line\nfeed"), std::string(100000, 'x')}) {
    writeFile(settingsFile(home), propertyListOfText("k", text));
    EXPECT_EQ(valueOf("k"), text);
    writeFile(settingsFile(home), inBinary(propertyListOfText("k", text)));
    EXPECT_EQ(valueOf("k"), text) << "binary";
  }
}

TEST(Preferences, AKeyMayBeOneOfMany) {
  const TemporaryHome home;
  writeFile(settingsFile(home), propertyListWith("first",
                                                 "<true/><key>journalRoot</key><string>/j</string>"
                                                 "<key>window</key><dict><key>journalRoot</key>"
                                                 "<string>/inner</string></dict>"));
  EXPECT_EQ(valueOf("journalRoot"), "/j");
  EXPECT_EQ(valueOf("first"), "none");
}

TEST(Preferences, AValueOfAnotherKindIsNoText) {
  const TemporaryHome home;
  for (const char* value :
       {"<true/>", "<false/>", "<integer>1</integer>", "<real>1.5</real>", "<data>L2o=</data>",
        "<date>2025-11-03T09:14:00Z</date>", "<array><string>/j</string></array>",
        "<dict><key>journalRoot</key><string>/j</string></dict>"}) {
    writeFile(settingsFile(home), propertyListWith("journalRoot", value));
    EXPECT_EQ(valueOf("journalRoot"), "none") << value;
    writeFile(settingsFile(home), inBinary(propertyListWith("journalRoot", value)));
    EXPECT_EQ(valueOf("journalRoot"), "none") << "binary " << value;
  }
}

TEST(Preferences, ThatAreNoPropertyListOfNamesAreNotRead) {
  const TemporaryHome home;
  EXPECT_EQ(valueOf("journalRoot"), "unreadable") << "no file";
  const std::string whole = propertyListOfText("journalRoot", "/j");
  const std::string wholeBinary = inBinary(whole);
  for (const std::string& content :
       {std::string(), std::string("\n"), std::string("garbage"), std::string("<plist"),
        std::string("bplist00"),
        std::string("bplist00garbage that is long enough to hold a trailer of thirty-two bytes"),
        whole.substr(0, whole.size() / 2), wholeBinary.substr(0, wholeBinary.size() - 1),
        wholeBinary.substr(0, 40),
        std::string("<?xml version=\"1.0\"?><plist "
                    "version=\"1.0\"><array><string>journalRoot</string></array></plist>"),
        std::string("<?xml version=\"1.0\"?><plist version=\"1.0\"><string>journalRoot</string></plist>"),
        std::string(1000, '\0')}) {
    writeFile(settingsFile(home), content);
    EXPECT_EQ(valueOf("journalRoot"), "unreadable") << testing::PrintToString(content);
  }
}

TEST(Preferences, OfSixteenMebibytesAreReadAndNotOneByteMore) {
  const TemporaryHome home;
  std::string list = propertyListOfText("journalRoot", "/j");
  list.insert(list.find("<dict>"), longestList - list.size(), '\n');
  writeFile(settingsFile(home), list);
  EXPECT_EQ(valueOf("journalRoot"), "/j");
  list.insert(list.find("<dict>"), 1, '\n');
  writeFile(settingsFile(home), list);
  EXPECT_EQ(valueOf("journalRoot"), "unreadable");
}

TEST(Preferences, ThatAreNoRegularFileAreNotReadAndNotWaitedFor) {
  const TemporaryHome home;
  makeFolder(home.below(".config"));
  ASSERT_EQ(mkfifo(settingsFile(home).c_str(), 0600), 0);
  EXPECT_EQ(valueOf("journalRoot"), "unreadable") << "a pipe without a writer";
  ASSERT_EQ(remove(settingsFile(home).c_str()), 0);
  makeFolder(settingsFile(home));
  EXPECT_EQ(valueOf("journalRoot"), "unreadable") << "a folder";
}

TEST(Preferences, MayBeALinkToAFile) {
  const TemporaryHome home;
  writeFile(home.below("dotfiles/app.plist"), propertyListOfText("journalRoot", "/j"));
  makeLink(settingsFile(home), home.below("dotfiles/app.plist"));
  EXPECT_EQ(valueOf("journalRoot"), "/j");
}

TEST(Preferences, ThatTheUserMayNotReadAreNone) {
  const TemporaryHome home;
  writeFile(settingsFile(home), propertyListOfText("journalRoot", "/j"));
  ASSERT_EQ(chmod(home.path().c_str(), 0755), 0);
  ASSERT_EQ(chmod(settingsFile(home).c_str(), 0), 0);
  EXPECT_EQ(inChildProcess([] {
              becomeOrdinaryUser();
              return valueOf("journalRoot");
            }),
            "unreadable");
}

TEST(Preferences, LieInTheFolderForSettingsWhereThatIsAbsoluteOtherwiseInTheHomeDirectory) {
  const TemporaryHome home;
  const TemporaryFolder elsewhere;
  writeFile(settingsFile(home), propertyListOfText("journalRoot", "/of-home"));
  writeFile(elsewhere.below("org.example.app.plist"), propertyListOfText("journalRoot", "/of-elsewhere"));
  struct Case {
    std::optional<std::string> folder;
    std::string value;
  };
  for (const Case& c :
       {Case{elsewhere.path(), "/of-elsewhere"}, Case{elsewhere.path() + "/", "/of-elsewhere"},
        Case{std::nullopt, "/of-home"}, Case{"", "/of-home"}, Case{"relative", "/of-home"},
        Case{"~/.config", "/of-home"}, Case{elsewhere.below("missing"), "unreadable"}}) {
    const ScopedVariable folder("XDG_CONFIG_HOME", c.folder);
    EXPECT_EQ(valueOf("journalRoot"), c.value) << c.folder.value_or("unset");
  }
}

TEST(Preferences, StayAsTheyWereWhenTheyWereOpened) {
  const TemporaryHome home;
  writeFile(settingsFile(home), propertyListOfText("journalRoot", "/before"));
  const Preferences opened = Preferences::ofSuite(suite).value();
  writeFile(settingsFile(home), propertyListOfText("journalRoot", "/after"));
  EXPECT_EQ(opened.string("journalRoot"), "/before");
  EXPECT_EQ(valueOf("journalRoot"), "/after");
}

TEST(Preferences, NoBundleSurroundsAProcessOnLinux) {
  EXPECT_EQ(mainBundleIdentifier(), std::nullopt);
}

}  // namespace
}  // namespace halvane
