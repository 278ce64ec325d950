// A session makes the calls of a host in the required order.
#include "gtest/gtest.h"
#include <string>
#include <vector>

#include "host/session.h"
#include "tests/host/fake_reader.h"
#include "tests/host/fake_session.h"

namespace {

using Calls = std::vector<std::string>;

class SessionOrder : public testing::Test {
 protected:
  void SetUp() override { testing::internal::CaptureStderr(); }
  void TearDown() override { testing::internal::GetCapturedStderr(); }

  fake::Reader reader;
};

TEST_F(SessionOrder, IdentityAndOptionsComeFirst) {
  const host::Session session(reader.library);
  EXPECT_EQ(reader.calls(), (Calls{"USERD_get_name_of_reader", "USERD_get_reader_release",
                                   "USERD_get_reader_version", "USERD_get_reader_descrip",
                                   "USERD_set_filename_button_labels", "USERD_set_server_number 1 1",
                                   "USERD_get_extra_gui_numbers", "USERD_get_extra_gui_defaults"}));
}

TEST_F(SessionOrder, OpeningGoesFromOptionsToParts) {
  host::SessionOptions options;
  options.toggles = {{host::kSimplifyToggle, true}, {9, true}};
  host::Session session(reader.library, options);
  reader.forget_calls();
  session.open(fake::file(fake::kTwoSets));
  EXPECT_EQ(
      reader.calls(),
      (Calls{"USERD_set_extra_gui_data 1 1 1 6", "USERD_get_extra_data 0",
             "USERD_get_extra_data " + std::to_string(0x40000000),
             "USERD_set_filenames /made-up/two_sets.fld '' /made-up 0", "USERD_get_number_of_timesets",
             "USERD_get_timeset_description 1", "USERD_get_num_of_time_steps 1", "USERD_get_sol_times 1",
             "USERD_get_timeset_description 2", "USERD_get_num_of_time_steps 2", "USERD_get_sol_times 2",
             "USERD_get_geom_timeset_number", "USERD_get_changing_geometry_status",
             "USERD_set_time_set_and_step 1 0", "USERD_set_time_set_and_step 2 0",
             "USERD_get_number_of_model_parts", "USERD_get_gold_part_build_info"}));
}

TEST_F(SessionOrder, PartsThenTheirEndThenVariablesThenValues) {
  host::Session session(reader.library);
  session.open(fake::file(fake::kTwoSets));
  reader.forget_calls();
  session.coordinates(2);
  session.elements(2);
  session.values(fake::kPressure, 2);
  session.values(fake::kVelocity, 2, 1);
  EXPECT_EQ(reader.calls(),
            (Calls{"USERD_get_part_coords 2", "USERD_get_part_elements_by_type 2 6",
                   "USERD_get_part_elements_by_type 2 10", "USERD_stop_part_building",
                   "USERD_get_number_of_variables", "USERD_get_gold_variable_info",
                   "USERD_get_var_by_component 1 2 1 0 0 0", "USERD_get_var_by_component 6 2 2 0 0 1"}));
}

TEST_F(SessionOrder, VariablesRightAfterTheOpeningComeAfterTheEndOfTheParts) {
  host::Session session(reader.library);
  session.open(fake::file(fake::kTwoSets));
  reader.forget_calls();
  session.variables();
  session.variables();
  EXPECT_EQ(reader.calls(), (Calls{"USERD_stop_part_building", "USERD_get_number_of_variables",
                                   "USERD_get_gold_variable_info"}));
}

TEST_F(SessionOrder, PartsThatAreAskedForAgainHaveAnEndAgain) {
  host::Session session(reader.library);
  session.open(fake::file(fake::kTwoSets));
  session.variables();
  reader.forget_calls();
  session.coordinates(1);
  session.values(fake::kPressure, 1);
  session.values(fake::kPressure, 1);
  session.elements(1);
  session.values(fake::kVelocity, 1);
  EXPECT_EQ(reader.calls("USERD_stop_part_building").size(), 2U);
}

TEST_F(SessionOrder, NoValuesArePassedToAReaderThatAsksForNone) {
  host::Session session(reader.library);
  for (const char* before : {fake::kOddKinds, fake::kNoValues}) {
    session.open(fake::file(before));
    reader.forget_calls();
    session.open(fake::file(fake::kTwoSets));
    EXPECT_EQ(reader.calls("USERD_get_extra_data"), Calls{"USERD_get_extra_data 0"}) << before;
  }
}

TEST_F(SessionOrder, ANewStepSelectsTheVariablesSetLast) {
  host::Session session(reader.library);
  session.open(fake::file(fake::kTwoSets));
  reader.forget_calls();
  session.select_step(1);
  EXPECT_EQ(reader.calls(), (Calls{"USERD_set_time_set_and_step 1 1", "USERD_set_time_set_and_step 2 1",
                                   "USERD_get_number_of_model_parts", "USERD_get_gold_part_build_info"}));
}

TEST_F(SessionOrder, SelectingTheSameStepAgainTouchesNoGeometry) {
  host::Session session(reader.library);
  session.open(fake::file(fake::kTwoSets));
  reader.forget_calls();
  session.select_step(0);
  EXPECT_EQ(reader.calls(), Calls{"USERD_set_time_set_and_step 2 0"});
}

TEST_F(SessionOrder, PerElementValuesAreAskedForTypeByType) {
  host::Session session(reader.library);
  session.open(fake::file(fake::kTwoSets));
  session.variables();
  reader.forget_calls();
  session.values(fake::kMaterial, 2);
  EXPECT_EQ(reader.calls(),
            (Calls{"USERD_get_var_by_component 7 2 1 6 0 0", "USERD_get_var_by_component 7 2 1 10 0 0"}));
}

TEST_F(SessionOrder, TheExitRoutineIsCalledOnceAfterAnOpening) {
  {
    host::Session session(reader.library);
    session.open(fake::file(fake::kTwoSets));
    reader.forget_calls();
    session.close();
    EXPECT_FALSE(session.is_open());
    session.close();
  }
  EXPECT_EQ(reader.calls(), Calls{"USERD_exit_routine"});
}

TEST_F(SessionOrder, TheExitRoutineFollowsAFailedOpening) {
  {
    host::Session session(reader.library);
    EXPECT_THROW(session.open(fake::file(fake::kFails)), host::Error);
    reader.forget_calls();
  }
  EXPECT_EQ(reader.calls(), Calls{"USERD_exit_routine"});
}

}  // namespace
