#include "bench/report.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iostream>

namespace halvane {
namespace {

std::string number(double value, int decimals) {
  std::array<char, 64> text;
  const int length = std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
  return {text.data(), static_cast<std::size_t>(length)};
}

// As many digits as a reader can use: 3512, 12.3, 1.234.
std::string figure(double value) {
  return number(value, value >= 1000 ? 0 : value >= 10 ? 1 : value >= 2 ? 2 : 3);
}

std::string bound(double value) {
  return number(value, value == static_cast<int>(value) ? 0 : 2);
}

std::string ratio(const std::optional<double>& value) {
  return value ? figure(*value) : "";
}

using Row = std::vector<std::string>;

// A Markdown table that is as well read in a terminal. Texts are ASCII, so that bytes are columns.
std::string aligned(const std::vector<Row>& rows) {
  std::vector<std::size_t> widths(rows.front().size(), 3);
  for (const Row& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  }
  std::string text;
  for (std::size_t line = 0; line < rows.size(); ++line) {
    for (std::size_t i = 0; i < widths.size(); ++i) {
      text += "| " + rows[line][i] + std::string(widths[i] - rows[line][i].size() + 1, ' ');
    }
    text += "|\n";
    if (line > 0) continue;
    for (const std::size_t width : widths) text += "| " + std::string(width, '-') + " ";
    text += "|\n";
  }
  return text;
}

struct Bar {
  std::string label;
  double seconds;
};

std::string bars(const std::vector<Bar>& bars) {
  constexpr double longestBar = 50;
  double longest = 0;
  for (const Bar& bar : bars) longest = std::max(longest, bar.seconds);
  std::string text;
  for (const Bar& bar : bars) {
    const auto length = static_cast<std::size_t>(longestBar * bar.seconds / longest);
    text += "  " + bar.label + std::string(25 - bar.label.size(), ' ') + std::string(length, '#') + " " +
            figure(bar.seconds * 1000) + " ms\n";
  }
  return text;
}

std::string verdict(const Goal& goal, double value) {
  if (!goal.isMet(value)) return "missed";
  return goal.stretch != goal.goal && goal.isStretched(value) ? "stretch" : "goal";
}

}  // namespace

void Report::add(const Goal& goal, const std::string& variant, double value) {
  figures_.push_back({&goal, variant, value});
  std::cerr << variant << ": " << figure(value) << " " << goal.unit << " (goal " << bound(goal.goal) << ")\n";
}

bool Report::meetsAllGoals() const {
  return std::all_of(figures_.begin(), figures_.end(),
                     [](const Figure& figure) { return figure.goal->isMet(figure.value); });
}

std::string Report::tables() const {
  std::string tables = drawing() + goalTable();
  if (!searches_.empty()) tables += "\n" + searchTable();
  if (!cold_.empty()) tables += "\n" + coldTable();
  if (!growth_.empty()) tables += "\n" + growthTable();
  return tables;
}

std::string Report::goalTable() const {
  std::vector<Row> rows = {{"measure", "value", "unit", "goal", "stretch", "reached", "worst of"}};
  for (const Goal* goal : goals::all) {
    const Figure* worst = nullptr;
    int count = 0;
    for (const Figure& candidate : figures_) {
      if (candidate.goal != goal) continue;
      ++count;
      if (worst == nullptr || (candidate.value > worst->value) != goal->higherIsBetter) worst = &candidate;
    }
    if (worst == nullptr) continue;
    rows.push_back({std::string(goal->name), figure(worst->value), std::string(goal->unit), bound(goal->goal),
                    goal->stretch == goal->goal ? "" : bound(goal->stretch), verdict(*goal, worst->value),
                    count == 1 ? "" : std::to_string(count) + ": " + worst->variant});
  }
  return aligned(rows);
}

std::string Report::searchTable() const {
  std::vector<Row> rows = {
      {"search", "ms", "x limit", "middle half", "x limit in sandbox", "x rg -j1", "x rg -j2"}};
  for (const SearchFigures& search : searches_) {
    rows.push_back({search.name, figure(search.seconds * 1000), figure(search.limitRatio.median),
                    figure(search.limitRatio.lower) + " to " + figure(search.limitRatio.upper),
                    ratio(search.sandboxedLimitRatio), ratio(search.oneThreadRatio),
                    ratio(search.twoThreadsRatio)});
  }
  return aligned(rows);
}

std::string Report::coldTable() const {
  std::vector<Row> rows = {
      {"files from the disk", "server, ms", "reading alone, ms", "rg, ms", "rg -j8, ms"}};
  for (const ColdFigures& search : cold_) {
    rows.push_back({search.name, figure(search.server * 1000), figure(search.limit * 1000),
                    figure(search.ripgrep * 1000), figure(search.ripgrepEight * 1000)});
  }
  return aligned(rows);
}

// Bars for one search, of files in memory and of files on the disk: each kind with a scale of its own.
std::string Report::drawing() const {
  const auto warm = std::find_if(searches_.begin(), searches_.end(),
                                 [](const SearchFigures& search) { return search.name == "english-rare"; });
  if (warm == searches_.end() || cold_.empty()) return "";
  const double server = warm->seconds;
  const ColdFigures& cold = cold_.front();
  return "```\nOne search of 10,000 entries. Files in memory:\n" +
         bars({{"reading the files alone", server / warm->limitRatio.median},
               {"this server", server},
               {"rg, two threads", server / warm->twoThreadsRatio.value_or(1)},
               {"rg, one thread", server / warm->oneThreadRatio.value_or(1)}}) +
         "\nThe same, files on the disk:\n" +
         bars({{"rg, eight threads", cold.ripgrepEight},
               {"this server", cold.server},
               {"reading the files alone", cold.limit}}) +
         "```\n\n";
}

std::string Report::growthTable() const {
  std::vector<Row> rows = {{"entries", "server, ms", "reading alone, ms", "rg -j1, ms"}};
  for (const GrowthFigures& size : growth_) {
    rows.push_back({std::to_string(size.entries), figure(size.server * 1000), figure(size.limit * 1000),
                    figure(size.ripgrep * 1000)});
  }
  return aligned(rows);
}

}  // namespace halvane
