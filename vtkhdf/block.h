// One block of a VTKHDF file: a part of the dataset as an unstructured grid over all steps.
//
// Every array has the rows of all steps behind each other; for each step, arrays below "Steps" say where its
// rows begin. A step whose mesh is that of a step before says where that one's begin.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/session.h"
#include "vtkhdf/hdf5_file.h"

namespace vtkhdf {

struct BlockOptions {
  std::size_t steps = 0;  // of the whole file
  hid_t real_type = H5T_NATIVE_FLOAT;
  int compression = 0;  // of zlib, 1 to 9; 0 for none
};

// Values per node beside those of the dataset.
struct NodalArray {
  std::string name;
  std::size_t width = 1;  // values of a node
  // Those of a part at the session's step, node by node, valid until the next call; none where the step lacks
  // them.
  std::function<std::optional<std::span<const float>>(int part)> values;
};

// What a block has besides its mesh. Names are unique, and have no "/".
struct BlockArrays {
  std::vector<int> variables{};      // numbers
  std::vector<std::string> names{};  // of all variables of the dataset
  std::vector<NodalArray> more{};
};

class Block {
 public:
  // A block of that name below the group, `index` being its number in the file.
  Block(const Handle& root, const std::string& name, std::size_t index, const BlockOptions& options);

  // Writes the next step: the part's mesh, unless it is the one of the step before, and the arrays. Without a
  // part the step has no points and cells.
  void write_step(host::Session& session, std::optional<int> part, const BlockArrays& arrays, double time);
  // Puts what says where the step's rows begin into the file.
  void finish_step();
  // Makes the step one that the file has; to be called when the rest of it has reached the disk.
  void count_step();

 private:
  // The rows of one array over the steps, and where they begin.
  struct Field {
    std::unique_ptr<GrowingArray> rows;
    std::unique_ptr<StepArray<std::int64_t>> offsets;
    std::int64_t nothing = 0;      // the first of the rows that stand for a step without values
    std::size_t nothing_rows = 0;  // how many there are
  };

  void write_mesh(host::Session& session, std::optional<int> part);
  bool take_points(host::Session& session, std::optional<int> part);
  bool take_cells(host::Session& session, std::optional<int> part);
  void write_points();
  void write_cells();
  void write_variable(host::Session& session, std::optional<int> part, int number, const std::string& name);
  void write_values(const std::string& name, bool is_nodal, std::size_t width,
                    const std::optional<std::span<const float>>& values);
  std::int64_t write_nothing(Field& field, std::size_t width, std::size_t rows) const;
  std::unique_ptr<StepArray<std::int64_t>> step_array(const Handle& group, const std::string& name) const;
  std::unique_ptr<GrowingArray> mesh_array(const std::string& name, hid_t type, std::size_t rows) const;

  BlockOptions options_;
  Handle group_;
  Handle steps_;
  Handle point_data_;
  Handle cell_data_;
  Handle point_data_offsets_;
  Handle cell_data_offsets_;
  std::size_t step_ = 0;

  std::vector<std::unique_ptr<StepArray<std::int64_t>>>
      counts_;  // of points, cells and corners, for each mesh
  std::unique_ptr<GrowingArray> points_;
  std::unique_ptr<GrowingArray> connectivity_;
  std::unique_ptr<GrowingArray> offsets_;
  std::unique_ptr<GrowingArray> types_;
  std::unique_ptr<StepArray<double>> times_;
  std::unique_ptr<StepArray<std::int64_t>> part_offsets_;
  std::unique_ptr<StepArray<std::int64_t>> part_numbers_;
  std::unique_ptr<StepArray<std::int64_t>> point_offsets_;
  std::unique_ptr<StepArray<std::int64_t>> cell_offsets_;
  std::unique_ptr<StepArray<std::int64_t>> corner_offsets_;

  // The mesh that was written last.
  std::optional<std::pair<std::optional<int>, int>> source_;  // its part and its step of the geometry
  host::LargeArray<float> xyz_;
  std::vector<host::ElementBlock> elements_;  // in VTK's order, from 0
  std::size_t cells_ = 0;
  std::int64_t meshes_ = 0;
  std::int64_t point_start_ = 0;
  std::int64_t cell_start_ = 0;
  std::int64_t corner_start_ = 0;

  std::map<std::string, Field> fields_;  // by name
  std::size_t most_rows_ = 0;            // of a step so far
};

}  // namespace vtkhdf
