// The summary for a person.
#include <algorithm>
#include <array>
#include <filesystem>
#include <iterator>
#include <string>

#include "fmt/format.h"
#include "host/text_encoding.h"
#include "tool/summary.h"
#include "tool/vector_components.h"

namespace tool {
namespace {

using host::without_controls;
using Text = fmt::memory_buffer;

template <typename... Arguments>
void add(Text& text, fmt::format_string<Arguments...> format, Arguments&&... arguments) {
  fmt::format_to(std::back_inserter(text), format, std::forward<Arguments>(arguments)...);
}

// The display width of UTF-8 text is known to fmt, so it counts the padding.
std::size_t name_width(const DatasetSummary& summary) {
  std::size_t width = 4;
  for (const PartSummary& part : summary.parts) {
    width = std::max(width, fmt::formatted_size("{}", part.name));
  }
  return std::min<std::size_t>(width, 32);
}

std::string counts_text(const host::Part& part) {
  std::string text;
  for (const host::ElementShape& shape : host::kElementShapes) {
    const int count = part.elements[static_cast<std::size_t>(shape.slot)];
    if (count > 0) text += fmt::format("{}{} {}", text.empty() ? "" : ", ", count, shape.name);
  }
  return text.empty() ? "none" : text;
}

std::string corner_text(const std::array<float, 3>& corner, const AxisNames& axes) {
  if (axes == kAxes) return fmt::format("({:.6g}, {:.6g}, {:.6g})", corner[0], corner[1], corner[2]);
  return fmt::format("({} {:.6g}, {} {:.6g}, {} {:.6g})", axes[0], corner[0], axes[1], corner[1], axes[2],
                     corner[2]);
}

std::string box_text(const std::optional<host::BoundingBox>& box, const PartSummary& part) {
  if (!box) return "-";
  return corner_text(box->lowest, part.axes) + " to " + corner_text(box->highest, part.axes);
}

std::string time_text(const DatasetSummary& summary, int step) {
  return fmt::format(" (time {})", summary.steps[static_cast<std::size_t>(step)].time);
}

void add_overview(Text& text, const DatasetSummary& summary) {
  add(text, "file         {}\n", without_controls(summary.file));
  add(text, "reader       {} {}, interface {}\n", summary.reader.name, summary.reader.release,
      summary.reader.api_version);
  std::string options;
  for (const host::Toggle& toggle : summary.options) {
    options +=
        fmt::format("{}{}: {}", options.empty() ? "" : "; ", toggle.title, toggle.is_on ? "on" : "off");
  }
  if (!options.empty()) add(text, "options      {}\n", options);
  for (const host::TimeSet& set : summary.time_sets) {
    const std::size_t steps = set.times.size();
    add(text, "time set {}   {}: {} step{}", set.number, set.description, steps, steps == 1 ? "" : "s");
    if (!set.times.empty()) {
      const auto [first, last] = std::minmax_element(set.times.begin(), set.times.end());
      add(text, ", time{} {}", *first == *last ? "" : "s", *first);
      if (*first != *last) add(text, " to {}", *last);
    }
    add(text, "\n");
  }
  add(text, "region sets  {}\n", summary.region_sets);
  add(text, "geometry     {}\n", changing_geometry_words(summary.changing_geometry));
}

void add_motion(Text& text, const DatasetSummary& summary) {
  const MotionSummary& motion = summary.motion;
  if (motion.compared_steps.empty()) return;
  std::string names;
  for (const int number : motion.moving_parts) {
    names += (names.empty() ? "" : ", ") + std::to_string(number);
  }
  add(text, "motion       ");
  if (names.empty()) {
    add(text, "no part moves");
  } else {
    add(text, "part{} {} move{}", motion.moving_parts.size() == 1 ? "" : "s", names,
        motion.moving_parts.size() == 1 ? "s" : "");
  }
  add(text, " (geometry steps {} compared)\n", fmt::join(motion.compared_steps, ", "));
}

void add_step_line(Text& text, const StepSummary& step) {
  const std::string cycle = step.cycle ? std::to_string(*step.cycle) : "-";
  add(text, "  {:>5}  {:>12}  {:>8}  {:>8}  {}\n", step.step, step.time, step.geometry_step, cycle,
      without_controls(step.file.value_or("-")));
}

void add_steps(Text& text, const DatasetSummary& summary, std::size_t shown_steps) {
  add(text, "\nsteps\n  {:>5}  {:>12}  {:>8}  {:>8}  {}\n", "step", "time", "geometry", "cycle", "file");
  const std::size_t count = summary.steps.size();
  const bool is_cut = count > shown_steps;
  const std::size_t head = is_cut ? shown_steps - 1 : count;
  for (std::size_t i = 0; i < head; ++i) add_step_line(text, summary.steps[i]);
  if (!is_cut) return;
  add(text, "    ... {} more (--all-steps shows all)\n", count - head - 1);
  add_step_line(text, summary.steps.back());
}

// The region set is only told apart when there are several; "-" where the reader does not tell it.
std::string set_text(const DatasetSummary& summary, const PartSummary& part) {
  if (summary.region_sets < 2) return "";
  return fmt::format("  {:>3}", part.part.region_set ? std::to_string(*part.part.region_set) : "-");
}

void add_parts(Text& text, const DatasetSummary& summary) {
  const std::size_t width = name_width(summary);
  add(text, "\nparts at step {}{}\n  {:>4}  {:<7}{}  {:<{}}  {:>9}  elements{}\n", summary.shown.step,
      time_text(summary, summary.shown.step), "part", "kind", summary.region_sets < 2 ? "" : "  set", "name",
      width, "nodes", summary.has_ranges ? "; box" : "");
  for (std::size_t i = 0; i < summary.parts.size(); ++i) {
    const PartSummary& part = summary.parts[i];
    add(text, "  {:>4}  {:<7}{}  {:<{}}  {:>9}  {}{}\n", part.part.number, kind_word(part.part.kind),
        set_text(summary, part), without_controls(part.name), width, part.part.nodes, counts_text(part.part),
        summary.has_ranges ? "; " + box_text(summary.shown.boxes[i], part) : "");
  }
}

void add_range(Text& text, const host::ValueStatistics& range) {
  if (range.has_numbers()) {
    add(text, "{:.6g} to {:.6g}", range.minimum, range.maximum);
  } else {
    add(text, "no values");
  }
  if (range.undefined > 0) add(text, ", {} undefined", range.undefined);
  if (range.not_numbers > 0) add(text, ", {} NaN", range.not_numbers);
}

void add_variable_line(Text& text, const VariableSummary& variable, bool with_range) {
  const std::string label = variable.label.empty() ? "-" : without_controls(variable.label);
  add(text, "  {:>4}  {:<6}  {:<7}  {:<16}  ", variable.variable.number, kind_word(variable.variable.kind),
      location_word(variable.variable.location), without_controls(variable.name));
  if (!with_range) {
    add(text, "{}\n", label);
    return;
  }
  add(text, "{:<32}  ", label);
  if (variable.availability != host::Availability::given) {
    add(text, "{}", availability_word(variable.availability));
    if (!variable.reason.empty()) add(text, ": {}", without_controls(variable.reason));
  }
  for (std::size_t i = 0; i < variable.components.size(); ++i) {
    if (variable.components.size() > 1)
      add(text, "{}{} ", i == 0 ? "" : "; ", kAxes[std::min<std::size_t>(i, 2)]);
    add_range(text, variable.components[i]);
  }
  add(text, "\n");
}

void add_variables(Text& text, const DatasetSummary& summary, const StepContents& contents) {
  add(text, "\nvariables at step {}{}\n  {:>4}  {:<6}  {:<7}  {:<16}  {}\n", contents.step,
      time_text(summary, contents.step), "var", "type", "per", "name",
      summary.has_ranges ? fmt::format("{:<32}  range", "label") : "label");
  for (const VariableSummary& variable : contents.variables)
    add_variable_line(text, variable, summary.has_ranges);
}

// The boxes of the parts that move.
void add_boxes(Text& text, const DatasetSummary& summary, const StepContents& contents) {
  if (summary.motion.moving_parts.empty()) return;
  add(text, "\nboxes of moving parts at step {}{}\n", contents.step, time_text(summary, contents.step));
  const std::vector<int>& moving = summary.motion.moving_parts;
  for (std::size_t i = 0; i < contents.boxes.size(); ++i) {
    const int part = summary.parts[i].part.number;
    if (std::find(moving.begin(), moving.end(), part) == moving.end()) continue;
    add(text, "  {:>4}  {}\n", part, box_text(contents.boxes[i], summary.parts[i]));
  }
}

void add_warnings(Text& text, const DatasetSummary& summary) {
  if (summary.warnings.empty()) return;
  add(text, "\nwarnings of the reader\n");
  for (const std::string& warning : summary.warnings) add(text, "  {}\n", without_controls(warning));
}

void add_groups(Text& text, const DatasetSummary& summary) {
  if (summary.groups.empty()) return;
  add(text, "\ngroups\n");
  for (const host::PartGroup& group : summary.groups) {
    std::string parts;
    for (const std::string& part : group.parts) parts += (parts.empty() ? "" : ", ") + part;
    add(text, "  {}: {}\n", without_controls(group.name), without_controls(parts));
  }
}

}  // namespace

std::string summary_text(const DatasetSummary& summary) {
  constexpr std::size_t kShownSteps = 12;
  Text text;
  add_overview(text, summary);
  add_motion(text, summary);
  add_steps(text, summary, summary.all_steps.empty() ? kShownSteps : summary.steps.size());
  add_parts(text, summary);
  add_groups(text, summary);
  if (summary.all_steps.empty()) add_variables(text, summary, summary.shown);
  for (const StepContents& contents : summary.all_steps) {
    add_boxes(text, summary, contents);
    add_variables(text, summary, contents);
  }
  add_warnings(text, summary);
  return fmt::to_string(text);
}

}  // namespace tool
