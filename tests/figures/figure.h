#pragma once

#include <string_view>

namespace halvane {

/// Prints a figure and its goal, `name: value unit (goal at most ...)`, and fails the test if the figure is
/// greater.
void expectAtMost(std::string_view name, double value, std::string_view unit, double goal);

/// The same for a figure that must be the goal, no more and no less.
void expectExactly(std::string_view name, double value, std::string_view unit, double goal);

}  // namespace halvane
