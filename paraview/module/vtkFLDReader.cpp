#include "paraview/module/vtkFLDReader.h"

#include <algorithm>
#include <array>
#include <exception>
#include <filesystem>
#include <fstream>
#include <new>
#include <optional>
#include <set>
#include <vector>
#include <vtkInformation.h>
#include <vtkInformationVector.h>
#include <vtkMultiProcessController.h>
#include <vtkObjectFactory.h>
#include <vtkPartitionedDataSetCollection.h>
#include <vtkStreamingDemandDrivenPipeline.h>
#include <vtkStringArray.h>

#include "paraview/branch_choice.h"
#include "paraview/controller_communicator.h"
#include "paraview/dataset.h"
#include "paraview/hierarchy.h"
#include "paraview/problem_texts.h"
#include "paraview/selection.h"
#include "paraview/share_store.h"

namespace {

constexpr char kMagic[] = "VTRL-FLD";
constexpr std::size_t kMagicOffset = 4;  // after the marker of the first record

vtkSmartPointer<vtkStringArray> states_of(const paraview::Selection& selection) {
  auto states = vtkSmartPointer<vtkStringArray>::New();
  for (const std::string& name : selection.names()) {
    states->InsertNextValue(name);
    states->InsertNextValue(selection.is_on(name) ? "1" : "0");
  }
  return states;
}

}  // namespace

struct vtkFLDReader::State {
  std::vector<std::string> file_names;
  paraview::ReadingOptions options;
  vtkMultiProcessController* controller = nullptr;
  bool keep_coordinates = false;
  paraview::Selection parts;
  paraview::Selection point_arrays;
  paraview::Selection cell_arrays;
  paraview::BranchChoice branches;
  // What the reader has told of these selections last.
  vtkSmartPointer<vtkStringArray> parts_states;
  vtkSmartPointer<vtkStringArray> point_arrays_states;
  vtkSmartPointer<vtkStringArray> cell_arrays_states;

  // Whether the dataset was opened, or failed to open, with the settings above.
  bool is_current = false;
  std::optional<paraview::DatasetInfo> info;   // if it is open
  vtkSmartPointer<vtkDataAssembly> hierarchy;  // of its parts
  int openings = 0;
  std::unique_ptr<paraview::Dataset> dataset;  // likewise, on rank 0
  std::unique_ptr<parallel::FileArrays> files;
  std::unique_ptr<parallel::StepReader> steps;
  paraview::ShareStore store;
  int ghost_layers = 0;  // the most that were asked for

  bool is_first_rank() const { return controller == nullptr || controller->GetLocalProcessId() == 0; }

  void forget_dataset() {
    is_current = false;
    steps.reset();
    files.reset();
    dataset.reset();
    store.clear();
    ghost_layers = 0;
    hierarchy = nullptr;
    info.reset();
  }
};

vtkStandardNewMacro(vtkFLDReader);

vtkFLDReader::vtkFLDReader() : State_(std::make_unique<State>()) {
  SetNumberOfInputPorts(0);
  SetController(vtkMultiProcessController::GetGlobalController());
}

vtkFLDReader::~vtkFLDReader() = default;

void vtkFLDReader::PrintSelf(ostream& os, vtkIndent indent) {
  Superclass::PrintSelf(os, indent);
  for (const std::string& name : State_->file_names) os << indent << "FileName: " << name << '\n';
  os << indent << "SimplifyReading: " << State_->options.simplify << '\n';
  os << indent << "KeepCoordinates: " << State_->keep_coordinates << '\n';
  os << indent << "GroupParts: " << State_->options.group_parts << '\n';
}

void vtkFLDReader::SetFileName(const char* name) {
  if (name != nullptr && State_->file_names == std::vector<std::string>{name}) return;
  RemoveAllFileNames();
  AddFileName(name);
}

void vtkFLDReader::AddFileName(const char* name) {
  if (name == nullptr || *name == '\0') return;
  State_->file_names.emplace_back(name);
  Refresh();
}

void vtkFLDReader::RemoveAllFileNames() {
  if (State_->file_names.empty()) return;
  State_->file_names.clear();
  Refresh();
}

