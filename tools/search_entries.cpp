#include "tools/search_entries.h"

#include <algorithm>

#include "journal/journal_store.h"
#include "search/text_search.h"
#include "text/characters.h"
#include "text/text.h"
#include "tools/date_style.h"
#include "user/user_locale.h"

namespace halvane {
namespace {

constexpr std::size_t charactersAround = 80;

// Characters are counted in 32 bits, so we look only at this many bytes on each side of the match in an
// enormous body.
constexpr std::size_t bytesAround = std::size_t{1} << 29;

// The text around the match, on one line and between two ellipses.
std::string snippet(std::string_view body, TextMatch match) {
  const std::size_t from = match.begin > bytesAround ? startOfCodePoint(body, match.begin - bytesAround) : 0;
  const std::string_view window =
      body.substr(from, startOfCodePoint(body, std::min(match.end + bytesAround, body.size())) - from);
  Characters characters(window);
  const std::size_t begin = characters.back(characters.startOf(match.begin - from), charactersAround);
  const std::size_t end = characters.forward(characters.startOf(match.end - from), charactersAround);
  std::string excerpt(window.substr(begin, end - begin));
  std::replace(excerpt.begin(), excerpt.end(), '\n', ' ');
  return "…" + excerpt + "…";
}

// The second line of a hit. The search for the snippet knows no locale, so it may find nothing if the entry
// matches only with the Turkish dotless i.
std::string secondLine(const Entry& entry, const std::optional<TextSearch>& search) {
  const std::optional<TextMatch> match = search ? search->find(entry.body) : std::nullopt;
  return match ? snippet(entry.body, *match) : std::string(entry.firstLine());
}

std::string noEntries(std::string_view query, const std::optional<std::string>& tag) {
  std::string text = "No entries ";
  if (tag) text.append("tagged ").append(*tag).append(" ");
  return text.append("match \"").append(query).append("\".");
}

}  // namespace

std::string searchEntries(std::string_view query, const std::optional<std::string>& tag, std::int64_t limit) {
  std::optional<TextSearch> snippetSearch;
  std::optional<TextSearch> turkicSearch;
  if (!query.empty()) {
    snippetSearch.emplace(query, LetterI::oneLetter);
    if (userLocaleTellsDotlessI()) turkicSearch.emplace(query, LetterI::dottedAndDotless);
  }
  const std::optional<TextSearch>& bodySearch = turkicSearch ? turkicSearch : snippetSearch;
  EntryTests tests;
  if (tag) tests.head = [&](const EntryHead& entry) { return entry.hasTag(*tag); };
  if (bodySearch) {
    tests.file = [&](std::string_view file) { return bodySearch->mayBeWithin(file); };
    tests.body = [&](std::string_view body) { return bodySearch->find(body).has_value(); };
  }
  const std::vector<Entry> hits = loadEntries(tests, static_cast<std::size_t>(limit));
  if (hits.empty()) return noEntries(query, tag);

  const DateWords words = dateStyle.words();
  std::string text;
  for (const Entry& hit : hits) {
    if (!text.empty()) text.append("\n\n");
    text.append("[").append(words.of(hit.date)).append("]").append(tagSuffix(hit));
    text.append(" ").append(hit.url.text()).append("\n").append(secondLine(hit, snippetSearch));
  }
  return text;
}

}  // namespace halvane
