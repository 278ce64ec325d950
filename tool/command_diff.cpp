// fldtool diff
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "host/text_encoding.h"
#include "host/undefined_value.h"
#include "nlohmann/json.hpp"
#include "tool/choice.h"
#include "tool/commands.h"
#include "tool/dataset_comparison.h"
#include "tool/dataset_options.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/interrupt.h"
#include "tool/jobs.h"
#include "tool/json_values.h"
#include "tool/output.h"
#include "tool/progress.h"

namespace tool {
namespace {

constexpr char kDiffManual[] =
    R"(Compares two datasets, or two steps of one: numbers of steps and region sets, times, parts, node and element counts,
coordinates, connectivity, variables and their values. Parts are matched by their kinds and names, at each step anew,
and variables by their names; connectivity is compared by the parts' own node numbers, and values in the order in which
the reader gives them.

Without --step and --step-b all steps are compared, each with the one of the same number. --step chooses steps of both;
--step-b chooses those of the second dataset, or of FILE itself when there is no second one: as many, which are paired in
their order, or a single one for all.

Numbers are equal when they differ by at most --abs, or by at most --rel times the larger of the two. Undefined values
equal each other only, and so do NaN. An infinite value equals itself only.

One line per difference names the step, the part (number, kind and name), the variable and what differs, as A -> B; for
arrays, how many entries differ, the first of them and the one with the largest difference. The last line counts the
differences.

--json prints one JSON object:
  a, b           the files
  absolute, relative
                 the tolerances
  differences    per difference: kind (steps, time, region_sets, part, variable, nodes, elements, coordinates,
                 connectivity, availability or values), step_a, step_b, part (its name), part_kind (surface, volume
                 or whole), part_a, part_b (its numbers), variable, component (or the elements' shape), a, b (both
                 sides, unless they are lists), list; null is what does not apply
  list           differing, compared (how many), row (node or element), first, most (the largest difference): the row
                 (from 1), the entry in it (of connectivity, from 1), a and b (null unless finite), undefined_a,
                 undefined_b
  problems       what could not be read, and so not compared: file, reason; the exit status is then 3

)";

struct DiffOptions {
  DatasetOptions dataset;
  std::string other;
  std::vector<std::string> steps;
  std::vector<std::string> steps_b;
  std::vector<std::string> parts = {"all"};
  std::vector<std::string> variables;
  Tolerance tolerance;
  int jobs = 0;
  bool json = false;
};

Json place_json(const Difference& difference, const DifferingPlace& place) {
  const auto is_undefined = [](double value) { return host::is_undefined(static_cast<float>(value)); };
  const auto value = [&](double number) {
    return is_undefined(number) ? Json(nullptr) : json_number(number);
  };
  return {
      {"row", difference.first_row + place.index / difference.row_length + 1},
      {"entry", difference.row_length > 1 ? Json(place.index % difference.row_length + 1) : Json(nullptr)},
      {"a", value(place.a)},
      {"b", value(place.b)},
      {"undefined_a", is_undefined(place.a)},
      {"undefined_b", is_undefined(place.b)}};
}

Json text_or_null(const std::string& text) {
  return text.empty() ? Json(nullptr) : Json(text);
}

Json number_or_null(const std::optional<int>& number) {
  return number ? Json(*number) : Json(nullptr);
}

Json difference_json(const Difference& difference) {
  Json json{{"kind", difference.kind},
            {"step_a", number_or_null(difference.step_a)},
            {"step_b", number_or_null(difference.step_b)},
            {"part", difference.part ? Json(difference.part->name) : Json(nullptr)},
            {"part_kind", difference.part ? Json(difference.part->kind) : Json(nullptr)},
            {"part_a", difference.part ? number_or_null(difference.part->number_a) : Json(nullptr)},
            {"part_b", difference.part ? number_or_null(difference.part->number_b) : Json(nullptr)},
            {"variable", text_or_null(difference.variable)},
            {"component", text_or_null(difference.component)},
            {"a", text_or_null(difference.a)},
            {"b", text_or_null(difference.b)},
            {"list", nullptr}};
  if (difference.list) {
    json["list"] = {{"differing", difference.list->differing},
                    {"compared", difference.list->compared},
                    {"row", difference.row},
                    {"first", place_json(difference, difference.list->first)},
                    {"most", place_json(difference, difference.list->most)}};
  }
  return json;
}

// Prints the differences as they come.
class DiffPrinter {
 public:
  explicit DiffPrinter(const DiffOptions& options) : is_json_(options.json) {
    if (!is_json_) return;
    output_.write(
        fmt::format("{{\n\"a\": {},\n\"b\": {},\n\"absolute\": {},\n\"relative\": {},\n\"differences\": [",
                    json_text(options.dataset.file), json_text(options.other),
                    json_text(json_number(options.tolerance.absolute)),
                    json_text(json_number(options.tolerance.relative))));
  }

