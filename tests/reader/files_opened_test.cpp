// How often opening a series opens each file.
#include <filesystem>

#include "reader/globals.h"
#include "support/errors.h"
#include "tests/reader/linked_reader.h"
#include "tests/reader/open_counter.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

class FilesOpened : public LinkedReader {
 protected:
  void SetUp() override {
    for (int cycle = 0; cycle < 3; ++cycle) {
      testkit::File file = file_at(cycle, {numbered_mesh(4)});
      file.region_sets[0].add(numbered_scalar("P", 4));
      file.region_sets[0].add(numbered_vector("V", 4));
      files_.push_back(file);
    }
  }
  void write_series() {
    for (std::size_t i = 0; i < files_.size(); ++i) {
      paths_.push_back(write(files_[i], "case_" + std::to_string(i) + ".fld"));
      openings_.watch(paths_.back());
    }
  }

  std::vector<testkit::File> files_;
  std::vector<std::filesystem::path> paths_;
  OpenCounter openings_;
};

TEST_F(FilesOpened, OnceEachAndOnceMoreForTheGeometry) {
  write_series();
  open(paths_[1]);
  EXPECT_EQ(2, openings_.take(paths_[0]));
  EXPECT_EQ(1, openings_.take(paths_[1]));
  EXPECT_EQ(1, openings_.take(paths_[2]));
  EXPECT_EQ(3, api().get_number_of_variables());  // the material numbers are one
}

TEST_F(FilesOpened, OnceMoreWhereReadingAQuantityEndsElsewhereThanSteppingOverIt) {
  // The rule of the label announces fewer characters than its record holds, so reading the label ends inside
  // the record.
  testkit::Block& label = files_[1].region_sets[0].section("LS_Scalar:P").blocks[0];
  label = label.with_rule({.width = 1, .per_record = 28, .n_records = 1});
  write_series();
  stderr_of([&] { EXPECT_THROW(host.open(paths_[0]), fld::FLDReadException); });
  EXPECT_EQ(2, openings_.take(paths_[1]));
  EXPECT_EQ(1, openings_.take(paths_[2]));
}

TEST_F(FilesOpened, OnceEachWithTheSimplifyingOption) {
  write_series();
  fld::Toggle_user[0] = 1;
  open(paths_[0]);
  EXPECT_EQ(2, openings_.take(paths_[0]));
  EXPECT_EQ(1, openings_.take(paths_[1]));
}

}  // namespace
}  // namespace reader_test
