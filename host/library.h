// A reader library, loaded into this process and closed with the object.
#pragma once

#include <filesystem>
#include <memory>

#include "host/entry_points.h"

namespace host {

// The version of the reader interface that this host speaks.
inline constexpr char kApiVersion[] = "2.04";

class Library {
 public:
  // Loads the library at `path` with all its symbols bound and kept from other libraries. Throws Error when
  // the file cannot be loaded, lacks an entry point that a session needs, or speaks another version of the
  // interface.
  explicit Library(const std::filesystem::path& path);

  const std::filesystem::path& path() const { return path_; }
  const EntryPoints& entry_points() const { return entry_points_; }

 private:
  struct Close {
    void operator()(void* handle) const;
  };

  std::filesystem::path path_;
  std::unique_ptr<void, Close> handle_;
  EntryPoints entry_points_;
};

}  // namespace host
