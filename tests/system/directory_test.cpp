#include "system/directory.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/file_names.h"
#include "tests/support/special_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"

namespace halvane {
namespace {

using Kind = Directory::Kind;
using Listing = std::vector<std::pair<std::string, Kind>>;

void readInto(Directory& directory, const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  directory.read(descriptor);
  close(descriptor);
}

// In the order of the names' bytes: a listing has any order.
Listing listingOf(const Directory& directory) {
  Listing listing;
  for (const Directory::Item& item : directory.items()) listing.emplace_back(directory.name(item), item.kind);
  std::sort(listing.begin(), listing.end());
  return listing;
}

Listing listingOf(const std::string& path) {
  Directory directory;
  readInto(directory, path);
  return listingOf(directory);
}

std::vector<std::string> namesIn(const std::string& path) {
  std::vector<std::string> names;
  for (const auto& [name, kind] : listingOf(path)) names.push_back(name);
  return names;
}

TEST(Directory, ListsEveryNameOnceAndAsItIs) {
  const TemporaryFolder folder;
  std::vector<std::string> names = {" ", "10", "9", "C", "a", "a-b", "ab", "b", std::string(255, 'n'), "é"};
  if (takesNamesThatAreNoText()) names.emplace_back("\xFF");
  for (const std::string& name : names) writeFile(folder.below(name), "");
  EXPECT_EQ(namesIn(folder.path()), names);
}

TEST(Directory, TellsEachItemsKind) {
  const TemporaryFolder folder;
  writeFile(folder.below("file"), "x");
  makeFolder(folder.below("folder"));
  makeLink(folder.below("link"), folder.below("file"));
  makeNamedPipe(folder.below("pipe"));
  makeSocket(folder.below("socket"));
  EXPECT_EQ(listingOf(folder.path()), (Listing{{"file", Kind::regular},
                                               {"folder", Kind::folder},
                                               {"link", Kind::link},
                                               {"pipe", Kind::other},
                                               {"socket", Kind::other}}));
}

TEST(Directory, LeavesOutWhatIsHidden) {
  const TemporaryFolder folder;
  for (const char* name : {".hidden", "..hidden", "shown.", "shown"}) writeFile(folder.below(name), "");
  makeFolder(folder.below(".hidden folder"));
  EXPECT_EQ(namesIn(folder.path()), (std::vector<std::string>{"shown", "shown."}));
}

TEST(Directory, ListsAnEmptyFolderAsEmpty) {
  EXPECT_EQ(namesIn(TemporaryFolder().path()), std::vector<std::string>{});
}

TEST(Directory, ForgetsTheFolderBefore) {
  const TemporaryFolder first;
  const TemporaryFolder second;
  writeFile(first.below("a long name in the first folder"), "");
  writeFile(second.below("b"), "");
  Directory directory;
  readInto(directory, first.path());
  readInto(directory, second.path());
  EXPECT_EQ(listingOf(directory), (Listing{{"b", Kind::regular}}));
  directory.read(-1);
  EXPECT_EQ(listingOf(directory), Listing{}) << "what can't be read holds nothing";
}

TEST(Directory, ListsMoreThanOneReadTakes) {
  const TemporaryFolder folder;
  std::vector<std::string> names;
  for (int i = 10000; i < 12000; ++i)
    names.push_back("a rather long name of a file, number " + std::to_string(i));
  for (const std::string& name : names) writeFile(folder.below(name), "");
  EXPECT_EQ(namesIn(folder.path()), names);
}

TEST(Directory, TellsTheErrorThatBreaksOffAListing) {
  const TemporaryFolder folder;
  writeFile(folder.below("file"), "x");
  const int file = open(folder.below("file").c_str(), O_RDONLY | O_CLOEXEC);
  Directory directory;
  directory.read(file);
  close(file);
  EXPECT_EQ(directory.error(), std::errc::not_a_directory);
  readInto(directory, folder.path());
  EXPECT_FALSE(directory.error()) << "that was another folder";
}

}  // namespace
}  // namespace halvane
