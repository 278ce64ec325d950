// Plain data as bytes, for sending it to the other ranks of a process group. The ranks are built alike, so
// numbers keep their own representation.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace layout {

// Puts values one after the other.
class ByteWriter {
 public:
  template <typename Value>
  void put(const Value& value) {
    static_assert(std::is_trivially_copyable_v<Value> && !std::is_pointer_v<Value>);
    // Bytes are compared as well: there must be no padding among them.
    static_assert(std::has_unique_object_representations_v<Value> || std::is_floating_point_v<Value>);
    bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
  }
  template <typename Item, std::size_t kCount>
  void put(const std::array<Item, kCount>& items) {
    for (const Item& item : items) put(item);
  }
  void put_text(std::string_view text) {
    put(static_cast<std::int64_t>(text.size()));
    bytes_ += text;
  }
  // The count of the items, then each as `put_item` writes it.
  template <typename Item, typename PutItem>
  void put_list(const std::vector<Item>& items, PutItem put_item) {
    put(static_cast<std::int64_t>(items.size()));
    for (const Item& item : items) put_item(item);
  }

  std::string take() { return std::move(bytes_); }

 private:
  std::string bytes_;
};

// Takes them out again in the same order. Throws std::out_of_range behind the end.
class ByteReader {
 public:
  explicit ByteReader(std::string_view bytes) : rest_(bytes) {}

  template <typename Value>
  Value get() {
    Value value;
    std::memcpy(&value, take(sizeof value).data(), sizeof value);
    return value;
  }
  template <typename Value>
  void get(Value& value) {
    value = get<Value>();
  }
  std::string text() { return std::string(take(static_cast<std::size_t>(get<std::int64_t>()))); }
  template <typename Item, typename GetItem>
  std::vector<Item> list(GetItem get_item) {
    std::vector<Item> items;
    for (auto left = get<std::int64_t>(); left > 0; --left) items.push_back(get_item());
    return items;
  }

 private:
  std::string_view take(std::size_t count) {
    if (count > rest_.size()) throw std::out_of_range("a message is shorter than what it should hold");
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(count);
    return taken;
  }

  std::string_view rest_;
};

}  // namespace layout
