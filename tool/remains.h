// What can be read of a dataset that the reader refuses; the reader is not used for it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tool {

// Of one file.
struct FileRemains {
  // A title that was found, in file order.
  struct Entry {
    std::uint64_t offset = 0;
    std::int64_t region_set = -1;  // from 0; -1 before the first one
    std::string title;             // UTF-8
    bool is_whole = false;         // it ends with its end rule, or has no body
  };

  std::string file;
  std::uint64_t size = 0;
  std::vector<Entry> entries;
  bool is_complete = false;  // it could be followed to its end
  std::uint64_t ended_at = 0;
  std::vector<std::string> problems;  // the first errors and warnings of the structure, in words
  bool is_fld = false;                // it can be opened and is an FLD file
  bool has_errors = false;
};

struct Remains {
  std::string file;         // the one that was given
  std::string failed_file;  // the one that the reader names
  std::string reason;       // why it refused it
  std::vector<FileRemains> files;
};

// Of the files with errors in the series that the file belongs to, or else of the file itself; none if that
// cannot be opened or is not an FLD file.
Remains find_remains(const std::string& file, const std::string& failed_file, const std::string& reason);

// The file of the series that the reader's reason to refuse a dataset is about, if it does not name one: the
// first one with errors, or the first one of all where that lacks the geometry; else the given one.
std::string refused_file(const std::string& file, const std::string& reason);

// The reason, with the names of the files with errors unless that is the failed one alone.
std::string reason_with_files(const Remains& remains);

std::string remains_text(const Remains& remains);
std::string remains_json(const Remains& remains);

}  // namespace tool
