#include "tests/vtkhdf/hdf_collection.h"

#include <array>
#include <stdexcept>

namespace vtkhdf_test {
namespace {

using vtkhdf::Handle;

void check(herr_t result) {
  if (result < 0) throw std::runtime_error("cannot read the file");
}

std::string text_attribute(hid_t object, const char* name) {
  const Handle attribute(H5Aopen(object, name, H5P_DEFAULT), H5Aclose);
  const Handle type(H5Aget_type(attribute.id()), H5Tclose);
  std::string text(H5Tget_size(type.id()), '\0');
  check(H5Aread(attribute.id(), type.id(), text.data()));
  return text;
}

std::int64_t attribute(hid_t object, const char* name) {
  const Handle found(H5Aopen(object, name, H5P_DEFAULT), H5Aclose);
  std::int64_t value = 0;
  check(H5Aread(found.id(), H5T_NATIVE_INT64, &value));
  return value;
}

}  // namespace

Collection::Collection(const std::filesystem::path& file)
    : file_(H5Fopen(file.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT), H5Fclose) {
  const Handle root(H5Gopen2(file_.id(), "VTKHDF", H5P_DEFAULT), H5Gclose);
  if (text_attribute(root.id(), "Type") != "PartitionedDataSetCollection")
    throw std::runtime_error("not a collection");
}

Handle Collection::open(const std::string& block, const std::string& array) const {
  return {H5Dopen2(file_.id(), ("VTKHDF/" + block + "/" + array).c_str(), H5P_DEFAULT), H5Dclose};
}

template <typename Value>
std::vector<Value> Collection::read(const std::string& block, const std::string& array, hid_t type,
                                    std::int64_t first, std::int64_t rows) const {
  const Handle found = open(block, array);
  const Handle space(H5Dget_space(found.id()), H5Sclose);
  std::array<hsize_t, 2> shape = {0, 1};
  const int dimensions = H5Sget_simple_extent_dims(space.id(), shape.data(), nullptr);
  const std::array<hsize_t, 2> start = {static_cast<hsize_t>(first), 0};
  const std::array<hsize_t, 2> count = {static_cast<hsize_t>(rows), shape[1]};
  if (start[0] + count[0] > shape[0]) throw std::out_of_range(block + "/" + array);
  std::vector<Value> values(count[0] * count[1]);
  check(H5Sselect_hyperslab(space.id(), H5S_SELECT_SET, start.data(), nullptr, count.data(), nullptr));
  const Handle memory(H5Screate_simple(dimensions, count.data(), nullptr), H5Sclose);
  if (rows > 0) check(H5Dread(found.id(), type, memory.id(), space.id(), H5P_DEFAULT, values.data()));
  return values;
}

std::int64_t Collection::entry(const std::string& block, const std::string& array, std::int64_t at) const {
  return read<std::int64_t>(block, array, H5T_NATIVE_INT64, at, 1).front();
}

std::int64_t Collection::steps(const std::string& block) const {
  const Handle group(H5Gopen2(file_.id(), ("VTKHDF/" + block + "/Steps").c_str(), H5P_DEFAULT), H5Gclose);
  return attribute(group.id(), "NSteps");
}

double Collection::time(const std::string& block, std::int64_t step) const {
  return read<double>(block, "Steps/Values", H5T_NATIVE_DOUBLE, step, 1).front();
}

// Of points, cells and corners.
std::vector<std::int64_t> Collection::counts(const std::string& block, std::int64_t step) const {
  const std::int64_t part = step_entry(block, "PartOffsets", step);
  return {entry(block, "NumberOfPoints", part), entry(block, "NumberOfCells", part),
          entry(block, "NumberOfConnectivityIds", part)};
}

Grid Collection::grid(const std::string& block, std::int64_t step) const {
  if (step_entry(block, "NumberOfParts", step) != 1) throw std::runtime_error("not one part");
  const std::vector<std::int64_t> count = counts(block, step);
  const std::int64_t cells = step_entry(block, "CellOffsets", step);
  // There is one offset more than there are cells, for every part before.
  const std::int64_t offsets = cells + step_entry(block, "PartOffsets", step);
  return {.points = read<float>(block, "Points", H5T_NATIVE_FLOAT, step_entry(block, "PointOffsets", step),
                                count[0]),
          .offsets = read<std::int64_t>(block, "Offsets", H5T_NATIVE_INT64, offsets, count[1] + 1),
          .connectivity = read<std::int64_t>(block, "Connectivity", H5T_NATIVE_INT64,
                                             step_entry(block, "ConnectivityIdOffsets", step), count[2]),
          .types = read<std::uint8_t>(block, "Types", H5T_NATIVE_UINT8, cells, count[1])};
}

std::vector<float> Collection::values(const std::string& block, const std::string& place,
                                      const std::string& name, std::int64_t step) const {
  const std::int64_t first = step_entry(block, place + "Offsets/" + name, step);
  const std::vector<std::int64_t> count = counts(block, step);
  return read<float>(block, place + "/" + name, H5T_NATIVE_FLOAT, first,
                     place == "PointData" ? count[0] : count[1]);
}

std::size_t Collection::rows(const std::string& block, const std::string& array) const {
  const Handle found = open(block, array);
  const Handle space(H5Dget_space(found.id()), H5Sclose);
  std::array<hsize_t, 2> shape = {};
  check(H5Sget_simple_extent_dims(space.id(), shape.data(), nullptr));
  return shape[0];
}

std::size_t Collection::stored_bytes(const std::string& block, const std::string& array) const {
  return H5Dget_storage_size(open(block, array).id());
}

bool Collection::is_double(const std::string& block, const std::string& array) const {
  const Handle found = open(block, array);
  const Handle type(H5Dget_type(found.id()), H5Tclose);
  return H5Tequal(type.id(), H5T_NATIVE_DOUBLE) > 0;
}

std::vector<std::string> Collection::nodes(const std::string& folder) const {
  const Handle group(H5Gopen2(file_.id(), ("VTKHDF/Assembly/" + folder).c_str(), H5P_DEFAULT), H5Gclose);
  H5G_info_t info{};
  check(H5Gget_info(group.id(), &info));
  std::vector<std::string> names;
  for (hsize_t i = 0; i < info.nlinks; ++i) {
    std::array<char, 256> name{};
    H5Lget_name_by_idx(group.id(), ".", H5_INDEX_CRT_ORDER, H5_ITER_INC, i, name.data(), name.size(),
                       H5P_DEFAULT);
    names.emplace_back(name.data());
  }
  return names;
}

std::string Collection::block_of(const std::string& node) const {
  std::array<char, 256> target{};
  check(
      H5Lget_val(file_.id(), ("VTKHDF/Assembly/" + node).c_str(), target.data(), target.size(), H5P_DEFAULT));
  return target.data();
}

}  // namespace vtkhdf_test
