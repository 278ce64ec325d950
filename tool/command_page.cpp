// fldtool page
#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>
#include <vtkObject.h>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "host/text_encoding.h"
#include "nlohmann/json.hpp"
#include "page/document.h"
#include "tool/best_effort_write.h"
#include "tool/choice.h"
#include "tool/commands.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/interrupt.h"
#include "tool/output.h"
#include "tool/page_description.h"
#include "tool/page_options.h"
#include "tool/page_scene.h"
#include "tool/picture_scalar.h"
#include "tool/progress.h"
#include "tool/quantity.h"

namespace tool {
namespace {

constexpr char kPageManual[] =
    R"(Writes the dataset that FILE belongs to as one HTML file, which shows it in any browser: the parts to turn, colour,
cut open and step through, without a network and with nothing installed.

What is in the page are the faces of the surfaces, and of volumes that --parts chooses the outer faces. Without --parts
it is all surfaces, of which those in the reader's groups are off at first, or else the volumes. --slice adds cuts through
the volumes that --parts chooses, or else through all of them. Parts of --faint are translucent at first.

The page begins with the first of the steps, and with the colours, range, view and title that 'fldtool render' would
have with the same options. Ranges reach over the values of all steps. Of --variables the first is shown at first, and
may be a component (Velocity.x); 'Velocity,all' begins with one and has all, 'none' begins with colours of the parts.

Coordinates and values have 16 bits: coordinates of the part's box, values of their range on the part at the step.
--precision full keeps them as they are. With --max-size they are made coarser until the page is small enough (of single
precision 16 bits, then coordinates of 14 and values of 10 bits), and then steps are left out; what was done is told.

The page asks nothing of any server, and names in it cannot become part of it: its policy forbids everything but the
script and the style that it was made with.

)";

// What decides on a page's size, from the best.
std::vector<page::Precision> precisions(const PageOptions& options) {
  constexpr page::Precision kCoarse = {14, 10};
  std::vector<page::Precision> all;
  if (options.full) all.push_back(page::kFullPrecision);
  all.emplace_back();
  if (options.max_size > 0) all.push_back(kCoarse);
  if (options.max_size == 0) all.resize(1);
  return all;
}

std::string precision_text(page::Precision precision) {
  if (precision.value_bits == 0) return "single precision";
  return fmt::format("{} bits for coordinates and {} for values", precision.coordinate_bits,
                     precision.value_bits);
}

// `count` of the steps from 0 to `all` - 1, evenly apart, with the first and, from two on, the last.
std::vector<std::size_t> spread_steps(std::size_t all, std::size_t count) {
  std::vector<std::size_t> steps;
  for (std::size_t i = 0; i < count; ++i)
    steps.push_back(count == 1 ? 0 : (i * (all - 1) + (count - 1) / 2) / (count - 1));
  return steps;
}

// The bytes of a text are few beside those of the data.
constexpr std::size_t kRoomForTexts = 4096;

class PageMaker {
 public:
  PageMaker(host::Session& session, const PageOptions& options)
      : session_(session),
        options_(options),
        range_(range_of(options)),
        view_(view_of(options)),
        choice_{choose_first_step(), {}, {}},
        entries_(session, options) {
    choose_variables_and_scalar();
  }

  void write() {
    std::vector<std::size_t> steps;
    const page::Scene scene = fitting_scene(steps);
    Output output(options_.output);
    page::write_page(page_title(), about_, scene, steps,
                     [&](std::string_view piece) { output.write(piece); });
    output.finish();
  }

 private:
  // The steps, of which the session is brought to the first.
  std::vector<int> choose_first_step() {
    std::vector<int> steps = choose_steps(session_, options_.steps);
    session_.select_step(steps.front());
    return steps;
  }

  // The first of the variables may be a component, or none for colours of the parts.
  void choose_variables_and_scalar() {
    std::vector<std::string> items = split_variables(session_, options_.variables);
    const bool is_none = !items.empty() && items.front() == "none" && !is_variable(session_, "none");
    if (is_none) items.erase(items.begin());
    choice_.variables = choose_quantities(session_, items);
    if (!is_none)
      choice_.scalar =
          items.empty() ? first_scalar(session_, entries_.coloured()) : scalar_of(choice_.variables.front());
    for (Quantity& quantity : choice_.variables) quantity.component.reset();
    // Those of the file come first.
    const auto rank = [](const Quantity& of) {
      return std::tuple(of.derived.has_value(), of.source_number(), std::string_view(of.variable.name));
    };
    std::sort(choice_.variables.begin(), choice_.variables.end(),
              [&](const Quantity& a, const Quantity& b) { return rank(a) < rank(b); });
    choice_.variables.erase(std::unique(choice_.variables.begin(), choice_.variables.end(), is_same_variable),
                            choice_.variables.end());
  }

