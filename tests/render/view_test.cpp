#include "render/view.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

namespace {

using render::Direction;
using render::View;

double dot(const Direction& a, const Direction& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

void expect_direction(const Direction& found, const Direction& wanted) {
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(found[i], wanted[i], 1e-12);
}

TEST(View, HasTheAzimuthAtThePoles) {
  expect_direction(render::parse_view("-90,90").up, {0, 1, 0});
  expect_direction(render::parse_view("0,90").up, {-1, 0, 0});
  expect_direction(render::parse_view("90,-90").up, {0, 1, 0});
  expect_direction(right_of(render::parse_view("90,90")), {-1, 0, 0});
}

TEST(View, DirectionsAreUnitVectorsAtRightAngles) {
  for (const char* text : {"iso", "+x", "-x", "+y", "-y", "+z", "-z", "30,88", "30,-90", "370,45"}) {
    const View view = render::parse_view(text);
    EXPECT_NEAR(dot(view.from, view.from), 1, 1e-12) << text;
    EXPECT_NEAR(dot(view.up, view.up), 1, 1e-12) << text;
    EXPECT_NEAR(dot(view.from, view.up), 0, 1e-12) << text;
    EXPECT_NEAR(dot(right_of(view), view.up), 0, 1e-12) << text;
  }
}

TEST(View, SidesAreThoseThatAreSeen) {
  expect_direction(render::parse_view("+x").from, {1, 0, 0});
  expect_direction(render::parse_view("0,0").from, {1, 0, 0});
  expect_direction(render::parse_view("90,0").from, {0, 1, 0});
  expect_direction(render::parse_view("+10,90").from, {0, 0, 1});
  expect_direction(right_of(render::parse_view("-y")), {1, 0, 0});
}

TEST(View, RefusesOtherTexts) {
  for (const char* text : {"", "up", "1", "1,", ",1", "1,2,3", "1,nan", "1,90.5", "1,-91"})
    EXPECT_THROW(render::parse_view(text), std::invalid_argument) << text;
}

}  // namespace
