// fldtool page
#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>
#include <vtkObject.h>

#include "fmt/format.h"
#include "host/bounding_box.h"
#include "host/display_names.h"
#include "host/error.h"
#include "host/text_encoding.h"
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
#include "tool/picture_parts.h"
#include "tool/progress.h"
#include "tool/vector_components.h"

namespace tool {
namespace {

constexpr char kManual[] =
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
        slices_(slices_of(options)) {
    choose();
  }

  void write() {
    about_ = describe_page(
        session_, {choice_, shown_.at(session_), faint_.at(session_), scalar_, range_, view_, options_});
    std::vector<std::size_t> steps;
    const page::Scene scene = fitting_scene(steps);
    Output output(options_.output);
    page::write_page(page_title(), about_, scene, steps,
                     [&](std::string_view piece) { output.write(piece); });
    output.finish();
  }

 private:
  void choose() {
    choice_.steps = choose_steps(session_, options_.steps);
    session_.select_step(choice_.steps.front());
    faint_ = choose_parts(session_, options_.faint);
    shown_ = options_.parts.empty() ? usual_parts(session_) : choose_parts(session_, options_.parts);
    choose_variables_and_scalar();
    names_ = host::part_names(session_);
    const std::vector<PartIdentity> identities = part_identities(session_);
    for (const int part : listed_parts()) {
      const auto place = static_cast<std::size_t>(part) - 1;
      choice_.entries.push_back({identities[place], part, names_[place], std::nullopt});
    }
    add_slices(identities);
    if (choice_.entries.empty())
      throw CommandError(ExitStatus::failure, options_.dataset.file, "there is no part to show");
  }

  // The first of the variables may be a component, or none for colours of the parts.
  void choose_variables_and_scalar() {
    std::vector<std::string> items = items_of(options_.variables);
    if (items.empty()) {
      scalar_ = first_scalar(session_, shown_.at(session_));
    } else if (items.front() == "none") {
      items.erase(items.begin());
    } else {
      scalar_ = find_first(items.front());
      items.front() = std::to_string(scalar_->variable);
    }
    choice_.variables = choose_variables(session_, items);
  }

  PictureScalar find_first(const std::string& item) {
    try {
      return find_scalar(session_, item);
    } catch (const CommandError&) {
      // A pattern, a range or all, or else no variable, which is told.
      return find_scalar(session_, std::to_string(choose_variables(session_, {item}).front()));
    }
  }

  // The parts whose outer faces are in the page, ascending.
  std::vector<int> listed_parts() const {
    std::set<int> parts;
    for (const ChosenParts* chosen : {&shown_, &faint_}) {
      const std::vector<int> numbers = chosen->at(session_);
      parts.insert(numbers.begin(), numbers.end());
    }
    if (options_.parts.empty() && !parts.empty()) {
      for (const host::Part& part : session_.parts()) {
        if (part.kind == host::PartKind::surface && part.element_count() > 0) parts.insert(part.number);
      }
    }
    return {parts.begin(), parts.end()};
  }

  // The volumes among the chosen parts, else all of them, else the whole meshes.
  std::vector<int> cut_parts() const {
    const auto with_cells = [](const host::Part& part) {
      return part.kind != host::PartKind::surface && part.element_count() > 0;
    };
    std::vector<int> parts;
    if (!options_.parts.empty()) {
      for (const int part : shown_.at(session_)) {
        if (with_cells(session_.part(part))) parts.push_back(part);
      }
    }
    for (const host::PartKind kind : {host::PartKind::volume, host::PartKind::whole}) {
      if (!parts.empty()) break;
      for (const host::Part& part : session_.parts()) {
        if (part.kind == kind && with_cells(part)) parts.push_back(part.number);
      }
    }
    return parts;
  }

  void add_slices(const std::vector<PartIdentity>& identities) {
    if (slices_.empty()) return;
    const std::vector<int> parts = cut_parts();
    if (parts.empty())
      throw CommandError(ExitStatus::failure, options_.dataset.file, "there is no volume to cut");
    for (const SliceOption& slice : slices_) {
      const CutPlane plane = {slice.axis, position_of(slice, parts)};
      for (const int part : parts) {
        const auto place = static_cast<std::size_t>(part) - 1;
        std::string name = fmt::format("{} at {} = {:.4g}", names_[place],
                                       kAxes[static_cast<std::size_t>(plane.axis)], plane.position);
        choice_.entries.push_back({identities[place], part, std::move(name), plane});
      }
    }
  }

  double position_of(const SliceOption& slice, const std::vector<int>& parts) {
    if (!slice.is_percentage) return slice.position;
    const auto axis = static_cast<std::size_t>(slice.axis);
    std::optional<std::array<double, 2>> ends;
    for (const int part : parts) {
      const auto box = host::bounding_box(session_.coordinates(part));
      if (!box) continue;
      const auto low = static_cast<double>(box->lowest[axis]);
      const auto high = static_cast<double>(box->highest[axis]);
      ends = ends ? std::array{std::min((*ends)[0], low), std::max((*ends)[1], high)} : std::array{low, high};
    }
    return ends ? (*ends)[0] + slice.position / 100 * ((*ends)[1] - (*ends)[0]) : 0;
  }

  // The best that fits, with the steps that are in it.
  page::Scene fitting_scene(std::vector<std::size_t>& steps) {
    const std::vector<page::Precision> all = precisions(options_);
    for (const page::Precision precision : all) {
      page::Scene scene = read(precision);
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

  page::Scene read(page::Precision precision) {
    const ExitAtOnce at_once;  // no file is written yet, and VTK's filters cannot be stopped
    Progress progress("steps", choice_.steps.size(), ProgressUnit::steps);
    progress.update(0);
    return make_scene(
        session_, choice_, precision,
        [&](bool is_first) {
          if (!is_first || has_told_) return;
          shown_.tell_missing(session_, progress);
          faint_.tell_missing(session_, progress);
        },
        [&](std::size_t done) {
          progress.update(done);
          has_told_ = has_told_ || done == choice_.steps.size();
        });
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
  std::vector<SliceOption> slices_;
  PageChoice choice_;
  ChosenParts shown_;
  ChosenParts faint_;
  std::vector<std::string> names_;
  std::optional<PictureScalar> scalar_;
  nlohmann::json about_;
  bool has_told_ = false;
};

void run_page(const PageOptions& options) {
  vtkObject::GlobalWarningDisplayOff();  // errors are told in one line of our own
  check_extension(options.output, {".html", ".htm"});
  OpenDataset dataset(options.dataset);
  try {
    PageMaker(dataset.session(), options).write();
  } catch (const host::Error& error) {
    throw CommandError(ExitStatus::unreadable, options.dataset.file, host::message_to_utf8(error.reason()));
  }
}

}  // namespace

void add_page_command(CLI::App& app) {
  const auto options = std::make_shared<PageOptions>();
  CLI::App* command = app.add_subcommand("page", "Write a dataset as a page for the browser");
  add_page_options(*command, *options);
  command->footer(std::string(kManual) + kChoiceText + kExitStatusText);
  command->callback([options] { run_page(*options); });
}

}  // namespace tool
