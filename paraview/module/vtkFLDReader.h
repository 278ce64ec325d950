// FLD datasets in VTK's pipeline.
//
// The output is a collection with one partitioned data set per part that is switched on, with the hierarchy
// of the parts as its assembly. In a process group rank 0 alone reads, and each rank gets a stretch of every
// part's cells; in a process of its own the reader gives the piece that is asked for.
#pragma once

#include <memory>
#include <string>
#include <vtkPartitionedDataSetCollectionAlgorithm.h>

#include "FLDReaderModuleModule.h"

class vtkMultiProcessController;

class FLDREADERMODULE_EXPORT vtkFLDReader : public vtkPartitionedDataSetCollectionAlgorithm {
 public:
  static vtkFLDReader* New();
  vtkTypeMacro(vtkFLDReader, vtkPartitionedDataSetCollectionAlgorithm);
  void PrintSelf(ostream& os, vtkIndent indent) override;
  vtkFLDReader(const vtkFLDReader&) = delete;
  vtkFLDReader& operator=(const vtkFLDReader&) = delete;

  // Any file of the dataset. Of several, which ParaView hands over when it groups numbered files, the first
  // decides; a file that does not belong to its dataset is named in a warning, as far as the reader tells
  // which files do.
  void SetFileName(const char* name);
  void AddFileName(const char* name);
  void RemoveAllFileNames();

  // Whether the file begins as an FLD file does: 1 or 0.
  static int CanReadFile(const char* name);

  // The reader library. Without one it is looked for beside this class's library and in the three folders
  // above it, or where the environment variable FLD_PLUGIN says.
  void SetReaderLibrary(const char* path);

  // The reader's options.
  void SetSimplifyReading(bool on);
  void SetGroupParts(bool on);

  // Parts and variables, by name, and whether they are wanted. Known after UpdateInformation.
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

  // The process group; at first the global one. Null for a reader of this process alone.
  void SetController(vtkMultiProcessController* controller);

  // Opens the dataset anew at the next update.
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
  std::string OpenOnReadingRank();
  int RequestedStep(vtkInformation* output_information) const;
  bool ReadStep(int step, int piece, int pieces);
  void ReportWarnings();
  void WarnOfOtherFiles();

  std::unique_ptr<State> State_;
};
