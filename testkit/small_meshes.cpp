#include "testkit/small_meshes.h"

#include "testkit/element_faces.h"

namespace testkit {
namespace {

Surface outer_surface(const Mesh& mesh, const char* name) {
  Surface surface;
  surface.name = name;
  for (const Face& face : outer_faces(mesh.elements)) add_face(surface, face);
  return surface;
}

}  // namespace

Mesh one_tetrahedron() {
  Mesh mesh;
  mesh.nodes.x = {0.0, 1.0, 0.0, 0.0};
  mesh.nodes.y = {0.0, 0.0, 1.0, 0.0};
  mesh.nodes.z = {0.0, 0.0, 0.0, 1.0};
  mesh.elements.add(kTetrahedron, {0, 1, 2, 3});
  mesh.materials = {1};
  mesh.surfaces = {outer_surface(mesh, "wall")};
  mesh.volumes = {{.name = "fluid", .elements = {0}}};
  return mesh;
}

Mesh one_of_each() {
  Mesh mesh;
  mesh.nodes.x = {0.0, 1.0, 1.0, 0.0, 0.0, 1.0, 1.0, 0.0, 2.0, 2.0, 0.5};
  mesh.nodes.y = {0.0, 0.0, 1.0, 1.0, 0.0, 0.0, 1.0, 1.0, 0.5, 0.5, 0.5};
  mesh.nodes.z = {0.0, 0.0, 0.0, 0.0, 1.0, 1.0, 1.0, 1.0, 0.0, 1.0, 2.0};
  mesh.elements.add(kHexahedron, {0, 1, 2, 3, 4, 5, 6, 7});
  mesh.elements.add(kPrism, {1, 8, 2, 5, 9, 6});
  mesh.elements.add(kPyramid, {4, 5, 6, 7, 10});
  mesh.elements.add(kTetrahedron, {5, 9, 6, 10});
  mesh.materials = {1, 1, 2, 2};
  Surface between{.name = "@between"};
  between.add(kQuadrilateralFace, {1, 2, 6, 5});
  mesh.surfaces = {outer_surface(mesh, "outside"), between};
  mesh.volumes = {{.name = "lower", .elements = {0, 1}}, {.name = "upper", .elements = {2, 3}}};
  return mesh;
}

File file_of(const Mesh& mesh, const Layout& layout) {
  File file;
  file.add_region_set().add(mesh_sections(mesh, layout));
  return file;
}

}  // namespace testkit
