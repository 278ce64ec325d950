// The values of one variable on one part at the current step.
#include "interface/userd_api.h"
#include "reader/globals.h"
#include "reader/node_selection.h"
#include "reader/part_values.h"
#include "reader/parts.h"
#include "reader/quantity_cache.h"
#include "reader/variables.h"

namespace fld {

namespace {

// Results of USERD_get_var_by_component.
constexpr int kDone = 1;
constexpr int kNotInThisStep = 2;

constexpr int kComponents = 3;

// The file of the current step, or null.
const FLDFile* current_file() {
  const auto step = static_cast<size_t>(Current_time_step);
  return g_fld && step < g_fld->m_fld.size() ? &g_fld->m_fld[step] : nullptr;
}

int write_scalar(const FLDFile& file, const Part& part, const PartNodes& nodes, const std::string& name,
                 float* out) {
  const FLDTITLE_Scalar* title = file.findSeekScalar(name.c_str(), part.geoIndex);
  if (title == nullptr) return kNotInThisStep;
  const int result = title->m_seek == 0 ? kDone : cache_scalar(file, *title);
  if (result == kDone && title->m_seek != 0) copy_part_values(nodes, g_scalar->values, g_scalar->n, out);
  return result;
}

int write_vector(const FLDFile& file, const Part& part, const PartNodes& nodes, const std::string& name,
                 int component, float* out) {
  const FLDTITLE_Vector* title = file.findSeekVector(name.c_str(), part.geoIndex);
  if (title == nullptr) return kNotInThisStep;
  const int result = title->m_seek == 0 ? kDone : cache_vector(file, *title);
  if (result == kDone && title->m_seek != 0) {
    copy_part_values(nodes, g_vector->components[component], g_vector->n, out);
  }
  return result;
}

}  // namespace

}  // namespace fld

using namespace fld;

int USERD_get_var_by_component(int which_variable, int which_part, int var_type, int which_type,
                               int imag_data, int component, float* values) {
  if (imag_data != 0) return kNotInThisStep;
  const Variable variable = find_variable(which_variable);
  if (variable.kind == Variable::Kind::none || var_type != variable.host_type()) return kDone;
  const Part part = find_part(which_part);
  if (variable.kind == Variable::Kind::material) {
    write_materials(part, which_type, values);
    return kDone;
  }
  const bool vector = variable.kind == Variable::Kind::vector;
  if (vector && (component < 0 || component >= kComponents)) return kDone;
  const PartNodes nodes = select_nodes(part);
  if (nodes.count <= 0) return kDone;
  const FLDFile* file = current_file();
  if (file == nullptr) return kNotInThisStep;
  return vector
             ? write_vector(*file, part, nodes, catalogue().vector_names()[variable.index], component, values)
             : write_scalar(*file, part, nodes, catalogue().scalar_names()[variable.index], values);
}
