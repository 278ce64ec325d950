// The flow in the stirred tank as formulas.
#include <cmath>
#include <numbers>

#include "samples/tank.h"
#include "samples/tank_shape.h"

namespace samples::tank {
namespace {

constexpr double kTurnsPerSecond = 100.0 / 60.0;
constexpr double kDensity = 998.0;  // kg/m3
constexpr double kGravity = 9.81;   // m/s2
constexpr double kTipSpeed = 2.0 * std::numbers::pi * kTurnsPerSecond * kBladeTip;

// The impeller ran slower before the first file.
double speed_up(double time) {
  return 1.0 - 0.4 * std::exp(-time / 0.1);
}

// Height above the impeller in heights of its outflow.
double relative_height(double z) {
  return (z - kImpellerHeight) / 0.06;
}

// A wave with six crests near the tips that rotates with the blades.
double blade_wave(double x, double y, double z, double time) {
  const double r = std::hypot(x, y);
  if (r == 0.0) return 0.0;
  const double s = r / kBladeTip;
  const double h = relative_height(z);
  const double phase = 6.0 * (std::atan2(y, x) - angle(time));
  return s * s * std::exp(-8.0 * (s - 1.0) * (s - 1.0) - h * h) * std::cos(phase);
}

}  // namespace

double time_of_step(int step) {
  return 0.025 * step;
}

double angle(double time) {
  return 2.0 * std::numbers::pi * kTurnsPerSecond * time;
}

testkit::Vec3 velocity(double x, double y, double z, double time) {
  const double r = std::hypot(x, y);
  const double s = r / kBladeTip;
  const double h = relative_height(z);
  const double to_wall = 1.0 - std::pow(r / kTankRadius, 8);
  const double speed = kTipSpeed * speed_up(time) * to_wall * (1.0 + 0.3 * blade_wave(x, y, z, time));
  // Rotates with the impeller inside and more slowly outside; outwards at the impeller, back above and below
  // it.
  const double around = speed * s / std::sqrt(1.0 + s * s * s * s) * (0.3 + 0.7 * std::exp(-h * h));
  const double outwards = 0.5 * speed * s * std::exp(1.0 - s) * (1.0 - 2.0 * h * h) * std::exp(-h * h);
  const double upwards = 0.3 * speed * (s - 1.2) * h * std::exp(-h * h);
  if (r == 0.0) return {0.0, 0.0, upwards};
  return {(outwards * x - around * y) / r, (outwards * y + around * x) / r, upwards};
}

double pressure(double x, double y, double z, double time) {
  const testkit::Vec3 v = velocity(x, y, z, time);
  return kDensity * kGravity * (kTankHeight - z) -
         0.5 * kDensity * (v[0] * v[0] + v[1] * v[1] + v[2] * v[2]) + 100.0 * blade_wave(x, y, z, time);
}

double temperature(double x, double y, double z, double time) {
  // A warm cloud that sinks from the surface beside the shaft and spreads.
  const double spread = 0.05 + 0.2 * time;
  const double dx = x - 0.12 * std::cos(0.5 * angle(time));
  const double dy = y - 0.12 * std::sin(0.5 * angle(time));
  const double dz = z - (0.45 - 0.8 * time);
  return 293.15 + 20.0 * std::exp(-(dx * dx + dy * dy + dz * dz) / (2.0 * spread * spread));
}

}  // namespace samples::tank
