#pragma once

#include <chrono>
#include <functional>
#include <vector>

namespace halvane {

/// Seconds since it was made.
class Stopwatch {
 public:
  double seconds() const { return std::chrono::duration<double>(Clock::now() - start_).count(); }

 private:
  using Clock = std::chrono::steady_clock;
  Clock::time_point start_ = Clock::now();
};

/// One of those that are compared: does its work once and returns the seconds that it took.
using Contestant = std::function<double()>;

/// What one contestant took, round by round.
using Times = std::vector<double>;

/// Lets the contestants take turns for `rounds` rounds, every other one in reverse, so that whatever slows
/// the machine for a while slows all of them. A round that doesn't count comes first and warms the caches.
std::vector<Times> takeTurns(const std::vector<Contestant>& contestants, int rounds);

/// The middle one of `values`, which must not be empty.
double median(std::vector<double> values);

/// A median, and the bounds of the middle half of the values.
struct Spread {
  double median, lower, upper;
};
Spread spread(std::vector<double> values);

/// Round by round, how many times as long the one took as the other.
std::vector<double> ratios(const Times& times, const Times& beside);

/// The median of these.
double medianRatio(const Times& times, const Times& beside);

}  // namespace halvane
