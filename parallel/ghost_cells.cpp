#include "parallel/ghost_cells.h"

#include <algorithm>
#include <optional>
#include <type_traits>

#include "format/element_codes.h"
#include "parallel/requests.h"

namespace parallel {
namespace {

// Nodes around which a rank wants the cells of the one that is told so.
struct Wish {
  std::int32_t rank = 0;
  Run nodes;
};

// The ranks whose own cells use each node of a stretch.
class NodeUsers {
 public:
  NodeUsers(Stretch own, const Parcels<Run>& used) : first_(own.first) {
    users_.resize(static_cast<std::size_t>(own.size()), kNobody);
    std::vector<std::pair<std::int64_t, std::int32_t>> more;
    for_each_node(used, [&](std::int32_t rank, std::int64_t node) {
      std::int32_t& user = users_[index_of(node)];
      if (user == kNobody) {
        user = rank;
      } else {
        more.emplace_back(node, rank);
      }
    });
    std::sort(more.begin(), more.end());
    for (std::size_t i = 0; i < more.size(); ++i) {
      std::int32_t& user = users_[index_of(more[i].first)];
      if (i == 0 || more[i].first != more[i - 1].first) {
        groups_.push_back({user});
        user = kFirstGroup - static_cast<std::int32_t>(groups_.size() - 1);
      }
      groups_.back().push_back(more[i].second);
    }
  }

  // What the ranks that use the nodes of `reached` have to be told, in parcels for them.
  Parcels<Wish> wishes(int ranks, const Parcels<Run>& reached) const {
    std::vector<std::vector<Wish>> of_rank(static_cast<std::size_t>(ranks));
    for_each_node(reached, [&](std::int32_t rank, std::int64_t node) {
      const std::int32_t user = users_[index_of(node)];
      if (user >= 0) {
        add(of_rank[static_cast<std::size_t>(user)], user, rank, node);
      } else if (user <= kFirstGroup) {
        for (const std::int32_t each : groups_[static_cast<std::size_t>(kFirstGroup - user)])
          add(of_rank[static_cast<std::size_t>(each)], each, rank, node);
      }
    });
    Parcels<Wish> parcels;
    std::int64_t total = 0;
    for (const auto& wishes : of_rank) {
      parcels.counts.push_back(static_cast<std::int64_t>(wishes.size()));
      total += parcels.counts.back();
    }
    parcels.values = Array<Wish>(total);
    Wish* to = parcels.values.data();
    for (const auto& wishes : of_rank) to = std::copy(wishes.begin(), wishes.end(), to);
    return parcels;
  }

 private:
  static constexpr std::int32_t kNobody = -1;
  static constexpr std::int32_t kFirstGroup = -2;  // and the groups after it below

  std::size_t index_of(std::int64_t node) const { return static_cast<std::size_t>(node - first_); }

  template <typename Visit>
  static void for_each_node(const Parcels<Run>& runs, Visit visit) {
    std::int64_t i = 0;
    for (std::size_t rank = 0; rank < runs.counts.size(); ++rank) {
      for (const std::int64_t end = i + runs.counts[rank]; i < end; ++i) {
        const Run run = runs.values[i];
        for (std::int64_t node = run.first; node < std::int64_t{run.first} + run.count; ++node)
          visit(static_cast<std::int32_t>(rank), node);
      }
    }
  }

  static void add(std::vector<Wish>& wishes, std::int32_t user, std::int32_t rank, std::int64_t node) {
    if (user == rank) return;
    if (!wishes.empty() && wishes.back().rank == rank) {
      Run& last = wishes.back().nodes;
      if (std::int64_t{last.first} + last.count == node) {
        ++last.count;
        return;
      }
    }
    wishes.push_back({rank, {static_cast<std::int32_t>(node), 1}});
  }

