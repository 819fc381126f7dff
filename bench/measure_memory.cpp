// The memory of a process that searches, and what it keeps when it waits for the next request.
#include "bench/memory.h"

#include <chrono>
#include <thread>

#include "bench/conversation.h"
#include "bench/journal_cache.h"
#include "bench/measures.h"
#include "bench/plans.h"

namespace halvane {
namespace {

// In a process of its own, since a peak can't be taken back.
void measurePeak(const std::string& name, const Journal& journal, std::string_view line,
                 const Settings& settings, Report& report) {
  Child server({settings.server}, journal.home);
  ask(server, line);
  const double twiceLargest = 2 * static_cast<double>(largestFile(journal)) / 1e6;
  report.add(goals::peakMemory, name, memoryOf(server.pid(), "VmHWM") - twiceLargest);
}

void measureIdle(const std::string& name, const Journal& journal, const Settings& settings, Report& report) {
  Child server({settings.server}, journal.home);
  ask(server, searchLine(english.rare.asked));
  ask(server, searchLine(english.common.asked));
  ask(server, recentLine(365));
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  report.add(goals::idleMemory, name, memoryOf(server.pid(), "VmRSS"));
  report.add(goals::idleOwnMemory, name, memoryOf(server.pid(), "RssAnon"));
}

Measurement memoryMeasurement(const std::string& name, bool quick, std::size_t entries) {
  return {name, quick, [=](const Settings& settings, Report& report) {
            const Journal journal =
                writeJournal(settings.cache, plans::englishJournal(entries, settings.today));
            measurePeak(name, journal, searchLine(english.rare.asked), settings, report);
            measureIdle(name, journal, settings, report);
          }};
}

void measureBigBodies(const Settings& settings, Report& report) {
  for (const HostileJournal& hostile : hostileJournals) {
    const Journal journal = writeJournal(settings.cache, hostile);
    const std::string name = "memory-" + std::string(hostile.name);
    measurePeak(name, journal, searchLine(hostile.queries().front().text), settings, report);
  }
}

}  // namespace

std::vector<Measurement> memoryMeasurements() {
  return {memoryMeasurement("memory-10000", true, 10'000),
          memoryMeasurement("memory-100000", false, 100'000),
          {"memory-big-bodies", false, measureBigBodies}};
}

}  // namespace halvane
