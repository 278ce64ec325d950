#include "tool/page_entries.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "fmt/format.h"
#include "host/bounding_box.h"
#include "host/display_names.h"
#include "tool/choice.h"
#include "tool/exit_status.h"
#include "tool/picture_parts.h"

namespace tool {
namespace {

bool has_cells(const host::Part& part) {
  return part.kind != host::PartKind::surface && part.element_count() > 0;
}

}  // namespace

PageEntries::PageEntries(host::Session& session, const PageOptions& options)
    : session_(session), options_(options) {
  faint_ = choose_parts(session_, options_.faint);
  if (!options_.parts.empty()) shown_ = choose_parts(session_, options_.parts);
  planes_ = planes();
  add_step();
  if (entries_.empty())
    throw CommandError(ExitStatus::failure, options_.dataset.file, "there is no part to show");
}

void PageEntries::add_step() {
  if (options_.parts.empty()) {
    const std::vector<int> usual = usual_parts(session_).at(session_);
    shown_.add(session_, std::set<int>(usual.begin(), usual.end()));
  }
  const std::vector<PartIdentity> identities = part_identities(session_);
  std::vector<PageEntry> found = outsides();
  std::ranges::move(cuts(), std::back_inserter(found));
  for (PageEntry& entry : found) entry.part = identities[static_cast<std::size_t>(entry.number) - 1];
  std::erase_if(found, [&](const PageEntry& entry) { return !known_.emplace(entry.part, entry.cut).second; });
  if (found.empty()) return;
  name(found);
  std::ranges::move(found, std::back_inserter(entries_));
  for (const host::PartGroup& group : session_.metadata().groups)
    groups_[group.name].insert(group.parts.begin(), group.parts.end());
}

std::vector<int> PageEntries::coloured() const {
  std::vector<int> numbers = shown_.at(session_);
  const std::vector<int> faint = faint_.at(session_);
  std::erase_if(numbers, [&](int number) { return std::binary_search(faint.begin(), faint.end(), number); });
  return numbers;
}

std::vector<host::PartFolder> PageEntries::tree() const {
  std::vector<host::Part> parts;
  std::vector<int> outsides;
  for (const PageEntry& entry : entries_) {
    host::Part part;
    part.kind = entry.part.kind;
    part.name = entry.part.name;
    parts.push_back(std::move(part));
    if (!entry.cut) outsides.push_back(static_cast<int>(parts.size()));
  }
  std::vector<host::PartGroup> groups;
  for (const auto& [name, names] : groups_) groups.push_back({name, {names.begin(), names.end()}});
  std::vector<host::PartFolder> folders = host::make_part_tree(parts, groups, outsides);
  // These numbers are from 1.
  const auto to_places = [](auto& self, std::vector<host::PartFolder>& level) -> void {
    for (host::PartFolder& folder : level) {
      for (int& number : folder.parts) --number;
      self(self, folder.folders);
    }
  };
  to_places(to_places, folders);
  host::PartFolder cuts{"Cuts", {}, {}};
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (entries_[i].cut) cuts.parts.push_back(static_cast<int>(i));
  }
  if (!cuts.parts.empty()) folders.push_back(std::move(cuts));
  return folders;
}

void PageEntries::tell_missing(Progress& progress) const {
  shown_.tell_missing(session_, progress);
  faint_.tell_missing(session_, progress);
}

// The parts whose outer faces are in the page, ascending.
std::vector<int> PageEntries::listed_parts() const {
  std::set<int> parts;
  for (const ChosenParts* chosen : {&shown_, &faint_}) {
    const std::vector<int> numbers = chosen->at(session_);
    parts.insert(numbers.begin(), numbers.end());
  }
  if (options_.parts.empty()) {
    for (const host::Part& part : session_.parts()) {
      if (part.kind == host::PartKind::surface && part.element_count() > 0) parts.insert(part.number);
    }
  }
  return {parts.begin(), parts.end()};
}

// The volumes among the chosen parts, else all of them, else the whole meshes.
std::vector<int> PageEntries::cut_parts() const {
  std::vector<int> parts;
  if (!options_.parts.empty()) {
    for (const int part : shown_.at(session_)) {
      if (has_cells(session_.part(part))) parts.push_back(part);
    }
  }
  for (const host::PartKind kind : {host::PartKind::volume, host::PartKind::whole}) {
    if (!parts.empty()) break;
    for (const host::Part& part : session_.parts()) {
      if (part.kind == kind && has_cells(part)) parts.push_back(part.number);
    }
  }
  return parts;
}

// Where --slice cuts. Per cent are of the box around what is cut at the session's step.
std::vector<CutPlane> PageEntries::planes() const {
  std::vector<CutPlane> planes;
  const std::vector<SliceOption> slices = slices_of(options_);
  if (slices.empty()) return planes;
  std::optional<host::BoundingBox> all;
  const std::vector<int> parts = cut_parts();
  if (parts.empty())
    throw CommandError(ExitStatus::failure, options_.dataset.file, "there is no volume to cut");
  for (const int part : parts) {
    const auto box = host::bounding_box(session_.coordinates(part));
    if (!box) continue;
    if (!all) all = box;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      all->lowest[axis] = std::min(all->lowest[axis], box->lowest[axis]);
      all->highest[axis] = std::max(all->highest[axis], box->highest[axis]);
    }
  }
  for (const SliceOption& slice : slices) {
    const auto axis = static_cast<std::size_t>(slice.axis);
    double position = slice.position;
    if (slice.is_percentage) {
      const double low = all ? static_cast<double>(all->lowest[axis]) : 0;
      const double high = all ? static_cast<double>(all->highest[axis]) : 0;
      position = low + slice.position / 100 * (high - low);
    }
    planes.push_back({slice.axis, position});
  }
  return planes;
}

std::vector<PageEntry> PageEntries::outsides() const {
  std::vector<PageEntry> entries;
  const std::vector<int> shown = shown_.at(session_);
  const std::vector<int> faint = faint_.at(session_);
  for (const int part : listed_parts()) {
    PageEntry& entry = entries.emplace_back();
    entry.number = part;
    entry.is_faint = std::binary_search(faint.begin(), faint.end(), part);
    entry.is_shown = entry.is_faint || std::binary_search(shown.begin(), shown.end(), part);
  }
  return entries;
}

std::vector<PageEntry> PageEntries::cuts() const {
  std::vector<PageEntry> entries;
  if (planes_.empty()) return entries;
  const std::vector<int> parts = cut_parts();
  for (const CutPlane& plane : planes_) {
    for (const int part : parts) {
      PageEntry& entry = entries.emplace_back();
      entry.number = part;
      entry.cut = plane;
      entry.is_shown = true;
    }
  }
  return entries;
}

// Gives entries that have numbers of the session's step their names.
void PageEntries::name(std::vector<PageEntry>& entries) {
  const std::vector<std::string> names = host::part_names(session_);
  for (PageEntry& entry : entries) {
    entry.name = names[static_cast<std::size_t>(entry.number) - 1];
    entry.axes = names_.of(session_, session_.part(entry.number));
    if (!entry.cut) continue;
    entry.name += fmt::format(" at {} = {:.4g}", entry.axes[static_cast<std::size_t>(entry.cut->axis)],
                              entry.cut->position);
  }
}

}  // namespace tool
