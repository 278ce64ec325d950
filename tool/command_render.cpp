// fldtool render
#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>
#include <vtkObject.h>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "host/error.h"
#include "host/text_encoding.h"
#include "nlohmann/json.hpp"
#include "render/fonts.h"
#include "render/scene.h"
#include "tool/best_effort_write.h"
#include "tool/choice.h"
#include "tool/commands.h"
#include "tool/coordinate_names.h"
#include "tool/dataset_options.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/interrupt.h"
#include "tool/jobs.h"
#include "tool/output.h"
#include "tool/picture_parts.h"
#include "tool/progress.h"
#include "tool/read_error.h"
#include "vtk/points.h"

namespace tool {
namespace {

constexpr char kRenderManual[] =
    R"(Draws parts of the dataset that FILE belongs to into a PNG file. With several steps each gets a file of its own:
picture.png becomes picture_0.png, picture_1.png and so on, with the same number of digits in all names. With several
variables the names have the number and the name of the variable: picture_2_Velocity_x.png. With --output - a single
picture goes to standard output. No display is needed.

A picture shows the outer faces of the parts: without --parts those of the surfaces that are in none of the reader's
groups, or else of the volumes. Parts of --faint are grey and translucent.

Colours show a scalar, or a component (Velocity.x) or the magnitude (Velocity or Velocity.magnitude) of a vector. The
default is the first scalar; with --variable none each part has a colour of its own. The range of the colours is that of
the values on the coloured parts at all steps drawn, for which several steps are read twice; --range sets it. Values out
of range have the colour of the nearer end. Undefined values are grey, and so are parts without the variable; where faces
coincide, defined values cover undefined ones. A variable that no step has on the parts is an error; a picture of one of
several steps that lacks it says so. Shading darkens the colours by a fifth at most.

--view is the side that is seen (+x, -x, +y, -y, +z, -z), iso, or the direction of the eye as AZIMUTH,ELEVATION in
degrees: the angle from +x towards +y, and the angle above the xy plane, from -90 to 90.

Colour maps: viridis and inferno (perceptually uniform), cool-warm (diverging), turbo (rainbow), grey.

The built-in font has Latin letters. For other characters a font of the system is used that has them, or that of --font;
a message names characters that are missing. Pictures of less than 120 pixels in width or height have no texts, legend or
axes.

)";

struct RenderOptions {
  DatasetOptions dataset;
  std::vector<std::string> steps = {"0"};
  std::vector<std::string> parts;
  std::vector<std::string> faint;
  std::vector<std::string> variables;
  std::string view = "iso";
  std::string range;
  std::string colours = render::colour_map_names().front();
  std::string size = "1200x900";
  std::string background = "white";
  std::optional<std::string> title;
  std::string font;
  bool edges = false;
  int jobs = 0;
  std::string output;
};

// parse(text); if that throws std::invalid_argument, an error that says what the option wants.
template <typename Parse>
auto parsed(const char* option, const std::string& text, const char* wanted, Parse parse) {
  try {
    return parse(text);
  } catch (const std::invalid_argument&) {
    throw CommandError(ExitStatus::usage,
                       fmt::format("{}: '{}' is not {} (see fldtool render --help)", option, text, wanted));
  }
}

std::array<int, 2> parse_size(const std::string& text) {
  constexpr int kSmallest = 64;
  constexpr int kLargest = 4096;
  std::string pair = text;
  const std::size_t times = pair.find('x');
  if (times == std::string::npos) throw std::invalid_argument("not a size");
  pair[times] = ',';
  const auto [width, height] = render::parse_pair(pair);
  for (const double length : {width, height}) {
    if (length < kSmallest || length > kLargest || length != static_cast<double>(static_cast<int>(length)))
      throw std::invalid_argument("not a size");
  }
  return {static_cast<int>(width), static_cast<int>(height)};
}

std::array<double, 2> parse_range(const std::string& text) {
  const std::array<double, 2> range = render::parse_pair(text);
  constexpr double kNarrowest = 1e-300;  // single precision ends long before
  constexpr double kWidest = 1e300;
  const double width = range[1] - range[0];
  if (!(width >= kNarrowest && width <= kWidest)) throw std::invalid_argument("not a range");
  return range;
}

render::SceneOptions scene_options(const RenderOptions& options) {
  render::SceneOptions scene;
  const auto size = parsed("--size", options.size, "WIDTHxHEIGHT in pixels, 64 to 4096 each", parse_size);
  scene.width = size[0];
  scene.height = size[1];
  scene.view = parsed("--view", options.view,
                      "iso, +x, -x, +y, -y, +z, -z or AZIMUTH,ELEVATION with an elevation from -90 to 90",
                      render::parse_view);
  scene.background =
      parsed("--background", options.background, "white, grey, black or #rrggbb", render::parse_colour);
  scene.mesh_edges = options.edges;
  if (!options.font.empty() && !render::is_font_file(options.font))
    throw CommandError(ExitStatus::usage, options.font, "not a font file");
  return scene;
}

// What the command line chooses.
struct Choice {
  std::vector<int> steps;
  ChosenParts parts;  // coloured unless they are faint
  ChosenParts faint;
  std::vector<std::optional<PictureScalar>> scalars;  // each gets pictures of its own
  std::optional<std::array<double, 2>> range;         // of the colours

