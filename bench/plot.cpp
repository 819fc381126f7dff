#include "bench/plot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace halvane {
namespace {

constexpr double left = 70, right = 580, top = 30, bottom = 330;
constexpr double width = 640, height = 390;

// From one power of ten to another; each decade is as long as the others.
struct Axis {
  int firstPower, lastPower;
  double from, to;  // their places in the drawing

  double place(double value) const {
    return from + (to - from) * (std::log10(value) - firstPower) / (lastPower - firstPower);
  }
};

std::string text(const char* format, auto... values) {
  std::array<char, 512> buffer;
  const int length = std::snprintf(buffer.data(), buffer.size(), format, values...);
  return {buffer.data(), static_cast<std::size_t>(length)};
}

std::string label(double x, double y, const char* anchor, const char* words) {
  return text("<text x=\"%.1f\" y=\"%.1f\" text-anchor=\"%s\">%s</text>\n", x, y, anchor, words);
}

std::string line(double x1, double y1, double x2, double y2) {
  return text("<path d=\"M%.1f %.1fL%.1f %.1f\" stroke=\"#ddd\"/>\n", x1, y1, x2, y2);
}

std::string grid(const Axis& entries, const Axis& milliseconds) {
  std::string drawing;
  for (int power = entries.firstPower; power <= entries.lastPower; ++power) {
    const double value = std::pow(10, power);
    drawing += line(entries.place(value), top, entries.place(value), bottom);
    drawing += label(entries.place(value), bottom + 20, "middle", text("%.0f", value).c_str());
  }
  for (int power = milliseconds.firstPower; power <= milliseconds.lastPower; ++power) {
    const double value = std::pow(10, power);
    drawing += line(left, milliseconds.place(value), right, milliseconds.place(value));
    drawing += label(left - 8, milliseconds.place(value) + 4, "end", text("%g", value).c_str());
  }
  drawing += label((left + right) / 2, bottom + 45, "middle", "entries in the journal");
  return drawing + label(10, top - 14, "start", "milliseconds a search");
}

struct Series {
  const char* name;
  const char* colour;
  double PlotPoint::*value;
};

std::string curve(const Series& series, const std::vector<PlotPoint>& points, const Axis& entries,
                  const Axis& milliseconds) {
  std::string path;
  std::string dots;
  for (const PlotPoint& point : points) {
    const double x = entries.place(static_cast<double>(point.entries));
    const double y = milliseconds.place(point.*series.value * 1000);
    path += text("%s%.1f %.1f", path.empty() ? "M" : "L", x, y);
    dots += text("<circle cx=\"%.1f\" cy=\"%.1f\" r=\"4\" fill=\"%s\"/>\n", x, y, series.colour);
  }
  return "<path d=\"" + path + text("\" fill=\"none\" stroke-width=\"2\" stroke=\"%s\"/>\n", series.colour) +
         dots;
}

}  // namespace

std::string drawPlot(const std::vector<PlotPoint>& points) {
  constexpr Series all[] = {{"a plain text search (rg -i -j1 -l)", "#b5651d", &PlotPoint::ripgrep},
                            {"search_entries", "#1f5fa8", &PlotPoint::server},
                            {"reading the files alone", "#2e8b57", &PlotPoint::limit}};
  const auto powerBelow = [](double value) { return static_cast<int>(std::floor(std::log10(value))); };
  const auto powerAbove = [](double value) { return static_cast<int>(std::ceil(std::log10(value))); };
  const PlotPoint& small = points.front();
  const PlotPoint& large = points.back();
  const Axis entries{powerBelow(static_cast<double>(small.entries)),
                     powerAbove(static_cast<double>(large.entries)), left, right};
  const Axis milliseconds{powerBelow(small.limit * 1000),
                          powerAbove(std::max(large.server, large.ripgrep) * 1000), bottom, top};

  std::string drawing =
      text(R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 %.0f %.0f" )", width, height) +
      "font-family=\"sans-serif\" font-size=\"13\">\n"
      "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n" +
      grid(entries, milliseconds);
  double legend = top + 20;
  for (const Series& series : all) {
    drawing += curve(series, points, entries, milliseconds);
    drawing +=
        text("<circle cx=\"%.1f\" cy=\"%.1f\" r=\"4\" fill=\"%s\"/>\n", left + 20, legend - 4, series.colour);
    drawing += label(left + 32, legend, "start", series.name);
    legend += 20;
  }
  return drawing + "</svg>\n";
}

}  // namespace halvane
