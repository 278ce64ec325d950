#include "vtkhdf/block.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>

#include "host/tuples.h"
#include "host/vtk_cells.h"

namespace vtkhdf {
namespace {

void turn_prisms(std::vector<host::ElementBlock>& elements) {
  for (host::ElementBlock& block : elements) {
    if (block.shape.nodes != host::kPrismNodes) continue;
    for (auto prism = block.nodes.begin(); prism != block.nodes.end(); prism += host::kPrismNodes) {
      std::swap(prism[1], prism[2]);
      std::swap(prism[4], prism[5]);
    }
  }
}

bool is_same(const std::vector<host::ElementBlock>& a, const std::vector<host::ElementBlock>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const host::ElementBlock& one, const host::ElementBlock& other) {
                      return one.shape.slot == other.shape.slot && one.nodes == other.nodes;
                    });
}

// The values of all components, one tuple behind the other, with NaN where they are undefined; none where the
// step has none.
std::optional<host::LargeArray<float>> values_of(host::Session& session, const host::Variable& variable,
                                                 int part) {
  const auto components = session.given_components(variable.number, part);
  if (!components) return std::nullopt;
  host::LargeArray<float> tuples(components->size() * components->front().values().size());
  host::put_tuples(*components, tuples.data());
  return tuples;
}

void mark_as_grid(const Handle& group, std::size_t index) {
  write_attribute(group, "Version", std::vector<std::int64_t>{2, 0});
  write_attribute(group, "Type", "UnstructuredGrid");
  write_attribute(group, "Index", static_cast<std::int64_t>(index));
}

}  // namespace

Block::Block(const Handle& root, const std::string& name, std::size_t index, const BlockOptions& options)
    : options_(options),
      group_(create_group(root, name)),
      steps_(create_group(group_, "Steps")),
      point_data_(create_group(group_, "PointData")),
      cell_data_(create_group(group_, "CellData")),
      point_data_offsets_(create_group(steps_, "PointDataOffsets")),
      cell_data_offsets_(create_group(steps_, "CellDataOffsets")) {
  mark_as_grid(group_, index);
  set_attribute(steps_, "NSteps", 0);
  times_ = std::make_unique<StepArray<double>>(steps_, "Values", options.steps);
  part_offsets_ = step_array(steps_, "PartOffsets");
  part_numbers_ = step_array(steps_, "NumberOfParts");
  point_offsets_ = step_array(steps_, "PointOffsets");
  cell_offsets_ = step_array(steps_, "CellOffsets");
  corner_offsets_ = step_array(steps_, "ConnectivityIdOffsets");
}

std::unique_ptr<StepArray<std::int64_t>> Block::step_array(const Handle& group,
                                                           const std::string& name) const {
  return std::make_unique<StepArray<std::int64_t>>(group, name, options_.steps);
}

std::unique_ptr<GrowingArray> Block::mesh_array(const std::string& name, hid_t type, std::size_t rows) const {
  return std::make_unique<GrowingArray>(
      group_, name, Storage{.type = type, .width = 1, .compression = options_.compression, .is_dense = true},
      rows);
}

// Whether the step has other points than the one before.
bool Block::take_points(host::Session& session, std::optional<int> part) {
  host::LargeArray<float> xyz;
  if (part) xyz = session.points(*part);
  const auto bytes_are_same = [](float a, float b) { return a == b || (a != a && b != b); };
  if (points_ && std::equal(xyz.begin(), xyz.end(), xyz_.begin(), xyz_.end(), bytes_are_same)) return false;
  xyz_ = std::move(xyz);
  return true;
}

// Whether it has other cells. (What a reader says of changing geometry is about the series as a whole.)
bool Block::take_cells(host::Session& session, std::optional<int> part) {
  std::vector<host::ElementBlock> elements;
  if (part) elements = session.elements(*part, 0);
  turn_prisms(elements);
  if (types_ && is_same(elements, elements_)) return false;
  elements_ = std::move(elements);
  return true;
}

void Block::write_points() {
  const std::size_t rows = xyz_.size() / 3;
  if (!points_) {
    const Storage storage{.type = options_.real_type, .width = 3, .compression = options_.compression};
    points_ = std::make_unique<GrowingArray>(group_, "Points", storage, rows);
  }
  point_start_ = points_->append(H5T_NATIVE_FLOAT, xyz_.data(), rows);
}

