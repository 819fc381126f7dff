#include "tests/figures/rounds.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace halvane {

std::vector<Times> takeTurns(const std::vector<Contestant>& contestants, int rounds) {
  for (const Contestant& contestant : contestants) contestant();
  std::vector<Times> times(contestants.size());
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < contestants.size(); ++i) {
      const std::size_t turn = round % 2 == 0 ? i : contestants.size() - 1 - i;
      times[turn].push_back(contestants[turn]());
    }
  }
  return times;
}

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

Spread spread(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return {values[values.size() / 2], values[values.size() / 4], values[values.size() * 3 / 4]};
}

std::vector<double> ratios(const Times& times, const Times& beside) {
  std::vector<double> found;
  for (std::size_t i = 0; i < times.size(); ++i) found.push_back(times[i] / beside[i]);
  return found;
}

double medianRatio(const Times& times, const Times& beside) {
  return median(ratios(times, beside));
}

}  // namespace halvane
