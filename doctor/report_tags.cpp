#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "doctor/report_sections.h"

namespace halvane {

void describeTags(const Examination& examination, Page& page) {
  if (examination.tags.empty()) return;
  using Tag = std::pair<std::string, std::size_t>;
  std::vector<Tag> tags(examination.tags.begin(), examination.tags.end());
  std::stable_sort(tags.begin(), tags.end(),
                   [](const Tag& left, const Tag& right) { return left.second > right.second; });
  const std::size_t width = std::to_string(tags.front().second).size();
  page.heading("Tags, and how many entries have each");
  for (const auto& [tag, count] : tags) {
    const std::string number = std::to_string(count);
    page.line(std::string(width - number.size(), ' ').append(number).append("  ").append(tag));
  }
}

}  // namespace halvane
