#include "system/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <new>
#include <utility>
#include <vector>

#include "system/directory.h"

namespace halvane {
namespace {

constexpr std::size_t firstRead = 65536;
constexpr std::size_t longestRead = 1 << 30;  // some systems refuse a read(2) of 2 GiB and more

// A pipe without a writer must not hold us up, and a terminal must not become ours.
constexpr int openFile = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
constexpr int openFolder = openFile | O_DIRECTORY;

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  int number() const { return number_; }
  bool isOpen() const { return number_ >= 0; }

 private:
  int number_;
};

int openRetrying(int folder, const char* path, int flags) {
  int descriptor;
  do {
    descriptor = openat(folder, path, flags);
  } while (descriptor < 0 && errno == EINTR);
  return descriptor;
}

// Opens `path` below `folder` whatever its length: the system takes PATH_MAX bytes at once, so a longer path
// is walked in pieces, folder by folder.
Descriptor openPath(int folder, std::string_view path, int flags) {
  if (path.find('\0') != std::string_view::npos) return Descriptor(-1);
  Descriptor reached(-1);
  while (path.size() >= PATH_MAX) {
    const std::size_t slash = path.rfind('/', PATH_MAX - 2);
    if (slash == std::string_view::npos || slash == 0) return Descriptor(-1);
    reached = Descriptor(openRetrying(folder, std::string(path.substr(0, slash)).c_str(), openFolder));
    if (!reached.isOpen()) return Descriptor(-1);
    folder = reached.number();
    path.remove_prefix(std::min(path.find_first_not_of('/', slash), path.size()));
  }
  return Descriptor(openRetrying(folder, std::string(path).c_str(), flags));
}

enum class Verdict { accepted, rejected, undecided };

Verdict judge(std::string_view beginning, Openings openings) {
  if (openings.empty()) return Verdict::accepted;
  Verdict verdict = Verdict::rejected;
  for (const std::string_view opening : openings) {
    if (beginning.starts_with(opening)) return Verdict::accepted;
    if (opening.starts_with(beginning)) verdict = Verdict::undecided;
  }
  return verdict;
}

std::optional<std::string_view> readToEnd(int descriptor, Openings openings, ByteBuffer& buffer,
                                          std::size_t limit) {
  std::size_t size = 0;
  Verdict verdict = judge({}, openings);
  for (;;) {
    if (size == buffer.capacity() && !buffer.resize(std::max(firstRead, 2 * size))) throw std::bad_alloc();
    const std::size_t most = verdict == Verdict::accepted ? longestRead : firstRead;
    const ssize_t count = read(descriptor, buffer.data() + size, std::min(buffer.capacity() - size, most));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    size += static_cast<std::size_t>(count);
    if (size > limit) return std::nullopt;
    if (verdict != Verdict::accepted) verdict = judge({buffer.data(), size}, openings);
    if (verdict == Verdict::rejected) return std::nullopt;
  }
  if (verdict != Verdict::accepted) return std::nullopt;
  return std::string_view(buffer.data(), size);
}

bool isRegular(int descriptor) {
  struct stat state;
  return fstat(descriptor, &state) == 0 && S_ISREG(state.st_mode);
}

// The listing's word is taken where it has one; it costs a system call an item to ask again.
Directory::Kind kindOf(const Directory& directory, const Directory::Item& item, int folder) {
  if (item.kind != Directory::Kind::unknown) return item.kind;
  struct stat state;
  if (fstatat(folder, directory.name(item).data(), &state, AT_SYMLINK_NOFOLLOW) != 0)
    return Directory::Kind::other;
  if (S_ISDIR(state.st_mode)) return Directory::Kind::folder;
  return S_ISREG(state.st_mode) || S_ISLNK(state.st_mode) ? Directory::Kind::link : Directory::Kind::other;
}

// Reads the file `name` in `folder`, which the listing has as regular or as a link.
std::optional<std::string_view> readItem(int folder, const char* name, Directory::Kind kind,
                                         Openings openings, ByteBuffer& buffer) {
  const bool known = kind == Directory::Kind::regular;
  const Descriptor file(openRetrying(folder, name, known ? openFile | O_NOFOLLOW : openFile));
  if (!file.isOpen() || !(known || isRegular(file.number()))) return std::nullopt;
  return readToEnd(file.number(), openings, buffer, SIZE_MAX);
}

std::error_code errorOpeningAs(int flags, std::string_view path) {
  errno = ENOENT;  // for what is refused before the system is asked: no file has such a name
  const Descriptor opened = openPath(AT_FDCWD, path, flags);
  return opened.isOpen() ? std::error_code() : std::error_code(errno, std::system_category());
}

}  // namespace

std::optional<std::string_view> readFile(std::string_view path, Openings openings, ByteBuffer& buffer,
                                         std::size_t limit) {
  const Descriptor file = openPath(AT_FDCWD, path, openFile);
  if (!file.isOpen() || !isRegular(file.number())) return std::nullopt;
  return readToEnd(file.number(), openings, buffer, limit);
}

std::error_code errorOpening(std::string_view path) {
  return errorOpeningAs(openFile, path);
}

std::error_code errorOpeningFolder(std::string_view path) {
  return errorOpeningAs(openFolder, path);
}

void readFilesBelow(const std::string& root, std::string_view suffix, Openings openings,
                    const FileVisitor& visit, const PassedOver& passOver) {
  const Descriptor top = openPath(AT_FDCWD, root, openFolder);
  if (!top.isOpen()) return;

  // The walk goes depth first, so what stands in `path` before a waiting folder's name is always its parent.
  struct WaitingFolder {
    std::size_t parentLength;
    std::string name;
  };
  std::vector<WaitingFolder> waiting;
  std::string path = root.ends_with('/') ? root.substr(0, root.size() - 1) : root;
  const std::size_t rootLength = path.size();
  Directory directory;
  ByteBuffer buffer;

  const auto readFolder = [&](int folder) {
    directory.read(folder);
    const std::size_t folderLength = path.size();
    const std::size_t firstWaiting = waiting.size();
    for (const Directory::Item& item : directory.items()) {
      const std::string_view name = directory.name(item);
      const Directory::Kind kind = kindOf(directory, item, folder);
      if (kind == Directory::Kind::folder) waiting.push_back({folderLength, std::string(name)});
      if (kind != Directory::Kind::regular && kind != Directory::Kind::link) continue;
      if (name.size() <= suffix.size() || !name.ends_with(suffix)) continue;
      const std::optional<std::string_view> content = readItem(folder, name.data(), kind, openings, buffer);
      path.append("/").append(name);
      if (content) {
        visit(path, *content);
      } else {
        passOver(path);
      }
      path.resize(folderLength);
    }
    std::reverse(waiting.begin() + static_cast<std::ptrdiff_t>(firstWaiting), waiting.end());
  };

  readFolder(top.number());
  while (!waiting.empty()) {
    const WaitingFolder next = std::move(waiting.back());
    waiting.pop_back();
    path.resize(next.parentLength);
    path.append("/").append(next.name);
    // From the top by its path, so that no folder on the way has to stay open however deep it goes.
    const Descriptor folder =
        openPath(top.number(), std::string_view(path).substr(rootLength + 1), openFolder | O_NOFOLLOW);
    if (folder.isOpen()) {
      readFolder(folder.number());
    } else {
      passOver(path + "/");
    }
  }
}

}  // namespace halvane
