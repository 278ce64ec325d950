#include "tool/page_options.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <stdexcept>
#include <string_view>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "tool/choice.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/named_values.h"
#include "tool/vector_components.h"

namespace tool {
namespace {

CommandError wrong(const char* option, const std::string& text, const char* wanted) {
  return {ExitStatus::usage,
          fmt::format("{}: '{}' is not {} (see fldtool page --help)", option, text, wanted)};
}

// "x", "x=0.25" or "x=30%".
SliceOption parse_slice(const std::string& text) {
  const auto refused = [&] { return wrong("--slice", text, "AXIS, AXIS=COORDINATE or AXIS=PER_CENT%"); };
  SliceOption slice;
  for (const char* axis : kAxes) {
    if (text.starts_with(axis)) break;
    ++slice.axis;
  }
  if (slice.axis == static_cast<int>(kAxes.size())) throw refused();
  if (text.size() == 1) return slice;
  if (text[1] != '=') throw refused();
  std::string_view number = std::string_view(text).substr(2);
  slice.is_percentage = number.ends_with('%');
  if (slice.is_percentage) number.remove_suffix(1);
  if (number.starts_with('+')) number.remove_prefix(1);
  const auto parsed = std::from_chars(number.data(), number.data() + number.size(), slice.position);
  if (parsed.ec != std::errc() || parsed.ptr != number.data() + number.size() ||
      !std::isfinite(slice.position))
    throw refused();
  return slice;
}

}  // namespace

void add_page_options(CLI::App& command, PageOptions& options) {
  add_dataset_options(command, options.dataset);
  command.add_option("OUT", options.output, "The .html file to write; - is the standard output stream")
      ->check(file_name())
      ->required();
  add_steps_option(command, options.steps, "The steps to put into the page (default: all)");
  add_parts_option(command, options.parts, "The parts to put into the page");
  add_list_option(command, "--faint", options.faint, "The parts that are translucent at first");
  add_list_option(
      command, "--slice", options.slices,
      "Cuts through the volumes: x (the middle), x=COORDINATE, x=PER_CENT%, and the same of y and z");
  add_variables_option(command, options.variables,
                       "The variables to put into the page (default: all); the first one is shown at first");
  command.add_option("--range", options.range, "LOW,HIGH: the values at the ends of the colours at first")
      ->check(not_empty());
  command.add_option("--colours,--colors", options.colours, "The colour map at first")
      ->check(CLI::IsMember(render::colour_map_names()))
      ->capture_default_str();
  command.add_option("--view", options.view, "From where at first: iso, +x, ... or AZIMUTH,ELEVATION")
      ->capture_default_str();
  command.add_flag("--edges", options.edges, "Show the edges of all elements at first");
  command.add_option("--title", options.title, "The title (file, step and time without it)");
  command
      .add_option("--precision", options.full,
                  "compact (16 bits; the default) or full (single precision) coordinates and values")
      ->transform(named_values<bool>({{"compact", false}, {"full", true}}));
  command
      .add_option(
          "--max-size", options.max_size,
          "The size that the page may have, such as 20MB: precision and then steps are given up for it")
      ->transform(CLI::AsSizeValue(true));
}

std::vector<SliceOption> slices_of(const PageOptions& options) {
  std::vector<SliceOption> slices;
  for (const std::string& text : list_items(options.slices)) slices.push_back(parse_slice(text));
  return slices;
}

std::vector<std::string> list_items(const std::vector<std::string>& lists) {
  std::vector<std::string> items;
  for (const std::string& list : lists) {
    for (std::size_t from = 0; from <= list.size();) {
      const std::size_t comma = std::min(list.find(',', from), list.size());
      const std::string item = list.substr(from, comma - from);
      const std::size_t first = item.find_first_not_of(' ');
      if (first != std::string::npos)
        items.push_back(item.substr(first, item.find_last_not_of(' ') - first + 1));
      from = comma + 1;
    }
  }
  return items;
}

std::optional<std::array<double, 2>> range_of(const PageOptions& options) {
  if (options.range.empty()) return std::nullopt;
  try {
    const std::array<double, 2> range = render::parse_pair(options.range);
    constexpr double kNarrowest = 1e-300;  // beyond what single precision tells apart
    constexpr double kWidest = 1e300;
    const double width = range[1] - range[0];
    if (width >= kNarrowest && width <= kWidest) return range;
  } catch (const std::invalid_argument&) {
    // Refused below, as a range that is none.
  }
  throw wrong("--range", options.range, "LOW,HIGH");
}

render::View view_of(const PageOptions& options) {
  try {
    return render::parse_view(options.view);
  } catch (const std::invalid_argument&) {
    throw wrong("--view", options.view,
                "iso, +x, -x, +y, -y, +z, -z or AZIMUTH,ELEVATION with an elevation from -90 to 90");
  }
}

}  // namespace tool