  std::int64_t first_;
  // Per node: the rank, if there is one; none; or a group, counted down from kFirstGroup.
  std::vector<std::int32_t> users_;
  std::vector<std::vector<std::int32_t>> groups_;
};

// Which ranks want the cells around a node.
class WishedNodes {
 public:
  explicit WishedNodes(const Array<Wish>& wishes) {
    for (const Wish& wish : wishes.span()) {
      for (std::int32_t i = 0; i < wish.nodes.count; ++i)
        pairs_.emplace_back(wish.nodes.first + i, wish.rank);
    }
    std::sort(pairs_.begin(), pairs_.end());
    if (pairs_.empty()) return;
    first_ = pairs_.front().first;
    is_wished_.resize(static_cast<std::size_t>(pairs_.back().first - first_) + 1);
    for (const auto& [node, rank] : pairs_) is_wished_[static_cast<std::size_t>(node - first_)] = true;
  }

  bool has(std::int32_t node) const {
    const std::int64_t index = std::int64_t{node} - first_;
    return index >= 0 && index < static_cast<std::int64_t>(is_wished_.size()) &&
           is_wished_[static_cast<std::size_t>(index)];
  }
  // Adds those ranks that are not among `ranks` yet.
  void add_ranks(std::int32_t node, std::vector<std::int32_t>& ranks) const {
    for (auto pair = std::lower_bound(pairs_.begin(), pairs_.end(), std::pair(node, std::int32_t{0}));
         pair != pairs_.end() && pair->first == node; ++pair) {
      if (std::find(ranks.begin(), ranks.end(), pair->second) == ranks.end()) ranks.push_back(pair->second);
    }
  }
  // The nodes that a rank before this one has, too.
  std::vector<std::int32_t> wished_before(int rank) const {
    std::vector<std::int32_t> nodes;
    for (const auto& [node, other] : pairs_) {
      if (other < rank && (nodes.empty() || nodes.back() != node)) nodes.push_back(node);
    }
    return nodes;
  }

