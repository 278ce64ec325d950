// A dataset as one VTKHDF file: a collection of unstructured grids over time, one for each part.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "host/part_identity.h"
#include "host/part_tree.h"
#include "host/session.h"
#include "vtkhdf/block.h"
#include "vtkhdf/hdf5_file.h"

namespace vtkhdf {

struct SeriesOptions {
  std::vector<int> variables;      // numbers
  std::vector<NodalArray> more{};  // on each part
  std::size_t steps = 1;           // that are going to be written at most
  bool double_precision = false;
  bool compress = false;  // with zlib
};

class Series {
 public:
  // The file is made beside `path`, or beside what that leads to, and gets its name when the first step is
  // complete. Throws WriteError.
  Series(const std::filesystem::path& path, host::Session& session, SeriesOptions options);
  Series(const Series&) = delete;
  Series& operator=(const Series&) = delete;
  // What was completed stays; a file without a step is removed.
  ~Series();

  // Writes the session's step with the parts of these numbers. When it returns, the file has the step; when
  // an exception leaves it, nothing more may be written, and the file has the steps before. `after_part` is
  // called after every part. Throws WriteError, and host::Error when the dataset cannot be read.
  void write_step(
      host::Session& session, const std::vector<int>& parts, const std::function<void()>& after_part = [] {});

 private:
  // What is open in HDF5.
  struct Contents {
    Handle file{};
    Handle root{};
    Handle assembly{};
    std::map<std::string, Handle> folders{};  // of the assembly, by their paths in it
    std::map<host::PartIdentity, std::unique_ptr<Block>> blocks{};
  };

  void make_root();
  void add_step(host::Session& session, const std::vector<int>& parts,
                const std::function<void()>& after_part);
  void give_up();
  void remove_temporary();
  Block& block_of(host::Session& session, const host::PartIdentity& identity, const std::string& name);
  void add_to_assembly(const Handle& group, const std::string& path,
                       const std::vector<host::PartFolder>& folders,
                       const std::vector<host::PartIdentity>& identities);

  std::filesystem::path path_;
  std::filesystem::path temporary_;  // empty when the file has its name
  SeriesOptions options_;
  BlockArrays arrays_;
  std::vector<double> times_;  // of the steps that are complete
  std::unique_ptr<Contents> contents_ = std::make_unique<Contents>();
  std::map<host::PartIdentity, std::string> names_;  // of the blocks
  std::set<std::string> used_names_;
  std::set<std::string> nodes_;  // all paths in the assembly
  std::set<host::PartIdentity> in_assembly_;
};

}  // namespace vtkhdf
