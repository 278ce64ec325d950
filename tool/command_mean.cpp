// fldtool mean
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>
#include <vtkCellData.h>
#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkObject.h>
#include <vtkPointData.h>

#include "CLI/CLI.hpp"
#include "analysis/rigid_motion.h"
#include "analysis/running_statistics.h"
#include "fmt/format.h"
#include "host/text_encoding.h"
#include "nlohmann/json.hpp"
#include "tool/choice.h"
#include "tool/commands.h"
#include "tool/dataset_options.h"
#include "tool/exit_status.h"
#include "tool/history_source.h"
#include "tool/interrupt.h"
#include "tool/output.h"
#include "tool/progress.h"
#include "tool/quantity.h"
#include "tool/read_error.h"
#include "tool/series_command.h"
#include "tool/vtk_series.h"
#include "vtk/labels.h"

namespace tool {
namespace {

constexpr char kMeanManual[] =
    R"(Writes means over steps: per node, or per element for variables that are given so, and per component of a vector

  NAME mean        the mean of the values at the steps
  NAME rms         the root of the mean of their squares
  NAME deviation   the root mean square of their distances from the mean
  NAME minimum     the smallest value
  NAME maximum     the largest one
  NAME steps       at how many steps there is a value; only where it is not the same everywhere

Every step counts as much as any other, whatever the time between them. Steps at which a value is undefined, or NaN, do
not count for it. The values are written on the mesh of the first step chosen, as 'fldtool convert' writes it: OUT is the
file NAME.pvd, or a folder.

The mesh has to be at rest or to move rigidly, part by part: the same node is the same place of the part at every step, and
components of vectors stay along the axes of the file. A part that is deformed, or whose nodes or elements change, is an
error, and so is one that a step lacks; the message lists the other parts, for --parts. Where a part turns within another,
the whole mesh is deformed. Each file is read once; memory holds the sums of the parts that are chosen, and one variable of
one part of a step.

)";

constexpr char kOtherMesh[] = "has other nodes or elements";

// "1-3,5" of ascending numbers.
std::string as_ranges(const std::vector<int>& numbers) {
  std::string text;
  for (std::size_t i = 0; i < numbers.size();) {
    std::size_t end = i + 1;
    while (end < numbers.size() && numbers[end] == numbers[end - 1] + 1) ++end;
    text += fmt::format("{}{}", text.empty() ? "" : ",", numbers[i]);
    if (end > i + 1) text += fmt::format("-{}", numbers[end - 1]);
    i = end;
  }
  return text;
}

// The sums of a quantity on a part, per component.
struct PartSums {
  std::array<analysis::RunningStatistics, 3> components;
};

// What is known about a part from the first step.
struct PartMeshKept {
  int nodes = 0;
  std::array<int, host::kElementSlots> elements{};
  std::optional<analysis::MeshShape> shape;  // of a mesh that moves
  std::vector<host::ElementBlock> blocks;    // of a mesh whose elements may change
};

class MeanRun {
 public:
  MeanRun(const SeriesCommandOptions& options, host::Session& session)
      : options_(options),
        session_(session),
        steps_(choose_steps(session, options.steps)),
        quantities_(whole(choose_quantities(session, options.variables))),
        values_(session),
        chosen_(choose_parts(at_first_step(), options.parts)),
        parts_(session, chosen_),
        first_numbers_(part_numbers(session)),
        sums_(parts_.identities.size()) {}

  void run(const std::filesystem::path& collection) {
    {
      Progress progress("mean", steps_.size() * parts_.identities.size(), ProgressUnit::steps);
      std::uint64_t done = 0;
      for (const int step : steps_) {
        session_.select_step(step);
        const std::map<PartIdentity, int> numbers = part_numbers(session_);
        check_meshes(numbers);
        for (std::size_t i = 0; i < parts_.identities.size(); ++i) {
          stop_if_interrupted();
          progress.update(done++);
          add(numbers.at(parts_.identities[i]), sums_[i]);
        }
      }
    }
    session_.select_step(steps_.front());
    write(collection);
  }

