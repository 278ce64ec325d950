// The 1st, 2nd, 3rd ... request for memory of the reader for ParaView fails, until none does: one error, no
// exception, and afterwards the same output as before.
#include "tests/support/failing_memory.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vtkCallbackCommand.h>
#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkExecutive.h>
#include <vtkNew.h>
#include <vtkPartitionedDataSetCollection.h>
#include <vtkPointData.h>
#include <vtkUnstructuredGrid.h>

#include "testkit/file_writer.h"
#include "testkit/temporary_directory.h"
#include "tests/faults/fault_datasets.h"
#include "vtkFLDReader.h"

namespace {

// Only counts: an observer that needs memory would fail as well.
void count_errors(vtkObject*, unsigned long, void* count, void*) {
  ++*static_cast<int*>(count);
}

void append(vtkDataArray* array, std::string& bytes) {
  const auto size = static_cast<std::size_t>(array->GetNumberOfValues() * array->GetDataTypeSize());
  if (size > 0) bytes.append(static_cast<const char*>(array->GetVoidPointer(0)), size);
}

// The bytes of all arrays of all parts.
std::string contents_of(vtkPartitionedDataSetCollection* output) {
  std::string bytes;
  for (unsigned i = 0; i < output->GetNumberOfPartitionedDataSets(); ++i) {
    auto* grid = vtkUnstructuredGrid::SafeDownCast(output->GetPartition(i, 0));
    if (grid == nullptr) continue;
    append(grid->GetPoints()->GetData(), bytes);
    append(grid->GetCells()->GetOffsetsArray(), bytes);
    append(grid->GetCells()->GetConnectivityArray(), bytes);
    append(grid->GetCellTypesArray(), bytes);
    for (int k = 0; k < grid->GetPointData()->GetNumberOfArrays(); ++k)
      append(grid->GetPointData()->GetArray(k), bytes);
    for (int k = 0; k < grid->GetCellData()->GetNumberOfArrays(); ++k)
      append(grid->GetCellData()->GetArray(k), bytes);
  }
  return bytes;
}

class FailingMemoryOfReader : public testing::Test {
 protected:
  FailingMemoryOfReader() { testkit::write_file(faults::every_construct(), file_); }

  struct Updated {
    bool went_well = false;
    int errors = 0;
    std::string contents{};
  };

  // A new reader opens the dataset and reads all of it, while the `request`-th request fails. 0: none does.
  // After an error it is told to open the file again, when there is memory.
  Updated update(int request) {
    Updated updated;
    const vtkNew<vtkFLDReader> reader;
    const vtkNew<vtkCallbackCommand> counter;
    counter->SetClientData(&updated.errors);
    counter->SetCallback(count_errors);
    reader->AddObserver(vtkCommand::ErrorEvent, counter);
    // The pipeline reports a failed request once more.
    const vtkNew<vtkCallbackCommand> silence;
    silence->SetCallback([](vtkObject*, unsigned long, void*, void*) {});
    reader->GetExecutive()->AddObserver(vtkCommand::ErrorEvent, silence);
    reader->SetController(nullptr);
    reader->SetFileName(file_.c_str());
    reader->AddPartSelector("/Parts");
    {
      const FailingMemory failing(request);
      updated.went_well = reader->GetExecutive()->Update() != 0;
    }
    if (!updated.went_well || updated.errors > 0) {
      reader->RemoveAllFileNames();
      reader->SetFileName(file_.c_str());
      EXPECT_NE(reader->GetExecutive()->Update(), 0) << "after request " << request;
    }
    updated.contents = contents_of(reader->GetOutput());
    return updated;
  }

 private:
  testkit::TemporaryDirectory directory_;
  std::filesystem::path file_ = directory_ / "case.fld";
};

TEST_F(FailingMemoryOfReader, IsOneErrorAndNothingElse) {
  const Updated before = update(0);
  ASSERT_TRUE(before.went_well);
  ASSERT_EQ(before.errors, 0);
  ASSERT_FALSE(before.contents.empty());
  int failed = 0;
  for (int request = 1;; ++request) {
    const Updated updated = update(request);
    if (!FailingMemory::has_failed()) break;
    ++failed;
    // Some requests can be done without. What fails of one part leaves the others, with an error.
    EXPECT_LE(updated.errors, 1) << "request " << request;
    EXPECT_TRUE(updated.went_well || updated.errors == 1) << "request " << request;
    EXPECT_TRUE(updated.contents == before.contents) << "request " << request;
  }
  EXPECT_GT(failed, 100);
}

}  // namespace
