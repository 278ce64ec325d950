// Checks the structure of files and, on request, the consistency of their content.
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
  bool full = false;       // check the content too, and all files of the series
  bool alone = false;      // with full: only the given files
  std::size_t limit = 20;  // findings of each kind that are kept per file
  Progress progress{};     // called during each walk over a file
};

struct FileReport {
  explicit FileReport(std::string file, std::size_t limit) : path(std::move(file)), findings(limit) {}

  // An FLD file that could be read.
  bool is_readable() const { return reason.empty() && walk.end != WalkEnd::not_fld; }

  std::string path;
  std::string reason{};  // why the file could not be read; empty if it could
  std::uint64_t size = 0;
  WalkResult walk{};  // where the walk ended
  Findings findings;
};

// The check of one file. Also files that cannot be read have a report.
using FileCheck = std::function<FileReport()>;

// The checks of the files, and with `full` of their series, each file once. They may be called in any order.
std::vector<FileCheck> plan_checks(const std::vector<std::string>& files, const CheckOptions& options);

// Calls them in turn, and `tell` with each complete report.
void check_files(const std::vector<std::string>& files, const CheckOptions& options,
                 const std::function<void(const FileReport&)>& tell);

// The first file of the dataset, in the order of its series, that cannot be read or has an error in its
// structure: most likely the one at which a reader that opens the dataset fails. Empty if there is none.
std::string first_broken_file(const std::string& file, const Progress& progress = {});

// Checks bytes in memory as a dataset of one file.
FileReport check_bytes(ByteSource& source, const CheckOptions& options);

}  // namespace inspect
