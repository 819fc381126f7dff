#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "tests/support/asleep.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/wait_until.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/own_system.h"
#include "tests/wire/server_process.h"

namespace halvane {
namespace {

std::vector<std::string> linesIn(std::istream& file) {
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

int unreadBytes(const ServerProcess& server) {
  int count = 0;
  ioctl(server.input(), FIONREAD, &count);
  return count;
}

bool isFull(const std::string& disk) {
  std::error_code error;
  return std::filesystem::space(disk, error).free == 0 && !error;
}

// For Surroundings::before: mounts a disk of 64 KiB, of which `used` are, and sends the replies into a file
// on it.
void writeOnDisk(const std::string& disk, std::size_t used) {
  enterOwnMounts();
  if (mount("disk", disk.c_str(), "tmpfs", 0, "size=64k") != 0) throw std::runtime_error("no disk");
  writeFile(disk + "/filler", std::string(used << 10, 'x'));
  openAs(STDOUT_FILENO, disk + "/replies", O_WRONLY | O_CREAT | O_APPEND);
}

// The replies go into a file on a disk that is nearly full. A reply that fits only in part is finished when
// there is room again: what a client reads are whole lines.
TEST(FullDisk, TearsNoReply) {
  if (!OwnSystem::isAllowed()) GTEST_SKIP() << "the system lets us have no mounts of our own: be root";
  const TemporaryFolder folder;
  const std::string disk = folder.below("disk");
  makeFolder(disk);
  ServerProcess server({.home = folder.path(), .before = [&] { writeOnDisk(disk, 56); }});
  for (int id = 0; id < 20; ++id) server.send(R"({"id":1,"method":"tools/list"})");
  const std::string seen = "/proc/" + std::to_string(server.id()) + "/root" + disk;
  ASSERT_TRUE(waitUntil([&] { return std::filesystem::exists(seen + "/replies") && isFull(seen); }));
  std::ifstream replies(seen + "/replies");
  std::filesystem::remove(seen + "/filler");
  server.send(R"({"id":"after","method":"ping"})");
  EXPECT_EQ(server.finish(), quietEnding);

  const std::vector<std::string> lines = linesIn(replies);
  for (const std::string& line : lines) EXPECT_TRUE(canonicalJson(line)) << line;
  ASSERT_GT(lines.size(), 2U);
  EXPECT_EQ(canonicalJson(lines.back()), R"({"id":"after","jsonrpc":"2.0","result":{}})");
}

TEST(FullDisk, KeepsNoReplyOfWhichNothingIsWritten) {
  if (!OwnSystem::isAllowed()) GTEST_SKIP() << "the system lets us have no mounts of our own: be root";
  const TemporaryFolder folder;
  const std::string disk = folder.below("disk");
  makeFolder(disk);
  ServerProcess server({.home = folder.path(), .before = [&] { writeOnDisk(disk, 64); }});
  server.send(R"({"id":"before","method":"ping"})");
  ASSERT_TRUE(waitUntil([&] { return unreadBytes(server) == 0; }) && waitUntilAsleep(server.id()));
  const std::string seen = "/proc/" + std::to_string(server.id()) + "/root" + disk;
  std::ifstream replies(seen + "/replies");
  ASSERT_TRUE(std::filesystem::remove(seen + "/filler"));
  server.send(R"({"id":"after","method":"ping"})");
  EXPECT_EQ(server.finish(), quietEnding);
  EXPECT_EQ(linesIn(replies).size(), 1U);
}

}  // namespace
}  // namespace halvane
