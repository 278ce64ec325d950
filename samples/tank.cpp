#include "samples/tank.h"

#include <cmath>
#include <string>

#include "samples/fields.h"
#include "testkit/element_faces.h"
#include "testkit/file_writer.h"

namespace samples::tank {
namespace {

// The node positions at a given time: the impeller's zone is rotated about the axis.
testkit::Nodes moved_nodes(const testkit::Mesh& mesh, double time) {
  testkit::Nodes nodes = mesh.nodes;
  std::vector<char> turns(static_cast<std::size_t>(nodes.size()), 0);
  const auto& zone = mesh.volumes.front().elements.values();
  testkit::for_each_element(mesh.elements, [&](std::int32_t number, std::int32_t, const auto& corners) {
    if (number > zone.back()) return;
    for (const auto node : corners) turns[static_cast<std::size_t>(node)] = 1;
  });
  const double c = std::cos(angle(time));
  const double s = std::sin(angle(time));
  for (std::size_t n = 0; n < turns.size(); ++n) {
    if (turns[n] == 0) continue;
    const double x = mesh.nodes.x.values()[n];
    const double y = mesh.nodes.y.values()[n];
    nodes.x.values()[n] = c * x - s * y;
    nodes.y.values()[n] = s * x + c * y;
  }
  return nodes;
}

testkit::Section motion_at(double time) {
  return testkit::motion_section(
      {.base_cycle = 0,
       .regions = {{.names = {"impeller_zone"},
                    .actions = {testkit::Action::rotate({0.0, 0.0, 0.0}, {0.0, 0.0, 1.0}, angle(time))}}},
       .name_length = 32});
}

}  // namespace

std::string file_name(int step) {
  return "tank_" + std::to_string(step * kCyclesPerStep) + ".fld";
}

SampleInfo write(const std::filesystem::path& directory) {
  return write_steps(directory, kSteps);
}

SampleInfo write_steps(const std::filesystem::path& directory, int steps) {
  const auto folder = directory / "tank";
  std::filesystem::create_directories(folder);
  const testkit::Mesh mesh = tank::mesh();
  const testkit::Layout layout{.surface_form = testkit::RegionForm::kArray,
                               .volume_form = testkit::RegionForm::kArray,
                               .name_length = 32};
  for (int step = 0; step < steps; ++step) {
    const double time = time_of_step(step);
    testkit::File file;
    file.header.set_cycle(step * kCyclesPerStep, time);
    testkit::RegionSet& set = file.add_region_set();
    if (step == 0) {
      set.add(testkit::mesh_sections(mesh, layout));
    } else {
      set.add(motion_at(time));
    }
    const testkit::Nodes nodes = moved_nodes(mesh, time);
    const auto at_time = [time](auto formula) {
      return [formula, time](double x, double y, double z) { return formula(x, y, z, time); };
    };
    set.add(scalar_section(scalar_at(nodes, "Pressure", "Static pressure [Pa]", at_time(pressure))));
    set.add(scalar_section(scalar_at(nodes, "Temperature", "Temperature [K]", at_time(temperature))));
    set.add(vector_section(vector_at(nodes, "Velocity", "Velocity [m/s]", at_time(velocity))));
    write_file(file, folder / file_name(step));
  }
  return {.name = "tank",
          .file = folder / file_name(0),
          .description = "stirred tank with a turning impeller; 8 steps, geometry in the first file alone"};
}

}  // namespace samples::tank
