// Each reader of the record layer and the sections by itself; see record_readers.h for the input. All results
// are read in full, so that an array smaller than its count is detected.
#include <algorithm>
#include <array>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "format/ale.h"
#include "format/data_block.h"
#include "format/elements.h"
#include "format/header.h"
#include "format/input_file.h"
#include "format/mat_of_elements.h"
#include "format/nodes.h"
#include "format/quantity.h"
#include "format/quantity_index.h"
#include "format/record.h"
#include "format/surface_geometry.h"
#include "format/volume_geometry.h"
#include "fuzz/byte_source.h"
#include "fuzz/record_readers.h"
#include "fuzz/scratch_directory.h"
#include "fuzz/target.h"
#include "fuzz/trial.h"
#include "support/tracked_allocation.h"

namespace {

using namespace fld;
using Read = void (*)(FILE* stream, int count);

// Keeps the reads from being optimised away.
volatile unsigned long sink = 0;

void look_at(const char* text) {
  sink = sink + std::char_traits<char>::length(text);
}

template <class T>
void look_at(const T* values, long count) {
  sink = sink + std::accumulate(values, values + count, 0UL, [](unsigned long sum, T value) {
           return sum + static_cast<unsigned long>(static_cast<long>(value));
         });
}

void look_at(const VFPA& values, int count) {
  for (int i = 0; i < count; ++i) sink = sink + (vfpa2double(values, i) > 0.0 ? 1 : 0);
}

void look_at(const SurfaceGeometry& surface) {
  look_at(surface.name);
  look_at(surface.faceType, surface.nface);
  look_at(surface.faceLink, surface.nface);
  look_at(surface.faceNode, surface.nfaceNode);
}

void look_at(const VolumeGeometry& volume) {
  look_at(volume.name);
  look_at(volume.elem, volume.nelem);
}

void look_at(const FLDTITLE& title) {
  look_at(title.m_name);
  look_at(title.m_label);
}

template <class Region>
void read_regions(FILE* stream, void (*read)(FILE*, std::vector<smart_ptr<Region>>&)) {
  std::vector<smart_ptr<Region>> regions;
  read(stream, regions);
  for (const auto& region : regions) look_at(*region);
}

void read_header(FILE* stream) {
  int dimension = 3;
  int cycle = 0;
  int bias = 0;
  double time = 0.0;
  float single_marker = 0.0F;
  double double_marker = 0.0;
  FLDV4_I_HeadB(stream, &dimension, &cycle, &time, &single_marker, &double_marker, &bias);
}

void read_identification(FILE* stream) {
  std::array<char, 8> magic = {};
  int version = 0;
  FLD_I_HEAD_IVSN(stream, magic.data(), version);
  sink = sink + (is_fld_magic(magic.data()) ? 1 : 0);
}

void read_title(FILE* stream) {
  const auto title = std::make_unique<char[]>(kTitleLength + 1);
  const int length = FLDV4_I_TITLE(stream, title.get());
  for (const char* key : {"OverlapEnd", "LS_Nodes", ""}) {
    sink = sink + (titlecmp(title.get(), key, length) == 0 ? 1 : 0);
    sink = sink + (title_starts_with(title.get(), key) ? 1 : 0);
  }
}

void read_motion(FILE* stream) {
  ALE motion;
  FLDV4_ALE(stream, motion);
  for (const ALE_REGION& region : motion.regions) {
    for (const std::string& name : region.names) look_at(name.c_str());
    for (const ALE_ACT& action : region.actions) look_at(action.kind);
  }
}

template <class Number>
void read_numbers(FILE* stream, long count, void (*read)(FILE*, long, Number*)) {
  const auto values = std::make_unique<Number[]>(static_cast<std::size_t>(count));
  read(stream, count, values.get());
}

void read_characters(FILE* stream, int count, int room, void (*read)(FILE*, int, char*)) {
  const auto text = std::make_unique<char[]>(static_cast<std::size_t>(room) + 1);
  read(stream, count, text.get());
  look_at(text.get());
}

void read_reals(FILE* stream, int count) {
  VFPA values;
  struct Release {
    VFPA& values;
    ~Release() { cv_mfree(values.data); }
  } release{values};
  FLDV4_I_FPRECaloc_array(stream, count, &values);
  look_at(values, count);
}

// A title record of 32 characters, and the prefix of a quantity.
constexpr char kQuantityTitle[] = "LS_Scalar:0123456789012345678901";

// In the order of RecordReader.
constexpr Read kReaders[] = {
    [](FILE* stream, int) { read_identification(stream); },
    [](FILE* stream, int) { read_title(stream); },
    [](FILE* stream, int) { FLDV4_I_RULE(stream); },
    [](FILE* stream, int) { FLDV4_I_END(stream); },
    [](FILE* stream, int) { FLDV4_I_SKIP(stream); },
    [](FILE* stream, int) { FLDV4_I_SKIP_SUB(stream); },
    [](FILE* stream, int count) { read_numbers<int>(stream, count, FLDV4_I_INTarray); },
    [](FILE* stream, int count) { read_numbers<long>(stream, count, FLDV4_I_INT64array); },
    [](FILE* stream, int) { FLDV4_I_FPREC(stream); },
    read_reals,
    [](FILE* stream, int count) { look_at(read_text(stream, count).c_str()); },
    [](FILE* stream, int count) { look_at(read_field(stream, count).c_str()); },
    [](FILE* stream, int count) { read_characters(stream, count, count, FLDV4_I_CHARarray); },
    [](FILE* stream, int count) { read_characters(stream, count, 80, FLDV4_I_CHARarray80); },
    [](FILE* stream, int count) { read_int(stream, count); },
    [](FILE* stream, int count) { look_at(read_int_array(stream, count, 1).get(), count); },
    [](FILE* stream, int) { read_header(stream); },
    [](FILE* stream, int) {
      int value = 0;
      FLDV4_CoordinateSystem(stream, value);
    },
    [](FILE* stream, int) {
      const auto nodes = FLDV4_Nodes(stream);
      for (const VFPA& axis : {nodes->x, nodes->y, nodes->z}) look_at(axis, nodes->nnode);
    },
    [](FILE* stream, int) {
      const auto elements = FLDV4_Elements(stream);
      look_at(elements->type, elements->nelem);
      look_at(elements->conn, elements->nconn);
    },
    [](FILE* stream, int) {
      const auto materials = FLDV4_MatOfElements(stream);
      look_at(materials->mat, materials->nelem);
    },
    [](FILE* stream, int) { read_regions(stream, FLDV4_SurfaceGeometry); },
    [](FILE* stream, int) { read_regions(stream, FLDV4_SurfaceGeometryArray); },
    [](FILE* stream, int) { read_regions(stream, FLDV4_VolumeGeometry); },
    [](FILE* stream, int) { read_regions(stream, FLDV4_VolumeGeometryArray); },
    [](FILE* stream, int) { read_motion(stream); },
    [](FILE* stream, int) {
      const auto scalar = FLDV4_Scalar(stream);
      look_at(scalar->text);
      look_at(scalar->values, scalar->n);
    },
    [](FILE* stream, int) {
      const auto vector = FLDV4_Vector(stream);
      look_at(vector->text);
      for (const VFPA& component : vector->components) look_at(component, vector->n);
    },
    [](FILE* stream, int) {
      std::vector<FLDTITLE_Scalar> titles;
      FLDV4_Scalar_SEEK(stream, 0, kQuantityTitle, titles);
      look_at(titles.front());
    },
    [](FILE* stream, int count) {
      std::vector<FLDTITLE_Vector> titles;
      FLDV4_Vector_SEEK(stream, 0, kQuantityTitle, titles, count);
      look_at(titles.front());
    },
};
static_assert(std::size(kReaders) == static_cast<std::size_t>(fuzz::RecordReader::count_of_readers));

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::ScratchDirectory scratch;
  fuzz::ByteSource input(fuzz::as_text(data, size));
  const Read read = kReaders[input.byte() % std::size(kReaders)];
  const int count = input.word();
  const auto path = scratch.write("records.bin", input.rest());
  const fuzz::Trial trial(size);
  set_memory();
  fuzz::ends_as_documented([&] {
    const InputFile file(path.string(), count % 2 == 0 ? Access::walk : Access::bulk);
    read(file.stream(), count);
  });
  free_memory();
  return 0;
}
