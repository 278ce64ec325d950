// Opening: information and messages, and several datasets at once.
#include <fstream>
#include <gtest/gtest.h>
#include <vtkCallbackCommand.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkStringArray.h>

#include "samples/samples.h"
#include "testkit/box_dataset.h"
#include "testkit/file_writer.h"
#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"
#include "tests/paraview/paraview_reader.h"

namespace paraview_test {
namespace {

class Opening : public testing::Test {
 protected:
  Opening() : all_(samples::write_samples(directory_.path())) {}

  std::filesystem::path sample(const std::string& name) const {
    for (const samples::SampleInfo& sample : all_) {
      if (sample.name == name) return sample.file;
    }
    return {};
  }

  // The one error that opening the file makes.
  std::string error_of(const std::filesystem::path& file) {
    Reader reader(file);
    EXPECT_FALSE(reader.open());
    EXPECT_FALSE(reader.update());
    const std::vector<std::string> errors = reader.take_errors();
    EXPECT_EQ(errors.size(), 1U);
    return errors.empty() ? "" : errors.front();
  }

  testkit::TemporaryDirectory directory_;
  std::vector<samples::SampleInfo> all_;
};

TEST_F(Opening, TakesAnyFileForTheSeries) {
  Reader first(sample("tank"));
  Reader other(sample("tank").parent_path() / "tank_30.fld");
  ASSERT_TRUE(first.open());
  ASSERT_TRUE(other.open());
  EXPECT_EQ(first.times().size(), 8U);
  EXPECT_EQ(first.times(), other.times());
}

TEST_F(Opening, TakesTheFilesOfASeriesForOneDataset) {
  Reader reader(sample("tank"));
  for (const auto& entry : std::filesystem::directory_iterator(sample("tank").parent_path()))
    reader->AddFileName(entry.path().c_str());
  ASSERT_TRUE(reader.open());
  EXPECT_EQ(reader.times().size(), 8U);
  EXPECT_TRUE(reader.take_warnings().empty());
}

TEST_F(Opening, SaysOneLineOfAFileWithALineBreakInItsName) {
  const std::string error = error_of(directory_ / "two\nlines.fld");
  EXPECT_NE(error.find((directory_ / "two lines.fld: there is no such file").string()), std::string::npos)
      << error;
}

TEST_F(Opening, NamesAFileThatDoesNotBelongToTheDataset) {
  Reader reader(sample("tank"));
  reader->AddFileName(sample("channel").c_str());
  ASSERT_TRUE(reader.open());
  std::vector<std::string> warnings = reader.take_warnings();
  ASSERT_EQ(warnings.size(), 1U);
  EXPECT_NE(warnings[0].find("channel.fld does not belong to the dataset of"), std::string::npos);

  reader->AddFileName(sample("sector").c_str());
  ASSERT_TRUE(reader.open());
  warnings = reader.take_warnings();
  ASSERT_EQ(warnings.size(), 1U);
  EXPECT_NE(warnings[0].find("channel.fld and 1 more do not belong to the dataset of"), std::string::npos);
}

TEST_F(Opening, NamesSuchAFileWithTheSimplifyingOptionToo) {
  std::vector<std::string> files;
  for (int step = 0; step < 3; ++step) {
    files.push_back(directory_ / ("box_" + std::to_string(step) + ".fld"));
    testkit::write_box_dataset(files.back(), {.cycle = step, .time = 0.5 * step});
  }
  for (const bool simplify : {true, false}) {
    Reader reader(files.front());
    for (const std::string& file : files) reader->AddFileName(file.c_str());
    reader->SetSimplifyReading(simplify);
    ASSERT_TRUE(reader.open());
    EXPECT_EQ(reader.times().size(), 3U);
    EXPECT_EQ(reader.take_warnings(), std::vector<std::string>{});

    reader->AddFileName(sample("channel").c_str());
    ASSERT_TRUE(reader.open());
    EXPECT_EQ(reader.take_warnings().size(), 1U);
  }
}

TEST_F(Opening, AnErrorNamesTheFileOfItsStep) {
  Reader reader(sample("tank"));
  ASSERT_TRUE(reader.open());
  const std::filesystem::path cut = sample("tank").parent_path() / "tank_30.fld";
  std::filesystem::resize_file(cut, 2000);
  reader.update(reader.times()[3]);
  const std::vector<std::string> errors = reader.take_errors();
  ASSERT_FALSE(errors.empty());
  EXPECT_NE(errors[0].find(cut.string() + ": "), std::string::npos) << errors[0];
}

TEST_F(Opening, AMissingFileIsOneErrorWhateverIsShown) {
  Reader reader(sample("tank"));
  ASSERT_TRUE(reader.open());
  const std::filesystem::path gone = sample("tank").parent_path() / "tank_30.fld";
  std::filesystem::remove(gone);
  ASSERT_TRUE(reader.update(reader.times()[3]));
  const std::vector<std::string> errors = reader.take_errors();
  ASSERT_EQ(errors.size(), 1U);
  EXPECT_NE(errors[0].find("cannot read 'Pressure' and 2 more on part 'sliding_impeller' and 18 more: " +
                           gone.string() + ": THE FILE CANNOT BE OPENED."),
            std::string::npos)
      << errors[0];
}

TEST_F(Opening, AMissingFirstFileIsNamedOnce) {
  Reader reader(sample("tank"));
  ASSERT_TRUE(reader.open());
  std::filesystem::remove(sample("tank"));
  EXPECT_FALSE(reader.update(reader.times()[1]));
  const std::vector<std::string> errors = reader.take_errors();
  ASSERT_EQ(errors.size(), 1U);
  EXPECT_NE(
      errors[0].find("cannot read step 1 of " + sample("tank").string() + ": THE FILE CANNOT BE OPENED."),
      std::string::npos)
      << errors[0];
}

TEST_F(Opening, LeavesOutFilesOfTheSeriesThatAreNoFldFiles) {
  std::ofstream(sample("tank").parent_path() / "tank_100.png") << "no FLD file, but long enough to be read";
  Reader reader(sample("tank"));
  ASSERT_TRUE(reader.open());
  EXPECT_EQ(reader.times().size(), 8U);
  const std::vector<std::string> warnings = reader.take_warnings();
  ASSERT_EQ(warnings.size(), 1U);
  EXPECT_NE(warnings[0].find("tank_100.png is left out: This is not FLD file."), std::string::npos)
      << warnings[0];
  EXPECT_TRUE(reader.update());
}

// As while a solver writes the last one.
TEST_F(Opening, LeavesOutTheFileThatIsNotWholeAndTakesItUpLater) {
  const std::filesystem::path last = sample("tank").parent_path() / "tank_70.fld";
  const auto size = std::filesystem::file_size(last);
  std::filesystem::copy_file(last, directory_ / "whole");
  std::filesystem::resize_file(last, size / 2);
  Reader reader(sample("tank"));
  ASSERT_TRUE(reader.open());
  EXPECT_EQ(reader.times().size(), 7U);
  const std::vector<std::string> warnings = reader.take_warnings();
  ASSERT_EQ(warnings.size(), 1U);
  EXPECT_NE(warnings[0].find("tank_70.fld is left out: UNEXPECTED END OF FILE"), std::string::npos)
      << warnings[0];
  std::filesystem::copy_file(directory_ / "whole", last, std::filesystem::copy_options::overwrite_existing);
  reader->Refresh();
  ASSERT_TRUE(reader.open());
  EXPECT_EQ(reader.times().size(), 8U);
  EXPECT_TRUE(reader.take_warnings().empty());
}

TEST_F(Opening, TakesUpTheFilesThatASolverHasWrittenSince) {
  const std::filesystem::path last = sample("tank").parent_path() / "tank_70.fld";
  std::filesystem::rename(last, directory_ / "not_yet");
  Reader reader(sample("tank"));
  ASSERT_TRUE(reader.update());
  EXPECT_EQ(reader.times().size(), 7U);
  const vtkSmartPointer<vtkPoints> before = reader.grid("hub")->GetPoints();
  std::filesystem::rename(directory_ / "not_yet", last);
  ASSERT_TRUE(reader.update());
  EXPECT_EQ(reader.times().size(), 7U);
  reader->Refresh();
  ASSERT_TRUE(reader.open());
  ASSERT_EQ(reader.times().size(), 8U);
  ASSERT_TRUE(reader.update(reader.times().back()));
  EXPECT_EQ(reader.grid("hub")->GetNumberOfPoints(), before->GetNumberOfPoints());
  EXPECT_TRUE(reader.take_errors().empty());
}

TEST_F(Opening, TellsWhyItFails) {
  EXPECT_NE(error_of("/no/such/file.fld").find("cannot open /no/such/file.fld: there is no such file"),
            std::string::npos);
  std::ofstream(directory_ / "text.fld") << "plain text, and more of it than a record needs";
  EXPECT_NE(error_of(directory_ / "text.fld").find("This is not FLD file."), std::string::npos);
}

// The pipeline says nothing of its own, neither of the times nor of the data.
TEST_F(Opening, AFailureIsOneErrorAtAnUpdateToo) {
  Reader reader("/no/such/file.fld");
  reader->Update();
  EXPECT_EQ(reader.take_errors().size(), 1U);
  EXPECT_EQ(reader.output()->GetNumberOfPartitionedDataSets(), 0U);
  reader->Update();
  EXPECT_EQ(reader.take_errors(), std::vector<std::string>{});
}

TEST_F(Opening, GoesOnAfterAFailure) {
  Reader reader("/no/such/file.fld");
  EXPECT_FALSE(reader.update());
  reader->SetFileName(sample("channel").c_str());
  EXPECT_TRUE(reader.update());
  EXPECT_NE(reader.grid("wake"), nullptr);
  reader->SetFileName("/no/such/file.fld");
  EXPECT_FALSE(reader.update());
}

TEST_F(Opening, KnowsItsFilesByTheirFirstBytes) {
  EXPECT_EQ(vtkFLDReader::CanReadFile(sample("channel").c_str()), 1);
  std::ofstream(directory_ / "other.fld") << "# AVS field file";
  EXPECT_EQ(vtkFLDReader::CanReadFile((directory_ / "other.fld").c_str()), 0);
  testkit::File similar = testkit::file_of(testkit::one_tetrahedron());
  similar.magic = "VTRL-FLX";
  testkit::write_file(similar, directory_ / "similar.fld");
  EXPECT_EQ(vtkFLDReader::CanReadFile((directory_ / "similar.fld").c_str()), 0);
  // No more than the first bytes: what is wrong behind them is said when the file is opened.
  std::filesystem::copy_file(sample("channel"), directory_ / "short.fld");
  std::filesystem::resize_file(directory_ / "short.fld", 12);
  EXPECT_EQ(vtkFLDReader::CanReadFile((directory_ / "short.fld").c_str()), 1);
  std::filesystem::resize_file(directory_ / "short.fld", 11);
  EXPECT_EQ(vtkFLDReader::CanReadFile((directory_ / "short.fld").c_str()), 0);
  EXPECT_EQ(vtkFLDReader::CanReadFile("/no/such/file.fld"), 0);
  EXPECT_EQ(vtkFLDReader::CanReadFile(nullptr), 0);
}

TEST_F(Opening, KeepsWhatIsSwitchedWhileTheNamesStay) {
  Reader reader(sample("tank"));
  ASSERT_TRUE(reader.open());
  reader->SetPartArrayStatus("tank_wall", 0);
  reader->SetPointArrayStatus("Pressure", 0);
  reader->Refresh();
  ASSERT_TRUE(reader.update());
  EXPECT_EQ(reader.grid("tank_wall"), nullptr);
  EXPECT_EQ(reader.grid("hub")->GetPointData()->GetArray("Pressure"), nullptr);
  EXPECT_NE(reader.grid("hub")->GetPointData()->GetArray("Velocity"), nullptr);
}

TEST_F(Opening, KeepsWhatIsSwitchedOverAnotherDataset) {
  Reader reader(sample("tank"));
  ASSERT_TRUE(reader.open());
  reader.show_only("blade_1");
  reader->SetPointArrayStatus("Velocity", 0);
  ASSERT_TRUE(reader.update());
  ASSERT_EQ(reader.shown_parts(), std::vector<std::string>{"blade_1"});
  reader->SetFileName(sample("channel").c_str());
  ASSERT_TRUE(reader.update());
  reader->SetFileName(sample("tank").c_str());
  ASSERT_TRUE(reader.update());
  EXPECT_EQ(reader.shown_parts(), std::vector<std::string>{"blade_1"});
  EXPECT_EQ(reader.grid("blade_1")->GetPointData()->GetArray("Velocity"), nullptr);
}

TEST_F(Opening, TellsTheStatesOfASelectionAtOnce) {
  const auto texts = [](vtkStringArray* array) {
    std::vector<std::string> texts;
    for (vtkIdType i = 0; i < array->GetNumberOfValues(); ++i) texts.push_back(array->GetValue(i));
    return texts;
  };
  Reader channel(sample("channel"));
  EXPECT_TRUE(texts(channel->GetPartStates()).empty());
  ASSERT_TRUE(channel.open_as_it_is());
  channel->SetPartArrayStatus("wake", 1);
  channel->SetPointArrayStatus("Temperature", 0);
  EXPECT_EQ(texts(channel->GetPartStates()),
            (std::vector<std::string>{"floor",           "0", "sides",       "0", "inlet",        "0",
                                      "outlet",          "0", "obstacle",    "0", "ceiling",      "0",
                                      "&VFG_walls",      "0", "@wake_plane", "0", "upstream",     "0",
                                      "around_obstacle", "0", "wake",        "1", "ALL_ELEMENTS", "1"}));
  EXPECT_EQ(texts(channel->GetPointStates()),
            (std::vector<std::string>{"Pressure", "1", "Temperature", "0", "Velocity", "1"}));
  EXPECT_EQ(texts(channel->GetCellStates()), (std::vector<std::string>{"MatOfElements", "1"}));
}

TEST_F(Opening, OffersThePartsThatOnlyALaterStepHas) {
  for (int step = 0; step < 2; ++step) {
    testkit::Mesh mesh = testkit::one_tetrahedron();
    if (step == 1) {
      mesh.surfaces.push_back(mesh.surfaces.front());
      mesh.surfaces.back().name = "opened_valve";
    }
    testkit::File file = testkit::file_of(mesh);
    file.header.set_cycle(step, step, testkit::Precision::kSingle);
    testkit::write_file(file, directory_ / ("valve_" + std::to_string(step) + ".fld"));
  }
  Reader reader(directory_ / "valve_0.fld");
  ASSERT_TRUE(reader.open());
  EXPECT_EQ(reader->GetPartArrayStatus("opened_valve"), 1);
  ASSERT_TRUE(reader.update(0.0));
  EXPECT_EQ(reader.grid("opened_valve"), nullptr);
  ASSERT_TRUE(reader.update(1.0));
  EXPECT_NE(reader.grid("opened_valve"), nullptr);
  reader->SetPartArrayStatus("opened_valve", 0);
  ASSERT_TRUE(reader.update(1.0));
  EXPECT_EQ(reader.grid("opened_valve"), nullptr);
}

TEST_F(Opening, LeavesTheRestWhenItIsStopped) {
  Reader reader(sample("tank"));
  ASSERT_TRUE(reader.open());
  vtkNew<vtkCallbackCommand> stop;
  stop->SetCallback([](vtkObject* object, unsigned long, void*, void* progress) {
    if (*static_cast<double*>(progress) > 0.1) vtkFLDReader::SafeDownCast(object)->SetAbortExecute(1);
  });
  const unsigned long observer = reader->AddObserver(vtkCommand::ProgressEvent, stop);
  reader.update();
  EXPECT_NE(reader.grid("sliding_impeller"), nullptr);
  EXPECT_EQ(reader.grid("tank_zone"), nullptr);
  EXPECT_TRUE(reader.take_errors().empty());
  reader->RemoveObserver(observer);
  reader->Modified();
  ASSERT_TRUE(reader.update());
  EXPECT_NE(reader.grid("tank_zone"), nullptr);
}

TEST_F(Opening, HasAllOfTheStepsAboutOneThatWasStopped) {
  Reader reader(sample("tank"));
  ASSERT_TRUE(reader.update());
  const std::vector<double> times = reader.times();
  const auto has_values = [&] { return reader.grid("tank_zone")->GetPointData()->HasArray("Pressure") == 1; };
  vtkNew<vtkCallbackCommand> stop;
  stop->SetCallback([](vtkObject* object, unsigned long, void*, void*) {
    vtkFLDReader::SafeDownCast(object)->SetAbortExecute(1);
  });
  const unsigned long observer = reader->AddObserver(vtkCommand::ProgressEvent, stop);
  reader.update(times[1]);
  EXPECT_TRUE(reader.grid("tank_zone") == nullptr || !has_values());
  reader->RemoveObserver(observer);
  ASSERT_TRUE(reader.update(times[0]));
  ASSERT_NE(reader.grid("tank_zone"), nullptr);
  EXPECT_TRUE(has_values());
  ASSERT_TRUE(reader.update(times[1]));
  ASSERT_NE(reader.grid("tank_zone"), nullptr);
  EXPECT_TRUE(has_values());
}

TEST_F(Opening, HasSeveralDatasetsOpenAtOnce) {
  Reader channel(sample("channel"));
  Reader tank(sample("tank"));
  Reader again(sample("tank"));
  ASSERT_TRUE(channel.update());
  ASSERT_TRUE(tank.update(0.1));
  ASSERT_TRUE(again.update(0.0));
  channel->SetPartArrayStatus("ALL_ELEMENTS", 1);
  ASSERT_TRUE(channel.update());
  EXPECT_EQ(channel.grid("ALL_ELEMENTS")->GetNumberOfPoints(), 18341);
  for (const double time : {0.05, 0.1}) {
    ASSERT_TRUE(again.update(time));
    const bool is_same = time == 0.1;
    for (vtkIdType i : {0, 5}) {
      const double x = tank.grid("blade_1")->GetPoint(i)[0];
      EXPECT_EQ(x == again.grid("blade_1")->GetPoint(i)[0], is_same);
    }
  }
}

}  // namespace
}  // namespace paraview_test
