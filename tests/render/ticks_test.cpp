#include "render/ticks.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

using Labels = std::vector<std::string>;

Labels labels(double low, double high, int most = 6) {
  Labels labels;
  for (const render::Tick& tick : render::make_ticks(low, high, most)) labels.push_back(tick.label);
  return labels;
}

TEST(Ticks, AreRoundNumbers) {
  EXPECT_EQ(labels(0, 0.791), (Labels{"0", "0.2", "0.4", "0.6"}));
  EXPECT_EQ(labels(10, 24.1), (Labels{"10", "15", "20"}));
  EXPECT_EQ(labels(-120, 16.2), (Labels{"-100", "-50", "0"}));
  EXPECT_EQ(labels(-180, 60), (Labels{"-150", "-100", "-50", "0", "50"}));
  EXPECT_EQ(labels(0, 1), (Labels{"0", "0.2", "0.4", "0.6", "0.8", "1.0"}));
}

TEST(Ticks, HaveTheDigitsThatTellThemApart) {
  EXPECT_EQ(labels(100985, 101265), (Labels{"101000", "101050", "101100", "101150", "101200", "101250"}));
  EXPECT_EQ(labels(101325.01, 101325.04), (Labels{"101325.01", "101325.02", "101325.03", "101325.04"}));
  EXPECT_EQ(labels(1e-9, 3e-9), (Labels{"1.0e-09", "1.5e-09", "2.0e-09", "2.5e-09", "3.0e-09"}));
  EXPECT_EQ(labels(0, 2.5e9), (Labels{"0", "5e+08", "1.0e+09", "1.5e+09", "2.0e+09", "2.5e+09"}));
  EXPECT_EQ(labels(1e12, 1e12 + 4e5, 3), (Labels{"1.0000000e+12", "1.0000002e+12", "1.0000004e+12"}));
}

TEST(Ticks, AreAtLeastTwo) {
  // Multiples of 2 are three, and of multiples of 5 there is only one.
  EXPECT_EQ(labels(12, 16, 2), (Labels{"12", "16"}));
  EXPECT_EQ(labels(1, std::nextafter(1.0, 2.0)), (Labels{"1", "1.0000000000000002"}));
}

TEST(Ticks, LieInTheRangeAndHaveDifferentLabels) {
  std::mt19937 random(14);
  std::uniform_real_distribution<double> exponent(-30, 30);
  std::uniform_real_distribution<double> mantissa(-10, 10);
  std::uniform_real_distribution<double> width_exponent(-6, 6);
  for (int i = 0; i < 10000; ++i) {
    const double low = mantissa(random) * std::pow(10.0, exponent(random));
    const double high = low + std::abs(low) * std::pow(10.0, width_exponent(random));
    for (const int most : {2, 3, 6}) {
      const std::vector<render::Tick> ticks = render::make_ticks(low, high, most);
      ASSERT_GE(ticks.size(), 2U) << low << " to " << high;
      ASSERT_LE(ticks.size(), static_cast<std::size_t>(most)) << low << " to " << high;
      std::set<std::string> different;
      for (const render::Tick& tick : ticks) {
        EXPECT_GE(tick.value, low - 1e-5 * (high - low));
        EXPECT_LE(tick.value, high + 1e-5 * (high - low));
        EXPECT_NEAR(std::stod(tick.label), tick.value, 1e-9 * (high - low));
        different.insert(tick.label);
      }
      ASSERT_EQ(different.size(), ticks.size()) << low << " to " << high;
    }
  }
}

}  // namespace
