#include "testkit/quantity.h"

#include <stdexcept>

namespace testkit {
namespace {

constexpr std::size_t kLabelLength = 32;

Title titled(const char* prefix, const std::string& name) {
  Title title(prefix + name);
  if (title.text.size() > kTitleLength) throw std::invalid_argument("name too long for a title: " + name);
  return title;
}

}  // namespace

Section scalar_section(const Scalar& scalar) {
  return {.title = titled("LS_Scalar:", scalar.name),
          .blocks = {Block::characters(scalar.label, kLabelLength),
                     Block::integer(static_cast<std::int32_t>(scalar.values.size())),
                     Block::reals(scalar.values, scalar.precision)}};
}

Section vector_section(const Vector& vector) {
  return {.title = titled("LS_Vector:", vector.name),
          .blocks = {Block::integer(vector.leading), Block::characters(vector.label, kLabelLength),
                     Block::integer(static_cast<std::int32_t>(vector.x.size())),
                     Block::reals(vector.x, vector.precision[0]), Block::reals(vector.y, vector.precision[1]),
                     Block::reals(vector.z, vector.precision[2])}};
}

}  // namespace testkit
