// Sections damaged at any byte: the result is an FLDException or a readable section, and nothing leaks.
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "format/ale.h"
#include "format/elements.h"
#include "format/header.h"
#include "format/mat_of_elements.h"
#include "format/nodes.h"
#include "format/quantity.h"
#include "format/quantity_index.h"
#include "format/record.h"
#include "format/surface_geometry.h"
#include "format/volume_geometry.h"
#include "support/errors.h"
#include "testkit/big_endian.h"
#include "testkit/header.h"
#include "testkit/motion.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/format/input.h"
#include "tests/support/empty_list.h"
#include "tests/support/thrown_message.h"

namespace {

using testkit::RegionForm;

struct Sample {
  std::string name;
  std::string bytes;
  std::function<void(FILE*)> read;
};

template <class Region>
std::function<void(FILE*)> into_list(void (*read)(FILE*, std::vector<fld::smart_ptr<Region>>&)) {
  return [read](FILE* stream) {
    std::vector<fld::smart_ptr<Region>> list;
    read(stream, list);
  };
}

std::string header_bytes() {
  std::string bytes;
  for (const testkit::Section& item : testkit::Header::usual().items) bytes += bytes_of({item});
  return bytes + bytes_of(testkit::Title("HeaderDataEnd"));
}

void read_header(FILE* stream) {
  int dimension = 0;
  int cycle = 0;
  int bias = 0;
  double time = 0.0;
  float single = 0.0F;
  double twice = 0.0;
  fld::FLDV4_I_HeadB(stream, &dimension, &cycle, &time, &single, &twice, &bias);
}

std::vector<Sample> samples() {
  const testkit::Mesh mesh = testkit::one_of_each();
  const testkit::Section scalar =
      testkit::scalar_section({.name = "p", .label = "P", .values = {1.0, 2.0, 3.0}});
  const testkit::Section vector =
      testkit::vector_section({.name = "U", .label = "V", .x = {1.0, 2.0}, .y = {3.0, 4.0}, .z = {5.0, 6.0}});
  // Without actions: a damaged number of data items ends the process, as it should.
  const testkit::Section motion =
      testkit::motion_section({.regions = {{.names = {"rotor", "hub"}}, {.names = {"piston"}}}});
  const auto index_scalar = [](FILE* stream) {
    std::vector<fld::FLDTITLE_Scalar> list;
    fld::FLDV4_Scalar_SEEK(stream, 0, "LS_Scalar:p                     ", list);
  };
  const auto index_vector = [](FILE* stream) {
    std::vector<fld::FLDTITLE_Vector> list;
    fld::FLDV4_Vector_SEEK(stream, 0, "LS_Vector:U                     ", list, 3);
  };
  return {
      {"Header", header_bytes(), read_header},
      {"CoordinateSystem", body_of(testkit::coordinate_system_section(1)),
       [](FILE* stream) {
         int value = 0;
         fld::FLDV4_CoordinateSystem(stream, value);
       }},
      {"Surfaces", body_of(testkit::surfaces_section(mesh.surfaces)), into_list(fld::FLDV4_SurfaceGeometry)},
      {"SurfacesAsArray", body_of(testkit::surfaces_section(mesh.surfaces, RegionForm::kArray)),
       into_list(fld::FLDV4_SurfaceGeometryArray)},
      {"Volumes", body_of(testkit::volumes_section(mesh.volumes)), into_list(fld::FLDV4_VolumeGeometry)},
      {"VolumesAsArray", body_of(testkit::volumes_section(mesh.volumes, RegionForm::kArray)),
       into_list(fld::FLDV4_VolumeGeometryArray)},
      {"Elements", body_of(testkit::elements_section(mesh.elements)),
       [](FILE* stream) { fld::FLDV4_Elements(stream); }},
      {"Materials", body_of(testkit::materials_section(mesh.materials)),
       [](FILE* stream) { fld::FLDV4_MatOfElements(stream); }},
      {"Nodes", body_of(testkit::nodes_section(mesh.nodes)), [](FILE* stream) { fld::FLDV4_Nodes(stream); }},
      {"Motion", body_of(motion),
       [](FILE* stream) {
         fld::ALE ale;
         fld::FLDV4_ALE(stream, ale);
       }},
      {"ScalarIndex", body_of(scalar), index_scalar},
      {"VectorIndex", body_of(vector), index_vector},
      {"Scalar", body_of(scalar), [](FILE* stream) { fld::FLDV4_Scalar(stream); }},
      {"Vector", body_of(vector), [](FILE* stream) { fld::FLDV4_Vector(stream); }},
      {"SteppingOver", body_of(scalar), fld::FLDV4_I_SKIP},
  };
}

class DamagedSections : public EmptyList, public testing::WithParamInterface<Sample> {};

INSTANTIATE_TEST_SUITE_P(Of, DamagedSections, testing::ValuesIn(samples()),
                         [](const auto& info) { return info.param.name; });

TEST_P(DamagedSections, WholeAreRead) {
  const Input input(GetParam().bytes + kNext);
  GetParam().read(input.stream());
  EXPECT_EQ(input.rest(), kNext);
}

TEST_P(DamagedSections, CutOffAnywhereAreAnError) {
  const std::string& bytes = GetParam().bytes;
  for (size_t length = 0; length < bytes.size(); ++length) {
    const Input input(bytes.substr(0, length));
    EXPECT_NE(thrown_message([&] { GetParam().read(input.stream()); }), "nothing was thrown") << length;
    ASSERT_EQ(fld::memory, nullptr) << "arrays were kept; cut off at byte " << length;
  }
}

TEST_P(DamagedSections, WithAnyNumberAnywhereAreReadOrAnError) {
  constexpr int kNumbers[] = {
      -1, 0, 1, 17, 4096, 1 << 24, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
  for (size_t place = 0; place + 4 <= GetParam().bytes.size(); ++place) {
    for (const int number : kNumbers) {
      std::string bytes = GetParam().bytes;
      bytes.replace(place, 4, testkit::big_endian(number));
      const Input input(bytes);
      try {
        GetParam().read(input.stream());
        EXPECT_LE(input.position(), static_cast<long>(bytes.size()));
      } catch (const fld::FLDReadException& error) {
        EXPECT_STRNE(error.getMessage(), "");
      }
      ASSERT_EQ(fld::memory, nullptr) << "arrays were kept; " << number << " at byte " << place;
    }
  }
}

TEST_P(DamagedSections, WithNumbersAppendedAreStillThatSection) {
  const Input input(GetParam().bytes + std::string(100, '\xff'));
  GetParam().read(input.stream());
  EXPECT_EQ(input.position(), static_cast<long>(GetParam().bytes.size()));
}

}  // namespace
