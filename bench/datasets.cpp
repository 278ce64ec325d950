#include "bench/datasets.h"

#include <algorithm>
#include <cmath>

namespace bench {

Stretch Dataset::scalar_values() const {
  constexpr std::uint64_t kRule = 20;   // a rule record
  constexpr std::uint64_t kMarker = 4;  // in front of the values, which are one record
  const auto counts = testkit::box_counts(box);
  return {places.of("LS_Scalar:scalar_1").blocks[2] + kRule + kMarker,
          static_cast<std::uint64_t>(counts.nodes) * sizeof(float)};
}

Datasets::Datasets(std::filesystem::path plugin, std::filesystem::path directory, double millions)
    : plugin_(std::move(plugin)), directory_(std::move(directory)), scale_(millions / kLargestMillions) {}

std::int64_t Datasets::scaled(double count, std::int64_t least) const {
  return std::max<std::int64_t>(std::llround(count * scale_), least);
}

testkit::BoxOptions Datasets::box_options(double millions) const {
  testkit::BoxOptions options;
  options.nx = options.ny = options.nz =
      static_cast<int>(std::max(2L, std::lround(std::cbrt(millions * 1e6 * scale_))));
  options.scalars = 1;
  options.vectors = 0;
  return options;
}

const Dataset& Datasets::box(double millions) {
  const auto known = boxes_.find(millions);
  if (known != boxes_.end()) return known->second;
  Dataset dataset{.file = directory_ / "boxes" / ("box" + std::to_string(boxes_.size()) + ".fld")};
  std::filesystem::create_directories(dataset.file.parent_path());
  dataset.box = box_options(millions);
  dataset.places = testkit::write_box_dataset(dataset.file, dataset.box);
  return boxes_.emplace(millions, std::move(dataset)).first->second;
}

std::filesystem::path Datasets::path(const std::string& name) {
  const auto folder = directory_ / "work";
  std::filesystem::create_directories(folder);
  return folder / name;
}

void Datasets::remove_family() {
  std::filesystem::remove_all(directory_ / "work");
}

}  // namespace bench
