// What a damage makes of a file, both decoders see alike (disagreement.h).
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "testkit/byte_sink.h"
#include "testkit/file_writer.h"
#include "testkit/temporary_directory.h"
#include "tests/decoders/disagreement.h"
#include "tests/faults/damage.h"
#include "tests/faults/fault_datasets.h"
#include "tests/faults/stderr_file.h"
#include "tests/faults/sweep_stride.h"
#include "tests/reader/linked_entry_points.h"

namespace decoders {
namespace {

class HostileFileDecoders : public testing::Test {
 protected:
  // Tries each `partial`-th damage, or all of them. Returns of how many files the answers were compared.
  int expect_agreement(const faults::Damages& damages, std::size_t partial) {
    int compared = 0;
    for (std::size_t number = 0; number < damages.count(); number += faults::sweep_stride(partial)) {
      testkit::write_bytes(file_, damages.damaged(number));
      std::string found;
      bool was_compared = false;
      {
        const faults::StderrFile silence;
        found = disagreement(reader_test::linked_entry_points(), file_, &was_compared);
      }
      EXPECT_EQ(found, "") << damages.describe(number);
      compared += was_compared ? 1 : 0;
    }
    return compared;
  }

  testkit::TemporaryDirectory directory_;
  std::filesystem::path file_ = directory_ / "case.fld";
  testkit::Places places_;
  std::string bytes_ = testkit::to_bytes(faults::every_construct(), &places_);
};

TEST_F(HostileFileDecoders, CutOffAnywhere) {
  EXPECT_EQ(expect_agreement(faults::Truncations(bytes_), 41), 0);
}

TEST_F(HostileFileDecoders, AnyBitFlipped) {
  EXPECT_GT(expect_agreement(faults::BitFlips(bytes_), 61), 0);
}

TEST_F(HostileFileDecoders, AnyWordExtreme) {
  EXPECT_GT(expect_agreement(faults::WordChanges::extremes(bytes_), 31), 0);
}

TEST_F(HostileFileDecoders, AnyMarkerWrong) {
  EXPECT_EQ(expect_agreement(faults::WordChanges::markers(bytes_), 11), 0);
}

TEST_F(HostileFileDecoders, AnySectionMissingDoubledOrMoved) {
  EXPECT_GT(expect_agreement(faults::SectionMoves(bytes_, places_), 1), 0);
}

}  // namespace
}  // namespace decoders
