// What a person waits for after a restart: no file of the journal is in memory.
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>

#include "bench/contestants.h"
#include "bench/conversation.h"
#include "bench/measures.h"
#include "bench/plans.h"
#include "bench/programs.h"

namespace halvane {
namespace {

// Files that wait to be written stay in memory, so they are written first. False for anyone but root.
bool emptyPageCache() {
  sync();
  std::ofstream control("/proc/sys/vm/drop_caches");
  control << '3' << std::flush;
  return control.good();
}

// The servers run all the time and keep their own pages. What starts for each search is brought back first.
Contestant fromDisk(const Contestant& contestant, const std::function<void()>& bringBack) {
  return [=] {
    emptyPageCache();
    bringBack();
    return contestant();
  };
}

void compare(const Search& search, const Settings& settings, Report& report) {
  if (!emptyPageCache()) {
    std::cerr << search.name << ": skipped, only root can empty the page cache\n";
    return;
  }
  const Journal journal = writeJournal(settings.cache, plans::englishJournal(10'000, settings.today));
  const std::string empty = settings.cache + "/empty";
  std::filesystem::create_directories(empty);
  Child server({settings.server}, journal.home);
  Child limit({programs::limit, journal.folder()}, journal.home);
  const auto nothing = [] {};
  const auto program = [&] { Child({"rg", "--no-config", "x", empty}, empty).finish(); };
  const std::vector<Times> times =
      takeTurns({fromDisk(asking(server, search), nothing), fromDisk(reading(limit), nothing),
                 fromDisk(ripgrep("-j0", search, journal), program),
                 fromDisk(ripgrep("-j8", search, journal), program)},
                settings.rounds);
  const Times& faster = median(times[2]) < median(times[3]) ? times[2] : times[3];
  report.add(*search.goal, search.name, medianRatio(times[0], faster));
  report.add(
      ColdFigures{search.name, median(times[0]), median(times[1]), median(times[2]), median(times[3])});
}

}  // namespace

std::vector<Measurement> coldMeasurements() {
  const auto measurement = [](const Search& search) {
    return Measurement{search.name, false, [search](const Settings& settings, Report& report) {
                         compare(search, settings, report);
                       }};
  };
  const std::string word(english.rare.written);
  return {measurement({"cold: English 10,000", searchLine(english.rare.asked), word, true, &goals::cold}),
          measurement({"cold: list_recent", recentLine(365), word, true, &goals::coldRecent})};
}

}  // namespace halvane
