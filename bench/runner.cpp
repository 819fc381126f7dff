// Measures the server from outside, over its pipes, beside programs that do less, and prints the ratios
// beside their goals.
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/measures.h"
#include "bench/performance_page.h"
#include "bench/programs.h"

namespace halvane {
namespace {

constexpr const char* usage =
    R"(usage: bench_runner [OPTION]...
  --quick           fewer rounds, and only the main figures
  --gate            only the counts that are the same on every machine; fails when a goal is missed
  --only NAME       only the measurements whose name begins so; may come more than once
  --rounds NUMBER   how often contestants take turns
  --server PATH     the program under test instead of this build's
  --cache FOLDER    where the journals are written and found again
  --write FOLDER    puts the tables into performance.md there
  --list            the names of the measurements
)";

struct Options {
  Settings settings;
  std::vector<std::string> only;
  std::string page;
  bool quick = false;
  bool gate = false;
  bool list = false;
};

Options parseOptions(const std::vector<std::string>& arguments) {
  constexpr int fullRounds = 15;
  constexpr int quickRounds = 9;
  Options options;
  options.settings = {programs::server, programs::cache, 0,
                      std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now())};
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& name = arguments[i];
    const auto value = [&] {
      if (i + 1 == arguments.size()) throw std::invalid_argument(usage);
      return arguments[++i];
    };
    if (name == "--quick")
      options.quick = true;
    else if (name == "--gate")
      options.gate = true;
    else if (name == "--list")
      options.list = true;
    else if (name == "--only")
      options.only.push_back(value());
    else if (name == "--rounds")
      options.settings.rounds = std::stoi(value());
    else if (name == "--server")
      options.settings.server = value();
    else if (name == "--cache")
      options.settings.cache = value();
    else if (name == "--write")
      options.page = value();
    else
      throw std::invalid_argument(usage);
  }
  if (options.settings.rounds <= 0) options.settings.rounds = options.quick ? quickRounds : fullRounds;
  return options;
}

std::vector<Measurement> chosenMeasurements(const Options& options) {
  std::vector<Measurement> chosen;
  const auto add = [&](const std::vector<Measurement>& measurements) {
    for (const Measurement& measurement : measurements) {
      const auto isMeant = [&](const std::string& name) { return measurement.name.starts_with(name); };
      const bool named =
          options.only.empty() || std::any_of(options.only.begin(), options.only.end(), isMeant);
      if (named && (measurement.quick || !options.quick)) chosen.push_back(measurement);
    }
  };
  if (!options.gate) {
    add(searchMeasurements());
    add(coldMeasurements());
    add(hostileMeasurements());
    add(startMeasurements());
    add(memoryMeasurements());
  }
  add(countMeasurements());
  if (!options.gate) add(lineMeasurements());
  return chosen;
}

int run(const Options& options) {
  const std::vector<Measurement> measurements = chosenMeasurements(options);
  if (options.list) {
    for (const Measurement& measurement : measurements) std::cout << measurement.name << "\n";
    return 0;
  }
  std::filesystem::create_directories(options.settings.cache);
  Report report;
  std::size_t number = 0;
  for (const Measurement& measurement : measurements) {
    std::cerr << "[" << ++number << "/" << measurements.size() << "] " << measurement.name << "\n";
    measurement.run(options.settings, report);
  }
  std::cout << report.tables();
  if (!options.page.empty()) writePerformancePage(options.page, report);
  return options.gate && !report.meetsAllGoals() ? 1 : 0;
}

}  // namespace
}  // namespace halvane

int main(int argumentCount, char** arguments) {
  std::signal(SIGPIPE, SIG_IGN);
  try {
    return halvane::run(halvane::parseOptions({arguments + 1, arguments + argumentCount}));
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return 2;
  }
}