  std::size_t pictures() const { return steps.size() * scalars.size(); }

  // The numbers of the coloured parts at the session's step.
  std::vector<int> coloured(const host::Session& session) const {
    std::vector<int> numbers = parts.at(session);
    const std::vector<int> others = faint.at(session);
    std::erase_if(numbers, [&](int part) { return std::binary_search(others.begin(), others.end(), part); });
    return numbers;
  }
};

Choice choose(host::Session& session, const RenderOptions& options) {
  Choice choice;
  choice.steps = choose_steps(session, options.steps);
  session.select_step(choice.steps.front());
  choice.faint = choose_parts(session, options.faint);
  choice.parts = options.parts.empty() ? usual_parts(session) : choose_parts(session, options.parts);
  if (options.variables.empty()) {
    choice.scalars = {first_scalar(session, choice.coloured(session))};
  } else if (options.variables == std::vector<std::string>{"none"}) {
    choice.scalars = {std::nullopt};
  } else {
    for (PictureScalar& scalar : find_scalars(session, options.variables))
      choice.scalars.emplace_back(std::move(scalar));
  }
  if (!options.range.empty()) choice.range = parsed("--range", options.range, "LOW,HIGH", parse_range);
  return choice;
}

// What the pictures of a series have in common.
struct Series {
  ValueRange range;
  render::Extent extent;
};

// Goes through all steps, so that colours and places mean the same in all pictures.
Series survey(host::Session& session, const Choice& choice, const std::optional<PictureScalar>& scalar,
              const render::View& view, Progress& progress) {
  Series series{{}, render::Extent(view)};
  std::size_t done = 0;
  for (const int step : choice.steps) {
    progress.update(done++);
    session.select_step(step);
    const auto add = [&](int part) {
      stop_if_interrupted();
      series.extent.add(vtkdata::make_points(session.coordinates(part)));
    };
    for (const int part : choice.coloured(session)) {
      add(part);
      if (scalar) series.range.add(scalar_values(session, *scalar, part), session.part(part).nodes);
    }
    for (const int part : choice.faint.at(session)) add(part);
  }
  return series;
}

// The lines of a title as UTF-8 without control characters.
std::string title_lines(const std::string& title) {
  std::vector<std::string> lines;
  std::istringstream stream(title);
  for (std::string line; std::getline(stream, line);)
    lines.push_back(host::without_controls(host::message_to_utf8(line)));
  return fmt::format("{}", fmt::join(lines, "\n"));
}

std::string usual_title(const host::Session& session) {
  const float time = session.variable_times().times[static_cast<std::size_t>(session.step())];
  return fmt::format("{}    step {}    t = {}",
                     host::without_controls(host::message_to_utf8(session.path().filename().string())),
                     session.step(), time);
}

std::filesystem::path picture_path(const RenderOptions& options, const Choice& choice,
                                   const std::optional<PictureScalar>& scalar, int step) {
  std::filesystem::path path = options.output;
  if (path.empty()) path = std::filesystem::path(options.dataset.file).filename().replace_extension(".png");
  std::string suffix;
  if (choice.scalars.size() > 1) suffix = fmt::format("_{}_{}", scalar->variable, plain_name(scalar->name));
  if (choice.steps.size() > 1)
    suffix += fmt::format("_{:0{}}", step, std::to_string(choice.steps.back()).size());
  return path.parent_path() / (path.stem().string() + suffix + path.extension().string());
}

class Renderer {
 public:
  Renderer(host::Session& session, const RenderOptions& options)
      : session_(session),
        options_(options),
        scene_(scene_options(options)),
        choice_(choose(session, options)),
        jobs_(usable_jobs(options.jobs, choice_.steps.size(), memory_of_step(session, choice_.steps))) {
    if (choice_.parts.size() + choice_.faint.size() == 0)
      throw CommandError(ExitStatus::failure, options.dataset.file, "there is no part to draw");
    if (options.output == kStandardOutput && choice_.pictures() > 1)
      throw CommandError(ExitStatus::usage, "several pictures need a file name for --output");
  }

