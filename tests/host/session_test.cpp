// The values into which a session turns a reader's answers.
#include "host/session.h"

#include "gtest/gtest.h"
#include <string>
#include <vector>

#include "host/error.h"
#include "host/undefined_value.h"
#include "tests/host/fake_reader.h"
#include "tests/host/fake_session.h"

namespace {

class Session : public testing::Test {
 protected:
  // A session that captures, with a fake dataset open.
  explicit Session(const char* name = fake::kTwoSets) : session(reader.library, capturing()) {
    session.open(fake::file(name));
  }

  static host::SessionOptions capturing() {
    host::SessionOptions options;
    options.capture_diagnostics = true;
    return options;
  }

  // The message of the Error that `action` throws.
  template <typename Action>
  static std::string error_of(Action action) {
    try {
      action();
    } catch (const host::Error& error) {
      return error.what();
    }
    return "no error";
  }

  std::vector<float> values(int variable, int part, int component = 0) {
    const host::PartValues given = session.values(variable, part, component);
    EXPECT_EQ(given.availability, host::Availability::given);
    return {given.values().begin(), given.values().end()};
  }

  fake::Reader reader;
  host::Session session;
};

TEST_F(Session, KnowsTheFilesOfAVeryLongSeries) {
  session.open(fake::file(fake::kManyFiles));
  const std::vector<std::string>& files = session.traced_files();
  ASSERT_EQ(files.size(), static_cast<std::size_t>(fake::kManyFilesCount));
  EXPECT_EQ(files.front(), "/made-up/many_files_0000000.fld");
  EXPECT_EQ(files.back(), "/made-up/many_files_0039999.fld");
  EXPECT_TRUE(session.knows_every_file());
}

TEST_F(Session, TellsTheReadersIdentity) {
  EXPECT_EQ(session.reader().name, "A reader of 20 bytes");
  EXPECT_EQ(session.reader().release, "3.1");
  EXPECT_EQ(session.reader().api_version, "2.04");
  EXPECT_EQ(session.reader().description, "made up\nfor tests");
  EXPECT_EQ(session.reader().file_label, "Set file");
  EXPECT_FALSE(session.reader().two_files);
}

TEST_F(Session, TellsTheTogglesWithTheirDefaults) {
  ASSERT_EQ(session.toggles().size(), 2U);
  EXPECT_EQ(session.toggles()[0].title, "off by default");
  EXPECT_FALSE(session.toggles()[0].is_on);
  EXPECT_TRUE(session.toggles()[1].is_on);
}

TEST_F(Session, TellsTheTimeSets) {
  ASSERT_EQ(session.time_sets().size(), 2U);
  EXPECT_EQ(session.geometry_times().description, "geometry");
  EXPECT_EQ(session.variable_times().number, 2);
  EXPECT_EQ(session.variable_times().times, (std::vector<float>{0.0F, 0.5F}));
  EXPECT_EQ(session.changing_geometry(), host::ChangingGeometry::coordinates);
  EXPECT_EQ(session.geometry_step_of(1), 1);
}

TEST_F(Session, TellsTheParts) {
  ASSERT_EQ(session.parts().size(), 6U);
  EXPECT_EQ(session.region_set_count(), 2);
  const host::Part& wall = session.part(2);
  EXPECT_EQ(wall.number, 2);
  EXPECT_EQ(wall.name, "WALL");
  EXPECT_EQ(wall.kind, host::PartKind::surface);
  EXPECT_EQ(wall.nodes, 5);
  EXPECT_EQ(wall.elements[6], 1);
  EXPECT_EQ(wall.elements[10], 1);
  EXPECT_EQ(wall.element_count(), 2);
  EXPECT_EQ(session.part(6).kind, host::PartKind::whole);
}

TEST_F(Session, GivesCoordinatesWithoutTheUnusedEntry) {
  const host::Coordinates coordinates = session.coordinates(4);
  ASSERT_EQ(coordinates.size(), 5U);
  for (int i = 0; i < 5; ++i) EXPECT_EQ(coordinates.x()[static_cast<std::size_t>(i)], fake::x(0, 1, i));
  EXPECT_EQ(coordinates.y()[4], 1.0F);
  EXPECT_EQ(coordinates.z()[0], 2.0F);
}

TEST_F(Session, GivesCoordinatesOfTheSelectedStep) {
  session.select_step(1);
  EXPECT_EQ(session.coordinates(1).x()[2], fake::x(1, 0, 2));
}

TEST_F(Session, GivesPointsNodeByNode) {
  session.select_step(1);
  const host::LargeArray<float> points = session.points(3);
  ASSERT_EQ(points.size(), 8U * 3);
  EXPECT_EQ(points[3 * 7], fake::x(1, 0, 7));
  EXPECT_EQ(points[3 * 7 + 1], 1.0F);
  EXPECT_EQ(points[3 * 7 + 2], 2.0F);
}

TEST_F(Session, GivesConnectivityPerShape) {
  const std::vector<host::ElementBlock> blocks = session.elements(2);
  ASSERT_EQ(blocks.size(), 2U);
  EXPECT_EQ(blocks[0].shape.name, "tri");
  EXPECT_EQ(blocks[0].nodes, (host::LargeArray<int>{1, 2, 5}));
  EXPECT_EQ(blocks[1].shape.name, "quad");
  ASSERT_EQ(blocks[1].size(), 1U);
  EXPECT_EQ(blocks[1].element(0)[0], 4);
}

TEST_F(Session, CountsNodesFromWhatIsAskedFor) {
  EXPECT_EQ(session.elements(2, 0)[0].nodes, (host::LargeArray<int>{0, 1, 4}));
  EXPECT_EQ(session.elements(2, 11)[0].nodes, (host::LargeArray<int>{11, 12, 15}));
}

TEST_F(Session, TellsTheVariables) {
  ASSERT_EQ(session.variables().size(), 7U);
  const host::Variable& velocity = session.variable(fake::kVelocity);
  EXPECT_EQ(velocity.name, "V");
  EXPECT_EQ(velocity.label, "Velocity");
  EXPECT_EQ(velocity.description, "Velocity (V)");
  EXPECT_EQ(velocity.kind, host::VariableKind::vector);
  EXPECT_EQ(velocity.location, host::Location::node);
  EXPECT_EQ(velocity.components(), 3);
  EXPECT_EQ(velocity.time_set, 2);
  EXPECT_EQ(session.variable(fake::kMaterial).location, host::Location::element);
}

TEST_F(Session, GivesValuesOfTheSelectedStep) {
  EXPECT_EQ(values(fake::kPressure, 1), (std::vector<float>{0, 1, 2, 3}));
  session.select_step(1);
  EXPECT_EQ(values(fake::kPressure, 1), (std::vector<float>{1000, 1001, 1002, 1003}));
  EXPECT_EQ(values(fake::kVelocity, 1, 2), (std::vector<float>{1000.5F, 1001.5F, 1002.5F, 1003.5F}));
}

TEST_F(Session, GivesElementValuesOfAllShapesInOneRow) {
  EXPECT_EQ(values(fake::kMaterial, 2), (std::vector<float>{8, 8}));
}

TEST_F(Session, MarksUndefinedValues) {
  const std::vector<float> hole = values(fake::kHole, 1);
  EXPECT_TRUE(host::is_undefined(hole[0]));
  EXPECT_FALSE(host::is_undefined(hole[1]));
}

TEST_F(Session, MarksValuesThatTheReaderDoesNotWrite) {
  for (const float value : values(fake::kUnwritten, 1)) EXPECT_TRUE(host::is_undefined(value));
}

TEST_F(Session, TellsAQuantityThatIsNotInTheStepFromOneThatFails) {
  EXPECT_EQ(session.values(fake::kOnlyFirst, 1).availability, host::Availability::given);
  session.select_step(1);
  const host::PartValues absent = session.values(fake::kOnlyFirst, 1);
  EXPECT_EQ(absent.availability, host::Availability::not_in_this_step);
  EXPECT_EQ(absent.reason, "");
  EXPECT_EQ(absent.file, "");
  EXPECT_TRUE(absent.values().empty());
  const host::PartValues failed = session.values(fake::kBroken, 1);
  EXPECT_EQ(failed.availability, host::Availability::failed);
  EXPECT_EQ(failed.reason, "error : failed to seek fld file.");
}

TEST_F(Session, TakesALaterStatusOfTheGeometryForTheGreatestChange) {
  session.open(fake::file(fake::kOddKinds));
  EXPECT_EQ(session.changing_geometry(), host::ChangingGeometry::connectivity);
}

TEST_F(Session, OffersNoValuesOfOtherKinds) {
  session.open(fake::file(fake::kOddKinds));
  EXPECT_EQ(session.variable(1).location, host::Location::other);
  EXPECT_EQ(session.variable(2).kind, host::VariableKind::other);
  reader.forget_calls();
  for (const int variable : {1, 2}) {
    const host::PartValues none = session.values(variable, 1);
    EXPECT_EQ(none.availability, host::Availability::not_offered);
    EXPECT_TRUE(none.values().empty());
  }
  EXPECT_EQ(reader.calls("USERD_get_var_by_component"), std::vector<std::string>{});
  EXPECT_EQ(values(fake::kHole, 1).size(), 4U);
}

TEST_F(Session, RejectsElementsOfAnotherShape) {
  session.open(fake::file(fake::kOddKinds));
  EXPECT_EQ(error_of([&] { session.elements(1); }),
            "part 1 has elements of slot 0, a shape that this host does not know");
}

// Part 2 has triangles and quadrilaterals.
TEST_F(Session, AsksForNoFurtherElementsOnceValuesAreMissing) {
  session.open(fake::file(fake::kNoValues));
  reader.forget_calls();
  const host::PartValues none = session.values(fake::kMaterial, 2);
  EXPECT_EQ(none.availability, host::Availability::not_offered);
  EXPECT_TRUE(none.values().empty());
  EXPECT_EQ(reader.calls("USERD_get_var_by_component").size(), 1U);
}

TEST_F(Session, GivesValuesOrNoneOrAnError) {
  const auto given = session.given_values(fake::kVelocity, 1, 2);
  ASSERT_TRUE(given);
  EXPECT_EQ(given->values()[3], 3.5F);
  session.select_step(1);
  EXPECT_FALSE(session.given_values(fake::kOnlyFirst, 1));
  try {
    session.given_values(fake::kBroken, 1);
    ADD_FAILURE();
  } catch (const host::Error& error) {
    EXPECT_EQ(error.reason(), "error : failed to seek fld file.");
    EXPECT_EQ(error.step(), 1);
  }
}

TEST_F(Session, GivesAllComponentsOrNone) {
  const auto given = session.given_components(fake::kVelocity, 1);
  ASSERT_TRUE(given);
  ASSERT_EQ(given->size(), 3U);
  for (int component = 0; component < 3; ++component) {
    EXPECT_EQ((*given)[static_cast<std::size_t>(component)].values()[3], fake::velocity(0, 0, 3, component));
  }
  EXPECT_EQ(session.given_components(fake::kPressure, 1)->size(), 1U);
  session.select_step(1);
  EXPECT_FALSE(session.given_components(fake::kOnlyFirst, 1));
}

TEST_F(Session, GivesMetadataAndItsGroups) {
  const host::Metadata metadata = session.metadata();
  EXPECT_TRUE(metadata.xml.starts_with("<group name=\"Grouping_Regions\">")) << metadata.xml;
  ASSERT_EQ(metadata.groups.size(), 1U);
  EXPECT_EQ(metadata.groups[0].parts, std::vector<std::string>{"&VFG_1"});
}

TEST_F(Session, AsksOnceForMetadataThatIsNotThere) {
  session.open(fake::file(fake::kOddKinds));
  reader.forget_calls();
  EXPECT_EQ(session.metadata().xml, "");
  EXPECT_EQ(reader.calls(), std::vector<std::string>{"USERD_get_metadata"});
}

TEST_F(Session, RejectsNumbersOutOfRange) {
  EXPECT_EQ(error_of([&] { session.part(7); }), "part 7 is outside 1 to 6");
  EXPECT_EQ(error_of([&] { session.coordinates(0); }), "part 0 is outside 1 to 6");
  EXPECT_EQ(error_of([&] { session.part(0); }), "part 0 is outside 1 to 6");
  EXPECT_EQ(error_of([&] { session.variable(8); }), "variable 8 is outside 1 to 7");
  EXPECT_EQ(error_of([&] { session.variable(0); }), "variable 0 is outside 1 to 7");
  EXPECT_EQ(error_of([&] { session.values(fake::kPressure, 1, -1); }), "component -1 is outside 0 to 0");
  EXPECT_EQ(error_of([&] { session.select_step(-1); }), "step -1 is outside 0 to 1");
  EXPECT_EQ(error_of([&] { session.values(fake::kPressure, 1, 1); }), "component 1 is outside 0 to 0");
  EXPECT_EQ(error_of([&] { session.select_step(2); }), "step 2 is outside 0 to 1");
  EXPECT_EQ(session.step(), 0);
}

TEST_F(Session, NeedsAnOpenDataset) {
  session.close();
  EXPECT_TRUE(session.parts().empty());
  EXPECT_EQ(session.step(), 0);
  EXPECT_EQ(error_of([&] { session.part(1); }), "no dataset is open");
  EXPECT_EQ(error_of([&] { session.variables(); }), "no dataset is open");
  EXPECT_EQ(error_of([&] { session.select_step(0); }), "no dataset is open");
  EXPECT_EQ(error_of([&] { session.metadata(); }), "no dataset is open");
}

TEST_F(Session, OpensTheNextDatasetAfterClosing) {
  session.close();
  session.open(fake::file(fake::kOneSet));
  EXPECT_EQ(session.parts().size(), 3U);
  EXPECT_EQ(session.path(), fake::file(fake::kOneSet));
}

TEST_F(Session, OpensItsOwnPathAgain) {
  session.open(session.path());
  EXPECT_EQ(session.path(), fake::file(fake::kTwoSets));
}

TEST_F(Session, KeepsTheOpenDatasetWhenTheNextOneFails) {
  session.select_step(1);
  EXPECT_THROW(session.open(fake::file(fake::kFails)), host::Error);
  EXPECT_TRUE(session.is_open());
  EXPECT_EQ(session.path(), fake::file(fake::kTwoSets));
  EXPECT_EQ(values(fake::kPressure, 1), (std::vector<float>{1000, 1001, 1002, 1003}));
}

TEST_F(Session, TakesOnlyOneForSuccess) {
  EXPECT_EQ(error_of([&] { session.open(fake::file(fake::kAnswersTwo)); }),
            "USERD_set_filenames: the result is 2");
  EXPECT_EQ(session.path(), fake::file(fake::kTwoSets));
}

TEST_F(Session, HasNothingOpenWhenTheNextOneFailsAfterTheReaderTookIt) {
  for (const char* name : {fake::kNegativeCount, fake::kNoStatus}) {
    SCOPED_TRACE(name);
    session.open(fake::file(fake::kOneStep));
    reader.forget_calls();
    EXPECT_THROW(session.open(fake::file(name)), host::Error);
    EXPECT_FALSE(session.is_open());
    EXPECT_EQ(session.path(), "");
    EXPECT_EQ(session.step_count(), 0);
    EXPECT_EQ(error_of([&] { session.geometry_step_of(1); }), "step 1 is outside 0 to -1");
    EXPECT_EQ(error_of([&] { session.part(1); }), "no dataset is open");
    EXPECT_EQ(reader.calls("USERD_exit_routine").size(), 1U);
  }
  session.open(fake::file(fake::kTwoSets));
  EXPECT_EQ(values(fake::kPressure, 1), (std::vector<float>{0, 1, 2, 3}));
}

TEST_F(Session, MakesARelativePathAbsolute) {
  session.open("two_sets.fld");
  const std::string call = reader.calls("USERD_set_filenames").back();
  const std::string folder = std::filesystem::current_path().string();
  EXPECT_EQ(call, "USERD_set_filenames " + folder + "/two_sets.fld '' " + folder + " 0");
}

TEST_F(Session, TellsAGeometryThatCannotBeRead) {
  session.open(fake::file(fake::kGeometryFails));
  EXPECT_EQ(error_of([&] { session.select_step(1); }),
            "USERD_set_time_set_and_step: ERROR : CUT SHORT; FAILED TO READ GEOMETRY DATA IN b.fld.");
  EXPECT_EQ(session.parts().size(), 6U);
  session.select_step(0);
  EXPECT_EQ(session.coordinates(1).x()[1], fake::x(0, 0, 1));
}

TEST_F(Session, NamesTheFileAndStepOfAGeometryThatCannotBeRead) {
  session.open(fake::file(fake::kGeometryFails));
  try {
    session.select_step(1);
    FAIL() << "the geometry is read";
  } catch (const host::Error& error) {
    EXPECT_EQ(error.file(), "b.fld");
    EXPECT_EQ(error.step(), 1);
  }
}

TEST_F(Session, NamesTheFileOfAStepWhoseValuesCannotBeRead) {
  session.open(fake::file(fake::kManyFiles));
  session.select_step(5);
  EXPECT_EQ(session.file_of_step(5), "/made-up/many_files_0000005.fld");
  EXPECT_EQ(session.values(fake::kBroken, 1).file, session.file_of_step(5));
  EXPECT_EQ(session.file_of_step(fake::kManyFilesCount), "");
  EXPECT_EQ(session.file_of_step(-1), "");
}

TEST_F(Session, RejectsNodeNumbersOutsideThePart) {
  session.open(fake::file(fake::kBadNodeNumber));
  for (const int first_node : {0, 1}) {
    EXPECT_EQ(error_of([&] { session.elements(1, first_node); }),
              "USERD_get_part_elements_by_type: part 1 has a quad with a node number outside 1 to 4");
  }
}

TEST_F(Session, RejectsNegativeCounts) {
  EXPECT_EQ(error_of([&] { session.open(fake::file(fake::kNegativeCount)); }),
            "USERD_get_gold_part_build_info: part 1 has a negative count of nodes or elements");
}

TEST(SessionWithAMinimalReader, GoesWithoutOptionalEntryPoints) {
  const host::Library library(FAKE_READER_MINIMAL);
  host::SessionOptions options;
  options.capture_diagnostics = true;
  options.toggles = {{host::kSimplifyToggle, true}};
  host::Session session(library, options);
  session.open(fake::file(fake::kTwoSets));
  EXPECT_EQ(session.reader().release, "");
  EXPECT_TRUE(session.toggles().empty());
  EXPECT_EQ(session.geometry_times().number, 1);
  EXPECT_EQ(session.metadata().xml, "");
  EXPECT_EQ(session.values(fake::kPressure, 3).values().size(), 8U);
}

}  // namespace
