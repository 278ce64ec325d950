// Whether files are whole, and with all their content, whether what is in them fits together.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "inspect/byte_reader.h"
#include "inspect/byte_source.h"
#include "inspect/findings.h"
#include "inspect/walker.h"

namespace inspect {

struct CheckOptions {
  bool full = false;       // the content too, and all files of the series
  bool alone = false;      // with full: the given files by themselves
  std::size_t limit = 20;  // findings of a kind that are kept per file
  Progress progress{};     // called while a file is walked through, from its beginning by each walk
};

struct FileReport {
  explicit FileReport(std::string file, std::size_t limit) : path(std::move(file)), findings(limit) {}

  // An FLD file that could be read.
  bool is_readable() const { return reason.empty() && walk.end != WalkEnd::not_fld; }

  std::string path;
  std::string reason{};  // why the file could not be read; empty if it could
  std::uint64_t size = 0;
  WalkResult walk{};  // where the structure ended
  Findings findings;
};

// Checks the files, with full their series too, each file once; tells each report when it is complete. A file
// that cannot be read gets a report as well.
void check_files(const std::vector<std::string>& files, const CheckOptions& options,
                 const std::function<void(const FileReport&)>& tell);

// Checks bytes that are no file, and so of no series, but open a dataset.
FileReport check_bytes(ByteSource& source, const CheckOptions& options);

}  // namespace inspect
