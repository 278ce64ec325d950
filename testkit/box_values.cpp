#include "testkit/box_values.h"

namespace testkit {

File box_values_file(const BoxOptions& options) {
  File file = box_file(options);
  std::erase_if(file.region_sets.front().sections, [](const Section& section) {
    return !section.title.text.starts_with("LS_Scalar") && !section.title.text.starts_with("LS_Vector");
  });
  return file;
}

}  // namespace testkit