int vtkFLDReader::CanReadFile(const char* name) {
  std::ifstream file(name != nullptr ? name : "", std::ios::binary);
  std::array<char, kMagicOffset + sizeof kMagic - 1> start{};
  file.read(start.data(), start.size());
  return static_cast<int>(file && std::equal(start.begin() + kMagicOffset, start.end(), kMagic));
}

void vtkFLDReader::SetSimplifyReading(bool on) {
  if (on == State_->options.simplify) return;
  State_->options.simplify = on;
  Refresh();
}

void vtkFLDReader::SetGroupParts(bool on) {
  if (on == State_->options.group_parts) return;
  State_->options.group_parts = on;
  Refresh();
}

void vtkFLDReader::SetKeepCoordinates(bool keep) {
  // Shows nothing else, so nothing has to be read anew.
  State_->keep_coordinates = keep;
}

void vtkFLDReader::SetController(vtkMultiProcessController* controller) {
  if (controller == State_->controller) return;
  State_->controller = controller;
  Refresh();
}

void vtkFLDReader::Refresh() {
  State_->is_current = false;
  Modified();
}

// The accessors of the three selections.
#define FLD_SELECTION(Kind, member)                                           \
  int vtkFLDReader::GetNumberOf##Kind##Arrays() {                             \
    return static_cast<int>(State_->member.names().size());                   \
  }                                                                           \
  const char* vtkFLDReader::Get##Kind##ArrayName(int index) {                 \
    const std::vector<std::string>& names = State_->member.names();           \
    const auto i = static_cast<std::size_t>(index);                           \
    return index >= 0 && i < names.size() ? names[i].c_str() : nullptr;       \
  }                                                                           \
  int vtkFLDReader::Get##Kind##ArrayStatus(const char* name) {                \
    return static_cast<int>(name != nullptr && State_->member.is_on(name));   \
  }                                                                           \
  vtkStringArray* vtkFLDReader::Get##Kind##States() {                         \
    return State_->member##_states = states_of(State_->member);               \
  }                                                                           \
  void vtkFLDReader::Set##Kind##ArrayStatus(const char* name, int status) {   \
    ApplyBranches();                                                          \
    if (name != nullptr && State_->member.set(name, status != 0)) Modified(); \
  }
FLD_SELECTION(Part, parts)
FLD_SELECTION(Point, point_arrays)
FLD_SELECTION(Cell, cell_arrays)
#undef FLD_SELECTION

void vtkFLDReader::AddPartSelector(const char* selector) {
  if (selector == nullptr) return;
  State_->branches.add(selector);
  Modified();
}

void vtkFLDReader::ClearPartSelectors() {
  State_->branches.clear();
  Modified();
}

void vtkFLDReader::ApplyBranches() {
  State& state = *State_;
  if (state.info) state.branches.apply(state.hierarchy, state.info->parts, state.parts);
}

vtkDataAssembly* vtkFLDReader::GetAssembly() {
  return State_->hierarchy;
}

int vtkFLDReader::GetAssemblyTag() {
  return State_->openings;
}

// Opens the dataset on rank 0 and returns the error message, if any.
std::string vtkFLDReader::OpenOnFirstRank() {
  State& state = *State_;
  if (state.file_names.empty()) return "no file name is set";
  const std::string& file = state.file_names.front();
  try {
    state.dataset = std::make_unique<paraview::Dataset>(file, state.options);
    state.info = state.dataset->info();
    return "";
  } catch (const std::exception& error) {
    return "cannot open " + paraview::reason_with_file(file, error.what());
  }
}