  // The text for a difference.
  std::string text(const Difference& difference) const {
    return is_json_ ? json_text(difference_json(difference), -1)
                    : host::without_controls(difference_text(difference)) + "\n";
  }

  void print(const std::string& text) {
    output_.write((!is_json_ ? "" : count_ == 0 ? "\n" : ",\n") + text);
    ++count_;
  }

  void finish(const std::vector<ReadProblem>& problems) {
    if (is_json_) {
      Json list = Json::array();
      for (const ReadProblem& problem : problems)
        list.push_back({{"file", problem.file}, {"reason", problem.reason}});
      output_.write(fmt::format("\n],\n\"problems\": {}\n}}\n", json_text(list, -1)));
    } else if (count_ == 0) {
      output_.write(problems.empty() ? "no differences\n" : "no differences in what could be read\n");
    } else {
      output_.write(fmt::format("{} difference{}\n", count_, count_ == 1 ? "" : "s"));
    }
    output_.finish();
  }

  std::uint64_t count() const { return count_; }

 private:
  bool is_json_;
  Output output_{""};
  std::uint64_t count_ = 0;
};

// The steps of both datasets to compare: one by one, or all of one side with a single one of the other.
std::vector<std::pair<int, int>> pairs_of_steps(const DiffOptions& options, OpenDataset& a, OpenDataset& b) {
  const std::vector<std::string> first = {"0"};
  std::vector<int> of_a = choose_steps(a.session(), options.steps.empty() ? first : options.steps);
  std::vector<int> of_b =
      choose_steps(b.session(), options.steps_b.empty() ? options.steps : options.steps_b);
  if (of_a.size() == 1) of_a.resize(of_b.size(), of_a.front());
  if (of_b.size() == 1) of_b.resize(of_a.size(), of_b.front());
  if (of_a.size() != of_b.size()) {
    throw CommandError(ExitStatus::usage,
                       fmt::format("--step chooses {} steps and --step-b {}: choose as many, or one",
                                   of_a.size(), of_b.size()));
  }
  std::vector<std::pair<int, int>> pairs;
  for (std::size_t i = 0; i < of_a.size(); ++i) pairs.emplace_back(of_a[i], of_b[i]);
  return pairs;
}

void run_diff(DiffOptions options) {
  if (options.other.empty()) {
    if (options.steps_b.empty()) {
      throw CommandError(
          ExitStatus::usage,
          "a second file or --step-b is missing: what to compare with? (see fldtool diff --help)");
    }
    options.other = options.dataset.file;
  }
  OpenDataset a(options.dataset);
  DatasetOptions other = options.dataset;
  other.file = options.other;
  OpenDataset b(other, OpenDataset::Globals::own);
  ComparisonChoice choice{
      .steps = {}, .parts = options.parts, .variables = options.variables, .tolerance = options.tolerance};
  if (!options.steps.empty() || !options.steps_b.empty()) choice.steps = pairs_of_steps(options, a, b);
  DiffPrinter printer(options);
  std::optional<Progress> progress;
  Json texts = Json::array();  // of the differences that are not printed yet
  DatasetComparison comparison(
      a, b, choice,
      [&](const Difference& difference) { texts.push_back(as_bytes(printer.text(difference))); },
      [&](std::uint64_t done, std::uint64_t total) {
        stop_if_interrupted();
        if (!progress) progress.emplace("comparing", total, ProgressUnit::steps);
        progress->update(done);
      });
  const auto print = [&](const Json& found) {
    if (progress && !found.empty()) progress->erase();
    for (const Json& text : found) printer.print(text_of(text));
  };
  const std::size_t pairs = comparison.begin();
  print(std::exchange(texts, Json::array()));
  std::vector<ReadProblem> problems = comparison.problems();
  const auto compare = [&](std::size_t pair) {
    const std::size_t known = comparison.problems().size();
    comparison.compare_pair(pair);
    Json latest = Json::array();
    for (std::size_t i = known; i < comparison.problems().size(); ++i)
      latest.push_back(
          {{"file", comparison.problems()[i].file}, {"reason", comparison.problems()[i].reason}});
    return Json{{"texts", std::exchange(texts, Json::array())},
                {"problems", std::move(latest)},
                {"is_lost", a.session().is_lost() || b.session().is_lost()}};
  };
  const int jobs = usable_jobs(options.jobs, pairs, 2 * memory_of_step(a.session(), comparison.steps()));
  comparison.tell_progress(0);
  run_jobs(jobs, pairs, compare, [&](std::size_t pair, const Json& found) {
    print(found.at("texts"));
    comparison.tell_progress(pair + 1);
    for (const Json& problem : found.at("problems")) {
      const ReadProblem next = {problem.at("file").get<std::string>(),
                                problem.at("reason").get<std::string>()};
      if (problems.empty() || !(problems.back() == next)) problems.push_back(next);
    }
    return !found.at("is_lost").get<bool>();
  });
  progress.reset();
  printer.finish(problems);
  if (!problems.empty()) throw CommandError(ExitStatus::unreadable, problems.front().text());
  if (printer.count() > 0) throw QuietExit(ExitStatus::findings);
}

}  // namespace