  void draw_all() {
    for (const std::optional<PictureScalar>& scalar : choice_.scalars) {
      scalar_ = scalar;
      range_ = choice_.range;
      draw_steps();
    }
  }

 private:
  void draw_steps() {
    if (choice_.steps.size() > 1) {
      Progress progress("survey", choice_.steps.size(), ProgressUnit::steps);
      const Series series = survey(session_, choice_, scalar_, scene_.view, progress);
      require_values(series.range);
      scene_.extent = series.extent;
      if (!range_) range_ = series.range.ends();
    }
    Progress progress("pictures", choice_.steps.size(), ProgressUnit::steps);
    const auto draw_step = [&](std::size_t i) {
      progress.update(i);
      try {
        session_.select_step(choice_.steps[i]);
        choice_.parts.tell_missing(session_, progress);
        choice_.faint.tell_missing(session_, progress);
        missing_.clear();
        const std::string picture = draw();
        return Json{{"picture", as_bytes(picture)}, {"font", as_bytes(font_)}, {"missing", missing_}};
      } catch (const host::Error& error) {
        throw read_error(error, session_);
      }
    };
    progress.update(0);
    run_jobs(jobs_, choice_.steps.size(), draw_step, [&](std::size_t i, const Json& drawn) {
      report_missing(drawn.at("missing"), text_of(drawn.at("font")), progress);
      Output output(picture_path(options_, choice_, scalar_, choice_.steps[i]).string());
      output.write(text_of(drawn.at("picture")));
      output.finish();
      // The line is erased after the last picture, and would only flicker.
      if (i + 1 < choice_.steps.size()) progress.update(i + 1);
      return true;
    });
  }

  // `range` is that of all pictures of the scalar.
  void require_values(const ValueRange& range) const {
    if (!scalar_ || range.on_parts() != ValuesOnParts::none) return;
    const std::string variable = host::to_utf8(session_.variable(scalar_->variable).name);
    const std::string steps = choice_.steps.size() == 1 ? fmt::format("step {}", choice_.steps.front())
                                                        : std::string("any of the steps");
    throw CommandError(ExitStatus::usage, session_.path().string(),
                       fmt::format("variable {} is not there for the parts at {}", variable, steps));
  }

  // A picture of the session's step.
  std::string draw() {
    const ExitAtOnce while_vtk_works;
    ValueRange range;
    std::vector<render::ShownPart> parts;
    for (const int part : choice_.coloured(session_))
      parts.push_back(make_shown_part(session_, part, scalar_, range));
    if (choice_.steps.size() == 1) require_values(range);
    for (const int part : choice_.faint.at(session_)) {
      ValueRange unused;
      parts.push_back(make_shown_part(session_, part, std::nullopt, unused));
      parts.back().is_faint = true;
    }
    render::SceneOptions scene = scene_;
    if (are_cylindrical(choice_.coloured(session_)) && are_cylindrical(choice_.faint.at(session_)))
      std::copy(kCylindricalAxes.begin(), kCylindricalAxes.end(), scene.axes.begin());
    scene.title = options_.title ? title_lines(*options_.title) : usual_title(session_);
    if (scalar_) scene.scale = colour_scale(range);
    scene.font = choose_font(scene);
    // Made by the process that draws: a graphics context cannot be shared with a copy of the process.
    if (!renderer_) renderer_.emplace(scene_.width, scene_.height);
    return renderer_->draw(parts, scene);
  }

  // Whether all of these parts are drawn at their radius, angle and height.
  bool are_cylindrical(const std::vector<int>& parts) {
    return std::all_of(parts.begin(), parts.end(), [&](int part) {
      return coordinate_names_.of(session_, session_.part(part)) == kCylindricalAxes;
    });
  }

