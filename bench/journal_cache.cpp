#include "bench/journal_cache.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>

namespace halvane {
namespace {

namespace fs = std::filesystem;

// Counts up whenever what is generated changes, so that no journal of an older generator is taken for a new
// one.
constexpr int generation = 1;

void writeFile(const fs::path& path, std::string_view text) {
  std::ofstream file(path, std::ios::binary);
  file.write(text.data(), static_cast<std::streamsize>(text.size()));
  file.close();
  if (!file) throw std::runtime_error("can't write " + path.string());
}

std::string readFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The journal `name` is made anew unless `stamp` says that it is there as wanted. The stamp is written last:
// what was broken off half-way is not taken for whole.
Journal writeUnlessThere(const fs::path& cache, const std::string& name, const std::string& stamp,
                         const std::function<void(const fs::path& folder)>& write) {
  const fs::path home = cache / name;
  Journal journal{home.string()};
  if (readFile(home / "generated") == stamp) return journal;
  std::cerr << "writing the journal " << name << "\n";
  fs::remove_all(home);
  fs::create_directories(journal.folder());
  write(journal.folder());
  writeFile(home / "generated", stamp);
  return journal;
}

}  // namespace

Journal writeJournal(const std::string& cache, const JournalPlan& plan) {
  const std::string name = std::string(plan.name) + "-" + std::to_string(plan.entries);
  const auto day = plan.until.time_since_epoch().count();
  const std::string stamp =
      "generation " + std::to_string(generation) + " until day " + std::to_string(day) + "\n";
  return writeUnlessThere(cache, name, stamp, [&](const fs::path& folder) {
    for (std::size_t i = 0; i < plan.entries; ++i) {
      const JournalFile file = journalFile(plan, i);
      fs::create_directories((folder / file.path).parent_path());
      writeFile(folder / file.path, file.text);
    }
  });
}

Journal writeJournal(const std::string& cache, const HostileJournal& hostile) {
  const std::string stamp = "generation " + std::to_string(generation) + "\n";
  return writeUnlessThere(cache, "hostile-" + std::string(hostile.name), stamp, [&](const fs::path& folder) {
    int number = 0;
    for (const std::string& body : hostile.bodies()) {
      writeFile(folder / ("body-" + std::to_string(++number) + ".md"),
                "---\ndate: 2025-01-02T03:04:05Z\n---\n" + body);
    }
  });
}

std::size_t largestFile(const Journal& journal) {
  std::size_t largest = 0;
  for (const fs::directory_entry& item : fs::recursive_directory_iterator(journal.folder())) {
    if (item.is_regular_file()) largest = std::max(largest, static_cast<std::size_t>(item.file_size()));
  }
  return largest;
}

std::size_t countFolders(const Journal& journal) {
  std::size_t folders = 1;
  for (const fs::directory_entry& item : fs::recursive_directory_iterator(journal.folder())) {
    if (item.is_directory()) ++folders;
  }
  return folders;
}

}  // namespace halvane
