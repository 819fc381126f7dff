#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "bench/goals.h"
#include "bench/rounds.h"

namespace halvane {

/// One measured value. A goal has as many figures as there are cases under it, and the worst one counts.
struct Figure {
  const Goal* goal;
  std::string variant;
  double value;
};

/// One search beside the programs that do the same or less, in seconds and ratios.
struct SearchFigures {
  std::string name;
  double seconds;
  Spread limitRatio;
  std::optional<double> sandboxedLimitRatio;  // beside reading inside the same sandbox
  std::optional<double> oneThreadRatio;       // beside ripgrep, where that has something to look for
  std::optional<double> twoThreadsRatio;
};

/// One search of a journal of so many entries: the server, reading alone and ripgrep, in seconds.
struct GrowthFigures {
  std::size_t entries;
  double server;
  double limit;
  double ripgrep;
};

/// One search of files that come from the disk: the server, reading alone, and ripgrep with as many threads
/// as it likes and with eight, in seconds.
struct ColdFigures {
  std::string name;
  double server;
  double limit;
  double ripgrep;
  double ripgrepEight;
};

/// All that a run finds out, in the order in which it does.
class Report {
 public:
  /// Notes a figure, and shows it on standard error: a run takes minutes.
  void add(const Goal& goal, const std::string& variant, double value);
  void add(const SearchFigures& search) { searches_.push_back(search); }
  void add(const GrowthFigures& point) { growth_.push_back(point); }
  void add(const ColdFigures& search) { cold_.push_back(search); }

  /// Whether this was a full run, with everything that belongs on the page.
  bool isComplete() const { return !growth_.empty(); }
  bool meetsAllGoals() const;

  /// A drawing in letters of what a search takes, the goals with their worst figures, then every search:
  /// Markdown.
  std::string tables() const;

 private:
  std::string goalTable() const;
  std::string searchTable() const;
  std::string growthTable() const;
  std::string coldTable() const;
  std::string drawing() const;

  std::vector<Figure> figures_;
  std::vector<SearchFigures> searches_;
  std::vector<GrowthFigures> growth_;
  std::vector<ColdFigures> cold_;
};

}  // namespace halvane
