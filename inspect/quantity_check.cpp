#include "inspect/quantity_check.h"

#include "inspect/text_check.h"

namespace inspect {

QuantityCheck::QuantityCheck(const Surroundings& surroundings, const Title& title, Reporter& reporter)
    : SectionCheck(surroundings, title.region_set, reporter) {
  const std::size_t prefix = title.info->text.size();
  const std::uint64_t offset = title.record.payload() + prefix;
  const std::string name = title.text.size() > prefix ? title.text.substr(prefix) : "";
  if (name.empty()) report(Kind::name_empty, offset, "a name", "blanks");
  if (!is_text(name)) report(Kind::name_not_text, offset, "text", in_quotes(name));
}

bool QuantityCheck::wants(Content content) const {
  return content == Content::values || content == Content::label;
}

void QuantityCheck::reals(const Block&, const Piece& piece, std::span<const float> values) {
  component_.add(piece, values, outline().undefined_single);
}

void QuantityCheck::reals(const Block&, const Piece& piece, std::span<const double> values) {
  component_.add(piece, values, outline().undefined_double);
}

void QuantityCheck::characters(const Block&, const Piece& piece) {
  const std::string label(piece.bytes.begin(), piece.bytes.end());
  const std::string_view text = without_padding(label);
  if (!is_text(text)) report(Kind::label_not_text, piece.offset, "text", in_quotes(text));
}

void QuantityCheck::integer(const Block& block, std::int64_t value) {
  if (block.content != Content::value_count) return;
  const auto nodes =
      surroundings().nodes_of_values ? surroundings().nodes_of_values(region_set()) : tables().nodes;
  if (!nodes || value == *nodes) return;
  report(Kind::value_count, first_value(block), std::to_string(*nodes), std::to_string(value));
}

void QuantityCheck::end_block(const Block& block) {
  if (block.content != Content::values) return;
  const auto tell = [&](Kind kind, const RealCheck::Tally& tally, const char* wanted) {
    if (tally.count > 0) report(kind, tally.first, wanted, component_.share(tally));
  };
  tell(Kind::not_a_number, component_.not_numbers(), "numbers");
  tell(Kind::infinite, component_.infinite(), "finite numbers");
  tell(Kind::undefined_share, component_.undefined(), "defined values");
  component_ = {};
}

}  // namespace inspect
