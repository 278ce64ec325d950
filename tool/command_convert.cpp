// fldtool convert
#include <memory>
#include <string>

#include "CLI/CLI.hpp"
#include "tool/choice.h"
#include "tool/commands.h"
#include "tool/exit_status.h"
#include "tool/quantity.h"
#include "tool/series_command.h"

namespace tool {
namespace {

constexpr char kConvertManual[] =
    R"(Writes the dataset that FILE belongs to as VTK files, which ParaView and other programs open. OUT is the file NAME.pvd
to open, or a folder, in which it is named like FILE. The data files go next to it:

  NAME.pvd                      the series: a time and a composite dataset for each step
  NAME/step_N.vtm               the step's parts under Surfaces, Volumes and Whole mesh, the groups of surfaces as folders
  NAME/step_N/part_P_NAME.vtu   a part: its nodes and elements with the values of the variables

When OUT is NAME.vtkhdf, all steps go into this one file, in the format VTKHDF: a collection of grids over time, one for
each part, under the same hierarchy. A mesh that does not change from one step to the next is in it once. VTK 9.4, ParaView
5.13 and later versions open such files.

Values per node become point data, those per element cell data; an undefined value is NaN. The elements are in the order
tri, quad, tet, pyramid, prism, hex; prisms have their corners as in VTK up to 9.6. Names are in UTF-8; when several parts
have the same name, their numbers follow it. In a .vtu file each part also has its time (TimeValue) and the labels of the
variables (Labels) as field data; the data is binary, appended without encoding, with 64-bit offsets.

The default parts are surfaces and volumes; the whole mesh has the elements of the volumes again. The parts are written one
after the other, so memory follows the largest of them, once per job of --jobs; a .vtkhdf file is written by one job, which
keeps the last mesh of every part. Files with these names are replaced step by step. Files of an earlier run that this run
does not write are removed, by the list that convert keeps in NAME/.fldtool-files; all other files stay. When the work is
interrupted, or a later step cannot be read, NAME.pvd or NAME.vtkhdf has all steps that were completed before.

)";

}  // namespace

void add_convert_command(CLI::App& app) {
  const auto options = std::make_shared<SeriesCommandOptions>();
  CLI::App* command = app.add_subcommand("convert", "Write a dataset as VTK files");
  add_series_options(*command, *options);
  command->footer(std::string(kConvertManual) + kDerivedText + kChoiceText + kExitStatusText);
  command->callback([options] { write_series(*options); });
}

}  // namespace tool
