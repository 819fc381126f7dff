#include "bench/journal_text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <utility>
#include <vector>

#include "bench/random.h"

namespace halvane {
namespace {

constexpr std::size_t languageSeed = 1'000'003;

// Log-normal with a median of 1.5 KB and a mean of 2.4 KB. The number of heads among 64 tossed coins is as
// good as normal, and integers, unlike logarithms, come out the same everywhere.
std::size_t bodySize(Random& random) {
  constexpr std::uint64_t step = 12743;  // e^(0.97 / 4) in ten-thousandths: four steps are one deviation
  const int steps = std::popcount(random.next()) - 32;
  std::uint64_t low = 1'328'800;  // half a step below the median, in thousandths of a byte
  for (int i = 0; i < steps; ++i) low = low * step / 10000;
  for (int i = 0; i > steps; --i) low = low * 10000 / step;
  return (low + random.below(low * step / 10000 - low)) / 1000;
}

std::vector<std::string_view> split(std::string_view text) {
  std::vector<std::string_view> words;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of(" \n"), text.size());
    words.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return words;
}

// Those at the front come up most.
std::string_view anyOf(const std::vector<std::string_view>& words, Random& random) {
  return words[random.below(random.below(words.size()) + 1)];
}

std::string sentence(Random& random, const Language& language, const std::vector<std::string_view>& words) {
  std::string text;
  for (std::uint64_t left = 4 + random.below(12); left > 0; --left) {
    if (language.spaced && !text.empty()) text += ' ';
    text += anyOf(words, random);
  }
  if (text.front() >= 'a' && text.front() <= 'z') text.front() = static_cast<char>(text.front() - 'a' + 'A');
  return text.append(language.fullStop);
}

void insertWord(std::string& text, Random& random, const Language& language, std::string_view word) {
  const std::size_t stop = text.find(language.fullStop, random.below(text.size()));
  const std::string_view blank = language.spaced ? " " : "";
  text.insert(stop == std::string::npos ? text.size() : stop, std::string(blank).append(word));
}

void insertMarkers(std::string& text, Random& random, const Language& host, const Language& markers,
                   std::size_t number) {
  if (number % 1000 == 617) insertWord(text, random, host, markers.rare.written);
  if (number * 7 % 10 < 3) insertWord(text, random, host, markers.common.written);
}

// Accents as marks of their own, as some keyboards and file systems write them.
std::string decomposedAccents(std::string text) {
  constexpr std::pair<std::string_view, std::string_view> forms[] = {
      {"à", "a\u0300"}, {"â", "a\u0302"}, {"ç", "c\u0327"}, {"è", "e\u0300"},
      {"é", "e\u0301"}, {"ê", "e\u0302"}, {"ë", "e\u0308"}, {"î", "i\u0302"},
      {"ï", "i\u0308"}, {"ô", "o\u0302"}, {"ù", "u\u0300"}, {"û", "u\u0302"}};
  for (const auto& [composed, decomposed] : forms) {
    for (std::size_t at = text.find(composed); at != std::string::npos; at = text.find(composed, at)) {
      text.replace(at, composed.size(), decomposed);
    }
  }
  return text;
}

std::string tagsOf(Random& random, std::size_t index) {
  constexpr std::string_view others[] = {"work", "family", "ideas", "reading", "travel", "health", "dreams"};
  std::string tags(index % 10 == 4 ? knownTag : "");
  for (std::uint64_t left = random.below(4); left > 0; --left) {
    if (!tags.empty()) tags += ", ";
    tags += others[random.below(std::size(others))];
  }
  return tags;
}

// Entries keep their order: each has its own equal share of the twenty years and a moment within it.
std::chrono::sys_seconds momentOf(const JournalPlan& plan, Random& random, std::size_t index) {
  constexpr std::uint64_t twentyYears = 7305ULL * 24 * 60 * 60;
  const std::uint64_t share = twentyYears / plan.entries;
  const std::uint64_t before = (plan.entries - index) * share - random.below(share);
  return std::chrono::sys_seconds(plan.until) - std::chrono::seconds(before);
}

struct Moment {
  std::array<char, 32> folder, fileName, internet;
};

Moment wordsFor(std::chrono::sys_seconds moment) {
  const auto day = std::chrono::floor<std::chrono::days>(moment);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss time(moment - day);
  const int year = static_cast<int>(date.year());
  const unsigned month = static_cast<unsigned>(date.month());
  const unsigned dayOfMonth = static_cast<unsigned>(date.day());
  const int hour = static_cast<int>(time.hours().count());
  const int minute = static_cast<int>(time.minutes().count());
  const int second = static_cast<int>(time.seconds().count());
  Moment words;
  std::snprintf(words.folder.data(), words.folder.size(), "%04d/%02u/", year, month);
  std::snprintf(words.fileName.data(), words.fileName.size(), "%04d-%02u-%02u-%02d%02d%02d.md", year, month,
                dayOfMonth, hour, minute, second);
  std::snprintf(words.internet.data(), words.internet.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", year, month,
                dayOfMonth, hour, minute, second);
  return words;
}

}  // namespace

std::string journalBody(const Language& language, std::size_t number, std::size_t size) {
  Random random(languageSeed * number + static_cast<unsigned char>(language.name.front()));
  const std::vector<std::string_view> words = split(language.words);
  std::string body;
  while (body.size() < size) {
    if (!body.empty()) body += random.below(4) == 0 ? "\n\n" : language.spaced ? " " : "";
    body += sentence(random, language, words);
  }
  insertMarkers(body, random, language, language, number);
  return language.decomposed ? decomposedAccents(std::move(body)) : body;
}

JournalFile journalFile(const JournalPlan& plan, std::size_t index) {
  Random random(index);
  const Language& language = plan.languages[index % plan.languages.size()];
  const Moment moment = wordsFor(momentOf(plan, random, index));
  const std::string tags = tagsOf(random, index);
  std::string body = journalBody(language, index / plan.languages.size(), bodySize(random));
  if (&language != &english) insertMarkers(body, random, language, english, index);

  JournalFile file;
  file.path = std::string(moment.folder.data()) + moment.fileName.data();
  file.text = std::string("---\ndate: ") + moment.internet.data();
  file.text += "\nduration_seconds: " + std::to_string(body.size() / 15);
  file.text += random.below(2) == 0 ? "\ncleaned: true" : "\ncleaned: false";
  file.text.append("\nlanguage: ").append(language.code);
  if (!tags.empty()) file.text += "\ntags: [" + tags + "]";
  file.text += "\n---\n\n" + body + "\n";
  return file;
}

}  // namespace halvane
