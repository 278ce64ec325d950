// An open dataset: the files of its series, its parts and variables, and where everything stands in them.
// Making one reads titles, rules and small blocks, never an array.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "dataset/fld.h"
#include "layout/step_layout.h"

namespace layout {

// A dataset that cannot be opened, or a step that cannot be shown. The text names the file.
class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A part of the dataset at a step: a surface or volume region, or the whole mesh of a region set.
struct Part {
  int number = 0;    // from 1: the surfaces of all region sets, their volumes, the whole meshes
  std::string name;  // the bytes of the file; empty for a whole mesh
  PartKind kind = PartKind::surface;
  int set = 0;    // region set, from 0
  int index = 0;  // among the surfaces or volumes of the set
};

struct Variable {
  int number = 0;  // from 1: the scalars, the vectors, the material numbers
  std::string name;
  std::string label;
  int components = 1;
  bool is_material = false;
};

// The name of the variable that gives the elements' material numbers.
inline constexpr char kMaterialName[] = "MatOfElements";

class Series {
 public:
  struct LeftOut {
    std::string path;
    std::string reason;
  };

  // Finds the series that the file at `path` belongs to. Files of it that cannot be read to their end are
  // left out. With `first_index_only` the quantities are looked for in the first file, and taken to stand at
  // the same places in the others; meshes that move have every file indexed all the same.
  Series(const std::string& path, bool first_index_only);

  const std::vector<LeftOut>& left_out() const { return left_out_; }
  const std::vector<std::string>& paths() const { return paths_; }
  // Solution times, or cycle numbers where no file has a time: one per file. A time of single precision is
  // the shortest decimal that it stands for.
  const std::vector<double>& times() const { return times_; }
  const std::vector<Variable>& variables() const { return variables_; }
  int set_count() const { return set_count_; }
  // The steps whose own files have nodes, the first one among them.
  std::vector<int> steps_with_mesh() const;

  // The parts of a step. Throws Error.
  std::vector<Part> parts(int step);

  // Where the mesh of the step stands, and the lists and values of these parts and variables. `parts` are
  // parts of the same step. Throws Error where the mesh cannot be located; a variable that cannot be bears
  // its problem.
  StepLayout locate(int step, const std::vector<Part>& parts, const std::vector<int>& variables);

 private:
  // Which files hold the sections of a region set, and what moves it.
  struct SetSources {
    std::vector<int> files;  // a later one's sections replace those before
    int motion_file = -1;
  };
  // What these files have together.
  struct SetSections {
    fld::RegionSetLayout layout;
    int surfaces_file = -1;
    int volumes_file = -1;
    int elements_file = -1;
    int materials_file = -1;
    int nodes_file = -1;
    int motion_file = -1;
  };

  const fld::FLDFile& file(int index) const { return dataset_.m_fld[static_cast<std::size_t>(index)]; }
  [[noreturn]] void fail(int index, const std::string& reason) const;
  void check_file(const std::string& path);
  int geometry_file_of(int step) const;
  int nearest_geometry(int index, int set) const;
  SetSources sources(int step, int set) const;
  const SetSections& sections(int step, int set);
  SetSections combine(const SetSources& sources, int set);
  SetMesh locate_mesh(const SetSections& sections, int set) const;
  std::vector<MovingVolumes> locate_motion(const SetSections& sections, int set) const;
  PartLists locate_part(const Part& part, const SetSections& sections) const;
  VariableValues locate_variable(int step, const Variable& variable) const;
  SetValues locate_values(int step, const Variable& variable, int set) const;

  fld::FLD dataset_;
  std::vector<LeftOut> left_out_;
  std::vector<std::string> paths_;
  std::vector<double> times_;
  std::vector<Variable> variables_;
  int set_count_ = 0;
  int located_step_ = -1;               // geometry file that located_ is of
  std::map<int, SetSections> located_;  // by region set
};

}  // namespace layout
