// Where arrays stand: what is read there is what the section readers read.
#include <cstdint>
#include <cstring>
#include <fstream>

#include "dataset/fld.h"
#include "dataset/region_set_reader.h"
#include "format/data_block.h"
#include "format/input_file.h"
#include "format/record.h"
#include "testkit/random_dataset.h"
#include "tests/dataset/dataset_test.h"

namespace fld::test {
namespace {

// The elements that a layout tells of, each as the bits of a big-endian number.
std::vector<uint64_t> bits_at(const std::string& bytes, const ArrayLayout& place) {
  std::vector<uint64_t> bits;
  for (int64_t i = 0; i < place.count; ++i) {
    const int64_t offset = place.offset_of(i);
    if (offset + place.width > static_cast<int64_t>(bytes.size())) return {};
    uint64_t value = 0;
    for (int b = 0; b < place.width; ++b) {
      value = value << 8U | static_cast<unsigned char>(bytes[static_cast<size_t>(offset + b)]);
    }
    bits.push_back(value);
  }
  return bits;
}

std::vector<uint64_t> bits_of(const int* values, int64_t n) {
  std::vector<uint64_t> bits;
  for (int64_t i = 0; i < n; ++i) bits.push_back(static_cast<uint32_t>(values[i]));
  return bits;
}

std::vector<uint64_t> bits_of(const VFPA& values, int64_t n) {
  std::vector<uint64_t> bits;
  for (int64_t i = 0; i < n; ++i) {
    uint32_t narrow = 0;
    uint64_t wide = 0;
    if (values.precision == 4) {
      memcpy(&narrow, static_cast<const float*>(values.data) + i, sizeof narrow);
      wide = narrow;
    } else {
      memcpy(&wide, static_cast<const double*>(values.data) + i, sizeof wide);
    }
    bits.push_back(wide);
  }
  return bits;
}

std::string bytes_of(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The sections as the file has them, indices and material numbers unchanged.
FLDGEO read_raw(const FLDFile& file, int region) {
  FLDGEO geo;
  LoadedSections loaded;
  const InputFile input(file.m_path, Access::bulk);
  FLDHeader header;
  EXPECT_EQ(read_file_header(input, file.m_path, header), 0);
  find_region_set(input.stream(), file.m_overlap[static_cast<size_t>(region)].m_begin, region);
  read_region_set(input.stream(), geo, loaded);
  return geo;
}

void expect_same(const std::string& bytes, const RegionSetLayout& layout, const FLDGEO& geo) {
  EXPECT_EQ(layout.coordinateSystem, geo.coordinateSystem);
  ASSERT_EQ(layout.elements.has_value(), static_cast<bool>(geo.elements));
  if (geo.elements) {
    EXPECT_EQ(bits_at(bytes, layout.elements->type), bits_of(geo.elements->type, geo.elements->nelem));
    EXPECT_EQ(bits_at(bytes, layout.elements->conn), bits_of(geo.elements->conn, geo.elements->nconn));
  }
  ASSERT_EQ(layout.materials.has_value(), static_cast<bool>(geo.matOfElements));
  if (geo.matOfElements) {
    EXPECT_EQ(bits_at(bytes, layout.materials->mat),
              bits_of(geo.matOfElements->mat, geo.matOfElements->nelem));
  }
  ASSERT_EQ(layout.nodes.has_value(), static_cast<bool>(geo.nodes));
  if (geo.nodes) {
    const int n = geo.nodes->nnode;
    EXPECT_EQ(bits_at(bytes, layout.nodes->x), bits_of(geo.nodes->x, n));
    EXPECT_EQ(bits_at(bytes, layout.nodes->y), bits_of(geo.nodes->y, n));
    EXPECT_EQ(bits_at(bytes, layout.nodes->z), bits_of(geo.nodes->z, n));
  }
  const auto surfaces = layout.surfaces.value_or(std::vector<SurfaceLayout>{});
  ASSERT_EQ(surfaces.size(), geo.surfaces.size());
  for (size_t s = 0; s < surfaces.size(); ++s) {
    const SurfaceGeometry& surface = *geo.surfaces[s];
    EXPECT_EQ(surfaces[s].name, surface.name);
    EXPECT_EQ(bits_at(bytes, surfaces[s].faceType), bits_of(surface.faceType, surface.nface));
    EXPECT_EQ(bits_at(bytes, surfaces[s].faceLink), bits_of(surface.faceLink, surface.nface));
    EXPECT_EQ(bits_at(bytes, surfaces[s].faceNode), bits_of(surface.faceNode, surface.nfaceNode));
  }
  const auto volumes = layout.volumes.value_or(std::vector<VolumeLayout>{});
  ASSERT_EQ(volumes.size(), geo.volumes.size());
  for (size_t v = 0; v < volumes.size(); ++v) {
    EXPECT_EQ(volumes[v].name, geo.volumes[v]->name);
    EXPECT_EQ(bits_at(bytes, volumes[v].elem), bits_of(geo.volumes[v]->elem, geo.volumes[v]->nelem));
  }
}

template <class Quantity>
smart_ptr<Quantity> read_quantity(const std::string& path, int64_t offset,
                                  smart_ptr<Quantity> (*read)(FILE*)) {
  const InputFile input(path, Access::bulk);
  fseeko(input.stream(), offset, SEEK_SET);
  char title[fld::kTitleLength + 1];
  FLDV4_I_TITLE(input.stream(), title);
  read_int(input.stream());
  return read(input.stream());
}

class LocatedArrays : public testing::TestWithParam<int> {
 protected:
  testkit::TemporaryDirectory directory_;
};

TEST_P(LocatedArrays, AreWhereTheSectionReadersReadThem) {
  const std::vector<testkit::File> files = testkit::random_series(static_cast<uint64_t>(GetParam()));
  for (size_t f = 0; f < files.size(); ++f) {
    const std::string path = write(directory_, testkit::random_file_name("random", f), files[f]);
    const std::string bytes = bytes_of(path);
    FLDFile file = checked(path);
    {
      const Messages messages;
      ASSERT_EQ(file.seekFLD(), 0);
    }
    for (size_t g = 0; g < file.m_overlap.size(); ++g) {
      const auto region = static_cast<int>(g);
      expect_same(bytes, file.locateGeometry(region), read_raw(file, region));
      for (const FLDTITLE_Scalar& title : file.m_overlap[g].m_scalars) {
        const auto scalar = read_quantity(path, title.m_seek, FLDV4_Scalar);
        const ScalarLayout layout = file.locateValues(title);
        EXPECT_EQ(layout.n, scalar->n);
        EXPECT_STREQ(layout.text, scalar->text);
        EXPECT_EQ(bits_at(bytes, layout.values), bits_of(scalar->values, scalar->n));
      }
      for (const FLDTITLE_Vector& title : file.m_overlap[g].m_vectors) {
        const auto vector = read_quantity(path, title.m_seek, FLDV4_Vector);
        const VectorLayout layout = file.locateValues(title);
        EXPECT_EQ(layout.n, vector->n);
        for (int c = 0; c < 3; ++c) {
          EXPECT_EQ(bits_at(bytes, layout.components[c]), bits_of(vector->components[c], vector->n));
        }
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Random, LocatedArrays, testing::Range(1, 61));

// Cut off at any byte, the file is refused with the error that reading it gives, or is read alike.
TEST(LocatedArraysOfCutFiles, AreErrorsOfReading) {
  const testkit::TemporaryDirectory directory;
  const testkit::File whole = testkit::random_series(5).front();
  const std::string path = write(directory, "whole_1.fld", whole);
  const FLDFile file = checked(path);
  const auto size = static_cast<int64_t>(std::filesystem::file_size(path));
  int errors = 0;
  for (int64_t cut = size; cut > 0; cut -= 7) {
    std::filesystem::resize_file(path, static_cast<uintmax_t>(cut));
    FLDGEO geo;
    const Reading reading = read_geometry(file, 0, geo);
    Messages messages;
    const std::string error = read_error([&] { static_cast<void>(file.locateGeometry(0)); });
    EXPECT_EQ(reading.status == 0, error == "no FLDReadException") << cut << " " << error;
    errors += error != "no FLDReadException";
  }
  EXPECT_GT(errors, 10);
}

// A stretch of an array whose records are shorter than it.
TEST(ArrayPlace, OfAStretchCountsTheMarkersBetweenRecords) {
  const ArrayLayout whole{.offset = 100, .width = 4, .per_record = 10, .first = 0, .count = 35};
  EXPECT_EQ(whole.offset_of(9), 136);
  EXPECT_EQ(whole.offset_of(10), 148);
  const ArrayLayout part = whole.stretch(8, 5);
  EXPECT_EQ(part.offset_of(0), 132);
  EXPECT_EQ(part.offset_of(2), 148);
  EXPECT_EQ(part.together_from(0), 2);
  EXPECT_EQ(part.together_from(2), 3);
}

// 2^31 entries and more: nothing but arithmetic.
TEST(ArrayPlace, LiesBeyondFourGigabytes) {
  const ArrayLayout large{
      .offset = 44, .width = 4, .per_record = 1 << 20, .first = 0, .count = int64_t{3} << 31};
  const int64_t last = large.count - 1;
  EXPECT_EQ(large.offset_of(last), 44 + last * 4 + last / (1 << 20) * 8);
  EXPECT_GT(large.offset_of(last), int64_t{24} << 30);
}

}  // namespace
}  // namespace fld::test
