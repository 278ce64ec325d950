#include "inspect/dataset_outline.h"

#include <algorithm>

#include "fmt/format.h"
#include "inspect/name_check.h"
#include "inspect/walker.h"

namespace inspect {
namespace {

constexpr std::size_t kMostRegionSetsKept = 64;  // of each file
constexpr std::size_t kMostNameBytes = std::size_t{4} << 20;

// Collects the names of the volume regions of one region set.
class VolumeNames : public Visitor {
 public:
  explicit VolumeNames(std::int64_t region_set) : region_set_(region_set) {}

  const std::vector<std::string>& names() const { return names_; }
  bool is_whole() const { return bytes_ < kMostNameBytes; }

  void title(const Title& title) override {
    is_there_ =
        title.region_set == region_set_ && (title.is(TitleId::volumes) || title.is(TitleId::volumes_array));
    if (is_there_) names_.clear();
  }
  void integer(const Block& block, std::int64_t value) override {
    if (is_there_ && block.content == Content::name_length) splitter_.set_length(value);
  }
  bool wants_data(const Block& block) override {
    return is_there_ && (block.content == Content::region_name || block.content == Content::region_names);
  }
  void data(const Block&, const Piece& piece) override {
    splitter_.add(piece, [this](std::string_view name, std::uint64_t) {
      constexpr std::size_t kOverhead = 32;
      bytes_ += name.size() + kOverhead;
      if (is_whole()) names_.emplace_back(name);
    });
  }

 private:
  std::int64_t region_set_;
  bool is_there_ = false;
  NameSplitter splitter_;
  std::vector<std::string> names_;
  std::size_t bytes_ = 0;
};

}  // namespace

DatasetOutline::DatasetOutline(const std::vector<SeriesFile>& files, const Progress& progress) {
  for (const SeriesFile& name : files) {
    File& file = files_.emplace_back(File{.name = name});
    try {
      FileSource source(name.path);
      OutlineTaker taker;
      file.is_readable = walk(source, taker, progress).end != WalkEnd::not_fld;
      file.outline = taker.outline();
    } catch (const ReadError&) {
      continue;  // reported by the check of that file
    }
    auto& sets = file.outline.region_sets;
    if (sets.size() > kMostRegionSetsKept) sets.resize(kMostRegionSetsKept);
    sets.shrink_to_fit();
    is_transient_ = is_transient_ || file.outline.time > 0.0;
  }
}

void DatasetOutline::check(std::size_t number, Findings& findings) const {
  const File& file = files_[number];
  if (!file.is_readable) return;
  const Outline& outline = file.outline;
  const auto add = [&](Kind kind, std::uint64_t offset, std::string wanted, std::string found) {
    findings.add({kind, offset, "", std::move(wanted), std::move(found)});
  };
  if (outline.cycle != file.name.cycle) {
    add(Kind::cycle_differs, outline.cycle_offset, std::to_string(file.name.cycle),
        std::to_string(outline.cycle));
  }
  const auto first = find_cycle(outline.cycle);
  if (first && *first < number) {
    add(Kind::cycle_twice, outline.cycle_offset, "another cycle",
        fmt::format("{} as in {}", outline.cycle, files_[*first].name.path));
  }
  if (number == 0) return;
  const File& before = files_[number - 1];
  if (is_transient_ && before.is_readable && outline.time <= before.outline.time) {
    add(Kind::time_goes_back, outline.time_offset, fmt::format("more than {}", before.outline.time),
        fmt::format("{}", outline.time));
  }
  const File& opener = files_.front();
  if (opener.is_readable && outline.region_set_count != opener.outline.region_set_count) {
    add(Kind::region_sets_differ, 0, std::to_string(opener.outline.region_set_count),
        std::to_string(outline.region_set_count));
  }
}

std::optional<std::size_t> DatasetOutline::find_cycle(std::int32_t cycle) const {
  const auto found = std::find_if(files_.begin(), files_.end(), [&](const File& file) {
    return file.is_readable && file.outline.cycle == cycle;
  });
  if (found == files_.end()) return std::nullopt;
  return static_cast<std::size_t>(found - files_.begin());
}

const RegionSetOutline* DatasetOutline::find_region_set(std::size_t number, std::int64_t region_set) const {
  const auto& sets = files_[number].outline.region_sets;
  return region_set < std::ssize(sets) ? &sets[static_cast<std::size_t>(region_set)] : nullptr;
}

std::optional<std::int64_t> DatasetOutline::nodes_at(std::size_t number, std::int64_t region_set) const {
  const RegionSetOutline* set = find_region_set(number, region_set);
  if (set == nullptr) return std::nullopt;
  std::size_t last = number;
  if (set->base_cycle) {
    const auto base = find_cycle(*set->base_cycle);
    if (!base) return std::nullopt;
    last = *base;
  }
  for (std::size_t i = last + 1; i-- > 0;) {
    set = find_region_set(i, region_set);
    if (set != nullptr && set->nodes) return set->nodes;
  }
  return std::nullopt;
}

const std::optional<MotionBase>& DatasetOutline::motion_base(std::int32_t cycle, std::int64_t region_set,
                                                             const Progress& progress) {
  if (last_region_set_ == region_set && last_cycle_ == cycle) return last_base_;
  last_cycle_ = cycle;
  last_region_set_ = region_set;
  last_base_.reset();
  const auto file = find_cycle(cycle);
  if (!file) return last_base_;
  const RegionSetOutline* set = find_region_set(*file, region_set);
  last_base_ = MotionBase{.has_nodes = set != nullptr && set->nodes.has_value()};
  try {
    FileSource source(files_[*file].name.path);
    VolumeNames taker(region_set);
    walk(source, taker, progress);
    if (taker.is_whole()) last_base_->volume_names = taker.names();
  } catch (const ReadError&) {
    return last_base_;
  }
  return last_base_;
}

}  // namespace inspect
