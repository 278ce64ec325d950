// The datasets of the comparison, written when they are first asked for.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

#include "bench/floor.h"
#include "testkit/box_dataset.h"
#include "testkit/file_writer.h"

namespace bench {

struct Dataset {
  std::filesystem::path file{};
  testkit::Places places{};
  testkit::BoxOptions box{};

  // From the beginning of the file to the end of the nodes: all that opening needs.
  Stretch geometry() const { return {0, places.of("LS_Nodes").end}; }
  // The values of the first scalar alone.
  Stretch scalar_values() const;
};

// Elements of the largest mesh, in millions, where nothing is scaled.
constexpr double kLargestMillions = 16.0;

class Datasets {
 public:
  // Below `directory`; the largest mesh has `millions` of elements, and the others, regions and files are
  // fewer likewise.
  Datasets(std::filesystem::path plugin, std::filesystem::path directory, double millions);

  const std::filesystem::path& plugin() const { return plugin_; }

  // `count` scaled by the size of the largest mesh, but at least `least`.
  std::int64_t scaled(double count, std::int64_t least = 1) const;

  // A box of about `millions` (before scaling) of hexahedra with one scalar. Written once, and kept.
  const Dataset& box(double millions);

  // Options of a box with about that many cells.
  testkit::BoxOptions box_options(double millions) const;

  // A path for a file or a folder of the family that is at work.
  std::filesystem::path path(const std::string& name);
  // Removes the files of that family.
  void remove_family();

 private:
  std::filesystem::path plugin_;
  std::filesystem::path directory_;
  double scale_;
  std::map<double, Dataset> boxes_;
};

}  // namespace bench
