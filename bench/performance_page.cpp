#include "bench/performance_page.h"

#include <chrono>
#include <ctime>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "bench/machine.h"

namespace halvane {
namespace {

constexpr std::string_view beginMarker = "<!-- figures: begin -->\n";
constexpr std::string_view endMarker = "<!-- figures: end -->\n";

std::string today() {
  const std::time_t now = std::time(nullptr);
  char text[16];
  return {text, std::strftime(text, sizeof(text), "%Y-%m-%d", std::gmtime(&now))};
}

void writeText(const std::string& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  file << text;
  file.close();
  if (!file) throw std::runtime_error("can't write " + path);
}

}  // namespace

void writePerformancePage(const std::string& folder, const Report& report) {
  if (!report.isComplete()) throw std::runtime_error("only a full run has all that belongs on the page");
  const std::string path = folder + "/performance.md";
  std::ifstream file(path, std::ios::binary);
  std::string page{std::istreambuf_iterator<char>(file), {}};
  const std::size_t begin = page.find(beginMarker);
  const std::size_t end = page.find(endMarker);
  if (begin == std::string::npos || end == std::string::npos)
    throw std::runtime_error("no markers in " + path);
  const std::size_t from = begin + beginMarker.size();
  page.replace(from, end - from,
               "Measured on " + today() + ": " + machineInWords() + ".\n\n" + report.tables());
  writeText(path, page);
}

}  // namespace halvane
