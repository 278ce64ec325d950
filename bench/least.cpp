#include "bench/least.h"

#include "bench/comparison.h"
#include "host/element_slots.h"

namespace bench {

void do_least(const Least& least) {
  const auto threads = static_cast<unsigned>(threads_of_reader());
  if (least.stretch.size > 0) read_only(least.file, least.stretch, threads);
  touch_pages(least.bytes, threads);
  const HostRows pointers(least.rows, 1);
}

Work least_work(const Least& least) {
  return [least](Trial& trial) {
    do_least(least);
    trial.end();
  };
}

std::size_t bytes_kept(const testkit::BoxOptions& box) {
  const auto counts = testkit::box_counts(box);
  const auto faces = 2 * (static_cast<std::size_t>(box.nx) * static_cast<std::size_t>(box.ny) +
                          static_cast<std::size_t>(box.ny) * static_cast<std::size_t>(box.nz) +
                          static_cast<std::size_t>(box.nx) * static_cast<std::size_t>(box.nz));
  constexpr std::size_t kPerElement =
      3 * sizeof(std::int32_t) + sizeof(std::int64_t);                  // type, material, volume
  constexpr std::size_t kPerFace = (1 + 1 + 4) * sizeof(std::int32_t);  // type, link, corners
  return static_cast<std::size_t>(counts.elements) * kPerElement +
         static_cast<std::size_t>(counts.conn) * sizeof(std::int32_t) + faces * kPerFace +
         static_cast<std::size_t>(counts.nodes) * 3 * sizeof(float);
}

std::size_t coordinate_bytes(std::size_t nodes) {
  return 3 * (nodes + 1) * sizeof(float);
}

std::size_t element_bytes(const PartInfo& part) {
  std::size_t bytes = 0;
  for (const auto& [slot, count] : part.elements)
    bytes += count * static_cast<std::size_t>(host::shape_of_slot(slot)->nodes) * sizeof(int);
  return bytes;
}

}  // namespace bench
