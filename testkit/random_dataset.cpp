#include "testkit/random_dataset.h"

#include <algorithm>
#include <array>
#include <random>

#include "testkit/motion.h"
#include "testkit/quantity.h"

namespace testkit {
namespace {

constexpr float kUndefinedSingle = 1.0e30F;
constexpr double kUndefinedDouble = 1.0e300;

class Dice {
 public:
  explicit Dice(std::uint64_t seed) : engine_(seed) {}

  // 0 to sides - 1.
  int roll(int sides) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(sides)); }
  bool one_in(int sides) { return roll(sides) == 0; }
  // In steps of 1/64, so that both precisions hold it.
  double real(double from, double to) { return from + (to - from) / 64.0 * static_cast<double>(roll(65)); }
  Precision precision() { return one_in(2) ? Precision::kSingle : Precision::kDouble; }

 private:
  std::mt19937_64 engine_;
};

Nodes random_nodes(Dice& dice, int count, bool is_cylindrical) {
  Nodes nodes;
  for (Precision& precision : nodes.precision) precision = dice.precision();
  for (int i = 0; i < count; ++i) {
    nodes.add(dice.real(is_cylindrical ? 0.0 : -4.0, 4.0), dice.real(-3.0, 3.0), dice.real(-4.0, 4.0));
  }
  return nodes;
}

std::vector<std::int32_t> random_corners(Dice& dice, int count, int nodes, bool is_odd) {
  std::vector<std::int32_t> corners;
  // Corners near each other, as a mesh generator numbers them.
  const int middle = dice.roll(nodes);
  for (int i = 0; i < count; ++i) {
    int node = (middle + dice.roll(12)) % nodes;
    if (is_odd && dice.one_in(40)) node = dice.one_in(2) ? nodes + dice.roll(5) : -1 - dice.roll(3);
    corners.push_back(node);
  }
  return corners;
}

Elements random_elements(Dice& dice, int count, int nodes, bool is_odd) {
  constexpr std::array<std::int32_t, 6> kCodes = {kHexahedron, kTetrahedron, kPrism,
                                                  kPyramid,    kTriangle,    kQuadrilateral};
  Elements elements;
  const bool is_mixed = !dice.one_in(3);
  const std::int32_t only = kCodes[static_cast<std::size_t>(dice.roll(4))];
  const int kinds = is_odd && dice.one_in(2) ? 6 : 4;
  for (int e = 0; e < count; ++e) {
    const std::int32_t code = is_mixed ? kCodes[static_cast<std::size_t>(dice.roll(kinds))] : only;
    elements.add(code, random_corners(dice, corner_count(code), nodes, is_odd));
  }
  if (is_odd && dice.one_in(4)) elements.type.values()[static_cast<std::size_t>(dice.roll(count))] = 77;
  if (is_odd && dice.one_in(4)) elements.conn.values().resize(elements.conn.values().size() / 2);
  return elements;
}

Surface random_surface(Dice& dice, const std::string& name, int nodes, int elements, bool is_odd) {
  constexpr std::array<std::int32_t, 3> kCodes = {kQuadrilateralFace, kTriangleFace, kLineFace};
  Surface surface{.name = name};
  const int faces = dice.one_in(8) ? 0 : dice.roll(40);
  for (int f = 0; f < faces; ++f) {
    const std::int32_t code = kCodes[static_cast<std::size_t>(dice.roll(dice.one_in(4) ? 3 : 2))];
    const int link = dice.one_in(5) ? -1 : dice.roll(elements) + (is_odd && dice.one_in(20) ? elements : 0);
    surface.add(code, random_corners(dice, corner_count(code), nodes, is_odd), link);
  }
  return surface;
}

