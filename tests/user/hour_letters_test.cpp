#include "user/hour_letters.h"

#include <gtest/gtest.h>

namespace halvane {
namespace {

TEST(HourLetter, IsTheFirstThatStandsForTheHour) {
  EXPECT_EQ(hourLetter("d. MMM y, HH:mm"), 'H');
  EXPECT_EQ(hourLetter("MMM d, y 'at' h:mm a"), 'h');
  EXPECT_EQ(hourLetter("y'h'MMMdd kk:mm"), 'k') << "the first is text";
  EXPECT_EQ(hourLetter("Bh:mm"), 'h');
  EXPECT_EQ(hourLetter("K:mm a"), 'K');
  EXPECT_EQ(hourLetter("d 'HH' MMM"), '\0');
  EXPECT_EQ(hourLetter(""), '\0');
}

TEST(ShortHours, AreWrittenWithOneLetter) {
  EXPECT_EQ(withShortHours("d. MMM y, HH:mm"), "d. MMM y, H:mm");
  EXPECT_EQ(withShortHours("dd/MM/yyyy hh:mm a"), "dd/MM/yyyy h:mm a") << "nothing else is shortened";
  EXPECT_EQ(withShortHours("d 'hh' MMM, kk 'HH' mm"), "d 'hh' MMM, k 'HH' mm") << "text stays";
  EXPECT_EQ(withShortHours("h:mm"), "h:mm");
  EXPECT_EQ(withShortHours("y年M月d日 HH時mm"), "y年M月d日 H時mm");
  EXPECT_EQ(withShortHours(""), "");
}

}  // namespace
}  // namespace halvane
