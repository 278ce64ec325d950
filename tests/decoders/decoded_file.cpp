#include "tests/decoders/decoded_file.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "inspect/big_endian.h"
#include "inspect/walker.h"

namespace decoders {
namespace {

using inspect::Block;
using inspect::Content;
using inspect::DataKind;
using inspect::TitleId;

// A block of a section with its elements.
struct Data {
  Content content = Content::data;
  std::int64_t count = 0;
  std::vector<std::int64_t> integers{};
  Reals reals{};
  std::string text{};
};

// Blanks at the end of a field, and everything from its first NUL on, are not part of the text.
std::string text_of(std::string_view field) {
  field = field.substr(0, field.find_last_not_of(' ') + 1);
  return std::string(field.substr(0, field.find('\0')));
}

std::vector<std::int32_t> integers_of(const Data& data) {
  return {data.integers.begin(), data.integers.end()};
}

// The blocks of a section, one after the other.
class Blocks {
 public:
  explicit Blocks(const std::vector<Data>& blocks) : blocks_(blocks) {}

  bool is_at_end() const { return next_ == blocks_.size(); }
  const Data& next() { return blocks_.at(next_++); }
  std::int64_t integer() { return next().integers.at(0); }
  std::vector<std::int32_t> integers() { return integers_of(next()); }
  bool is_next(Content content) const { return !is_at_end() && blocks_[next_].content == content; }

 private:
  const std::vector<Data>& blocks_;
  std::size_t next_ = 0;
};

// Takes the next `count` entries of a list of all regions.
class Shares {
 public:
  explicit Shares(std::vector<std::int32_t> all) : all_(std::move(all)) {}
  std::vector<std::int32_t> next(std::int32_t count) {
    const auto begin = all_.begin() + static_cast<std::ptrdiff_t>(done_);
    done_ += static_cast<std::size_t>(count);
    return {begin, begin + count};
  }

 private:
  std::vector<std::int32_t> all_;
  std::size_t done_ = 0;
};

std::vector<DecodedSurface> surfaces_of(Blocks blocks) {
  std::vector<DecodedSurface> surfaces(static_cast<std::size_t>(blocks.integer()));
  const auto length = static_cast<std::size_t>(blocks.integer());
  if (blocks.is_at_end()) return surfaces;
  if (blocks.is_next(Content::region_name)) {
    for (DecodedSurface& surface : surfaces) {
      surface.name = text_of(blocks.next().text);
      blocks.integer();
      surface.types = blocks.integers();
      surface.links = blocks.integers();
      blocks.integer();
      surface.nodes = blocks.integers();
    }
    return surfaces;
  }
  const std::string names = blocks.next().text;
  const std::vector<std::int32_t> faces = blocks.integers();
  Shares types(blocks.integers());
  Shares links(blocks.integers());
  const std::vector<std::int32_t> corners = blocks.integers();
  Shares nodes(blocks.integers());
  for (std::size_t r = 0; r < surfaces.size(); ++r) {
    surfaces[r] = {text_of(std::string_view(names).substr(r * length, length)), types.next(faces[r]),
                   links.next(faces[r]), nodes.next(corners[r])};
  }
  return surfaces;
}

std::vector<DecodedVolume> volumes_of(Blocks blocks) {
  std::vector<DecodedVolume> volumes(static_cast<std::size_t>(blocks.integer()));
  const auto length = static_cast<std::size_t>(blocks.integer());
  if (blocks.is_at_end()) return volumes;
  if (blocks.is_next(Content::region_name)) {
    for (DecodedVolume& volume : volumes) {
      volume.name = text_of(blocks.next().text);
      blocks.integer();
      volume.elements = blocks.integers();
    }
    return volumes;
  }
  const std::string names = blocks.next().text;
  const std::vector<std::int32_t> counts = blocks.integers();
  Shares elements(blocks.integers());
  for (std::size_t r = 0; r < volumes.size(); ++r) {
    volumes[r] = {text_of(std::string_view(names).substr(r * length, length)), elements.next(counts[r])};
  }
  return volumes;
}

DecodedElements elements_of(Blocks blocks) {
  blocks.integer();
  DecodedElements elements{.types = blocks.integers()};
  blocks.integer();
  elements.nodes = blocks.integers();
  return elements;
}

DecodedNodes nodes_of(Blocks blocks) {
  blocks.integer();
  return {{blocks.next().reals, blocks.next().reals, blocks.next().reals}};
}

DecodedQuantity quantity_of(std::string_view title, Blocks blocks) {
  DecodedQuantity quantity{.name = text_of(title.substr(std::string_view("LS_Scalar:").size()))};
  if (blocks.is_next(Content::vector_integer)) blocks.next();
  quantity.label = text_of(blocks.next().text);
  blocks.integer();
  while (!blocks.is_at_end()) quantity.components.push_back(blocks.next().reals);
  return quantity;
}

DecodedMotion motion_of(Blocks blocks) {
  blocks.integer();  // the length of names
  DecodedMotion motion{.base_cycle = static_cast<std::int32_t>(blocks.integer())};
  motion.regions.resize(static_cast<std::size_t>(blocks.integer()));
  for (DecodedMovingRegion& region : motion.regions) {
    region.names.resize(static_cast<std::size_t>(blocks.integer()));
    for (std::string& name : region.names) name = text_of(blocks.next().text);
    region.actions.resize(static_cast<std::size_t>(blocks.integer()));
    for (DecodedAction& action : region.actions) {
      action.kind = blocks.next().text;
      blocks.integer();
      while (blocks.is_next(Content::item)) {
        const std::vector<double>& item = blocks.next().reals.values;
        action.numbers.insert(action.numbers.end(), item.begin(), item.end());
      }
    }
  }
  return motion;
}

class Decoder : public inspect::Visitor {
 public:
  DecodedFile take() { return std::move(file_); }