 private:
  // Means of a component are part of those of the vector.
  std::vector<Quantity> whole(std::vector<Quantity> quantities) const {
    for (const Quantity& quantity : quantities) {
      if (!quantity.component) continue;
      throw CommandError(ExitStatus::usage, session_.path().string(),
                         fmt::format("{}: only whole variables can be chosen here",
                                     host::printable(quantity.variable.name)));
    }
    return quantities;
  }

  host::Session& at_first_step() {
    session_.select_step(steps_.front());
    return session_;
  }

  // Throws when a mean cannot be made of some of the parts at the session's step; the message lists the
  // others.
  void check_meshes(const std::map<PartIdentity, int>& numbers) {
    std::vector<std::string> refused;
    std::vector<int> others;  // their numbers at the first step, as --parts takes them
    for (std::size_t i = 0; i < parts_.identities.size(); ++i) {
      stop_if_interrupted();
      const auto found = numbers.find(parts_.identities[i]);
      const char* reason = found == numbers.end() ? "is missing" : unfit_mesh(found->second, i);
      if (reason == nullptr) {
        others.push_back(first_numbers_.at(parts_.identities[i]));
      } else {
        refused.push_back(fmt::format("{} {}", parts_.names[i], reason));
      }
    }
    if (refused.empty()) return;
    constexpr std::size_t kMostNamed = 10;
    const std::size_t named = std::min(kMostNamed, refused.size());
    std::string what = fmt::format(
        "{}", fmt::join(refused.begin(), refused.begin() + static_cast<std::ptrdiff_t>(named), ", "));
    if (refused.size() > named) what += fmt::format(" and {} more", refused.size() - named);
    if (!others.empty()) what += "; choose the others with --parts " + as_ranges(others);
    throw CommandError(
        ExitStatus::failure, session_.path().string(),
        fmt::format("step {}: a mean needs parts at rest or moved rigidly: {}", session_.step(), what));
  }

  // Why a mean cannot be made of a part; null if it can.
  const char* unfit_mesh(int number, std::size_t index) {
    const host::Part& part = session_.part(number);
    const host::ChangingGeometry changing = session_.changing_geometry();
    if (meshes_.size() == index) {
      PartMeshKept& kept = meshes_.emplace_back();
      kept.nodes = part.nodes;
      kept.elements = part.elements;
      if (steps_.size() > 1 && changing != host::ChangingGeometry::fixed)
        kept.shape.emplace(session_.coordinates(number));
      if (steps_.size() > 1 && changing == host::ChangingGeometry::connectivity)
        kept.blocks = session_.elements(number);
      return nullptr;
    }
    const PartMeshKept& kept = meshes_[index];
    if (part.nodes != kept.nodes || part.elements != kept.elements) return kOtherMesh;
    if (changing == host::ChangingGeometry::fixed) return nullptr;
    if (!kept.shape->is_kept_by(session_.coordinates(number))) return "is deformed";
    if (changing != host::ChangingGeometry::connectivity) return nullptr;
    const std::vector<host::ElementBlock> blocks = session_.elements(number);
    for (std::size_t b = 0; b < blocks.size(); ++b) {
      if (blocks[b].nodes != kept.blocks[b].nodes) return kOtherMesh;
    }
    return nullptr;
  }

  void add(int part, std::vector<PartSums>& sums) {
    sums.resize(quantities_.size());
    for (std::size_t q = 0; q < quantities_.size(); ++q) {
      for (int c = 0; c < quantities_[q].variable.components(); ++c) {
        const host::PartValues found = values_.values(quantities_[q], part, c);
        if (found.availability == host::Availability::failed) {
          const ReadProblem problem =
              read_problem(found, session_, "variable " + host::to_utf8(quantities_[q].variable.name));
          throw CommandError(ExitStatus::unreadable, problem.file, problem.reason);
        }
        if (found.availability == host::Availability::given)
          sums[q].components.at(static_cast<std::size_t>(c)).add(found.values());
      }
    }
  }

