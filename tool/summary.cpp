#include "tool/summary.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string_view>

#include "host/diagnostic_text.h"
#include "host/error.h"
#include "host/text_encoding.h"
#include "tool/interrupt.h"
#include "tool/progress.h"
#include "tool/read_error.h"

namespace tool {
namespace {

// The cycle number in a file name: the digits between the last "_" and the four characters of the extension.
std::optional<long long> cycle_of(const std::string& path) {
  const std::string name = std::filesystem::path(path).filename().string();
  const std::size_t underscore = name.rfind('_');
  if (underscore == std::string::npos || name.size() < underscore + 6) return std::nullopt;
  const std::string_view digits = std::string_view(name).substr(underscore + 1, name.size() - underscore - 5);
  const auto is_digit = [](unsigned char c) { return std::isdigit(c) != 0; };
  if (!std::all_of(digits.begin(), digits.end(), is_digit)) return std::nullopt;
  long long cycle = 0;
  const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), cycle);
  return parsed.ec == std::errc() ? std::optional(cycle) : std::nullopt;
}

std::vector<StepSummary> summarize_steps(const host::Session& session) {
  std::vector<StepSummary> steps;
  for (int step = 0; step < session.step_count(); ++step) {
    const auto index = static_cast<std::size_t>(step);
    StepSummary summary{step, session.variable_times().times[index], session.geometry_step_of(step), {}, {}};
    if (index < session.traced_files().size()) {
      const std::string& path = session.traced_files()[index];
      summary.file = std::filesystem::path(path).filename().string();
      summary.cycle = cycle_of(path);
    }
    steps.push_back(std::move(summary));
  }
  return steps;
}

std::vector<host::PartGroup> readable_groups(host::Session& session) {
  std::vector<host::PartGroup> groups = session.metadata().groups;
  for (host::PartGroup& group : groups) {
    group.name = host::to_utf8(group.name);
    for (std::string& part : group.parts) part = host::to_utf8(part);
  }
  return groups;
}

std::vector<PartSummary> summarize_parts(const host::Session& session,
                                         const std::vector<host::PartGroup>& groups,
                                         const std::vector<int>& chosen) {
  std::map<std::string, std::string> group_of;
  for (const host::PartGroup& group : groups) {
    for (const std::string& part : group.parts) group_of[part] = group.name;
  }
  std::vector<PartSummary> parts;
  for (const int number : chosen) {
    const host::Part& part = session.part(number);
    std::string name = host::to_utf8(part.name);
    // Groups hold surfaces only.
    const auto group = part.kind == host::PartKind::surface ? group_of.find(name) : group_of.end();
    parts.push_back({part, std::move(name), group == group_of.end() ? "" : group->second, kAxes});
  }
  return parts;
}

class Summarizer {
 public:
  // The parts chosen that the session's step has are those that are shown.
  Summarizer(host::Session& session, DatasetSummary& summary, const SummaryChoice& choice,
             std::size_t requests)
      : session_(session),
        summary_(summary),
        choice_(choice),
        progress_("info", requests, ProgressUnit::steps) {
    for (const auto& [identity, number] : part_numbers(session)) {
      if (choice.parts.contains(identity)) shown_parts_.emplace(identity, ShownPart{number, 0});
    }
    const std::vector<int> numbers = choice.parts.at(session);
    for (auto& [identity, shown] : shown_parts_) {
      const auto place = std::lower_bound(numbers.begin(), numbers.end(), shown.number);
      shown.index = static_cast<std::size_t>(place - numbers.begin());
    }
  }

  // The names and kinds alone.
  StepContents structure() {
    StepContents contents;
    contents.step = session_.step();
    for (const int variable : choice_.variables)
      contents.variables.push_back(describe(session_.variable(variable)));
    return contents;
  }

  StepContents contents() {
    StepContents contents;
    contents.step = session_.step();
    contents.boxes.resize(shown_parts_.size());
    for (const auto& [identity, number] : part_numbers(session_)) {
      const auto shown = shown_parts_.find(identity);
      if (shown != shown_parts_.end()) contents.boxes[shown->second.index] = box(session_.part(number));
    }
    for (const int variable : choice_.variables)
      contents.variables.push_back(range(session_.variable(variable)));
    return contents;
  }

  std::vector<StepContents> all_steps() {
    std::vector<StepContents> steps;
    for (const int step : choice_.steps) {
      if (select(step)) steps.push_back(contents());
    }
    return steps;
  }

