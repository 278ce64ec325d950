// Entry points with constant answers, which write nothing and do not depend on a dataset.
#include <algorithm>
#include <array>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

enum class Moment { kBeforeAnyOpening, kWithADataset, kAfterTheExit };

class FixedAnswers : public LoadedReader, public testing::WithParamInterface<Moment> {
 protected:
  void SetUp() override {
    ints_.fill(kUntouchedInt);
    floats_.fill(kUntouchedFloat);
    text_.fill(kUntouchedChar);
    if (GetParam() == Moment::kBeforeAnyOpening) return;
    write_and_open(testkit::file_of(testkit::one_of_each()));
    if (GetParam() == Moment::kAfterTheExit) stderr_of([&] { api().exit_routine(); });
  }

  // None of the arrays was written.
  void TearDown() override {
    EXPECT_TRUE(std::all_of(ints_.begin(), ints_.end(), [](int i) { return i == kUntouchedInt; }));
    EXPECT_TRUE(std::all_of(floats_.begin(), floats_.end(), [](float f) { return f == kUntouchedFloat; }));
    EXPECT_TRUE(std::all_of(text_.begin(), text_.end(), [](char c) { return c == kUntouchedChar; }));
    EXPECT_EQ(kUntouchedShort, short_);
    EXPECT_EQ(ints_.data(), int_row_);
    EXPECT_EQ(text_.data(), text_row_);
  }

  // Calls it and expects nothing on stderr.
  template <class Call>
  auto quietly(Call call) {
    decltype(call()) result{};
    EXPECT_EQ("", stderr_of([&] { result = call(); }));
    return result;
  }

  static constexpr short kUntouchedShort = -4321;
  std::array<int, 64> ints_;
  std::array<float, 64> floats_;
  std::array<char, 128> text_;
  short short_ = kUntouchedShort;
  int* int_row_ = ints_.data();
  char* text_row_ = text_.data();
};

TEST_P(FixedAnswers, NodeIdsAreNotWritten) {
  EXPECT_EQ(1, quietly([&] { return api().get_part_node_ids(1, ints_.data()); }));
}

TEST_P(FixedAnswers, ElementIdsAreNotWritten) {
  EXPECT_EQ(1, quietly([&] { return api().get_part_element_ids_by_type(1, 26, ints_.data()); }));
}

TEST_P(FixedAnswers, NodesAndElementsHaveNoLabels) {
  EXPECT_EQ(0, quietly([&] { return api().get_node_label_status(); }));
  EXPECT_EQ(0, quietly([&] { return api().get_element_label_status(); }));
}

TEST_P(FixedAnswers, BlockCoordinatesAre1AndNotWritten) {
  EXPECT_EQ(1, quietly([&] { return api().get_block_coords_by_component(1, 0, floats_.data()); }));
}

TEST_P(FixedAnswers, BlockBlankingIs1AndNotWritten) {
  EXPECT_EQ(1, quietly([&] { return api().get_block_iblanking(1, ints_.data()); }));
}

TEST_P(FixedAnswers, BlockGhostFlagsAre1AndNotWritten) {
  EXPECT_EQ(1, quietly([&] { return api().get_block_ghost_flags(1, ints_.data()); }));
}

TEST_P(FixedAnswers, ThereAreNoGhosts) {
  EXPECT_EQ(0, quietly([&] { return api().get_ghosts_in_block_flag(1); }));
  EXPECT_EQ(0, quietly([&] { return api().get_ghosts_in_model_flag(); }));
}

TEST_P(FixedAnswers, ExtentsAreLeftToTheHost) {
  EXPECT_EQ(-1, quietly([&] { return api().get_model_extents(floats_.data()); }));
}

TEST_P(FixedAnswers, LargestSizesAreLeftToTheHost) {
  EXPECT_EQ(-1, quietly([&] { return api().get_maxsize_info(ints_.data(), &int_row_, &int_row_); }));
}

TEST_P(FixedAnswers, NoFilesAreReportedForTheQuery) {
  EXPECT_EQ(0, quietly([&] { return api().get_number_of_files_in_dataset(); }));
  EXPECT_EQ(1, quietly([&] { return api().get_dataset_query_file_info(ints_.data()); }));
}

