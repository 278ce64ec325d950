#include "testkit/box_dataset.h"

#include <cmath>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

#include "testkit/grid_mesh.h"

namespace testkit {
namespace {

// Node numbers of one row of cells (along x, at j = k = 0), from which those of other rows follow.
struct RowNodes {
  std::vector<std::int32_t> number;     // in row 0
  std::vector<std::uint8_t> is_middle;  // of a cell; else a point of the grid
};

// The mesh of one row of cells, which all other rows repeat.
struct Row {
  std::vector<std::int32_t> types;
  RowNodes conn;
  struct Faces {
    std::vector<std::int32_t> types;
    std::vector<std::int32_t> links;
    RowNodes nodes;
  };
  std::array<Faces, 6> sides;  // outer faces per side
  std::int32_t middles = 0;    // nodes in the middle of cells
};

class Box {
 public:
  explicit Box(const BoxOptions& options) : options_(options) {
    if (options.nx < 1 || options.ny < 1 || options.nz < 1 || options.volumes < 1 || options.materials < 1) {
      throw std::invalid_argument("a box needs at least one cell, volume and material");
    }
    if (options.shape == BoxShape::kMixed && options.nx < 5) {
      throw std::invalid_argument("a mixed box needs at least 5 cells along x");
    }
    mesh_row();
    const BoxCounts all = counts();
    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
    if (all.nodes > kLargest || all.elements > kLargest || options.volumes > rows() ||
        options.materials > rows()) {
      throw std::invalid_argument("box too large, or more volumes or materials than rows");
    }
  }

  const BoxOptions& options() const { return options_; }
  const Row& row() const { return row_; }
  std::int64_t rows() const { return std::int64_t{options_.ny} * options_.nz; }
  std::int64_t points() const {
    return (options_.nx + std::int64_t{1}) * (options_.ny + 1) * (options_.nz + 1);
  }

  BoxCounts counts() const {
    return {.nodes = points() + rows() * row_.middles,
            .elements = rows() * std::ssize(row_.types),
            .conn = rows() * std::ssize(row_.conn.number)};
  }

  // The row of cells that is the `position`-th of those that touch a side.
  std::int64_t row_at_side(Side side, std::int64_t position) const {
    switch (side) {
      case Side::kLowJ:
        return position * options_.ny;
      case Side::kHighJ:
        return (position + 1) * options_.ny - 1;
      case Side::kHighK:
        return rows() - options_.ny + position;
      default:
        return position;
    }
  }
  std::int64_t rows_at_side(Side side) const {
    if (side == Side::kLowI || side == Side::kHighI) return rows();
    return side == Side::kLowJ || side == Side::kHighJ ? options_.nz : options_.ny;
  }

  // The offset of another row's numbers from those of row 0, for grid points and cell centres.
  std::int32_t point_shift(std::int64_t row) const {
    const std::int64_t j = row % options_.ny;
    const std::int64_t k = row / options_.ny;
    return static_cast<std::int32_t>((k * (options_.ny + 1) + j) * (options_.nx + 1));
  }
  std::int32_t middle_shift(std::int64_t row) const { return static_cast<std::int32_t>(row * row_.middles); }

  // First row of a stretch when the rows are divided into `stretches`.
  std::int64_t first_row(std::int64_t stretch, std::int64_t stretches) const {
    return rows() * stretch / stretches;
  }

  Vec3 place(std::int64_t node) const {
    const std::int64_t along_x = options_.nx + std::int64_t{1};
    const std::int64_t along_y = options_.ny + std::int64_t{1};
    if (node < points()) {
      const std::int64_t line = node / along_x;
      const std::int64_t plane = line / along_y;
      return {at(0, static_cast<double>(node % along_x)), at(1, static_cast<double>(line % along_y)),
              at(2, static_cast<double>(plane))};
    }
    const std::int64_t middle = node - points();
    const std::int64_t row = middle / row_.middles;
    const std::int64_t k = row / options_.ny;
    const auto cell = static_cast<double>(middle % row_.middles + first_middle_cell_);
    return {at(0, cell + 0.5), at(1, static_cast<double>(row % options_.ny) + 0.5),
            at(2, static_cast<double>(k) + 0.5)};
  }

 private:
  double at(std::size_t axis, double steps) const {
    const std::array<std::int32_t, 3> cells{options_.nx, options_.ny, options_.nz};
    return options_.lengths[axis] * steps / cells[axis];
  }

  CellKind kind_of_cell(int i) const {
    switch (options_.shape) {
      case BoxShape::kHexahedra:
        return CellKind::kHexahedron;
      case BoxShape::kPrisms:
        return CellKind::kPrisms;
      case BoxShape::kPyramids:
        return CellKind::kPyramids;
      case BoxShape::kTetrahedra:
        return CellKind::kTetrahedra;
      case BoxShape::kMixed:
        break;
    }
    const int part = static_cast<int>(std::int64_t{options_.nx} * 2 / 5);
    if (i < part) return CellKind::kHexahedron;
    return i < 2 * part ? CellKind::kPrisms : i == 2 * part ? CellKind::kPyramids : CellKind::kTetrahedra;
  }

