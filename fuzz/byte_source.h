// Choices taken from the bytes of an input; 0 after the last byte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace fuzz {

inline std::string_view as_text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

class ByteSource {
 public:
  explicit ByteSource(std::string_view bytes) : rest_(bytes) {}

  bool is_empty() const { return rest_.empty(); }
  std::string_view rest() const { return rest_; }

  std::uint8_t byte() {
    if (rest_.empty()) return 0;
    const auto value = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return value;
  }
  // Two bytes, the most significant one first.
  std::uint16_t word() {
    const int high = byte();
    return static_cast<std::uint16_t>(high << 8 | byte());
  }

 private:
  std::string_view rest_;
};

}  // namespace fuzz
