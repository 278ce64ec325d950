// The variables: number and descriptions.
#include "reader/variables.h"

#include <cstdio>
#include <cstring>

#include "interface/userd_api.h"
#include "reader/globals.h"
#include "reader/time_sets.h"

namespace fld {

namespace {

constexpr size_t kText = 80;  // size of the host's buffers
constexpr char kMaterialName[] = "MatOfElements";

// The host's codes.
constexpr int kPerNode = 4;
constexpr int kPerElement = 1;

void describe(char* description, const std::string& label, const std::string& name) {
  snprintf(description, kText, "%s (%s)", label.c_str(), name.c_str());
}

}  // namespace

const Field& catalogue() {
  static const Field empty;
  return g_fld ? g_fld->m_field : empty;
}

Variable find_variable(int number) {
  const size_t scalars = catalogue().scalar_names().size();
  const size_t vectors = catalogue().vector_names().size();
  if (number < 1) return {};
  const auto index = static_cast<size_t>(number) - 1;
  if (index < scalars) return {Variable::Kind::scalar, index};
  if (index < scalars + vectors) return {Variable::Kind::vector, index - scalars};
  if (index == scalars + vectors) return {Variable::Kind::material, 0};
  return {};
}

}  // namespace fld

using namespace fld;

int USERD_get_number_of_variables() {
  Num_variables = static_cast<int>(catalogue().scalar_names().size() + catalogue().vector_names().size()) + 1;
  return Num_variables;
}

int USERD_get_gold_variable_info(char** descriptions, char** filenames, int* types, int* classify,
                                 int* complex, char** ifilenames, float* /*freq*/, int* contran,
                                 int* timeset) {
  for (int k = 0; k < Num_variables; ++k) {
    strncpy(filenames[k], "", kText);
    strncpy(ifilenames[k], "", kText);
    complex[k] = 0;
    contran[k] = 0;
    timeset[k] = kVariablesSet;
    classify[k] = k + 1 < Num_variables ? kPerNode : kPerElement;
  }
  const Field& field = catalogue();
  size_t position = 0;
  for (size_t i = 0; i < field.scalar_names().size(); ++i, ++position) {
    types[position] = Variable::kScalarType;
    describe(descriptions[position], field.scalar_labels()[i], field.scalar_names()[i]);
  }
  for (size_t i = 0; i < field.vector_names().size(); ++i, ++position) {
    types[position] = Variable::kVectorType;
    describe(descriptions[position], field.vector_labels()[i], field.vector_names()[i]);
  }
  types[position] = Variable::kScalarType;
  strncpy(descriptions[position], kMaterialName, kText);
  return 1;
}