  // For a picture with values of this range.
  render::ColourScale colour_scale(const ValueRange& range) const {
    const auto [low, high] = range_.value_or(range.ends());
    render::ColourScale scale{options_.colours, low, high, scalar_->title, {}};
    if (range.on_parts() == ValuesOnParts::none) {
      scale.note = fmt::format("no {} at this step", scale.title);
    } else if (range.on_parts() == ValuesOnParts::undefined) {
      scale.note = fmt::format("{}: all values are undefined", scale.title);
    }
    return scale;
  }

  // Notes which characters it lacks.
  std::string choose_font(const render::SceneOptions& scene) {
    std::string text = scene.title;
    if (scene.scale) text += scene.scale->title + scene.scale->note;
    font_ = options_.font.empty() ? render::font_for(text) : options_.font;
    for (const char32_t character : render::missing_characters(text, font_))
      missing_.push_back(static_cast<std::uint32_t>(character));
    return font_;
  }

  // Reports the characters that a font lacks, each once.
  void report_missing(const std::vector<std::uint32_t>& characters, const std::string& font,
                      Progress& progress) {
    std::string missing;
    for (const std::uint32_t character : characters) {
      if (!reported_.insert(character).second) continue;
      missing += fmt::format("{}U+{:04X}", missing.empty() ? "" : ", ", character);
    }
    if (missing.empty()) return;
    progress.erase();
    const std::string name = font.empty() ? "the built-in font" : font;
    write_if_possible(STDERR_FILENO,
                      fmt::format("fldtool: {} lacks the characters {} (--font names another font)\n",
                                  host::message_to_utf8(name), missing));
  }

  host::Session& session_;
  const RenderOptions& options_;
  render::SceneOptions scene_;
  Choice choice_;
  int jobs_;
  std::optional<PictureScalar> scalar_;           // what the next picture shows
  std::optional<std::array<double, 2>> range_{};  // of its colours
  std::optional<render::SceneRenderer> renderer_;
  CoordinateNames coordinate_names_;
  std::string font_;                    // of the latest picture
  std::vector<std::uint32_t> missing_;  // characters that it lacks
  std::set<std::uint32_t> reported_;
};

void run_render(const RenderOptions& options) {
  check_extension(options.output, {".png"});
  vtkObject::GlobalWarningDisplayOff();  // errors are reported in one line
  OpenDataset dataset(options.dataset);
  try {
    Renderer(dataset.session(), options).draw_all();
  } catch (const host::Error& error) {
    throw read_error(error, dataset.session());
  }
}

}  // namespace

void add_render_command(CLI::App& app) {
  const auto options = std::make_shared<RenderOptions>();
  CLI::App* command = app.add_subcommand("render", "Draw a dataset into a PNG file");
  add_dataset_options(*command, options->dataset);
  command
      ->add_option("-o,--output", options->output,
                   "The PNG file to write (default: the name of FILE with .png); - is standard output")
      ->check(file_name());
  add_steps_option(*command, options->steps, "The steps to draw");
  add_parts_option(*command, options->parts, "The parts to show, in colours");
  add_list_option(*command, "--faint", options->faint, "The parts to show grey and translucent");
  add_list_option(*command, "--variable,--variables", options->variables,
                  "What the colours show: NAME, NAME.x, ... or none");
  command->add_option("--range", options->range, "LOW,HIGH: the range of the colours");
  command->add_option("--colours,--colors", options->colours, "The colour map")
      ->check(CLI::IsMember(render::colour_map_names()))
      ->capture_default_str();
  command->add_option("--view", options->view, "The direction of view: iso, +x, ... or AZIMUTH,ELEVATION")
      ->capture_default_str();
  command->add_flag("--edges", options->edges, "Draw the edges of all elements");
  command->add_option("--size", options->size, "WIDTHxHEIGHT in pixels")->capture_default_str();
  command->add_option("--background", options->background, "white, grey, black or #rrggbb")
      ->capture_default_str();
  command->add_option("--title", options->title, "The title (default: file, step and time)");
  command->add_option("--font", options->font, "The font file for all texts")->check(file_name());
  add_jobs_option(*command, options->jobs);
  command->footer(std::string(kRenderManual) + kChoiceText + kExitStatusText);
  command->callback([options] { run_render(*options); });
}

}  // namespace tool
