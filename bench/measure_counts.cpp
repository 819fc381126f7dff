// System calls and user instructions: the same on every machine, so that a machine can watch over them. Each
// is counted in a run with one search and in a run with two; the difference is one search without the start.
#include <cmath>
#include <fstream>
#include <stdexcept>

#include "bench/conversation.h"
#include "bench/journal_cache.h"
#include "bench/measures.h"
#include "bench/plans.h"
#include "bench/programs.h"

namespace halvane {
namespace {

std::string scratchFile(const Settings& settings) {
  return settings.cache + "/counts.txt";
}

// Sends `line` to the server, `times` times, while the program `watcher` counts and then leaves what it
// counted in the scratch file.
void askUnder(std::vector<std::string> watcher, const Settings& settings, const Journal& journal,
              const std::string& line, int times) {
  watcher.push_back(settings.server);
  Child server(watcher, journal.home);
  for (int i = 0; i < times; ++i) ask(server, line);
  server.finish();
}

double systemCalls(const Settings& settings, const Journal& journal, const std::string& line, int times) {
  askUnder({"strace", "-f", "-c", "-U", "calls,name", "-o", scratchFile(settings)}, settings, journal, line,
           times);
  std::ifstream summary(scratchFile(settings));
  for (std::string row; std::getline(summary, row);) {
    if (row.ends_with(" total")) return std::stod(row);
  }
  throw std::runtime_error("strace counted nothing");
}

// Of valgrind's tools the one that writes nothing but its log, which is open from the start: the server gives
// up opening files for writing, by Landlock where it gets no filter, and valgrind is in the same process.
double userInstructions(const Settings& settings, const Journal& journal, const std::string& line,
                        int times) {
  askUnder({programs::unfiltered, "valgrind", "--tool=lackey", "--basic-counts=yes",
            "--log-file=" + scratchFile(settings)},
           settings, journal, line, times);
  std::ifstream log(scratchFile(settings));
  constexpr std::string_view label = "guest instrs: ";
  for (std::string row; std::getline(log, row);) {
    const std::size_t at = row.find(label);
    if (at == std::string::npos) continue;
    row.erase(0, at + label.size());
    std::erase(row, ',');
    return std::stod(row);
  }
  throw std::runtime_error("valgrind counted nothing");
}

// A search that isn't counted comes first: files that are not in memory take a system call more.
double forOne(auto count, const Settings& settings, const Journal& journal, const std::string& line) {
  Child server({settings.server}, journal.home);
  ask(server, line);
  return count(settings, journal, line, 2) - count(settings, journal, line, 1);
}

// To the tenth: now and then a call of the memory's keeper comes in between.
double rounded(double calls) {
  return std::round(10 * calls) / 10;
}

// Three journals tell apart what entries, folders and the search itself take: the two larger ones have the
// same folders, the smallest has fewer.
void measureCalls(const Settings& settings, Report& report) {
  struct Count {
    double entries, folders, calls;
  };
  const auto countFor = [&](std::size_t entries) {
    const Journal journal = writeJournal(settings.cache, plans::englishJournal(entries, settings.today));
    return Count{static_cast<double>(entries), static_cast<double>(countFolders(journal)),
                 forOne(systemCalls, settings, journal, searchLine(english.common.asked))};
  };
  const Count tiny = countFor(100);
  const Count small = countFor(1'000);
  const Count large = countFor(10'000);
  const double perEntry = (large.calls - small.calls) / (large.entries - small.entries);
  const double forFolders = small.calls - tiny.calls - perEntry * (small.entries - tiny.entries);
  report.add(goals::callsPerEntry, "calls", rounded(perEntry));
  report.add(goals::callsPerFolder, "calls", rounded(forFolders / (small.folders - tiny.folders)));
}

void measureInstructions(const Settings& settings, Report& report) {
  constexpr std::size_t entries = 10'000;
  const Journal journal = writeJournal(settings.cache, plans::englishJournal(entries, settings.today));
  report.add(goals::instructions, "instructions",
             forOne(userInstructions, settings, journal, searchLine(english.rare.asked)) / entries);
}

}  // namespace

std::vector<Measurement> countMeasurements() {
  return {{"calls", true, measureCalls}, {"instructions", true, measureInstructions}};
}

}  // namespace halvane