  // Compares the coordinates at the given geometry steps with those at the first one that has the part.
  MotionSummary motion(const std::vector<int>& geometry_steps) {
    MotionSummary motion;
    std::map<PartIdentity, Fingerprint> first;
    std::set<int> moving;
    for (const int geometry_step : geometry_steps) {
      const int step = first_step_with(geometry_step);
      std::map<PartIdentity, Fingerprint> now;
      if (!select(step) || !read("", [&] { now = fingerprints(); })) continue;
      motion.compared_steps.push_back(geometry_step);
      first.insert(now.begin(), now.end());
      for (const auto& [identity, fingerprint] : now) {
        const auto shown = shown_parts_.find(identity);
        if (shown != shown_parts_.end() && first.at(identity) != fingerprint)
          moving.insert(shown->second.number);
      }
    }
    motion.moving_parts.assign(moving.begin(), moving.end());
    return motion;
  }

 private:
  struct ShownPart {
    int number = 0;
    std::size_t index = 0;  // in the summary's parts
  };

  // A digest of a part's coordinates: equal ones have equal fingerprints.
  using Fingerprint = std::array<std::size_t, 3>;

  // To be called before something is read for one part or variable.
  void advance() {
    stop_if_interrupted();
    progress_.update(done_++);
  }

  // Notes the error of what could not be read. False if there was one. Of a session that is lost it notes the
  // first one alone.
  template <typename Read>
  bool read(const std::string& what, Read read_it) {
    const bool was_lost = session_.is_lost();
    try {
      read_it();
      return true;
    } catch (const host::Error& error) {
      if (!was_lost) note(read_problem(error, session_, what).text());
      return false;
    }
  }

  bool select(int step) {
    return read("", [&] { session_.select_step(step); });
  }

  int first_step_with(int geometry_step) const {
    int step = 0;
    while (step + 1 < session_.step_count() && session_.geometry_step_of(step) != geometry_step) ++step;
    return step;
  }

  std::map<PartIdentity, Fingerprint> fingerprints() {
    std::map<PartIdentity, Fingerprint> found;
    for (const auto& [identity, number] : part_numbers(session_)) {
      if (!shown_parts_.contains(identity)) continue;
      advance();
      const host::Coordinates coordinates = session_.coordinates(number);
      Fingerprint fingerprint{};
      for (std::size_t axis = 0; axis < 3; ++axis) {
        const std::span<const float> values = coordinates.axes[axis].values();
        const std::string_view bytes(reinterpret_cast<const char*>(values.data()), values.size_bytes());
        fingerprint[axis] = std::hash<std::string_view>()(bytes);
      }
      found.emplace(identity, fingerprint);
    }
    return found;
  }

  std::optional<host::BoundingBox> box(const host::Part& part) {
    advance();
    std::optional<host::BoundingBox> box;
    read("part " + std::to_string(part.number),
         [&] { box = host::bounding_box(session_.coordinates(part.number)); });
    return box;
  }

  static VariableSummary describe(const host::Variable& variable) {
    VariableSummary summary;
    summary.variable = variable;
    summary.name = host::to_utf8(variable.name);
    summary.label = host::to_utf8(variable.label);
    return summary;
  }

  VariableSummary range(const host::Variable& variable) {
    advance();
    const bool was_lost = session_.is_lost();
    VariableSummary summary = describe(variable);
    summary.components.resize(static_cast<std::size_t>(variable.components()));
    summary.availability = host::Availability::not_in_this_step;
    std::string problem;
    try {
      problem = add_ranges(summary);
    } catch (const host::Error& error) {
      summary.availability = host::Availability::failed;
      summary.reason = error.reason();
      problem = read_problem(error, session_, "variable " + summary.name).text();
    }
    if (summary.availability != host::Availability::given) summary.components.clear();
    summary.reason = host::message_to_utf8(summary.reason);
    if (summary.availability == host::Availability::failed && !was_lost) note(problem);
    return summary;
  }

  // Adds up the whole meshes of the region sets that have the variable. Returns what could not be read, in
  // words.
  std::string add_ranges(VariableSummary& summary) {
    for (const host::Part& part : session_.parts()) {
      if (part.kind != host::PartKind::whole) continue;
      for (std::size_t component = 0; component < summary.components.size(); ++component) {
        const host::PartValues values =
            session_.values(summary.variable.number, part.number, static_cast<int>(component));
        if (values.availability == host::Availability::given) {
          summary.availability = host::Availability::given;
          summary.components[component].add(values.values());
        } else if (values.availability != host::Availability::not_in_this_step) {
          summary.availability = values.availability;
          summary.reason = values.reason;
          return read_problem(values, session_, "variable " + summary.name).text();
        }
      }
    }
    return {};
  }

