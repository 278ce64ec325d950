#include <array>
#include <cgnslib.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/peer_files.h"

namespace bench {

namespace {
void check(int result) {
  if (result != CG_OK) throw std::runtime_error(std::string("CGNS: ") + cg_get_error());
}
}  // namespace

void write_cgns(const PeerMesh& mesh, const std::filesystem::path& path) {
  constexpr std::size_t kCorners = 8;
  int file = 0;
  int base = 0;
  int zone = 0;
  int section = 0;
  int solution = 0;
  int number = 0;
  check(cg_set_file_type(CG_FILE_HDF5));
  check(cg_open(path.c_str(), CG_MODE_WRITE, &file));
  check(cg_base_write(file, "Base", 3, 3, &base));
  const std::array<cgsize_t, 3> size = {static_cast<cgsize_t>(mesh.nodes),
                                        static_cast<cgsize_t>(mesh.elements), 0};
  check(cg_zone_write(file, base, "Zone", size.data(), CGNS_ENUMV(Unstructured), &zone));
  const char* const axes[] = {"CoordinateX", "CoordinateY", "CoordinateZ"};
  for (int axis = 0; axis < 3; ++axis) {
    check(cg_coord_write(file, base, zone, CGNS_ENUMV(RealSingle), axes[axis], mesh.axes[axis], &number));
  }
  const std::vector<cgsize_t> corners(mesh.corners, mesh.corners + mesh.elements * kCorners);
  check(cg_section_write(file, base, zone, "Hexahedra", CGNS_ENUMV(HEXA_8), 1, size[1], 0, corners.data(),
                         &section));
  check(cg_sol_write(file, base, zone, "Solution", CGNS_ENUMV(Vertex), &solution));
  check(
      cg_field_write(file, base, zone, solution, CGNS_ENUMV(RealSingle), kPeerScalar, mesh.scalar, &number));
  check(cg_close(file));
}

}  // namespace bench
