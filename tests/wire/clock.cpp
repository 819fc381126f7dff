#include "tests/wire/clock.h"

#include <array>
#include <ctime>
#include <stdexcept>

namespace halvane {
namespace {

constexpr const char* form = "%Y-%m-%dT%H:%M:%SZ";

}  // namespace

std::int64_t secondsOf(std::string_view moment) {
  std::tm parts{};
  const std::string text(moment);
  const char* end = strptime(text.c_str(), form, &parts);
  if (end == nullptr || *end != '\0') throw std::runtime_error("no moment: " + text);
  return timegm(&parts);
}

std::string momentOf(std::int64_t seconds) {
  const std::time_t moment = seconds;
  std::tm parts{};
  std::array<char, 64> text;
  return {text.data(), std::strftime(text.data(), text.size(), form, gmtime_r(&moment, &parts))};
}

}  // namespace halvane
