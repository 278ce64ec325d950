// Datasets that cannot be opened: message and result.
#include <filesystem>
#include <string>
#include <sys/stat.h>

#include "testkit/byte_sink.h"
#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"
#include "tests/reader/text_places.h"

namespace reader_test {
namespace {

using testkit::Block;
using testkit::file_of;
using testkit::one_tetrahedron;

class OpeningFailures : public LoadedReader {
 protected:
  // The messages of an opening that returns -1.
  std::string failure(const std::filesystem::path& path) {
    return stderr_of([&] { EXPECT_EQ(-1, host.open(path)); });
  }
  std::string failure_of(const testkit::File& file) { return failure(write(file)); }
};
using OpeningFailuresDeathTest = OpeningFailures;

TEST_F(OpeningFailures, MissingFileIsNotFoundAndNothingElseIsSaid) {
  EXPECT_EQ("FILE NOT FOUND : " + in("case_1.fld").string() + "\n", failure(in("case_1.fld")));
}

TEST_F(OpeningFailures, MissingFileIsNotFoundBeforeItsExtensionIsLookedAt) {
  EXPECT_EQ("FILE NOT FOUND : " + in("case.dat").string() + "\n", failure(in("case.dat")));
}

TEST_F(OpeningFailures, NullAndEmptyNamesAreNotFound) {
  EXPECT_EQ("FILE NOT FOUND : \n",
            stderr_of([&] { EXPECT_EQ(-1, api().set_filenames(nullptr, nullptr, nullptr, 0)); }));
  EXPECT_EQ("FILE NOT FOUND : \n", failure(""));
}

TEST_F(OpeningFailures, ExtensionHasToBeginWithFld) {
  for (const char* name :
       {"case.dat", "case_10.dat", "case", "case.fl", "case.fld.gz", "case.xfld", "case."}) {
    write(file_of(one_tetrahedron()), name);
    EXPECT_EQ("error : invalid file extension.\n", failure(in(name))) << name;
  }
}

TEST_F(OpeningFailures, FileOfTheSeriesThatCannotBeOpenedIsNamed) {
  write(file_at(1, {numbered_mesh(4)}), "case_1.fld");
  std::filesystem::create_symlink(in("nowhere"), in("case_2.fld"));
  EXPECT_EQ("FAILED TO OPEN " + in("case_2.fld").string() + "\n", failure(in("case_1.fld")));
}

TEST_F(OpeningFailures, FolderInThePlaceOfAFileCannotBeOpened) {
  std::filesystem::create_directory(in("folder.fld"));
  EXPECT_EQ("FAILED TO OPEN " + in("folder.fld").string() + "\n", failure(in("folder.fld")));
}

TEST_F(OpeningFailures, NamedPipeCannotBeOpenedAndDoesNotBlock) {
  ASSERT_EQ(0, mkfifo(in("pipe.fld").c_str(), 0600));
  EXPECT_EQ("FAILED TO OPEN " + in("pipe.fld").string() + "\n", failure(in("pipe.fld")));
}

TEST_F(OpeningFailures, DeviceCannotBeOpened) {
  std::filesystem::create_symlink("/dev/zero", in("device.fld"));
  EXPECT_EQ("FAILED TO OPEN " + in("device.fld").string() + "\n", failure(in("device.fld")));
}

TEST_F(OpeningFailures, OtherIdentificationIsNotAnFldFile) {
  testkit::File file = file_of(one_tetrahedron());
  for (const char* magic : {"VTRL-FLX", "vtrl-fld", "        "}) {
    file.magic = magic;
    EXPECT_EQ("This is not FLD file.\n", failure_of(file)) << magic;
  }
}

TEST_F(OpeningFailures, FileTooShortForTheIdentificationIsNotAnFldFile) {
  const std::string bytes = testkit::to_bytes(file_of(one_tetrahedron()));
  for (const std::size_t size : {0U, 1U, 4U, 11U, 12U, 15U}) {
    testkit::write_bytes(in("short.fld"), bytes.substr(0, size));
    EXPECT_EQ("This is not FLD file.\n", failure(in("short.fld"))) << size;
  }
}

TEST_F(OpeningFailures, VersionHasToBe4) {
  testkit::File file = file_of(one_tetrahedron());
  for (const int version : {3, 5, 0, -4}) {
    file.version = version;
    EXPECT_EQ("FLD FILE VERSION HAS TO BE 4.\n", failure_of(file)) << version;
  }
}

TEST_F(OpeningFailures, TwoDimensionsAreRefused) {
  testkit::File file = file_of(one_tetrahedron());
  file.header.set_dimension(2);
  EXPECT_EQ("L2D3D MUST BE 3 IN FLD\n", failure_of(file));
}

TEST_F(OpeningFailures, VersionComesBeforeTheDimension) {
  testkit::File file = file_of(one_tetrahedron());
  file.version = 3;
  file.header.set_dimension(2);
  EXPECT_EQ("FLD FILE VERSION HAS TO BE 4.\n", failure_of(file));
}

TEST_F(OpeningFailures, FirstFileNeedsGeometryInEveryRegionSet) {
  testkit::File file = file_at(1, {numbered_mesh(4), numbered_mesh(4)});
  file.region_sets[1].remove("LS_Nodes");
  EXPECT_EQ("NOT FOUND GEOMETRY DATA IN THE FIRST FLD FILE\n", failure_of(file));
}

TEST_F(OpeningFailures, FileWithoutGeometryOpensAsASecondOneButNotAlone) {
  write(file_at(1, {numbered_mesh(4)}), "case_1.fld");
  testkit::File second = file_at(2);
  second.add_region_set();
  write(second, "case_2.fld");
  open(in("case_2.fld"));
  EXPECT_EQ("NOT FOUND GEOMETRY DATA IN THE FIRST FLD FILE\n", failure_of(second));
}

TEST_F(OpeningFailures, FirstBadFileOfASeriesEndsTheOpening) {
  write(file_at(1, {numbered_mesh(4)}), "case_1.fld");
  testkit::write_bytes(in("case_2.fld"), "not one of ours, and long enough");
  std::filesystem::create_directory(in("case_3.fld"));
  EXPECT_EQ("This is not FLD file.\n", failure(in("case_1.fld")));
}

TEST_F(OpeningFailures, GeometryThatCannotBeReadIsReportedWithItsReason) {
  testkit::File file = file_of(one_tetrahedron());
  file.region_sets[0].section("LS_MatOfElements").blocks[1] = Block::integer(10000);
  const auto path = write(file);
  EXPECT_EQ(trace(path) + trace(path) + "ERROR : MATERIAL NUMBER OUT OF RANGE.FAILED TO READ GEOMETRY.\n",
            failure(path));
}

TEST_F(OpeningFailures, SectionWithOneBlockTooManyIsReported) {
  testkit::File file = file_of(one_tetrahedron());
  file.region_sets[0].section("LS_Nodes").blocks.push_back(Block::integer(1));
  const auto path = write(file);
  EXPECT_EQ(trace(path) + trace(path) + "ERROR : ERROR IN FLDV4_I_ENDFAILED TO READ GEOMETRY.\n",
            failure(path));
}

TEST_F(OpeningFailures, SecondRegionSetThatCannotBeReadFailsTheOpening) {
  testkit::File file = file_at(0, {numbered_mesh(4), numbered_mesh(4)});
  file.region_sets[1].section("LS_Nodes").blocks[1].rule = testkit::Rule{2, 4, 1};
  const auto path = write(file);
  EXPECT_EQ(trace(path) + trace(path) + trace(path) +
                "ERROR : THIS FLD FILE HAS AN INVALID DATA TYPE.FAILED TO READ GEOMETRY.\n",
            failure(path));
}

TEST_F(OpeningFailures, NegativeCountIsReportedWithItsPlace) {
  testkit::File file = file_of(one_tetrahedron());
  file.region_sets[0].section("LS_Elements").blocks[0] = Block::integer(-5);
  const auto places = testkit::write_file(file, in("case.fld"));
  EXPECT_EQ(trace(in("case.fld")) + trace(in("case.fld")) +
                "ERROR : NEGATIVE COUNT -5 AT BYTE <inside>.FAILED TO READ GEOMETRY.\n",
            with_byte_checked(failure(in("case.fld")), places.of("LS_Elements")));
}

TEST_F(OpeningFailures, CountBeyondTheRestOfTheFileIsReportedWithItsPlace) {
  testkit::File file = file_of(one_tetrahedron());
  file.region_sets[0].section("LS_Nodes").blocks[0] = Block::integer(2000000000);
  const auto places = testkit::write_file(file, in("case.fld"));
  EXPECT_EQ(trace(in("case.fld")) + trace(in("case.fld")) +
                "ERROR : COUNT 2000000000 EXCEEDS THE REST OF THE FILE AT BYTE <inside>."
                "FAILED TO READ GEOMETRY.\n",
            with_byte_checked(failure(in("case.fld")), places.of("LS_Nodes")));
}

TEST_F(OpeningFailures, LargestMeshWithoutElementsIsRefused) {
  testkit::File file = file_of(numbered_nodes(4));
  const auto path = write(file);
  EXPECT_EQ(trace(path) + trace(path) + "error : failed to allocate memory for geometry.\n", failure(path));
  file.region_sets[0].remove("LS_Elements");
  EXPECT_EQ(trace(path) + trace(path) + "error : failed to allocate memory for geometry.\n",
            failure_of(file));
}

TEST_F(OpeningFailures, FileThatBreaksOffInItsSectionsThrows) {
  const auto path = write(file_of(one_tetrahedron()));
  std::filesystem::resize_file(path, std::filesystem::file_size(path) - 100);
  EXPECT_ANY_THROW(stderr_of([&] { host.open(path); }));
  EXPECT_EQ(0, host.part_count());
}

// The C library's report of a failed assertion of a module.
std::string report(const std::string& module, const std::string& function, const std::string& expression) {
  return module + ":[0-9]+: " + function + ": Assertion `" + expression + "' failed";
}

TEST_F(OpeningFailuresDeathTest, SeriesWhosePathHasNoFolderEndsTheProcess) {
  write(file_at(1, {numbered_mesh(4)}), "case_1.fld");
  EXPECT_DEATH(
      {
        std::filesystem::current_path(in(""));
        host.open("case_1.fld");
      },
      report("fld", "int FLD::seekFLD\\(bool\\)", "!m_fld.empty\\(\\)"));
}

TEST_F(OpeningFailuresDeathTest, FileWithoutRegionSetsEndsTheProcess) {
  const auto path = write(file_at(0));
  EXPECT_DEATH(host.open(path), report("fld", "int FLDFile::seekFLD\\(\\)", "!m_overlap.empty\\(\\)"));
}

TEST_F(OpeningFailuresDeathTest, SectionBeforeTheFirstRegionSetEndsTheProcess) {
  testkit::File file = file_of(one_tetrahedron());
  testkit::RegionSet outside;
  outside.opener.reset();
  outside.add(numbered_scalar("T", 4));
  file.region_sets.push_front(outside);
  const auto path = write(file);
  EXPECT_DEATH(host.open(path),
               report("fld", "int FLDFile::seekFLD\\(\\)", "overlap != m_overlap.end\\(\\)"));
}

TEST_F(OpeningFailuresDeathTest, MotionWithAWrongNumberOfDataItemsEndsTheProcess) {
  testkit::Action action = testkit::Action::translate({1.0, 0.0, 0.0});
  action.item_count = 2;
  testkit::File file = file_of(one_tetrahedron());
  file.region_sets[0].add(motion_of(0, {{.names = {"fluid"}, .actions = {action}}}));
  const auto path = write(file);
  EXPECT_DEATH(host.open(path),
               report("Convert_read_fld", "void FLDV4_ALE\\(_IO_FILE \\*, ALE &\\)", "ndat == 1"));
}

}  // namespace
}  // namespace reader_test
