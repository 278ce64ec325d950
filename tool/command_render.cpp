// fldtool render
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include <vtkObject.h>

#include "CLI/CLI.hpp"
#include "tool/choice.h"
#include "tool/commands.h"
#include "tool/compared_dataset.h"
#include "tool/dataset_options.h"
#include "tool/exit_status.h"
#include "tool/file_names.h"
#include "tool/film.h"
#include "tool/quantity.h"
#include "tool/render_options.h"
#include "tool/renderer.h"

namespace tool {
namespace {

constexpr char kRenderManual[] =
    R"(Draws parts of the dataset that FILE belongs to into a PNG file. With several steps each gets a file of its own:
picture.png becomes picture_0.png, picture_1.png and so on, with the same number of digits in all names. With several
variables the names have the number and the name of the variable: picture_2_Velocity_x.png. With --output - a single
picture goes to standard output. No display is needed.

An --output that ends in .webm, .mp4 or .gif is a film of the steps, --fps of them a second: ffmpeg makes it. Where
ffmpeg is not installed, a line says so, and the pictures are written as PNG files. Camera, colours and lengths of arrows
are the same in all pictures.

A picture shows the outer faces of the parts: without --parts those of the surfaces that are in none of the reader's
groups, or else of the volumes. Parts of --faint are grey and translucent.

--slice, --iso and --streamlines show what is inside: of the volumes that --parts chooses, else of all. Each may be given
several times. Then the volumes themselves are not shown, and surfaces only where --parts or --faint chooses them; without
either the usual ones are faint. Streamlines follow the vector of --flow, both ways, from --seeds points on a line, or
spread through a sphere. Values are interpolated between the nodes; elements with an undefined corner are left out of
surfaces of a value and end streamlines. --arrows draws a vector on the cuts, or on the parts where there are none: one
dark arrow per place that has room, its length in proportion to the vector's; a cut hides those that point away from the
eye. --iso, --flow and --arrows take derived variables as --variable does.

--compare draws by how much the values are more than those of another dataset that has the same nodes at the same places;
parts, steps and variables are found there by kind and name, number, and name. The range of the colours is then as wide
above zero as below.

--focus makes room for some of the parts, and --zoom enlarges what fits; what reaches beyond is cut off.

Colours show a scalar, or a component (Velocity.x) or the magnitude (Velocity or Velocity.magnitude) of a vector. The
default is the first scalar; with --variable none each part has a colour of its own, and a key has their names. The range
of the colours is that of the values that are coloured at all steps drawn, for which several steps are read twice; --range
sets it. Values out of range have the colour of the nearer end. Undefined values are grey, and so are parts without the
variable; where faces coincide, defined values cover undefined ones. A variable that no step has on the parts is an error;
a picture of one of several steps that lacks it says so. Shading darkens the colours by a fifth at most.

--view is the side that is seen (+x, -x, +y, -y, +z, -z), iso, or the direction of the eye as AZIMUTH,ELEVATION in
degrees: the angle from +x towards +y, and the angle above the xy plane, from -90 to 90.

Colour maps: viridis and inferno (perceptually uniform), cool-warm (diverging), turbo (rainbow), grey.

The built-in font has Latin letters. For other characters a font of the system is used that has them, or that of --font;
a message names characters that are missing. Pictures of less than 120 pixels in width or height have no texts, legend or
axes.

)";

void check_options(const RenderOptions& options) {
  std::vector<std::string_view> extensions = {".png"};
  extensions.insert(extensions.end(), kFilmExtensions.begin(), kFilmExtensions.end());
  check_extension(options.output, extensions);
  if (!options.compare.empty() && options.variables == std::vector<std::string>{"none"})
    throw CommandError(ExitStatus::usage, "--compare draws the difference of a variable: --variable is none");
  if (!options.flow.empty() && options.streamlines.empty())
    throw CommandError(ExitStatus::usage, "--flow is what --streamlines follow, and there are none");
}

void run_render(const RenderOptions& options) {
  check_options(options);
  vtkObject::GlobalWarningDisplayOff();  // errors are reported in one line
  with_dataset(options.dataset, [&](host::Session& session) {
    std::optional<ComparedDataset> compared;
    if (!options.compare.empty()) compared.emplace(options.dataset, options.compare);
    draw_pictures(session, compared ? &*compared : nullptr, options);
  });
}

}  // namespace

void add_render_command(CLI::App& app) {
  const auto options = std::make_shared<RenderOptions>();
  CLI::App* command = app.add_subcommand("render", "Draw a dataset into a PNG file or a film");
  add_render_options(*command, *options);
  command->footer(std::string(kRenderManual) + kDerivedText + kChoiceText + kExitStatusText);
  command->callback([options] { run_render(*options); });
}

}  // namespace tool