  void mesh_row() {
    Grid grid;
    grid.cells = {options_.nx, 1, 1};
    grid.point = [](const CellIndex& p) {
      return Vec3{static_cast<double>(p[0]), static_cast<double>(p[1]), static_cast<double>(p[2])};
    };
    grid.kind = [this](const CellIndex& cell) { return kind_of_cell(cell[0]); };
    GridMesh mesh = mesh_grid(grid);
    const std::int32_t row_points = 4 * (options_.nx + 1);
    row_.middles = static_cast<std::int32_t>(mesh.nodes.size()) - row_points;
    if (row_.middles > 0) {
      first_middle_cell_ =
          static_cast<std::int64_t>(mesh.nodes.x.values()[static_cast<std::size_t>(row_points)]);
    }
    row_.types = std::move(mesh.elements.type.values());
    for (const std::int32_t node : mesh.elements.conn.values()) add(row_.conn, node);
    for (const GridFace& outer : mesh.outer_faces) {
      Row::Faces& faces = row_.sides[static_cast<std::size_t>(outer.side)];
      faces.types.push_back(outer.face.code);
      faces.links.push_back(outer.face.element);
      for (std::size_t c = 0; c < outer.face.corner_count(); ++c) add(faces.nodes, outer.face.corners[c]);
    }
  }

  // Converts a node of the meshed row to the box's numbering.
  void add(RowNodes& nodes, std::int32_t node) const {
    const std::int32_t per_line = options_.nx + 1;
    if (node >= 4 * per_line) {
      nodes.number.push_back(static_cast<std::int32_t>(points()) + node - 4 * per_line);
      nodes.is_middle.push_back(1);
      return;
    }
    const std::int32_t line = node / per_line;  // (j, k) = (0, 0), (1, 0), (0, 1), (1, 1)
    nodes.number.push_back(node % per_line + (line % 2 + line / 2 * (options_.ny + 1)) * per_line);
    nodes.is_middle.push_back(0);
  }

