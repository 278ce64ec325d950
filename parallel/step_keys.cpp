#include "parallel/step_keys.h"

#include "layout/bytes.h"

namespace parallel {

using layout::ByteWriter;

std::string mesh_key(const layout::SetMesh& mesh, const layout::PartLists& part, ShareNumber share) {
  ByteWriter key;
  key.put(part.kind);
  key.put(part.set);
  key.put(share);
  key.put(mesh.node_count);
  if (part.kind == layout::PartKind::surface) {
    key.put(part.bias);
    key.put(part.face_types);
    key.put(part.face_nodes);
  } else {
    key.put(part.bias);
    key.put(part.elements);
    key.put(mesh.element_bias);
    key.put(mesh.types);
    key.put(mesh.conn);
  }
  return key.take();
}

std::string motion_key(const layout::SetMesh& mesh) {
  ByteWriter key;
  key.put(mesh.node_count);
  key.put(mesh.element_bias);
  key.put(mesh.list_bias);
  key.put(mesh.types);
  key.put(mesh.conn);
  for (const layout::MovingVolumes& moving : mesh.motion)
    key.put_list(moving.lists, [&](const layout::FileArray& list) { key.put(list); });
  return key.take();
}

std::string points_key(const layout::SetMesh& mesh, const std::string& of_mesh) {
  ByteWriter key;
  key.put_text(of_mesh);
  key.put(mesh.axes);
  key.put(mesh.is_cylindrical);
  key.put(mesh.motion_file);
  if (!mesh.motion.empty()) key.put_text(motion_key(mesh));
  return key.take();
}

std::string values_key(const layout::SetMesh& mesh, const layout::PartLists& part,
                       const layout::VariableValues& variable, const std::string& of_mesh) {
  ByteWriter key;
  key.put_text(of_mesh);
  if (variable.is_material) {
    key.put(mesh.materials);
    key.put(part.face_links);
  } else {
    const layout::SetValues& values = variable.sets[static_cast<std::size_t>(part.set)];
    key.put(values.components);
    key.put(values.undefined_above);
  }
  return key.take();
}

}  // namespace parallel