  void title(const inspect::Title& title) override {
    blocks_.clear();
    if (title.is(TitleId::region_set)) file_.region_sets.emplace_back();
    if (title.text.starts_with("LS_Nodes") && !file_.region_sets.empty())
      file_.region_sets.back().counts_as_mesh = true;
  }

  void begin_block(const Block& block) override {
    blocks_.push_back({.content = block.content, .count = block.count});
    blocks_.back().reals.is_single = block.width == 4;
  }
  bool wants_data(const Block& block) override { return block.data != DataKind::any; }

  void data(const Block& block, const inspect::Piece& piece) override {
    Data& data = blocks_.back();
    const auto width = static_cast<std::size_t>(block.width);
    for (std::size_t i = 0; i < piece.bytes.size(); i += width) {
      const unsigned char* const bytes = piece.bytes.data() + i;
      if (block.data == DataKind::characters) {
        data.text += static_cast<char>(*bytes);
      } else if (block.data == DataKind::real) {
        data.reals.values.push_back(width == 4 ? static_cast<double>(inspect::load<float>(bytes))
                                               : inspect::load<double>(bytes));
      } else {
        data.integers.push_back(width == 8 ? inspect::load<std::int64_t>(bytes) : inspect::load_int32(bytes));
      }
    }
  }

  void end_section(const inspect::Title& title, const inspect::Record& /*rule*/) override {
    if (title.info == nullptr) return;
    if (title.info->group == inspect::TitleGroup::header_item) return header_item(title.info->id);
    // The first block is the section's leading integer.
    blocks_.erase(blocks_.begin());
    section(title);
  }

 private:
  void header_item(TitleId id) {
    switch (id) {
      case TitleId::bias:
        file_.bias = static_cast<std::int32_t>(blocks_.at(0).integers.at(0));
        break;
      case TitleId::cycle:
        file_.cycle = static_cast<std::int32_t>(blocks_.at(0).integers.at(0));
        file_.time = blocks_.at(1).reals.values.at(0);
        break;
      case TitleId::unused:
        file_.undefined_single = static_cast<float>(blocks_.at(0).reals.values.at(0));
        file_.undefined_double = blocks_.at(1).reals.values.at(0);
        break;
      default:
        break;
    }
  }

  void section(const inspect::Title& title) {
    DecodedRegionSet& set = file_.region_sets.back();
    const Blocks blocks(blocks_);
    switch (title.info->id) {
      case TitleId::coordinate_system:
        set.coordinate_system = static_cast<std::int32_t>(Blocks(blocks).integer());
        break;
      case TitleId::surfaces:
      case TitleId::surfaces_array:
        set.surfaces = surfaces_of(blocks);
        break;
      case TitleId::volumes:
      case TitleId::volumes_array:
        set.volumes = volumes_of(blocks);
        break;
      case TitleId::elements:
        set.elements = elements_of(blocks);
        break;
      case TitleId::materials:
        set.materials = integers_of(blocks_.at(1));
        break;
      case TitleId::nodes:
        set.nodes = nodes_of(blocks);
        break;
      case TitleId::scalar:
        set.scalars.push_back(quantity_of(title.text, blocks));
        break;
      case TitleId::vector:
        set.vectors.push_back(quantity_of(title.text, blocks));
        break;
      case TitleId::motion:
        set.motion = motion_of(blocks);
        break;
      default:
        break;
    }
  }

  DecodedFile file_;
  std::vector<Data> blocks_;
};

}  // namespace

DecodedFile decode(inspect::ByteSource& source) {
  Decoder decoder;
  inspect::walk(source, decoder);
  return decoder.take();
}

}  // namespace decoders
