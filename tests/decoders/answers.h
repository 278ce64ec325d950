// What a host gets of a dataset: from the plug-in, or computed from what inspect/ decodes.
#pragma once

#include <array>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace decoders {

// Of more parts and variables, the first ones are compared.
inline constexpr int kMostParts = 64;
inline constexpr int kMostVariables = 32;

struct PartAnswers {
  std::string name{};
  int nodes = 0;
  std::map<int, int> elements{};  // counts by slot, without those of 0
  // By axis. How far the value of a node may be from the other side's: 0 unless the node was moved.
  std::array<std::vector<float>, 3> coordinates{};
  std::vector<double> tolerance{};
  std::map<int, std::vector<int>> rows{};  // by slot, one after the other
};

struct ValueAnswers {
  int result = 1;
  std::vector<float> values{};
};

struct StepAnswers {
  std::vector<PartAnswers> parts{};
  // By variable and part (both from 0) and component of values per node, or slot of values per element.
  std::map<std::array<std::size_t, 3>, ValueAnswers> values{};
};

struct Answers {
  std::string failure{};  // of the first call that was not served
  std::array<std::vector<float>, 2> times{};
  int changing_geometry = 0;
  std::vector<std::string> variables{};
  std::vector<StepAnswers> steps{};
};

// The first difference, or "". `served` is compared with `expected`.
std::string difference(const Answers& served, const Answers& expected);

}  // namespace decoders
