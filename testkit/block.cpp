#include "testkit/block.h"

namespace testkit {
namespace {

template <class Data>
Block block_of(Data data, std::int32_t width) {
  Block block;
  block.data = std::move(data);
  block.width = width;
  return block;
}

}  // namespace

Block Block::integer(std::int32_t value) {
  return integers({value});
}

Block Block::integers(Ints values, IndexBase index_base) {
  Block block = block_of(std::move(values), 4);
  block.index_base = index_base;
  return block;
}

Block Block::long_integer(std::int64_t value, std::int32_t width) {
  return long_integers({value}, width);
}

Block Block::long_integers(Longs values, std::int32_t width) {
  return block_of(std::move(values), width);
}

Block Block::real(double value, Precision precision) {
  return reals({value}, precision);
}

Block Block::reals(Reals values, Precision precision) {
  return block_of(std::move(values), static_cast<std::int32_t>(precision));
}

Block Block::characters(std::string_view text, std::size_t length) {
  return block_of(padded(text, length), 1);
}

Block Block::rule_alone(Rule rule) {
  Block block = block_of(std::string(), 1);
  block.rule = rule;
  return block;
}

Block Block::record_alone(std::string bytes) {
  Block block = block_of(std::move(bytes), 1);
  block.has_rule = false;
  return block;
}

Block Block::raw(std::string bytes) {
  Block block = record_alone(std::move(bytes));
  block.is_framed = false;
  return block;
}

std::int64_t Block::size() const {
  return std::visit([](const auto& values) { return static_cast<std::int64_t>(values.size()); }, data);
}

Block Block::cut(std::int64_t elements_per_record) const {
  Block block = *this;
  block.per_record = elements_per_record;
  return block;
}

Block Block::with_rule(Rule wrong_rule) const {
  Block block = *this;
  block.rule = wrong_rule;
  return block;
}

std::string padded(std::string_view text, std::size_t length) {
  std::string result(text.substr(0, length));
  result.resize(length, ' ');
  return result;
}

}  // namespace testkit