  void note(const std::string& problem) {
    std::vector<std::string>& problems = summary_.problems;
    if (std::find(problems.begin(), problems.end(), problem) == problems.end()) problems.push_back(problem);
  }

  host::Session& session_;
  DatasetSummary& summary_;
  const SummaryChoice& choice_;
  std::map<PartIdentity, ShownPart> shown_parts_;
  Progress progress_;
  std::uint64_t done_ = 0;
};

// The geometry steps to look for motion in: all of them, or the first and the last; none when there is only
// one.
std::vector<int> steps_to_compare(int geometry_steps, SummaryDetail detail) {
  if (geometry_steps < 2 || detail == SummaryDetail::structure) return {};
  if (detail == SummaryDetail::ranges) return {0, geometry_steps - 1};
  std::vector<int> steps(static_cast<std::size_t>(geometry_steps));
  for (int step = 0; step < geometry_steps; ++step) steps[static_cast<std::size_t>(step)] = step;
  return steps;
}

// How often something is read for a part or a variable, if all steps have as many parts as this one.
std::size_t count_requests(const host::Session& session, SummaryDetail detail, const SummaryChoice& choice) {
  if (detail == SummaryDetail::structure) return 0;
  const auto geometry_steps = static_cast<int>(session.geometry_times().times.size());
  const std::size_t compared = steps_to_compare(geometry_steps, detail).size();
  const std::size_t shown = detail == SummaryDetail::all_steps ? 1 + choice.steps.size() : 1;
  return shown * (choice.parts.size() + choice.variables.size()) + compared * choice.parts.size();
}

}  // namespace

DatasetSummary summarize(host::Session& session, const std::string& library, SummaryDetail detail,
                         const SummaryChoice& choice) {
  DatasetSummary summary;
  Summarizer summarizer(session, summary, choice, count_requests(session, detail, choice));
  summary.file = session.path().string();
  summary.reader = session.reader();
  summary.library = library;
  summary.options = session.toggles();
  summary.steps = summarize_steps(session);
  summary.time_sets = session.time_sets();
  summary.geometry_set = session.geometry_times().number;
  summary.variable_set = session.variable_times().number;
  summary.changing_geometry = session.changing_geometry();
  summary.region_sets = session.region_set_count();
  summary.groups = readable_groups(session);
  summary.parts = summarize_parts(session, summary.groups, choice.parts.at(session));
  for (const host::Part& part : session.parts()) {
    if (part.kind == host::PartKind::whole) summary.whole_meshes.push_back(part);
  }
  summary.has_ranges = detail != SummaryDetail::structure;
  CoordinateNames names;
  for (PartSummary& part : summary.parts) {
    if (summary.has_ranges) part.axes = names.of(session, part.part);
  }
  summary.shown = summary.has_ranges ? summarizer.contents() : summarizer.structure();
  if (detail == SummaryDetail::all_steps) summary.all_steps = summarizer.all_steps();
  const auto geometry_steps = static_cast<int>(session.geometry_times().times.size());
  summary.motion = summarizer.motion(steps_to_compare(geometry_steps, detail));
  for (const std::string& warning : host::warnings(session.diagnostics())) {
    summary.warnings.push_back(host::message_to_utf8(warning));
  }
  return summary;
}

std::string kind_word(host::PartKind kind) {
  if (kind == host::PartKind::surface) return "surface";
  return kind == host::PartKind::volume ? "volume" : "whole";
}

std::string kind_word(host::VariableKind kind) {
  if (kind == host::VariableKind::scalar) return "scalar";
  return kind == host::VariableKind::vector ? "vector" : "other";
}

std::string location_word(host::Location location) {
  if (location == host::Location::node) return "node";
  return location == host::Location::element ? "element" : "other";
}

std::string availability_word(host::Availability availability) {
  switch (availability) {
    case host::Availability::given:
      return "given";
    case host::Availability::not_in_this_step:
      return "not in this step";
    case host::Availability::not_offered:
      return "not offered";
    case host::Availability::failed:
      break;
  }
  return "failed";
}

std::string changing_geometry_words(host::ChangingGeometry status) {
  switch (status) {
    case host::ChangingGeometry::fixed:
      return "the geometry does not change";
    case host::ChangingGeometry::coordinates:
      return "coordinates change, connectivity does not";
    case host::ChangingGeometry::connectivity:
      break;
  }
  return "coordinates and connectivity change";
}

}  // namespace tool