TEST_P(FixedAnswers, DescriptionLinesAreEmpty) {
  std::array<char, 80> line1;
  std::array<char, 80> line2;
  line1.fill(kUntouchedChar);
  line2.fill(kUntouchedChar);
  EXPECT_EQ(1, quietly([&] { return api().get_descrip_lines(1, 1, 0, line1.data(), line2.data()); }));
  EXPECT_EQ('\0', line1[0]);
  EXPECT_EQ(kUntouchedChar, line1[1]);
  EXPECT_EQ('\0', line2[0]);
  EXPECT_EQ(kUntouchedChar, line2[1]);
}

TEST_P(FixedAnswers, ThereAreNoBorders) {
  EXPECT_EQ(-1, quietly([&] { return api().get_border_availability(1, ints_.data()); }));
  EXPECT_EQ(-1, quietly([&] {
    return api().get_border_elements_by_type(1, 26, &int_row_, &short_, ints_.data());
  }));
}

TEST_P(FixedAnswers, ConstantValuesAre0) {
  EXPECT_EQ(0.0F, quietly([&] { return api().get_constant_val(1, 0); }));
}

TEST_P(FixedAnswers, ValuesAtAPointAreNotOffered) {
  EXPECT_EQ(3, quietly([&] { return api().get_var_value_at_specific(1, 1, 1, 26, 0, floats_.data(), 0); }));
}

TEST_P(FixedAnswers, BackupsAreNotOffered) {
  EXPECT_EQ(3, quietly([&] { return api().bkup(nullptr, 1); }));
}

TEST_P(FixedAnswers, ThereAreNoMaterialSets) {
  EXPECT_EQ(0, quietly([&] { return api().get_number_of_material_sets(); }));
  EXPECT_EQ(1, quietly([&] { return api().get_matf_set_info(ints_.data(), &text_row_); }));
  EXPECT_EQ(0, quietly([&] { return api().get_number_of_materials(0); }));
  EXPECT_EQ(1, quietly([&] { return api().get_matf_var_info(0, ints_.data(), &text_row_); }));
  EXPECT_EQ(1, quietly([&] { return api().size_matf_data(0, 1, 26, 0, ints_.data()); }));
  EXPECT_EQ(1, quietly([&] { return api().load_matf_data(0, 1, 26, 0, ints_.data(), floats_.data()); }));
}

TEST_P(FixedAnswers, ThereAreNoPolygonsAndPolyhedra) {
  EXPECT_EQ(-1, quietly([&] { return api().get_nsided_conn(1, ints_.data()); }));
  EXPECT_EQ(-1, quietly([&] { return api().get_nfaced_nodes_per_face(1, ints_.data()); }));
  EXPECT_EQ(-1, quietly([&] { return api().get_nfaced_conn(1, ints_.data()); }));
}

TEST_P(FixedAnswers, ThereAreNoFailedElements) {
  EXPECT_EQ(-1, quietly([&] {
    return api().get_uns_failed_params(text_.data(), floats_.data(), floats_.data(), ints_.data(),
                                       ints_.data(), ints_.data());
  }));
}

TEST_P(FixedAnswers, StoppingPartBuildingDoesNothing) {
  const std::vector<PartInfo> before = host.parts();
  EXPECT_EQ("", stderr_of([&] { api().stop_part_building(); }));
  EXPECT_EQ(before, host.parts());
}

INSTANTIATE_TEST_SUITE_P(Session, FixedAnswers,
                         testing::Values(Moment::kBeforeAnyOpening, Moment::kWithADataset,
                                         Moment::kAfterTheExit),
                         [](const testing::TestParamInfo<Moment>& info) {
                           switch (info.param) {
                             case Moment::kBeforeAnyOpening:
                               return "BeforeAnyOpening";
                             case Moment::kWithADataset:
                               return "WithADataset";
                             default:
                               return "AfterTheExit";
                           }
                         });

}  // namespace
}  // namespace reader_test
