#include <gtest/gtest.h>

#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

namespace halvane {
namespace {

// A journal of sixty entries, of which a search shows the newest: ten, or the number in the request, up to
// fifty.
class ResultLimit : public testing::Test {
 protected:
  ResultLimit() {
    for (int minute = 0; minute < 60; ++minute) {
      const std::string name = twoDigits(minute);
      const EntryFile entry{.date = "2025-11-03T09:" + name + ":00Z", .body = "harbour " + name};
      home_.write(name + ".md", entry.text());
    }
  }

  static std::string twoDigits(int number) { return (number < 10 ? "0" : "") + std::to_string(number); }

  // What a search shows when it shows the newest `count` entries.
  std::string newest(int count) const {
    std::string text;
    for (int minute = 59; minute > 59 - count; --minute) {
      const std::string name = twoDigits(minute);
      text.append(text.empty() ? "" : "\n\n").append("[Nov 3, 2025 at 9:" + name + " AM] ");
      text.append(home_.journal() + "/" + name + ".md\n…harbour " + name + "…");
    }
    return text;
  }

  void expectCounts(const std::vector<std::pair<const char*, int>>& cases) {
    for (const auto& [limit, count] : cases) {
      EXPECT_EQ(
          askTool(server_, "search_entries", R"({"query":"Harbour","limit":)" + std::string(limit) + "}"),
          newest(count))
          << limit;
    }
    EXPECT_EQ(server_.finish(), quietEnding);
  }

  const TemporaryHome home_;
  ServerProcess server_{{.home = home_.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}}};
};

TEST_F(ResultLimit, IsTenWithoutOne) {
  EXPECT_EQ(askTool(server_, "search_entries", R"({"query":"harbour"})"), newest(10));
}

TEST_F(ResultLimit, IsWhatWasAskedForFromOneToFifty) {
  expectCounts({{"1", 1}, {"2", 2}, {"11", 11}, {"49", 49}, {"50", 50}});
}

TEST_F(ResultLimit, IsAtLeastOne) {
  expectCounts({{"0", 1}, {"-5", 1}, {"-0", 1}, {"-9223372036854775808", 1}});
}

TEST_F(ResultLimit, IsAtMostFifty) {
  expectCounts({{"51", 50}, {"1000", 50}, {"9223372036854775807", 50}});
}

TEST_F(ResultLimit, MayBeWrittenWithAZeroFractionOrAnExponent) {
  expectCounts(
      {{"12.0", 12}, {"20.000", 20}, {"2e1", 20}, {"0.3E2", 30}, {"150e-1", 15}, {"1e2", 50}, {"0e5", 1}});
}

TEST_F(ResultLimit, IsTenWithAFraction) {
  expectCounts({{"2.5", 10}, {"0.1", 10}, {"49.99999999999999999999", 10}, {"1e-1", 10}});
}

TEST_F(ResultLimit, IsTenWithANumberBeyondSixtyFourBits) {
  expectCounts({{"9223372036854775808", 10}, {"-9223372036854775809", 10}, {"1e30", 10}, {"1e400", 10}});
}

TEST_F(ResultLimit, IsTenWithWhateverIsNoNumber) {
  expectCounts({{"\"20\"", 10}, {"null", 10}, {"true", 10}, {"false", 10}, {"[20]", 10}, {"{}", 10}});
}

}  // namespace
}  // namespace halvane