bool vtkFLDReader::OpenDataset() {
  State& state = *State_;
  if (state.is_current) {
    if (!state.info) return false;
    ApplyBranches();
    return true;
  }
  state.forget_dataset();
  state.is_current = true;
  std::string message;
  std::string bytes;
  if (state.is_first_rank()) {
    message = OpenOnFirstRank();
    if (state.info) bytes = to_bytes(*state.info);
  }
  paraview::make_communicator(state.controller)->broadcast(bytes);
  if (!bytes.empty() && !state.info) state.info = paraview::dataset_info_from(bytes);
  if (!message.empty()) vtkErrorMacro(<< paraview::message_line(message));
  if (!state.info) return false;
  state.files = std::make_unique<parallel::FileArrays>(state.info->files);
  state.steps = std::make_unique<parallel::StepReader>(*state.files);
  state.hierarchy = paraview::make_hierarchy(state.info->parts, state.info->folders);
  ++state.openings;

  std::vector<paraview::VariableInfo> per_point;
  std::vector<paraview::VariableInfo> per_cell;
  for (const paraview::VariableInfo& variable : state.info->variables)
    (variable.is_per_cell ? per_cell : per_point).push_back(variable);
  const auto on = [](const auto&) { return true; };
  // Whole meshes show all of the result and each face once. The other parts overlap them and each other.
  state.parts.offer(state.info->parts, [](const paraview::PartInfo& part) { return part.is_whole_mesh; });
  state.point_arrays.offer(per_point, on);
  state.cell_arrays.offer(per_cell, on);
  ApplyBranches();

  if (state.dataset) {
    if (state.info->times_are_numbers) {
      vtkWarningMacro(<< "the solution times of " << paraview::message_line(state.file_names.front())
                      << " do not ascend: the steps are shown at the times 0, 1, 2, ...");
    }
    WarnOfOtherFiles();
  }
  return true;
}

void vtkFLDReader::WarnOfOtherFiles() {
  const State& state = *State_;
  std::set<std::filesystem::path> known;
  for (const std::filesystem::path file : state.info->files) known.insert(file.filename());
  for (const auto& [path, reason] : state.dataset->left_out()) {
    vtkWarningMacro(<< paraview::message_line(path + " is left out: " + reason));
    known.insert(std::filesystem::path(path).filename());
  }
  std::vector<std::string> others;
  for (const std::string& file : state.file_names) {
    if (!known.contains(std::filesystem::path(file).filename())) others.push_back(file);
  }
  if (!others.empty()) vtkWarningMacro(<< paraview::other_files_text(others, state.file_names.front()));
}

vtkTypeBool vtkFLDReader::ProcessRequest(vtkInformation* request, vtkInformationVector** inputs,
                                         vtkInformationVector* outputs) {
  State& state = *State_;
  // On several ranks an exception ends the program: the other ranks would wait for this one for ever.
  if (state.controller != nullptr && state.controller->GetNumberOfProcesses() > 1)
    return Superclass::ProcessRequest(request, inputs, outputs);
  std::string reason;
  try {
    return Superclass::ProcessRequest(request, inputs, outputs);
  } catch (const std::bad_alloc&) {
    reason = "not enough memory";
  } catch (const std::exception& error) {
    reason = error.what();
  }
  // The next request opens the dataset again.
  state.forget_dataset();
  const std::string file = state.file_names.empty() ? "" : state.file_names.front();
  vtkErrorMacro(<< paraview::message_line("cannot read " + file + ": " + reason));
  return 0;
}

int vtkFLDReader::RequestInformation(vtkInformation* /*request*/, vtkInformationVector** /*inputs*/,
                                     vtkInformationVector* outputs) {
  using Pipeline = vtkStreamingDemandDrivenPipeline;
  vtkInformation* information = outputs->GetInformationObject(0);
  information->Set(CAN_HANDLE_PIECE_REQUEST(), 1);
  if (!OpenDataset()) {
    // The message is out. A request that fails would be another one of the pipeline's on every rank.
    information->Remove(Pipeline::TIME_STEPS());
    information->Remove(Pipeline::TIME_RANGE());
    return 1;
  }
  const std::vector<double>& times = State_->info->times;
  const std::array<double, 2> range = {times.front(), times.back()};
  information->Set(Pipeline::TIME_STEPS(), times.data(), static_cast<int>(times.size()));
  information->Set(Pipeline::TIME_RANGE(), range.data(), 2);
  return 1;
}

int vtkFLDReader::RequestedStep(vtkInformation* information) const {
  using Pipeline = vtkStreamingDemandDrivenPipeline;
  if (information->Has(Pipeline::UPDATE_TIME_STEP()) == 0) return 0;
  return State_->info->step_at(information->Get(Pipeline::UPDATE_TIME_STEP()));
}

