#include "tests/figures/figure.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <iostream>

namespace halvane {
namespace {

void print(std::string_view name, double value, std::string_view unit, std::string_view relation,
           double goal) {
  std::cout << name << ": " << std::setprecision(4) << value << " " << unit << " (goal " << relation
            << std::setprecision(6) << goal << ")" << std::endl;
}

}  // namespace

void expectAtMost(std::string_view name, double value, std::string_view unit, double goal) {
  print(name, value, unit, "at most ", goal);
  EXPECT_LE(value, goal) << name;
}

void expectRatioAtMost(std::string_view name, double ratio, std::string_view unit, double goal) {
  print(name, ratio, unit, "at most ", goal);
  EXPECT_LE(ratio, 1.5 * goal) << name;
}

void expectExactly(std::string_view name, double value, std::string_view unit, double goal) {
  print(name, value, unit, "", goal);
  EXPECT_EQ(value, goal) << name;
}

}  // namespace halvane
