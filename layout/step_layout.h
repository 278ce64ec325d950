// Where everything stands that shows one step of a dataset: what a rank has to know to read its share of it.
// Made on one rank (series.h) and sent to the others.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "format/ale.h"
#include "format/array_layout.h"

namespace layout {

// An array of one of the series' files. Without a file there is no array.
struct FileArray {
  std::int32_t file = -1;   // in the series
  std::int32_t filler = 0;  // in place of padding: keys are compared as bytes
  fld::ArrayLayout place;

  bool operator==(const FileArray&) const = default;
  bool exists() const { return file >= 0; }
  std::int64_t count() const { return place.count; }
};

// A motion of nodes: the volumes that move together, by their element lists, and what moves them.
struct MovingVolumes {
  std::vector<FileArray> lists;  // of element numbers
  std::vector<fld::ALE_ACT> actions;
};

// The mesh of one region set.
struct SetMesh {
  bool is_cylindrical = false;
  bool is_overset = false;        // it has marks of overset meshes at some step
  std::int32_t element_bias = 0;  // the number of the first node in `conn`
  std::int32_t list_bias = 0;     // the number of the first element in the lists of moving volumes
  std::int32_t node_count = 0;
  FileArray types;                // of the elements
  FileArray conn;                 // their nodes, element after element
  FileArray materials;            // one per element
  std::array<FileArray, 3> axes;  // the nodes' coordinates
  // Which step's motion moves the nodes; -1 for none. The last of the moving volumes that has a node moves
  // it.
  std::int32_t motion_file = -1;
  std::vector<MovingVolumes> motion;

  std::int64_t element_count() const { return types.count(); }
};

enum class PartKind : std::int32_t { surface, volume, whole };

// The lists that a part is made of. Which of them there are depends on its kind.
struct PartLists {
  std::int32_t number = 0;  // in the list of all parts, from 1
  PartKind kind = PartKind::surface;
  std::int32_t set = 0;   // the region set, from 0
  std::int32_t bias = 0;  // the number of the first node and element in the lists
  FileArray elements;     // of a volume: element numbers
  FileArray face_types;   // of a surface
  FileArray face_links;   // of a surface: the element that each face belongs to
  FileArray face_nodes;   // of a surface: node numbers, face after face
};

// The values of a variable per node in one region set. Without arrays it has none in this step.
struct SetValues {
  std::array<FileArray, 3> components;
  std::array<double, 3> undefined_above{};  // values of a component beyond this are undefined
  std::string problem;                      // why they cannot be read; mostly empty
};

struct VariableValues {
  std::int32_t number = 0;  // in the list of all variables, from 1
  std::int32_t components = 1;
  bool is_material = false;     // the elements' material numbers, which have no arrays of their own
  std::vector<SetValues> sets;  // by region set
};

struct StepLayout {
  std::int32_t step = 0;
  std::vector<SetMesh> sets;
  std::vector<PartLists> parts;
  std::vector<VariableValues> variables;
};

std::string to_bytes(const StepLayout& step);
StepLayout step_layout_from(std::string_view bytes);

}  // namespace layout
