#include "parallel/mesh_blocks.h"

#include <algorithm>
#include <limits>

#include "format/element_codes.h"
#include "parallel/node_set.h"

namespace parallel {
namespace {

constexpr std::int64_t kMaterials = 10000;  // material numbers are 0 to 9999

// Entries of the connectivity that an element takes. Flat elements take none: they are read where the next
// element begins.
constexpr int entries_of(int code) {
  return code >= fld::kTetrahedron ? fld::nodes_of_element(code) : 0;
}

}  // namespace

void read_nodes(FileArrays& files, const layout::FileArray& array, std::int64_t first, std::int32_t bias,
                const layout::SetMesh& mesh, std::span<std::int32_t> to) {
  const auto wanted = static_cast<std::int64_t>(to.size());
  const auto nodes = static_cast<std::uint32_t>(std::max(mesh.node_count, 0));
  std::int32_t* next = to.data();
  files.read<std::int32_t>(array, first, std::clamp<std::int64_t>(array.count() - first, 0, wanted),
                           [&](const std::int32_t* from, std::int64_t count) {
                             for (std::int64_t i = 0; i < count; ++i) {
                               const std::int32_t node = without_bias(from[i], bias);
                               *next++ = static_cast<std::uint32_t>(node) < nodes ? node : kNoNode;
                             }
                           });
  std::fill(next, to.data() + wanted, kNoNode);
}

ElementBlock::ElementBlock(Communicator& ranks, FileArrays& files, const layout::SetMesh& mesh)
    : partition_(mesh.element_count(), ranks.size()), own_(partition_.of(ranks.rank())) {
  together(ranks, [&] { read_types(files, mesh); });
  const std::int64_t before = sum(ranks, length_).before;
  together(ranks, [&] { read_corners(files, mesh, before); });
}

void ElementBlock::read_types(FileArrays& files, const layout::SetMesh& mesh) {
  codes_ = Array<std::uint8_t>(own_.size());
  heads_.reserve(static_cast<std::size_t>(own_.size() / kStride + 1));
  std::int64_t e = 0;
  files.read<std::int32_t>(mesh.types, own_.first, own_.size(),
                           [&](const std::int32_t* types, std::int64_t count) {
                             for (std::int64_t i = 0; i < count; ++i, ++e) {
                               const int nodes = fld::nodes_of_element(types[i]);
                               if (e % kStride == 0) heads_.push_back(length_);
                               codes_[e] = nodes > 0 ? static_cast<std::uint8_t>(types[i]) : std::uint8_t{0};
                               reach_ = std::max(reach_, length_ + nodes);
                               length_ += entries_of(codes_[e]);
                               nodes_ += nodes;
                             }
                           });
}

void ElementBlock::read_corners(FileArrays& files, const layout::SetMesh& mesh, std::int64_t corners_before) {
  corners_ = Array<std::int32_t>(reach_);
  read_nodes(files, mesh.conn, corners_before, mesh.element_bias, mesh, corners_.span());
}

std::int64_t ElementBlock::head_of(std::int64_t e) const {
  std::int64_t head = heads_[static_cast<std::size_t>(e / kStride)];
  for (std::int64_t i = e / kStride * kStride; i < e; ++i) head += entries_of(codes_[i]);
  return head;
}

bool ElementBlock::is_own_stretch(const ListRuns& list) const {
  if (nodes_ != length_) return false;
  if (list.runs().empty()) return own_.size() == 0;
  const ListRun& only = list.runs().front();
  return list.runs().size() == 1 && only.exists && only.run.first == own_.first &&
         only.run.count == own_.size();
}

// What the ranks asked for, in the order in which they did.
void ElementBlock::pack(const Parcels<Run>& asked, Parcels<std::uint8_t>& codes,
                        Parcels<std::int32_t>& corners) const {
  std::int64_t all_codes = 0;
  std::int64_t all_corners = 0;
  std::int64_t i = 0;
  for (const std::int64_t runs : asked.counts) {
    std::int64_t elements = 0;
    std::int64_t nodes = 0;
    for (const std::int64_t end = i + runs; i < end; ++i) {
      const Run run = asked.values[i];
      elements += run.count;
      const std::uint8_t* const code = codes_.data() + (run.first - own_.first);
      for (std::int32_t k = 0; k < run.count; ++k) nodes += fld::nodes_of_element(code[k]);
    }
    codes.counts.push_back(elements);
    corners.counts.push_back(nodes);
    all_codes += elements;
    all_corners += nodes;
  }
  codes.values = Array<std::uint8_t>(all_codes);
  corners.values = Array<std::int32_t>(all_corners);
  std::uint8_t* to_code = codes.values.data();
  std::int32_t* to_corner = corners.values.data();
  for (const Run run : asked.values.span()) {
    const std::int64_t first = run.first - own_.first;
    to_code = std::copy_n(codes_.data() + first, run.count, to_code);
    std::int64_t head = head_of(first);
    for (std::int64_t e = first; e < first + run.count; ++e) {
      const int nodes = fld::nodes_of_element(codes_[e]);
      for (int k = 0; k < nodes; ++k) to_corner[k] = corners_[head + k];
      to_corner += nodes;
      head += entries_of(codes_[e]);
    }
  }
}

ListedElements ElementBlock::collect(Communicator& ranks, const ListRuns& list, bool is_last) {
  ListedElements listed;
  // The whole mesh, and volumes that are all of it: what a rank needs is what it has.
  if (is_last && !any(ranks, !is_own_stretch(list))) {
    listed.codes = std::move(codes_);
    listed.corners = std::move(corners_);
    return listed;
  }
  const ListRequest request(ranks, partition_, list);
  Parcels<std::uint8_t> codes;
  Parcels<std::int32_t> corners;
  together(ranks, [&] { pack(request.asked(), codes, corners); });
  if (is_last) {
    codes_ = {};
    corners_ = {};
  }
  listed.codes = request.answer(ranks, std::move(codes), 1, std::uint8_t{0});
  Array<std::uint8_t> widths;
  together(ranks, [&] {
    widths = Array<std::uint8_t>(listed.codes.size());
    for (std::int64_t k = 0; k < widths.size(); ++k)
      widths[k] = static_cast<std::uint8_t>(fld::nodes_of_element(listed.codes[k]));
  });
  listed.corners = request.answer(ranks, std::move(corners), widths);
  return listed;
}

MaterialBlock::MaterialBlock(Communicator& ranks, FileArrays& files, const layout::SetMesh& mesh)
    : partition_(mesh.materials.exists() ? mesh.materials.count() : 0, ranks.size()),
      own_(partition_.of(ranks.rank())) {
  std::int64_t least = std::numeric_limits<std::int64_t>::max();
  std::int64_t most = std::numeric_limits<std::int64_t>::min() + 1;
  together(ranks, [&] {
    numbers_ = Array<std::int32_t>(own_.size());
    std::int32_t* to = numbers_.data();
    files.read<std::int32_t>(mesh.materials, own_.first, own_.size(),
                             [&](const std::int32_t* from, std::int64_t count) {
                               for (std::int64_t i = 0; i < count; ++i) {
                                 least = std::min<std::int64_t>(least, from[i]);
                                 most = std::max<std::int64_t>(most, from[i]);
                               }
                               to = std::copy_n(from, count, to);
                             });
  });
  least = smallest(ranks, least);
  most = largest(ranks, most);
  const std::int64_t shift = least < 0 ? 1 - least : 0;
  if (partition_.elements() > 0 && most + shift >= kMaterials)
    throw RankError("a material number is out of range");
  for (std::int32_t& number : numbers_.span()) number = static_cast<std::int32_t>(number + shift);
}

Array<float> MaterialBlock::collect(Communicator& ranks, const ListRuns& list) const {
  const ListRequest request(ranks, partition_, list);
  Parcels<float> sent;
  together(ranks, [&] {
    std::int64_t total = 0;
    for (int r = 0; r < ranks.size(); ++r) {
      sent.counts.push_back(request.asked_of(r));
      total += sent.counts.back();
    }
    sent.values = Array<float>(total);
    float* to = sent.values.data();
    for (const Run run : request.asked().values.span()) {
      for (std::int64_t e = run.first - own_.first; e < run.first - own_.first + run.count; ++e)
        *to++ = static_cast<float>(numbers_[e]);
    }
  });
  return request.answer(ranks, std::move(sent), 1, std::numeric_limits<float>::quiet_NaN());
}

}  // namespace parallel
