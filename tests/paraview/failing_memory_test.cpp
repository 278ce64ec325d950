// The 1st, 2nd, 3rd ... request for memory of the reader for ParaView fails, until none does: one error, no
// exception, and afterwards the same output as before.
#include "tests/support/failing_memory.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <vtkCallbackCommand.h>
#include <vtkExecutive.h>
#include <vtkNew.h>
#include <vtkPartitionedDataSetCollection.h>

#include "testkit/file_writer.h"
#include "testkit/temporary_directory.h"
#include "tests/faults/fault_datasets.h"
#include "vtkFLDReader.h"

namespace {

// Only counts: an observer that needs memory would fail as well.
void count_errors(vtkObject*, unsigned long, void* count, void*) {
  ++*static_cast<int*>(count);
}

class FailingMemoryOfReader : public testing::Test {
 protected:
  FailingMemoryOfReader() { testkit::write_file(faults::every_construct(), file_); }

  struct Updated {
    bool went_well = false;
    int errors = 0;
    vtkIdType cells = 0;
  };

  // A new reader opens the dataset and reads all of it, while the `request`-th request fails. 0: none does.
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
    {
      const FailingMemory failing(request);
      updated.went_well = reader->GetExecutive()->Update() != 0;
    }
    if (updated.went_well) updated.cells = reader->GetOutput()->GetNumberOfElements(vtkDataObject::CELL);
    // The same reader reads everything when there is memory again and it is told to open the file again.
    if (!updated.went_well) {
      reader->RemoveAllFileNames();
      reader->SetFileName(file_.c_str());
      EXPECT_NE(reader->GetExecutive()->Update(), 0) << "after request " << request;
      updated.cells = reader->GetOutput()->GetNumberOfElements(vtkDataObject::CELL);
    }
    return updated;
  }

 private:
  testkit::TemporaryDirectory directory_;
  std::filesystem::path file_ = directory_ / "case.fld";
};

TEST_F(FailingMemoryOfReader, IsOneErrorAndNothingElse) {
  const Updated before = update(0);
  ASSERT_TRUE(before.went_well);
  ASSERT_GT(before.cells, 0);
  int failed = 0;
  for (int request = 1;; ++request) {
    const Updated updated = update(request);
    if (!FailingMemory::has_failed()) break;
    ++failed;
    EXPECT_LE(updated.errors, 1) << "request " << request;
    // What fails of one part leaves the others, with an error. Some requests can be done without.
    if (!updated.went_well || updated.errors == 0) {
      EXPECT_EQ(updated.cells, before.cells) << "request " << request;
    }
    EXPECT_TRUE(updated.went_well || updated.errors == 1) << "request " << request;
  }
  EXPECT_GT(failed, 100);
}

}  // namespace
