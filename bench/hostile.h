#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace halvane {

struct HostileQuery {
  std::string_view name;
  std::string text;
};

/// Bodies and queries that are cheap to write and dear to a search that isn't linear.
struct HostileJournal {
  std::string_view name;
  std::function<std::vector<std::string>()> bodies;
  std::function<std::vector<HostileQuery>()> queries;
};

extern const std::span<const HostileJournal> hostileJournals;

}  // namespace halvane
