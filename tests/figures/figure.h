#pragma once

#include <string_view>

namespace halvane {

/// Prints a figure and its goal, `name: value unit (goal at most ...)`, and fails the test if the figure is
/// greater.
void expectAtMost(std::string_view name, double value, std::string_view unit, double goal);

/// The same for a ratio of two times. Other programs on the machine move such a ratio too, so the test fails
/// only if it is more than half above the goal.
void expectRatioAtMost(std::string_view name, double ratio, std::string_view unit, double goal);

/// The same for a figure that must be the goal, no more and no less.
void expectExactly(std::string_view name, double value, std::string_view unit, double goal);

}  // namespace halvane
