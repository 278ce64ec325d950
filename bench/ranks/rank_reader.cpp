// Reads steps on the ranks of an MPI group as the plug-in for ParaView does, or a .vtu file as ParaView's own
// reader does, and writes what each rank read, sent and held as a line of JSON per step.
// ranks_benchmark.py runs it.
#include <CLI/CLI.hpp>
#include <chrono>
#include <exception>
#include <fmt/core.h>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>
#include <vtkCellArray.h>
#include <vtkMPIController.h>
#include <vtkNew.h>
#include <vtkPartitionedDataSetCollection.h>
#include <vtkUnstructuredGrid.h>
#include <vtkXMLUnstructuredGridReader.h>
#include <vtkXMLUnstructuredGridWriter.h>

#include "bench/floor.h"
#include "parallel/step_reader.h"
#include "paraview/controller_communicator.h"
#include "paraview/dataset.h"
#include "paraview/share_store.h"

namespace {

using Json = nlohmann::json;

struct Options {
  std::string file;
  std::string vtu;
  std::vector<std::string> parts;
  std::vector<std::string> variables;
  bool wide = false;
  int steps = 1;
  int layers = 0;
};

// A figure of /proc/self/<file>, by the name at the start of its line.
std::int64_t figure_of_process(const char* file, const std::string& name) {
  std::ifstream lines(std::string("/proc/self/") + file);
  for (std::string word; lines >> word;) {
    std::int64_t figure = 0;
    if (word == name && lines >> figure) return figure;
  }
  return 0;
}

std::int64_t bytes_from_files() {
  return figure_of_process("io", "rchar:");
}

std::int64_t resident_bytes() {
  return figure_of_process("status", "VmRSS:") * 1024;
}

std::int64_t peak_bytes() {
  return figure_of_process("status", "VmHWM:") * 1024;
}

// Has the peak begin anew.
void forget_peak() {
  std::ofstream("/proc/self/clear_refs") << 5;
}

class Clock {
 public:
  double seconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  }

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

// The arrays that the shares of a step are made from, each once.
std::int64_t bytes_of_arrays(const layout::StepLayout& step) {
  std::set<std::pair<std::int32_t, std::int64_t>> known;
  std::int64_t bytes = 0;
  const auto add = [&](const layout::FileArray& array) {
    if (array.exists() && array.count() > 0 && known.emplace(array.file, array.place.offset).second)
      bytes += array.count() * array.place.width;
  };
  for (const layout::PartLists& part : step.parts) {
    const layout::SetMesh& mesh = step.sets[static_cast<std::size_t>(part.set)];
    for (const layout::FileArray& axis : mesh.axes) add(axis);
    if (part.kind == layout::PartKind::surface) {
      add(part.face_types);
      add(part.face_nodes);
    } else {
      add(part.elements);
      add(mesh.types);
      add(mesh.conn);
    }
    for (const layout::VariableValues& variable : step.variables) {
      if (variable.is_material) {
        add(mesh.materials);
        add(part.face_links);
      } else {
        for (const layout::FileArray& array : variable.sets[static_cast<std::size_t>(part.set)].components)
          add(array);
      }
    }
  }
  return bytes;
}

std::int64_t bytes_of_values(const layout::StepLayout& step) {
  layout::StepLayout values = step;
  for (layout::SetMesh& mesh : values.sets) mesh.axes = {}, mesh.types = mesh.conn = {};
  for (layout::PartLists& part : values.parts) part.elements = part.face_types = part.face_nodes = {};
  return bytes_of_arrays(values);
}

std::int64_t bytes_of_grids(vtkPartitionedDataSetCollection* collection) {
  std::int64_t kibibytes = 0;
  for (unsigned i = 0; i < collection->GetNumberOfPartitionedDataSets(); ++i) {
    if (vtkDataObject* grid = collection->GetPartitionAsDataObject(i, 0))
      kibibytes += static_cast<std::int64_t>(grid->GetActualMemorySize());
  }
  return kibibytes * 1024;
}

bool has(const std::vector<std::string>& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

// Rank 0 prints the description with what each rank counted: names and as many figures.
void print(parallel::Communicator& ranks, Json description,
           const std::vector<std::pair<std::string, std::int64_t>>& figures) {
  for (const auto& [name, own] : figures) description[name] = ranks.gather(own);
  if (ranks.rank() == 0) fmt::print("{}\n", description.dump());
}

// Waits for the others, so that all clocks start together.
void meet(parallel::Communicator& ranks) {
  ranks.gather(0);
}

void read_fld(const Options& options, parallel::Communicator& ranks) {
  const std::int64_t at_rest = resident_bytes();
  const std::int64_t read_before = bytes_from_files();
  meet(ranks);
  const Clock opening;
  std::unique_ptr<paraview::Dataset> dataset;
  std::string bytes;
  double first_rank = 0;
  if (ranks.rank() == 0) {
    dataset = std::make_unique<paraview::Dataset>(options.file, paraview::ReadingOptions());
    first_rank = opening.seconds();
    bytes = to_bytes(dataset->info());
  }
  ranks.broadcast(bytes);
  const paraview::DatasetInfo info = paraview::dataset_info_from(bytes);
  const double opened = opening.seconds();
  print(ranks, {{"what", "opening"}, {"seconds", opened}, {"first_rank_seconds", first_rank}},
        {{"bytes", bytes_from_files() - read_before}});

  const paraview::Choice choice{
      [&](const paraview::PartInfo& part) {
        return options.parts.empty() ? part.is_whole_mesh : has(options.parts, part.name);
      },
      [&](const paraview::VariableInfo& variable) { return has(options.variables, variable.name); }};
  parallel::FileArrays files(info.files);
  parallel::StepReader reader(files);
  paraview::ShareStore store;
  store.set_shared(ranks.size() > 1);
  for (int step = 0; step < options.steps; ++step) {
    const parallel::ReadCounts before = files.counts();
    const std::int64_t sent_before = parallel::bytes_sent();
    forget_peak();
    meet(ranks);
    const Clock clock;
    paraview::StepPlan plan;
    if (ranks.rank() == 0) {
      plan = dataset->plan(step, choice);
      bytes = to_bytes(plan);
    }
    ranks.broadcast(bytes);
    plan = paraview::step_plan_from(bytes);
    plan.ghost_layers = ranks.size() > 1 ? options.layers : 0;
    const parallel::ShareNumber share{ranks.rank(), ranks.size(), plan.ghost_layers};
    reader.read(ranks, plan.layout, share, store, [](double) { return true; });
    store.fill_missing(plan, info);
    store.mark_ghosts(plan, info);
    const vtkSmartPointer<vtkPartitionedDataSetCollection> collection = store.collection(plan, info);
    meet(ranks);
    const double seconds = clock.seconds();
    for (const parallel::Problem& problem : reader.problems())
      fmt::print(stderr, "rank_reader: {}\n", problem.reason);
    const parallel::ReadCounts& now = files.counts();
    print(ranks,
          {{"what", "step"},
           {"seconds", seconds},
           {"needed", step == 0 ? bytes_of_arrays(plan.layout) : bytes_of_values(plan.layout)}},
          {{"cells", collection->GetNumberOfCells()},
           {"bytes", now.bytes - before.bytes},
           {"reads", now.reads - before.reads},
           {"small_reads", now.small_reads - before.small_reads},
           {"sent", parallel::bytes_sent() - sent_before},
           {"share", bytes_of_grids(collection)},
           {"peak", peak_bytes() - at_rest}});
    if (!options.vtu.empty()) {
      vtkNew<vtkXMLUnstructuredGridWriter> writer;
      auto* const grid = vtkUnstructuredGrid::SafeDownCast(collection->GetPartitionAsDataObject(0, 0));
      if (options.wide) grid->GetCells()->ConvertTo64BitStorage();
      writer->SetInputData(grid);
      writer->SetFileName(options.vtu.c_str());
      writer->SetDataModeToAppended();
      writer->EncodeAppendedDataOff();
      writer->SetCompressorTypeToNone();
      writer->Write();
    }
    if (step > 0 && ranks.size() == 1 && !plan.layout.variables.empty()) {
      // The floor of a further step: its first scalar, read and swapped.
      const layout::FileArray& array = plan.layout.variables.front().sets.front().components.front();
      const auto begin = static_cast<std::uint64_t>(array.place.offset);
      const auto end = static_cast<std::uint64_t>(array.place.offset_of(array.count() - 1)) + 4;
      const Clock floor;
      const bench::Words words = bench::read_and_swap(info.files[static_cast<std::size_t>(array.file)],
                                                      {begin, (end - begin) / 4 * 4});
      print(ranks, {{"what", "floor"}, {"seconds", floor.seconds()}}, {});
    }
  }
}

void read_vtu(const Options& options, parallel::Communicator& ranks) {
  const std::int64_t at_rest = resident_bytes();
  forget_peak();
  const Clock clock;
  vtkNew<vtkXMLUnstructuredGridReader> reader;
  reader->SetFileName(options.file.c_str());
  reader->Update();
  const double seconds = clock.seconds();
  print(ranks, {{"what", "step"}, {"seconds", seconds}},
        {{"cells", reader->GetOutput()->GetNumberOfCells()},
         {"share", static_cast<std::int64_t>(reader->GetOutput()->GetActualMemorySize()) * 1024},
         {"peak", peak_bytes() - at_rest}});
}

int run(int argc, char** argv, vtkMPIController* controller) {
  CLI::App app(
      "Reads steps as the plug-in for ParaView does, on the ranks of an MPI group, and tells what that took");
  Options options;
  app.add_option("file", options.file, "a dataset, or a .vtu file")->required()->check(CLI::ExistingFile);
  app.add_option("--part", options.parts, "parts, by their names in ParaView; the whole meshes without any");
  app.add_option("--variable", options.variables, "variables");
  app.add_option("--steps", options.steps, "how many steps, from the first")->check(CLI::PositiveNumber);
  app.add_option("--layers", options.layers, "layers of ghost cells, on several ranks");
  app.add_option("--write", options.vtu, "a .vtu file for the first part, raw");
  app.add_flag("--wide", options.wide,
               "with point numbers of 64 bits in it, as ParaView's filters make them");
  CLI11_PARSE(app, argc, argv);
  const std::unique_ptr<parallel::Communicator> ranks = paraview::make_communicator(controller);
  if (options.file.ends_with(".vtu")) {
    read_vtu(options, *ranks);
  } else {
    read_fld(options, *ranks);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const vtkNew<vtkMPIController> controller;
  controller->Initialize(&argc, &argv);
  int status = 1;
  try {
    status = run(argc, argv, controller);
  } catch (const std::exception& error) {
    fmt::print(stderr, "rank_reader: {}\n", error.what());
  }
  controller->Finalize();
  return status;
}