Volume random_volume(Dice& dice, const std::string& name, int elements, bool is_odd) {
  Volume volume{.name = name};
  std::vector<std::int32_t> list;
  if (dice.one_in(3)) {  // a stretch
    const int begin = dice.roll(elements);
    for (int e = begin; e < begin + dice.roll(elements - begin) + 1 && e < elements; ++e) list.push_back(e);
  } else {
    const int count = dice.roll(elements + 1);
    for (int i = 0; i < count; ++i) {
      list.push_back(dice.roll(elements) + (is_odd && dice.one_in(30) ? elements : 0));
    }
    if (dice.one_in(2)) std::sort(list.begin(), list.end());
  }
  volume.elements = list;
  return volume;
}

struct Sizes {
  int nodes = 0;
  int elements = 0;
};

Mesh random_mesh(Dice& dice, Sizes sizes, int surfaces, int volumes) {
  const bool is_odd = dice.one_in(3);
  Mesh mesh;
  const bool is_cylindrical = dice.one_in(4);
  if (is_cylindrical || dice.one_in(3)) mesh.coordinate_system = is_cylindrical ? 1 : 0;
  mesh.nodes = random_nodes(dice, sizes.nodes, is_cylindrical);
  mesh.elements = random_elements(dice, sizes.elements, sizes.nodes, is_odd);
  for (int s = 0; s < surfaces; ++s) {
    const std::string name = dice.one_in(4) ? "@wall" : dice.one_in(4) ? "&VFG_" : "wall";
    mesh.surfaces.push_back(
        random_surface(dice, name + std::to_string(s), sizes.nodes, sizes.elements, is_odd));
  }
  for (int v = 0; v < volumes; ++v) {
    mesh.volumes.push_back(random_volume(dice, "zone" + std::to_string(v), sizes.elements, is_odd));
  }
  const int materials = dice.one_in(4) ? dice.roll(sizes.elements + 3) : sizes.elements;
  if (!dice.one_in(6)) {
    std::vector<std::int32_t> list;
    const int lowest = dice.one_in(4) ? -3 : 1;
    for (int e = 0; e < materials; ++e) list.push_back(lowest + dice.roll(6));
    mesh.materials = list;
  }
  return mesh;
}

std::vector<double> random_values(Dice& dice, int count, double undefined) {
  std::vector<double> values;
  for (int i = 0; i < count; ++i) values.push_back(dice.one_in(9) ? undefined : dice.real(-100.0, 100.0));
  return values;
}

double undefined(Precision precision) {
  return precision == Precision::kSingle ? static_cast<double>(kUndefinedSingle) : kUndefinedDouble;
}

void add_quantities(Dice& dice, RegionSet& set, int nodes) {
  for (const char* name : {"Pressure", "Temperature", "@BNODE"}) {
    if (dice.one_in(4)) continue;
    const Precision precision = dice.precision();
    const int count = dice.one_in(8) ? dice.roll(nodes + 3) : nodes;
    set.add(scalar_section({.name = name,
                            .label = std::string(name) + " [Pa]",
                            .values = random_values(dice, count, undefined(precision)),
                            .precision = precision}));
  }
  if (dice.one_in(3)) return;
  Vector velocity{.name = "Velocity", .label = "Velocity"};
  for (Precision& precision : velocity.precision) precision = dice.precision();
  velocity.x = random_values(dice, nodes, undefined(velocity.precision[0]));
  velocity.y = random_values(dice, nodes, undefined(velocity.precision[1]));
  velocity.z = random_values(dice, nodes, undefined(velocity.precision[2]));
  set.add(vector_section(velocity));
}

Vec3 random_point(Dice& dice) {
  return {dice.real(-2.0, 2.0), dice.real(-2.0, 2.0), dice.real(-2.0, 2.0)};
}

