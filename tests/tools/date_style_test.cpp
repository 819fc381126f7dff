#include "tools/date_style.h"

#include <gtest/gtest.h>

#include "tests/support/scoped_variable.h"
#include "tests/support/temporary_home.h"
#include "user/dates.h"

namespace halvane {
namespace {

TEST(DateStyle, ShowsAnAbbreviatedDateAndAShortTime) {
  const TemporaryHome home;
  const Instant moment = parseInternetDateTime("2025-11-03T09:14:59Z").value();
  EXPECT_EQ(dateStyle.words().of(moment), "Nov 3, 2025 at 9:14 AM");
}

TEST(DateStyle, FollowsTheUsersSettingsFromCallToCall) {
  const TemporaryHome home;
  const Instant moment = parseInternetDateTime("2025-11-03T09:14:59Z").value();
  {
    const ScopedVariable locale("LC_ALL", "de_DE.UTF-8");
    EXPECT_EQ(dateStyle.words().of(moment), "3. Nov. 2025, 9:14");
  }
  const ScopedVariable zone("TZ", "Asia/Tokyo");
  EXPECT_EQ(dateStyle.words().of(moment), "Nov 3, 2025 at 6:14 PM");
}

}  // namespace
}  // namespace halvane
