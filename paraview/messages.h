// What rank 0, which reads, sends to the ranks that only receive. Everything is plain data with fixed widths.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace paraview {

// Puts values one after the other into a text of bytes.
class MessageWriter {
 public:
  void put(std::int64_t number);
  void put(double number);
  void put(std::string_view text);

  const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

// Takes them out again in the same order. Throws std::out_of_range behind the end.
class MessageReader {
 public:
  explicit MessageReader(std::string_view bytes) : rest_(bytes) {}

  std::int64_t number();
  double real();
  std::string text();

 private:
  std::string_view take(std::size_t count);

  std::string_view rest_;
};

// A list: the count of its items, then each as `put` writes and `take` reads it.
template <typename Item, typename Put>
void put_all(MessageWriter& message, const std::vector<Item>& items, Put put) {
  message.put(static_cast<std::int64_t>(items.size()));
  for (const Item& item : items) put(item);
}
template <typename Item, typename Take>
std::vector<Item> take_all(MessageReader& message, Take take) {
  std::vector<Item> items;
  for (std::int64_t left = message.number(); left > 0; --left) items.push_back(take());
  return items;
}

}  // namespace paraview