int vtkFLDReader::RequestData(vtkInformation* /*request*/, vtkInformationVector** /*inputs*/,
                              vtkInformationVector* outputs) {
  using Pipeline = vtkStreamingDemandDrivenPipeline;
  vtkPartitionedDataSetCollection* output = vtkPartitionedDataSetCollection::GetData(outputs);
  vtkInformation* information = outputs->GetInformationObject(0);
  output->Initialize();
  if (!OpenDataset()) return 1;
  // The setter would mark this reader as modified and trigger another request.
  AbortExecute = 0;
  const auto number = [&](vtkInformationIntegerKey* key, int missing) {
    return information->Has(key) != 0 ? information->Get(key) : missing;
  };
  const int step = RequestedStep(information);
  parallel::ShareNumber piece;
  piece.count = std::max(number(Pipeline::UPDATE_NUMBER_OF_PIECES(), 1), 1);
  piece.index = std::clamp(number(Pipeline::UPDATE_PIECE_NUMBER(), 0), 0, piece.count - 1);
  const vtkSmartPointer<vtkPartitionedDataSetCollection> read =
      ReadStep(step, number(Pipeline::UPDATE_NUMBER_OF_GHOST_LEVELS(), 0), piece);
  if (read) output->ShallowCopy(read);
  // Also of a step that cannot be shown, which is tried once and not at every update.
  output->GetInformation()->Set(vtkDataObject::DATA_TIME_STEP(),
                                State_->info->times[static_cast<std::size_t>(step)]);
  return 1;
}

// What the step shows of what is switched on, as rank 0 decides it.
paraview::StepPlan vtkFLDReader::PlanStep(int step) {
  State& state = *State_;
  const paraview::Choice choice{
      [&](const paraview::PartInfo& part) { return state.parts.is_on(part.name); },
      [&](const paraview::VariableInfo& variable) {
        return (variable.is_per_cell ? state.cell_arrays : state.point_arrays).is_on(variable.name);
      }};
  try {
    return state.dataset->plan(step, choice);
  } catch (const std::exception& error) {
    paraview::StepPlan none;
    none.failure = error.what();
    return none;
  }
}

vtkSmartPointer<vtkPartitionedDataSetCollection> vtkFLDReader::ReadStep(int step, int ghost_layers,
                                                                        parallel::ShareNumber piece) {
  State& state = *State_;
  const std::unique_ptr<parallel::Communicator> ranks = paraview::make_communicator(state.controller);
  std::string bytes;
  if (state.is_first_rank()) {
    // Who asks for less has them too: otherwise two filters would have the mesh read in turns.
    state.ghost_layers = std::max(state.ghost_layers, ghost_layers);
    paraview::StepPlan planned = PlanStep(step);
    if (ranks->size() > 1) planned.ghost_layers = state.ghost_layers;
    bytes = to_bytes(planned);
  }
  ranks->broadcast(bytes);
  const paraview::StepPlan plan = paraview::step_plan_from(bytes);
  if (!plan.failure.empty()) {
    if (state.is_first_rank()) {
      const std::string reason = paraview::reason_with_file(state.file_names.front(), plan.failure);
      vtkErrorMacro(<< paraview::message_line("cannot read step " + std::to_string(step) + " of " + reason));
    }
    return nullptr;
  }
  const bool is_alone = ranks->size() == 1;
  const parallel::ShareNumber share =
      is_alone ? piece : parallel::ShareNumber{ranks->rank(), ranks->size(), plan.ghost_layers};
  state.store.set_shared(share.count > 1);
  state.steps->keep_coordinates(state.keep_coordinates);
  const auto progress = [&](double done) {
    UpdateProgress(done);
    return GetAbortExecute() == 0;
  };
  if (state.steps->read(*ranks, plan.layout, share, state.store, progress))
    state.store.fill_missing(plan, *state.info);
  state.store.mark_ghosts(plan, *state.info);
  if (state.is_first_rank()) {
    for (const std::string& text : paraview::problem_texts(state.steps->problems(), plan.parts, *state.info))
      vtkErrorMacro(<< text);
  }
  return state.store.collection(plan, *state.info);
}
