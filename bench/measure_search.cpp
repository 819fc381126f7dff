// Searches of journals such as people have, beside reading the files alone and beside a plain text search.
#include <memory>

#include "bench/contestants.h"
#include "bench/conversation.h"
#include "bench/journal_cache.h"
#include "bench/measures.h"
#include "bench/plans.h"
#include "bench/programs.h"
#include "bench/rounds.h"

namespace halvane {
namespace {

std::vector<Search> searchesFor(const Language& language, const std::string& name, const Goal& goal) {
  const auto search = [&](const char* share, const Marker& word, bool finds) {
    return Search{name + "-" + share, searchLine(word.asked), std::string(word.written), finds, &goal};
  };
  return {search("rare", language.rare, true), search("common", language.common, true),
          search("absent", {language.absent, language.absent}, false)};
}

Search tagSearch(const std::string& name, const Goal& goal) {
  return {name + "-tag", tagLine(knownTag), std::string(knownTag), true, &goal};
}

// Short searches need more rounds for as steady a median, and have the time.
int roundsFor(const Goal& goal) {
  return &goal == &goals::searchSmall ? 5 : 1;
}

void compare(const Search& search, const Journal& journal, const Settings& settings, Report& report) {
  Child server({settings.server}, journal.home);
  Child limit({programs::limit, journal.folder()}, journal.home);
  Child sandboxedLimit({programs::limit, journal.folder(), "--in-sandbox"}, journal.home);
  std::vector<Contestant> contestants = {asking(server, search), reading(limit), reading(sandboxedLimit)};
  if (!search.pattern.empty()) {
    contestants.push_back(ripgrep("-j1", search, journal));
    contestants.push_back(ripgrep("-j2", search, journal));
  }
  const std::vector<Times> times = takeTurns(contestants, settings.rounds * roundsFor(*search.goal));

  SearchFigures figures{search.name, median(times[0]), spread(ratios(times[0], times[1])), {}, {}, {}};
  figures.sandboxedLimitRatio = medianRatio(times[0], times[2]);
  report.add(*search.goal, search.name, figures.limitRatio.median);
  if (!search.pattern.empty()) {
    figures.oneThreadRatio = medianRatio(times[0], times[3]);
    figures.twoThreadsRatio = medianRatio(times[0], times[4]);
    report.add(goals::besideOneThread, search.name, *figures.oneThreadRatio);
    report.add(goals::besideTwoThreads, search.name, *figures.twoThreadsRatio);
  }
  report.add(figures);
}

// What the sandbox alone costs, and what two equal programs differ by on this machine.
void measureLimit(const Settings& settings, Report& report) {
  const Journal journal = writeJournal(settings.cache, plans::englishJournal(10'000, settings.today));
  Child limit({programs::limit, journal.folder()}, journal.home);
  Child again({programs::limit, journal.folder()}, journal.home);
  Child sandboxed({programs::limit, journal.folder(), "--in-sandbox"}, journal.home);
  const std::vector<Times> times =
      takeTurns({reading(limit), reading(again), reading(sandboxed)}, 3 * settings.rounds);
  report.add(goals::sandboxedReading, "limit", medianRatio(times[2], times[0]));
  report.add(SearchFigures{
      "reading alone, again", median(times[1]), spread(ratios(times[1], times[0])), {}, {}, {}});
  report.add(SearchFigures{
      "reading alone, in the sandbox", median(times[2]), spread(ratios(times[2], times[0])), {}, {}, {}});
}

// What an entry costs more in a journal ten times as large, the limit's own growth taken off; and the
// times at each size.
void measureGrowth(const Settings& settings, Report& report) {
  constexpr std::size_t sizes[] = {1'000, 10'000, 100'000};
  enum { server, limit, rg, contestantsForOneSize };
  const Search search = searchesFor(english, "growth", goals::growth).front();
  std::vector<std::unique_ptr<Child>> children;
  std::vector<Contestant> contestants;
  const auto start = [&](const std::vector<std::string>& command, const Journal& journal) -> Child& {
    return *children.emplace_back(std::make_unique<Child>(command, journal.home));
  };
  for (const std::size_t size : sizes) {
    const Journal journal = writeJournal(settings.cache, plans::englishJournal(size, settings.today));
    contestants.push_back(asking(start({settings.server}, journal), search));
    contestants.push_back(reading(start({programs::limit, journal.folder()}, journal)));
    contestants.push_back(ripgrep("-j1", search, journal));
  }
  const std::vector<Times> times = takeTurns(contestants, settings.rounds);
  const auto timesOf = [&](std::size_t size, std::size_t contestant) -> const Times& {
    return times[size * contestantsForOneSize + contestant];
  };

  const auto growthOf = [&](std::size_t contestant) {
    return ratios(timesOf(2, contestant), timesOf(1, contestant));
  };
  report.add(goals::growth, "growth", medianRatio(growthOf(server), growthOf(limit)));
  for (std::size_t i = 0; i < std::size(sizes); ++i) {
    report.add(GrowthFigures{sizes[i], median(timesOf(i, server)), median(timesOf(i, limit)),
                             median(timesOf(i, rg))});
  }
}

}  // namespace

std::vector<Measurement> searchMeasurements() {
  std::vector<Measurement> measurements;
  const auto addAll = [&](const std::vector<Search>& searches, bool quick, auto planOf) {
    for (const Search& search : searches) {
      measurements.push_back({search.name, quick, [search, planOf](const Settings& settings, Report& report) {
                                compare(search, writeJournal(settings.cache, planOf(settings.today)),
                                        settings, report);
                              }});
    }
  };
  const auto tenThousand = [](auto today) { return plans::englishJournal(10'000, today); };
  const auto oneThousand = [](auto today) { return plans::englishJournal(1'000, today); };

  measurements.push_back({"limit", true, measureLimit});
  addAll(searchesFor(english, "english", goals::searchEnglish), true, tenThousand);
  addAll({tagSearch("english", goals::searchEnglish)}, true, tenThousand);
  addAll(searchesFor(english, "small", goals::searchSmall), true, oneThousand);
  addAll({{"recent", recentLine(365), "", true, &goals::recent}}, true, tenThousand);
  addAll(searchesFor(english, "mixed-ascii", goals::searchMixed), false, plans::mixedJournal);
  addAll({tagSearch("mixed", goals::searchMixed)}, false, plans::mixedJournal);
  for (const Language& language : mixedLanguages) {
    const bool quick = language.name == "german";
    addAll(searchesFor(language, "mixed-" + std::string(language.name), goals::searchMixed), quick,
           plans::mixedJournal);
  }
  addAll(searchesFor(english, "cjk-ascii", goals::searchCjk), false, plans::cjkJournal);
  addAll({tagSearch("cjk", goals::searchCjk)}, false, plans::cjkJournal);
  for (const Language& language : cjkLanguages) {
    addAll(searchesFor(language, "cjk-" + std::string(language.name), goals::searchCjk), false,
           plans::cjkJournal);
  }
  measurements.push_back({"growth", false, measureGrowth});
  return measurements;
}

}  // namespace halvane
