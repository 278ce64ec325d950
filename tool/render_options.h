// The command line of fldtool render.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/cuts.h"
#include "analysis/streamlines.h"
#include "render/colour_map.h"
#include "render/scene.h"
#include "tool/cli_names.h"
#include "tool/dataset_options.h"

namespace tool {

struct RenderOptions {
  DatasetOptions dataset;
  std::vector<std::string> steps = {"0"};
  std::vector<std::string> parts;
  std::vector<std::string> faint;
  std::vector<std::string> variables;
  std::vector<std::string> slices;
  std::vector<std::string> isosurfaces;
  std::vector<std::string> streamlines;
  std::string flow;
  int seeds = 25;
  std::string arrows;
  std::string compare;
  std::string view = "iso";
  std::vector<std::string> focus;
  double zoom = 1;
  std::string range;
  std::optional<std::string> colours;
  std::string size = "1200x900";
  std::string background = "white";
  std::optional<std::string> title;
  std::string font;
  bool edges = false;
  double fps = 10;
  int jobs = 0;
  std::string output;

  // Whether something is drawn that lies inside the volumes.
  bool has_cuts() const { return !slices.empty() || !isosurfaces.empty() || !streamlines.empty(); }
};

void add_render_options(CLI::App& command, RenderOptions& options);

// What the texts mean. Each throws CommandError (wrong usage).
render::SceneOptions scene_options(const RenderOptions& options);
std::optional<std::array<double, 2>> colour_range(const RenderOptions& options);
analysis::CutPlane parse_plane(const std::string& text);
// The name in front of the last "=", and the value.
std::pair<std::string, double> parse_isosurface(const std::string& text);
analysis::Seeds parse_seeds(const std::string& text);

}  // namespace tool