  void write(const std::filesystem::path& collection) {
    const std::map<PartIdentity, int> numbers = part_numbers(session_);
    std::map<int, std::size_t> index_of;
    for (std::size_t i = 0; i < parts_.identities.size(); ++i) index_of[numbers.at(parts_.identities[i])] = i;
    SeriesOptions series_options{chosen_, {}, std::nullopt, options_.precision, options_.compression, {}};
    series_options.more_values = [&](vtkUnstructuredGrid* grid, int part) {
      for (std::size_t q = 0; q < quantities_.size(); ++q)
        add_arrays(grid, quantities_[q].variable, sums_[index_of.at(part)][q]);
    };
    VtkSeries series(session_, collection, series_options);
    series.add_step(series.write_step([] { stop_if_interrupted(); }));
    series.finish();
  }

  void add_arrays(vtkUnstructuredGrid* grid, const host::Variable& variable, const PartSums& sums) const {
    using analysis::RunningStatistics;
    if (sums.components.front().size() == 0) return;
    const auto add = [&](const char* word, auto value_of) {
      add_array(grid, variable, word, sums, value_of);
    };
    add("mean", &RunningStatistics::mean);
    add("rms", &RunningStatistics::root_mean_square);
    add("deviation", &RunningStatistics::deviation);
    add("minimum", &RunningStatistics::minimum);
    add("maximum", &RunningStatistics::maximum);
    const RunningStatistics& first = sums.components.front();
    bool is_everywhere = true;
    for (std::size_t i = 0; i < first.size(); ++i)
      is_everywhere = is_everywhere && first.count(i) == steps_.size();
    if (!is_everywhere) {
      host::Variable counted = variable;
      counted.kind = host::VariableKind::scalar;
      counted.label.clear();
      add_array(grid, counted, "steps", sums, &RunningStatistics::count);
    }
  }

  template <typename Value>
  void add_array(vtkUnstructuredGrid* grid, const host::Variable& variable, const char* word,
                 const PartSums& sums,
                 Value (analysis::RunningStatistics::*value_of)(std::size_t) const) const {
    const int components = variable.components();
    vtkNew<vtkFloatArray> array;
    array->SetName(fmt::format("{} {}", host::printable(variable.name), word).c_str());
    array->SetNumberOfComponents(components);
    array->SetNumberOfTuples(static_cast<vtkIdType>(sums.components.front().size()));
    for (int c = 0; c < components; ++c) {
      const analysis::RunningStatistics& of_one = sums.components.at(static_cast<std::size_t>(c));
      for (std::size_t i = 0; i < of_one.size(); ++i)
        array->SetTypedComponent(static_cast<vtkIdType>(i), c, static_cast<float>((of_one.*value_of)(i)));
    }
    vtkdata::set_unit(array, variable);
    const vtkSmartPointer<vtkDataArray> values = at_precision(array, options_.precision);
    if (variable.location == host::Location::element) {
      grid->GetCellData()->AddArray(values);
    } else {
      grid->GetPointData()->AddArray(values);
    }
  }

  const SeriesCommandOptions& options_;
  host::Session& session_;
  std::vector<int> steps_;
  std::vector<Quantity> quantities_;
  QuantityValues values_;
  ChosenParts chosen_;
  HistoryParts parts_;
  std::map<PartIdentity, int> first_numbers_;
  std::vector<PartMeshKept> meshes_;
  std::vector<std::vector<PartSums>> sums_;  // per part and quantity
};

void run_mean(const SeriesCommandOptions& options) {
  const std::filesystem::path collection = collection_path(options);
  vtkObject::GlobalWarningDisplayOff();  // errors are told in one line of our own
  with_dataset(options.dataset, [&](host::Session& session) { MeanRun(options, session).run(collection); });
  Output output("");
  output.write(collection.string() + "\n");
  output.finish();
}

}  // namespace

void add_mean_command(CLI::App& app) {
  const auto options = std::make_shared<SeriesCommandOptions>();
  CLI::App* command = app.add_subcommand("mean", "Write means over steps as VTK files");
  add_series_options(*command, *options, SeriesJobs::one);
  command->footer(std::string(kMeanManual) + kDerivedText + kChoiceText + kExitStatusText);
  command->callback([options] { run_mean(*options); });
}

}  // namespace tool