  BoxOptions options_;
  Row row_;
  std::int64_t first_middle_cell_ = 0;  // along x
};

using SharedBox = std::shared_ptr<const Box>;

// Calls visit(row, position in the row, length, position in `out`) for the rows of a stretch of values.
template <class Visit>
void for_each_row(std::int64_t per_row, std::int64_t first, std::int64_t count, Visit visit) {
  for (std::int64_t done = 0; done < count;) {
    const std::int64_t row = (first + done) / per_row;
    const std::int64_t position = (first + done) % per_row;
    const std::int64_t length = std::min(per_row - position, count - done);
    visit(row, static_cast<std::size_t>(position), static_cast<std::size_t>(length),
          static_cast<std::size_t>(done));
    done += length;
  }
}

// A list of row 0 repeated for each row, with shift(row) added.
template <class Shift>
Ints repeated(const std::vector<std::int32_t>& list, std::int64_t rows, Shift shift) {
  const std::int64_t per_row = std::ssize(list);
  return Ints(per_row * rows, [list, per_row, shift](std::int64_t first, std::span<std::int32_t> out) {
    for_each_row(per_row, first, std::ssize(out),
                 [&](std::int64_t row, std::size_t position, std::size_t length, std::size_t place) {
                   const std::int32_t base = shift(row);
                   for (std::size_t i = 0; i < length; ++i) out[place + i] = list[position + i] + base;
                 });
  });
}

// The same for node numbers. row_of(n) is the n-th row of cells.
template <class RowOf>
Ints repeated_nodes(const SharedBox& box, const RowNodes& nodes, std::int64_t rows, RowOf row_of) {
  const std::int64_t per_row = std::ssize(nodes.number);
  return Ints(per_row * rows, [box, nodes, per_row, row_of](std::int64_t first, std::span<std::int32_t> out) {
    for_each_row(per_row, first, std::ssize(out),
                 [&](std::int64_t n, std::size_t position, std::size_t length, std::size_t place) {
                   const std::int64_t row = row_of(n);
                   const std::array<std::int32_t, 2> shift{box->point_shift(row), box->middle_shift(row)};
                   for (std::size_t i = 0; i < length; ++i) {
                     out[place + i] = nodes.number[position + i] + shift[nodes.is_middle[position + i]];
                   }
                 });
  });
}

template <class Function>
Reals over_nodes(const SharedBox& box, Function function) {
  return Reals(box->counts().nodes, [box, function](std::int64_t first, std::span<double> out) {
    for (std::size_t i = 0; i < out.size(); ++i) {
      out[i] = function(box->place(first + static_cast<std::int64_t>(i)));
    }
  });
}

Surface side_surface(const SharedBox& box, Side side, const char* name) {
  const Row::Faces& faces = box->row().sides[static_cast<std::size_t>(side)];
  const std::int64_t rows = box->rows_at_side(side);
  const auto row_of = [box, side](std::int64_t n) { return box->row_at_side(side, n); };
  const auto elements_per_row = static_cast<std::int64_t>(box->row().types.size());
  Surface surface{.name = name};
  surface.type = repeated(faces.types, rows, [](std::int64_t) { return 0; });
  surface.link = repeated(faces.links, rows, [=](std::int64_t n) {
    return static_cast<std::int32_t>(row_of(n) * elements_per_row);
  });
  surface.node = repeated_nodes(box, faces.nodes, rows, row_of);
  return surface;
}

Mesh box_mesh(const SharedBox& box) {
  const BoxOptions& options = box->options();
  const std::int64_t elements_per_row = std::ssize(box->row().types);
  Mesh mesh;
  mesh.surfaces = {side_surface(box, Side::kLowI, "x_low"), side_surface(box, Side::kHighI, "x_high"),
                   side_surface(box, Side::kLowJ, "y_low"), side_surface(box, Side::kHighJ, "y_high"),
                   side_surface(box, Side::kLowK, "z_low"), side_surface(box, Side::kHighK, "z_high")};
  for (std::int32_t v = 0; v < options.volumes; ++v) {
    const std::int64_t begin = box->first_row(v, options.volumes) * elements_per_row;
    const std::int64_t end = box->first_row(v + 1, options.volumes) * elements_per_row;
    mesh.volumes.push_back(
        {.name = "volume_" + std::to_string(v + 1),
         .elements = Ints(end - begin, [begin](std::int64_t first, std::span<std::int32_t> out) {
           for (std::int32_t& element : out) element = static_cast<std::int32_t>(begin + first++);
         })});
  }
  mesh.elements.type = repeated(box->row().types, box->rows(), [](std::int64_t) { return 0; });
  mesh.elements.conn = repeated_nodes(box, box->row().conn, box->rows(), [](std::int64_t n) { return n; });
  mesh.materials = Ints(box->counts().elements, [box](std::int64_t first, std::span<std::int32_t> out) {
    const std::int64_t materials = box->options().materials;
    for_each_row(std::ssize(box->row().types), first, std::ssize(out),
                 [&](std::int64_t row, std::size_t, std::size_t length, std::size_t place) {
                   std::int64_t material = row * materials / box->rows();
                   // Division rounds down, so this may be the stretch before.
                   if (box->first_row(material + 1, materials) <= row) ++material;
                   std::fill_n(out.begin() + static_cast<std::ptrdiff_t>(place), length,
                               static_cast<std::int32_t>(material + 1));
                 });
  });
  mesh.nodes.x = over_nodes(box, [](const Vec3& p) { return p[0]; });
  mesh.nodes.y = over_nodes(box, [](const Vec3& p) { return p[1]; });
  mesh.nodes.z = over_nodes(box, [](const Vec3& p) { return p[2]; });
  mesh.nodes.precision.fill(options.coordinates);
  return mesh;
}

}  // namespace

BoxCounts box_counts(const BoxOptions& options) {
  return Box(options).counts();
}

File box_file(const BoxOptions& options) {
  const auto box = std::make_shared<const Box>(options);
  File file;
  file.split = options.split;
  file.header.set_bias(options.bias);
  file.header.set_cycle(options.cycle, options.time);
  RegionSet& set = file.add_region_set();
  set.add(mesh_sections(box_mesh(box), options.layout));
  for (std::int32_t s = 1; s <= options.scalars; ++s) {
    set.add(scalar_section(
        {.name = "scalar_" + std::to_string(s),
         .label = "Scalar " + std::to_string(s) + " [-]",
         .values = over_nodes(box, [s](const Vec3& p) { return box_scalar(s, p[0], p[1], p[2]); }),
         .precision = options.values}));
  }
  for (std::int32_t v = 1; v <= options.vectors; ++v) {
    const auto component = [&](int c) {
      return over_nodes(box, [v, c](const Vec3& p) { return box_vector(v, c, p[0], p[1], p[2]); });
    };
    set.add(vector_section({.name = "vector_" + std::to_string(v),
                            .label = "Vector " + std::to_string(v) + " [m/s]",
                            .x = component(0),
                            .y = component(1),
                            .z = component(2),
                            .precision = {options.values, options.values, options.values}}));
  }
  return file;
}

Places write_box_dataset(const std::filesystem::path& path, const BoxOptions& options) {
  return write_file(box_file(options), path);
}

double box_scalar(std::int32_t number, double x, double y, double z) {
  return number + x + 10.0 * y + 100.0 * z + x * y * z;
}

double box_vector(std::int32_t number, int component, double x, double y, double z) {
  const std::array<double, 3> base{y - z, z - x, x - y};
  return number * (base[static_cast<std::size_t>(component)] + 0.25 * component);
}

}  // namespace testkit
