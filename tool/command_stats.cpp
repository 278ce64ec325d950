// fldtool stats
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fmt/format.h"
#include "host/error.h"
#include "host/text_encoding.h"
#include "tool/choice.h"
#include "tool/commands.h"
#include "tool/dataset_options.h"
#include "tool/exit_status.h"
#include "tool/interrupt.h"
#include "tool/json_values.h"
#include "tool/output.h"
#include "tool/part_statistics.h"
#include "tool/progress.h"
#include "tool/summary.h"

namespace tool {
namespace {

constexpr char kManual[] =
    R"(Prints what the values of the variables are like: per step, variable and part the minimum, the maximum and the mean,
how many values there are, how many of them the file marks as undefined, and how many are not a number. Undefined values
and those that are not a number are left out of the rest. A vector has a line for each of x, y and z, and one for the
magnitude.

Without --steps, --parts and --variables it is all steps, parts and variables. --histogram N adds, below every line, how
many values there are in N intervals of equal width from the lowest to the highest finite value.

--json prints one JSON object:
  file           the file as given
  steps          per step that could be read: step, time, variables
  variables      per variable: number, name, label, type (scalar or vector), per (node or element), parts
  parts          per part: part (its number), name, availability (given, not in this step, not offered or failed), reason
                 (if failed), components
  components     component (x, y, z or magnitude; null of a scalar), values (how many), minimum, maximum, mean (null without
                 numbers), undefined, not_numbers, and with --histogram: histogram (low, high, counts)
  problems       what could not be read, in words; the exit status is then 3
A step that cannot be read is left out, and the others go on, unless the reader gave up over it.

)";

struct StatsOptions {
  DatasetOptions dataset;
  std::vector<std::string> steps;
  std::vector<std::string> parts = {"all"};
  std::vector<std::string> variables;
  std::size_t intervals = 0;
  bool json = false;
};

struct VariableStatistics {
  host::Variable variable;
  std::vector<PartStatistics> parts;
};

std::string part_name(const host::Session& session, const PartStatistics& part) {
  return host::to_utf8(session.part(part.part).name);
}

std::string histogram_text(const Histogram& histogram) {
  constexpr double kWidest = 40;
  std::size_t most = 1;
  for (const std::size_t count : histogram.counts) most = std::max(most, count);
  std::string text;
  for (std::size_t i = 0; i < histogram.counts.size(); ++i) {
    const double share = static_cast<double>(histogram.counts[i]) / static_cast<double>(most);
    text += fmt::format("{:>10}{:>12.5g} to {:<12.5g}{:>11}  {:#<{}}\n", "", histogram.edge(i),
                        histogram.edge(i + 1), histogram.counts[i], "",
                        static_cast<int>(std::ceil(share * kWidest)));
  }
  return text;
}

std::string component_text(const ComponentStatistics& component) {
  const host::ValueStatistics& statistics = component.statistics;
  const std::string numbers = statistics.has_numbers()
                                  ? fmt::format("{:>13.6g}{:>13.6g}{:>13.6g}", statistics.minimum,
                                                statistics.maximum, statistics.mean())
                                  : fmt::format("{:>13}{:>13}{:>13}", "-", "-", "-");
  return fmt::format("{:<10}{:>11}{:>11}{:>13}{}\n{}", component.component, component.values,
                     statistics.undefined, statistics.not_numbers, numbers,
                     histogram_text(component.histogram));
}

std::string variable_text(const host::Session& session, const VariableStatistics& found) {
  const std::string label = host::printable(found.variable.label);
  std::string text = fmt::format("  {}{}{}, per {}\n", host::printable(found.variable.name),
                                 label.empty() ? "" : ", ", label, location_word(found.variable.location));
  text += fmt::format("    {:>4}  {:<24}  {:<10}{:>11}{:>11}{:>13}{:>13}{:>13}{:>13}\n", "part", "name", "of",
                      "values", "undefined", "not numbers", "minimum", "maximum", "mean");
  for (const PartStatistics& part : found.parts) {
    const std::string beginning =
        fmt::format("    {:>4}  {:<24}  ", part.part, host::without_controls(part_name(session, part)));
    if (part.availability != host::Availability::given) {
      text += fmt::format("{}{}{}{}\n", beginning, availability_word(part.availability),
                          part.reason.empty() ? "" : ": ",
                          host::without_controls(host::message_to_utf8(part.reason)));
    }
    for (std::size_t i = 0; i < part.components.size(); ++i) {
      text += i == 0 ? beginning : fmt::format("    {:>4}  {:<24}  ", "", "");
      text += component_text(part.components[i]);
    }
  }
  return text;
}

Json component_json(const ComponentStatistics& component) {
  Json json{{"component", component.component.empty() ? Json(nullptr) : Json(component.component)},
            {"values", component.values}};
  json.update(statistics_json(component.statistics));
  if (!component.histogram.counts.empty()) {
    json["histogram"] = {{"low", json_number(component.histogram.low)},
                         {"high", json_number(component.histogram.high)},
                         {"counts", component.histogram.counts}};
  }
  return json;
}

Json variable_json(const host::Session& session, const VariableStatistics& found) {
  Json parts = Json::array();
  for (const PartStatistics& part : found.parts) {
    Json entry{{"part", part.part},
               {"name", part_name(session, part)},
               {"availability", availability_word(part.availability)}};
    if (!part.reason.empty()) entry["reason"] = host::message_to_utf8(part.reason);
    entry["components"] = Json::array();
    for (const ComponentStatistics& component : part.components)
      entry["components"].push_back(component_json(component));
    parts.push_back(std::move(entry));
  }
  return {{"number", found.variable.number},
          {"name", host::to_utf8(found.variable.name)},
          {"label", host::to_utf8(found.variable.label)},
          {"type", kind_word(found.variable.kind)},
          {"per", location_word(found.variable.location)},
          {"parts", std::move(parts)}};
}

// Goes through steps, variables and parts, in the order in which a reader keeps what it has read, and prints
// each step when it is done.
class StatsRun {
 public:
  StatsRun(const StatsOptions& options, host::Session& session)
      : options_(options),
        session_(session),
        steps_(choose_steps(session, options.steps)),
        variables_(choose_variables(session, options.variables)),
        has_first_step_(select(steps_.front())),
        parts_(choose_parts(session, options.parts)),
        progress_("stats", steps_.size() * variables_.size() * parts_.size(), ProgressUnit::steps) {}

