// Reading the files alone: the least that any search of them can cost. For each line on standard input, the
// program walks the folder that its argument names, reads every .md file in it, and answers with the sum of
// all bytes. With --in-sandbox it does so inside the server's sandbox. It makes four system calls a file
// (open, read, read nothing, close) and four a folder. It sorts no names, parses nothing and keeps nothing.
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <iostream>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sandbox/sandbox.h"

namespace {

// Holds the largest file whole, as a search does.
constexpr std::size_t bufferSize = std::size_t{16} << 20;
using Word = std::uint64_t;

// Touches every byte.
Word sumOf(std::span<const Word> words) {
  Word sum = 0;
  for (const Word word : words) sum += word;
  return sum;
}

Word sumOfFile(int folder, const char* name, std::span<Word> buffer) {
  const int file = openat(folder, name, O_RDONLY | O_CLOEXEC);
  if (file < 0) return 0;
  Word sum = 0;
  for (;;) {
    const ssize_t count = read(file, buffer.data(), buffer.size_bytes());
    if (count <= 0) break;
    const auto size = static_cast<std::size_t>(count);
    std::memset(reinterpret_cast<char*>(buffer.data()) + size, 0, sizeof(Word) - size % sizeof(Word));
    sum += sumOf(buffer.first((size + sizeof(Word) - 1) / sizeof(Word)));
  }
  close(file);
  return sum;
}

Word sumOfFolder(int parent, const char* path, std::span<Word> buffer) {
  const int folder = openat(parent, path, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return 0;
  Word sum = 0;
  std::vector<std::string> subfolders;
  alignas(dirent64) std::array<char, 32768> block;
  for (;;) {
    const ssize_t size = getdents64(folder, block.data(), block.size());
    if (size <= 0) break;
    for (ssize_t at = 0; at < size;) {
      const auto* item = reinterpret_cast<const dirent64*>(block.data() + at);
      at += item->d_reclen;
      const std::string_view name = item->d_name;
      if (name.starts_with('.')) continue;
      if (item->d_type == DT_DIR) subfolders.emplace_back(name);
      if (item->d_type == DT_REG && name.ends_with(".md")) sum += sumOfFile(folder, item->d_name, buffer);
    }
  }
  for (const std::string& subfolder : subfolders) sum += sumOfFolder(folder, subfolder.c_str(), buffer);
  close(folder);
  return sum;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  const bool inSandbox = argumentCount == 3 && std::string_view(arguments[2]) == "--in-sandbox";
  if (argumentCount != 2 && !inSandbox) {
    std::cerr << "usage: bench_limit FOLDER [--in-sandbox]\n";
    return 2;
  }
  if (inSandbox) halvane::sandbox::enterReadOnly();
  // With one more word, for the zeros after the last byte.
  const auto memory = std::make_unique_for_overwrite<Word[]>(bufferSize / sizeof(Word) + 1);
  const std::span<Word> buffer(memory.get(), bufferSize / sizeof(Word));
  std::string line;
  while (std::getline(std::cin, line)) {
    std::cout << sumOfFolder(AT_FDCWD, arguments[1], buffer) << std::endl;
  }
}
