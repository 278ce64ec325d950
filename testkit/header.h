// The items of a file's header, in file order; any can be changed, moved or removed.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "testkit/section.h"

namespace testkit {

struct Header {
  std::vector<Section> items;

  // All the items a solver writes: application, versions, dates, dimension 3, index base 0, cycle 0 at time
  // 0.0, undefined values marked by 1.0e30.
  static Header usual();

  bool has(std::string_view title) const;
  // The item with this title. Throws std::out_of_range if there is none.
  Section& item(std::string_view title);
  const Section& item(std::string_view title) const;
  // Replaces the item with the same title, or appends it.
  void set(Section item);
  void remove(std::string_view title);

  void set_dimension(std::int32_t dimension);
  // The index base. The writer adds it to all node and element numbers.
  void set_bias(std::int32_t bias);
  void set_cycle(std::int32_t cycle, double time, Precision precision = Precision::kDouble);
  // The markers of undefined values in single- and double-precision arrays.
  void set_unused(float single_value, double double_value);

  // The value of the item "Bias"; 0 when there is none or it holds no integer.
  std::int32_t bias() const;
};

}  // namespace testkit
