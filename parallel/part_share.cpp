#include "parallel/part_share.h"

#include <algorithm>
#include <limits>

#include "format/element_codes.h"

namespace parallel {
namespace {

bool is_flat(std::uint8_t code) {
  return code == fld::kTriangle || code == fld::kQuadrilateral;
}

// The entries of an element list, or of the links of faces, in the stretch.
ListRuns read_list(FileArrays& files, const layout::FileArray& list, Stretch stretch, std::int32_t bias,
                   bool are_links, std::int64_t elements) {
  ListRuns runs(elements);
  files.read<std::int32_t>(list, stretch.first, stretch.size(),
                           [&](const std::int32_t* from, std::int64_t count) {
                             for (std::int64_t i = 0; i < count; ++i)
                               runs.add(are_links && from[i] == -1 ? -1 : without_bias(from[i], bias));
                           });
  return runs;
}

ListRuns whole_list(Stretch stretch, std::int64_t elements) {
  ListRuns runs(elements);
  const std::int64_t last = std::min(stretch.last, elements);
  if (stretch.first < last) {
    runs.add(Run{static_cast<std::int32_t>(stretch.first), static_cast<std::int32_t>(last - stretch.first)});
  }
  for (std::int64_t i = std::max(stretch.first, last); i < stretch.last; ++i) runs.add(-1);
  return runs;
}

// The faces of a share of a surface: what the file says, lines and unknown codes included.
struct Faces {
  Array<std::uint8_t> codes;
  Array<std::int32_t> corners;
};

Faces read_faces(Communicator& ranks, FileArrays& files, const layout::SetMesh& mesh,
                 const layout::PartLists& part, Stretch stretch) {
  Faces faces;
  std::int64_t before = 0;  // corners of the faces before the stretch
  std::int64_t own = 0;
  together(ranks, [&] {
    faces.codes = Array<std::uint8_t>(stretch.size());
    // In a process of its own nobody else counts the faces before a piece.
    const std::int64_t from = ranks.size() > 1 ? stretch.first : 0;
    std::int64_t f = from;
    files.read<std::int32_t>(part.face_types, from, stretch.last - from,
                             [&](const std::int32_t* types, std::int64_t count) {
                               for (std::int64_t i = 0; i < count; ++i, ++f) {
                                 const int nodes = fld::nodes_of_face(types[i]);
                                 if (f < stretch.first) {
                                   before += nodes;
                                   continue;
                                 }
                                 own += nodes;
                                 faces.codes[f - stretch.first] =
                                     nodes > 0 ? static_cast<std::uint8_t>(types[i]) : std::uint8_t{0};
                               }
                             });
  });
  if (ranks.size() > 1) before = sum(ranks, own).before;
  together(ranks, [&] {
    faces.corners = Array<std::int32_t>(own);
    read_nodes(files, part.face_nodes, before, part.bias, mesh, faces.corners.span());
  });
  return faces;
}

// Takes out the entries that are no cells, and says in `entry_codes` which there were if that is of any
// interest.
void keep_cells(Array<std::uint8_t>& codes, Array<std::int32_t>& corners, bool are_faces,
                Array<std::uint8_t>& entry_codes) {
  const auto is_cell = [are_faces](std::uint8_t code) {
    return code != 0 && !(are_faces && code == fld::kLineFace);
  };
  const auto nodes_of = [are_faces](std::uint8_t code) {
    return are_faces ? fld::nodes_of_face(code) : fld::nodes_of_element(code);
  };
  std::int64_t cells = 0;
  std::int64_t cell_corners = 0;
  bool any_flat = false;
  for (const std::uint8_t code : codes.span()) {
    any_flat = any_flat || is_flat(code);
    if (!is_cell(code)) continue;
    ++cells;
    cell_corners += nodes_of(code);
  }
  if (cells == codes.size() && !any_flat) return;
  Array<std::uint8_t> cell_codes(cells);
  Array<std::int32_t> kept(cell_corners);
  std::uint8_t* to_code = cell_codes.data();
  std::int32_t* to_corner = kept.data();
  const std::int32_t* from = corners.data();
  for (std::uint8_t& code : codes.span()) {
    const int nodes = nodes_of(code);
    if (is_cell(code)) {
      *to_code++ = code;
      to_corner = std::copy_n(from, nodes, to_corner);
    } else {
      code = 0;
    }
    from += nodes;
  }
  entry_codes = std::move(codes);
  codes = std::move(cell_codes);
  corners = std::move(kept);
}

// A corner that the file does not give becomes the part's first node.
void give_every_corner_a_node(Communicator& ranks, const layout::SetMesh& mesh, bool is_whole,
                              std::span<std::int32_t> corners) {
  bool lacks_nodes = false;
  together(ranks, [&] { lacks_nodes = std::find(corners.begin(), corners.end(), kNoNode) != corners.end(); });
  if (!any(ranks, lacks_nodes)) return;
  constexpr std::int64_t kNone = std::numeric_limits<std::int64_t>::max();
  std::int64_t first = kNone;
  for (const std::int32_t node : corners) {
    if (node != kNoNode) first = std::min<std::int64_t>(first, node);
  }
  first = smallest(ranks, first);
  if (is_whole) first = mesh.node_count > 0 ? 0 : kNone;
  if (first == kNone) throw RankError("its cells name no node of the mesh");
  std::replace(corners.begin(), corners.end(), kNoNode, static_cast<std::int32_t>(first));
}

// At most a byte per entry.
bool takes_little_room(const ListRuns& list) {
  return static_cast<std::int64_t>(list.runs().size() * sizeof(ListRun)) <= list.count();
}

}  // namespace

Stretch entries_of_share(const layout::SetMesh& mesh, const layout::PartLists& part, ShareNumber share) {
  std::int64_t entries = mesh.element_count();
  if (part.kind == layout::PartKind::surface) entries = part.face_types.count();
  if (part.kind == layout::PartKind::volume) entries = part.elements.count();
  return Partition(entries, share.count).of(share.index);
}

PartShare make_share(Communicator& ranks, FileArrays& files, const layout::SetMesh& mesh,
                     const layout::PartLists& part, ShareNumber share, ElementBlock* elements, bool is_last) {
  const Stretch stretch = entries_of_share(mesh, part, share);
  const bool is_surface = part.kind == layout::PartKind::surface;
  const bool is_whole = part.kind == layout::PartKind::whole;
  PartShare made;
  if (is_surface) {
    Faces faces = read_faces(ranks, files, mesh, part, stretch);
    made.cells.codes = std::move(faces.codes);
    made.cells.corners = std::move(faces.corners);
  } else {
    ListRuns list(mesh.element_count());
    together(ranks, [&] {
      list = is_whole ? whole_list(stretch, mesh.element_count())
                      : read_list(files, part.elements, stretch, part.bias, false, mesh.element_count());
    });
    ListedElements listed = elements->collect(ranks, list, is_last);
    made.cells.codes = std::move(listed.codes);
    made.cells.corners = std::move(listed.corners);
    if (!is_whole && takes_little_room(list)) made.elements = std::move(list);
  }
  together(ranks, [&] { keep_cells(made.cells.codes, made.cells.corners, is_surface, made.entry_codes); });
  give_every_corner_a_node(ranks, mesh, is_whole, made.cells.corners.span());
  const bool has_neighbours = ranks.size() > 1 && share.ghost_layers > 0;
  if (has_neighbours) {
    made.ghosts = GhostCells(ranks, Partition(mesh.node_count, ranks.size()), share.ghost_layers,
                             made.cells.codes, made.cells.corners);
    made.cells.ghosts = made.ghosts.count();
  }
  together(ranks, [&] {
    const std::span<std::int32_t> corners = made.cells.corners.span();
    made.nodes = is_whole && share.count == 1 ? NodeSet::whole(mesh.node_count) : nodes_of(corners);
    number_corners(made.nodes, corners);
    if (has_neighbours) made.cells.ghost_nodes = made.ghosts.ghost_nodes(made.nodes);
  });
  return made;
}

Array<float> share_materials(Communicator& ranks, FileArrays& files, const layout::SetMesh& mesh,
                             const layout::PartLists& part, ShareNumber share,
                             const Array<std::uint8_t>& entry_codes, const std::optional<ListRuns>& elements,
                             const MaterialBlock& materials) {
  const Stretch stretch = entries_of_share(mesh, part, share);
  ListRuns list(materials.count());
  together(ranks, [&] {
    const bool is_surface = part.kind == layout::PartKind::surface;
    if (part.kind == layout::PartKind::whole) {
      list = whole_list(stretch, materials.count());
    } else if (elements && materials.count() == mesh.element_count()) {
      list = *elements;
    } else {
      list = read_list(files, is_surface ? part.face_links : part.elements, stretch, part.bias, is_surface,
                       materials.count());
    }
  });
  Array<float> values = materials.collect(ranks, list);
  Array<float> of_cells;
  together(ranks, [&] {
    if (entry_codes.size() == 0) {
      of_cells = std::move(values);
      return;
    }
    const auto is_cell = [](std::uint8_t code) { return code != 0; };
    of_cells = Array<float>(std::count_if(entry_codes.span().begin(), entry_codes.span().end(), is_cell));
    float* to = of_cells.data();
    for (std::int64_t i = 0; i < entry_codes.size(); ++i) {
      // Flat elements have no material of their own.
      if (is_cell(entry_codes[i]))
        *to++ = is_flat(entry_codes[i]) ? std::numeric_limits<float>::quiet_NaN() : values[i];
    }
  });
  return of_cells;
}

}  // namespace parallel
