// Derived variables on the parts of a session's step.
#pragma once

#include <map>
#include <string>
#include <tuple>
#include <vector>
#include <vtkFloatArray.h>
#include <vtkSmartPointer.h>

#include "analysis/derived_variable.h"
#include "analysis/whole_meshes.h"
#include "host/session.h"

namespace analysis {

// Derivatives are computed on the whole mesh of a region set, and a part has those of its nodes: a surface
// those of the volume behind it, and a volume the same as its neighbour where they meet. One step's whole
// meshes and their derived values are kept, until another step is asked for.
class DerivedValues {
 public:
  DerivedValues(host::Session& session, IsCylindrical is_cylindrical)
      : session_(session), is_cylindrical_(std::move(is_cylindrical)) {}

  // A tuple per node of the part at the session's step; NaN where it is undefined, which it is at nodes that
  // belong to no solid element. Null when the step lacks the variable. The array may be given again: leave
  // its values as they are. Throws host::Error when something cannot be read.
  vtkSmartPointer<vtkFloatArray> on_part(const DerivedVariable& variable, int part);

 private:
  struct Derived {
    vtkSmartPointer<vtkFloatArray> source;
    vtkSmartPointer<vtkFloatArray> values;
  };

  vtkSmartPointer<vtkFloatArray> source_of(const DerivedVariable& variable, int part);
  const Derived& on_whole(const DerivedVariable& variable, int part);

  host::Session& session_;
  IsCylindrical is_cylindrical_;
  int step_ = -1;
  std::map<int, host::Coordinates> coordinates_;                    // of whole meshes
  std::map<int, vtkSmartPointer<vtkUnstructuredGrid>> grids_;       // likewise
  std::map<std::tuple<int, Derivation, int, int>, Derived> found_;  // likewise, by variable
};

}  // namespace analysis
