#include "bench/journal_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <numeric>

#include "bench/plans.h"

// The figures are comparable only where everybody measures the same journal, with as much to find in it as
// said.

namespace halvane {
namespace {

constexpr std::chrono::sys_days someDay(std::chrono::days(20'000));

std::vector<JournalFile> filesOf(const JournalPlan& plan) {
  std::vector<JournalFile> files;
  for (std::size_t i = 0; i < plan.entries; ++i) files.push_back(journalFile(plan, i));
  return files;
}

// Fowler, Noll and Vo's hash of all paths and texts.
std::uint64_t fingerprintOf(const std::vector<JournalFile>& files) {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const JournalFile& file : files) {
    for (const char byte : file.path + file.text)
      hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
  }
  return hash;
}

std::ptrdiff_t countFilesWith(std::string_view word, const std::vector<JournalFile>& files) {
  return std::count_if(files.begin(), files.end(),
                       [&](const JournalFile& file) { return file.text.find(word) != std::string::npos; });
}

TEST(JournalText, IsTheSameOnEveryMachine) {
  EXPECT_EQ(fingerprintOf(filesOf(plans::englishJournal(1'000, someDay))), 31631156137059786U);
  EXPECT_EQ(fingerprintOf(filesOf(plans::mixedJournal(someDay))), 7283878921063985323U);
  EXPECT_EQ(fingerprintOf(filesOf(plans::cjkJournal(someDay))), 4181986010283268026U);
}

TEST(JournalText, HasTheKnownWordsAndTheTagInTheirShares) {
  for (const JournalPlan& plan :
       {plans::englishJournal(10'000, someDay), plans::mixedJournal(someDay), plans::cjkJournal(someDay)}) {
    const std::vector<JournalFile> files = filesOf(plan);
    EXPECT_EQ(countFilesWith(english.rare.written, files), 10) << plan.name;
    EXPECT_EQ(countFilesWith(english.common.written, files), 3'000) << plan.name;
    EXPECT_EQ(countFilesWith(english.absent, files), 0) << plan.name;
    EXPECT_EQ(countFilesWith(knownTag, files), 1'000) << plan.name;
  }
}

TEST(JournalText, HasTheWordsOfEachLanguageInTheirSharesOfItsEntries) {
  for (const JournalPlan& plan : {plans::mixedJournal(someDay), plans::cjkJournal(someDay)}) {
    const std::vector<JournalFile> files = filesOf(plan);
    const std::size_t entriesOfOne = plan.entries / plan.languages.size();
    for (const Language& language : plan.languages) {
      EXPECT_NEAR(static_cast<double>(countFilesWith(language.rare.written, files)),
                  static_cast<double>(entriesOfOne) / 1000, 1)
          << language.name;
      EXPECT_NEAR(static_cast<double>(countFilesWith(language.common.written, files)),
                  static_cast<double>(entriesOfOne) * 0.3, 2)
          << language.name;
      EXPECT_EQ(countFilesWith(language.absent, files), 0) << language.name;
    }
  }
}

TEST(JournalText, HasFilesOfLogNormalSize) {
  std::vector<std::size_t> sizes;
  for (const JournalFile& file : filesOf(plans::englishJournal(10'000, someDay)))
    sizes.push_back(file.text.size());
  std::sort(sizes.begin(), sizes.end());
  constexpr std::size_t frontMatter = 110;
  EXPECT_NEAR(static_cast<double>(sizes[sizes.size() / 2] - frontMatter), 1500, 50);
  const double mean =
      static_cast<double>(std::accumulate(sizes.begin(), sizes.end(), std::size_t{0})) / 10'000;
  EXPECT_NEAR(mean - frontMatter, 2400, 80);
}

TEST(JournalText, SpreadsItsEntriesInOrderOverTwentyYears) {
  const std::vector<JournalFile> files = filesOf(plans::englishJournal(10'000, someDay));
  EXPECT_TRUE(std::is_sorted(
      files.begin(), files.end(),
      [](const JournalFile& left, const JournalFile& right) { return left.path < right.path; }));
  EXPECT_EQ(files.front().path.substr(0, 8), "2004/10/");  // day 20,000 is 2024-10-04
  EXPECT_EQ(files.back().path.substr(0, 8), "2024/10/");
}

}  // namespace
}  // namespace halvane
