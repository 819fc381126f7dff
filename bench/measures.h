#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "bench/report.h"

namespace halvane {

struct Settings {
  std::string server;  // the program under test
  std::string cache;   // where the journals are written
  int rounds;
  std::chrono::sys_days today;
};

/// One measurement, which can be asked for by its name.
struct Measurement {
  std::string name;
  bool quick;  // whether a quick run has time for it
  std::function<void(const Settings&, Report&)> run;
};

std::vector<Measurement> searchMeasurements();
std::vector<Measurement> coldMeasurements();
std::vector<Measurement> hostileMeasurements();
std::vector<Measurement> startMeasurements();
std::vector<Measurement> memoryMeasurements();
std::vector<Measurement> lineMeasurements();

/// What is the same on every machine: system calls and user instructions.
std::vector<Measurement> countMeasurements();

}  // namespace halvane
