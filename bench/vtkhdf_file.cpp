#include <cstdint>
#include <hdf5.h>
#include <stdexcept>
#include <vector>

#include "bench/peer_files.h"

namespace bench {

namespace {

hid_t good(hid_t result) {
  if (result < 0) throw std::runtime_error("cannot write a VTKHDF file");
  return result;
}

void write_array(hid_t group, const char* name, hid_t type, const std::vector<hsize_t>& shape,
                 const void* data) {
  const hid_t space = good(H5Screate_simple(static_cast<int>(shape.size()), shape.data(), nullptr));
  const hid_t set = good(H5Dcreate2(group, name, type, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
  good(H5Dwrite(set, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, data));
  H5Dclose(set);
  H5Sclose(space);
}

void write_attribute(hid_t group, const char* name, hid_t type, hid_t space, const void* data) {
  const hid_t attribute = good(H5Acreate2(group, name, type, space, H5P_DEFAULT, H5P_DEFAULT));
  good(H5Awrite(attribute, type, data));
  H5Aclose(attribute);
  H5Sclose(space);
}

void write_kind(hid_t group) {
  const std::int64_t version[] = {1, 0};
  const hsize_t two = 2;
  write_attribute(group, "Version", H5T_NATIVE_INT64, good(H5Screate_simple(1, &two, nullptr)), version);
  constexpr char kKind[] = "UnstructuredGrid";
  const hid_t text = good(H5Tcopy(H5T_C_S1));
  H5Tset_size(text, sizeof kKind - 1);
  H5Tset_strpad(text, H5T_STR_NULLPAD);
  write_attribute(group, "Type", text, good(H5Screate(H5S_SCALAR)), kKind);
  H5Tclose(text);
}

}  // namespace

void write_vtkhdf(const PeerMesh& mesh, const std::filesystem::path& path) {
  constexpr std::size_t kCorners = 8;
  constexpr std::uint8_t kHexahedron = 12;
  const hid_t file = good(H5Fcreate(path.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT));
  const hid_t group = good(H5Gcreate2(file, "VTKHDF", H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
  write_kind(group);
  const auto count = [&](const char* name, std::size_t value) {
    const auto number = static_cast<std::int64_t>(value);
    write_array(group, name, H5T_NATIVE_INT64, {1}, &number);
  };
  count("NumberOfPoints", mesh.nodes);
  count("NumberOfCells", mesh.elements);
  count("NumberOfConnectivityIds", mesh.elements * kCorners);
  std::vector<float> points(mesh.nodes * 3);
  for (std::size_t n = 0; n < mesh.nodes; ++n) {
    for (std::size_t axis = 0; axis < 3; ++axis) points[n * 3 + axis] = mesh.axes[axis][n];
  }
  write_array(group, "Points", H5T_NATIVE_FLOAT, {mesh.nodes, 3}, points.data());
  std::vector<std::int64_t> corners(mesh.corners, mesh.corners + mesh.elements * kCorners);
  for (auto& corner : corners) --corner;
  write_array(group, "Connectivity", H5T_NATIVE_INT64, {corners.size()}, corners.data());
  std::vector<std::int64_t> offsets(mesh.elements + 1);
  for (std::size_t e = 0; e < offsets.size(); ++e) offsets[e] = static_cast<std::int64_t>(e * kCorners);
  write_array(group, "Offsets", H5T_NATIVE_INT64, {offsets.size()}, offsets.data());
  const std::vector<std::uint8_t> types(mesh.elements, kHexahedron);
  write_array(group, "Types", H5T_NATIVE_UINT8, {types.size()}, types.data());
  const hid_t values = good(H5Gcreate2(group, "PointData", H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
  write_array(values, kPeerScalar, H5T_NATIVE_FLOAT, {mesh.nodes}, mesh.scalar);
  H5Gclose(values);
  H5Gclose(group);
  good(H5Fclose(file));
}

}  // namespace bench
