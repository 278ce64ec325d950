// The cached quantities, and the exceptions of a request for values.
#include <string>

#include "reader/globals.h"
#include "support/errors.h"
#include "testkit/byte_sink.h"
#include "tests/reader/linked_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

class CachedQuantity : public LinkedReader {
 protected:
  void SetUp() override {
    for (const int cycle : {1, 2}) {
      testkit::File file = file_at(cycle, {numbered_mesh(4)});
      file.region_sets[0].add(numbered_scalar("A", 4, 10.0));
      file.region_sets[0].add(numbered_vector("U", 4, 20.0));
      file.region_sets[0].add(numbered_scalar("B", 4, 30.0));
      places_ = testkit::write_file(file, path(cycle));
    }
    open(path(1));
  }
  std::filesystem::path path(int cycle) const { return in("case_" + std::to_string(cycle) + ".fld"); }
  void read_both() {
    host.scalar(1, 1);
    host.vector(3, 1, 0);
  }
  // The message of the exception thrown by a request for this scalar.
  std::string exception_of(int variable) {
    try {
      stderr_of([&] { host.ask({.variable = variable, .part = 1}, 4); });
    } catch (const fld::FLDReadException& error) {
      return error.getMessage();
    }
    return "";
  }
  testkit::Places places_;
};

TEST_F(CachedQuantity, NamesAreEmptyUntilSomethingIsRead) {
  EXPECT_EQ("", fld::g_prev_scalar_xxxx);
  EXPECT_EQ("", fld::g_prev_vector_xxxx);
  read_both();
  EXPECT_EQ("A", fld::g_prev_scalar_xxxx);
  EXPECT_EQ("U", fld::g_prev_vector_xxxx);
  ASSERT_TRUE(fld::g_scalar);
  EXPECT_EQ(4, fld::g_scalar->n);
  EXPECT_EQ(13.0F, fld::vfpa2float(fld::g_scalar->values, 3));
  ASSERT_TRUE(fld::g_vector);
  EXPECT_EQ(223.0F, fld::vfpa2float(fld::g_vector->components[2], 3));
}

TEST_F(CachedQuantity, SelectingTheSameSetAndStepKeepsTheNames) {
  read_both();
  select(1, 0);
  EXPECT_EQ("A", fld::g_prev_scalar_xxxx);
  EXPECT_EQ("U", fld::g_prev_vector_xxxx);
}

TEST_F(CachedQuantity, SelectingAnotherSetOrStepClearsTheNames) {
  for (const auto& [set, step] : {std::pair{2, 0}, {1, 1}, {3, 0}}) {
    select(1, 0);
    read_both();
    select(set, step);
    EXPECT_EQ("", fld::g_prev_scalar_xxxx) << set << ' ' << step;
    EXPECT_EQ("", fld::g_prev_vector_xxxx) << set << ' ' << step;
  }
}

TEST_F(CachedQuantity, SuccessfulOpeningClearsTheNamesAndAFailingOneDoesNot) {
  read_both();
  stderr_of([&] { EXPECT_EQ(-1, host.open(in("missing.fld"))); });
  EXPECT_EQ("A", fld::g_prev_scalar_xxxx);
  EXPECT_EQ("U", fld::g_prev_vector_xxxx);
  open(path(2));
  EXPECT_EQ("", fld::g_prev_scalar_xxxx);
  EXPECT_EQ("", fld::g_prev_vector_xxxx);
}

TEST_F(CachedQuantity, ExitReleasesQuantitiesAndNames) {
  read_both();
  stderr_of([&] { api().exit_routine(); });
  EXPECT_FALSE(fld::g_scalar);
  EXPECT_FALSE(fld::g_vector);
  EXPECT_EQ("", fld::g_prev_scalar_xxxx);
  EXPECT_EQ("", fld::g_prev_vector_xxxx);
}

