#include "tools/date_style.h"

#include <gtest/gtest.h>

#include "tests/support/temporary_home.h"
#include "user/dates.h"

namespace halvane {
namespace {

TEST(DateStyle, ShowsAnAbbreviatedDateAndAShortTime) {
  const TemporaryHome home;
  const Instant moment = parseInternetDateTime("2025-11-03T09:14:59Z").value();
  EXPECT_EQ(dateStyle.words().of(moment), "Nov 3, 2025 at 9:14 AM");
}

TEST(DateStyle, FollowsTheUsersLocaleFromCallToCall) {
  TemporaryHome home;
  const Instant moment = parseInternetDateTime("2025-11-03T09:14:59Z").value();
  home.setLocale("de_DE");
  EXPECT_EQ(dateStyle.words().of(moment), "3. Nov. 2025, 9:14");
  home.setLocale("fr_FR");
  EXPECT_EQ(dateStyle.words().of(moment), "3 nov. 2025 à 9:14");
  home.setLocale("en_US");
  EXPECT_EQ(dateStyle.words().of(moment), "Nov 3, 2025 at 9:14 AM");
}

}  // namespace
}  // namespace halvane
