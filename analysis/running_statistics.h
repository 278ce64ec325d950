// Mean, root mean square, deviation and extremes of values that come step by step.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace analysis {

// One number per node (or element) and step. Steps at which a value is undefined, or NaN, do not count for
// it.
class RunningStatistics {
 public:
  // The values of a step. The first call sets how many there are; later ones must have as many.
  void add(std::span<const float> values);

  std::size_t size() const { return mean_.size(); }
  // At how many steps the value was there.
  std::uint32_t count(std::size_t i) const { return count_[i]; }

  // Each is NaN where no step has a value.
  double mean(std::size_t i) const;
  double root_mean_square(std::size_t i) const;
  double deviation(std::size_t i) const;  // root mean square of the distances from the mean
  float minimum(std::size_t i) const;
  float maximum(std::size_t i) const;

 private:
  std::vector<double> mean_;
  std::vector<double> squares_;  // sum of the squared distances from the mean
  std::vector<float> minimum_;
  std::vector<float> maximum_;
  std::vector<std::uint32_t> count_;
};

}  // namespace analysis
