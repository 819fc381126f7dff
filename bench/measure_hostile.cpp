// Searches of journals that somebody wrote to hurt, beside reading the files alone.
#include <stdexcept>

#include "bench/conversation.h"
#include "bench/hostile.h"
#include "bench/journal_cache.h"
#include "bench/measures.h"
#include "bench/programs.h"
#include "bench/rounds.h"

namespace halvane {
namespace {

void measureHostile(const HostileJournal& hostile, const Settings& settings, Report& report) {
  const Journal journal = writeJournal(settings.cache, hostile);
  Child server({settings.server}, journal.home);
  Child limit({programs::limit, journal.folder()}, journal.home);
  for (const HostileQuery& query : hostile.queries()) {
    const std::string line = searchLine(query.text);
    const std::vector<Times> times = takeTurns(
        {[&] { return secondsToAnswer(server, line); }, [&] { return secondsToAnswer(limit, "\n"); }},
        settings.rounds);
    const std::string name = "hostile-" + std::string(hostile.name) + ": " + std::string(query.name);
    const Spread besideLimit = spread(ratios(times[0], times[1]));
    report.add(goals::hostile, name, besideLimit.median);
    report.add(SearchFigures{name, median(times[0]), besideLimit, {}, {}, {}});
  }
}

}  // namespace

std::vector<Measurement> hostileMeasurements() {
  std::vector<Measurement> measurements;
  for (const HostileJournal& hostile : hostileJournals) {
    measurements.push_back(
        {"hostile-" + std::string(hostile.name), false, [&hostile](const Settings& settings, Report& report) {
           measureHostile(hostile, settings, report);
         }});
  }
  return measurements;
}

}  // namespace halvane
