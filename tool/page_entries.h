// The parts that a page lists: those that were chosen, each from the step on that has it first.
#pragma once

#include <compare>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/part_tree.h"
#include "host/session.h"
#include "tool/chosen_parts.h"
#include "tool/coordinate_names.h"
#include "tool/page_options.h"
#include "tool/progress.h"

namespace tool {

// A plane that is perpendicular to an axis.
struct CutPlane {
  int axis = 0;
  double position = 0;

  friend auto operator<=>(const CutPlane&, const CutPlane&) = default;
};

// What a page lists as a part. What it tells is that of the first step that has the part.
struct PageEntry {
  PartIdentity part;
  int number = 0;
  std::string name;  // UTF-8
  AxisNames axes = kAxes;
  std::optional<CutPlane> cut;  // none: the part's outer faces
  bool is_shown = false;        // at first
  bool is_faint = false;
};

class PageEntries {
 public:
  // Those of the session's step, which is the first one chosen. Throws CommandError.
  PageEntries(host::Session& session, const PageOptions& options);

  // Adds what the session's step has and no step before it had.
  void add_step();

  // In the order in which they were added: the place of an entry never changes.
  const std::vector<PageEntry>& all() const { return entries_; }

  // The numbers, at the session's step, of the parts that are shown in colours.
  std::vector<int> coloured() const;

  // In folders; the numbers are places in all().
  std::vector<host::PartFolder> tree() const;

  // Tells which of the chosen parts the session's step lacks.
  void tell_missing(Progress& progress) const;

 private:
  std::vector<int> listed_parts() const;
  std::vector<int> cut_parts() const;
  std::vector<CutPlane> planes() const;
  // What the session's step has, without names.
  std::vector<PageEntry> outsides() const;
  std::vector<PageEntry> cuts() const;
  void name(std::vector<PageEntry>& entries);

  host::Session& session_;
  const PageOptions& options_;
  ChosenParts shown_;
  ChosenParts faint_;
  std::vector<CutPlane> planes_;
  CoordinateNames names_;
  std::vector<PageEntry> entries_;
  std::set<std::pair<PartIdentity, std::optional<CutPlane>>> known_;
  std::map<std::string, std::set<std::string>> groups_;  // surfaces by the reader's group
};

}  // namespace tool