void add_diff_command(CLI::App& app) {
  const auto options = std::make_shared<DiffOptions>();
  CLI::App* command = app.add_subcommand("diff", "Compare two datasets, or two steps of one");
  add_dataset_options(*command, options->dataset);
  command->add_option("OTHER", options->other, "Any file of the second dataset (default: FILE itself)")
      ->check(file_name());
  add_steps_option(*command, options->steps, "The steps to compare (default: all)");
  add_steps_option(*command, options->steps_b,
                   "The steps of the second dataset to compare with (default: the same)",
                   "--step-b,--steps-b");
  // The library's own check would print the largest double in digits.
  const auto tolerance = CLI::Validator(
      [](const std::string& text) {
        double value = -1;
        return CLI::detail::lexical_cast(text, value) && value >= 0 ? "" : "has to be a number of 0 or more";
      },
      "");
  command->add_option("--abs", options->tolerance.absolute, "Numbers may differ by this much")
      ->check(tolerance)
      ->capture_default_str();
  command
      ->add_option("--rel", options->tolerance.relative, "Numbers may differ by this share of the larger one")
      ->check(tolerance)
      ->capture_default_str();
  add_parts_option(*command, options->parts, "The parts to compare");
  add_variables_option(*command, options->variables, "The variables to compare (default: all)");
  command->add_flag("--json", options->json, "Print JSON for programs");
  add_jobs_option(*command, options->jobs);
  command->footer(std::string(kDiffManual) + kChoiceText + kExitStatusText);
  command->callback([options] { run_diff(*options); });
}

}  // namespace tool
