// An open dataset in a private copy of the reader library.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "host/library.h"
#include "host/session.h"

namespace paraview {

struct ReadingOptions {
  bool simplify = false;    // "Simplify reading sequential FLD files"
  bool group_parts = true;  // "Make group of parts"

  bool operator==(const ReadingOptions&) const = default;
};

class DatasetSource {
 public:
  // Loads the library at `plugin` and opens the dataset of the file. Throws host::Error.
  DatasetSource(const std::filesystem::path& plugin, const std::filesystem::path& file,
                const ReadingOptions& options);
  DatasetSource(const DatasetSource&) = delete;
  DatasetSource& operator=(const DatasetSource&) = delete;
  ~DatasetSource();

  // Must not be called while the process exits.
  host::Session& session() { return *session_; }

  // The reader's warnings since the last call.
  std::vector<std::string> take_warnings();

 private:
  static void close_all();

  host::Library library_;
  std::unique_ptr<host::Session> session_;
  std::size_t seen_diagnostics_ = 0;
};

}  // namespace paraview
