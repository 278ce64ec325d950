#include "tool/render_options.h"

#include <charconv>
#include <cmath>
#include <stdexcept>
#include <string_view>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "render/fonts.h"
#include "tool/choice.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/jobs.h"
#include "tool/number_range.h"
#include "tool/picture_size.h"

namespace tool {
namespace {

using Numbers = std::vector<double>;

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

double parse_number(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number))
    throw std::invalid_argument("not a number");
  return number;
}

// Finite numbers with commas between them.
Numbers parse_numbers(std::string_view text) {
  Numbers numbers;
  for (;;) {
    const std::size_t comma = text.find(',');
    numbers.push_back(parse_number(text.substr(0, comma)));
    if (comma == std::string_view::npos) return numbers;
    text.remove_prefix(comma + 1);
  }
}

std::array<double, 3> as_triple(const Numbers& numbers) {
  if (numbers.size() != 3) throw std::invalid_argument("not three numbers");
  return {numbers[0], numbers[1], numbers[2]};
}

// What is in front of the colon and behind it.
std::pair<Numbers, Numbers> parse_two(const std::string& text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string::npos) throw std::invalid_argument("no colon");
  const std::string_view whole = text;
  return {parse_numbers(whole.substr(0, colon)), parse_numbers(whole.substr(colon + 1))};
}

std::array<double, 2> parse_limits(const std::string& text) {
  const std::array<double, 2> range = render::parse_pair(text);
  constexpr double kNarrowest = 1e-300;  // single precision ends long before
  constexpr double kWidest = 1e300;
  const double width = range[1] - range[0];
  if (!(width >= kNarrowest && width <= kWidest)) throw std::invalid_argument("not a range");
  return range;
}

// For an option that is a number in a range.
CLI::Validator number_from(double least, double most) {
  return CLI::Validator(
      [least, most](std::string& text) {
        try {
          const double number = parse_number(text);
          if (number >= least && number <= most) return std::string();
        } catch (const std::invalid_argument&) {
          // The same message as for a number out of range.
        }
        return fmt::format("'{}' is not a number from {} to {}", text, least, most);
      },
      "");
}

}  // namespace

void add_render_options(CLI::App& command, RenderOptions& options) {
  add_dataset_options(command, options.dataset);
  command
      .add_option(
          "-o,--output", options.output,
          "The .png file, or film (.webm, .mp4, .gif), to write (default: the name of FILE with .png); "
          "- is standard output")
      ->check(file_name());
  add_steps_option(command, options.steps, "The steps to draw");
  add_parts_option(command, options.parts, "The parts to show, in colours");
  add_list_option(command, "--faint", options.faint, "The parts to show grey and translucent");
  add_list_option(command, "--variable,--variables", options.variables,
                  "What the colours show: NAME, NAME.x, grad(NAME), ... or none");
  command.add_option("--slice", options.slices, "X,Y,Z:NX,NY,NZ: a cut through a point, across a normal")
      ->expected(1)
      ->take_all();
  command.add_option("--iso", options.isosurfaces, "NAME=VALUE: the surface where a variable has a value")
      ->expected(1)
      ->take_all();
  command
      .add_option("--streamlines", options.streamlines,
                  "X,Y,Z:X,Y,Z or X,Y,Z:R: lines along the flow, through points of a line or a sphere")
      ->expected(1)
      ->take_all();
  command.add_option("--flow", options.flow, "The vector that streamlines follow (default: the first one)")
      ->check(not_empty());
  command.add_option("--seeds", options.seeds, "How many streamlines begin on each line or in each sphere")
      ->check(whole_number(1, 10000))
      ->capture_default_str();
  command.add_option("--arrows", options.arrows, "NAME: a vector as arrows on the cuts or parts")
      ->check(not_empty());
  command
      .add_option("--compare", options.compare, "A dataset with the same mesh, to draw the difference from")
      ->check(file_name());
  command.add_option("--range", options.range, "LOW,HIGH: the range of the colours")->check(not_empty());
  command
      .add_option("--colours,--colors", options.colours,
                  "The colour map (default: viridis; cool-warm with --compare)")
      ->check(CLI::IsMember(render::colour_map_names()));
  command.add_option("--view", options.view, "The direction of view: iso, +x, ... or AZIMUTH,ELEVATION")
      ->capture_default_str();
  add_list_option(command, "--focus", options.focus,
                  "The parts that the picture has room for (default: all)");
  command.add_option("--zoom", options.zoom, "How many times larger than what fits")
      ->check(number_from(0.01, 1000))
      ->capture_default_str();
  command.add_flag("--edges", options.edges, "Draw the edges of all elements");
  command.add_option("--size", options.size, "WIDTHxHEIGHT in pixels")->capture_default_str();
  command.add_option("--background", options.background, "white, grey, black or #rrggbb")
      ->capture_default_str();
  command.add_option("--title", options.title, "The title (default: file, step and time)");
  command.add_option("--font", options.font, "The font file for all texts")->check(file_name());
  command.add_option("--fps", options.fps, "How many steps a film shows in a second")
      ->check(number_from(0.1, 120))
      ->capture_default_str();
  add_jobs_option(command, options.jobs);
}

render::SceneOptions scene_options(const RenderOptions& options) {
  render::SceneOptions scene;
  const auto size = picture_size("render", options.size);
  scene.width = size[0];
  scene.height = size[1];
  scene.view = parsed("--view", options.view,
                      "iso, +x, -x, +y, -y, +z, -z or AZIMUTH,ELEVATION with an elevation from -90 to 90",
                      render::parse_view);
  scene.background =
      parsed("--background", options.background, "white, grey, black or #rrggbb", render::parse_colour);
  scene.mesh_edges = options.edges;
  scene.zoom = options.zoom;
  if (!options.font.empty() && !render::is_font_file(options.font))
    throw CommandError(ExitStatus::usage, options.font, "not a font file");
  return scene;
}

std::optional<std::array<double, 2>> colour_range(const RenderOptions& options) {
  if (options.range.empty()) return std::nullopt;
  return parsed("--range", options.range, "LOW,HIGH", parse_limits);
}

analysis::CutPlane parse_plane(const std::string& text) {
  return parsed("--slice", text, "X,Y,Z:NX,NY,NZ, a point and a direction", [](const std::string& slice) {
    const auto [origin, normal] = parse_two(slice);
    const analysis::CutPlane plane{as_triple(origin), as_triple(normal)};
    const double length = std::hypot(plane.normal[0], plane.normal[1], plane.normal[2]);
    if (!(length > 0) || !std::isfinite(length)) throw std::invalid_argument("not a direction");
    return plane;
  });
}

std::pair<std::string, double> parse_isosurface(const std::string& text) {
  return parsed("--iso", text, "NAME=VALUE", [](const std::string& iso) {
    const std::size_t equals = iso.rfind('=');
    if (equals == std::string::npos || equals == 0) throw std::invalid_argument("no name");
    return std::pair(iso.substr(0, equals), parse_number(std::string_view(iso).substr(equals + 1)));
  });
}

analysis::Seeds parse_seeds(const std::string& text) {
  return parsed("--streamlines", text, "X,Y,Z:X,Y,Z, a line, or X,Y,Z:R, a sphere",
                [](const std::string& seeds) -> analysis::Seeds {
                  const auto [first, second] = parse_two(seeds);
                  if (second.size() != 1) return analysis::SeedLine{as_triple(first), as_triple(second)};
                  if (!(second.front() > 0)) throw std::invalid_argument("not a radius");
                  return analysis::SeedSphere{as_triple(first), second.front()};
                });
}

}  // namespace tool
