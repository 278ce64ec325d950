// fldtool render
#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>
#include <vtkObject.h>

#include "fmt/format.h"
#include "host/error.h"
#include "host/text_encoding.h"
#include "render/scene.h"
#include "tool/choice.h"
#include "tool/commands.h"
#include "tool/dataset_options.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/fonts.h"
#include "tool/interrupt.h"
#include "tool/output.h"
#include "tool/picture_parts.h"
#include "tool/progress.h"

namespace tool {
namespace {

constexpr char kManual[] =
    R"(Draws parts of the dataset that FILE belongs to and writes a PNG file, or with several steps one for each: picture.png
becomes picture_0.png, picture_1.png and so on, numbered with the same count of digits. With --output - one picture goes to
the standard output stream. No display is needed.

What is shown are the outer faces of the parts. Without --parts these are the surfaces that are in none of the reader's
groups, or else the volumes. Parts of --faint are grey and translucent.

The colours are those of a scalar, or of the component (Velocity.x) or magnitude (Velocity or Velocity.magnitude) of a
vector; without --variable of the first scalar, and with --variable none each part has a colour of its own. They reach
over the values on the coloured parts at all steps that are drawn, which are read once more for that if there are
several; --range sets the ends. Values beyond the ends have the end's colour, undefined values are grey.

--view is the side that is looked at (+x, -x, +y, -y, +z, -z), iso, or the eye's place as two angles in degrees:
AZIMUTH,ELEVATION, from +x towards +y and above the xy plane.

Colour maps: viridis (equal steps look equal), inferno (the same, from black), cool-warm (around a middle), turbo (many
colours), grey.

Letters beyond Latin ones need a font that has them: one of the system's is looked for, --font names another.

)";

struct RenderOptions {
  DatasetOptions dataset;
  std::vector<std::string> steps = {"0"};
  std::vector<std::string> parts;
  std::vector<std::string> faint;
  std::string variable;
  std::string view = "iso";
  std::string range;
  std::string colours = render::colour_map_names().front();
  std::string size = "1200x900";
  std::string background = "white";
  std::optional<std::string> title;
  std::string font;
  bool edges = false;
  std::string output;
};

// For options with a form of their own: says what is wrong if `parse` throws std::invalid_argument.
template <typename Parse>
auto parsed(const char* option, const std::string& text, const char* wanted, Parse parse) {
  try {
    return parse(text);
  } catch (const std::invalid_argument&) {
    throw CommandError(ExitStatus::usage,
                       fmt::format("{}: '{}' is not {} (see fldtool --help)", option, text, wanted));
  }
}

std::array<int, 2> parse_size(const std::string& text) {
  constexpr int kSmallest = 64;
  constexpr int kLargest = 4096;
  std::string pair = text;
  const std::size_t times = pair.find('x');
  if (times == std::string::npos) throw std::invalid_argument("no size");
  pair[times] = ',';
  const auto [width, height] = render::parse_pair(pair);
  for (const double length : {width, height}) {
    if (length < kSmallest || length > kLargest || length != static_cast<double>(static_cast<int>(length)))
      throw std::invalid_argument("no size");
  }
  return {static_cast<int>(width), static_cast<int>(height)};
}

std::array<double, 2> parse_range(const std::string& text) {
  const std::array<double, 2> range = render::parse_pair(text);
  if (!(range[0] < range[1])) throw std::invalid_argument("no range");
  return range;
}

render::SceneOptions scene_options(const RenderOptions& options) {
  render::SceneOptions scene;
  const auto size = parsed("--size", options.size, "WIDTHxHEIGHT in pixels, 64 to 4096 each", parse_size);
  scene.width = size[0];
  scene.height = size[1];
  scene.view =
      parsed("--view", options.view, "iso, +x, -x, +y, -y, +z, -z or AZIMUTH,ELEVATION", render::parse_view);
  scene.background =
      parsed("--background", options.background, "white, grey, black or #rrggbb", render::parse_colour);
  scene.mesh_edges = options.edges;
  if (!options.font.empty() && !is_font_file(options.font))
    throw CommandError(ExitStatus::usage, options.font, "this is no font file");
  return scene;
}

// What is drawn, as chosen on the command line.
struct Choice {
  std::vector<int> steps;
  ChosenParts parts;  // in colours, but for those that are faint
  ChosenParts faint;
  std::optional<PictureScalar> scalar;
  std::optional<ValueRange> range;