  void run() {
    if (options_.json) {
      output_.write(fmt::format("{{\n\"file\": {},\n\"steps\": [\n", json_text(options_.dataset.file)));
    }
    for (const int step : steps_) {
      if (step == steps_.front() ? has_first_step_ : select(step)) {
        parts_.tell_missing(session_, progress_);
        print(step, statistics());
      }
      if (session_.is_lost()) break;
    }
    progress_.erase();
    if (options_.json) output_.write(fmt::format("\n],\n\"problems\": {}\n}}\n", json_text(problems_, -1)));
    output_.finish();
    if (!problems_.empty())
      throw CommandError(ExitStatus::unreadable, options_.dataset.file, problems_.front());
  }

 private:
  bool select(int step) {
    try {
      session_.select_step(step);
      return true;
    } catch (const host::Error& error) {
      problems_.push_back(fmt::format("step {}: {}", step, host::message_to_utf8(error.reason())));
      return false;
    }
  }

  std::vector<VariableStatistics> statistics() {
    std::vector<VariableStatistics> found;
    const std::vector<int> parts = parts_.at(session_);
    for (const int number : variables_) {
      found.push_back({session_.variable(number), {}});
      for (const int part : parts) {
        stop_if_interrupted();
        progress_.update(done_++);
        const bool was_lost = session_.is_lost();
        found.back().parts.push_back(
            part_statistics(session_, found.back().variable, session_.part(part), options_.intervals));
        if (!was_lost) note_problem(found.back());
      }
    }
    return found;
  }

  void note_problem(const VariableStatistics& found) {
    const PartStatistics& part = found.parts.back();
    if (part.availability != host::Availability::failed) return;
    std::string problem = fmt::format("variable {} at step {}: {}", host::to_utf8(found.variable.name),
                                      session_.step(), host::message_to_utf8(part.reason));
    // It is the same for every part, as a rule.
    if (problems_.empty() || problems_.back() != problem) problems_.push_back(std::move(problem));
  }

  void print(int step, const std::vector<VariableStatistics>& found) {
    progress_.erase();
    const float time = session_.variable_times().times[static_cast<std::size_t>(step)];
    if (options_.json) {
      Json json{{"step", step}, {"time", json_number(time)}, {"variables", Json::array()}};
      for (const VariableStatistics& variable : found)
        json["variables"].push_back(variable_json(session_, variable));
      output_.write((is_first_ ? "" : ",\n") + json_text(json));
      is_first_ = false;
      return;
    }
    output_.write(fmt::format("step {} (time {})\n", step, time));
    for (const VariableStatistics& variable : found) output_.write(variable_text(session_, variable));
  }

  const StatsOptions& options_;
  host::Session& session_;
  std::vector<std::string> problems_;
  std::vector<int> steps_;
  std::vector<int> variables_;
  bool has_first_step_;
  ChosenParts parts_;
  Progress progress_;
  Output output_{""};
  bool is_first_ = true;  // of the steps that are printed
  std::uint64_t done_ = 0;
};

void run_stats(const StatsOptions& options) {
  OpenDataset dataset(options.dataset);
  try {
    StatsRun(options, dataset.session()).run();
  } catch (const host::Error& error) {
    throw CommandError(ExitStatus::unreadable, options.dataset.file, host::message_to_utf8(error.reason()));
  }
}

}  // namespace

void add_stats_command(CLI::App& app) {
  const auto options = std::make_shared<StatsOptions>();
  CLI::App* command = app.add_subcommand("stats", "Print ranges, means and histograms of values");
  add_dataset_options(*command, options->dataset);
  add_steps_option(*command, options->steps, "The steps (default: all)");
  add_parts_option(*command, options->parts, "The parts")->capture_default_str();
  add_variables_option(*command, options->variables, "The variables (default: all)");
  command->add_option("--histogram", options->intervals, "Count the values in so many intervals")
      ->check(CLI::Range(std::size_t{1}, std::size_t{1000}).description(""));
  command->add_flag("--json", options->json, "Print JSON for programs");
  command->footer(std::string(kManual) + kChoiceText + kExitStatusText);
  command->callback([options] { run_stats(*options); });
}

}  // namespace tool
