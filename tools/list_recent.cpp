#include "tools/list_recent.h"

#include "journal/journal_store.h"
#include "tools/date_style.h"
#include "user/dates.h"

namespace halvane {
namespace {

std::string noEntries(std::int64_t days, const std::optional<std::string>& tag) {
  std::string text = "No entries ";
  if (tag) text.append("tagged ").append(*tag).append(" ");
  return text.append("in the last ").append(std::to_string(days)).append(" days.");
}

}  // namespace

std::string listRecent(std::int64_t days, const std::optional<std::string>& tag) {
  const Instant present = now();
  const Instant cutoff = daysBefore(present, days).value_or(present);
  const std::vector<Entry> recent = loadEntries(
      {.head = [&](const EntryHead& entry) { return entry.date >= cutoff && (!tag || entry.hasTag(*tag)); }});
  if (recent.empty()) return noEntries(days, tag);

  const DateWords words = dateStyle.words();
  std::string text;
  for (const Entry& entry : recent) {
    if (!text.empty()) text.append("\n\n");
    text.append("[").append(words.of(entry.date)).append("]").append(tagSuffix(entry));
    text.append(" ").append(entry.firstLine()).append("\n").append(entry.url.text());
  }
  return text;
}

}  // namespace halvane