  // The numbers of the parts in colours at the session's step.
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
  if (options.variable.empty()) {
    choice.scalar = first_scalar(session);
  } else if (options.variable != "none") {
    choice.scalar = find_scalar(session, options.variable);
  }
  if (!options.range.empty()) {
    const auto [low, high] = parsed("--range", options.range, "LOW,HIGH", parse_range);
    choice.range = ValueRange{low, high, true};
  }
  return choice;
}

// The range over all steps, so that one colour means the same in all pictures.
ValueRange range_of_steps(host::Session& session, const Choice& choice, Progress& progress) {
  ValueRange range;
  std::size_t done = 0;
  for (const int step : choice.steps) {
    session.select_step(step);
    for (const int part : choice.coloured(session)) {
      stop_if_interrupted();
      range.add(scalar_values(session, *choice.scalar, part));
    }
    progress.update(++done);
  }
  return range;
}

std::string usual_title(const host::Session& session) {
  const float time = session.variable_times().times[static_cast<std::size_t>(session.step())];
  return fmt::format("{}    step {}    t = {}", host::message_to_utf8(session.path().filename().string()),
                     session.step(), time);
}

std::filesystem::path picture_path(const RenderOptions& options, const Choice& choice, int step) {
  std::filesystem::path path = options.output;
  if (path.empty()) path = std::filesystem::path(options.dataset.file).filename().replace_extension(".png");
  if (choice.steps.size() == 1) return path;
  const std::string number = fmt::format("_{:0{}}", step, std::to_string(choice.steps.back()).size());
  return path.parent_path() / (path.stem().string() + number + path.extension().string());
}

class Renderer {
 public:
  Renderer(host::Session& session, const RenderOptions& options)
      : session_(session),
        options_(options),
        scene_(scene_options(options)),
        choice_(choose(session, options)),
        studio_(scene_.width, scene_.height) {
    if (choice_.parts.size() + choice_.faint.size() == 0)
      throw CommandError(ExitStatus::failure, options.dataset.file, "there is no part to draw");
    if (options.output == kStandardOutput && choice_.steps.size() > 1)
      throw CommandError(ExitStatus::usage, "several pictures need a file name for --output");
  }

  void draw_all() {
    const bool has_passes = choice_.scalar && !choice_.range && choice_.steps.size() > 1;
    if (has_passes) {
      Progress progress("ranges", choice_.steps.size(), ProgressUnit::steps);
      choice_.range = range_of_steps(session_, choice_, progress);
    }
    Progress progress("pictures", choice_.steps.size(), ProgressUnit::steps);
    std::size_t done = 0;
    for (const int step : choice_.steps) {
      stop_if_interrupted();
      session_.select_step(step);
      choice_.parts.tell_missing(session_, progress);
      choice_.faint.tell_missing(session_, progress);
      progress.update(done++);
      draw(step);
    }
  }

 private:
  // The session's step.
  void draw(int step) {
    ValueRange range;
    std::vector<render::ShownPart> parts;
    for (const int part : choice_.coloured(session_)) {
      stop_if_interrupted();
      parts.push_back(make_shown_part(session_, part, choice_.scalar, range));
    }
    for (const int part : choice_.faint.at(session_)) {
      ValueRange unused;
      parts.push_back(make_shown_part(session_, part, std::nullopt, unused));
      parts.back().is_faint = true;
    }
    render::SceneOptions scene = scene_;
    scene.title = options_.title.value_or(usual_title(session_));
    scene.font = options_.font;
    if (choice_.scalar) {
      const ValueRange ends = choice_.range.value_or(range).widened();
      scene.scale = render::ColourScale{options_.colours, ends.low, ends.high, choice_.scalar->title};
    }
    if (scene.font.empty())
      scene.font = font_for(scene.title + (scene.scale ? scene.scale->title : std::string()));
    Output output(picture_path(options_, choice_, step).string());
    output.write(studio_.draw(parts, scene));
    output.finish();
  }

  host::Session& session_;
  const RenderOptions& options_;
  render::SceneOptions scene_;
  Choice choice_;
  render::Studio studio_;
};

void run_render(const RenderOptions& options) {
  check_extension(options.output, {".png"});
  vtkObject::GlobalWarningDisplayOff();  // errors are told in one line of our own
  OpenDataset dataset(options.dataset);
  try {
    Renderer(dataset.session(), options).draw_all();
  } catch (const host::Error& error) {
    throw CommandError(ExitStatus::unreadable, options.dataset.file, host::message_to_utf8(error.reason()));
  }
}

}  // namespace

void add_render_command(CLI::App& app) {
  const auto options = std::make_shared<RenderOptions>();
  CLI::App* command = app.add_subcommand("render", "Draw a dataset into a PNG file");
  add_dataset_options(*command, options->dataset);
  command
      ->add_option("-o,--output", options->output,
                   "The PNG file to write (otherwise named like FILE); - is the standard output stream")
      ->check(file_name());
  add_steps_option(*command, options->steps, "The steps to draw")->capture_default_str();
  add_parts_option(*command, options->parts, "The parts to show in colours");
  add_list_option(*command, "--faint", options->faint, "The parts to show grey and translucent");
  command->add_option("--variable,--variables", options->variable,
                      "What the colours mean: NAME, NAME.x, ... or none");
  command->add_option("--range", options->range, "LOW,HIGH: the values at the ends of the colours");
  command->add_option("--colours,--colors", options->colours, "The colour map")
      ->check(CLI::IsMember(render::colour_map_names()))
      ->capture_default_str();
  command->add_option("--view", options->view, "From where: iso, +x, ... or AZIMUTH,ELEVATION")
      ->capture_default_str();
  command->add_flag("--edges", options->edges, "Draw the edges of all elements");
  command->add_option("--size", options->size, "WIDTHxHEIGHT in pixels")->capture_default_str();
  command->add_option("--background", options->background, "white, grey, black or #rrggbb")
      ->capture_default_str();
  command->add_option("--title", options->title, "The text above (file, step and time without it)");
  command->add_option("--font", options->font, "A font file for all texts")->check(file_name());
  command->footer(std::string(kManual) + kChoiceText + kExitStatusText);
  command->callback([options] { run_render(*options); });
}

}  // namespace tool
