// Entry files, from their bytes to what a search looks at, and on to entries.
#include <benchmark/benchmark.h>

#include "bench/journal_text.h"
#include "journal/entry_parser.h"

namespace halvane {
namespace {

std::vector<std::string> filesIn(const Language& language) {
  const JournalPlan plan{"", {&language, 1}, 100, std::chrono::sys_days(std::chrono::days(20'000))};
  std::vector<std::string> files;
  for (std::size_t i = 0; i < plan.entries; ++i) files.push_back(journalFile(plan, i).text);
  return files;
}

void readText(benchmark::State& state, const Language* language) {
  const std::vector<std::string> files = filesIn(*language);
  for (auto _ : state) {
    for (const std::string& file : files) benchmark::DoNotOptimize(EntryText::read(file));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(files.size()));
}

void makeEntry(benchmark::State& state, const Language* language) {
  const std::vector<std::string> files = filesIn(*language);
  const FileUrl url{"/home/anna/Documents/Halvane/2025/11/2025-11-03-091400.md"};
  for (auto _ : state) {
    for (const std::string& file : files) benchmark::DoNotOptimize(EntryText::read(file)->entry(url));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(files.size()));
}

BENCHMARK_CAPTURE(readText, english, &english);
BENCHMARK_CAPTURE(readText, german, mixedLanguages.data());
BENCHMARK_CAPTURE(readText, hindi, &mixedLanguages[5]);
BENCHMARK_CAPTURE(readText, japanese, &cjkLanguages[1]);
BENCHMARK_CAPTURE(makeEntry, english, &english);

}  // namespace
}  // namespace halvane
