// fldtool extract
#include <memory>
#include <string>

#include "CLI/CLI.hpp"
#include "tool/choice.h"
#include "tool/commands.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/quantity.h"
#include "tool/series_command.h"

namespace tool {
namespace {

constexpr char kExtractManual[] =
    R"(Writes what 'fldtool convert' writes, cut down: to the steps, parts and variables that are chosen, and to the elements in
a box. OUT and the files are those of convert; its manual describes them.

--box takes two opposite corners of a box along the axes. An element is kept when at least one of its nodes is in the box,
so the box is filled; nodes that no such element has are dropped, and the others get new numbers. A part without an element
in the box is left out at that step; a .vtkhdf file has no box. Coordinates are those of the step; on the whole mesh of a mesh in cylindrical
coordinates they are radius, angle and height. It is an error when there is no element in the box at any step; the files of an earlier run stay then.

)";

}  // namespace

void add_extract_command(CLI::App& app) {
  const auto options = std::make_shared<SeriesCommandOptions>();
  CLI::App* command = app.add_subcommand("extract", "Write a piece of a dataset as VTK files");
  add_series_options(*command, *options);
  command->add_option("--box", options->box, "X,Y,Z:X,Y,Z: only elements with a node in this box")
      ->type_name("POINTS")
      ->check(not_empty());
  command->footer(std::string(kExtractManual) + kDerivedText + kChoiceText + kExitStatusText);
  command->callback([options] { write_series(*options); });
}

}  // namespace tool