 private:
  std::vector<std::pair<std::int32_t, std::int32_t>> pairs_;  // node, rank; ascending
  std::int32_t first_ = 0;
  std::vector<bool> is_wished_;
};

int corners_of(std::uint8_t code) {
  return fld::nodes_of_element(code) + fld::nodes_of_face(code);
}

// Cells on their way to other ranks.
struct SentCells {
  Parcels<std::int32_t> numbers;
  Parcels<std::uint8_t> codes;
  Parcels<std::int32_t> corners;
};

bool was_sent(const std::vector<Parcels<std::int32_t>>& layers, std::int32_t rank, std::int32_t cell) {
  return std::any_of(layers.begin(), layers.end(), [&](const Parcels<std::int32_t>& layer) {
    const std::int32_t* const begin = layer.values.data() + layer.begin_of(rank);
    return std::binary_search(begin, begin + layer.counts[static_cast<std::size_t>(rank)], cell);
  });
}

// The own cells around the wished nodes, but for those that went out in earlier layers.
SentCells choose_cells(int ranks, const WishedNodes& wished, std::span<const std::uint8_t> own_codes,
                       const std::int32_t* corners, const std::vector<Parcels<std::int32_t>>& earlier) {
  struct Chosen {
    std::vector<std::int32_t> numbers;
    std::vector<std::uint8_t> codes;
    std::vector<std::int32_t> corners;
  };
  std::vector<Chosen> of_rank(static_cast<std::size_t>(ranks));
  std::vector<std::int32_t> wanting;
  std::int32_t number = 0;
  for (const std::uint8_t code : own_codes) {
    const std::int32_t* const end = corners + corners_of(code);
    wanting.clear();
    for (const std::int32_t* node = corners; node != end; ++node) {
      if (wished.has(*node)) wished.add_ranks(*node, wanting);
    }
    for (const std::int32_t rank : wanting) {
      if (was_sent(earlier, rank, number)) continue;
      Chosen& chosen = of_rank[static_cast<std::size_t>(rank)];
      chosen.numbers.push_back(number);
      chosen.codes.push_back(code);
      chosen.corners.insert(chosen.corners.end(), corners, end);
    }
    corners = end;
    ++number;
  }
  SentCells sent;
  const auto pack = [&](auto& parcels, auto member) {
    std::int64_t total = 0;
    for (const Chosen& chosen : of_rank) {
      parcels.counts.push_back(static_cast<std::int64_t>((chosen.*member).size()));
      total += parcels.counts.back();
    }
    auto& values = parcels.values;
    values = std::remove_reference_t<decltype(values)>(total);
    auto* to = values.data();
    for (const Chosen& chosen : of_rank) to = std::copy((chosen.*member).begin(), (chosen.*member).end(), to);
  };
  pack(sent.numbers, &Chosen::numbers);
  pack(sent.codes, &Chosen::codes);
  pack(sent.corners, &Chosen::corners);
  return sent;
}

template <typename Value>
void append(Array<Value>& to, const Array<Value>& more) {
  if (more.size() == 0) return;
  Array<Value> all(to.size() + more.size());
  std::copy(more.span().begin(), more.span().end(),
            std::copy(to.span().begin(), to.span().end(), all.data()));
  to = std::move(all);
}

}  // namespace

GhostCells::GhostCells(Communicator& ranks, const Partition& nodes, int layers, Array<std::uint8_t>& codes,
                       Array<std::int32_t>& corners) {
  const std::int64_t own_cells = codes.size();
  together(ranks, [&] { own_nodes_ = nodes_of(corners.span()); });
  NodeRequest reached(ranks, nodes, own_nodes_.runs);
  std::optional<NodeUsers> users;
  together(ranks, [&] { users.emplace(nodes.of(ranks.rank()), reached.asked()); });
  for (int layer = 0; layer < layers; ++layer) {
    if (layer > 0) {
      NodeSet all;
      together(ranks, [&] { all = nodes_of(corners.span()); });
      reached = NodeRequest(ranks, nodes, all.runs);
    }
    Parcels<Wish> wishes;
    together(ranks, [&] { wishes = users->wishes(ranks.size(), reached.asked()); });
    wishes = deliver(ranks, std::move(wishes));
    SentCells sent;
    together(ranks, [&] {
      const WishedNodes wished(wishes.values);
      if (layer == 0) nodes_of_others_ = wished.wished_before(ranks.rank());
      sent = choose_cells(ranks.size(), wished, codes.span().first(static_cast<std::size_t>(own_cells)),
                          corners.data(), layers_);
      layers_.push_back(std::move(sent.numbers));
    });
    const Parcels<std::uint8_t> more_codes = deliver(ranks, std::move(sent.codes));
    const Parcels<std::int32_t> more_corners = deliver(ranks, std::move(sent.corners));
    together(ranks, [&] {
      append(codes, more_codes.values);
      append(corners, more_corners.values);
    });
  }
  count_ = codes.size() - own_cells;
}

Array<std::uint8_t> GhostCells::ghost_nodes(const NodeSet& all) const {
  Array<std::uint8_t> marks(all.count);
  std::uint8_t* mark = marks.data();
  auto own = own_nodes_.runs.begin();
  auto other = nodes_of_others_.begin();
  for (const Run run : all.runs) {
    for (std::int64_t node = run.first; node < std::int64_t{run.first} + run.count; ++node) {
      while (own != own_nodes_.runs.end() && std::int64_t{own->first} + own->count <= node) ++own;
      while (other != nodes_of_others_.end() && *other < node) ++other;
      const bool is_own = own != own_nodes_.runs.end() && own->first <= node;
      const bool is_counted_before = other != nodes_of_others_.end() && *other == node;
      *mark++ = is_own && !is_counted_before ? 0 : 1;
    }
  }
  return marks;
}

Array<float> GhostCells::extend(Communicator& ranks, Array<float> own) const {
  const std::int64_t own_cells = own.size();
  Array<float> all;
  together(ranks, [&] {
    if (layers_.empty()) {
      all = std::move(own);
      return;
    }
    all = Array<float>(own_cells + count_);
    std::copy(own.span().begin(), own.span().end(), all.data());
  });
  std::int64_t end = own_cells;
  for (const Layer& layer : layers_) {
    Parcels<float> sent;
    together(ranks, [&] {
      sent = {Array<float>(layer.values.size()), layer.counts};
      for (std::int64_t i = 0; i < layer.values.size(); ++i) sent.values[i] = all[layer.values[i]];
    });
    const Parcels<float> received = deliver(ranks, std::move(sent));
    std::copy(received.values.span().begin(), received.values.span().end(), all.data() + end);
    end += received.values.size();
  }
  return all;
}

}  // namespace parallel
