#include <gtest/gtest.h>

#include "tests/support/scoped_variable.h"
#include "tests/support/temporary_home.h"
#include "tools/date_style.h"
#include "user/dates.h"

namespace halvane {
namespace {

// A Mac knows the zone of a process from its start on.
TEST(DateStyle, FollowsTheUsersTimeZoneFromCallToCall) {
  const TemporaryHome home;
  const Instant moment = parseInternetDateTime("2025-11-03T09:14:59Z").value();
  EXPECT_EQ(dateStyle.words().of(moment), "Nov 3, 2025 at 9:14 AM");
  const ScopedVariable zone("TZ", "Asia/Tokyo");
  EXPECT_EQ(dateStyle.words().of(moment), "Nov 3, 2025 at 6:14 PM");
}

}  // namespace
}  // namespace halvane
