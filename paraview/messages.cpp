#include "paraview/messages.h"

#include <cstring>
#include <stdexcept>

namespace paraview {

void MessageWriter::put(std::int64_t number) {
  bytes_.append(reinterpret_cast<const char*>(&number), sizeof number);
}

void MessageWriter::put(double number) {
  bytes_.append(reinterpret_cast<const char*>(&number), sizeof number);
}

void MessageWriter::put(std::string_view text) {
  put(static_cast<std::int64_t>(text.size()));
  bytes_ += text;
}

std::int64_t MessageReader::number() {
  std::int64_t number = 0;
  std::memcpy(&number, take(sizeof number).data(), sizeof number);
  return number;
}

double MessageReader::real() {
  double number = 0;
  std::memcpy(&number, take(sizeof number).data(), sizeof number);
  return number;
}

std::string MessageReader::text() {
  return std::string(take(static_cast<std::size_t>(number())));
}

std::string_view MessageReader::take(std::size_t count) {
  if (count > rest_.size()) throw std::out_of_range("a message is too short");
  const std::string_view taken = rest_.substr(0, count);
  rest_.remove_prefix(count);
  return taken;
}

}  // namespace paraview
