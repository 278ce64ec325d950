// The mesh of a region set as plain lists, and its sections. Node and element numbers are zero-based; the
// writer adds the file's index base.
//
// Corner order: tetrahedron 0-1-2-3 with (p1-p0)x(p2-p0).(p3-p0) > 0; pyramid with base 0-1-2-3, which turns
// counter-clockwise seen from the apex 4; prism with triangles 0-1-2 and, above it, 3-4-5; hexahedron with
// quadrilaterals 0-1-2-3 and, above it, 4-5-6-7. Faces turn counter-clockwise seen from outside the element.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "testkit/section.h"

namespace testkit {

// Codes of elements ...
inline constexpr std::int32_t kTriangle = 23;
inline constexpr std::int32_t kQuadrilateral = 24;
inline constexpr std::int32_t kTetrahedron = 34;
inline constexpr std::int32_t kPyramid = 35;
inline constexpr std::int32_t kPrism = 36;
inline constexpr std::int32_t kHexahedron = 38;
// ... and of the faces of surfaces.
inline constexpr std::int32_t kLineFace = 122;
inline constexpr std::int32_t kTriangleFace = 133;
inline constexpr std::int32_t kQuadrilateralFace = 134;

// Corners of an element or face; 0 for an unknown code.
int corner_count(std::int32_t code);

struct Nodes {
  Reals x, y, z;
  std::array<Precision, 3> precision{Precision::kSingle, Precision::kSingle, Precision::kSingle};

  // Appends a node and returns its number. For coordinates that are lists.
  std::int32_t add(double node_x, double node_y, double node_z);
  std::int64_t size() const { return x.size(); }
};

struct Elements {
  Ints type{};
  Ints conn{};  // the corners of all elements, element by element

  // Appends an element and returns its number. For lists.
  std::int32_t add(std::int32_t code, const std::vector<std::int32_t>& corners);
  std::int64_t size() const { return type.size(); }
};

struct Surface {
  std::string name{};
  Ints type{};
  Ints link{};  // the element that each face belongs to, -1 for none
  Ints node{};  // the corners of all faces, face by face

  void add(std::int32_t code, const std::vector<std::int32_t>& corners, std::int32_t element = -1);
  // Appends all faces of another surface.
  void add(const Surface& other);
  std::int64_t size() const { return type.size(); }
};

struct Volume {
  std::string name{};
  Ints elements{};
};

struct Mesh {
  std::optional<std::int32_t>
      coordinate_system;  // 0 Cartesian; 1 cylindrical, x = radius, y = angle in radians
  std::vector<Surface> surfaces;
  std::vector<Volume> volumes;
  Elements elements;
  Ints materials;  // per element; no section is written if empty
  Nodes nodes;

  Surface& surface(std::string_view name);
  Volume& volume(std::string_view name);
};

// The two forms of the region sections: region by region ("LS_SurfaceGeometry") or field by field for all
// regions ("LS_SurfaceGeometryArray").
enum class RegionForm { kPerRegion, kArray };

// The layout of the mesh in the file.
struct Layout {
  RegionForm surface_form = RegionForm::kPerRegion;
  RegionForm volume_form = RegionForm::kPerRegion;
  std::size_t name_length = 0;         // of the regions' names; 0: as long as the longest
  std::int32_t conn_length_width = 8;  // bytes of the connectivity's length, 4 or 8
};

// The mesh's sections: coordinate system if there is one, surfaces, volumes, elements, materials, nodes.
// Empty lists of surfaces and volumes are written too.
std::vector<Section> mesh_sections(const Mesh& mesh, const Layout& layout = {});

// The sections and the numbers of their blocks. "LS_CoordinateSystem": 0 value.
Section coordinate_system_section(std::int32_t coordinate_system);
// "LS_SurfaceGeometry": 0 region count, 1 name length; then six per region, from 2 on: name, face count,
// types, links, node count, nodes. "LS_SurfaceGeometryArray": the same eight blocks once.
Section surfaces_section(const std::vector<Surface>& surfaces, RegionForm form = RegionForm::kPerRegion,
                         std::size_t name_length = 0);
// "LS_VolumeGeometry": 0 region count, 1 name length; then three per region, from 2 on: name, element
// count, elements. "LS_VolumeGeometryArray": the same five blocks once.
Section volumes_section(const std::vector<Volume>& volumes, RegionForm form = RegionForm::kPerRegion,
                        std::size_t name_length = 0);
// "LS_Elements": 0 element count, 1 types, 2 connectivity's length, 3 connectivity.
Section elements_section(const Elements& elements, std::int32_t conn_length_width = 8);
// "LS_MatOfElements": 0 element count, 1 material numbers.
Section materials_section(const Ints& materials);
// "LS_Nodes": 0 node count, 1 x, 2 y, 3 z.
Section nodes_section(const Nodes& nodes);

}  // namespace testkit
