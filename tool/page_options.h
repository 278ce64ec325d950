// The command line of fldtool page.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "page/encoding.h"
#include "render/colour_map.h"
#include "render/view.h"
#include "tool/cli_names.h"
#include "tool/dataset_options.h"

namespace tool {

struct PageOptions {
  DatasetOptions dataset;
  std::string output;
  std::vector<std::string> steps;
  std::vector<std::string> parts;
  std::vector<std::string> faint;
  std::vector<std::string> slices;
  std::vector<std::string> variables;
  std::string range;
  std::string colours = render::colour_map_names().front();
  std::string view = "iso";
  std::optional<std::string> title;
  bool edges = false;
  bool full = false;
  std::uint64_t max_size = 0;  // bytes; 0: any
};

// Where to cut: a coordinate, or per cent of the way through what is cut.
struct SliceOption {
  int axis = 0;
  double position = 50;
  bool is_percentage = true;
};

void add_page_options(CLI::App& command, PageOptions& options);

// The items of lists that are separated by commas.
std::vector<std::string> list_items(const std::vector<std::string>& lists);

// What the texts mean. Each throws CommandError (wrong usage).
std::vector<SliceOption> slices_of(const PageOptions& options);
std::optional<std::array<double, 2>> range_of(const PageOptions& options);
render::View view_of(const PageOptions& options);

}  // namespace tool
