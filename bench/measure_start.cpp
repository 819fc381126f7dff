// The start of the process, and what is left to do at the first search, beside a C++ program that says hello.
#include "bench/conversation.h"
#include "bench/journal_cache.h"
#include "bench/measures.h"
#include "bench/plans.h"
#include "bench/programs.h"
#include "bench/rounds.h"

namespace halvane {
namespace {

// These take a millisecond or two: many rounds cost little and calm the figure.
constexpr int roundsPerRound = 8;

Journal smallJournal(const Settings& settings) {
  return writeJournal(settings.cache, plans::englishJournal(1'000, settings.today));
}

Contestant sayingHello(const std::string& home) {
  return [home] {
    const Stopwatch watch;
    Child hello({programs::hello}, home);
    hello.readLine();
    return watch.seconds();
  };
}

void measureStart(const Settings& settings, Report& report) {
  const std::string home = smallJournal(settings).home;
  const Contestant starting = [&] {
    const Stopwatch watch;
    Child server({settings.server}, home);
    ask(server, initializeLine);
    return watch.seconds();
  };
  const std::vector<Times> times = takeTurns({starting, sayingHello(home)}, roundsPerRound * settings.rounds);
  report.add(goals::start, "start", medianRatio(times[0], times[1]));
}

void measureFirstSearch(const Settings& settings, Report& report) {
  const std::string home = smallJournal(settings).home;
  const std::string line = searchLine(english.common.asked);
  const Contestant searching = [&] {
    Child server({settings.server}, home);
    ask(server, initializeLine);
    const double first = secondsToAnswer(server, line);
    Times later;
    for (int i = 0; i < 3; ++i) later.push_back(secondsToAnswer(server, line));
    return first - median(later);
  };
  const std::vector<Times> times =
      takeTurns({searching, sayingHello(home)}, roundsPerRound * settings.rounds);
  report.add(goals::firstSearch, "first-search", medianRatio(times[0], times[1]));
}

}  // namespace

std::vector<Measurement> startMeasurements() {
  return {{"start", true, measureStart}, {"first-search", true, measureFirstSearch}};
}

}  // namespace halvane
