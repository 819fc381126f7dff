#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>

#include "tests/support/entry_file.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temporary_home.h"
#include "tools/list_recent.h"
#include "user/dates.h"

// ctest holds the clock of these tests at 15:00 UTC on Monday, 3 November 2025.

namespace halvane {
namespace {

class ListRecentAtThree : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(now(), parseInternetDateTime("2025-11-03T15:00:00Z"))
        << "ctest sets the clock; run this with it";
  }

  bool isListed(const std::string& date, std::int64_t days) const {
    const std::string path = home_.write("a.md", EntryFile{.date = date}.text());
    return listRecent(days, std::nullopt).find(path) != std::string::npos;
  }

  TemporaryHome home_;
};

TEST_F(ListRecentAtThree, TakesAnEntryDatedExactlyAtTheCutoff) {
  EXPECT_TRUE(isListed("2025-10-27T15:00:00Z", 7));
  EXPECT_FALSE(isListed("2025-10-27T14:59:59Z", 7));
  EXPECT_TRUE(isListed("2025-10-27T15:00:01Z", 7));
}

TEST_F(ListRecentAtThree, CutsOffInTheMiddleOfADay) {
  EXPECT_TRUE(isListed("2025-11-02T15:00:00Z", 1));
  EXPECT_FALSE(isListed("2025-11-02T14:59:59Z", 1));
  EXPECT_FALSE(isListed("2025-11-02T00:00:00Z", 1));
}

TEST_F(ListRecentAtThree, TakesWhatIsDatedLaterThanNow) {
  EXPECT_TRUE(isListed("2025-11-03T15:00:00Z", 1));
  EXPECT_TRUE(isListed("2025-11-04T15:00:00Z", 1));
  EXPECT_TRUE(isListed("9999-12-31T23:59:59Z", 1));
}

TEST_F(ListRecentAtThree, KeepsTheTimeOnTheWallAcrossTheEndOfSummerTime) {
  // Ten o'clock on both Mondays, which are not 168 hours apart.
  const ScopedVariable zone("TZ", "America/New_York");
  EXPECT_TRUE(isListed("2025-10-27T10:00:00-04:00", 7));
  EXPECT_FALSE(isListed("2025-10-27T09:59:59-04:00", 7));
}

TEST_F(ListRecentAtThree, RollsMonthsAndYearsOver) {
  EXPECT_TRUE(isListed("2024-11-03T15:00:00Z", 365));
  EXPECT_FALSE(isListed("2024-11-03T14:59:59Z", 365));
  EXPECT_TRUE(isListed("2025-09-30T15:00:00Z", 34));
  EXPECT_FALSE(isListed("2025-09-30T14:59:59Z", 34));
}

}  // namespace
}  // namespace halvane