TEST_F(CachedQuantity, FailedReadKeepsNameAndValuesTogether) {
  read_both();
  const auto* const held = fld::g_scalar.get();
  std::filesystem::resize_file(path(1), places_.of("LS_Scalar:B").end - 25);
  EXPECT_NE("", exception_of(2));
  EXPECT_EQ("A", fld::g_prev_scalar_xxxx);
  EXPECT_EQ(held, fld::g_scalar.get());
}

TEST_F(CachedQuantity, FileThatEndsInTheValuesThrowsWithThePlace) {
  const auto size = places_.of("LS_Scalar:B").blocks[2] + 30;
  std::filesystem::resize_file(path(1), size);
  EXPECT_EQ("UNEXPECTED END OF FILE AT BYTE " + std::to_string(size) + ".", exception_of(2));
}

TEST_F(CachedQuantity, ValuesOfAnotherWidthThrow) {
  testkit::File file = file_at(1, {numbered_mesh(4)});
  file.region_sets[0].add(numbered_scalar("A", 4));
  file.region_sets[0].section("LS_Scalar:A").blocks[2].rule = testkit::Rule{2, 4, 1};
  testkit::write_file(file, path(1));
  EXPECT_EQ("THIS FLD FILE HAS AN INVALID DATA TYPE.", exception_of(1));
}

TEST_F(CachedQuantity, SectionWithOneBlockTooManyThrows) {
  testkit::File file = file_at(1, {numbered_mesh(4)});
  file.region_sets[0].add(numbered_scalar("A", 4));
  file.region_sets[0].section("LS_Scalar:A").blocks.push_back(testkit::Block::integer(0));
  testkit::write_file(file, path(1));
  EXPECT_EQ("ERROR IN FLDV4_I_END", exception_of(1));
  EXPECT_EQ("", fld::g_prev_scalar_xxxx) << "a name is stored after a complete read alone";
}

TEST_F(CachedQuantity, TitleWithOffset0HasNothingToDeliver) {
  fld::g_fld->m_fld[0].m_overlap[0].m_scalars.own()[0].m_seek = 0;
  fld::g_fld->m_fld[0].m_overlap[0].m_vectors.own()[0].m_seek = 0;
  EXPECT_EQ(
      "", stderr_of([&] {
        EXPECT_EQ((Answer{1, {kUntouchedFloat}}), host.ask({.variable = 1, .part = 1}, 1));
        EXPECT_EQ((Answer{1, {kUntouchedFloat}}), host.ask({.variable = 3, .part = 1, .var_type = 2}, 1));
      }));
  EXPECT_EQ("", fld::g_prev_scalar_xxxx);
  EXPECT_EQ((Floats{30, 31, 32, 33}), host.scalar(2, 1));
}

TEST_F(CachedQuantity, ValuesStayInTheFilesPrecision) {
  testkit::File file = file_at(1, {numbered_mesh(4)});
  file.region_sets[0].add(testkit::scalar_section(
      {.name = "A", .values = {0.1, 0.2, 0.3, 0.4}, .precision = testkit::Precision::kDouble}));
  open(write(file, "double.fld"));
  EXPECT_EQ(0.1F, host.scalar(1, 1)[0]);
  EXPECT_EQ(8, fld::g_scalar->values.precision);
  EXPECT_EQ(0.1, fld::vfpa2double(fld::g_scalar->values, 0));
}

TEST_F(CachedQuantity, VectorKeepsItsLeadingInteger) {
  testkit::File file = file_at(1, {numbered_mesh(4)});
  const testkit::Reals values = {1.0, 2.0, 3.0, 4.0};
  file.region_sets[0].add(testkit::vector_section(
      {.name = "U", .label = "velocity", .x = values, .y = values, .z = values, .leading = 42}));
  open(write(file, "leading.fld"));
  host.vector(1, 1, 0);
  EXPECT_EQ(42, fld::g_vector->leading);
  EXPECT_EQ(testkit::padded("velocity", 32), fld::g_vector->text);
}

}  // namespace
}  // namespace reader_test
