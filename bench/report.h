#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "bench/goals.h"

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
  double limitRatio;
  std::optional<double> oneThreadRatio;  // beside ripgrep, where that has something to look for
  std::optional<double> twoThreadsRatio;
};

/// The cost of one search of a journal of so many entries, in seconds.
struct PlotPoint {
  std::size_t entries;
  double server;
  double limit;
  double ripgrep;
};

/// All that a run finds out, in the order in which it does.
class Report {
 public:
  /// Notes a figure, and shows it on standard error: a run takes minutes.
  void add(const Goal& goal, const std::string& variant, double value);
  void add(const SearchFigures& search) { searches_.push_back(search); }
  void add(const PlotPoint& point) { plotPoints_.push_back(point); }

  const std::vector<PlotPoint>& plotPoints() const { return plotPoints_; }
  bool meetsAllGoals() const;

  /// The goals with their worst figures, then every search: two Markdown tables.
  std::string tables() const;

 private:
  std::string goalTable() const;
  std::string searchTable() const;

  std::vector<Figure> figures_;
  std::vector<SearchFigures> searches_;
  std::vector<PlotPoint> plotPoints_;
};

}  // namespace halvane
