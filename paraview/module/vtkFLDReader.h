// The source of FLD datasets in VTK's pipeline.
//
// The output is a collection with one partitioned data set per enabled part, and the hierarchy of the parts
// as its assembly. With several processes all ranks read, and each gets a range of the cells of every part; a
// single process delivers the requested piece.
#pragma once

#include <memory>
#include <string>
#include <vtkPartitionedDataSetCollectionAlgorithm.h>
#include <vtkSmartPointer.h>

#include "FLDReaderModuleModule.h"

class vtkDataAssembly;
class vtkMultiProcessController;
class vtkPartitionedDataSetCollection;
class vtkStringArray;

namespace paraview {
struct StepPlan;
}
namespace parallel {
struct ShareNumber;
}

class FLDREADERMODULE_EXPORT vtkFLDReader : public vtkPartitionedDataSetCollectionAlgorithm {
 public:
  static vtkFLDReader* New();
  vtkTypeMacro(vtkFLDReader, vtkPartitionedDataSetCollectionAlgorithm);
  void PrintSelf(ostream& os, vtkIndent indent) override;

  // A failed request reports an error; in a single process nothing is thrown, not even where memory is
  // exhausted.
  vtkTypeBool ProcessRequest(vtkInformation* request, vtkInformationVector** inputs,
                             vtkInformationVector* outputs) override;
  vtkFLDReader(const vtkFLDReader&) = delete;
  vtkFLDReader& operator=(const vtkFLDReader&) = delete;

  // Any file of the dataset. Of several files, which ParaView passes when it groups numbered files, the first
  // is used; a warning names files that do not belong to its dataset.
  void SetFileName(const char* name);
  void AddFileName(const char* name);
  void RemoveAllFileNames();

  // Whether the file begins like an FLD file: 1 or 0.
  static int CanReadFile(const char* name);

  // The reader's options.
  void SetSimplifyReading(bool on);
  void SetGroupParts(bool on);
  // Whether the coordinates that motions start from stay in memory, so that no step reads them again.
  void SetKeepCoordinates(bool keep);

  // Parts and variables by name, and whether they are enabled. Known after UpdateInformation.
  int GetNumberOfPartArrays();
  const char* GetPartArrayName(int index);
  int GetPartArrayStatus(const char* name);
  void SetPartArrayStatus(const char* name, int status);
  int GetNumberOfPointArrays();
  const char* GetPointArrayName(int index);
  int GetPointArrayStatus(const char* name);
  void SetPointArrayStatus(const char* name, int status);
  int GetNumberOfCellArrays();
  const char* GetCellArrayName(int index);
  int GetCellArrayStatus(const char* name);
  void SetCellArrayStatus(const char* name, int status);
  // Each name, followed by "1" if it is enabled and "0" if not: ParaView asks for all of them in one call.
  vtkStringArray* GetPartStates();
  vtkStringArray* GetPointStates();
  vtkStringArray* GetCellStates();

  // The same parts as branches of their hierarchy, by selectors such as "/Parts/Volumes". When they change,
  // the parts that they select are switched on and the others off. What was switched last holds.
  void AddPartSelector(const char* selector);
  void ClearPartSelectors();
  // The hierarchy of all parts, which the output has of those that are shown; null before UpdateInformation.
  // The tag is another one after each opening.
  vtkDataAssembly* GetAssembly();
  int GetAssemblyTag();

  // The process group, by default the global one. Null for a reader in this process only.
  void SetController(vtkMultiProcessController* controller);

  // Reopens the dataset at the next update.
  void Refresh();

 protected:
  vtkFLDReader();
  ~vtkFLDReader() override;

  int RequestInformation(vtkInformation* request, vtkInformationVector** inputs,
                         vtkInformationVector* outputs) override;
  int RequestData(vtkInformation* request, vtkInformationVector** inputs,
                  vtkInformationVector* outputs) override;

 private:
  struct State;

  bool OpenDataset();
  void ApplyBranches();
  std::string OpenOnFirstRank();
  void WarnOfOtherFiles();
  int RequestedStep(vtkInformation* output_information) const;
  paraview::StepPlan PlanStep(int step);
  vtkSmartPointer<vtkPartitionedDataSetCollection> ReadStep(int step, int ghost_layers,
                                                            parallel::ShareNumber piece);

  std::unique_ptr<State> State_;
};
