#include "system/files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <new>

namespace halvane {
namespace {

constexpr std::size_t firstRead = 65536;
constexpr std::size_t longestRead = 1 << 30;  // some systems refuse a read(2) of 2 GiB and more

enum class Verdict { accepted, rejected, undecided };

Verdict judgeOpening(std::string_view firstBytes, std::span<const std::string_view> openings) {
  if (openings.empty()) return Verdict::accepted;
  Verdict verdict = Verdict::rejected;
  for (const std::string_view opening : openings) {
    if (firstBytes.starts_with(opening)) return Verdict::accepted;
    if (opening.starts_with(firstBytes)) verdict = Verdict::undecided;
  }
  return verdict;
}

Verdict judge(std::string_view firstBytes, const Beginning& beginning) {
  const Verdict verdict = judgeOpening(firstBytes, beginning.openings);
  if (verdict != Verdict::accepted || !beginning.mayBeWanted) return verdict;
  return beginning.mayBeWanted(firstBytes) ? Verdict::accepted : Verdict::rejected;
}

// The first reading is `readFirst`, which takes and returns what read(2) does.
std::optional<std::string_view> readToEnd(const Descriptor& file, const Beginning& beginning,
                                          ByteBuffer& buffer, std::size_t limit, auto readFirst) {
  std::size_t size = 0;
  Verdict verdict = Verdict::undecided;
  for (;;) {
    if (size == buffer.capacity() && !buffer.resize(std::max(firstRead, 2 * size))) throw std::bad_alloc();
    const std::size_t longest = verdict == Verdict::accepted ? longestRead : firstRead;
    const std::size_t room = std::min(buffer.capacity() - size, longest);
    const ssize_t count = size == 0 ? readFirst(file.number(), buffer.data(), room)
                                    : read(file.number(), buffer.data() + size, room);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    size += static_cast<std::size_t>(count);
    if (size > limit) return std::nullopt;
    if (verdict == Verdict::undecided) verdict = judge({buffer.data(), size}, beginning);
    if (verdict == Verdict::rejected) return std::nullopt;
  }
  if (verdict == Verdict::undecided && !beginning.openings.empty()) return std::nullopt;
  return std::string_view(buffer.data(), size);
}

std::error_code errorOpeningAs(int flags, std::string_view path) {
  errno = ENOENT;  // for a path that we refuse before asking the system: no file has such a name
  const Descriptor opened = openPath(AT_FDCWD, path, flags);
  return opened.isOpen() ? std::error_code() : std::error_code(errno, std::system_category());
}

}  // namespace

bool isRegular(const Descriptor& file) {
  struct stat state;
  return fstat(file.number(), &state) == 0 && S_ISREG(state.st_mode);
}

std::optional<std::string_view> readFile(std::string_view path, const Beginning& beginning,
                                         ByteBuffer& buffer, std::size_t limit) {
  const Descriptor file = openPath(AT_FDCWD, path, toReadFile);
  if (!file.isOpen() || !isRegular(file)) return std::nullopt;
  return readToEnd(file, beginning, buffer, limit, &read);
}

std::optional<std::string_view> readToEnd(const Descriptor& file, const Beginning& beginning,
                                          ByteBuffer& buffer, ReadAhead& readAhead) {
  return readToEnd(file, beginning, buffer, SIZE_MAX, [&](int number, char* data, std::size_t size) {
    return readAhead.readFirst(number, data, size);
  });
}

std::error_code errorOpening(std::string_view path) {
  return errorOpeningAs(toReadFile, path);
}

std::error_code errorOpeningFolder(std::string_view path) {
  return errorOpeningAs(toReadFolder, path);
}

}  // namespace halvane
