#include "testkit/header.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace testkit {
namespace {

auto find(auto& items, std::string_view title) {
  return std::find_if(items.begin(), items.end(),
                      [&](const Section& item) { return item.title.text == title; });
}

}  // namespace

Header Header::usual() {
  Header header;
  header.set(header_item("Application", {Block::characters("TESTKIT", 16)}));
  header.set(header_item("ApplicationVersion", {Block::integer(1)}));
  header.set(header_item("ReleaseDate", {Block::integer(20161128)}));
  header.set(header_item("GridType", {Block::integer(1)}));
  header.set_dimension(3);
  header.set_bias(0);
  header.set(header_item("Date", {Block::characters("2016/11/28 00:00:00", 32)}));
  header.set(header_item("Comments", {Block::characters("written by the test kit", 80)}));
  header.set_cycle(0, 0.0);
  header.set_unused(1.0e30F, 1.0e30);
  return header;
}

bool Header::has(std::string_view title) const {
  return find(items, title) != items.end();
}

Section& Header::item(std::string_view title) {
  const auto found = find(items, title);
  if (found == items.end()) throw std::out_of_range("no header item " + std::string(title));
  return *found;
}

const Section& Header::item(std::string_view title) const {
  const auto found = find(items, title);
  if (found == items.end()) throw std::out_of_range("no header item " + std::string(title));
  return *found;
}

void Header::set(Section item) {
  const auto found = find(items, item.title.text);
  if (found == items.end()) {
    items.push_back(std::move(item));
  } else {
    *found = std::move(item);
  }
}

void Header::remove(std::string_view title) {
  std::erase_if(items, [&](const Section& item) { return item.title.text == title; });
}

void Header::set_dimension(std::int32_t dimension) {
  set(header_item("Dimension", {Block::integer(dimension)}));
}

void Header::set_bias(std::int32_t bias) {
  set(header_item("Bias", {Block::integer(bias)}));
}

void Header::set_cycle(std::int32_t cycle, double time, Precision precision) {
  set(header_item("Cycle", {Block::integer(cycle), Block::real(time, precision)}));
}

void Header::set_unused(float single_value, double double_value) {
  set(header_item("Unused", {Block::real(static_cast<double>(single_value), Precision::kSingle),
                             Block::real(double_value, Precision::kDouble)}));
}

std::int32_t Header::bias() const {
  const auto found = find(items, "Bias");
  if (found == items.end() || found->blocks.empty()) return 0;
  const auto* values = std::get_if<Ints>(&found->blocks.front().data);
  return values != nullptr && values->size() > 0 ? values->values().front() : 0;
}

}  // namespace testkit
