// The arrays of a host: every one allocated as a host does it, and filled through the entry points of the
// loaded plug-in.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "bench/child_process.h"
#include "host/library.h"

namespace bench {

// A part as the build information tells it.
struct PartInfo {
  int number = 0;
  std::string name{};
  std::size_t nodes = 0;
  std::map<int, std::size_t> elements{};  // by slot; those that there are
};

// Per axis an array of nodes + 1 whose first entry is not used.
using HostCoordinates = std::array<std::unique_ptr<float[]>, 3>;
HostCoordinates new_coordinates(std::size_t nodes);

// The elements of one shape: one block of all rows, and a pointer to each row.
struct HostRows {
  HostRows(std::size_t row_count, std::size_t row_width);
  std::size_t bytes() const { return count * (width * sizeof(int) + sizeof(int*)); }

  std::size_t count;
  std::size_t width;
  std::unique_ptr<int[]> block;
  std::unique_ptr<int*[]> rows;
};

// Values per node, from entry 1.
using HostValues = std::unique_ptr<float[]>;

// Everything that a host takes of a part.
struct TakenPart {
  HostCoordinates coordinates;
  std::vector<HostRows> elements;
  HostValues values;
};

// A plug-in in the hands of a host. Throws std::runtime_error when a call fails.
class Host {
 public:
  // Loads the plug-in; what it traces to the standard error stream is thrown away from here on.
  explicit Host(const std::filesystem::path& plugin);

  // The option that takes the sections' places of the first file for those of all.
  void simplify_series();
  void open(const std::filesystem::path& file);
  void select_step(int set, int step);

  std::vector<PartInfo> parts() const;
  HostCoordinates coordinates(const PartInfo& part) const;
  void fill_rows(const PartInfo& part, int slot, const HostRows& rows) const;
  std::vector<HostRows> elements(const PartInfo& part) const;
  // The scalar that is variable `number`, from 1.
  HostValues scalar(const PartInfo& part, int number = 1) const;

  // All three, the scalar being the first.
  TakenPart take_all(const PartInfo& part) const;

  const host::EntryPoints& entry_points() const { return library_.entry_points(); }

 private:
  host::Library library_;
};

// The part "ALL_ELEMENTS", which is the last one.
PartInfo whole_mesh(const Host& host);

// A host's whole session: opens the file and takes coordinates, elements and the first scalar of the whole
// mesh. Their arrays, which are written from end to end, are left out of the memory, each as soon as it is
// filled.
void run_session(const std::filesystem::path& plugin, const std::filesystem::path& file, Trial& trial);

}  // namespace bench
