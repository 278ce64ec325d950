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
  // Tries each `partial`-th damage, or all of them.
  void expect_agreement(const faults::Damages& damages, std::size_t partial) {
    for (std::size_t number = 0; number < damages.count(); number += faults::sweep_stride(partial)) {
      testkit::write_bytes(file_, damages.damaged(number));
      std::string found;
      {
        const faults::StderrFile silence;
        found = disagreement(reader_test::linked_entry_points(), file_);
      }
      EXPECT_EQ(found, "") << damages.describe(number);
    }
  }

  testkit::TemporaryDirectory directory_;
  std::filesystem::path file_ = directory_ / "case.fld";
  testkit::Places places_;
  std::string bytes_ = testkit::to_bytes(faults::every_construct(), &places_);
};

TEST_F(HostileFileDecoders, CutOffAnywhere) {
  expect_agreement(faults::Truncations(bytes_), 41);
}

TEST_F(HostileFileDecoders, AnyBitFlipped) {
  expect_agreement(faults::BitFlips(bytes_), 61);
}

TEST_F(HostileFileDecoders, AnyWordExtreme) {
  expect_agreement(faults::WordChanges::extremes(bytes_), 31);
}

TEST_F(HostileFileDecoders, AnyMarkerWrong) {
  expect_agreement(faults::WordChanges::markers(bytes_), 11);
}

TEST_F(HostileFileDecoders, AnySectionMissingDoubledOrMoved) {
  expect_agreement(faults::SectionMoves(bytes_, places_), 1);
}

}  // namespace
}  // namespace decoders