void Block::write_cells() {
  std::vector<std::uint8_t> types;
  std::vector<std::int64_t> offsets = {0};
  std::size_t corners = 0;
  for (const host::ElementBlock& block : elements_) {
    types.insert(types.end(), block.size(), host::vtk_cell_type(block.shape));
    for (std::size_t i = 0; i < block.size(); ++i) offsets.push_back(offsets.back() + block.shape.nodes);
    corners += block.nodes.size();
  }
  cells_ = types.size();
  if (!types_) {
    types_ = mesh_array("Types", H5T_NATIVE_UINT8, cells_);
    offsets_ = mesh_array("Offsets", H5T_NATIVE_INT64, offsets.size());
    connectivity_ = mesh_array("Connectivity", H5T_NATIVE_INT64, corners);
    for (const char* name : {"NumberOfPoints", "NumberOfCells", "NumberOfConnectivityIds"})
      counts_.push_back(step_array(group_, name));
  }
  // The offsets have one entry more than there are cells, for each mesh: readers add the mesh's number to the
  // start of its cells.
  cell_start_ = types_->append(H5T_NATIVE_UINT8, types.data(), cells_);
  offsets_->append(H5T_NATIVE_INT64, offsets.data(), offsets.size());
  std::optional<std::int64_t> first;
  for (const host::ElementBlock& block : elements_) {
    const std::int64_t at = connectivity_->append(H5T_NATIVE_INT, block.nodes.data(), block.nodes.size());
    if (!first) first = at;
  }
  corner_start_ = first.value_or(corner_start_);
  const std::array<std::size_t, 3> counts = {xyz_.size() / 3, cells_, corners};
  for (std::size_t i = 0; i < counts.size(); ++i) {
    counts_[i]->stage(static_cast<std::int64_t>(counts[i]));
  }
  ++meshes_;
}

void Block::write_mesh(host::Session& session, std::optional<int> part) {
  const std::pair source(part, session.geometry_step_of(session.step()));
  if (source_ == source) return;
  const std::size_t points_before = xyz_.size();
  const bool has_new_points = take_points(session, part);
  const bool has_new_cells = take_cells(session, part) || xyz_.size() != points_before;
  if (has_new_points) write_points();
  if (has_new_cells) write_cells();
  source_ = source;
}

// The first of so many rows of NaN.
std::int64_t Block::write_nothing(Field& field, std::size_t width, std::size_t rows) const {
  if (field.nothing_rows < rows) {
    const std::vector<float> nothing(rows * width, std::numeric_limits<float>::quiet_NaN());
    field.nothing = field.rows->append(H5T_NATIVE_FLOAT, nothing.data(), rows);
    field.nothing_rows = rows;
  }
  return field.nothing;
}

void Block::write_variable(host::Session& session, std::optional<int> part, int number,
                           const std::string& name) {
  const host::Variable& variable = session.variable(number);
  const auto values = part ? values_of(session, variable, *part) : std::nullopt;
  write_values(name, variable.location == host::Location::node,
               static_cast<std::size_t>(variable.components()), values);
}

void Block::write_values(const std::string& name, bool is_nodal, std::size_t width,
                         const std::optional<std::span<const float>>& values) {
  const std::size_t rows = is_nodal ? xyz_.size() / 3 : cells_;
  Field& field = fields_[name];
  if (!field.rows) {
    if (!values) return;
    const Storage storage{.type = options_.real_type, .width = width, .compression = options_.compression};
    field.rows = std::make_unique<GrowingArray>(is_nodal ? point_data_ : cell_data_, name, storage, rows);
    field.offsets = step_array(is_nodal ? point_data_offsets_ : cell_data_offsets_, name);
    // The steps before had no values of it.
    if (step_ > 0) write_nothing(field, width, most_rows_);
    for (std::size_t step = 0; step < step_; ++step) field.offsets->stage(field.nothing);
  }
  const std::int64_t start =
      values ? field.rows->append(H5T_NATIVE_FLOAT, values->data(), rows) : write_nothing(field, width, rows);
  field.offsets->stage(start);
}

void Block::write_step(host::Session& session, std::optional<int> part, const BlockArrays& arrays,
                       double time) {
  write_mesh(session, part);
  for (const int variable : arrays.variables)
    write_variable(session, part, variable, arrays.names[static_cast<std::size_t>(variable) - 1]);
  for (const NodalArray& array : arrays.more)
    write_values(array.name, true, array.width, part ? array.values(*part) : std::nullopt);
  most_rows_ = std::max({most_rows_, xyz_.size() / 3, cells_});
  times_->stage(time);
  part_offsets_->stage(meshes_ - 1);
  part_numbers_->stage(1);
  point_offsets_->stage(point_start_);
  cell_offsets_->stage(cell_start_);
  corner_offsets_->stage(corner_start_);
}

void Block::finish_step() {
  times_->commit();
  for (const auto* array :
       {&part_offsets_, &part_numbers_, &point_offsets_, &cell_offsets_, &corner_offsets_})
    (*array)->commit();
  for (const auto& [name, field] : fields_) {
    if (field.offsets) field.offsets->commit();
  }
  for (const auto& counts : counts_) counts->commit();
  ++step_;
}

void Block::count_step() {
  set_attribute(steps_, "NSteps", static_cast<std::int64_t>(step_));
}

}  // namespace vtkhdf
