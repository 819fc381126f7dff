#include "system/directory.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"

namespace halvane {
namespace {

std::vector<std::string> namesIn(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  Directory directory;
  directory.read(descriptor);
  close(descriptor);
  std::vector<std::string> names;
  for (const Directory::Item& item : directory.items()) names.emplace_back(directory.name(item));
  std::sort(names.begin(), names.end());
  return names;
}

bool hide(const std::string& path) {
  return std::system(("/usr/bin/chflags hidden '" + path + "' 2>/dev/null").c_str()) == 0;
}

TEST(Directory, LeavesOutWhatTheHiddenFlagHides) {
  const TemporaryFolder folder;
  for (const char* name : {"a", "b", "c"}) writeFile(folder.below(name), "");
  for (const char* name : {"d", "e"}) makeFolder(folder.below(name));
  if (!hide(folder.below("b"))) GTEST_SKIP() << "nothing here sets the flag";
  ASSERT_TRUE(hide(folder.below("d")));
  EXPECT_EQ(namesIn(folder.path()), (std::vector<std::string>{"a", "c", "e"}));
}

TEST(Directory, ListsNamesOfEveryLength) {
  const TemporaryFolder folder;
  std::vector<std::string> names;
  for (std::size_t length = 1; length <= 255; ++length) names.push_back(std::string(length, 'x'));
  for (const std::string& name : names) writeFile(folder.below(name), "");
  EXPECT_EQ(namesIn(folder.path()), names);
}

}  // namespace
}  // namespace halvane
