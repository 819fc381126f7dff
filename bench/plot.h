#pragma once

#include <string>
#include <vector>

#include "bench/report.h"

namespace halvane {

/// A drawing (SVG) of the cost of one search against the number of entries, both on logarithmic axes.
std::string drawPlot(const std::vector<PlotPoint>& points);

}  // namespace halvane
