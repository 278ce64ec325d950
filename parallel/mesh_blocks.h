// What a rank owns of a region set's mesh: one stretch of its elements and one of its nodes.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "layout/step_layout.h"
#include "parallel/array.h"
#include "parallel/collectives.h"
#include "parallel/file_arrays.h"
#include "parallel/requests.h"

namespace parallel {

// An index of the file counted from 0. It wraps like that of the file's other readers: a number that is no
// node or element after that stays none.
inline std::int32_t without_bias(std::int32_t index, std::int32_t bias) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(index) - static_cast<std::uint32_t>(bias));
}

// Fills `to` with node numbers of an array, from its element `first` on, counted from 0: kNoNode where one is
// no node of the mesh, and behind the end of the array.
void read_nodes(FileArrays& files, const layout::FileArray& array, std::int64_t first, std::int32_t bias,
                const layout::SetMesh& mesh, std::span<std::int32_t> to);

// The elements of a list, in its order.
struct ListedElements {
  Array<std::uint8_t> codes;    // the type of each; 0 for one that does not exist or names no shape
  Array<std::int32_t> corners;  // their nodes, element after element, each with as many as its type has;
                                // kNoNode where the file gives no node of the mesh
};

class ElementBlock {
 public:
  // Reads the rank's stretch. Collective.
  ElementBlock(Communicator& ranks, FileArrays& files, const layout::SetMesh& mesh);

  const Partition& partition() const { return partition_; }
  // The nodes of the own elements; kNoNode where the file gives no node of the mesh.
  const Array<std::int32_t>& corners() const { return corners_; }
  // Asks the owners for the elements of a list, which may be another one on each rank. With `is_last` on all
  // ranks the block gives up its memory and cannot be asked again. Collective.
  ListedElements collect(Communicator& ranks, const ListRuns& list, bool is_last);

 private:
  void read_types(FileArrays& files, const layout::SetMesh& mesh);
  void read_corners(FileArrays& files, const layout::SetMesh& mesh, std::int64_t corners_before);
  // Where the own element `e` (from 0) begins in corners_.
  std::int64_t head_of(std::int64_t e) const;
  // Whether the list has the own elements, and corners_ are their nodes as they stand.
  bool is_own_stretch(const ListRuns& list) const;
  void pack(const Parcels<Run>& asked, Parcels<std::uint8_t>& codes, Parcels<std::int32_t>& corners) const;

  Partition partition_;
  Stretch own_;
  Array<std::uint8_t> codes_;
  // Where every kStride-th own element begins in the file's connectivity, from the block's first one on.
  static constexpr std::int64_t kStride = 64;
  std::vector<std::int64_t> heads_;
  std::int64_t length_ = 0;  // of the connectivity that the own elements take
  std::int64_t nodes_ = 0;   // that they have: more than that where some take none
  std::int64_t reach_ = 0;   // one behind the last entry that one of them uses
  Array<std::int32_t> corners_;
};

// The materials of a region set's elements.
class MaterialBlock {
 public:
  // Reads the rank's stretch and brings the numbers to positive ones. Collective.
  MaterialBlock(Communicator& ranks, FileArrays& files, const layout::SetMesh& mesh);

  // The materials of the elements of a list; NaN for one that has none. Collective.
  Array<float> collect(Communicator& ranks, const ListRuns& list) const;
  // How many elements have a material.
  std::int64_t count() const { return partition_.elements(); }

 private:
  Partition partition_;
  Stretch own_;
  Array<std::int32_t> numbers_;
};

}  // namespace parallel