Motion random_motion(Dice& dice, int base_cycle, int volumes) {
  Motion motion{.base_cycle = base_cycle};
  motion.precision = dice.precision();
  const int regions = 1 + dice.roll(3);
  for (int r = 0; r < regions; ++r) {
    MovingRegion region;
    region.names.push_back("zone" + std::to_string(dice.roll(volumes + 1)));
    if (dice.one_in(3)) region.names.push_back("zone" + std::to_string(dice.roll(volumes + 1)) + "_b");
    region.actions.push_back(Action::rotate(random_point(dice), random_point(dice), dice.real(-3.0, 3.0)));
    if (dice.one_in(2)) region.actions.push_back(Action::translate(random_point(dice)));
    if (dice.one_in(2)) region.actions.push_back(Action::scale(random_point(dice), random_point(dice)));
    if (dice.one_in(2)) {
      region.actions.push_back(Action::four_points(
          {Vec3{0, 0, 0}, Vec3{1, 0, 0}, Vec3{0, 1, 0}, Vec3{0, 0, 1}},
          {random_point(dice), random_point(dice), random_point(dice), random_point(dice)}));
    }
    motion.regions.push_back(region);
  }
  return motion;
}

Layout random_layout(Dice& dice) {
  return {.surface_form = dice.one_in(2) ? RegionForm::kArray : RegionForm::kPerRegion,
          .volume_form = dice.one_in(2) ? RegionForm::kArray : RegionForm::kPerRegion,
          .name_length = dice.one_in(2) ? std::size_t{12} : 0,
          .conn_length_width = dice.one_in(2) ? 4 : 8};
}

// What a later file has of a region set's mesh.
void add_later_mesh(Dice& dice, RegionSet& set, const Mesh& mesh, Sizes sizes, bool may_move) {
  const int volumes = static_cast<int>(mesh.volumes.size());
  switch (dice.roll(5)) {
    case 0: {  // another mesh of the same size
      Mesh other = random_mesh(dice, sizes, static_cast<int>(mesh.surfaces.size()), volumes);
      set.add(mesh_sections(other, random_layout(dice)));
      break;
    }
    case 1: {  // nodes alone
      set.add(nodes_section(random_nodes(dice, sizes.nodes, mesh.coordinate_system == 1)));
      if (mesh.coordinate_system && dice.one_in(2)) {
        set.add(coordinate_system_section(*mesh.coordinate_system));
      }
      break;
    }
    case 2:
    case 3:
      if (may_move) set.add(motion_section(random_motion(dice, 1, volumes)));
      break;
    default:
      break;
  }
}

}  // namespace

std::vector<File> random_series(std::uint64_t seed) {
  Dice dice(seed);
  const int sets = dice.one_in(3) ? 1 + dice.roll(3) : 1;
  const int file_count = 1 + dice.roll(4);
  const bool may_move = dice.one_in(2);
  std::vector<Mesh> meshes;
  std::vector<Sizes> sizes;
  for (int g = 0; g < sets; ++g) {
    sizes.push_back({4 + dice.roll(80), 1 + dice.roll(60)});
    meshes.push_back(random_mesh(dice, sizes.back(), dice.roll(4), dice.roll(4)));
  }
  std::vector<File> files;
  for (int f = 0; f < file_count; ++f) {
    File file;
    file.header.set_cycle(1 + f, 0.25 * f, dice.precision());
    file.header.set_unused(kUndefinedSingle, kUndefinedDouble);
    file.header.set_bias(dice.roll(3));
    if (dice.one_in(2)) file.split = 1 + dice.roll(30);
    for (int g = 0; g < sets; ++g) {
      const auto index = static_cast<std::size_t>(g);
      RegionSet& set = file.add_region_set();
      if (f == 0) {
        set.add(mesh_sections(meshes[index], random_layout(dice)));
      } else {
        add_later_mesh(dice, set, meshes[index], sizes[index], may_move);
      }
      add_quantities(dice, set, sizes[index].nodes);
    }
    files.push_back(std::move(file));
  }
  return files;
}

std::string random_file_name(const std::string& base, std::size_t index) {
  return base + "_" + std::to_string(index + 1) + ".fld";
}

}  // namespace testkit
