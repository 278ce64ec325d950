#include "tests/paraview/paraview_reader.h"

#include <vtkCallbackCommand.h>
#include <vtkCompositeDataSet.h>
#include <vtkDataAssembly.h>
#include <vtkExecutive.h>
#include <vtkInformation.h>
#include <vtkInformationStringKey.h>
#include <vtkNew.h>
#include <vtkStreamingDemandDrivenPipeline.h>

namespace paraview_test {
namespace {

using Pipeline = vtkStreamingDemandDrivenPipeline;

// Adds the messages of an event to `list`.
void collect(vtkObject* object, unsigned long event, std::vector<std::string>& list) {
  vtkNew<vtkCallbackCommand> command;
  command->SetClientData(&list);
  command->SetCallback([](vtkObject*, unsigned long, void* to, void* message) {
    static_cast<std::vector<std::string>*>(to)->emplace_back(static_cast<const char*>(message));
  });
  object->AddObserver(event, command);
}

std::string name_of(vtkPartitionedDataSetCollection* collection, unsigned index) {
  return collection->GetMetaData(index)->Get(vtkCompositeDataSet::NAME());
}

}  // namespace

Reader::Reader(const std::filesystem::path& file) : reader_(vtkSmartPointer<vtkFLDReader>::New()) {
  collect(reader_, vtkCommand::ErrorEvent, errors_);
  collect(reader_, vtkCommand::WarningEvent, warnings_);
  collect(reader_->GetExecutive(), vtkCommand::ErrorEvent, errors_);
  reader_->SetController(nullptr);
  reader_->SetFileName(file.c_str());
}

bool Reader::open_as_it_is() {
  return reader_->GetExecutive()->UpdateInformation() != 0 &&
         reader_->GetOutputInformation(0)->Has(Pipeline::TIME_STEPS()) != 0;
}

bool Reader::open() {
  if (!open_as_it_is()) return false;
  for (const std::string& name : part_names()) {
    const int status = name.starts_with("ALL_ELEMENTS") ? 0 : 1;
    if (known_parts_.insert(name).second) reader_->SetPartArrayStatus(name.c_str(), status);
  }
  // Before a piece is asked for: the pipeline would forget that otherwise.
  return open_as_it_is();
}

std::vector<double> Reader::times() {
  vtkInformation* information = reader_->GetOutputInformation(0);
  const double* times = information->Get(Pipeline::TIME_STEPS());
  return {times, times + information->Length(Pipeline::TIME_STEPS())};
}

std::vector<std::string> Reader::part_names() {
  std::vector<std::string> names;
  for (int i = 0; i < reader_->GetNumberOfPartArrays(); ++i) names.emplace_back(reader_->GetPartArrayName(i));
  return names;
}

void Reader::show_only(const std::string& part) {
  for (const std::string& name : part_names())
    reader_->SetPartArrayStatus(name.c_str(), static_cast<int>(name == part));
}

bool Reader::has_updated() {
  return reader_->GetExecutive()->Update() != 0 && output()->GetDataAssembly() != nullptr;
}

bool Reader::update(double time) {
  if (!open()) return false;
  reader_->GetOutputInformation(0)->Set(Pipeline::UPDATE_TIME_STEP(), time);
  return has_updated();
}

bool Reader::update_piece(int piece, int pieces, int ghost_layers) {
  if (!open()) return false;
  reader_->GetOutputInformation(0)->Set(Pipeline::UPDATE_PIECE_NUMBER(), piece);
  reader_->GetOutputInformation(0)->Set(Pipeline::UPDATE_NUMBER_OF_PIECES(), pieces);
  reader_->GetOutputInformation(0)->Set(Pipeline::UPDATE_NUMBER_OF_GHOST_LEVELS(), ghost_layers);
  return has_updated();
}

vtkPartitionedDataSetCollection* Reader::output() {
  return vtkPartitionedDataSetCollection::SafeDownCast(reader_->GetOutputDataObject(0));
}

vtkUnstructuredGrid* Reader::grid(const std::string& part) {
  for (unsigned i = 0; i < output()->GetNumberOfPartitionedDataSets(); ++i) {
    if (name_of(output(), i) == part) return vtkUnstructuredGrid::SafeDownCast(output()->GetPartition(i, 0));
  }
  return nullptr;
}

std::vector<std::string> Reader::shown_parts() {
  std::vector<std::string> names;
  for (unsigned i = 0; i < output()->GetNumberOfPartitionedDataSets(); ++i)
    names.push_back(name_of(output(), i));
  return names;
}

}  // namespace paraview_test