  // The best that fits, with the steps that are in it.
  page::Scene fitting_scene(std::vector<std::size_t>& steps) {
    const std::vector<page::Precision> all = precisions(options_);
    for (const page::Precision precision : all) {
      page::Scene scene = read(precision).scene;
      const bool is_last = precision.value_bits == all.back().value_bits;
      for (std::size_t count = scene.step_count(); count > 0; --count) {
        steps = spread_steps(scene.step_count(), count);
        if (fits(scene, steps)) {
          tell_losses(all.front(), precision, steps, scene.step_count());
          return scene;
        }
        if (!is_last) break;
      }
      if (is_last)
        throw CommandError(
            ExitStatus::failure, options_.output,
            fmt::format("a page with one step takes {:.1f} MB: choose fewer parts or variables, or a larger "
                        "--max-size",
                        static_cast<double>(size_of(scene, steps)) / 1e6));
    }
    throw CommandError(ExitStatus::failure, options_.output, "there is nothing to write");
  }

  std::size_t size_of(const page::Scene& scene, const std::vector<std::size_t>& steps) const {
    return page::empty_page_size() + page::escape_json(about_).size() + kRoomForTexts + scene.size_of(steps);
  }

  bool fits(const page::Scene& scene, const std::vector<std::size_t>& steps) const {
    return options_.max_size == 0 || size_of(scene, steps) <= options_.max_size;
  }

  PageData read(page::Precision precision) {
    const ExitAtOnce at_once;  // no file is written yet, and VTK's filters cannot be stopped
    Progress progress("steps", choice_.steps.size(), ProgressUnit::steps);
    progress.update(0);
    PageData data = read_page_data(
        session_, choice_, entries_, precision,
        [&](bool is_first) {
          if (is_first && !has_told_) entries_.tell_missing(progress);
        },
        [&](std::size_t done) {
          progress.update(done);
          has_told_ = has_told_ || done == choice_.steps.size();
        });
    about_ =
        describe_page(session_, {choice_, entries_, range_.value_or(data.range.ends()), view_, options_});
    return data;
  }

  void tell_losses(page::Precision wanted, page::Precision used, const std::vector<std::size_t>& steps,
                   std::size_t all) const {
    std::string losses;
    if (wanted.value_bits != used.value_bits) losses = precision_text(used);
    if (steps.size() < all) {
      losses += fmt::format("{}{} of {} steps (", losses.empty() ? "" : ", ", steps.size(), all);
      for (const std::size_t step : steps)
        losses += fmt::format("{}{}", step == 0 ? "" : " ", choice_.steps[step]);
      losses += ")";
    }
    if (losses.empty()) return;
    const std::string line =
        fmt::format("fldtool: {}: to stay within --max-size it has {}", options_.output, losses);
    write_if_possible(STDERR_FILENO, host::without_controls(line) + "\n");
  }

  std::string page_title() const {
    return options_.title.value_or(host::message_to_utf8(session_.path().filename().string()));
  }

  host::Session& session_;
  const PageOptions& options_;
  std::optional<std::array<double, 2>> range_;
  render::View view_;
  PageChoice choice_;
  PageEntries entries_;
  nlohmann::json about_;
  bool has_told_ = false;
};

void run_page(const PageOptions& options) {
  vtkObject::GlobalWarningDisplayOff();  // errors are told in one line of our own
  check_extension(options.output, {".html", ".htm"});
  with_dataset(options.dataset, [&](host::Session& session) { PageMaker(session, options).write(); });
}

}  // namespace

void add_page_command(CLI::App& app) {
  const auto options = std::make_shared<PageOptions>();
  CLI::App* command = app.add_subcommand("page", "Write a dataset as a page for the browser");
  add_page_options(*command, *options);
  command->footer(std::string(kPageManual) + kDerivedText + kChoiceText + kExitStatusText);
  command->callback([options] { run_page(*options); });
}

}  // namespace tool
